#include "numbers_test_util.h"

#include <climits>

using cadtools::test::Repeat;
using cadtools::test::Units;

namespace {

TEST(Radix, ItohexWithWidthPadsAndKeepsTheLastDigits) {
  struct Case {
    int value, width;
    const char16_t* expected;
  };
  const Case cases[] = {
      {255, 4, u"00ff"}, {10, 4, u"000a"}, {255, 1, u"f"},
      {4096, 2, u"00"},  // the leading "10" is cut away
      {4096, 4, u"1000"}, {0, 1, u"0"}, {-1, 4, u"ffff"}, {-1, 8, u"ffffffff"}, {-1, 10, u"00ffffffff"},
      {INT_MIN, 8, u"80000000"}, {INT_MAX, 8, u"7fffffff"}, {0x1234ABCD, 6, u"34abcd"},
      // A width of 0 or less gives the empty string.
      {255, 0, u""}, {255, -1, u""}, {-1, INT_MIN, u""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::itohex(c.value, c.width), CString(c.expected)) << c.value << ", " << c.width;
  }
}

TEST(Radix, ItohexHonoursLargeWidths) {
  const CString wide = CMathTools::itohex(0xabc, 1 << 20);
  ASSERT_EQ(wide.GetLength(), 1 << 20);
  EXPECT_EQ(wide.Right(4), CString(u"0abc"));
  EXPECT_EQ(wide.Left(3), CString(u"000"));
  EXPECT_EQ(CMathTools::itohex(-1, 5000), Repeat('0', 4992) + u"ffffffff");
}

TEST(Radix, ItohexWithoutWidth) {
  struct Case {
    int value;
    const char16_t* expected;
  };
  const Case cases[] = {
      {255, u"ff"}, {0, u"0"}, {-1, u"ffffffff"}, {10, u"a"}, {4096, u"1000"},
      {INT_MIN, u"80000000"}, {INT_MAX, u"7fffffff"}, {-256, u"ffffff00"},
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::itohex(c.value), CString(c.expected)) << c.value;
}

TEST(Radix, HextoiParsesAsStreamExtraction) {
  struct Case {
    const char16_t* text;
    int expected;
  };
  const Case cases[] = {
      {u"ff", 255}, {u"1A2z", 418},
      {u"00000000000000000000ff", 255},  // leading zeros do not overflow
      // Leading white space, sign and prefix.
      {u"  ff", 255}, {u"\t\n\v\f\r 10", 16},
      {u"\u3000" u"10", 16},  // ideographic space is white space
      {u"\u00A0" u"10", 16},  // so is no-break space
      {u"+ff", 255}, {u"-ff", -255}, {u"0x1F", 31}, {u"-0x10", -16}, {u"  -0X1a2z", -418},
      // No leading hex digit: 0.
      {u"", 0}, {u"zz", 0}, {u"0x", 0}, {u"x1", 0}, {u"+-1", 0},
      {u"- 1", 0},  // no space after the sign
      {u"\u200B" u"1", 0},  // zero width space is no white space
      // The number ends at the first unit that is not a digit.
      {u"12 34", 0x12}, {u"0x0x5", 0},
      // A unit beyond 0xFF is no digit, even if its low byte would be one.
      {u"1\u0131", 1},    // low byte 0x31 '1'
      {u"\u0141", 0},     // low byte 0x41 'A'
      {u"\uFF11", 0},     // fullwidth one
      // Beyond the int range: clamped.
      {u"7fffffff", INT_MAX}, {u"80000000", INT_MAX}, {u"ffffffff", INT_MAX},
      {u"ffffffffffffffffffffffffffff", INT_MAX},
      {u"-7fffffff", -INT_MAX}, {u"-80000000", INT_MIN}, {u"-ffffffffffffffffffffffffffff", INT_MIN},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::hextoi(CString(c.text)), c.expected) << testing::PrintToString(CString(c.text));
  }
  // An embedded NUL ends the number too.
  EXPECT_EQ(CMathTools::hextoi(Units(std::u16string_view(u"1\0" "2", 3))), 1);
}

TEST(Radix, DecimalToBinary) {
  struct Case {
    LONG value;
    const char16_t* expected;
  };
  const Case cases[] = {
      {0, u"0"}, {1, u"1"}, {2, u"10"}, {5, u"101"}, {255, u"11111111"},
      {1048575, u"11111111111111111111"},  // the host's largest: 20 digits
      // Outside the host's range: the value as an unsigned 32-bit number.
      {1048576, u"100000000000000000000"},
      {2147483647, u"1111111111111111111111111111111"},
      {-1, u"11111111111111111111111111111111"},
      {-2147483647 - 1, u"10000000000000000000000000000000"},
      {-2, u"11111111111111111111111111111110"},
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::DecimalToBinary(c.value), CString(c.expected)) << c.value;
}

TEST(Radix, BinaryToDecimal) {
  struct Case {
    CString text;
    LONG expected;
  };
  const Case cases[] = {
      {u"", 0}, {u"0", 0}, {u"1", 1}, {u"101", 5}, {u"0011", 3},
      {u"11111111111111111111", 1048575},
      // Units are not validated: unit - 48 times the power.
      {u"2", 2}, {u"a", 49}, {u"20", 4},
      {u"/", -1},        // 47 - 48
      {u" 1", -31},      // (32 - 48) * 2 + 1
      {u"\uFFFF", 65487},
      // (int)pow(2, k) for k >= 31 is INT_MIN; the sum wraps.
      {u"1" + Repeat('0', 30), 1073741824},
      {u"1" + Repeat('1', 30), 2147483647},
      {u"1" + Repeat('0', 31), -2147483647 - 1},
      {u"1" + Repeat('0', 32), -2147483647 - 1},
      {u"1" + Repeat('0', 40), -2147483647 - 1},
      {u"1" + Repeat('0', 2000), -2147483647 - 1},  // pow gives infinity: INT_MIN too
      {u"11" + Repeat('0', 31), 0},
      {u"2" + Repeat('0', 31), 0},                 // 2 * INT_MIN wraps to 0
      {u"3" + Repeat('0', 31), -2147483647 - 1},   // 3 * INT_MIN
      {Repeat('1', 32), -1},  // INT_MIN + 2^31 - 1
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::BinaryToDecimal(c.text), c.expected) << testing::PrintToString(c.text);
  }
}

TEST(Radix, BinaryToDecimalIsLinearInTheLength) {
  // Ten million units: a quadratic loop would not finish. All but the last
  // 31 units add INT_MIN each: an even count of them cancels, an odd one
  // leaves INT_MIN; the last 31 add 2^31 - 1.
  EXPECT_EQ(CMathTools::BinaryToDecimal(Repeat('1', 10000031)), 2147483647);
  EXPECT_EQ(CMathTools::BinaryToDecimal(Repeat('1', 10000000)), -1);
}

TEST(Radix, ReverseBinary) {
  EXPECT_EQ(CMathTools::ReverseBinary(u"0011"), CString(u"1100"));
  EXPECT_EQ(CMathTools::ReverseBinary(u""), CString(u""));
  EXPECT_EQ(CMathTools::ReverseBinary(u"a"), CString(u"a"));
  EXPECT_EQ(CMathTools::ReverseBinary(u"abc de"), CString(u"ed cba"));
  // Units, not code points: a surrogate pair comes out swapped.
  EXPECT_EQ(CMathTools::ReverseBinary(Units(u"x\xD83D\xDE00")), Units(u"\xDE00\xD83Dx"));
  EXPECT_EQ(CMathTools::ReverseBinary(Units(std::u16string_view(u"1\0" "2", 3))),
            Units(std::u16string_view(u"2\0" "1", 3)));
}

TEST(Radix, CreateABCDuplicateKeepsTheHostsGaps) {
  struct Case {
    int number;
    const char16_t* expected;
  };
  const Case cases[] = {
      {1, u"A"},    {2, u"B"},    {24, u"X"},   {25, u"@"},   {26, u"A"},   {49, u"X"},   {50, u"@"},
      {0, u"@"},    {624, u"X"},  {649, u"X"},  {650, u"B@"}, {651, u"BA"}, {675, u"C@"}, {676, u"CA"},
      {15625, u"A@"},  // q = 625 gives 'A' and q = 25, which is dropped
      {INT_MAX, u"TWNXUV"},
      // Negative numbers: q <= 0 never loops; the unit is 64 + r, r in -24..0.
      {-1, u"?"},   {-24, u"("},  {-25, u"@"},  {-26, u"?"},  {INT_MIN, u")"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::CreateABCDuplicate(c.number), CString(c.expected)) << c.number;
  }
}

}  // namespace

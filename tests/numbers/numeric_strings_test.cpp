#include "numbers_test_util.h"

using cadtools::test::Units;

namespace {

struct TestCase {
  const char16_t* text;
  int numeric, hex, digit, dbl;  // IsNumeric, IsHexNumeric, IsDigit, IsDouble
};

TEST(NumericStrings, FourTestsSideBySide) {
  const TestCase cases[] = {
      // The empty string: 1, 1, 0, 0 on purpose.
      {u"", 1, 1, 0, 0},
      {u"0", 1, 1, 1, 1},       {u"0815", 1, 1, 1, 1},    {u"1aF", 0, 1, 0, 0},     {u"abcdef", 0, 1, 0, 0},
      {u"ABCDEF", 0, 1, 0, 0},  {u"g", 0, 0, 0, 0},       {u"0x1F", 0, 0, 0, 0},    {u"12.5", 0, 0, 0, 1},
      {u"0,25", 0, 0, 0, 1},    {u"3,", 0, 0, 0, 0},      {u",3", 0, 0, 0, 0},      {u".5", 0, 0, 0, 0},
      {u"5.", 0, 0, 0, 0},      {u".", 0, 0, 0, 0},       {u"3.1.4", 0, 0, 0, 0},   {u"1.2,3", 0, 0, 0, 0},
      {u"1..2", 0, 0, 0, 0},    {u"-1.5", 0, 0, 0, 0},    {u"+1", 0, 0, 0, 0},      {u"1e3", 0, 1, 0, 0},
      {u" 1", 0, 0, 0, 0},      {u"1 ", 0, 0, 0, 0},      {u"1,000.5", 0, 0, 0, 0},
      // Unicode decimal digits pass IsDigit and IsDouble only.
      {u"\u0663", 0, 0, 1, 1},                // Arabic-Indic three
      {u"\uFF11\uFF12", 0, 0, 1, 1},          // fullwidth one, two
      {u"\u0661.\u0665", 0, 0, 0, 1},         // Arabic-Indic 1.5
      {u"\u00B2", 0, 0, 0, 0},                // superscript two: no Nd digit
      {u"\u0660\u066B\u0665", 0, 0, 0, 0},    // Arabic decimal separator: not , or .
      // Hex digits are ASCII only.
      {u"\uFF21", 0, 0, 0, 0},                // fullwidth A: not hex
  };
  for (const TestCase& c : cases) {
    const CString text(c.text);
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(CMathTools::IsNumeric(text), c.numeric);
    EXPECT_EQ(CMathTools::IsHexNumeric(text), c.hex);
    EXPECT_EQ(CMathTools::IsDigit(text), c.digit);
    EXPECT_EQ(CMathTools::IsDouble(text), c.dbl);
  }
}

TEST(NumericStrings, EveryUnitIsLookedAt) {
  // An embedded NUL is a unit like any other, not the end of the text.
  EXPECT_EQ(CMathTools::IsNumeric(Units(std::u16string_view(u"12\0" "3", 4))), 0);
  EXPECT_EQ(CMathTools::IsHexNumeric(Units(std::u16string_view(u"ab\0", 3))), 0);
  EXPECT_EQ(CMathTools::IsDigit(Units(std::u16string_view(u"1\0", 2))), 0);
  EXPECT_EQ(CMathTools::IsDouble(Units(std::u16string_view(u"1.\0", 3))), 0);
  // A lone surrogate is no digit.
  EXPECT_EQ(CMathTools::IsDigit(Units(u"1\xD835")), 0);
}

TEST(NumericStrings, LongTexts) {
  EXPECT_EQ(CMathTools::IsNumeric(cadtools::test::Repeat('7', 100000)), 1);
  EXPECT_EQ(CMathTools::IsDouble(cadtools::test::Repeat('7', 50000) + u"." + cadtools::test::Repeat('1', 50000)), 1);
}

}  // namespace

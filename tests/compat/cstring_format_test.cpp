#include <cadtools/compat/cstring.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#define W CADTOOLS_WIDE

namespace {

template <class... Args>
CString F(const WCHAR* fmt, const Args&... args) {
  CString s;
  s.Format(fmt, args...);
  return s;
}

struct Case {
  CString got;
  CString want;
};

void Check(const Case* cases, std::size_t n) {
  for (std::size_t i = 0; i < n; ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
}

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(CStringFormatTest, Integers) {
  const Case cases[] = {
      {F(W("%d|%i|%u"), 42, -7, 7U), W("42|-7|7")},
      {F(W("[%5d][%-5d][%05d][%+d][% d]"), 42, 42, -42, 5, 5), W("[   42][42   ][-0042][+5][ 5]")},
      {F(W("%x %X %#x %#X %o %#o %#x"), 255, 255, 255, 255, 8, 8, 0), W("ff FF 0xff 0XFF 10 010 0")},
      {F(W("[%.3d][%.0d][%5.3d][%05.1d][%#.0o]"), 7, 0, -7, 3, 0), W("[007][][ -007][    3][0]")},
      // Widths: none, l and I32 are 32-bit; h 16; hh 8; ll, I64, I, z 64.
      {F(W("%d %u %ld"), 3000000000U, -1, std::int64_t{1} << 33), W("-1294967296 4294967295 0")},
      {F(W("%hd %hu %hhu %hhd"), 70000, -1, 300, 200), W("4464 65535 44 -56")},
      {F(W("%lld %llu %I64x"), -5, -1, std::int64_t{-1}), W("-5 18446744073709551615 ffffffffffffffff")},
      {F(W("%I32d %Iu %zu %lld"), (std::int64_t{1} << 32) + 7, std::size_t{123}, std::size_t{9},
         std::numeric_limits<std::int64_t>::min()),
       W("7 123 9 -9223372036854775808")},
      {F(W("%d %d %u"), 'A', '\xE9', true), W("65 233 1")},  // char is Latin-1
  };
  Check(cases, std::size(cases));
}

TEST(CStringFormatTest, CharactersAndStrings) {
  CString str(W("cs"));
  const Case cases[] = {
      {F(W("%c%c%c"), W('a'), 0xE9, char32_t{0x1F600}), W("a\u00E9\U0001F600")},
      {F(W("%c|%C|%hc|%c"), 0x110000, '\xE9', 0x20AC, -1), W("\uFFFD|\u00E9|\u00AC|\uFFFD")},
      {F(W("[%3c][%-3c]"), W('x'), W('y')), W("[  x][y  ]")},
      {F(W("%s|%s|%s|%s|%s"), W("w"), "n\xE9", L"L", u"u", str), W("w|n\u00E9|L|u|cs")},
      {F(W("%S|%ls|%hs|%ws"), W("a"), "b", W("c"), "d"), W("a|b|c|d")},  // any string for any of them
      {F(W("[%.2s][%5s][%-5s][%05s][%.1s]"), "abc", W("ab"), str, "ab", str), W("[ab][   ab][cs   ][   ab][c]")},
      {F(W("%s %s"), static_cast<const char*>(nullptr), static_cast<const WCHAR*>(nullptr)), W("(null) (null)")},
      {F(W("%s"), L"\U0001F600"), W("\U0001F600")},
  };
  Check(cases, std::size(cases));
}

TEST(CStringFormatTest, FloatsGiveTheSameTextEverywhere) {
  const Case cases[] = {
      {F(W("%.5f"), 0.352 / 25.4), W("0.01386")},
      {F(W("%.2f"), 3.175), W("3.17")},  // 3.17499999... in binary
      {F(W("%e"), 12345.678), W("1.234568e+04")},
      {F(W("%g"), 0.0001), W("0.0001")},
      {F(W("%f %F"), 1.5, 2.0F), W("1.500000 2.000000")},
      {F(W("%.0f %.0f %.0f %+.1f"), 0.5, 1.5, 2.5, 2.25), W("0 2 2 +2.2")},  // ties to even
      {F(W("[%08.3f][%-8.2f][% .1f][%#.0f][%.0e][%#.0e]"), -1.5, 1.0, 1.0, 2.0, 5.0, 5.0),
       W("[-001.500][1.00    ][ 1.0][2.][5e+00][5.e+00]")},
      {F(W("%E %.3e %e"), 0.000123, 1e-300, 0.0), W("1.230000E-04 1.000e-300 0.000000e+00")},
      {F(W("%g %g %g %g %G"), 1e-5, 123456789.0, 100000.0, 1e6, 1e-10),
       W("1e-05 1.23457e+08 100000 1e+06 1E-10")},
      {F(W("%g %.3g %#g %#.3g %.0g"), 0.0, 2.5e-3, 1.0, 12.0, 0.25), W("0 0.0025 1.00000 12.0 0.2")},
      {F(W("%a %A %.1a %a %#a"), 1.0, 0.5, 1.0, -0.1, 2.0), W("0x1p+0 0X1P-1 0x1.0p+0 -0x1.999999999999ap-4 0x1.p+1")},
      {F(W("%f %F %e %g %f %+f"), kInf, -kInf, kNaN, -kNaN, -0.0, kNaN), W("inf -INF nan nan -0.000000 +nan")},
      {F(W("[%05f][%-5F]"), kInf, kNaN), W("[  inf][NAN  ]")},
  };
  Check(cases, std::size(cases));
  EXPECT_EQ(F(W("%f"), 1e300).Left(18), W("100000000000000005"));
  EXPECT_EQ(F(W("%.30f"), 0.1), W("0.100000000000000005551115123126"));
}

TEST(CStringFormatTest, NumbersConvertByValue) {
  const Case cases[] = {
      {F(W("%f %.1e %g"), 3, std::uint64_t{1} << 63, -2), W("3.000000 9.2e+18 -2")},
      {F(W("%d %d %d %d"), 2.9, -2.9, 1e20, -1e20), W("2 -2 2147483647 -2147483648")},
      {F(W("%u %hd %hhu %lld %x"), -5.0, 1e6, 300.0, 1e30, kInf), W("0 32767 255 9223372036854775807 ffffffff")},
      {F(W("%d %u %llu %c"), kNaN, -kNaN, -kInf, 65.9), W("0 0 0 A")},
  };
  Check(cases, std::size(cases));
}

TEST(CStringFormatTest, StarWidthAndPrecision) {
  const Case cases[] = {
      {F(W("[%*d][%-*d][%*d]"), 5, 42, 4, 1, -4, 2), W("[   42][1   ][2   ]")},
      {F(W("[%.*f][%.*f][%*.*f]"), 2, 3.14159, -1, 1.5, 6, 1, 2.25), W("[3.14][1.500000][   2.2]")},
      {F(W("[%*s]"), std::uint8_t{3}, W("a")), W("[  a]")},
  };
  Check(cases, std::size(cases));
  // Widths and precisions stop at 4096 units, whatever the text asks.
  EXPECT_EQ(F(W("%*d"), 0x7FFFFFFF, 1).GetLength(), cadtools::kFormatMaxWidth);
  EXPECT_EQ(F(W("%-99999999999d|"), 1).GetLength(), cadtools::kFormatMaxWidth + 1);
  EXPECT_EQ(F(W("%.999999f"), 1.0).GetLength(), 2 + cadtools::kFormatMaxWidth);
  EXPECT_EQ(F(W("%.*e"), 100000, -1.0).GetLength(), 3 + cadtools::kFormatMaxWidth + 4);
  EXPECT_EQ(F(W("%.4096f"), 1.7976931348623157e308).GetLength(), 309 + 1 + cadtools::kFormatMaxWidth);
}

TEST(CStringFormatTest, HostileFormatText) {
  const Case cases[] = {
      // Not a conversion: copied, no argument taken.
      {F(W("%"), 1), W("%")},
      {F(W("50%"), 1), W("50%")},
      {F(W("%y|%d"), 1), W("%y|1")},
      {F(W("%n|%d"), 7), W("%n|7")},
      {F(W("%lhd|%5|%d"), 1), W("%lhd|%5|1")},
      {F(W("100%% %d%%"), 5), W("100% 5%")},
      // Understood but the argument is missing or of the wrong kind: copied,
      // and the argument is used up so the next conversions keep theirs.
      {F(W("%d and %d"), 1), W("1 and %d")},
      {F(W("%s|%d"), 5, 6), W("%s|6")},
      {F(W("%d of %s"), W("x"), W("y")), W("%d of y")},
      {F(W("%f|%c|%p|%s"), "x", W("y"), 1.5, 2), W("%f|%c|%p|%s")},
      {F(W("%*d|%d"), W("x"), 5, 6), W("%*d|6")},
      {F(W("%.*f|%d"), 1.5, 2.0, 3), W("%.*f|3")},
      {F(W("%d"), 1, 2, W("surplus")), W("1")},
      {F(W("")), W("")},
      {F(static_cast<const WCHAR*>(nullptr), 1), W("")},
  };
  Check(cases, std::size(cases));
}

TEST(CStringFormatTest, PointersAndAppend) {
  const auto* p = reinterpret_cast<const void*>(std::uintptr_t{0xABC});
  CString want(W('0'), 2 * static_cast<int>(sizeof(void*)) - 3);
  want += W("ABC");
  EXPECT_EQ(F(W("%p"), p), want);
  EXPECT_EQ(F(W("%p"), nullptr), CString(W('0'), 2 * static_cast<int>(sizeof(void*))));

  CString s(W("n="));
  s.AppendFormat(W("%d"), 1);
  s.AppendFormat(CString(W(",%s")), s);  // an argument may be the string itself
  EXPECT_EQ(s, W("n=1,n=1"));
  s.Format(s);  // so may the format
  EXPECT_EQ(s, W("n=1,n=1"));
}

}  // namespace

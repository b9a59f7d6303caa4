#include "text_test_util.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

namespace {

using cadtools::IsWideDigit;
using cadtools::WString;

// The comparison as the host's rules state it, unit by unit, without the
// library's shortcuts (shared prefixes walked at once, equal runs skipped).
int ReferenceCompare(const WCHAR* a, const WCHAR* b) {
  for (;; ++a, ++b) {
    while (cadtools::IsWideSpace(*a)) ++a;
    while (cadtools::IsWideSpace(*b)) ++b;
    if (IsWideDigit(*a) && IsWideDigit(*b)) {
      const bool fraction = *a == u'0' || *b == u'0';
      int bias = 0;
      for (const WCHAR *x = a, *y = b; bias == 0 || !fraction; ++x, ++y) {
        if (!IsWideDigit(*x) || !IsWideDigit(*y)) {
          if (IsWideDigit(*x) != IsWideDigit(*y)) bias = IsWideDigit(*x) ? 1 : -1;
          break;
        }
        if (*x != *y && bias == 0) bias = *x < *y ? -1 : 1;
      }
      if (bias != 0) return bias;
    }
    if (*a == 0 && *b == 0) return 0;
    const WCHAR ua = cadtools::ToUpperUnit(*a);
    const WCHAR ub = cadtools::ToUpperUnit(*b);
    if (ua != ub) return ua < ub ? -1 : 1;
  }
}

TEST(NaturalCompare, OrdersNamesAsPeopleRead) {
  const struct {
    const WCHAR *a, *b;
    int expected;
  } cases[] = {
      {W("file9"), W("file10"), -1}, {W("File10"), W("file10"), 0}, {W("abc"), W("ABC"), 0},
      {W("a b"), W("ab"), 0},        {W(" a\t b "), W("ab"), 0},    {W("a01"), W("a1"), -1},
      {W("x010"), W("x02"), -1},     // a leading zero on either side: digit by digit
      {W("x1 2"), W("x12"), -1},     // a space ends the run
      {W("a1"), W("aa"), -1},        // '1' < 'A' as units
      {W("_"), W("a"), 1},           // '_' > 'A': the upper case decides
      {W("\uFF21"), W("z"), 1},      // units compare unsigned
      {W("\u0669"), W("\u0661\u0660"), -1},  // Arabic-Indic 9 < 10
      {nullptr, W(""), 0},           {nullptr, W("a"), -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.a, c.b));
    EXPECT_EQ(CTextTools::NaturalCompare(c.a, c.b), c.expected);
    EXPECT_EQ(CTextTools::NaturalCompare(c.b, c.a), -c.expected);
  }
}

TEST(NaturalCompare, DigitRuns) {
  const struct {
    const WCHAR *a, *b;
    int right, left;
  } cases[] = {
      {W("12"), W("9"), 1, -1},   {W("25x"), W("29"), -1, -1}, {W("7a"), W("7b"), 0, 0},
      {W("010"), W("02"), 1, -1}, {W("01"), W("010"), -1, -1}, {nullptr, nullptr, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.a, c.b));
    EXPECT_EQ(CTextTools::CompareRight(c.a, c.b), c.right);
    EXPECT_EQ(CTextTools::CompareLeft(c.a, c.b), c.left);
    EXPECT_EQ(CTextTools::CompareRight(c.b, c.a), -c.right);
  }
  // Long equal runs take linear time.
  const WString run(300000, u'7');
  EXPECT_EQ(CTextTools::NaturalCompare((run + W("a")).c_str(), (run + W("b")).c_str()), -1);
  EXPECT_EQ(CTextTools::NaturalCompare((W(" 0") + run + W("b")).c_str(), (W("0") + run + W("a")).c_str()), 1);
}

TEST(NaturalCompare, MatchesTheRulesOnMixedText) {
  // ASCII and beyond: spaces, zeros, digits of two scripts, cased letters.
  const WString alphabet =
      WString(W("aAbZz_.:0019 \t\u00A0\u3000\u00E9\u00C9\u0660\u0661\u0669\uFF10\uFF21")) + static_cast<WCHAR>(0xD800);
  std::mt19937 rng(20240611);
  for (int i = 0; i < 20000; ++i) {
    const WString prefix = cadtools::test::RandomText(rng, alphabet, 6);
    const WString a = prefix + cadtools::test::RandomText(rng, alphabet, 8);
    const WString b = prefix + cadtools::test::RandomText(rng, alphabet, 8);
    SCOPED_TRACE(cadtools::test::Pair(a.c_str(), b.c_str()));
    const int expected = ReferenceCompare(a.c_str(), b.c_str());
    ASSERT_EQ(CTextTools::NaturalCompare(a.c_str(), b.c_str()), expected);
    ASSERT_EQ(CTextTools::NaturalCompare(b.c_str(), a.c_str()), -expected);
    ASSERT_EQ(CTextTools::NaturalCompare(a.c_str(), a.c_str()), 0);
  }
}

}  // namespace

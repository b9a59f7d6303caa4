#include "text_test_util.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using cadtools::IsWideDigit;
using cadtools::IsWideSpace;
using cadtools::WString;

// The comparison as the host's rules state it, unit by unit, without the
// library's shortcuts (shared prefixes, skipped equal runs, ASCII tables).
int ReferenceRuns(const WCHAR* a, const WCHAR* b, bool fraction) {
  int bias = 0;
  for (;; ++a, ++b) {
    const bool digitA = IsWideDigit(*a);
    const bool digitB = IsWideDigit(*b);
    if (!digitA && !digitB) return bias;
    if (!digitA || !digitB) return digitA ? 1 : -1;
    if (*a != *b && bias == 0) bias = *a < *b ? -1 : 1;
    if (bias != 0 && fraction) return bias;
  }
}

int ReferenceCompare(const WCHAR* a, const WCHAR* b) {
  for (;; ++a, ++b) {
    while (IsWideSpace(*a)) ++a;
    while (IsWideSpace(*b)) ++b;
    if (IsWideDigit(*a) && IsWideDigit(*b)) {
      const int r = ReferenceRuns(a, b, *a == u'0' || *b == u'0');
      if (r != 0) return r;
    }
    if (*a == 0 && *b == 0) return 0;
    const WCHAR ua = cadtools::ToUpperUnit(*a);
    const WCHAR ub = cadtools::ToUpperUnit(*b);
    if (ua != ub) return ua < ub ? -1 : 1;
  }
}

TEST(NaturalCompare, OrdersNamesAsPeopleRead) {
  const struct {
    const WCHAR* a;
    const WCHAR* b;
    int expected;
  } cases[] = {
      {W("file9"), W("file10"), -1},
      {W("File10"), W("file10"), 0},
      {W("abc"), W("ABC"), 0},
      {W("a b"), W("ab"), 0},
      {W(" a\t b "), W("ab"), 0},
      {W("a01"), W("a1"), -1},           // "01" and "1" digit by digit
      {W("x010"), W("x02"), -1},         // a leading zero on either side
      {W("x2"), W("x010"), 1},
      {W("x1 2"), W("x12"), -1},         // a space ends the run
      {W("x12a"), W("x12b"), -1},        // equal runs go on after them
      {W("x19"), W("x21"), -1},          // the first differing digit, same length
      {W("-K12"), W("-K3"), 1},
      {W("=A1+B2-X15:7"), W("=A1+B2-X15:10"), -1},
      {W("ab"), W("abc"), -1},           // the end is smaller than any unit
      {W("a1"), W("aa"), -1},            // '1' < 'A' as units
      {W("_"), W("a"), 1},               // '_' > 'A': upper case decides
      {W("\u00E9"), W("\u00C9"), 0},     // case beyond ASCII
      {W("\uFF21"), W("z"), 1},          // units compare unsigned
      {W("\u0669"), W("\u0661\u0660"), -1},  // Arabic-Indic 9 < 10
      {W("a\u30001"), W("a1"), 0},       // ideographic space
      {nullptr, W(""), 0},
      {nullptr, W("a"), -1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.a, c.b));
    EXPECT_EQ(CTextTools::NaturalCompare(c.a, c.b), c.expected);
    EXPECT_EQ(CTextTools::NaturalCompare(c.b, c.a), -c.expected);
  }
}

TEST(NaturalCompare, DigitRuns) {
  const struct {
    const WCHAR* a;
    const WCHAR* b;
    int right, left;
  } cases[] = {
      {W("12"), W("9"), 1, -1},
      {W("25x"), W("29"), -1, -1},
      {W("7a"), W("7b"), 0, 0},
      {W("010"), W("02"), 1, -1},
      {W("01"), W("010"), -1, -1},
      {W("91"), W("19"), 1, 1},
      {W("5"), W(""), 1, 1},
      {nullptr, nullptr, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.a, c.b));
    EXPECT_EQ(CTextTools::CompareRight(c.a, c.b), c.right);
    EXPECT_EQ(CTextTools::CompareLeft(c.a, c.b), c.left);
    EXPECT_EQ(CTextTools::CompareRight(c.b, c.a), -c.right);
    EXPECT_EQ(CTextTools::CompareLeft(c.b, c.a), -c.left);
  }
}

TEST(NaturalCompare, LongEqualRunsTakeLinearTime) {
  const WString run(300000, u'7');
  EXPECT_EQ(CTextTools::NaturalCompare((run + W("a")).c_str(), (run + W("b")).c_str()), -1);
  const WString zeros = W("0") + run;
  EXPECT_EQ(CTextTools::NaturalCompare((zeros + W("b")).c_str(), (zeros + W("a")).c_str()), 1);
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

#include "text_test_util.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <random>
#include <algorithm>
#include <iterator>

namespace {

using cadtools::WString;

// The matching rules as the host states them, on lowered copies.
int ReferenceTextLike(WString text, WString pattern) {
  if (pattern.empty()) return text.empty() ? 1 : 0;
  if (pattern.find_first_not_of(u'*') == WString::npos) return 1;
  if (text.empty()) return 0;
  for (WCHAR& ch : text) ch = cadtools::ToLowerUnit(ch);
  for (WCHAR& ch : pattern) ch = cadtools::ToLowerUnit(ch);
  if (pattern.find(u'*') == WString::npos) return text == pattern ? 1 : 0;
  std::size_t matchedTo = 0;
  bool first = true;
  for (std::size_t i = 0; i < pattern.size();) {
    const std::size_t end = std::min(pattern.find(u'*', i), pattern.size());
    if (end > i) {
      const std::size_t at = text.find(pattern.substr(i, end - i), matchedTo);
      if (at == WString::npos || (first && at != 0 && pattern.front() != u'*')) return 0;
      matchedTo = at + (end - i);
      first = false;
    }
    i = end + 1;
  }
  return matchedTo == text.size() || pattern.back() == u'*' ? 1 : 0;
}

TEST(IsTextLike, Examples) {
  const struct {
    const WCHAR* text;
    const WCHAR* pattern;
    int expected;
  } cases[] = {
      {W("Motor"), W(""), 0},           {W(""), W(""), 1},
      {W("anything"), W("**"), 1},      {W(""), W("*"), 1},
      {W(""), W("a*"), 0},              {W("MOTOR"), W("motor"), 1},
      {W("Motor12"), W("mot*12"), 1},   {W("xMotor"), W("mot*"), 0},
      {W("Motor"), W("mot"), 0},        {W("\u00C9tage"), W("\u00E9TAGE"), 1},
      {W("abab"), W("*ab"), 0},         // the first "ab" is taken
      {W("abab"), W("*ab*"), 1},        {W("abab"), W("ab*ab"), 1},
      {W("aXb"), W("a**b"), 1},         // adjacent stars act as one
      {W("a"), W("a*a"), 0},            {W("aa"), W("a*a"), 1},
      {W("ba"), W("*b*a"), 1},          {W("ab"), W("*b*a"), 0},  // literals in order
      {W("PLC.Rack1.Slot04"), W("plc.*.slot0*"), 1},
      {W("=A1+B2-X15:7"), W("*:7"), 1}, {W("X1:23"), W("x1:*"), 1},
      {W("-M3.2"), W("-K*"), 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(cadtools::test::Pair(c.text, c.pattern));
    EXPECT_EQ(CTextTools::IsTextLike(c.text, c.pattern), c.expected);
  }
  EXPECT_EQ(CTextTools::IsTextLike(CString(W("a\0b"), 3), CString(W("*\0B"), 3)), 1);  // NULs are units
}

TEST(IsTextLike, MatchesTheRulesOnMixedText) {
  std::mt19937 rng(7);
  // Kelvin sign lowers to k; dotless i is its own lower case, while I lowers to i.
  const WString shortAlphabet = W("aAbB**\u00E9\u00C9kK\u212A\u0131iI");
  for (int i = 0; i < 20000; ++i) {
    const WString text = cadtools::test::RandomText(rng, shortAlphabet, 10);
    const WString pattern = cadtools::test::RandomText(rng, shortAlphabet, 8);
    ASSERT_EQ(CTextTools::IsTextLike(text.c_str(), pattern.c_str()), ReferenceTextLike(text, pattern))
        << cadtools::test::Pair(text.c_str(), pattern.c_str());
  }
  // Long literals over two letters, cut from the text or from another
  // string of the same blocks, so that near misses abound; the case of the
  // text is flipped at random.
  const WString blocks[] = {W("ab"), W("aab"), W("b"), W("abab"), W("aaab")};
  const auto blockText = [&](std::size_t count) {
    WString t;
    for (std::size_t k = 0; k < count; ++k) t += blocks[rng() % std::size(blocks)];
    return t;
  };
  std::uniform_int_distribution<std::size_t> length(17, 40);
  for (int i = 0; i < 20000; ++i) {
    WString text = blockText(rng() % 60);
    const WString source = i % 2 == 0 ? text + W("abababababababababab") : blockText(20);
    const std::size_t n = std::min(length(rng), source.size());
    const WString literal = source.substr(rng() % (source.size() - n + 1), n);
    for (WCHAR& ch : text) {
      if (rng() % 2 == 0) ch = ch == u'a' ? u'A' : u'B';
    }
    const WString pattern = (i % 5 == 0 ? W("") : W("*")) + literal + (i % 7 == 0 ? W("") : W("*"));
    ASSERT_EQ(CTextTools::IsTextLike(text.c_str(), pattern.c_str()), ReferenceTextLike(text, pattern))
        << cadtools::test::Pair(text.c_str(), pattern.c_str());
  }
}

TEST(IsTextLikeArray, JoinsWithCarets) {
  CStringArray ab;
  ab.Add(W("a"));
  ab.Add(W("b"));
  CStringArray currency;
  currency.Add(W("\u00A4"));
  const CStringArray empty;
  const struct {
    const WCHAR* text;
    const CStringArray& list;
    bool expected;
  } cases[] = {
      {W("a\u00A4b"), ab, true}, {W("a^b"), ab, true},   {W("A^b"), ab, false},   {W("ab"), ab, false},
      {W("a^b^"), ab, false},    {W("a^"), ab, false},   {W(""), empty, true},    {W("a"), empty, false},
      {W("\u00A4"), currency, false},  // the list's own currency signs stay
      {W("^"), currency, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::IsTextLikeArray(c.text, c.list), c.expected) << testing::PrintToString(CString(c.text));
  }
}

}  // namespace

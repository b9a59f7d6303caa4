#include "text_test_util.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace {

using cadtools::WString;

// The matching rules as the host states them, on lowered copies.
int ReferenceTextLike(WString text, WString pattern) {
  if (pattern.find_first_not_of(u'*') == WString::npos) return pattern.empty() && !text.empty() ? 0 : 1;
  if (text.empty()) return 0;
  for (WCHAR& ch : text) ch = cadtools::ToLowerUnit(ch);
  for (WCHAR& ch : pattern) ch = cadtools::ToLowerUnit(ch);
  if (pattern.find(u'*') == WString::npos) return text == pattern ? 1 : 0;
  std::size_t matchedTo = 0;
  for (std::size_t i = 0, end = 0; i < pattern.size(); i = end + 1) {
    end = std::min(pattern.find(u'*', i), pattern.size());
    if (end == i) continue;
    const std::size_t at = text.find(pattern.substr(i, end - i), matchedTo);
    if (at == WString::npos || (i == 0 && at != 0)) return 0;  // i == 0: no leading '*'
    matchedTo = at + (end - i);
  }
  return matchedTo == text.size() || pattern.back() == u'*' ? 1 : 0;
}

void ExpectLikeReference(const WString& text, const WString& pattern) {
  ASSERT_EQ(CTextTools::IsTextLike(text.c_str(), pattern.c_str()), ReferenceTextLike(text, pattern))
      << cadtools::test::Pair(text.c_str(), pattern.c_str());
}

TEST(IsTextLike, Examples) {
  const struct {
    const WCHAR *text, *pattern;
    int expected;
  } cases[] = {
      {W("Motor"), W(""), 0},           {W(""), W(""), 1},
      {W("anything"), W("**"), 1},      {W(""), W("*"), 1},
      {W(""), W("a*"), 0},              {W("MOTOR"), W("motor"), 1},
      {W("Motor12"), W("mot*12"), 1},   {W("xMotor"), W("mot*"), 0},
      {W("abab"), W("*ab"), 0},         // the first "ab" is taken
      {W("abab"), W("*ab*"), 1},        {W("aXb"), W("a**b"), 1},  // adjacent stars act as one
      {W("ab"), W("*b*a"), 0},          {W("PLC.Rack1.Slot04"), W("plc.*.slot0*"), 1},
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
  const WString alphabet = W("aAbB**\u00E9\u00C9kK\u212A\u0131iI");
  for (int i = 0; i < 20000; ++i) {
    ExpectLikeReference(cadtools::test::RandomText(rng, alphabet, 10), cadtools::test::RandomText(rng, alphabet, 8));
  }
  // Long literals over two letters, cut from the text or from another
  // string of the same blocks, so that near misses abound; the case of the
  // text is flipped at random.
  const WString blocks[] = {W("ab"), W("aab"), W("b"), W("abab"), W("aaab")};
  const auto blockText = [&](std::size_t count) {
    WString t;
    while (count-- > 0) t += blocks[rng() % std::size(blocks)];
    return t;
  };
  for (int i = 0; i < 20000; ++i) {
    WString text = blockText(rng() % 60);
    const WString source = i % 2 == 0 ? text + W("abababababababababab") : blockText(20);
    const std::size_t n = std::min<std::size_t>(17 + rng() % 24, source.size());
    const WString literal = source.substr(rng() % (source.size() - n + 1), n);
    for (WCHAR& ch : text) ch = rng() % 2 == 0 ? ch : ch == u'a' ? u'A' : u'B';
    ExpectLikeReference(text, (i % 5 == 0 ? W("") : W("*")) + literal + (i % 7 == 0 ? W("") : W("*")));
  }
}

CStringArray List(std::initializer_list<const WCHAR*> items) {
  CStringArray list;
  for (const WCHAR* item : items) list.Add(item);
  return list;
}

TEST(IsTextLikeArray, JoinsWithCarets) {
  const CStringArray ab = List({W("a"), W("b")});
  const struct {
    const WCHAR* text;
    CStringArray list;
    bool expected;
  } cases[] = {
      {W("a\u00A4b"), ab, true}, {W("a^b"), ab, true},       {W("A^b"), ab, false},  {W("a^b^"), ab, false},
      {W("a^"), ab, false},      {W(""), List({}), true},    {W("a"), List({}), false},
      {W("\u00A4"), List({W("\u00A4")}), false},  // the list's own currency signs stay
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::IsTextLikeArray(c.text, c.list), c.expected) << testing::PrintToString(CString(c.text));
  }
}

}  // namespace

#include "editing_test_util.h"

#include <random>

using cadtools::test::ThrowsInvalidArg;

using cadtools::test::Units;

namespace {

TEST(Trimming, TrimChar) {
  struct Case {
    CString str;
    WCHAR ch;
    CString trimmed;
  };
  const Case cases[] = {
      {u"  --ab--  ", u'-', u"ab"},
      {u"- -x- -", u'-', u"x"},
      {u" \u3000a\u2003 ", u'-', u"a"},  // a space starts a side, which then takes all white space
      {u"\tab\t", u'-', u"\tab\t"},      // only U+0020 or ch starts a side
      {u"-\tab", u'-', u"\tab"},
      {u"a\t-", u'-', u"a\t"},
      {u" -\t-", u'-', u"\t"},
      {u"\t ", u'-', u""},              // emptied by the right side alone: no exception
      {Units(u"\0a\0"), 0, u"a"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CTextTools::TrimChar(c.str, c.ch), c.trimmed) << testing::PrintToString(c.str);
  }
  // The host relies on the exception when the left side leaves nothing.
  for (const CString& str : {CString(), CString(u" "), CString(u"  --  "), CString(u" \t-- -")}) {
    EXPECT_TRUE(ThrowsInvalidArg([&] { CTextTools::TrimChar(str, u'-'); })) << testing::PrintToString(str);
  }
  EXPECT_TRUE(ThrowsInvalidArg([] { CTextTools::TrimChar(CString(), 0); }));
  EXPECT_TRUE(ThrowsInvalidArg([] { CTextTools::TrimChar(Units(u"\0 \0"), 0); }));
}

TEST(Trimming, SingleCharacters) {
  EXPECT_EQ(CTextTools::Trim(u"\t a b \u3000\u200B"), u"a b \u3000\u200B");  // zero width space is no white space
  EXPECT_EQ(CTextTools::TrimFirstChar(u"==x", u'='), u"=x");
  EXPECT_EQ(CTextTools::TrimFirstChar(u"x=", u'='), u"x=");
  EXPECT_EQ(CTextTools::TrimFirstChar(u"", 0), u"");
  EXPECT_EQ(CTextTools::Remove(Units(u"1 0\0 0"), u' '), Units(u"10\0" u"0"));
}

TEST(Trimming, BracketedSegments) {
  struct Case {
    const char16_t *str, *open, *close, *first_cut, *all_cut;
  };
  const Case cases[] = {
      {u"Motor (spare) A (old)", u"(", u")", u"Motor ", u"Motor  A "},
      {u"a[x]]b", u"[", u"]]", u"a", u"a]b"},  // only the close's first unit goes
      {u"((x))", u"(", u")", u"", u")"},
      {u"aabx)b)", u"ab", u")", u"a", u""},     // the cut joins "a" and "b)" into a new open
      {u"a)b(c", u"(", u")", u"a)b(c", u"a)b(c"},
      {u"()", u"(", u")", u"", u""},
      {u"(", u"(", u"(", u"(", u"("},          // the close is searched after the open
      {u"x(y)", u"", u")", u"x(y)", u"x(y)"},
      {u"x(y)", u"(", u"", u"x(y)", u"x(y)"},
      {u"", u"(", u")", u"", u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(CString(c.str)));
    EXPECT_EQ(CTextTools::TrimStringBySeparator(c.str, c.open, c.close), c.first_cut);
    EXPECT_EQ(CTextTools::TrimStringBySeparatorEx(c.str, c.open, c.close), c.all_cut);
  }
}

// The rounds as the host runs them, each from the start of the text.
CString RemoveSegmentsByRounds(const CString& str, const CString& open, const CString& close) {
  cadtools::WString s(str.View());
  for (;;) {
    const auto p = s.find(open.View());
    if (p == s.npos) break;
    const auto q = s.find(close.View(), p + 1);
    if (q == s.npos) break;
    s.erase(p, q + 1 - p);
  }
  return CString(s.data(), static_cast<int>(s.size()));
}

TEST(Trimming, BracketedSegmentsMatchRoundsFromTheStart) {
  // Small alphabets make overlapping and joining separators frequent.
  const char16_t* const seps[][2] = {{u"(", u")"}, {u"ab", u"b"}, {u"aba", u"ba"}, {u"aa", u"a"}, {u"ab", u"ab"}};
  std::mt19937 rng(7);
  for (int round = 0; round < 4000; ++round) {
    CString str;
    for (auto n = rng() % 24; n > 0; --n) str.AppendChar(static_cast<WCHAR>(u"ab()x"[rng() % 5]));
    for (const auto& sep : seps) {
      ASSERT_EQ(CTextTools::TrimStringBySeparatorEx(str, sep[0], sep[1]), RemoveSegmentsByRounds(str, sep[0], sep[1]))
          << testing::PrintToString(str) << " " << testing::PrintToString(CString(sep[0]));
    }
  }
}

}  // namespace

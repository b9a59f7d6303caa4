#include "editing_test_util.h"

using cadtools::test::ThrowsInvalidArg;
using cadtools::test::Units;

namespace {

TEST(Trimming, TrimChar) {
  struct Case { CString str; WCHAR ch; CString trimmed; };
  const Case cases[] = {
      {u"  --ab--  ", u'-', u"ab"}, {u"- -x- -", u'-', u"x"},
      {u" \u3000a\u2003 ", u'-', u"a"},  // a space starts a side, which then takes all white space
      {u"\tab\t", u'-', u"\tab\t"},      // only U+0020 or ch starts a side
      {u"-\tab", u'-', u"\tab"},         {u"a\t-", u'-', u"a\t"}, {u" -\t-", u'-', u"\t"},
      {u"\t ", u'-', u""},  // emptied by the right side alone: no exception
      {Units(u"\0a\0"), 0, u"a"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CTextTools::TrimChar(c.str, c.ch), c.trimmed) << testing::PrintToString(c.str);
  }
  // The host relies on the exception when the left side leaves nothing.
  const std::pair<CString, WCHAR> raising[] = {
      {u"", u'-'}, {u" ", u'-'}, {u"  --  ", u'-'}, {u" \t-- -", u'-'}, {u"", 0}, {Units(u"\0 \0"), 0},
  };
  for (const auto& [str, ch] : raising) {
    EXPECT_TRUE(ThrowsInvalidArg([&] { CTextTools::TrimChar(str, ch); })) << testing::PrintToString(str);
  }
}

TEST(Trimming, SingleCharacters) {
  EXPECT_EQ(CTextTools::Trim(u"\t a b \u3000\u200B"), u"a b \u3000\u200B");  // zero width space is no white space
  EXPECT_EQ(CTextTools::TrimFirstChar(u"==x", u'='), u"=x");
  EXPECT_EQ(CTextTools::Remove(Units(u"1 0\0 0"), u' '), Units(u"10\0" u"0"));
}

TEST(Trimming, BracketedSegments) {
  struct Case { const char16_t *str, *open, *close, *first_cut, *all_cut; };
  const Case cases[] = {
      {u"Motor (spare) A (old)", u"(", u")", u"Motor ", u"Motor  A "},
      {u"a[x]]b", u"[", u"]]", u"a", u"a]b"},  // only the close's first unit goes
      {u"((x))", u"(", u")", u"", u")"},
      {u"aabx)b)", u"ab", u")", u"a", u""},  // the cut joins "a" and "b)" into a new open
      {u"ababcx)c)", u"abc", u")", u"ab", u""},  // and "ab" and "c)" here
      {u"a)b(c", u"(", u")", u"a)b(c", u"a)b(c"},
      {u"(", u"(", u"(", u"(", u"("},  // the close is searched after the open
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

}  // namespace

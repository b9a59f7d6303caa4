#include "editing_test_util.h"

using cadtools::test::Units;

namespace {

TEST(Prefixes, AddAndRemove) {
  struct Case { const char16_t *str, *prefix, *added, *removed; };
  const Case cases[] = {
      {u"A1", u"=", u"=A1", u"A1"},   {u"=A1", u"=", u"=A1", u"A1"}, {u"x=", u"=", u"=x=", u"x="},
      {u"=", u"=", u"", u""},         {u"", u"=", u"", u""},  // nothing but the prefix carries no content
      {u"=a", u"=A", u"=A=a", u"=a"},  // case-sensitive
      {u"ab", u"", u"ab", u"ab"},     {u"", u"", u"", u""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(CString(c.str)) + " " + testing::PrintToString(CString(c.prefix)));
    EXPECT_EQ(CTextTools::AddPrefix(c.str, c.prefix), c.added);
    EXPECT_EQ(CTextTools::RemovePrefix(c.str, c.prefix), c.removed);
  }
}

TEST(Searching, FindNoCase) {
  struct Case { CString str, sub; int start, found; };
  const Case cases[] = {
      {u"Rack PLC plc", u"plc", 0, 5},  {u"Rack PLC plc", u"pLc", 6, 9}, {u"Rack", u"CKX", 0, -1},
      {u"abc", u"", 3, 3},              {u"abc", u"", 4, -1},           {u"abc", u"a", -1, -1},
      {u"\u00C9t\u00C9", u"\u00E9", 1, 2},  // per unit, beyond ASCII too
      {Units(u"a\0B\0b"), Units(u"\0b"), 0, 1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CTextTools::FindNoCase(c.str, c.sub, c.start), c.found)
        << testing::PrintToString(c.str) << " " << testing::PrintToString(c.sub) << " from " << c.start;
  }
}

TEST(Searching, FindFirstSeparateStrInStr) {
  // rest as left behind: "untouched" when not found.
  struct Case { const char16_t *str, *word; int found; const char16_t* rest; };
  const Case cases[] = {
      {u"PLC.Rack1", u"plc", 1, u".Rack1"}, {u"plc", u"PLC", 1, u""},     {u"PLCX", u"plc", 0, u"untouched"},
      {u"", u"", 1, u""},                   {u".x", u"", 1, u".x"},       {u"x", u"", 0, u"untouched"},
      {u"", u"plc", 0, u"untouched"},       {u"A.PLC", u"plc", 0, u"untouched"},
  };
  for (const Case& c : cases) {
    CString rest = u"untouched";
    EXPECT_EQ(CTextTools::FindFirstSeparateStrInStr(c.str, c.word, u'.', rest), c.found)
        << testing::PrintToString(CString(c.str));
    EXPECT_EQ(rest, c.rest);
  }
}

}  // namespace

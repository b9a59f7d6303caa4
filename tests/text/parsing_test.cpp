#include "editing_test_util.h"

#include <set>

using cadtools::test::Elements;
using cadtools::test::Fields;
using cadtools::test::Units;

namespace {

std::set<LONG> Keys(const CMap<LONG, LONG, short, short>& map) {
  std::set<LONG> keys;
  LONG key = 0;
  short value = 0;
  for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
    map.GetNextAssoc(pos, key, value);
    EXPECT_EQ(value, 0);
    keys.insert(key);
  }
  return keys;
}

TEST(Parsing, FillLongMapFromString) {
  struct Case { const char16_t* str; WCHAR sep; std::set<LONG> keys; };
  const Case cases[] = {
      {u" 3, 5 ,,5, x ", u',', {0, 3, 5}}, {u"12abc;-7;+8;- 9", u';', {12, -7, 8, 0}},
      {u"99999999999", u',', {2147483647}}, {u"-99999999999", u',', {-2147483647 - 1}},  // saturated
      {u"2147483647,-2147483648,000000000000000000002", u',', {2147483647, -2147483647 - 1, 2}},
      {u"\u0663,\uFF14,\u3000 4", u',', {0, 4}},  // only ASCII digits count
      {u"  ", u',', {}}, {u"1 2", u' ', {1, 2}},
  };
  CMap<LONG, LONG, short, short> map;
  for (const Case& c : cases) {
    map.SetAt(42, 1);  // emptied first
    CTextTools::FillLongMapFromString(map, c.str, c.sep);
    EXPECT_EQ(Keys(map), c.keys) << testing::PrintToString(CString(c.str));
  }
}

TEST(Parsing, GetCharactersArrayKeepsPairsTogether) {
  struct Case { CString str; Fields characters; };
  const Case cases[] = {
      {u"a\U0001F600b", {u"a", u"\U0001F600", u"b"}},
      {u"\xDC00x\xD800", {u"\xDC00", u"x"}},  // a lone low stays, a final high goes
      {u"\xD800\xD801y", {u"\xD801y"}},       // a later high takes the first's place
      {u"\xD800z", {u"\xD800z"}},             {Units(u"\0\0"), {Units(u"\0"), Units(u"\0")}}, {u"", {}},
  };
  CStringArray out;
  for (const Case& c : cases) {
    out.Add(u"old");  // emptied first
    CTextTools::GetCharactersArray(c.str, out);
    EXPECT_EQ(Elements(out), c.characters) << testing::PrintToString(c.str);
  }
}

TEST(Parsing, DigitAndFormatTests) {
  const std::pair<CString, int> digits[] = {{u"0042", 1}, {u"", 0}, {u"-1", 0}, {u"\u0663", 0}, {Units(u"1\0"), 0}};
  for (const auto& [str, expected] : digits) EXPECT_EQ(CTextTools::IsStringDigit(str), expected);

  const std::pair<const char16_t*, int> formats[] = {
      {u"%03d", 1}, {u"%010D", 1}, {u"%00d", 1}, {u"%0\u0663d", 1},  // the host's wide digit test
      {u"%3d", 0},  {u"%0d", 0},   {u"%03x", 0}, {u"%0 3d", 0},      {u"03d", 0}, {u"%13d", 0},
  };
  for (const auto& [fmt, expected] : formats) EXPECT_EQ(CTextTools::IsValidNumberFormat(fmt), expected);
}

TEST(Parsing, FormatFloatNumber) {
  struct Case { const char16_t* text; int min_decimals; const char16_t* trimmed; };
  const Case cases[] = {
      {u"12.5000", 1, u"12.5"}, {u"12.5000", 0, u"12.5"},     {u"3.000", 0, u"3."},  {u"7,2500", 2, u"7,25"},
      {u"1.5", 3, u"1.5"},      {u"100", 0, u"100"},          {u"100.0", -5, u"100."},
      {u"1,000.50", 0, u"1,000.5"},                           // '.' is looked for first
      {u"2.500", 2147483647, u"2.5"},                         // the sum wraps to a negative count
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CTextTools::FormatFloatNumber(c.text, c.min_decimals), c.trimmed)
        << testing::PrintToString(CString(c.text)) << " " << c.min_decimals;
  }
}

}  // namespace

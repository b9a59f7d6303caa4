#include <cadtools/compat/cstring.h>
#include <cadtools/compat/wide_ctype.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

#include "compat/compat_test_util.h"

#define W CADTOOLS_WIDE

namespace {

using cadtools::test::ThrowsInvalidArg;
using cadtools::test::Units;

TEST(CStringTest, ConstructionKeepsUnitsAndNuls) {
  EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
  EXPECT_TRUE(CString(static_cast<const char16_t*>(nullptr)).IsEmpty());
  EXPECT_EQ(CString(L"ab\u00E9"), Units(u"ab\u00E9"));
  EXPECT_EQ(CString(u"ab\u00E9"), Units(u"ab\u00E9"));
  // Outside the BMP: a surrogate pair whatever the width of wchar_t.
  EXPECT_EQ(CString(L"\U0001F600"), Units(u"\xD83D\xDE00"));
  EXPECT_EQ(CString(L"x\xD800y"), Units(u"x\xD800y"));  // a lone surrogate survives

  const CString with_nul(W("a\0b"), 3);
  EXPECT_EQ(with_nul.GetLength(), 3);
  EXPECT_NE(with_nul, W("a"));
  EXPECT_EQ(with_nul.GetString()[3], 0);
  EXPECT_EQ(CString(W('z'), 3), W("zzz"));
  EXPECT_TRUE(CString(W('z'), -2).IsEmpty());
  EXPECT_TRUE(ThrowsInvalidArg([] { CString(W("abc"), -1); }));
  EXPECT_TRUE(ThrowsInvalidArg([] { CString(static_cast<const WCHAR*>(nullptr), 2); }));
}

TEST(CStringTest, Utf32WideCharsBecomeUtf16) {
  if constexpr (sizeof(wchar_t) == 4) {
    const wchar_t text[] = {static_cast<wchar_t>(0x10FFFF), static_cast<wchar_t>(0x110000),
                            static_cast<wchar_t>(0xDFFF), static_cast<wchar_t>(-1), 0};
    EXPECT_EQ(CString(text), Units(u"\xDBFF\xDFFF\uFFFD\xDFFF\uFFFD"));
  }
}

TEST(CStringTest, IndexRules) {
  CString s(W("abc"));
  struct Case {
    int index;
    bool get_ok;
    bool set_ok;
  };
  for (const Case& c : {Case{-1, false, false}, Case{0, true, true}, Case{2, true, true}, Case{3, true, false},
                        Case{4, false, false}}) {
    SCOPED_TRACE(c.index);
    EXPECT_EQ(ThrowsInvalidArg([&] { static_cast<void>(s.GetAt(c.index)); }), !c.get_ok);
    EXPECT_EQ(ThrowsInvalidArg([&] { static_cast<void>(s[c.index]); }), !c.get_ok);
    EXPECT_EQ(ThrowsInvalidArg([&] { s.SetAt(c.index, W('x')); }), !c.set_ok);
  }
  EXPECT_EQ(CString(W("abc")).GetAt(3), 0);  // the terminator
  EXPECT_EQ(s, W("xbx"));  // set at 0 and 2
}

TEST(CStringTest, LeftMidRightClamp) {
  const CString s(W("abcdef"));
  struct Case {
    CString got;
    const WCHAR* want;
  };
  const Case cases[] = {
      {s.Left(2), W("ab")},     {s.Left(-1), W("")},         {s.Left(99), W("abcdef")},
      {s.Right(2), W("ef")},    {s.Right(-3), W("")},        {s.Right(99), W("abcdef")},
      {s.Mid(2), W("cdef")},    {s.Mid(-5), W("abcdef")},    {s.Mid(6), W("")},
      {s.Mid(7), W("")},        {s.Mid(1, 2), W("bc")},      {s.Mid(-1, 2), W("ab")},
      {s.Mid(4, 99), W("ef")},  {s.Mid(2, -1), W("")},       {s.Mid(99, 2), W("")},
      {s.Mid(1, 0x7FFFFFFF), W("bcdef")},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
}

TEST(CStringTest, FindAndReverseFind) {
  const CString s(W("a.b.c"));
  struct Case {
    int got;
    int want;
  };
  const Case cases[] = {
      {s.Find(W('.')), 1},          {s.Find(W('.'), 2), 3},         {s.Find(W('.'), 4), -1},
      {s.Find(W('.'), -1), -1},     {s.Find(W('.'), 5), -1},        {s.Find(W('z')), -1},
      {s.Find(W("b.c")), 2},      {s.Find(W(".c"), 4), -1},     {s.Find(W(""), 5), 5},
      {s.Find(W(""), 6), -1},     {s.Find(W("a"), -1), -1},     {s.Find(static_cast<const WCHAR*>(nullptr)), -1},
      {s.ReverseFind(W('.')), 3},   {s.ReverseFind(W('z')), -1},    {CString(W("a\0b"), 3).Find(W('b')), 2},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
}

TEST(CStringTest, EditingReturnsCountsAndLengths) {
  struct Case {
    const WCHAR* start;
    std::function<int(CString&)> edit;
    int want_result;
    const WCHAR* want_text;
  };
  const Case cases[] = {
      {W("a-b-c"), [](CString& s) { return s.Replace(W('-'), W('+')); }, 2, W("a+b+c")},
      {W("a-b"), [](CString& s) { return s.Replace(W('-'), W('-')); }, 0, W("a-b")},
      {W("aaa"), [](CString& s) { return s.Replace(W("aa"), W("b")); }, 1, W("ba")},
      {W("x.y.z"), [](CString& s) { return s.Replace(W("."), W("::")); }, 2, W("x::y::z")},
      {W("x.y"), [](CString& s) { return s.Replace(W("."), nullptr); }, 1, W("xy")},
      {W("x.y"), [](CString& s) { return s.Replace(W(""), W("-")); }, 0, W("x.y")},
      {W("banana"), [](CString& s) { return s.Remove(W('a')); }, 3, W("bnn")},
      {W("ac"), [](CString& s) { return s.Insert(1, W('b')); }, 3, W("abc")},
      {W("ac"), [](CString& s) { return s.Insert(-4, W("<")); }, 3, W("<ac")},
      {W("ac"), [](CString& s) { return s.Insert(99, W(">>")); }, 4, W("ac>>")},
      {W("abcd"), [](CString& s) { return s.Delete(1, 2); }, 2, W("ad")},
      {W("abcd"), [](CString& s) { return s.Delete(-1); }, 3, W("bcd")},
      {W("abcd"), [](CString& s) { return s.Delete(2, 99); }, 2, W("ab")},
      {W("abcd"), [](CString& s) { return s.Delete(9, 1); }, 4, W("abcd")},
      {W("abcd"), [](CString& s) { return s.Delete(1, -1); }, 4, W("abcd")},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    CString s(cases[i].start);
    EXPECT_EQ(cases[i].edit(s), cases[i].want_result) << "case " << i;
    EXPECT_EQ(s, cases[i].want_text) << "case " << i;
  }
}

TEST(CStringTest, Trim) {
  // Every unit of the white-space set, and a few look-alikes that are not.
  const CString spaces = Units(u"\t\n\v\f\r \x85\xA0\u1680\u2000\u2005\u200A\u2028\u2029\u202F\u205F\u3000");
  struct Case {
    CString got;
    CString want;
  };
  const CString padded = spaces + W("a b") + spaces;
  const Case cases[] = {
      {CString(padded).Trim(), W("a b")},
      {CString(padded).TrimLeft(), W("a b") + spaces},
      {CString(padded).TrimRight(), spaces + W("a b")},
      {CString(W("xxaxx")).Trim(W('x')), W("a")},
      {CString(W("xxaxx")).TrimLeft(W('x')), W("axx")},
      {CString(W("xyaxy")).TrimRight(W("yx")), W("xya")},
      {CString(W("xyaxy")).Trim(W("xy")), W("a")},
      {CString(W(" a ")).Trim(static_cast<const WCHAR*>(nullptr)), W(" a ")},
      {CString(W("   ")).Trim(), W("")},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
}

TEST(CStringTest, CaseMapping) {
  CString s(W("Straße ÆØÅ Ωμέγα Жук ǅ"));
  EXPECT_EQ(CString(s).MakeUpper(), W("STRAßE ÆØÅ ΩΜΈΓΑ ЖУК Ǆ"));
  EXPECT_EQ(s.MakeLower(), W("straße æøå ωμέγα жук ǆ"));
  EXPECT_EQ(CString(W("ÉCOLE")).CompareNoCase(W("école")), 0);
}

TEST(CStringTest, ComparisonAndConcatenation) {
  struct Case {
    CString a;
    CString b;
    int compare;
    int no_case;
  };
  const Case cases[] = {
      {W("abc"), W("abc"), 0, 0},         {W("abc"), W("abd"), -1, -1}, {W("ab"), W("abc"), -1, -1},
      {W("ABC"), W("abc"), -1, 0},        {W("Ж"), W("ж"), -1, 0},      {W("\uFF21"), W("a"), 1, 1},
      {CString(W("a\0b"), 3), W("a"), 1, 1},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    EXPECT_EQ(c.a.Compare(c.b), c.compare) << i;
    EXPECT_EQ(c.b.Compare(c.a), -c.compare) << i;
    EXPECT_EQ(c.a.CompareNoCase(c.b), c.no_case) << i;
    EXPECT_EQ(c.a == c.b, c.compare == 0) << i;
    EXPECT_EQ(c.a < c.b, c.compare < 0) << i;
    EXPECT_EQ(c.a >= c.b, c.compare >= 0) << i;
  }
  const CString s(W("b"));
  EXPECT_TRUE(s == W("b") && W("b") == s && s != W("c") && W("a") < s && s <= W("b") && s > W("a"));
  EXPECT_TRUE(s == L"b" && L"b" == s && s == u"b" && u"b" == s);
  EXPECT_EQ(s.Compare(nullptr), 1);
  EXPECT_EQ(W("<") + s + W('>') + W("|") + CString(W("!")), W("<b>|!"));
  EXPECT_EQ(W('[') + s, W("[b"));
  CString t;
  t += W("x");
  t += s;
  t += W('y');
  t.Append(W("z\0w"), 3);
  EXPECT_EQ(t, CString(W("xbyz\0w"), 6));
}

TEST(CStringTest, Utf8) {
  struct Case {
    std::string utf8;
    CString utf16;
  };
  const Case round_trips[] = {
      {"", W("")},
      {"a\xC3\xA9\xE2\x82\xAC", W("a\u00E9\u20AC")},
      {"\xF0\x9F\x98\x80", Units(u"\xD83D\xDE00")},
      {"\xF4\x8F\xBF\xBF", Units(u"\xDBFF\xDFFF")},
  };
  for (const Case& c : round_trips) {
    EXPECT_EQ(cadtools::FromUtf8(c.utf8), c.utf16);
    EXPECT_EQ(cadtools::ToUtf8(c.utf16), c.utf8);
  }
  // Lone surrogates in either order become U+FFFD.
  EXPECT_EQ(cadtools::ToUtf8(Units(u"a\xDC00\xD800" u"b\xD800")), "a\xEF\xBF\xBD\xEF\xBF\xBD" "b\xEF\xBF\xBD");
  const Case invalid[] = {
      {"\x80x", Units(u"\uFFFDx")},                    // stray continuation byte
      {"\xC0\x80", Units(u"\uFFFD\uFFFD")},              // overlong NUL
      {"\xE0\x9F\x80", Units(u"\uFFFD\uFFFD\uFFFD")},  // overlong three-byte form
      {"\xED\xA0\x80", Units(u"\uFFFD\uFFFD\uFFFD")},  // an encoded surrogate
      {"\xF4\x90\x80\x80", Units(u"\uFFFD\uFFFD\uFFFD\uFFFD")},  // past U+10FFFF
      {"\xE2\x82x", Units(u"\uFFFDx")},                // cut short: one U+FFFD
      {"\xF0\x9F\x98", Units(u"\uFFFD")},                  // cut short at the end
      {"\xFFz", Units(u"\uFFFDz")},
  };
  for (const Case& c : invalid) EXPECT_EQ(cadtools::FromUtf8(c.utf8), c.utf16) << testing::PrintToString(c.utf8);
}

TEST(CStringTest, PrintToEscapesWhatIsNotText) {
  std::ostringstream os;
  PrintTo(Units(u"a\"\u00E9\n\xD800"), &os);
  EXPECT_EQ(os.str(), "L\"a\\\"\xC3\xA9\\u000A\\uD800\"");
}

}  // namespace

#include "editing_test_util.h"

using cadtools::test::Elements;
using cadtools::test::Fields;
using cadtools::test::Units;

namespace {

enum class Splitter { kStr, kSoftReturn, kStrEx, kString, kStringKeepLeading };

// Appends to an array that already holds "old", as callers leave it.
Fields Split(Splitter splitter, const CString& str, const CString& sep) {
  CArray<CString, CString> f;
  f.Add(u"old");
  const WCHAR unit = sep.IsEmpty() ? WCHAR{0} : sep.GetAt(0);
  switch (splitter) {
    case Splitter::kStr: {
      const int size = CMathTools::SplitStr(f, str, unit);
      EXPECT_EQ(size, f.GetSize());
      break;
    }
    case Splitter::kSoftReturn: EXPECT_EQ(CMathTools::SplitStrOnSoftReturn(f, str), 1); break;
    case Splitter::kStrEx: CTextTools::SplitStrEx(f, str, unit); break;
    case Splitter::kString: CTextTools::SplitString(f, str, sep, 0); break;
    case Splitter::kStringKeepLeading: CTextTools::SplitString(f, str, sep, 1); break;
  }
  EXPECT_EQ(f[0], u"old");
  f.RemoveAt(0);
  return Elements(f);
}

// Each splitter keeps its own rule for empty, leading, trailing and
// repeated fields.
TEST(Splitters, EmptyFieldRules) {
  using enum Splitter;
  struct Case { Splitter splitter; CString str, sep; Fields fields; };
  const Case cases[] = {
      {kStr, u"", u";", {u""}},
      {kStr, u";a;;b;", u";", {u"", u"a", u"", u"b", u""}},
      {kStr, Units(u"a\0;b"), u";", {Units(u"a\0"), u"b"}},
      {kSoftReturn, u"a\r\nb\nc\r", u"", {u"a", u"bc"}},
      {kSoftReturn, u"\r\n", u"", {u"", u""}},
      {kSoftReturn, u"", u"", {u""}},
      {kSoftReturn, u"\n\rx\r\r\ny", u"", {u"x", u"y"}},
      {kStrEx, u",,a,b,,c", u",", {u",,a", u"b", u",c"}},
      {kStrEx, u"a,,b", u",", {u"a", u",b"}},
      {kStrEx, u",a", u",", {u",a"}},
      {kStrEx, u"a,", u",", {u"a", u""}},
      {kStrEx, u"", u",", {u""}},
      {kString, u";a;;b;", u";", {u"a", u"", u"b"}},
      {kStringKeepLeading, u";a;;b;", u";", {u"", u"a", u"", u"b"}},
      {kString, u"abc", u";", {u"abc"}},
      {kStringKeepLeading, u"", u";", {}},
      {kString, u":::x", u"::", {u":x"}},
      {kStringKeepLeading, u"a;b", u"", {u"a;b"}},  // an empty separator would never advance
      {kString, Units(u"a\0b\0\0c"), Units(u"\0\0"), {Units(u"a\0b"), u"c"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Split(c.splitter, c.str, c.sep), c.fields)
        << "splitter " << static_cast<int>(c.splitter) << " on " << testing::PrintToString(c.str);
  }
}

}  // namespace

#include "editing_test_util.h"

using cadtools::test::Elements;
using cadtools::test::Fields;

using cadtools::test::Units;

namespace {

using FieldArray = CArray<CString, CString>;

// Each splitter's own rule for empty, leading, trailing and repeated
// fields; all start from an array that already holds one field.
struct SplitCase {
  CString str;
  Fields appended;
};

Fields With(const CString& first, const Fields& appended) {
  Fields all{first};
  all.insert(all.end(), appended.begin(), appended.end());
  return all;
}

TEST(Splitters, SplitStrKeepsEveryEmptyField) {
  const SplitCase cases[] = {
      {u"", {u""}},
      {u";a;;b;", {u"", u"a", u"", u"b", u""}},
      {u"DB\\F;S", {u"DB\\F", u"S"}},
      {Units(u"a\0;b"), {Units(u"a\0"), u"b"}},
  };
  for (const SplitCase& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.str));
    FieldArray f;
    f.Add(u"old");
    EXPECT_EQ(CMathTools::SplitStr(f, c.str, u';'), static_cast<int>(c.appended.size()) + 1);
    EXPECT_EQ(Elements(f), With(u"old", c.appended));
  }
}

TEST(Splitters, SplitStrOnSoftReturnSplitsOnlyAtPairs) {
  const SplitCase cases[] = {
      {u"a\r\nb\nc\r", {u"a", u"bc"}},
      {u"\r\n", {u"", u""}},
      {u"", {u""}},
      {u"\n\rx\r\r\ny", {u"x", u"y"}},
  };
  for (const SplitCase& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.str));
    FieldArray f;
    f.Add(u"old");
    EXPECT_EQ(CMathTools::SplitStrOnSoftReturn(f, c.str), 1);
    EXPECT_EQ(Elements(f), With(u"old", c.appended));
  }
}

TEST(Splitters, SplitStrExKeepsRepeatedSeparatorsAsText) {
  const SplitCase cases[] = {
      {u",,a,b,,c", {u",,a", u"b", u",c"}},
      {u"a,,b", {u"a", u",b"}},
      {u",a", {u",a"}},
      {u"a,", {u"a", u""}},
      {u"", {u""}},
      {u",", {u","}},
  };
  for (const SplitCase& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.str));
    FieldArray f;
    f.Add(u"old");
    CTextTools::SplitStrEx(f, c.str, u',');
    EXPECT_EQ(Elements(f), With(u"old", c.appended));
  }
}

TEST(Splitters, SplitStringDropsLeadingAndTrailingEmptyFields) {
  struct Case {
    const char16_t* str;
    const char16_t* sep;
    int keep;
    Fields appended;
  };
  const Case cases[] = {
      {u";a;;b;", u";", 0, {u"a", u"", u"b"}},
      {u";a;;b;", u";", 1, {u"", u"a", u"", u"b"}},
      {u"abc", u";", 1, {u"abc"}},
      {u"", u";", 1, {}},
      {u"a::b::", u"::", 0, {u"a", u"b"}},
      {u":::x", u"::", 0, {u":x"}},
      {u"a;b", u"", 1, {u"a;b"}},  // an empty separator would never advance
  };
  for (const Case& c : cases) {
    FieldArray f;
    f.Add(u"old");
    CTextTools::SplitString(f, c.str, c.sep, c.keep);
    EXPECT_EQ(Elements(f), With(u"old", c.appended)) << testing::PrintToString(CString(c.str)) << " keep " << c.keep;
  }
  // A NUL in the separator is part of it.
  FieldArray f;
  CTextTools::SplitString(f, Units(u"a\0b\0\0c"), Units(u"\0\0"), 0);
  EXPECT_EQ(Elements(f), (Fields{Units(u"a\0b"), u"c"}));
}

}  // namespace

// Charset names and numbers, code pages, language groups, surrogates and
// image names.
#include <cadtools/compat/exceptions.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "text_test_util.h"

namespace {

using cadtools::CodePageLangIdOf;
using cadtools::WString;

std::string Show(const CString& s) { return testing::PrintToString(s); }

TEST(GetCharsetTest, NumbersGiveNamesOrThemselves) {
  const struct {
    int charset;
    const WCHAR* name;
  } cases[] = {
      {0, W("Western")},   {1, W("Default")},        {2, W("Symbol")},       {128, W("Japanese")},
      {130, W("Hangul(Johab)")}, {134, W("Chinese(GB2312)")}, {136, W("Chinese")},     {163, W("Vietnamese")},
      {238, W("Central European")}, {255, W("OEM")}, {77, W("77")},          {-1, W("-1")},
      {256, W("256")},
  };
  for (const auto& c : cases) EXPECT_EQ(CTextTools::GetCharset(c.charset), CString(c.name)) << c.charset;
}

TEST(GetCharsetTest, NamesGiveNumbersWholeTrimmedAndIgnoringCase) {
  const struct {
    const WCHAR* name;
    int charset;
  } cases[] = {
      // Exact names come back through the next test's round trip.
      {W(" cyrillic "), 204},     {W("\tCHINESE(gb2312)\n"), 134}, {W("Hangul"), 129}, {W("hangul(johab)"), 130},
      {W("Klingon"), 1},          {W(""), 1},                       {W("Chin"), 1},
      {W("Central  European"), 1}, {W("77"), 1},                    {W("Chinese(GB2312"), 1},
  };
  for (const auto& c : cases) EXPECT_EQ(CTextTools::GetCharset(CString(c.name)), c.charset) << Show(c.name);
}

TEST(GetCharsetTest, EveryNameComesBackToItsNumber) {
  for (int charset = 0; charset < 256; ++charset) {
    const CString name = CTextTools::GetCharset(charset);
    if (name[0] >= u'0' && name[0] <= u'9') continue;  // no name, the number itself
    EXPECT_EQ(CTextTools::GetCharset(name), charset) << Show(name);
  }
}

TEST(CharsetToCodePageTest, KeepsItsOwnRows) {
  const struct {
    unsigned char charset;
    UINT codePage;
  } cases[] = {
      {0, 0},      {1, 0},      {2, 42},     {77, 2},     {128, 932},  {129, 949},  {130, 1361},
      {134, 936},  {136, 950},  {161, 1253}, {162, 1254}, {163, 0},    {177, 1255}, {178, 1256},
      {186, 1257}, {204, 1251}, {222, 874},  {238, 1250}, {255, 1},    {3, 0},      {254, 0},
  };
  for (const auto& c : cases) EXPECT_EQ(CTextTools::CharsetToCodePage(c.charset), c.codePage) << int{c.charset};
}

TEST(CodePageLangIdTest, MapsTheAnsiCodePages) {
  const struct {
    UINT codePage;
    int id;
  } cases[] = {
      {28591, 2},  {28592, 3},  {28595, 6},  {28599, 10}, {28590, 45}, {28600, 45}, {10000, 23},
      {950, 24},   {949, 25},   {1361, 26},  {1250, 28},  {1251, 29},  {1252, 30},  {936, 31},
      {1253, 32},  {1254, 33},  {1255, 34},  {1256, 35},  {1257, 36},  {874, 37},   {932, 38},
      {1200, 43},  {1258, 44},  {65001, 45}, {437, 45},   {0, 45},
  };
  for (const auto& c : cases) EXPECT_EQ(static_cast<int>(CodePageLangIdOf(c.codePage)), c.id) << c.codePage;
}

#if !defined(_WIN32)
// Off Windows the system code pages come from the environment.
TEST(SystemCodePageTest, EnvironmentOverridesOnlyWithAPositiveNumber) {
  const struct {
    const char* value;  // null: unset
    UINT ansi;
    UINT oem;
  } cases[] = {
      {nullptr, 1252, 437}, {"932", 932, 932}, {"0", 1252, 437}, {"-5", 1252, 437},
      {"12x", 1252, 437},   {"", 1252, 437},   {"65001", 65001, 65001},
  };
  for (const auto& c : cases) {
    if (c.value == nullptr) {
      unsetenv("CADTOOLS_ACP");
      unsetenv("CADTOOLS_OEMCP");
    } else {
      setenv("CADTOOLS_ACP", c.value, 1);
      setenv("CADTOOLS_OEMCP", c.value, 1);
    }
    EXPECT_EQ(cadtools::SystemAnsiCodePage(), c.ansi) << (c.value ? c.value : "unset");
    EXPECT_EQ(cadtools::SystemOemCodePage(), c.oem) << (c.value ? c.value : "unset");
  }
  unsetenv("CADTOOLS_ACP");
  unsetenv("CADTOOLS_OEMCP");
}
#endif

TEST(IsTextSurrogateTest, OnlyHighSurrogatesCount) {
  const struct {
    WString text;
    bool expected;
  } cases[] = {
      {{}, false},           {{u'p', u'l'}, false},       {{u'a', 0xD83D, 0xDE00}, true}, {{0xD800}, true},
      {{u'x', 0xDBFF}, true}, {{0xDC00}, false},           {{0xD7FF, 0xE000}, false},      {{u'a', 0, 0xD801}, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::IsTextSurrogate(CString(c.text.data(), static_cast<int>(c.text.size()))), c.expected)
        << Show(CString(c.text.data(), static_cast<int>(c.text.size())));
  }
}

TEST(ImagePathTest, FolderPathJoinsTheTrimmedStem) {
  const struct {
    const WCHAR* name;
    int number;
    const WCHAR* expected;
  } cases[] = {
      {W("Motor"), 3, W("C:\\img\\Motor - Image3.bmp")},
      {W(""), 0, W("C:\\img\\Image0.bmp")},
      {W("-Motor-"), -7, W("C:\\img\\Motor- - Image-7.bmp")},
      {W("  Motor  "), 2147483647, W("C:\\img\\Motor   - Image2147483647.bmp")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::CreateImageFolderPath(W("C:\\img"), W("\\"), c.name, c.number, W(".bmp")),
              CString(c.expected))
        << Show(c.name);
  }
}

TEST(ImagePathTest, ImagePathAddsADifferentVariant) {
  const struct {
    const WCHAR* name;
    const WCHAR* variant;
    const WCHAR* expected;
  } cases[] = {
      {W(" M "), W("V2"), W("d/M - V2 - Image1.png")},
      {W("M"), W(" M\t"), W("d/M - Image1.png")},
      {W("M"), W("m"), W("d/M - m - Image1.png")},
      {W("M"), W("   "), W("d/M - Image1.png")},
      {W(""), W("V"), W("d/V - Image1.png")},
      {W(""), W(""), W("d/Image1.png")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::CreateImagePath(W("d"), W("/"), c.name, c.variant, 1, W(".png")), CString(c.expected))
        << Show(c.name) << " / " << Show(c.variant);
  }
}

TEST(ImagePathTest, FullPathNameJoinsNameAndVariantUnchecked) {
  const struct {
    const WCHAR* name;
    const WCHAR* variant;
    const WCHAR* expected;
  } cases[] = {
      {W("M"), W("V"), W("d/M - V.x")},
      {W("M"), W(""), W("d/M.x")},
      {W(""), W("V"), W("d/V.x")},
      {W("M"), W("M"), W("d/M - M.x")},
      {W(" M"), W("V "), W("d/M - V.x")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::CreateFullPathName(W("d"), W("/"), c.name, c.variant, W(".x")), CString(c.expected))
        << Show(c.name) << " / " << Show(c.variant);
  }
}

TEST(ImagePathTest, FullPathNameWithoutNameOrVariantRaises) {
  for (const WCHAR* blank : {W(""), W(" ")}) {
    try {
      (void)CTextTools::CreateFullPathName(W("d"), W("/"), blank, blank, W(".x"));
      ADD_FAILURE() << "no exception for " << Show(blank);
    } catch (CInvalidArgException* e) {
      e->Delete();
    }
  }
}

}  // namespace

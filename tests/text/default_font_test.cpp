// The default font face (resource, setting, cache), its LOGFONTW, the OEM
// conversions and the locale texts.
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>
#include <cadtools/text/host_strings.h>
#include <cadtools/text_tools.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

// text_test_util.h before registry_test_util.h: the first says
// testing::PrintToString inside namespace cadtools, which must still mean
// ::testing when it is compiled.
#include "text_test_util.h"
// clang-format off
#include "registry_test_util.h"
// clang-format on
#if !defined(_WIN32)
#include "text/locale_names.h"
#endif

namespace {

constexpr UINT kFontResource = 19191;
const WCHAR* const kFontSetting = W("Settings\\Text\\DefaultFontName");

// Reaches the cache so that each case starts as a fresh process would.
struct FontCache : CTextTools {
  static void Forget() {
    m_bInitFontName = 1;
    m_strFontName.Empty();
  }
  static bool Filled() { return m_bInitFontName == 0; }
  static bool IsDefault(const CString& name) { return IsDefaultFont(name); }
};

// Settings below a scratch key for the test's duration.
class DefaultFontTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CRegBase::SetRegBase(CString(scratch_.path()) + W("\\"));
    FontCache::Forget();
  }
  void TearDown() override {
    cadtools::ClearHostString(kFontResource);
    CRegBase::SetRegBase(CString());
    FontCache::Forget();
  }
  static std::optional<CString> Stored() {
    CRegString value(kFontSetting, W("<none>"), 0, 0, HKEY_CURRENT_USER, 1);
    return value.m_bRead != 0 ? std::optional<CString>(value.m_value) : std::nullopt;
  }

  cadtools::testing::ScratchKey scratch_{"default-font"};
};

TEST_F(DefaultFontTest, ResourceAndSettingGiveTheFace) {
  const struct {
    const WCHAR* resource;  // null: not registered
    const WCHAR* setting;   // null: not stored
    const WCHAR* face;
    const WCHAR* storedAfter;
  } cases[] = {
      {W("Tahoma (8pt)"), nullptr, W("Tahoma"), W("Tahoma")},
      {W("Tahoma (8pt)"), W("Segoe UI;Arial"), W("Segoe UI"), W("Segoe UI;Arial")},
      {W("Tahoma"), W(";Arial"), W(""), W(";Arial")},
      {W("Tahoma"), W(""), W(""), W("")},
      {W("  MS Shell Dlg \t"), nullptr, W("MS Shell Dlg"), W("MS Shell Dlg")},
      {W("Arial (narrow"), nullptr, W("Arial (narrow"), W("Arial (narrow")},
      {W("Arial ) (x"), nullptr, W("Arial ) (x"), W("Arial ) (x")},
      {W("A(b)c(d"), nullptr, W("A"), W("A")},
      {W("Arial;Tahoma (8pt)"), nullptr, W("Arial"), W("Arial;Tahoma")},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(CString(c.resource)));
    cadtools::registry::SHDeleteKeyW(HKEY_CURRENT_USER, scratch_.path());
    FontCache::Forget();
    if (c.resource != nullptr) cadtools::SetHostString(kFontResource, c.resource);
    if (c.setting != nullptr) {
      CRegString value(kFontSetting);
      value = CString(c.setting);
      value.write();
    }
    EXPECT_EQ(CTextTools::GetDefaultFontFaceName(), CString(c.face));
    EXPECT_TRUE(FontCache::Filled());
    EXPECT_EQ(Stored(), std::optional<CString>(c.storedAfter));
  }
}

TEST_F(DefaultFontTest, TheFirstAnswerIsKept) {
  cadtools::SetHostString(kFontResource, W("Tahoma"));
  EXPECT_EQ(CTextTools::GetDefaultFontFaceName(), CString(W("Tahoma")));
  CRegString setting(kFontSetting);
  setting = CString(W("Arial"));
  cadtools::SetHostString(kFontResource, W("Verdana"));
  EXPECT_EQ(CTextTools::GetDefaultFontFaceName(), CString(W("Tahoma")));
}

TEST_F(DefaultFontTest, LogFontCarriesOnlyTheFace) {
  const struct {
    const WCHAR* resource;
    const WCHAR* face;
  } cases[] = {
      {W("Segoe UI"), W("Segoe UI")},
      {W(""), W("")},
      {W("A face name far longer than LOGFONTW holds"), W("A face name far longer than LOG")},
  };
  for (const auto& c : cases) {
    cadtools::registry::SHDeleteKeyW(HKEY_CURRENT_USER, scratch_.path());
    FontCache::Forget();
    cadtools::SetHostString(kFontResource, c.resource);
    const LOGFONTW font = CTextTools::GetDefaultLogFont();
    EXPECT_EQ(CString(font.lfFaceName), CString(c.face));
    EXPECT_EQ(font.lfHeight | font.lfWidth | font.lfEscapement | font.lfOrientation | font.lfWeight, 0);
    EXPECT_EQ(font.lfItalic | font.lfUnderline | font.lfStrikeOut | font.lfCharSet | font.lfOutPrecision |
                  font.lfClipPrecision | font.lfQuality | font.lfPitchAndFamily,
              0);
  }
}

TEST(HostStringTest, RegisteredTextsWinAndCanBeCleared) {
  cadtools::SetHostString(4711, W("first"));
  cadtools::SetHostString(4711, W("second"));
  EXPECT_EQ(cadtools::LoadHostString(4711), CString(W("second")));
  cadtools::ClearHostString(4711);
  EXPECT_EQ(cadtools::LoadHostString(4711), CString());  // the test program has no such resource
}

// OEM 437 and ANSI 1252, the pair of a western Windows (and the default
// off Windows).
// On Windows from the program's string table (host_strings.rc); elsewhere
// there is no module, so the host registers the same text.
TEST(HostStringTest, ModuleStringsAreFoundUnlessRegistered) {
#if !defined(_WIN32)
  cadtools::SetHostString(4712, W("Segoe UI (from the module)"));
#endif
  EXPECT_EQ(cadtools::LoadHostString(4712), CString(W("Segoe UI (from the module)")));
  cadtools::SetHostString(4712, W("registered"));
  EXPECT_EQ(cadtools::LoadHostString(4712), CString(W("registered")));
  cadtools::ClearHostString(4712);
}

TEST(OemConversionTest, OemBytesShowAsAnsiAndBack) {
  if (cadtools::SystemAnsiCodePage() != 1252 || cadtools::SystemOemCodePage() != 437) {
    GTEST_SKIP() << "needs ANSI 1252 and OEM 437";
  }
  const struct {
    const WCHAR* wide;
    const WCHAR* oemAsAnsi;
  } cases[] = {
      {W("Motor 1"), W("Motor 1")},
      {W("\u00E9\u00C4"), W("\u201A\u017D")},  // 82 8E
      {W("\u00DF\u00C7"), W("\u00E1\u20AC")},  // E1 80
      {W("\u00A0"), W("\u00FF")},              // FF
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CTextTools::CharToOemA(c.wide), CString(c.oemAsAnsi)) << testing::PrintToString(CString(c.wide));
    EXPECT_EQ(CTextTools::OemToCharA(c.oemAsAnsi), CString(c.wide)) << testing::PrintToString(CString(c.wide));
  }
  // Characters the other code page lacks become '?'; the text ends at a NUL.
  EXPECT_EQ(CTextTools::CharToOemA(W("\u4E00\u20ACx")), CString(W("??x")));
  EXPECT_EQ(CTextTools::OemToCharA(W("\u4E00x")), CString(W("?x")));
  EXPECT_EQ(CTextTools::CharToOemA(CString(W("a\0b"), 3)), CString(W("a")));
  EXPECT_EQ(CTextTools::CharToOemA(CString()), CString());
}

TEST(LocaleTest, EnglishSystemNamesItsLanguage) {
  const CString language = CTextTools::GetDefaultLocale();
  EXPECT_FALSE(language.IsEmpty());
  if (language != CString(W("English (United States)"))) GTEST_SKIP() << "not an English (United States) system";
  const struct {
    const WCHAR* name;
    bool expected;
  } cases[] = {{W("ENU"), true}, {W("enu"), true}, {W("ENG"), false}, {W("EN"), false}, {W(""), false}};
  for (const auto& c : cases)
    EXPECT_EQ(FontCache::IsDefault(c.name), c.expected) << testing::PrintToString(CString(c.name));
}

#if !defined(_WIN32)
TEST(LocaleTest, AbbreviationsAreWindowsLetters) {
  const struct {
    const char* locale;
    const WCHAR* letters;
  } cases[] = {
      {"en_US", W("ENU")}, {"en_GB", W("ENG")}, {"en", W("ENU")},    {"de_DE", W("DEU")},
      {"de_CH", W("DES")}, {"de_IT", W("DEU")}, {"fr_CA", W("FRC")}, {"pt_BR", W("PTB")},
      {"zh_CN", W("CHS")}, {"zh_TW", W("CHT")}, {"eu_ES", W("EUS")}, {"ja", W("JPN")},
  };
  for (const auto& c : cases)
    EXPECT_EQ(cadtools::localenames::AbbreviationOf(c.locale), CString(c.letters)) << c.locale;
}
#endif

}  // namespace

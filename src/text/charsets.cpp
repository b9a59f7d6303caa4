// Character sets, their names and code pages; the language group of the
// system's code page; the statics of CodePages.
#include <cadtools/text_tools.h>

#include <array>
#include <string_view>

namespace cadtools {

int CodePages::m_bTreatDBC = 1;
CString CodePages::m_strFontName;
int CodePages::m_bInitFontName = 1;

namespace {

struct NamedCharset {
  const char16_t* name;
  int charset;
};

// Names by charset number, for GetCharset(int).
constexpr std::array<NamedCharset, 18> kNamesByNumber{{
    {u"Western", 0},         {u"Default", 1},        {u"Symbol", 2},       {u"Japanese", 128},
    {u"Hangul", 129},        {u"Hangul(Johab)", 130}, {u"Chinese(GB2312)", 134}, {u"Chinese", 136},
    {u"Greek", 161},         {u"Turkish", 162},      {u"Vietnamese", 163}, {u"Hebrew", 177},
    {u"Arabic", 178},        {u"Baltic", 186},       {u"Cyrillic", 204},   {u"Thai", 222},
    {u"Central European", 238}, {u"OEM", 255},
}};

// The order GetCharset(name) tries them in; the first equal one wins.
constexpr std::array<NamedCharset, 18> kNamesInLookupOrder{{
    {u"Western", 0},       {u"Default", 1},         {u"Symbol", 2},          {u"Japanese", 128},
    {u"Hangul", 129},      {u"Chinese(GB2312)", 134}, {u"Chinese", 136},       {u"OEM", 255},
    {u"Hangul(Johab)", 130}, {u"Greek", 161},         {u"Turkish", 162},       {u"Vietnamese", 163},
    {u"Thai", 222},        {u"Central European", 238}, {u"Cyrillic", 204},    {u"Baltic", 186},
    {u"Hebrew", 177},      {u"Arabic", 178},
}};

struct CharsetCodePage {
  unsigned char charset;
  UINT codePage;
};

// Fonts stored by the host use these pairs; 77 (a Mac charset) keeps its
// code page 2 although it has no name, Default and Vietnamese have none.
constexpr std::array<CharsetCodePage, 17> kCodePages{{
    {0, 0},      {2, 42},     {77, 2},     {128, 932},  {129, 949},  {130, 1361},
    {134, 936},  {136, 950},  {161, 1253}, {162, 1254}, {177, 1255}, {178, 1256},
    {186, 1257}, {204, 1251}, {222, 874},  {238, 1250}, {255, 1},
}};

struct CodePageGroup {
  UINT codePage;
  CodePageLangId id;
};

constexpr std::array<CodePageGroup, 17> kLangIds{{
    {10000, LangIdMacRoman},         {950, LangIdChineseTraditional}, {949, LangIdKorean},
    {1361, LangIdKoreanJohab},       {1250, LangIdCentralEuropean},   {1251, LangIdCyrillic},
    {1252, LangIdWestern},           {936, LangIdChineseSimplified},  {1253, LangIdGreek},
    {1254, LangIdTurkish},           {1255, LangIdHebrew},            {1256, LangIdArabic},
    {1257, LangIdBaltic},            {874, LangIdThai},               {932, LangIdJapanese},
    {1200, LangIdUnicode},           {1258, LangIdVietnamese},
}};

constexpr UINT kIso8859First = 28591;
constexpr UINT kIso8859Last = 28599;

}  // namespace

CodePageLangId CodePageLangIdOf(UINT codePage) noexcept {
  if (codePage >= kIso8859First && codePage <= kIso8859Last) {
    return static_cast<CodePageLangId>(static_cast<int>(codePage - kIso8859First) + LangIdIso8859_1);
  }
  for (const CodePageGroup& g : kLangIds) {
    if (g.codePage == codePage) return g.id;
  }
  return LangIdOther;
}

CodePageLangId CodePages::GetSystemLangId() noexcept { return CodePageLangIdOf(SystemAnsiCodePage()); }

CString CodePages::GetCharset(int charset) {
  CString result;
  for (const NamedCharset& n : kNamesByNumber) {
    if (n.charset == charset) {
      result.Format(CADTOOLS_WIDE("%s"), n.name);
      return result;
    }
  }
  result.Format(CADTOOLS_WIDE("%d"), charset);
  return result;
}

int CodePages::GetCharset(CString name) {
  name.Trim();
  for (const NamedCharset& n : kNamesInLookupOrder) {
    if (name.CompareNoCase(CString(n.name)) == 0) return n.charset;
  }
  return 1;
}

UINT CodePages::CharsetToCodePage(unsigned char charset) noexcept {
  for (const CharsetCodePage& c : kCodePages) {
    if (c.charset == charset) return c.codePage;
  }
  return 0;
}

bool CodePages::IsTextSurrogate(CString text) noexcept {
  for (const WCHAR ch : WStringView(text.GetString(), static_cast<std::size_t>(text.GetLength()))) {
    if (ch >= 0xD800 && ch <= 0xDBFF) return true;
  }
  return false;
}

}  // namespace cadtools

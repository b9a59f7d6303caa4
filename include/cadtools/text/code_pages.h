// cadtools::CodePages: character sets, code pages, conversions and the
// composition of image names, for CTextTools (include
// <cadtools/text_tools.h> and call them as CTextTools::...).
//
//   CTextTools::GetCharset(204)              // "Cyrillic"
//   CTextTools::GetCharset(L" cyrillic ")    // 204
//   CTextTools::CharsetToCodePage(204)       // 1251
//   CTextTools::MB2Unicode("\xE9", 1252)     // L"\u00E9"
//
// Character-set numbers are the GDI font charsets, code pages the Windows
// code page numbers. The three tables below do not agree in every row
// (77, 1 and 163 among them); fonts and texts the host has stored were
// written with these exact rows, so they are kept as they are.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_a.h>
#include <cadtools/compat/logfont.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

// The system's ANSI and OEM code pages: GetACP / GetOEMCP on Windows;
// elsewhere 1252 and 437 unless CADTOOLS_ACP / CADTOOLS_OEMCP hold another
// positive number (read on every call).
CADTOOLS_API UINT SystemAnsiCodePage() noexcept;
CADTOOLS_API UINT SystemOemCodePage() noexcept;

// The language group of an ANSI code page, as GetSystemLangId reports it.
enum CodePageLangId : int {
  LangIdIso8859_1 = 2,  // 28591; 28592 to 28599 follow as 3 to 10
  LangIdIso8859_9 = 10,
  LangIdMacRoman = 23,            // 10000
  LangIdChineseTraditional = 24,  // 950
  LangIdKorean = 25,              // 949
  LangIdKoreanJohab = 26,         // 1361
  LangIdCentralEuropean = 28,     // 1250
  LangIdCyrillic = 29,            // 1251
  LangIdWestern = 30,             // 1252
  LangIdChineseSimplified = 31,   // 936
  LangIdGreek = 32,               // 1253
  LangIdTurkish = 33,             // 1254
  LangIdHebrew = 34,              // 1255
  LangIdArabic = 35,              // 1256
  LangIdBaltic = 36,              // 1257
  LangIdThai = 37,                // 874
  LangIdJapanese = 38,            // 932
  LangIdUnicode = 43,             // 1200
  LangIdVietnamese = 44,          // 1258
  LangIdOther = 45,               // any other code page
};

// The CodePageLangId of an ANSI code page (the table GetSystemLangId
// applies to the system's code page).
//   CodePageLangIdOf(28593)  // 4
//   CodePageLangIdOf(65001)  // LangIdOther
CADTOOLS_API CodePageLangId CodePageLangIdOf(UINT codePage) noexcept;

class CADTOOLS_API CodePages {
 public:
  // ---- Character sets -------------------------------------------------

  // The display name of a charset; a number without a name prints as
  // "%d".
  //   GetCharset(163)  // "Vietnamese"
  //   GetCharset(1)    // "Default"
  //   GetCharset(77)   // "77"  (has a code page below, but no name)
  static CString GetCharset(int charset);
  // The charset of a display name: trimmed of white space, compared whole
  // and ignoring case; an unknown name is 1 (the default charset).
  //   GetCharset(L" cyrillic ")        // 204
  //   GetCharset(L"Chinese(GB2312)")   // 134
  //   GetCharset(L"Chinese")           // 136
  //   GetCharset(L"Klingon")           // 1
  static int GetCharset(CString name);
  // The code page that text in a charset uses; 0 for charsets not listed.
  //   CharsetToCodePage(204)  // 1251
  //   CharsetToCodePage(2)    // 42    (Symbol)
  //   CharsetToCodePage(77)   // 2     (no name above, but a code page)
  //   CharsetToCodePage(255)  // 1     (OEM)
  //   CharsetToCodePage(1)    // 0     (Default is not listed)
  //   CharsetToCodePage(163)  // 0     (Vietnamese is not listed)
  static UINT CharsetToCodePage(unsigned char charset) noexcept;

  // ---- Text classification --------------------------------------------

  // Whether text holds a high surrogate (0xD800 to 0xDBFF) anywhere. A
  // lone low surrogate does not count.
  //   IsTextSurrogate(L"a\U0001F600")  // true
  //   IsTextSurrogate(L"\xDC00")       // false
  static bool IsTextSurrogate(CString text) noexcept;

  // ---- Conversions ----------------------------------------------------

  // Multi-byte text in codePage (negative: the system ANSI code page) as
  // wide text, up to its first NUL. An invalid code page gives the empty
  // string. Bytes that do not decode come out as Windows gives them
  // (U+FFFD for broken UTF-8).
  //   MB2Unicode("caf\xC3\xA9", 65001)  // L"caf\u00E9"
  //   MB2Unicode("\x80", 1252)          // L"\u20AC"
  //   MB2Unicode("abc", 12345)          // L""
  static CString MB2Unicode(CStringA text, int codePage);
  // text as UTF-8 in a new NUL-terminated array that the caller releases
  // with delete[]. Lone surrogates become U+FFFD (EF BF BD); the empty
  // text gives a buffer holding only the NUL.
  static char* WideCharToMB(CString text);
  // NUL-terminated UTF-8 as wide text; null or undecodable input gives "".
  static CString MB2WideChar(const char* text);

  // Wide text shown the way the host's OEM texts look in ANSI: narrowed to
  // the OEM code page, the bytes then read as ANSI (both the system's).
  // Characters the OEM code page lacks become '?'. The text ends at its
  // first NUL, and the OEM bytes are cut at the text's length in units.
  //   CharToOemA(L"\u00E9")   // L"\u201A" with OEM 437 and ANSI 1252 (byte 0x82)
  static CString CharToOemA(CString text);
  // The reverse: narrowed to the ANSI code page, the bytes read as OEM.
  //   OemToCharA(L"\u201A")   // L"\u00E9" with OEM 437 and ANSI 1252
  static CString OemToCharA(CString text);

  // ---- Locale and default font ----------------------------------------

  // The system default locale's language, "English (United States)" on
  // an English Windows; "" when the system cannot say.
  static CString GetDefaultLocale();

  // The user interface's font face: string resource 19191 of the host
  // (see host_strings.h) up to its first "(" when a ")" follows, trimmed,
  // unless the setting "Settings\Text\DefaultFontName" below the registry
  // root names another; a setting holding a list ("Segoe UI;Arial") gives
  // its first face. A missing setting is written with the resource's face.
  //   resource "Tahoma (8pt)", no setting      // "Tahoma", setting written
  //   setting "Segoe UI;Arial"                 // "Segoe UI"
  // Read once per process: later calls return the cached name, so a
  // changed setting counts from the next start of the host.
  static CString GetDefaultFontFaceName();
  // A LOGFONTW of zeros with GetDefaultFontFaceName as the face, cut to
  // the LF_FACESIZE - 1 units the structure holds.
  static LOGFONTW GetDefaultLogFont();

  // ---- Image and path names -------------------------------------------
  // a and b are usually a folder and a separator; nothing here applies
  // path rules, the parts are only joined.

  // a, b, TrimChar(name + " - Image", '-'), number, tail.
  //   CreateImageFolderPath(L"C:\\img", L"\\", L"Motor", 3, L".bmp")
  //       // "C:\\img\\Motor - Image3.bmp"
  //   CreateImageFolderPath(L"", L"", L"", 0, L"")  // "Image0"
  static CString CreateImageFolderPath(CString a, CString b, CString name, int number, CString tail);
  // As CreateImageFolderPath, with name and variant trimmed and the
  // variant added as "name - variant" when it is not empty and differs
  // from name (case-sensitive).
  //   CreateImagePath(L"d", L"/", L" M ", L"V2", 1, L"")  // "d/M - V2 - Image1"
  //   CreateImagePath(L"d", L"/", L"M", L"M", 1, L"")     // "d/M - Image1"
  //   CreateImagePath(L"d", L"/", L"M", L"m", 1, L"")     // "d/M - m - Image1"
  static CString CreateImagePath(CString a, CString b, CString name, CString variant, int number, CString tail);
  // a, b, TrimChar(name + " - " + variant, '-'), tail, without testing the
  // variant: an empty one leaves the name, an empty name the variant. Both
  // empty leave only " - ", and TrimChar raises CInvalidArgException* on
  // it; callers pass at least one of them.
  //   CreateFullPathName(L"d", L"/", L"M", L"", L".x")  // "d/M.x"
  //   CreateFullPathName(L"d", L"/", L"", L"V", L".x")  // "d/V.x"
  static CString CreateFullPathName(CString a, CString b, CString name, CString variant, CString tail);

  // ---- Host switches --------------------------------------------------

  // Double-byte treatment, 1 at load; the host reads and sets it, nothing
  // in the library does.
  static int m_bTreatDBC;

 protected:
  // The language group of the system's ANSI code page.
  static CodePageLangId GetSystemLangId() noexcept;
  // Whether name equals, ignoring case, the user locale's three-letter
  // language abbreviation ("ENU", "DEU").
  static bool IsDefaultFont(CString name);

  // The cached default font face name, empty until it is first asked for,
  // and 1 while that has not happened yet.
  static CString m_strFontName;
  static int m_bInitFontName;
};

}  // namespace cadtools

// The default font face, its LOGFONTW, and the locale texts.
#include <cadtools/registry/reg_values.h>
#include <cadtools/text/host_strings.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstring>

#include "text/locale_names.h"

namespace cadtools {

namespace {

constexpr UINT kDefaultFontResource = 19191;

// The resource text may carry a note after the face ("Tahoma (8pt)").
CString FaceOfResourceText(CString text) {
  const int open = text.Find(u'(');
  if (open >= 0 && text.ReverseFind(u')') > open) text = text.Left(open);
  return text.Trim();
}

}  // namespace

CString CodePages::GetDefaultFontFaceName() {
  if (m_bInitFontName != 0) {
    const CString resourceFace = FaceOfResourceText(LoadHostString(kDefaultFontResource));
    // Written back only when missing, so a stored list stays as it is.
    CRegString setting(CADTOOLS_WIDE("Settings\\Text\\DefaultFontName"), resourceFace, 0, 0, HKEY_CURRENT_USER, 1);
    CString face = setting;
    const int semicolon = face.Find(u';');
    if (semicolon >= 0) face = face.Left(semicolon);
    m_strFontName = face;
    m_bInitFontName = 0;
    if (setting.m_bRead == 0) setting.write();
  }
  return m_strFontName;
}

LOGFONTW CodePages::GetDefaultLogFont() {
  LOGFONTW font;
  std::memset(&font, 0, sizeof(font));
  const CString face = GetDefaultFontFaceName();
  const int length = std::min(face.GetLength(), LF_FACESIZE - 1);
  std::copy_n(face.GetString(), length, font.lfFaceName);
  return font;
}

bool CodePages::IsDefaultFont(CString name) { return name.CompareNoCase(localenames::UserLanguageAbbreviation()) == 0; }

CString CodePages::GetDefaultLocale() { return localenames::SystemLanguageName(); }

}  // namespace cadtools

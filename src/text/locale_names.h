// The two locale texts CTextTools asks the system for: GetLocaleInfoW's
// LOCALE_SLANGUAGE of the system default locale and LOCALE_SABBREVLANGNAME
// of the user default locale. Elsewhere they come from ICU's default
// locale (the C and POSIX locales counting as en_US), with English
// language names, as an English Windows gives them.
#pragma once

#include <cadtools/compat/cstring.h>

namespace cadtools::localenames {

// "English (United States)"; "" when the system cannot say.
CString SystemLanguageName();
// "ENU", "DEU", ...: at most three letters.
CString UserLanguageAbbreviation();

#if !defined(_WIN32)
// The Windows abbreviation of an ICU locale id: Windows' own letters for
// the locales it has them for, else the ISO 639-2 code in capitals.
//   AbbreviationOf("en_US")  // "ENU"
//   AbbreviationOf("de_CH")  // "DES"
//   AbbreviationOf("eu_ES")  // "EUS"
CString AbbreviationOf(const char* localeId);
#endif

}  // namespace cadtools::localenames

// Locale texts from ICU's default locale, where there is no GetLocaleInfoW.
#include <unicode/uloc.h>

#include <array>
#include <cstring>
#include <string>
#include <string_view>

#include "text/locale_names.h"

namespace cadtools::localenames {

namespace {

// The C and POSIX locales are what a process without a language setting
// has; Windows always has one, so they count as English (United States).
std::string DefaultLocale() {
  const std::string_view id = uloc_getDefault();
  if (id.empty() || id == "c" || id == "C" || id.starts_with("en_US_POSIX") || id == "POSIX") return "en_US";
  return std::string(id);
}

CString FromUChars(const UChar* units, int32_t length) {
  std::u16string s(units, units + length);
  WString w(s.begin(), s.end());
  return CString(w.data(), static_cast<int>(w.size()));
}

struct Abbreviation {
  const char* locale;  // language_COUNTRY, or a language alone for its main country
  const char* letters;
};

constexpr std::array<Abbreviation, 42> kAbbreviations{{
    {"en_US", "ENU"}, {"en_GB", "ENG"}, {"en_AU", "ENA"}, {"en_CA", "ENC"}, {"en_NZ", "ENZ"}, {"en_IE", "ENI"},
    {"en", "ENU"},    {"de_DE", "DEU"}, {"de_AT", "DEA"}, {"de_CH", "DES"}, {"de_LU", "DEL"}, {"de", "DEU"},
    {"fr_FR", "FRA"}, {"fr_BE", "FRB"}, {"fr_CA", "FRC"}, {"fr_CH", "FRS"}, {"fr", "FRA"},   {"it_CH", "ITS"},
    {"it", "ITA"},    {"es_MX", "ESM"}, {"es", "ESN"},    {"nl_BE", "NLB"}, {"nl", "NLD"},   {"pt_BR", "PTB"},
    {"pt", "PTG"},    {"ru", "RUS"},    {"pl", "PLK"},    {"cs", "CSY"},    {"sk", "SKY"},   {"hu", "HUN"},
    {"sv", "SVE"},    {"da", "DAN"},    {"fi", "FIN"},    {"nb", "NOR"},    {"tr", "TRK"},   {"el", "ELL"},
    {"ja", "JPN"},    {"ko", "KOR"},    {"zh_TW", "CHT"}, {"zh_HK", "ZHH"}, {"zh", "CHS"},   {"sl", "SLV"},
}};

}  // namespace

CString SystemLanguageName() {
  const std::string id = DefaultLocale();
  std::array<UChar, 256> name{};
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = uloc_getDisplayName(id.c_str(), "en", name.data(), static_cast<int32_t>(name.size()), &status);
  return U_SUCCESS(status) && length > 0 ? FromUChars(name.data(), length) : CString();
}

CString AbbreviationOf(const char* localeId) {
  std::array<char, 16> language{};
  std::array<char, 16> country{};
  UErrorCode status = U_ZERO_ERROR;
  uloc_getLanguage(localeId, language.data(), static_cast<int32_t>(language.size()), &status);
  uloc_getCountry(localeId, country.data(), static_cast<int32_t>(country.size()), &status);
  if (U_FAILURE(status)) return CString();
  const std::string both = std::string(language.data()) + "_" + country.data();
  for (const std::string& key : {both, std::string(language.data())}) {
    for (const Abbreviation& a : kAbbreviations) {
      if (key == a.locale) return CString(std::u16string(a.letters, a.letters + 3).c_str());
    }
  }
  std::string iso3 = uloc_getISO3Language(localeId);
  if (iso3.size() > 3) iso3.resize(3);
  std::u16string letters;
  for (const char c : iso3) letters.push_back(static_cast<char16_t>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c));
  return CString(letters.c_str());
}

CString UserLanguageAbbreviation() { return AbbreviationOf(DefaultLocale().c_str()); }

}  // namespace cadtools::localenames

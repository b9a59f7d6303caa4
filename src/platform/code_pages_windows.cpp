// The system's code pages and the conversions between them and UTF-16,
// straight from the system on Windows.
#include <cadtools/text/code_pages.h>

#include <climits>

#include "text/code_page_conversion.h"
#include "text/locale_names.h"

namespace cadtools {

UINT SystemAnsiCodePage() noexcept { return ::GetACP(); }

UINT SystemOemCodePage() noexcept { return ::GetOEMCP(); }

namespace codepage {

WString MultiByteToWide(UINT codePage, std::string_view bytes) {
  if (bytes.empty() || bytes.size() > INT_MAX) return {};
  const int length = static_cast<int>(bytes.size());
  const int needed = ::MultiByteToWideChar(codePage, 0, bytes.data(), length, nullptr, 0);
  if (needed <= 0) return {};
  WString out(static_cast<std::size_t>(needed), L'\0');
  const int written = ::MultiByteToWideChar(codePage, 0, bytes.data(), length, out.data(), needed);
  out.resize(static_cast<std::size_t>(written > 0 ? written : 0));
  return out;
}

std::string WideToMultiByte(UINT codePage, WStringView units) {
  if (units.empty() || units.size() > INT_MAX) return {};
  const int length = static_cast<int>(units.size());
  const int needed = ::WideCharToMultiByte(codePage, 0, units.data(), length, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return {};
  std::string out(static_cast<std::size_t>(needed), '\0');
  const int written = ::WideCharToMultiByte(codePage, 0, units.data(), length, out.data(), needed, nullptr, nullptr);
  out.resize(static_cast<std::size_t>(written > 0 ? written : 0));
  return out;
}

std::unique_ptr<char[]> WideToUtf8Buffer(WStringView units) {
  const int length = units.size() > INT_MAX ? 0 : static_cast<int>(units.size());
  const int needed =
      length == 0 ? 0 : ::WideCharToMultiByte(CP_UTF8, 0, units.data(), length, nullptr, 0, nullptr, nullptr);
  std::unique_ptr<char[]> buffer(new char[static_cast<std::size_t>(needed > 0 ? needed : 0) + 1]);
  const int written =
      needed > 0 ? ::WideCharToMultiByte(CP_UTF8, 0, units.data(), length, buffer.get(), needed, nullptr, nullptr)
                 : 0;
  buffer[static_cast<std::size_t>(written > 0 ? written : 0)] = '\0';
  return buffer;
}

}  // namespace codepage

namespace localenames {

CString SystemLanguageName() {
  const int needed = ::GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_SLANGUAGE, nullptr, 0);
  if (needed <= 0) return CString();
  WString name(static_cast<std::size_t>(needed), L'\0');
  if (::GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_SLANGUAGE, name.data(), needed) <= 0) return CString();
  return CString(name.c_str());
}

CString UserLanguageAbbreviation() {
  WCHAR letters[4] = {};
  if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, letters, 4) <= 0) return CString();
  return CString(letters);
}

}  // namespace localenames

}  // namespace cadtools

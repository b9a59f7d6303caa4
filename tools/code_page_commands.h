// The commands over character sets and code pages: convert, charset, font.
// Each takes the words after its name; --help or -h prints its usage.
//
//   cadtools convert --from 1252 --to utf-8 old.txt > new.txt
//   cadtools charset 204          # Cyrillic, code page 1251
//   cadtools font --app Draw      # the face the host would use, and why
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>

#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cadtools::cli {

inline constexpr UINT kUtf16Le = 1200;
inline constexpr UINT kUtf16Be = 1201;

// A code page word of the command line: a number (1252, 932, 65001, also
// written cp1252), or utf-8, utf-16 / utf-16le (1200), utf-16be (1201),
// ansi or oem (the system's, read now). Letter case does not matter.
// nullopt for any other word; whether the number names a code page this
// system has is CodePageAvailable's question.
std::optional<UINT> ParseCodePage(std::string_view word);
// Whether bytes can be converted from and to codePage here.
bool CodePageAvailable(UINT codePage);

// bytes in code page `from` as code page `to`, with the results Windows
// gives: bytes that do not decode become what MultiByteToWideChar makes of
// them (U+FFFD for broken UTF-8), characters `to` lacks its default
// character. UTF-16 is read and written without a byte-order mark (one
// that is there is a character like any other); an odd last byte becomes
// U+FFFD. Both code pages must be available.
std::string ConvertText(UINT from, UINT to, std::string_view bytes);

// The answer of `charset WORD`: a number from 0 to 255 gives its name and
// code page, any other word the charset of that name and its code page.
// Throws UsageError for a number beyond 255.
std::string DescribeCharset(std::string_view word);

// Where the host's default font face comes from, read without writing
// anything (the host itself stores the face it took from its string when
// the setting is missing).
struct DefaultFontSource {
  CString face;         // as GetDefaultFontFaceName would return it now
  CString setting;      // the stored setting; empty when not stored
  CString host_string;  // string 19191 as loaded
  bool from_setting = false;
};
// Uses the library's current root (CRegBase::GetRegBase).
DefaultFontSource FindDefaultFont();

void RunConvert(std::span<const std::string_view> words, std::istream& in, std::ostream& out);
void RunCharset(std::span<const std::string_view> words, std::ostream& out);
void RunFont(std::span<const std::string_view> words, std::ostream& out);

}  // namespace cadtools::cli

// Character classes and case of one UTF-16 code unit, the same on every
// target. CString (Trim, MakeLower, MakeUpper, CompareNoCase) and the text
// and number tools use them.
//
//   IsWideSpace(u' ')        // true
//   IsWideSpace(0x3000)      // true   (ideographic space)
//   IsWideSpace(0x200B)      // false  (zero width space is no white space)
//   IsWideDigit(u'7')        // true
//   IsWideDigit(0x0663)      // true   (Arabic-Indic three)
//   IsWideDigit(0x00B2)      // false  (superscript two is no decimal digit)
//   ToUpperUnit(0x00E9)      // 0x00C9 (é -> É)
//   ToUpperUnit(0x00DF)      // 0x00DF (ß has no one-unit capital)
//   ToUpperUnit(0x03C2)      // 0x03A3 (final ς -> Σ)
//   ToLowerUnit(0x0130)      // u'i'   (İ -> i)
//   ToLowerUnit(0xD83D)      // 0xD83D (a surrogate maps to itself)
//
// IsWideSpace is the Unicode White_Space property; IsWideDigit is general
// category Nd (decimal digits); the case mappings are Unicode's simple
// one-to-one mappings, applied per code unit so that indexes never shift.
// No locale is consulted (no Turkish dotless-i rule), so a drawing trims,
// sorts and compares the same way on Windows and Linux. Off Windows the
// answers come from ICU, on Windows from the system's character tables;
// ASCII is answered inline.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

namespace detail {

CADTOOLS_API bool IsWideSpaceBeyondAscii(WCHAR ch) noexcept;
CADTOOLS_API bool IsWideDigitBeyondAscii(WCHAR ch) noexcept;
CADTOOLS_API WCHAR ToLowerBeyondAscii(WCHAR ch) noexcept;
CADTOOLS_API WCHAR ToUpperBeyondAscii(WCHAR ch) noexcept;

}  // namespace detail

inline bool IsWideSpace(WCHAR ch) noexcept {
  if (ch < 0x80) return ch == u' ' || (ch >= 0x09 && ch <= 0x0D);
  return detail::IsWideSpaceBeyondAscii(ch);
}

inline bool IsWideDigit(WCHAR ch) noexcept {
  if (ch < 0x80) return ch >= u'0' && ch <= u'9';
  return detail::IsWideDigitBeyondAscii(ch);
}

inline WCHAR ToLowerUnit(WCHAR ch) noexcept {
  if (ch < 0x80) return (ch >= u'A' && ch <= u'Z') ? static_cast<WCHAR>(ch + 32) : ch;
  return detail::ToLowerBeyondAscii(ch);
}

inline WCHAR ToUpperUnit(WCHAR ch) noexcept {
  if (ch < 0x80) return (ch >= u'a' && ch <= u'z') ? static_cast<WCHAR>(ch - 32) : ch;
  return detail::ToUpperBeyondAscii(ch);
}

}  // namespace cadtools

// cadtools::IsWideSpace: the white space that CString::Trim and the text
// tools strip, one fixed set on every target.
//
//   IsWideSpace(u' ')       // true
//   IsWideSpace(0x00A0)     // true  (no-break space)
//   IsWideSpace(0x3000)     // true  (ideographic space)
//   IsWideSpace(0x200B)     // false (zero width space is not white space)
//
// The set is U+0009..000D, U+0020, U+0085, U+00A0, U+1680, U+2000..200A,
// U+2028, U+2029, U+202F, U+205F and U+3000. The platform's iswspace is not
// used: its answer depends on the C runtime and the locale, and a drawing
// must trim the same way on Windows and Linux.
#pragma once

#include <cadtools/compat/win_types.h>

#include <cstdint>

namespace cadtools {

constexpr bool IsWideSpace(WCHAR ch) noexcept {
  const auto c = static_cast<std::uint32_t>(ch);
  return (c >= 0x0009 && c <= 0x000D) || c == 0x0020 || c == 0x0085 || c == 0x00A0 ||
         c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 ||
         c == 0x202F || c == 0x205F || c == 0x3000;
}

}  // namespace cadtools

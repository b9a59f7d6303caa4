// Comparing and searching text without regard to case, one unit at a time,
// without making lowered copies: UTF-16 through cadtools::ToLowerUnit, and
// ASCII bytes (the command line's lines) through the same mapping, which
// for ASCII lowers 'A' to 'Z' only.
//
//   EqualFolded(u"Motor", u"mOTOR")          // true
//   FindFolded(u"PLC.Rack1", u"rack", 0)     // 4
//   FindFolded("PLC.Rack1", "rack", 0)       // 4   (ASCII bytes)
//   FindFolded(u"abab", u"AB", 1)            // 2
//   FindFolded(u"abc", u"", 2)               // 2   (the empty text is found at `from`)
//   FindFolded(u"abc", u"x", 0)              // npos
//
// The search takes linear time whatever the input (Crochemore and Perrin's
// two-way algorithm for longer needles), so a long name and a long pattern
// cannot stall the host.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/wide_ctype.h>

#include <cstddef>
#include <string_view>

namespace cadtools::text {

inline WCHAR Lowered(WCHAR ch) noexcept { return ToLowerUnit(ch); }
// Bytes from 0x80 up are no ASCII and are left as they are.
inline char Lowered(char ch) noexcept { return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch + 32) : ch; }

template <class Char>
bool EqualFolded(std::basic_string_view<Char> a, std::basic_string_view<Char> b) noexcept {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && Lowered(a[i]) != Lowered(b[i])) return false;
  }
  return true;
}

// The first position at or after `from` where `needle` occurs in `text`,
// ignoring case, or npos.
std::size_t FindFolded(WStringView text, WStringView needle, std::size_t from) noexcept;
std::size_t FindFolded(std::string_view text, std::string_view needle, std::size_t from) noexcept;

}  // namespace cadtools::text

// Comparing and searching UTF-16 text without regard to case, one unit at a
// time through cadtools::ToLowerUnit, without making lowered copies.
//
//   EqualFolded(u"Motor", u"mOTOR")          // true
//   FindFolded(u"PLC.Rack1", u"rack", 0)     // 4
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

namespace cadtools::text {

inline bool EqualFolded(WStringView a, WStringView b) noexcept {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && ToLowerUnit(a[i]) != ToLowerUnit(b[i])) return false;
  }
  return true;
}

// The first position at or after `from` where `needle` occurs in `text`,
// ignoring case, or WStringView::npos.
std::size_t FindFolded(WStringView text, WStringView needle, std::size_t from) noexcept;

}  // namespace cadtools::text

// Views of UTF-16 units for the text editing functions: they search and
// cut whole views, so embedded NULs in a text or a separator are ordinary
// units.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/wide_ctype.h>

#include <cstddef>

namespace cadtools::editing {

inline constexpr std::size_t kNotFound = WStringView::npos;

// A CString holding exactly the units of v.
inline CString ToCString(WStringView v) { return CString(v.data(), static_cast<int>(v.size())); }

inline void AppendField(CArray<CString, CString>& fields, WStringView v) { fields.Add(ToCString(v)); }

// v without its leading (trailing) run of units that satisfy drop.
template <class Pred>
WStringView DropLeading(WStringView v, Pred drop) {
  std::size_t n = 0;
  while (n < v.size() && drop(v[n])) ++n;
  return v.substr(n);
}
template <class Pred>
WStringView DropTrailing(WStringView v, Pred drop) {
  std::size_t n = v.size();
  while (n > 0 && drop(v[n - 1])) --n;
  return v.substr(0, n);
}

inline auto IsUnit(WCHAR ch) noexcept {
  return [ch](WCHAR c) noexcept { return c == ch; };
}

inline WStringView TrimSpace(WStringView v) { return DropLeading(DropTrailing(v, IsWideSpace), IsWideSpace); }

}  // namespace cadtools::editing

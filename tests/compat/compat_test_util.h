// Helpers shared by the compat tests.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/exceptions.h>

#include <cstddef>
#include <functional>
#include <string_view>

namespace cadtools::test {

// Runs f and reports whether it raised the library's invalid-argument
// exception, caught and released as host code does.
inline bool ThrowsInvalidArg(const std::function<void()>& f) {
  try {
    f();
  } catch (CException* e) {
    const bool ok = dynamic_cast<CInvalidArgException*>(e) != nullptr;
    e->Delete();
    return ok;
  }
  return false;
}

// A CString of the given UTF-16 units, embedded NULs included, on every
// target (WCHAR is char16_t off Windows and wchar_t on it).
inline CString Units(std::u16string_view units) {
  CString s;
  for (const char16_t c : units) s.AppendChar(static_cast<WCHAR>(c));
  return s;
}

// Every unit of a literal but its terminator: Units(u"a\0b") has three.
template <std::size_t N>
CString Units(const char16_t (&literal)[N]) {
  return Units(std::u16string_view(literal, N - 1));
}

}  // namespace cadtools::test

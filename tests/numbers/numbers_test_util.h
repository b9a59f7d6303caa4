// Helpers shared by the numbers tests.
#pragma once

#include <cadtools/cadtools.h>
#include <gtest/gtest.h>

#include <string>

namespace cadtools::test {

// A CString from UTF-16 units, embedded NULs included.
inline CString Units(std::u16string_view units) {
  WString w;
  for (const char16_t c : units) w.push_back(static_cast<WCHAR>(c));
  return CString(w.data(), static_cast<int>(w.size()));
}

// c repeated n times.
inline CString Repeat(char c, int n) { return CString(static_cast<WCHAR>(c), n); }

}  // namespace cadtools::test

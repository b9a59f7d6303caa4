// Helpers shared by the text editing tests.
#pragma once

#include <cadtools/cadtools.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "compat/compat_test_util.h"

namespace cadtools::test {

template <class Array>
std::vector<CString> Elements(const Array& a) {
  return std::vector<CString>(a.begin(), a.end());
}

using Fields = std::vector<CString>;

// Every unit of a literal, embedded NULs included, on every target.
template <std::size_t N>
CString Units(const char16_t (&literal)[N]) {
  CString s;
  for (std::size_t i = 0; i + 1 < N; ++i) s.AppendChar(static_cast<WCHAR>(literal[i]));
  return s;
}

}  // namespace cadtools::test

// Helpers shared by the text tests.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>

#define W CADTOOLS_WIDE

namespace cadtools::test {

// Two strings for a failure message: L"a" vs L"b", with escapes.
inline std::string Pair(const WCHAR* a, const WCHAR* b) {
  return testing::PrintToString(CString(a)) + " vs " + testing::PrintToString(CString(b));
}

// A string of up to maxLength units drawn from alphabet.
inline WString RandomText(std::mt19937& rng, WStringView alphabet, std::size_t maxLength) {
  std::uniform_int_distribution<std::size_t> length(0, maxLength);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
  WString s(length(rng), u' ');
  for (WCHAR& ch : s) ch = alphabet[pick(rng)];
  return s;
}

}  // namespace cadtools::test

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

}  // namespace cadtools::test

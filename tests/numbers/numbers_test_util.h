// Helpers shared by the numbers tests.
#pragma once

#include <cadtools/cadtools.h>
#include <gtest/gtest.h>

#include "compat/compat_test_util.h"

namespace cadtools::test {

// c repeated n times.
inline CString Repeat(char c, int n) { return CString(static_cast<WCHAR>(c), n); }

}  // namespace cadtools::test

// The library's version, for the command line and for hosts that log it.
#pragma once

namespace cadtools {
inline constexpr int kVersionMajor = 0;
inline constexpr int kVersionMinor = 1;
inline constexpr int kVersionPatch = 0;
inline constexpr const char* kVersionString = "0.1.0";
}  // namespace cadtools

// Last-write times as Windows counts them: 100-nanosecond steps since
// 1 January 1601 (UTC), the FILETIME that RegEnumKeyExW and
// RegQueryInfoKeyW report.
#pragma once

#include <chrono>
#include <cstdint>

namespace cadtools::registry::store {

// 1601-01-01 to 1970-01-01 in 100 ns steps.
inline constexpr std::int64_t kUnixEpochAsFileTime = 116444736000000000;

inline std::int64_t FileTimeNow() noexcept {
  using namespace std::chrono;
  const auto since_1970 = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
  return kUnixEpochAsFileTime + since_1970 / 100;
}

}  // namespace cadtools::registry::store

// Narrowing doubles to single precision without undefined behaviour.
//
// Several host functions compare or step in single precision. A C++ cast of
// a double outside float's range is undefined; the hardware rounds it to
// +-infinity, and so does NarrowToFloat:
//
//   NarrowToFloat(0.1)     // 0.100000001490116...f
//   NarrowToFloat(1e300)   // +infinity
//   NarrowToFloat(-1e300)  // -infinity
#pragma once

#include <cmath>
#include <limits>

namespace cadtools::detail {

constexpr float NarrowToFloat(double v) noexcept {
  // Halfway between FLT_MAX and the next power of two rounds to infinity.
  constexpr double kOverflow = 0x1.ffffffp127;
  if (v >= kOverflow) return std::numeric_limits<float>::infinity();
  if (v <= -kOverflow) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(v);
}

}  // namespace cadtools::detail

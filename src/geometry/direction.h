// The direction of a vector as the host computes it: axis directions snap
// within a tolerance, everything else is atan2 moved into [0, 2pi).
#pragma once

#include "geometry/constants.h"

#include <cmath>

namespace cadtools::geometry {

inline double Direction(double dx, double dy, double tolerance) noexcept {
  if (std::fabs(dy) < tolerance && dx > 0.0) return 0.0;
  if (dy > 0.0 && std::fabs(dx) < tolerance) return kHalfPi;
  if (std::fabs(dy) < tolerance && dx < 0.0) return kPi;
  if (dy < 0.0 && std::fabs(dx) < tolerance) return kThreeHalfPi;
  const double a = std::atan2(dy, dx);
  return a < 0.0 ? a + kTwoPi : a;
}

}  // namespace cadtools::geometry

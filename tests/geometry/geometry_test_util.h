// Helpers shared by the geometry tests.
#pragma once

#include <cadtools/cadtools.h>
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

inline void PrintTo(const WPt& p, std::ostream* os) { *os << "(" << p.x << ", " << p.y << ")"; }
inline void PrintTo(const WRect& r, std::ostream* os) {
  *os << "(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ")";
}

namespace cadtools::test {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;
// Results that pass through sin, cos or atan2 may differ in the last bit
// between run-time libraries.
inline constexpr double kTrig = 1e-12;

// Exact, coordinate by coordinate (WRect's own == is tolerant).
inline bool SameRect(const WRect& a, const WRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

inline bool NearPoint(const WPt& a, const WPt& b, double tol = kTrig) {
  return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol;
}

}  // namespace cadtools::test

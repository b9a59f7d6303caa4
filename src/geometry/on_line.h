// A quick decision for the host's direction-based on-line test.
//
// On_Entity compares the directions a->b and a->p (and p->a) within 0.001
// radian, through atan2. Most points asked about are nowhere near the line;
// for them the answer follows from the cross and dot products alone, and
// the three atan2 calls are skipped. The margin keeps the answer identical
// to the direction test: it covers the snapping of near-axis directions
// (at most 2.3e-10 rad for vectors at least 0.001 long), atan2's last-bit
// error and the rounding of the products.
#pragma once

#include <cmath>

namespace cadtools::geometry {

// True when both vectors are at least 0.001 long on some axis and the angle
// between them lies clearly inside (0.001, pi - 0.001) radian.
inline bool ClearlyOffLine(double ux, double uy, double vx, double vy) noexcept {
  constexpr double kMinComponent = 0.001;
  constexpr double kTanThreshold = 0.00100002;  // tan(0.00100001966...)
  constexpr double kRoundingSlack = 1e-14;
  if (!(std::fmax(std::fabs(ux), std::fabs(uy)) >= kMinComponent &&
        std::fmax(std::fabs(vx), std::fabs(vy)) >= kMinComponent)) {
    return false;
  }
  const double cross = std::fabs(ux * vy - uy * vx);
  const double dot = std::fabs(ux * vx + uy * vy);
  const double scale = (std::fabs(ux) + std::fabs(uy)) * (std::fabs(vx) + std::fabs(vy));
  return cross > kTanThreshold * dot + kRoundingSlack * scale;
}

}  // namespace cadtools::geometry

// The host's point-against-segment test, split into cheap parts.
//
// On_Entity first looks at the segment's end points and extent, then
// compares the directions a->b and a->p (and p->a) within 0.001 radian
// through atan2. The extent part alone decides between "beside" (codes 1-4)
// and "beyond" (5, 6), which is all CalculateDistanceToLine needs. For the
// direction part, the cross and dot products settle most points without
// atan2: clearly off the line, or clearly along it (forward or backward).
// The margins keep every answer identical to the direction test; they cover
// the snapping of near-axis directions (at most 2.3e-10 rad for vectors at
// least 0.001 long), atan2's last-bit error and the rounding of the
// products. Anything closer to a threshold goes the slow way.
#pragma once

#include "geometry/constants.h"

#include <algorithm>
#include <cmath>

namespace cadtools::geometry {

enum class SegmentZone { kAtStart, kAtEnd, kWithinExtent, kOutsideExtent };

// Within 0.001 of an end point on both axes, else within the extent when
// strictly inside it, 0.001 away from both bounds, on x or on y.
inline SegmentZone ZoneOf(double x1, double y1, double x2, double y2, double px, double py) noexcept {
  if (std::fabs(x1 - px) < kCoarse && std::fabs(y1 - py) < kCoarse) return SegmentZone::kAtStart;
  if (std::fabs(x2 - px) < kCoarse && std::fabs(y2 - py) < kCoarse) return SegmentZone::kAtEnd;
  const auto within = [](double v, double a, double b) {
    const double low = std::min(a, b);
    const double high = std::max(a, b);
    return v > low && v <= high && std::fabs(v - low) >= kCoarse && std::fabs(v - high) >= kCoarse;
  };
  return within(px, x1, x2) || within(py, y1, y2) ? SegmentZone::kWithinExtent : SegmentZone::kOutsideExtent;
}

enum class LineRelation { kUnknown, kOff, kAlongForward, kAlongBackward };

// How v = p - a lies against u = b - a: at an angle clearly inside
// (0.001, pi - 0.001), clearly within 0.001 of u or of -u, or unknown.
// v must be at least 0.001 long on some axis, which it is once p is not at
// the start point (ZoneOf).
inline LineRelation RelateToLine(double ux, double uy, double vx, double vy) noexcept {
  constexpr double kTanAbove = 0.00100002;  // tan(0.00100001966...)
  constexpr double kTanBelow = 0.00099998;  // tan(0.00099997966...)
  constexpr double kRoundingSlack = 1e-14;
  if (!(std::fabs(ux) >= kCoarse || std::fabs(uy) >= kCoarse)) return LineRelation::kUnknown;
  const double cross = std::fabs(ux * vy - uy * vx);
  const double dot = ux * vx + uy * vy;
  const double slack = kRoundingSlack * (std::fabs(ux) + std::fabs(uy)) * (std::fabs(vx) + std::fabs(vy));
  if (cross > kTanAbove * std::fabs(dot) + slack) return LineRelation::kOff;
  if (cross < kTanBelow * std::fabs(dot) - slack) {
    return dot > 0.0 ? LineRelation::kAlongForward : LineRelation::kAlongBackward;
  }
  return LineRelation::kUnknown;
}

// True when the direction of u is more than 0.002 rad from 0 / 2pi, so a
// direction within 0.001 of it does not wrap around.
inline bool AwayFromDirectionCut(double ux, double uy) noexcept {
  return !(ux > 0.0 && std::fabs(uy) <= 0.0021 * ux);
}

}  // namespace cadtools::geometry

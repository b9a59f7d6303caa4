// Line/line and circle/circle intersections, and points against segments.
#include <cadtools/geometry/geometry_tools.h>

#include "geometry/constants.h"
#include "geometry/direction.h"
#include "geometry/on_line.h"

#include <algorithm>
#include <cmath>

using cadtools::GeometryTools;
using namespace cadtools::geometry;

namespace {

void Store(double* target, double value) {
  if (target != nullptr) *target = value;
}

// Whether a segment parameter lies within its segment: with the ends and a
// slack of 1e-6 when inclusive, strictly inside otherwise.
bool WithinSegment(double t, int inclusive) {
  return inclusive != 0 ? (-1e-6 < t && t < 1.000001) : (0.0 < t && t < 1.0);
}

}  // namespace

int GeometryTools::ll_Intersection(double x1, double y1, double x2, double y2, double x3, double y3,
                                double x4, double y4, double* ix, double* iy, int inclusive,
                                int coarse) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  const double den = dx * (y4 - y3) - dy * (x4 - x3);
  const double num = (x4 - x3) * (y1 - y3) - (y4 - y3) * (x1 - x3);
  const double tolerance = coarse != 0 ? kCoarse : kFine;
  if (std::fabs(den) < tolerance) {
    Store(ix, 0.0);
    Store(iy, 0.0);
    return std::fabs(num) < tolerance ? 1 : 0;
  }
  const double ua = num / den;
  Store(ix, x1 + dx * ua);
  Store(iy, y1 + dy * ua);
  const double ub = (dx * (y1 - y3) - dy * (x1 - x3)) / den;
  const bool onFirst = WithinSegment(ua, inclusive);
  const bool onSecond = WithinSegment(ub, inclusive);
  if (onFirst && onSecond) return 2;
  if (onFirst) return 3;
  if (onSecond) return 4;
  return 5;
}

int GeometryTools::On_Entity(double x1, double y1, double x2, double y2, double px, double py) {
  const SegmentZone zone = ZoneOf(x1, y1, x2, y2, px, py);
  if (zone == SegmentZone::kAtStart) return 1;
  if (zone == SegmentZone::kAtEnd) return 2;
  const bool withinExtent = zone == SegmentZone::kWithinExtent;

  switch (RelateToLine(x2 - x1, y2 - y1, px - x1, py - y1)) {
    case LineRelation::kOff:
      return withinExtent ? 4 : 6;
    case LineRelation::kAlongForward:
      if (withinExtent) return 3;
      if (AwayFromDirectionCut(x2 - x1, y2 - y1)) return 5;
      break;
    case LineRelation::kAlongBackward:
      if (withinExtent) return 4;  // a->p points away from a->b
      if (AwayFromDirectionCut(x2 - x1, y2 - y1)) return 5;
      break;
    case LineRelation::kUnknown:
      break;
  }

  const double s = Direction(x2 - x1, y2 - y1, kFine);
  const double q = Direction(px - x1, py - y1, kFine);
  if (withinExtent) {
    const bool alongSegment = std::fabs(q - s) < kCoarse || std::fabs(q + kTwoPi - s) < kCoarse ||
                              std::fabs(s + kTwoPi - q) < kCoarse;
    return alongSegment ? 3 : 4;
  }
  // Outside the extent the host does not test the wrap-around at 0 / 2pi.
  const double r = Direction(x1 - px, y1 - py, kFine);
  return std::fabs(q - s) < kCoarse || std::fabs(r - s) < kCoarse ? 5 : 6;
}

int GeometryTools::PtOnLine(double x1, double y1, double x2, double y2, double px, double py,
                         int inclusive) {
  if (x1 != x2 && y1 != y2) return 0;
  double tested = px;
  double end1 = x1;
  double end2 = x2;
  if (x1 == x2) {
    if (px != x1) return 0;
    tested = py;
    end1 = y1;
    end2 = y2;
  } else if (py != y1) {
    return 0;
  }
  const double low = std::min(end1, end2);
  const double high = std::max(end1, end2);
  const bool onSegment = inclusive != 0 ? (low <= tested && tested <= high) : (low < tested && tested < high);
  if (onSegment) return 1;
  return Length(px, py, x2, y2) >= Length(px, py, x1, y1) ? 2 : 3;
}

int GeometryTools::aa_Intersection(double cx1, double cy1, double r1, double cx2, double cy2, double r2,
                                double* x1, double* y1, double* x2, double* y2) {
  const double dx = cx2 - cx1;
  const double dy = cy2 - cy1;
  const double d = std::sqrt(dx * dx + dy * dy);
  if (d < kFine || d > r1 + r2) return 0;
  const int count = std::fabs(r1 + r2 - d) < kCoarse ? 1 : 2;

  const double a = (r1 * r1 - r2 * r2 + d * d) / (2.0 * d);
  const double h = std::sqrt(r1 * r1 - a * a);  // NaN when one circle holds the other
  const double px = cx1 + a * dx / d;
  const double py = cy1 + a * dy / d;
  const WPt pa(px + h * dy / d, py - h * dx / d);
  const WPt pb(px - h * dy / d, py + h * dx / d);
  const bool bFirst = pb.x <= pa.x;
  const WPt& first = bFirst ? pb : pa;
  const WPt& second = bFirst ? pa : pb;
  Store(x1, first.x);
  Store(y1, first.y);
  Store(x2, second.x);
  Store(y2, second.y);
  return count;
}

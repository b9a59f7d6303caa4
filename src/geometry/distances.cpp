// Distances from a point to lines, segments and a rectangle's outline.
#include <cadtools/geometry/geometry_tools.h>

#include "geometry/constants.h"
#include "geometry/on_line.h"

#include <array>
#include <cmath>

using cadtools::GeometryTools;
using namespace cadtools::geometry;

namespace {

double Distance(WPt a, WPt b) { return GeometryTools::Length(a.x, a.y, b.x, b.y); }

}  // namespace

double GeometryTools::DistToLine(WPt p, WPt a, WPt b) {
  if (Distance(p, a) + Distance(p, b) > 1.1 * Distance(a, b)) return -1.0;
  // The host's picking measure, reproduced as it is, + 1 included.
  const double c = (b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y);
  return std::sqrt((b.x - p.x) * (b.x - p.x) + (p.y - b.y) * (p.y - b.y) + c * c) /
         std::sqrt((b.y - a.y) * (b.y - a.y) + (b.x - a.x) * (b.x - a.x) + 1.0);
}

double GeometryTools::DistToLine1(WPt p, WPt a, WPt b) {
  return std::fabs(b.x * a.y - b.y * a.x + (a.x - b.x) * p.y + (b.y - a.y) * p.x) /
         std::sqrt((a.x - b.x) * (a.x - b.x) + (b.y - a.y) * (b.y - a.y));
}

double GeometryTools::OrthogLength(double x1, double y1, double x2, double y2) {
  if (x1 != x2 && y1 != y2) return std::fabs(y2 - y1) + std::fabs(x2 - x1);
  return Length(x1, y1, x2, y2);
}

double GeometryTools::CalculateDistanceToLine(WPt p, WPt a, WPt b) {
  // On_Entity's codes 5 and 6 are exactly "beyond the ends", which its
  // extent test decides alone; the direction part would not change it.
  if (ZoneOf(a.x, a.y, b.x, b.y, p.x, p.y) == SegmentZone::kOutsideExtent) return -1.0;
  return std::fabs((p.x - a.x) * (b.y - a.y) - (p.y - a.y) * (b.x - a.x)) /
         std::sqrt((b.y - a.y) * (b.y - a.y) + (b.x - a.x) * (b.x - a.x));
}

double GeometryTools::CalculateDistanceToRect(WPt p, WRect r) {
  const WPt topLeft(r.left, r.top);
  const WPt bottomLeft(r.left, r.bottom);
  const WPt bottomRight(r.right, r.bottom);
  const WPt topRight(r.right, r.top);
  const std::array<double, 4> distances = {
      CalculateDistanceToLine(p, topLeft, bottomLeft),
      CalculateDistanceToLine(p, bottomLeft, bottomRight),
      CalculateDistanceToLine(p, bottomRight, topRight),
      CalculateDistanceToLine(p, topRight, topLeft),
  };
  // A distance of exactly 0 (p on an edge's line) is skipped, as -1 is: the
  // host wants the nearest edge that p is not already on.
  double nearest = kNoDistance;
  for (const double d : distances) {
    if (d > 0.0 && d < nearest) nearest = d;
  }
  return nearest < kNoDistance ? nearest : -1.0;
}

void GeometryTools::GetOrthogPtsOnDistance(WPt a, WPt b, WPt p, double dist, WPt& ccwPt, WPt& cwPt) {
  const double direction = Angle(a, b, 0);
  const WPt v = PolarRound(p.x, p.y, direction, dist, 6) - p;
  // Rotations by +-pi/2 through cos and sin at run time: the cosine term is
  // about 6.1e-17, not 0, and the host's points carry it.
  for (const double quarter : {kHalfPi, -kHalfPi}) {
    const double c = std::cos(quarter);
    const double s = std::sin(quarter);
    const WPt turned(v.x * c - v.y * s, v.y * c + v.x * s);
    (quarter > 0.0 ? ccwPt : cwPt) = p + turned;
  }
}

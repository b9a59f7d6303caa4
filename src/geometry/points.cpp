// Points by polar and affine moves.
#include <cadtools/geometry/geometry_tools.h>

#include "common/decimal_rounding.h"

#include <cmath>

using cadtools::GeometryTools;

namespace {

// Rotation by the cosine c and sine s of an angle, in the host's form:
// x' = x c - y s, y' = y c + x s.
WPt Rotated(WPt v, double c, double s) { return {v.x * c - v.y * s, v.y * c + v.x * s}; }

}  // namespace

WPt GeometryTools::Polar(double x, double y, double angle, double dist) {
  return {x + std::cos(angle) * dist, y + std::sin(angle) * dist};
}

WPt GeometryTools::PolarRound(double x, double y, double angle, double dist, int decimals) {
  const double factor = cadtools::detail::DecimalFactor(static_cast<std::uint32_t>(decimals));
  return {cadtools::detail::DecimalRound(std::cos(angle) * dist + x, factor),
          cadtools::detail::DecimalRound(std::sin(angle) * dist + y, factor)};
}

WPt GeometryTools::RotatePoint(WPt centre, WPt pt, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return {c * (pt.x - centre.x) - s * (pt.y - centre.y) + centre.x,
          c * (pt.y - centre.y) + s * (pt.x - centre.x) + centre.y};
}

WPt GeometryTools::RotateGraphicPoint(double angle, WPt centre, WPt pt) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  // The expanded form the host's drawing code uses; it rounds differently
  // from RotatePoint in the last bits, which is kept.
  return {c * pt.x - s * pt.y - c * centre.x + s * centre.y + centre.x,
          c * pt.y + s * pt.x - s * centre.x - c * centre.y + centre.y};
}

WPt GeometryTools::ScalePoint(WPt centre, WPt pt, double sx, double sy) {
  return {(pt.x - centre.x) * sx + centre.x, (pt.y - centre.y) * sy + centre.y};
}

WPt GeometryTools::RotateCloudPoints(WPt centre, WPt pt, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const WPt local = Rotated(pt - centre, c, -s);
  return Rotated(WPt(local.x, -local.y), c, s) + centre;
}

void GeometryTools::Rotate(double c, double s, double* x, double* y) {
  if (x == nullptr || y == nullptr) return;
  const WPt r = Rotated(WPt(*x, *y), c, s);
  *x = r.x;
  *y = r.y;
}

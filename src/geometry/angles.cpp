// Directions, lengths, sides of a line and the angle normalisations.
#include <cadtools/geometry/geometry_tools.h>

#include "common/decimal_rounding.h"
#include "common/float_narrow.h"
#include "geometry/constants.h"
#include "geometry/direction.h"
#include "geometry/turns.h"

#include <cmath>
#include <limits>
#include <utility>

using cadtools::GeometryTools;
using namespace cadtools::geometry;
using cadtools::detail::NarrowToFloat;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTurnDegrees = 360.0;

double Tolerance(int coarse) { return coarse != 0 ? kCoarse : kFine; }

// Degrees in [0, 360) by single turns, comparing in single precision as the
// host does (shared by Norm2Angles and IsEqual_Angle).
double NormalizeDegrees(double degrees) {
  degrees = BringNearZero(degrees, kTurnDegrees);
  while (NarrowToFloat(degrees) >= 360.0f) degrees -= kTurnDegrees;
  while (NarrowToFloat(degrees) < 0.0f) degrees += kTurnDegrees;
  return degrees;
}

}  // namespace

double GeometryTools::Angle(double x1, double y1, double x2, double y2, int coarse) {
  return Direction(x2 - x1, y2 - y1, Tolerance(coarse));
}

double GeometryTools::Angle(WPt p1, WPt p2, int coarse) { return Angle(p1.x, p1.y, p2.x, p2.y, coarse); }

double GeometryTools::Angle(CPoint p1, CPoint p2, int coarse) {
  return Angle(static_cast<double>(p1.x), static_cast<double>(p1.y), static_cast<double>(p2.x),
               static_cast<double>(p2.y), coarse);
}

double GeometryTools::Length(double x1, double y1, double x2, double y2) {
  return std::sqrt((y2 - y1) * (y2 - y1) + (x2 - x1) * (x2 - x1));
}

double GeometryTools::Length(CPoint p1, CPoint p2) {
  const auto dx = static_cast<double>(cadtools::detail::WrapSub(p2.x, p1.x));
  const auto dy = static_cast<double>(cadtools::detail::WrapSub(p2.y, p1.y));
  return std::sqrt(dy * dy + dx * dx);
}

short GeometryTools::GetLineType(double x1, double y1, double x2, double y2) {
  if (std::fabs(y2 - y1) < kCoarse) return 0;
  if (std::fabs(x2 - x1) < kCoarse) return 1;
  return 2;
}

int GeometryTools::GetSide(double x1, double y1, double x2, double y2, double px, double py) {
  if (std::fabs(x1 - x2) < kCoarse) {
    if (std::fabs(x1 - px) < kCoarse) return 0;
    return x1 > px ? 2 : 1;
  }
  const double slope = (y2 - y1) / (x2 - x1);
  const double offset =
      cadtools::detail::DecimalRound(py - y1 - slope * (px - x1), cadtools::detail::DecimalFactor(3));
  if (std::fabs(offset) < kFine) return 0;
  return offset > 0.0 ? 1 : 2;
}

double GeometryTools::Rad(double degrees, int normalize) {
  const double radians = degrees * kPi / 180.0;
  return normalize != 0 ? NormalizeRad(radians) : radians;
}

double GeometryTools::Grad(double radians, int normalize) {
  if (normalize == 0) return radians * 180.0 / kPi;
  const double degrees = NormalizeRad(radians) * 180.0 / kPi;
  // Tenths of a degree, rounded half up through a 16-bit integer as the host
  // stores them. Only NaN (from a non-finite angle) would not fit.
  const double tenths = degrees * 10.0 + 0.5;
  if (std::isnan(tenths)) return kNaN;
  const auto whole = static_cast<short>(static_cast<int>(tenths));
  return static_cast<double>(whole) / 10.0;
}

double GeometryTools::NormalizeRad(double radians) {
  if (std::isinf(radians)) return kNaN;
  radians = BringNearZero(radians, kTwoPi);
  while (radians < 0.0) radians += kTwoPi;
  while (radians >= kRadUpper) radians -= kTwoPi;
  return radians;
}

double GeometryTools::NormAngle(double degrees, double lower) {
  const float lowerNarrow = NarrowToFloat(lower);
  if (std::isinf(degrees) || lowerNarrow == std::numeric_limits<float>::infinity()) return kNaN;
  degrees = BringNearZero(degrees, kTurnDegrees);
  while (NarrowToFloat(degrees) >= 360.0f) degrees -= kTurnDegrees;
  degrees = BringNearBelow(degrees, lower, kTurnDegrees);
  while (NarrowToFloat(degrees) < lowerNarrow) degrees += kTurnDegrees;
  if (std::fabs(NarrowToFloat(degrees)) < static_cast<float>(kFloatZero)) degrees = 0.0;
  return degrees;
}

void GeometryTools::Norm2Angles(double& start, double& end) {
  if (std::isinf(start)) start = kNaN;
  if (std::isinf(end)) end = kNaN;
  start = NormalizeDegrees(start);
  end = BringNearZero(end, kTurnDegrees);
  while (NarrowToFloat(end) >= 360.0f) end -= kTurnDegrees;
  end = BringNearBelow(end, start, kTurnDegrees);
  while (NarrowToFloat(start) > NarrowToFloat(end)) end += kTurnDegrees;

  const float s = NarrowToFloat(start);
  const float e = NarrowToFloat(end);
  if (static_cast<double>(std::fabs(e - s)) < kCoarse ||
      static_cast<double>(std::fabs(e - (s + 360.0f))) < kCoarse) {
    start = 0.0;
    end = 360.0;
  }
}

int GeometryTools::IsEqual_Angle(double a, double b) {
  if (std::isinf(a) || std::isinf(b)) return 0;
  float fa = NarrowToFloat(NormalizeDegrees(a));
  float fb = NarrowToFloat(NormalizeDegrees(b));
  if (std::fabs(fa) < static_cast<float>(kFloatZero)) fa = 0.0f;
  if (std::fabs(fb) < static_cast<float>(kFloatZero)) fb = 0.0f;
  // Only a is shifted by a turn: the host's test is one-sided.
  return static_cast<double>(std::fabs(fb - fa)) < kCoarse ||
         static_cast<double>(std::fabs(fb - (fa + 360.0f))) < kCoarse;
}

int GeometryTools::IsLess_Angle(double a, double b) { return NarrowToFloat(b) > NarrowToFloat(a); }

int GeometryTools::SortAngle(double& a, double& b) {
  if (NarrowToFloat(a) > NarrowToFloat(b)) {
    std::swap(a, b);
    return 1;
  }
  return 0;
}

double GeometryTools::RadEllipse(double a, double b, double degrees) {
  const double t = degrees * kPi / 180.0;
  return std::atan2(std::sin(t) * std::fabs(a), std::cos(t) * std::fabs(b));
}

double GeometryTools::NormSinOrCos(double v) {
  if (-1.0 <= v && v <= 1.0) {
    if (std::fabs(v) < kFine || std::fabs(v) < 1e-7) return 0.0;
    if (std::fabs(1.0 - v) < 1e-7) return 1.0;
    if (std::fabs(-1.0 - v) < 1e-7) return -1.0;
    return v;
  }
  // An overshoot is rounded, not clamped: 1.0000000000000002 becomes 1.0,
  // 1.5 stays 1.5.
  return cadtools::detail::DecimalRound(v, cadtools::detail::DecimalFactor(14));
}

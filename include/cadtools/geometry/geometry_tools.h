// cadtools::GeometryTools: the static geometric functions of CMathTools
// (include <cadtools/math_tools.h> and call them as CMathTools::...).
//
// Directions are radians in [0, 2pi); arc angles are degrees in [0, 360).
// Tolerances are strict ("smaller than" counts as equal):
//   coarse  0.001                   model units or radians
//   fine    2.220446049250313e-13   1000 x double epsilon
//   single  1.1920928955078125e-4   1000 x float epsilon
// Several functions keep irregular results that the host relies on; each
// one is shown below with its example values.
//
// Guards. No call hangs or has undefined behaviour on any input:
// - Angle loops (NormalizeRad, Rad, Grad, NormAngle, Norm2Angles,
//   IsEqual_Angle) step one turn at a time, as the host expects, for up to a
//   million turns; a larger finite angle is first reduced exactly with fmod.
//   An infinite angle gives NaN; a NaN angle passes through as NaN.
// - Grad(v, 1) of NaN or infinity is NaN.
// - Round() of NaN or a value outside the 32-bit range is LONG_MIN, the
//   integer-indefinite value of x86.
// - Factorial() is a loop (n! wraps to 0 from n = 66 on);
//   BinomialTheorem() returns 0 where the wrapped divisor is 0.
// - PolarRound() with a huge (negative) decimal count gives NaN coordinates.
// - CalculateBezierPoints() with a step that is not a positive number, or
//   so small that a segment would need more than 100 million points,
//   appends nothing.
// - Float overloads narrow out-of-range doubles to +-infinity.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>
#include <cadtools/geometry/wpt.h>
#include <cadtools/geometry/wrect.h>

#include <cstdint>

namespace cadtools {

class CADTOOLS_API GeometryTools {
 public:

  // ---- Tolerances and integer helpers --------------------------------

  // |v| < 1.1920928955078125e-4, the absolute value taken in float.
  static int equal_0(float v);
  // |v| < 2.220446049250313e-13.
  //   equal_0(1e-13)  // 1
  //   equal_0(3e-13)  // 0
  static int equal_0(double v);
  // |b - a| < tol; the float overload subtracts in single precision.
  static int equal_1(float a, float b, double tol);
  static int equal_1(double a, double b, double tol);
  // Each axis within tol separately (not the distance).
  static int equal_2(WPt a, WPt b, double tol);
  // 0 when within tol, else 1 if a > b and -1 otherwise.
  //   Compare_1(1.0, 1.0005, 0.001)  // 0
  //   Compare_1(2.0, 1.0, 0.001)     // 1
  static int Compare_1(float a, float b, double tol);
  static int Compare_1(double a, double b, double tol);
  // Truncates toward zero despite its name (through floor/ceil of v / 0.1):
  //   Round(2.97)   // 2
  //   Round(-2.97)  // -2
  //   Round(0.3)    // 0
  static LONG Round(double v);
  // n! in wrapping 64-bit arithmetic; exact for n <= 20.
  static std::uint64_t Factorial(std::uint64_t n);
  // n! / (k! (n - k)!) from wrapping factorials; meant for k <= n <= 20.
  static std::uint64_t BinomialTheorem(std::uint64_t n, std::uint64_t k);

  // ---- Directions and distances --------------------------------------

  // Direction of (x1, y1) -> (x2, y2) in [0, 2pi). Axis directions snap
  // within 0.001 (coarse != 0) or 2.2e-13; equal points give 0.
  //   Angle(0, 0, 1, 0.0005, 1)  // 0
  //   Angle(0, 0, 1, -1, 0)      // 7pi/4
  static double Angle(double x1, double y1, double x2, double y2, int coarse);
  static double Angle(WPt p1, WPt p2, int coarse);
  static double Angle(CPoint p1, CPoint p2, int coarse);
  static double Length(double x1, double y1, double x2, double y2);
  // Differences in 32-bit integer arithmetic (wrapping), squared as doubles.
  static double Length(CPoint p1, CPoint p2);
  // 0 horizontal (tested first, so also a zero-length segment), 1 vertical,
  // 2 oblique; axis tests within 0.001.
  static short GetLineType(double x1, double y1, double x2, double y2);
  // 0 on the line, 1 above (right of a vertical line), 2 below (left of it).
  // The offset is rounded to 3 decimals by the shared decimal rounding,
  // whose quirk sends 0.0007 to -0.001:
  //   GetSide(0, 0, 10, 0, 5, 0.0004)  // 0
  //   GetSide(0, 0, 10, 0, 5, 0.0007)  // 2
  static int GetSide(double x1, double y1, double x2, double y2, double px, double py);

  // ---- Points by polar and affine moves ------------------------------

  static WPt Polar(double x, double y, double angle, double dist);
  // Polar() with each coordinate rounded to `decimals` by the shared decimal
  // rounding, which rounds a product with integer part 0 and fraction >= 0.5
  // down to -1:
  //   PolarRound(0, 0, 0, 0.7, 0)   // (-1, 0)
  //   PolarRound(0, 0, 0, 1.26, 1)  // (1.3, 0)
  static WPt PolarRound(double x, double y, double angle, double dist, int decimals);
  // pt rotated counter-clockwise by angle about centre.
  static WPt RotatePoint(WPt centre, WPt pt, double angle);
  // The same rotation in expanded form; the last bits may differ.
  static WPt RotateGraphicPoint(double angle, WPt centre, WPt pt);
  static WPt ScalePoint(WPt centre, WPt pt, double sx, double sy);
  // Mirrors pt across the line through centre with direction angle.
  static WPt RotateCloudPoints(WPt centre, WPt pt, double angle);
  // In place: x' = x c - y s, y' = y c + x s.
  static void Rotate(double c, double s, double* x, double* y);

  // ---- Angle conversion and normalisation ----------------------------

  // Degrees to radians, then NormalizeRad() when normalize != 0.
  //   Rad(-90, 1)  // 3pi/2
  static double Rad(double degrees, int normalize);
  // Radians to degrees. With normalize != 0: normalised, then rounded half
  // up to tenths of a degree through a 16-bit integer.
  //   Grad(-pi/2, 1)  // 270.0
  static double Grad(double radians, int normalize);
  // Into [0, 2pi - 1e-6): values in [2pi - 1e-6, 2pi) come out slightly
  // negative, which callers treat as zero.
  //   NormalizeRad(2pi - 5e-7)  // about -5e-7
  static double NormalizeRad(double radians);
  // Down below 360, then up to at least lower; comparisons in float.
  //   NormAngle(370, 0)  // 10
  //   NormAngle(10, 20)  // 370
  static double NormAngle(double degrees, double lower);
  // Normalises an arc's start and end in degrees; a full circle becomes
  // (0, 360).
  //   (30, 30)   -> (0, 360)
  //   (350, 10)  -> (350, 370)
  //   (-90, 0)   -> (270, 360)
  static void Norm2Angles(double& start, double& end);
  // 1 when two degree angles denote the same direction. One-sided on
  // purpose: only a is shifted by a turn.
  //   IsEqual_Angle(0, 359.9995)  // 1
  //   IsEqual_Angle(359.9995, 0)  // 0
  static int IsEqual_Angle(double a, double b);
  // 1 when b > a in float; no normalisation.
  static int IsLess_Angle(double a, double b);
  // Swaps when a > b (in float) and returns 1; else 0.
  static int SortAngle(double& a, double& b);
  // The eccentric angle, in (-pi, pi], of the point of an ellipse with
  // semi-axes a, b at the given polar angle in degrees.
  static double RadEllipse(double a, double b, double degrees);
  // Snaps a computed sine or cosine to 0, 1 or -1 within 1e-7; outside
  // [-1, 1] rounds to 14 decimals instead of clamping.
  //   NormSinOrCos(0.99999995)  // 1
  //   NormSinOrCos(1.5)         // 1.5
  static double NormSinOrCos(double v);

  // ---- Rectangles from points ----------------------------------------

  static WRect CreateRectFrom2Points(WPt a, WPt b);
  static WRect NormalizeSelectedRect(WPt a, WPt b);
  // As NormalizeSelectedRect() except when a.x == b.x and a.y <= b.y: then
  // right holds the width 0 and bottom the height.
  //   ((2, 1), (2, 5))  -> (2, 1, 0, 4)
  //   ((2, 5), (2, 1))  -> (2, 1, 2, 5)
  static WRect NormalizeSelectedGDIRect(WPt a, WPt b);
  // Corners scaled about centre, then normalised.
  static WRect ScaleRect(WPt centre, WRect r, double sx, double sy);
  // false only strictly inside the rectangle spanned by c1 and c2.
  static bool IsPointOutsideRect(WPt pt, WPt c1, WPt c2);
  // The border zone, 1 to 8 clockwise from the left half of the top edge,
  // nearest to pt; c1 is the upper-left corner (y grows upward); 0 inside.
  static int FindSideRectNear(WPt pt, WPt c1, WPt c2);
  // Which of the four triangles cut by r's diagonals holds pt (1 to 4).
  static int FindSideByDiagOnRect(WPt pt, WRect r);

  // ---- Intersections, on-line tests and distances --------------------

  // Crossing of the lines (x1, y1)-(x2, y2) and (x3, y3)-(x4, y4), written
  // to ix, iy (0, 0 when parallel). Returns 0 parallel, 1 collinear, 2 on
  // both segments, 3 first only, 4 second only, 5 neither. inclusive != 0
  // counts segment ends with a slack of 1e-6; coarse selects the
  // parallelism tolerance.
  //   ll_Intersection(0, 0, 2, 0, 1, -1, 1, 1, &x, &y, 0, 0)  // 2, (1, 0)
  static int ll_Intersection(double x1, double y1, double x2, double y2, double x3, double y3,
                             double x4, double y4, double* ix, double* iy, int inclusive,
                             int coarse);
  // The point against the segment: 1 at the start, 2 at the end, 3 on it,
  // 4 within its extent but off it, 5 on its extension, 6 elsewhere.
  // Closeness to the line is judged by direction (0.001 rad).
  //   segment (0, 0)-(10, 0): (0.0005, 0) -> 1, (5, 1) -> 4, (-5, 0) -> 5
  static int On_Entity(double x1, double y1, double x2, double y2, double px, double py);
  // For axis-parallel segments, exact: 0 oblique or off the line, 1 on the
  // segment, 2 beyond it nearer the start, 3 beyond it nearer the end.
  static int PtOnLine(double x1, double y1, double x2, double y2, double px, double py,
                      int inclusive);
  // The picking closeness measure (not a Euclidean distance), or -1.0 when
  // p is outside the ellipse |p - a| + |p - b| <= 1.1 |a - b|.
  static double DistToLine(WPt p, WPt a, WPt b);
  // Perpendicular distance to the infinite line a-b (NaN when a == b).
  static double DistToLine1(WPt p, WPt a, WPt b);
  // |x2 - x1| + |y2 - y1|.
  //   OrthogLength(0, 0, 3, 4)  // 7
  static double OrthogLength(double x1, double y1, double x2, double y2);
  // Perpendicular distance when p is at, on or beside the segment (On_Entity
  // 1 to 4), else -1.0.
  static double CalculateDistanceToLine(WPt p, WPt a, WPt b);
  // The smallest positive edge distance; an edge whose line passes through
  // p (distance 0) is skipped on purpose. -1.0 when no edge qualifies.
  static double CalculateDistanceToRect(WPt p, WRect r);
  // The points at dist from p on the perpendicular to a->b.
  //   a (0, 0), b (10, 0), p (5, 0), dist 2  ->  ccw ~(5, 2), cw ~(5, -2)
  static void GetOrthogPtsOnDistance(WPt a, WPt b, WPt p, double dist, WPt& ccwPt, WPt& cwPt);
  // Crossings of two circles, ordered by x: 0, 1 (touching from outside,
  // within 0.001) or 2. Internal tangency and nesting are not detected: they
  // give 2, with NaN coordinates for nesting.
  //   ((0, 0), 5) and ((8, 0), 5)   // 2: (4, 3), (4, -3)
  //   ((0, 0), 5) and ((10, 0), 5)  // 1: (5, 0) twice
  static int aa_Intersection(double cx1, double cy1, double r1, double cx2, double cy2, double r2,
                             double* x1, double* y1, double* x2, double* y2);

  // ---- Cubic Bezier points -------------------------------------------

  // Appends the polyline of a chain of cubic segments (control points 3s to
  // 3s + 3) sampled with t = 0, step, 2 step, ... while t <= 1, t summed by
  // repeated addition; each segment restarts at t = 0, so with step 0.5 a
  // shared end point appears twice. Fewer than 4 points are copied as they
  // are; leftover points are ignored; output is not cleared.
  static void CalculateBezierPoints(CArray<WPt, WPt>* input, CArray<WPt, WPt>& output, double step);
};

}  // namespace cadtools

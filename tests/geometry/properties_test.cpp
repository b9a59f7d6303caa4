// Properties over many random inputs (fixed seed): they catch faults that a
// handful of examples would not, such as a fast path that disagrees with the
// direction test it shortcuts.
#include "geometry/geometry_test_util.h"

#include <cmath>
#include <iterator>
#include <limits>
#include <random>

using cadtools::test::kTwoPi;

namespace {

constexpr int kRounds = 20000;

class GeometryProperties : public testing::Test {
 protected:
  double Coord() { return std::uniform_real_distribution<double>(-1000, 1000)(rng_); }
  double Unit() { return std::uniform_real_distribution<double>(0, 1)(rng_); }
  WPt Point() { return {Coord(), Coord()}; }
  WRect Rect() { return CMathTools::CreateRectFrom2Points(Point(), Point()); }

  std::mt19937_64 rng_{20261121};
};

// The direction test exactly as the host writes it, without shortcuts.
int ReferenceOnEntity(double x1, double y1, double x2, double y2, double px, double py) {
  if (std::fabs(x1 - px) < 0.001 && std::fabs(y1 - py) < 0.001) return 1;
  if (std::fabs(x2 - px) < 0.001 && std::fabs(y2 - py) < 0.001) return 2;
  const double minX = std::fmin(x1, x2), maxX = std::fmax(x1, x2);
  const double minY = std::fmin(y1, y2), maxY = std::fmax(y1, y2);
  const bool inside =
      (px > minX && px <= maxX && std::fabs(px - minX) >= 0.001 && std::fabs(px - maxX) >= 0.001) ||
      (py > minY && py <= maxY && std::fabs(py - minY) >= 0.001 && std::fabs(py - maxY) >= 0.001);
  const double s = CMathTools::Angle(x1, y1, x2, y2, 0);
  const double q = CMathTools::Angle(x1, y1, px, py, 0);
  if (inside) {
    return std::fabs(q - s) < 0.001 || std::fabs(q + kTwoPi - s) < 0.001 || std::fabs(s + kTwoPi - q) < 0.001
               ? 3
               : 4;
  }
  const double r = CMathTools::Angle(px, py, x1, y1, 0);
  return std::fabs(q - s) < 0.001 || std::fabs(r - s) < 0.001 ? 5 : 6;
}

TEST_F(GeometryProperties, OnEntityAgreesWithTheDirectionTestNearTheThreshold) {
  for (int i = 0; i < kRounds * 5; ++i) {
    const WPt a = Point();
    // Scale the segment from tiny to long; put p at an angle around the
    // 0.001 rad threshold, before, on or beyond the segment.
    const double length = std::pow(10.0, Unit() * 7 - 4);
    // Every fourth segment points within 0.004 rad of the 0 / 2pi cut,
    // where the host's test treats the wrap-around unevenly.
    const double theta = i % 4 == 1 ? (Unit() - 0.5) * 0.008 : Unit() * kTwoPi;
    const WPt b(a.x + length * std::cos(theta), a.y + length * std::sin(theta));
    const double off = (Unit() * 2 - 1) * 0.0012 + (i % 2 == 0 ? 0.0 : cadtools::test::kPi);
    const double reach = length * (Unit() * 2.4 - 0.2);
    const WPt p(a.x + reach * std::cos(theta + off), a.y + reach * std::sin(theta + off));
    ASSERT_EQ(CMathTools::On_Entity(a.x, a.y, b.x, b.y, p.x, p.y), ReferenceOnEntity(a.x, a.y, b.x, b.y, p.x, p.y))
        << "a " << testing::PrintToString(a) << " b " << testing::PrintToString(b) << " p "
        << testing::PrintToString(p);
  }
}

// The tolerant rectangle tests as the host writes them.
int ReferencePtInRect(const WRect& r, double x, double y) {
  if (x <= r.left && std::fabs(r.left - x) >= 0.001) return 0;
  if (x > r.right && std::fabs(r.right - x) >= 0.001) return 0;
  if (y <= r.top && std::fabs(r.top - y) >= 0.001) return 0;
  if (y > r.bottom && std::fabs(r.bottom - y) >= 0.001) return 0;
  return 1;
}

int ReferenceIntersectRect(const WRect& r, const WRect& o) {
  if (o.left > r.right && std::fabs(r.right - o.left) >= 0.001) return 0;
  if (o.right <= r.left && std::fabs(r.left - o.right) >= 0.001) return 0;
  if (o.top > r.bottom && std::fabs(r.bottom - o.top) >= 0.001) return 0;
  return o.bottom > r.top || std::fabs(r.top - o.bottom) < 0.001 ? 1 : 0;
}

TEST_F(GeometryProperties, TolerantRectTestsMatchTheirLiteralForm) {
  const double inf = std::numeric_limits<double>::infinity();
  const double values[] = {-inf, -10, -0.0011, -0.001, -0.0005, -0.0, 0.0, 0.0005, 0.001, 0.0011,
                           1, 1.001, 10, 10.0005, 10.001, inf, std::numeric_limits<double>::quiet_NaN()};
  const auto pick = [&] { return values[std::uniform_int_distribution<std::size_t>(0, std::size(values) - 1)(rng_)]; };
  for (int i = 0; i < kRounds * 5; ++i) {
    const WRect r(pick(), pick(), pick(), pick()), o(pick(), pick(), pick(), pick());
    const double x = pick(), y = pick();
    ASSERT_EQ(r.PtInRect(x, y, 1), ReferencePtInRect(r, x, y)) << testing::PrintToString(r) << " " << x << "," << y;
    ASSERT_EQ(r.IntersectRect(o, 1), ReferenceIntersectRect(r, o))
        << testing::PrintToString(r) << " " << testing::PrintToString(o);
  }
}

TEST_F(GeometryProperties, AnglesStayInRange) {
  for (int i = 0; i < kRounds; ++i) {
    const double angle = CMathTools::Angle(Point(), Point(), i % 2);
    ASSERT_TRUE(angle >= 0.0 && angle < kTwoPi) << angle;
    const double turns = (Unit() - 0.5) * 2e4;
    const double radians = CMathTools::NormalizeRad(turns);
    ASSERT_TRUE(radians >= -1e-6 && radians < kTwoPi - 1e-6) << turns;
    const double degrees = CMathTools::NormAngle(turns, 0);
    ASSERT_TRUE(degrees >= 0.0 && degrees < 360.0) << turns;
    ASSERT_EQ(CMathTools::IsEqual_Angle(turns, turns + 720.0), 1) << turns;
  }
}

TEST_F(GeometryProperties, SectionLiesInBothRectangles) {
  for (int i = 0; i < kRounds; ++i) {
    const WRect a = Rect(), b = Rect();
    const WRect s = a.Section(b);
    if (s.IsEmpty()) {
      ASSERT_EQ(a.IntersectRect(b, 0), 0);
      continue;
    }
    ASSERT_EQ(a.RectInRect(s, 0), 1);
    ASSERT_EQ(b.RectInRect(s, 0), 1);
    WRect clamped = a;
    clamped &= b;
    ASSERT_TRUE(cadtools::test::SameRect(clamped, s));
    ASSERT_EQ(WRect::Union(a, b).RectInRect(a, 0), 1);
  }
}

TEST_F(GeometryProperties, CrossingsLieOnBothLinesAndCircles) {
  for (int i = 0; i < kRounds; ++i) {
    const WPt a = Point(), b = Point(), c = Point(), d = Point();
    double x = 0, y = 0;
    const int code = CMathTools::ll_Intersection(a.x, a.y, b.x, b.y, c.x, c.y, d.x, d.y, &x, &y, 1, 0);
    if (code >= 2) {
      const double scale = 1e-9 * (1 + std::fabs(x) + std::fabs(y));
      ASSERT_LT(CMathTools::DistToLine1(WPt(x, y), a, b), scale);
      ASSERT_LT(CMathTools::DistToLine1(WPt(x, y), c, d), scale);
      ASSERT_EQ(code == 2 || code == 3, CMathTools::On_Entity(a.x, a.y, b.x, b.y, x, y) <= 3);
    }
    const double r1 = Unit() * 800, r2 = Unit() * 800;
    double x1, y1, x2, y2;
    if (CMathTools::aa_Intersection(a.x, a.y, r1, c.x, c.y, r2, &x1, &y1, &x2, &y2) == 2 && !std::isnan(x1)) {
      ASSERT_LE(x1, x2);
      ASSERT_NEAR(CMathTools::Length(a.x, a.y, x1, y1), r1, 1e-6);
      ASSERT_NEAR(CMathTools::Length(c.x, c.y, x2, y2), r2, 1e-6);
    }
  }
}

}  // namespace

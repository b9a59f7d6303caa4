#include "geometry/geometry_test_util.h"

#include <cmath>
#include <limits>

using cadtools::test::kPi;
using cadtools::test::kTrig;
using cadtools::test::kTwoPi;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(Angles, DirectionSnapsToAxes) {
  struct Case {
    double x2, y2;
    int coarse;
    double expected;
  };
  const Case cases[] = {
      {1, 0.0005, 1, 0.0},
      {1, 0.0005, 0, std::atan2(0.0005, 1)},
      {0.0005, 3, 1, 1.5707963267948966},
      {-4, 1e-14, 0, kPi},
      {0, -5, 0, 4.71238898038469},
      {1, -1, 0, 7 * kPi / 4},
      {0, 0, 0, 0.0},
      {0, 0, 1, 0.0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x2 << ", " << c.y2 << " coarse " << c.coarse);
    EXPECT_NEAR(CMathTools::Angle(0, 0, c.x2, c.y2, c.coarse), c.expected, kTrig);
    EXPECT_NEAR(CMathTools::Angle(WPt(0, 0), WPt(c.x2, c.y2), c.coarse), c.expected, kTrig);
  }
  EXPECT_EQ(CMathTools::Angle(0, 0, 0, -5, 0), 4.71238898038469);  // snapped, exact
  EXPECT_NEAR(CMathTools::Angle(CPoint(1, 1), CPoint(0, 2), 0), 3 * kPi / 4, kTrig);
}

TEST(Angles, LengthsAndLineTypes) {
  EXPECT_EQ(CMathTools::Length(0, 0, 3, 4), 5.0);
  EXPECT_EQ(CMathTools::Length(CPoint(1, 1), CPoint(4, 5)), 5.0);
  // Integer differences wrap as the host's 32-bit arithmetic does.
  EXPECT_EQ(CMathTools::Length(CPoint(-2147483647 - 1, 0), CPoint(2147483647, 0)), 1.0);

  struct Case {
    double x1, y1, x2, y2;
    short type;
  };
  const Case cases[] = {
      {0, 0, 0, 0, 0}, {0, 0, 10, 0.0009, 0}, {0, 0, 0.0009, 10, 1}, {0, 0, 1, 1, 2}, {0, 0, 10, 0.001, 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::GetLineType(c.x1, c.y1, c.x2, c.y2), c.type) << c.x2 << ", " << c.y2;
  }
}

TEST(Angles, GetSideRoundsTheOffsetToThreeDecimals) {
  struct Case {
    double x1, y1, x2, y2, px, py;
    int side;
  };
  const Case cases[] = {
      {0, 0, 10, 0, 5, 0.0004, 0},
      {0, 0, 10, 0, 5, 0.0007, 2},  // 0.7 thousandths round to -1 thousandth
      {0, 0, 10, 0, 5, 0.0015, 1},  // 1.5 rounds away from zero
      {0, 0, 10, 0, 5, -3, 2},
      {10, 0, 0, 0, 5, 3, 1},       // depends on y only, not the direction
      {0, 0, 0, 10, -1, 5, 2},      // left of a vertical line
      {0, 0, 0.0005, 10, 1, 5, 1},  // right of a nearly vertical line
      {0, 0, 0, 10, 0.0009, 5, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "(" << c.px << ", " << c.py << ")");
    EXPECT_EQ(CMathTools::GetSide(c.x1, c.y1, c.x2, c.y2, c.px, c.py), c.side);
  }
}

TEST(Angles, RadiansAndDegrees) {
  EXPECT_EQ(CMathTools::Rad(360, 1), 0.0);
  EXPECT_NEAR(CMathTools::Rad(-90, 1), 4.71238898038469, kTrig);
  EXPECT_NEAR(CMathTools::Rad(180, 0), kPi, kTrig);
  EXPECT_NEAR(CMathTools::NormalizeRad(kTwoPi - 5e-7), -5e-7, 1e-15);
  EXPECT_NEAR(CMathTools::NormalizeRad(-kPi), kPi, kTrig);
  EXPECT_NEAR(CMathTools::NormalizeRad(5 * kTwoPi + 1), 1.0, 1e-12);

  EXPECT_EQ(CMathTools::Grad(kPi / 3, 1), 60.0);
  EXPECT_EQ(CMathTools::Grad(-kPi / 2, 1), 270.0);
  EXPECT_EQ(CMathTools::Grad(0.123, 0), 0.123 * 180.0 / kPi);  // not rounded
  EXPECT_EQ(CMathTools::Grad(0.123, 1), 7.0);                  // 7.047... in tenths, half up
  EXPECT_EQ(CMathTools::Grad(kTwoPi - 5e-7, 1), 0.0);          // slightly negative rounds to 0
}

TEST(Angles, DegreeNormalisation) {
  struct Case {
    double degrees, lower, expected;
  };
  const Case cases[] = {
      {370, 0, 10}, {-10, 0, 350}, {10, 20, 370}, {720, 0, 0}, {359.99999, 0, 359.99999},
      {360.00005, 0, 0},  // below the single-precision zero after one turn
  };
  for (const Case& c : cases) {
    EXPECT_NEAR(CMathTools::NormAngle(c.degrees, c.lower), c.expected, 1e-9) << c.degrees;
  }

  struct ArcCase {
    double start, end, startOut, endOut;
  };
  const ArcCase arcs[] = {
      {30, 30, 0, 360}, {350, 10, 350, 370}, {-90, 0, 270, 360}, {0, 359.9995, 0, 360},
      {10, 20, 10, 20}, {400, 50, 40, 50},   {90, -90, 90, 270},
  };
  for (const ArcCase& a : arcs) {
    double start = a.start, end = a.end;
    CMathTools::Norm2Angles(start, end);
    EXPECT_NEAR(start, a.startOut, 1e-9) << a.start << ", " << a.end;
    EXPECT_NEAR(end, a.endOut, 1e-9) << a.start << ", " << a.end;
  }
}

TEST(Angles, EqualLessAndSort) {
  struct Case {
    double a, b;
    int equal;
  };
  const Case cases[] = {
      {0, 359.9995, 1}, {359.9995, 0, 0},  // one-sided on purpose
      {10, 370, 1},     {-90, 270, 1},     {45, 45.0009, 1}, {45, 45.002, 0},
      {kNaN, 0, 0},     {kInf, 0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::IsEqual_Angle(c.a, c.b), c.equal) << c.a << ", " << c.b;
  }

  EXPECT_EQ(CMathTools::IsLess_Angle(1.0, 2.0), 1);
  EXPECT_EQ(CMathTools::IsLess_Angle(1.0, 1.00000001), 0);  // equal in float
  double a = 5, b = 1;
  EXPECT_EQ(CMathTools::SortAngle(a, b), 1);
  EXPECT_EQ(a, 1.0);
  EXPECT_EQ(b, 5.0);
  double c = 1.00000001, d = 1.0;
  EXPECT_EQ(CMathTools::SortAngle(c, d), 0);
  EXPECT_EQ(c, 1.00000001);
}

TEST(Angles, EllipseParameterAndSineCleanup) {
  EXPECT_NEAR(CMathTools::RadEllipse(2, 1, 45), std::atan2(std::sin(kPi / 4) * 2, std::cos(kPi / 4)), kTrig);
  EXPECT_NEAR(CMathTools::RadEllipse(-2, 1, 180), kPi, kTrig);
  EXPECT_NEAR(CMathTools::RadEllipse(1, 1, -90), -kPi / 2, kTrig);

  struct Case {
    double v, expected;
  };
  const Case cases[] = {
      {0.99999995, 1.0}, {-3e-8, 0.0},  {0.5, 0.5},  {-0.99999995, -1.0},
      {1.0000000000000002, 1.0},        {1.5, 1.5},  {-1.25, -1.25},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::NormSinOrCos(c.v), c.expected) << c.v;
  }
}

TEST(AngleGuards, NonFiniteAndHugeAnglesReturn) {
  EXPECT_TRUE(std::isnan(CMathTools::NormalizeRad(kInf)));
  EXPECT_TRUE(std::isnan(CMathTools::NormalizeRad(-kInf)));
  EXPECT_TRUE(std::isnan(CMathTools::NormalizeRad(kNaN)));
  EXPECT_TRUE(std::isnan(CMathTools::Grad(kInf, 1)));
  EXPECT_TRUE(std::isnan(CMathTools::Rad(kNaN, 1)));
  EXPECT_TRUE(std::isnan(CMathTools::NormAngle(kInf, 0)));
  EXPECT_TRUE(std::isnan(CMathTools::NormAngle(10, kInf)));
  EXPECT_TRUE(std::isnan(CMathTools::NormAngle(10, 1e300)));  // narrows to +inf in float
  EXPECT_EQ(CMathTools::NormAngle(10, -kInf), 10.0);

  for (const double huge : {1e300, -1e300, 1e17, -3.6e9}) {
    SCOPED_TRACE(huge);
    const double r = CMathTools::NormalizeRad(huge);
    EXPECT_TRUE(r >= -1e-6 && r < kTwoPi);
    const double d = CMathTools::NormAngle(huge, 0);
    EXPECT_TRUE(d >= 0 && d < 360);
    double start = huge, end = -huge;
    CMathTools::Norm2Angles(start, end);
    EXPECT_TRUE(start >= 0 && start < 360 && end >= start && end <= start + 360);
  }
  const double raised = CMathTools::NormAngle(10, 1e12);
  EXPECT_TRUE(raised > 1e12 - 360 && raised < 1e12 + 360);  // compared in float near 1e12
  double start = kInf, end = 10;
  CMathTools::Norm2Angles(start, end);
  EXPECT_TRUE(std::isnan(start));
}

}  // namespace

#include "geometry/geometry_test_util.h"

#include <cmath>

using cadtools::test::kPi;
using cadtools::test::NearPoint;
using cadtools::test::SameRect;

namespace {

TEST(PolarPoints, PolarRoundFollowsTheDecimalRounding) {
  struct Case {
    double dist;
    int decimals;
    double x;
  };
  const Case cases[] = {
      {0.7, 0, -1.0},  // a product between 0.5 and 1 rounds to -1
      {0.4, 0, 0.0},   {1.26, 1, 1.3}, {-2.5, 0, -3.0}, {2.5, 0, 3.0},
      {1.23456789, 6, 1.234568},       {0.05, 1, -0.1},
  };
  for (const Case& c : cases) {
    const WPt p = CMathTools::PolarRound(0, 0, 0, c.dist, c.decimals);
    EXPECT_EQ(p.x, c.x) << c.dist << " to " << c.decimals;
    EXPECT_EQ(p.y, 0.0);
  }
  // A negative count is a huge unsigned count: the factor is infinite.
  const WPt bad = CMathTools::PolarRound(1, 1, 0, 1, -1);
  EXPECT_TRUE(std::isnan(bad.x) && std::isnan(bad.y));
  EXPECT_TRUE(NearPoint(CMathTools::Polar(1, 2, kPi / 2, 3), WPt(1, 5)));
}

TEST(AffineMoves, RotateScaleMirror) {
  const WPt centre(1, 1);
  EXPECT_TRUE(NearPoint(CMathTools::RotatePoint(centre, WPt(2, 1), kPi / 2), WPt(1, 2)));
  EXPECT_TRUE(NearPoint(CMathTools::RotateGraphicPoint(kPi / 2, centre, WPt(2, 1)), WPt(1, 2)));
  EXPECT_TRUE(NearPoint(CMathTools::RotatePoint(centre, WPt(3, 4), 1.234),
                        CMathTools::RotateGraphicPoint(1.234, centre, WPt(3, 4))));
  EXPECT_EQ(CMathTools::ScalePoint(centre, WPt(3, 0), 2, -1), WPt(5, 2));
  // Mirroring across the x axis and across the diagonal y = x.
  EXPECT_TRUE(NearPoint(CMathTools::RotateCloudPoints(WPt(0, 0), WPt(3, 4), 0), WPt(3, -4)));
  EXPECT_TRUE(NearPoint(CMathTools::RotateCloudPoints(WPt(1, 1), WPt(4, 2), kPi / 4), WPt(2, 4)));

  double x = 1, y = 2;
  CMathTools::Rotate(0, 1, &x, &y);  // uses the old x for y
  EXPECT_EQ(x, -2.0);
  EXPECT_EQ(y, 1.0);
  CMathTools::Rotate(0, 1, nullptr, &y);  // ignored, no crash
  EXPECT_EQ(y, 1.0);
}

TEST(RectFromPoints, NormalisedForms) {
  struct Case {
    WPt a, b;
    WRect normal, gdi;
  };
  const Case cases[] = {
      {WPt(2, 1), WPt(2, 5), WRect(2, 1, 2, 5), WRect(2, 1, 0, 4)},  // the GDI form
      {WPt(2, 5), WPt(2, 1), WRect(2, 1, 2, 5), WRect(2, 1, 2, 5)},
      {WPt(1, 1), WPt(2, 5), WRect(1, 1, 2, 5), WRect(1, 1, 2, 5)},
      {WPt(3, 3), WPt(3, 3), WRect(3, 3, 3, 3), WRect(3, 3, 0, 0)},
      {WPt(4, -1), WPt(-2, 6), WRect(-2, -1, 4, 6), WRect(-2, -1, 4, 6)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.a) + " " + testing::PrintToString(c.b));
    EXPECT_TRUE(SameRect(CMathTools::CreateRectFrom2Points(c.a, c.b), c.normal));
    EXPECT_TRUE(SameRect(CMathTools::NormalizeSelectedRect(c.a, c.b), c.normal));
    EXPECT_TRUE(SameRect(CMathTools::NormalizeSelectedGDIRect(c.a, c.b), c.gdi));
  }
  EXPECT_TRUE(SameRect(CMathTools::ScaleRect(WPt(0, 0), WRect(1, 2, 3, 4), -1, 2), WRect(-3, 4, -1, 8)));
}

TEST(RectFromPoints, OutsideAndNearestSide) {
  EXPECT_FALSE(CMathTools::IsPointOutsideRect(WPt(5, 5), WPt(10, 10), WPt(0, 0)));
  EXPECT_TRUE(CMathTools::IsPointOutsideRect(WPt(10, 5), WPt(0, 0), WPt(10, 10)));  // border is outside
  EXPECT_TRUE(CMathTools::IsPointOutsideRect(WPt(-1, 5), WPt(0, 0), WPt(10, 10)));

  struct Case {
    WPt pt;
    int zone;
  };
  const Case cases[] = {
      {WPt(-1, 8), 8}, {WPt(-1, 2), 7}, {WPt(2, 11), 1}, {WPt(8, 11), 2}, {WPt(11, 8), 3},
      {WPt(11, 2), 4}, {WPt(8, -1), 5}, {WPt(2, -1), 6}, {WPt(5, 5), 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::FindSideRectNear(c.pt, WPt(0, 10), WPt(10, 0)), c.zone)
        << testing::PrintToString(c.pt);
  }

  const WRect r(0, 0, 10, 10);
  const Case triangles[] = {
      {WPt(1, 5), 1}, {WPt(5, 1), 2}, {WPt(5, 9), 3}, {WPt(9, 5), 4}, {WPt(5, 5), 2},  // on a diagonal: 2
  };
  for (const Case& c : triangles) {
    EXPECT_EQ(CMathTools::FindSideByDiagOnRect(c.pt, r), c.zone) << testing::PrintToString(c.pt);
  }
}

}  // namespace

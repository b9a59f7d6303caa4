#include "geometry/geometry_test_util.h"

#include <cmath>

using cadtools::test::NearPoint;

namespace {

TEST(Distances, PickingMeasureAndPerpendicular) {
  const WPt a(0, 0), b(10, 0);
  EXPECT_EQ(CMathTools::DistToLine(WPt(5, 20), a, b), -1.0);  // outside the 1.1 ellipse
  // Near the segment: the host's measure, not the Euclidean 1.
  const double c = 10.0 * 1.0;
  EXPECT_EQ(CMathTools::DistToLine(WPt(5, -1), a, b), std::sqrt(25.0 + 1.0 + c * c) / std::sqrt(100.0 + 1.0));

  EXPECT_EQ(CMathTools::DistToLine1(WPt(3, 4), a, b), 4.0);
  EXPECT_EQ(CMathTools::DistToLine1(WPt(30, -4), a, b), 4.0);  // the infinite line
  EXPECT_EQ(CMathTools::DistToLine1(WPt(0, 5), WPt(0, 0), WPt(3, 4)), 3.0);
  EXPECT_TRUE(std::isnan(CMathTools::DistToLine1(WPt(1, 1), a, a)));

  EXPECT_EQ(CMathTools::OrthogLength(0, 0, 3, 4), 7.0);
  EXPECT_EQ(CMathTools::OrthogLength(0, 0, -3, 0), 3.0);
  EXPECT_EQ(CMathTools::OrthogLength(1, 1, 1, 1), 0.0);
}

TEST(Distances, ToLineOnlyBesideTheSegment) {
  struct Case {
    WPt p;
    double expected;
  };
  const WPt a(0, 0), b(10, 0);
  const Case cases[] = {
      {WPt(5, 3), 3.0},   {WPt(5, -2), 2.0}, {WPt(0, 0), 0.0},  {WPt(10, 0.0009765625), 0.0009765625},
      {WPt(15, 0), -1.0}, {WPt(-5, 1), -1.0}, {WPt(15, 1), -1.0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::CalculateDistanceToLine(c.p, a, b), c.expected) << testing::PrintToString(c.p);
  }
  // A zero-length segment: the point is "at" it, and the division gives NaN.
  EXPECT_TRUE(std::isnan(CMathTools::CalculateDistanceToLine(WPt(1, 1), WPt(1, 1), WPt(1, 1))));
}

TEST(Distances, ToRectSkipsEdgesThroughThePoint) {
  const WRect r(0, 0, 10, 4);
  struct Case {
    WPt p;
    double expected;
  };
  const Case cases[] = {
      {WPt(3, 1), 1.0},   // nearest edge: top
      {WPt(9, 2), 1.0},   // right
      // On the left edge: its 0 is skipped, and the top and bottom edges do
      // not reach past their ends (x = 0 is not beside them): the right edge.
      {WPt(0, 1), 10.0},
      {WPt(5, 4), 4.0},   // on the bottom edge: the top is the next positive
      {WPt(5, 10), 6.0},  // beyond the bottom, above it in x: only top/bottom qualify
      {WPt(20, 20), -1.0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::CalculateDistanceToRect(c.p, r), c.expected) << testing::PrintToString(c.p);
  }
  // A degenerate rectangle whose every edge passes through the point.
  EXPECT_EQ(CMathTools::CalculateDistanceToRect(WPt(0, 0), WRect(0, 0, 0, 0)), -1.0);
}

TEST(Distances, OrthogonalPointsCarryTheCosineTerm) {
  WPt ccw, cw;
  CMathTools::GetOrthogPtsOnDistance(WPt(0, 0), WPt(10, 0), WPt(5, 0), 2, ccw, cw);
  EXPECT_TRUE(NearPoint(ccw, WPt(5, 2)));
  EXPECT_TRUE(NearPoint(cw, WPt(5, -2)));
  CMathTools::GetOrthogPtsOnDistance(WPt(0, 0), WPt(10, 0), WPt(0, 0), 2, ccw, cw);
  EXPECT_NE(ccw.x, 0.0);  // 2 cos(pi/2): about 1.2e-16, not 0
  EXPECT_NEAR(ccw.x, 1.2246467991473532e-16, 1e-20);  // run-time libraries differ in the last bits

  CMathTools::GetOrthogPtsOnDistance(WPt(0, 0), WPt(0, 10), WPt(1, 1), 3, ccw, cw);
  EXPECT_TRUE(NearPoint(ccw, WPt(-2, 1)));
  EXPECT_TRUE(NearPoint(cw, WPt(4, 1)));
}

}  // namespace

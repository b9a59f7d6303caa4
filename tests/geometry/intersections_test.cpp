#include "geometry/geometry_test_util.h"

#include <cmath>

namespace {

TEST(LineLine, CodesAndCrossings) {
  struct Case {
    double x1, y1, x2, y2, x3, y3, x4, y4;
    int inclusive, coarse;
    int code;
    double ix, iy;
  };
  const Case cases[] = {
      {0, 0, 2, 0, 1, -1, 1, 1, 0, 0, 2, 1, 0},
      {0, 0, 1, 0, 1, 0, 1, 1, 1, 0, 2, 1, 0},   // meeting at an end point counts...
      {0, 0, 1, 0, 1, 0, 1, 1, 0, 0, 5, 1, 0},   // ...only when inclusive
      {0, 0, 1, 0, 1.0000005, -1, 1.0000005, 1, 1, 0, 2, 1.0000005, 0},  // within the 1e-6 slack
      {0, 0, 1, 0, 3, -1, 3, 1, 1, 0, 4, 3, 0},  // on the second only
      {0, 0, 4, 0, 2, 1, 2, 3, 1, 0, 3, 2, 0},   // on the first only
      {0, 0, 1, 0, 3, 1, 3, 3, 1, 0, 5, 3, 0},
      {0, 0, 1, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0},   // parallel
      {0, 0, 1, 0, 2, 0, 5, 0, 1, 0, 1, 0, 0},   // collinear
      // den = 2^-11 (below 0.001): parallel when coarse, crossing computed when fine.
      {0, 0, 1, 0, 0, 1, 1, 1.00048828125, 1, 1, 0, 0, 0},
      {0, 0, 1, 0, 0, 1, 1, 1.00048828125, 1, 0, 5, -2048, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x3 << "," << c.y3 << " " << c.x4 << "," << c.y4 << " incl "
                                    << c.inclusive << " coarse " << c.coarse);
    double ix = 99, iy = 99;
    EXPECT_EQ(CMathTools::ll_Intersection(c.x1, c.y1, c.x2, c.y2, c.x3, c.y3, c.x4, c.y4, &ix, &iy,
                                          c.inclusive, c.coarse),
              c.code);
    EXPECT_NEAR(ix, c.ix, 1e-9);
    EXPECT_NEAR(iy, c.iy, 1e-9);
  }
  EXPECT_EQ(CMathTools::ll_Intersection(0, 0, 2, 0, 1, -1, 1, 1, nullptr, nullptr, 0, 0), 2);
}

TEST(PointOnSegment, OnEntityCodes) {
  struct Case {
    double x1, y1, x2, y2, px, py;
    int code;
  };
  const Case cases[] = {
      {0, 0, 10, 0, 0.0005, 0, 1}, {0, 0, 10, 0, 10, 0.0009, 2}, {0, 0, 10, 0, 5, 0, 3},
      {0, 0, 10, 0, 5, 1, 4},      {0, 0, 10, 0, 15, 0, 5},      {0, 0, 10, 0, -5, 0, 5},
      {0, 0, 10, 0, 15, 1, 6},
      // Closeness is by direction: 0.0009 rad off at distance 10 is "on".
      {0, 0, 20, 0, 10, 0.009, 3}, {0, 0, 20, 0, 10, 0.011, 4},
      // Inside the extent the wrap-around at 0 / 2pi is tested...
      {0, 0, 10, -0.001, 5, 0.0001, 3},
      // ...beyond the end it is not.
      {0, 0, 10, -0.001, 15, 0.0001, 6},
      {0, 0, 0, 10, 0, 5, 3},      {0, 0, 0, 10, 0.5, 5, 4},     {0, 0, 0, 10, 0, -3, 5},
      {3, 3, 3, 3, 3, 3, 1},       {3, 3, 3, 3, 5, 5, 6},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::On_Entity(c.x1, c.y1, c.x2, c.y2, c.px, c.py), c.code)
        << "(" << c.px << ", " << c.py << ") against (" << c.x1 << ", " << c.y1 << ")-(" << c.x2 << ", "
        << c.y2 << ")";
  }
}

TEST(PointOnSegment, PtOnLineAxisParallel) {
  struct Case {
    double x1, y1, x2, y2, px, py;
    int inclusive, code;
  };
  const Case cases[] = {
      {0, 0, 10, 0, 5, 0, 0, 1},  {0, 0, 10, 0, 10, 0, 1, 1}, {0, 0, 10, 0, 10, 0, 0, 3},
      {0, 0, 10, 0, -2, 0, 1, 2}, {0, 0, 10, 0, 12, 0, 1, 3}, {0, 0, 10, 0, 5, 1e-9, 1, 0},
      {0, 0, 1, 1, 0.5, 0.5, 1, 0}, {0, 10, 0, 0, 0, 4, 0, 1}, {0, 10, 0, 0, 0, 11, 0, 2},
      {2, 2, 2, 2, 2, 2, 1, 1},   {2, 2, 2, 2, 2, 2, 0, 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::PtOnLine(c.x1, c.y1, c.x2, c.y2, c.px, c.py, c.inclusive), c.code)
        << "(" << c.px << ", " << c.py << ") inclusive " << c.inclusive;
  }
}

TEST(CircleCircle, CountsAndOrder) {
  struct Case {
    double cx2, r2;
    int count;
    WPt first, second;
  };
  const Case cases[] = {
      {8, 5, 2, WPt(4, 3), WPt(4, -3)},  // equal x: B first
      {10, 5, 1, WPt(5, 0), WPt(5, 0)},
      {9.9995, 5, 1, WPt(4.99975, 0.05), WPt(4.99975, -0.05)},  // touching within 0.001
      {11, 5, 0, WPt(99, 99), WPt(99, 99)},
      {0, 5, 0, WPt(99, 99), WPt(99, 99)},  // concentric: nothing written
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.cx2);
    double x1 = 99, y1 = 99, x2 = 99, y2 = 99;
    EXPECT_EQ(CMathTools::aa_Intersection(0, 0, 5, c.cx2, 0, c.r2, &x1, &y1, &x2, &y2), c.count);
    EXPECT_TRUE(cadtools::test::NearPoint(WPt(x1, y1), c.first, 1e-6));
    EXPECT_TRUE(cadtools::test::NearPoint(WPt(x2, y2), c.second, 1e-6));
  }
  // Ordered by x when the centres are not level.
  double x1, y1, x2, y2;
  ASSERT_EQ(CMathTools::aa_Intersection(0, 0, 5, 0, 8, 5, &x1, &y1, &x2, &y2), 2);
  EXPECT_LT(x1, x2);
  EXPECT_NEAR(x1, -3, 1e-12);
  EXPECT_NEAR(y1, 4, 1e-12);
  // One circle inside the other is not detected: two NaN points.
  ASSERT_EQ(CMathTools::aa_Intersection(0, 0, 5, 1, 0, 1, &x1, &y1, &x2, &y2), 2);
  EXPECT_TRUE(std::isnan(x1) && std::isnan(y2));
}

}  // namespace

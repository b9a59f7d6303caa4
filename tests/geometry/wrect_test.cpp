#include "geometry/geometry_test_util.h"

#include <limits>

using cadtools::test::SameRect;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(WRectShape, NormalizeAndCentre) {
  WRect r(WPt(5, 7), WPt(1, 2));
  EXPECT_TRUE(SameRect(r, WRect(5, 7, 1, 2)));
  EXPECT_EQ(r.Width(), -4.0);
  r.NormalizeRect();
  EXPECT_TRUE(SameRect(r, WRect(1, 2, 5, 7)));

  WRect c(10, 0, 0, 4);
  EXPECT_EQ(c.GetCenterWPt(), WPt(5, 2));
  EXPECT_TRUE(SameRect(c, WRect(0, 0, 10, 4)));  // normalised as a side effect
}

TEST(WRectShape, SingleWidthArgumentsAreWidened) {
  WRect r;
  r.SetWidth(0.1f);
  EXPECT_EQ(r.right, static_cast<double>(0.1f));
  EXPECT_NE(r.right, 0.1);
  r.SetHeight(0.1f);
  EXPECT_EQ(r.bottom, static_cast<double>(0.1f));

  WRect d(0, 0, 1, 1);
  d.Deflate(0.75f);  // past the middle: inverted, not normalised
  EXPECT_TRUE(SameRect(d, WRect(0.75, 0.75, 0.25, 0.25)));
  d.Inflate(0.75f);
  EXPECT_TRUE(SameRect(d, WRect(0, 0, 1, 1)));

  WRect m(1, 2, 4, 8);
  m.Location(-1, 10);
  EXPECT_TRUE(SameRect(m, WRect(-1, 10, 2, 16)));
}

TEST(WRectState, EmptyValidInvalid) {
  struct Case {
    WRect r;
    int empty, valid, invalid;
  };
  WRect sentinel;
  sentinel.Invalidate();
  const Case cases[] = {
      {WRect(), 1, 1, 0},
      {WRect(0, 0, 0, 1e-300), 0, 1, 0},
      {WRect(-0.0, 0, 0, 0), 1, 1, 0},
      {WRect(1, 1, 1, 1), 0, 1, 0},  // degenerate is valid
      {WRect(2, 0, 1, 0), 0, 0, 0},
      {WRect(kNaN, 0, 1, 1), 0, 0, 0},
      {sentinel, 0, 0, 1},
      {WRect(999999999999999.0, 999999999999999.0, -999999999999999.0, 0), 0, 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.r));
    EXPECT_EQ(c.r.IsEmpty(), c.empty);
    EXPECT_EQ(c.r.IsValid(), c.valid);
    EXPECT_EQ(c.r.IsInvalid(), c.invalid);
  }
}

TEST(WRectUnion, SentinelUnitesAway) {
  const WRect r(1, 2, 3, 4);
  WRect a, b;
  a.Invalidate();
  b.Invalidate();
  a += r;
  b |= r;
  EXPECT_TRUE(SameRect(a, r));
  EXPECT_TRUE(SameRect(b, r));
  WRect c;
  c.Invalidate();
  EXPECT_TRUE(SameRect(WRect::Union(c, r), r));
  EXPECT_TRUE(SameRect(WRect::Union(WRect(0, 0, 1, 1), WRect(-1, 0.5, 0.5, 3)), WRect(-1, 0, 1, 3)));
}

TEST(WRectIntersection, SectionZeroesWhereAndEqualsClamps) {
  struct Case {
    WRect a, b, section, clamped;
  };
  const Case cases[] = {
      {WRect(0, 0, 1, 1), WRect(2, 2, 3, 3), WRect(0, 0, 0, 0), WRect(2, 2, 2, 2)},
      {WRect(0, 0, 1, 1), WRect(1, 0, 2, 1), WRect(1, 0, 1, 1), WRect(1, 0, 1, 1)},
      {WRect(0, 0, 4, 4), WRect(1, 2, 3, 9), WRect(1, 2, 3, 4), WRect(1, 2, 3, 4)},
      {WRect(0, 0, 4, 4), WRect(5, 1, 6, 2), WRect(0, 0, 0, 0), WRect(5, 1, 5, 2)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.b));
    EXPECT_TRUE(SameRect(c.a.Section(c.b), c.section));
    WRect in_place = c.a;
    in_place &= c.b;
    EXPECT_TRUE(SameRect(in_place, c.clamped));
  }
  const WRect moved = WRect::TranslateRect(WRect(0, 0, 1, 1), WPt(5, 5), WPt(2, 1));
  EXPECT_TRUE(SameRect(moved, WRect(3, 4, 4, 5)));
}

TEST(WRectEquality, ToleranceIsStrict) {
  const WRect r(0, 0, 1, 1);
  EXPECT_EQ(r == WRect(0.0009, 0, 1, 1), 1);
  EXPECT_EQ(r == WRect(0.001, 0, 1, 1), 0);
  EXPECT_EQ(r == WRect(0, 0, 1, 1.0011), 0);
  EXPECT_EQ(r == WRect(kNaN, 0, 1, 1), 0);
  EXPECT_FALSE(WPt(0.1 + 0.2, 0) == WPt(0.3, 0));
  EXPECT_TRUE(WPt(kNaN, 0) != WPt(kNaN, 0));
}

TEST(WRectContainment, PtInRectAllOverloads) {
  const WRect r(0, 0, 10, 10);
  struct Case {
    double x, y;
    int exact, tolerant;
  };
  const Case cases[] = {
      {5, 5, 1, 1},        {10, 10, 1, 1},  {0, 0, 1, 1},         {-0.0005, 5, 0, 1},
      {-0.001, 5, 0, 0},   {10.0005, 5, 0, 1}, {10.0011, 5, 0, 0},
      {10.001, 5, 0, 1},  // 10.001 - 10 is 0.00099999999999945 in binary: inside
      {5, -0.0009, 0, 1},  {5, 10.0009, 0, 1},  {5, 10.002, 0, 0},  {kNaN, 5, 0, 1},   {5, kNaN, 0, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x << ", " << c.y);
    EXPECT_EQ(r.PtInRect(WPt(c.x, c.y), 0), c.exact);
    EXPECT_EQ(r.PtInRect(c.x, c.y, 0), c.exact);
    EXPECT_EQ(r.PtInRect(WPt(c.x, c.y), 1), c.tolerant);
    EXPECT_EQ(r.PtInRect(c.x, c.y, 7), c.tolerant);
  }
  // The float overload widens the float: 10.0005f is 10.000499725...
  const float fx = 10.0005f, fy = 5.0f;
  EXPECT_EQ(r.PtInRect(fx, fy, 0), 0);
  EXPECT_EQ(r.PtInRect(fx, fy, 1), 1);
}

TEST(WRectContainment, IntersectRectInRectOutside) {
  const WRect unit(0, 0, 1, 1);
  struct Case {
    WRect other;
    int exact, tolerant;
  };
  const Case overlaps[] = {
      {WRect(1.0005, 0, 2, 1), 0, 1}, {WRect(1, 0, 2, 1), 1, 1},      {WRect(1.0011, 0, 2, 1), 0, 0},
      {WRect(1.001, 0, 2, 1), 0, 1},  // 1.001 - 1 falls just below 0.001 in binary
      {WRect(-2, 0, -0.0005, 1), 0, 1}, {WRect(0, 1.0005, 1, 2), 0, 1}, {WRect(0, -2, 1, -0.0005), 0, 1},
      {WRect(0, -2, 1, -0.01), 0, 0}, {WRect(0.2, 0.2, 0.4, 0.4), 1, 1},
  };
  for (const Case& c : overlaps) {
    SCOPED_TRACE(testing::PrintToString(c.other));
    EXPECT_EQ(unit.IntersectRect(c.other, 0), c.exact);
    EXPECT_EQ(unit.IntersectRect(c.other, 1), c.tolerant);
  }

  const WRect big(0, 0, 10, 10);
  EXPECT_EQ(big.RectInRect(WRect(1, 1, 9, 9), 0), 1);
  EXPECT_EQ(big.RectInRect(WRect(0, 0, 10.0005, 10), 0), 0);
  EXPECT_EQ(big.RectInRect(WRect(0, 0, 10.0005, 10), 1), 1);
  EXPECT_EQ(big.RectOutsideRect(WRect(-5, 4, 15, 6)), 1);  // a plus sign: no corner inside
  EXPECT_EQ(big.RectOutsideRect(WRect(5, 5, 20, 20)), 0);
  EXPECT_EQ(big.RectOutsideRect(WRect(-1, -1, 11, 11)), 1);  // encloses: still "outside"
  EXPECT_EQ(big.RectOutsideRect(WRect(10, 10, 12, 12)), 0);  // corner on the edge is inside
}

}  // namespace

#include "geometry/geometry_test_util.h"

namespace {

const WRect kSquare(0, 0, 10, 10);

TEST(RectRelations, ZonesByColumnsAndByDiagonals) {
  struct Case {
    WPt pt;
    WRect::WPtPostoWRect byColumns, byDiagonals;
  };
  const Case cases[] = {
      {WPt(0, 5), WRect::Left, WRect::Left},           {WPt(10, 5), WRect::Right, WRect::Right},
      {WPt(5, 0), WRect::Top, WRect::Top},             {WPt(5, 10), WRect::Bottom, WRect::Bottom},
      {WPt(0, 0), WRect::Left, WRect::Top},            {WPt(-1, -1), WRect::LeftTop, WRect::Top},
      {WPt(11, 11), WRect::RightBottom, WRect::Inside}, {WPt(5, 5), WRect::Inside, WRect::Inside},
      {WPt(-1, 11), WRect::LeftBottom, WRect::Inside}, {WPt(11, -1), WRect::RightTop, WRect::Inside},
      {WPt(10, 0), WRect::Right, WRect::Inside},       {WPt(3, 5), WRect::Inside, WRect::Left},
      {WPt(5, 11), WRect::Bottom, WRect::Bottom},      {WPt(5, 1), WRect::Inside, WRect::Top},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.pt));
    EXPECT_EQ(kSquare.GetPtPosToRect(c.pt, 0, 0), c.byColumns);
    EXPECT_EQ(kSquare.GetPtPosToRect(c.pt, 1, 123), c.byDiagonals);
  }
}

TEST(RectRelations, SegmentsCrossingTheOutline) {
  struct Case {
    WPt a, b;
    int crosses;
  };
  const Case cases[] = {
      {WPt(5, 5), WPt(15, 5), 1},  {WPt(2, 2), WPt(8, 8), 0},   {WPt(10, 5), WPt(15, 5), 0},
      {WPt(-5, 5), WPt(15, 5), 1}, {WPt(-5, -5), WPt(0, 0), 0}, {WPt(-1, 5), WPt(11, 6), 1},
      {WPt(-1, 11), WPt(11, -1), 0},  // through two corners only
      {WPt(0, -5), WPt(0, 15), 0},  // along an edge: parallel to it, through the others' ends
      {WPt(3, 3), WPt(3, 3), 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(kSquare.IsSegmentIntersects(c.a, c.b), c.crosses)
        << testing::PrintToString(c.a) << "-" << testing::PrintToString(c.b);
  }
}

TEST(RectRelations, LineClipping) {
  struct Case {
    WPt a, b;
    int clipped;
    WPt aOut, bOut;
  };
  const Case cases[] = {
      {WPt(-5, 5), WPt(-4, 5), 1, WPt(0, 5), WPt(10, 5)},
      {WPt(5, 20), WPt(5, 30), 1, WPt(5, 0), WPt(5, 10)},
      {WPt(0, 2), WPt(1, 3), 1, WPt(0, 2), WPt(8, 10)},     // left edge, then bottom
      {WPt(0, 0), WPt(10, 10), 0, WPt(0, 0), WPt(10, 10)},  // a diagonal misses the corners
      {WPt(20, 0), WPt(20, 1), 0, WPt(20, 0), WPt(20, 1)},
      {WPt(3, 3), WPt(3, 3), 0, WPt(3, 3), WPt(3, 3)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.a) + "-" + testing::PrintToString(c.b));
    WPt a = c.a, b = c.b;
    EXPECT_EQ(kSquare.LineIntersects(a, b), c.clipped);
    EXPECT_EQ(a, c.aOut);
    EXPECT_EQ(b, c.bOut);
  }
}

TEST(RectRelations, RectangleAsSegment) {
  const WRect segment(WPt(0, 0), WPt(10, 0));
  EXPECT_EQ(segment.IsSegmentIntersecting(WPt(5, 0), WPt(50, 50)), 1);
  EXPECT_EQ(segment.IsSegmentIntersecting(WPt(50, 50), WPt(10, 0.0005)), 1);
  EXPECT_EQ(segment.IsSegmentIntersecting(WPt(5, 1), WPt(15, 0)), 0);  // beside, and beyond
}

}  // namespace

// WRect: the double-precision rectangle of the whole library.
//
// Four doubles in the order left, top, right, bottom and nothing else; the
// registry value CRegWRect stores those 32 bytes as they lie, and the host
// reads them back in that order. Nothing normalises implicitly except
// NormalizeRect() and GetCenterWPt().
//
//   WRect r(WPt(5, 7), WPt(1, 2));  // (5, 7, 1, 2), Width() == -4
//   r.NormalizeRect();              // (1, 2, 5, 7)
//   WRect box;                      // (0, 0, 0, 0): empty and valid
//   box.Invalidate();               // (1e15-1, 1e15-1, -(1e15-1), -(1e15-1))
//   box += WRect(1, 2, 3, 4);       // (1, 2, 3, 4): the sentinel unites away
//
// Flags named `tolerant` mean one thing throughout: 0 is an exact test on
// closed intervals; any other value widens every edge outward by 0.001.
//
// NaN coordinates make every comparison false: IsValid() is 0, an exact
// PtInRect() is 0. No member loops, so none can hang on any input.
#pragma once

#include <cadtools/export.h>
#include <cadtools/geometry/wpt.h>


#include <type_traits>

struct CADTOOLS_API WRect {
  double left;
  double top;
  double right;
  double bottom;

  // Zones of a point relative to the rectangle; see GetPtPosToRect().
  enum WPtPostoWRect {
    LeftBottom = 0,
    Left = 1,
    LeftTop = 2,
    Top = 3,
    RightTop = 4,
    Right = 5,
    RightBottom = 6,
    Bottom = 7,
    Inside = 8,
  };

  // The edge tolerance of the `tolerant` tests and of operator==.
  static constexpr double kTolerance = 0.001;
  // The corners of the invalid sentinel: +-(10^15 - 1).
  static constexpr double kInvalidLow = 999999999999999.0;
  static constexpr double kInvalidHigh = -999999999999999.0;

  constexpr WRect() noexcept : left(0.0), top(0.0), right(0.0), bottom(0.0) {}
  constexpr WRect(double l, double t, double r, double b) noexcept : left(l), top(t), right(r), bottom(b) {}
  // (p1.x, p1.y, p2.x, p2.y), not normalised: also the form of a segment.
  constexpr WRect(const WPt& p1, const WPt& p2) noexcept : left(p1.x), top(p1.y), right(p2.x), bottom(p2.y) {}

  // Swaps left/right when left > right, then top/bottom when top > bottom.
  void NormalizeRect() noexcept;
  // Normalises in place (the rectangle stays normalised), then returns
  // (right - width * 0.5, bottom - height * 0.5).
  //   WRect(10, 0, 0, 4).GetCenterWPt()  // (5, 2); the rectangle is now (0, 0, 10, 4)
  WPt GetCenterWPt() noexcept;

  // Signed; no normalisation.
  constexpr double Width() const noexcept { return right - left; }
  constexpr double Height() const noexcept { return bottom - top; }
  // The single-precision argument is widened before the addition:
  //   SetWidth(0.1f) with left 0 gives right == 0.100000001490116...
  void SetWidth(float w) noexcept { right = left + static_cast<double>(w); }
  void SetHeight(float h) noexcept { bottom = top + static_cast<double>(h); }
  // Grow or shrink every edge by d; deflating past the middle inverts.
  void Inflate(float d) noexcept;
  void Deflate(float d) noexcept;
  // Moves the top-left corner to (x, y), keeping width and height.
  void Location(double x, double y) noexcept;

  // 1 when all four coordinates are exactly 0.0 (zero area is not enough):
  //   WRect(0, 0, 0, 1e-300).IsEmpty()  // 0
  int IsEmpty() const noexcept;
  void Invalidate() noexcept;
  // 1 only for the exact sentinel set by Invalidate().
  int IsInvalid() const noexcept;
  // 1 when right >= left and bottom >= top; degenerate rectangles are valid.
  int IsValid() const noexcept;

  // Componentwise (min, min, max, max). Uniting with the invalid sentinel
  // yields the other rectangle; += and |= are the same in-place union.
  static WRect Union(WRect a, WRect b) noexcept;
  WRect& operator+=(const WRect& other) noexcept;
  WRect& operator|=(const WRect& other) noexcept;
  // In-place intersection that never inverts: disjoint rectangles leave a
  // zero-width and/or zero-height rectangle at the far corner.
  //   WRect(0, 0, 1, 1) &= WRect(2, 2, 3, 3)  // (2, 2, 2, 2)
  WRect& operator&=(const WRect& other) noexcept;
  // The intersection as a new rectangle, or (0, 0, 0, 0) when disjoint;
  // touching rectangles give the degenerate touching rectangle.
  //   WRect(0, 0, 1, 1).Section(WRect(2, 2, 3, 3))  // (0, 0, 0, 0)
  //   WRect(0, 0, 1, 1).Section(WRect(1, 0, 2, 1))  // (1, 0, 1, 1)
  WRect Section(WRect other) const noexcept;
  // r moved by first - second.
  static WRect TranslateRect(WRect r, WPt first, WPt second) noexcept;

  // 1 when every coordinate differs by less than 0.001; there is no !=.
  //   WRect(0, 0, 1, 1) == WRect(0.0009, 0, 1, 1)  // 1
  //   WRect(0, 0, 1, 1) == WRect(0.001, 0, 1, 1)   // 0
  int operator==(const WRect& other) const noexcept;

  // 1 when the rectangles overlap or touch.
  //   WRect(0, 0, 1, 1).IntersectRect(WRect(1.0005, 0, 2, 1), 0)  // 0
  //   WRect(0, 0, 1, 1).IntersectRect(WRect(1.0005, 0, 2, 1), 1)  // 1
  int IntersectRect(const WRect& other, int tolerant) const noexcept {
    if (tolerant == 0) {
      return !(other.left > right || left > other.right || other.top > bottom || top > other.bottom);
    }
    // "other.left > right && |right - other.left| >= tol" is exactly
    // "other.left - right >= tol" (NaN and infinities included), and so on
    // for each edge; the short form lets the compiler drop the branches.
    return !(other.left - right >= kTolerance || left - other.right >= kTolerance ||
             other.top - bottom >= kTolerance) &&
           top - other.bottom < kTolerance;
  }

  // 1 when the point is inside or on the edge; with `tolerant`, up to 0.001
  // outside an edge still counts. The float overload widens first.
  //   WRect(0, 0, 10, 10).PtInRect(WPt(-0.0005, 5), 1)  // 1
  //   WRect(0, 0, 10, 10).PtInRect(WPt(-0.0005, 5), 0)  // 0
  //   WRect(0, 0, 10, 10).PtInRect(WPt(-0.001, 5), 1)   // 0
  int PtInRect(const WPt& pt, int tolerant) const noexcept { return PtInRect(pt.x, pt.y, tolerant); }
  int PtInRect(const float& x, const float& y, int tolerant) const noexcept {
    return PtInRect(static_cast<double>(x), static_cast<double>(y), tolerant);
  }
  int PtInRect(const double& x, const double& y, int tolerant) const noexcept {
    if (tolerant == 0) {
      return left <= x && x <= right && top <= y && y <= bottom;
    }
    // Rejected when at least 0.001 beyond an edge: "x <= left and
    // |left - x| >= tol" is exactly "left - x >= tol", and likewise below.
    return !(left - x >= kTolerance || x - right >= kTolerance || top - y >= kTolerance ||
             y - bottom >= kTolerance);
  }

  // 1 when all four corners of other pass PtInRect with the same flag.
  int RectInRect(const WRect& other, int tolerant) const noexcept;
  // 1 when no corner of other lies in this rectangle (exact). A corner test:
  // a rectangle crossing like a plus sign, or one enclosing this one, is
  // "outside".
  //   WRect(0, 0, 10, 10).RectOutsideRect(WRect(-5, 4, 15, 6))  // 1
  int RectOutsideRect(const WRect& other) const noexcept;

  // The zone of pt (see WPtPostoWRect). Columns include the vertical edges;
  // the middle column gives a point on a horizontal edge to Top or Bottom.
  // With byDiagonals non-zero the rectangle is cut by its diagonals and only
  // Left, Top, Right, Bottom or Inside (on a diagonal) come out. `reserved`
  // is ignored.
  //   WRect(0, 0, 10, 10).GetPtPosToRect(WPt(0, 0), 0, 0)  // Left
  //   WRect(0, 0, 10, 10).GetPtPosToRect(WPt(5, 5), 1, 0)  // Inside
  WPtPostoWRect GetPtPosToRect(WPt pt, int byDiagonals, int reserved) const noexcept;
  // 1 when segment a-b properly crosses an edge; touching gives 0.
  //   WRect(0, 0, 10, 10).IsSegmentIntersects(WPt(5, 5), WPt(15, 5))   // 1
  //   WRect(0, 0, 10, 10).IsSegmentIntersects(WPt(10, 5), WPt(15, 5))  // 0
  int IsSegmentIntersects(WPt a, WPt b) const noexcept;
  // Clips the infinite line through a and b to the outline: on success a and
  // b become the two crossing points (in edge order left, top, right,
  // bottom) and the result is 1; else 0 and a, b stay. Edge ends do not
  // count, so a line through a corner misses it: a diagonal gives 0.
  //   a = (-5, 5), b = (-4, 5) on (0, 0, 10, 10)  ->  1, a = (0, 5), b = (10, 5)
  int LineIntersects(WPt& a, WPt& b) const noexcept;
  // Treats the rectangle as the segment (left, top)-(right, bottom): 1 when
  // a or b lies on it (CMathTools::On_Entity codes 1, 2 or 3).
  int IsSegmentIntersecting(WPt a, WPt b) const noexcept;
};

static_assert(std::is_trivially_copyable_v<WRect> && std::is_standard_layout_v<WRect>);
static_assert(sizeof(WRect) == 4 * sizeof(double));

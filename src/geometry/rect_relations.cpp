// Where points and segments lie relative to a rectangle.
#include <cadtools/geometry/geometry_tools.h>
#include <cadtools/geometry/wrect.h>

#include "geometry/constants.h"

#include <array>
#include <cmath>

using cadtools::GeometryTools;
using namespace cadtools::geometry;

namespace {

struct Edge {
  WPt from;
  WPt to;
  bool vertical;

  // The point at parameter u, moving along the edge's own axis only.
  WPt At(double u) const {
    return vertical ? WPt(from.x, from.y + (to.y - from.y) * u) : WPt(from.x + (to.x - from.x) * u, from.y);
  }
};

// The four edges in the order the host tests them: left, top, right, bottom.
std::array<Edge, 4> EdgesOf(const WRect& r) {
  return {{{WPt(r.left, r.top), WPt(r.left, r.bottom), true},
           {WPt(r.left, r.top), WPt(r.right, r.top), false},
           {WPt(r.right, r.top), WPt(r.right, r.bottom), true},
           {WPt(r.left, r.bottom), WPt(r.right, r.bottom), false}}};
}

double Cross(WPt a, WPt b) { return a.x * b.y - a.y * b.x; }

// Parameters of the crossing of a + t d with e.from + u (e.to - e.from).
struct Crossing {
  bool parallel;
  double t;  // along d
  double u;  // along the edge
};

Crossing CrossingOf(WPt a, WPt d, const Edge& e) {
  const WPt along = e.to - e.from;
  const double det = Cross(d, along);
  if (std::fabs(det) < kFine) return {true, 0.0, 0.0};
  const WPt offset = e.from - a;
  return {false, Cross(offset, along) / det, Cross(offset, d) / det};
}

bool StrictlyInside01(double v) { return 0.0 < v && v < 1.0; }

}  // namespace

WRect::WPtPostoWRect WRect::GetPtPosToRect(WPt pt, int byDiagonals, int reserved) const noexcept {
  static_cast<void>(reserved);
  const double x = pt.x;
  const double y = pt.y;
  if (byDiagonals != 0) {
    const int s1 = GeometryTools::GetSide(left, top, right, bottom, x, y);
    const int s2 = GeometryTools::GetSide(left, bottom, right, top, x, y);
    if (s1 == 1 && s2 == 2) return Left;
    if (s1 == 1 && s2 == 1) return Bottom;
    if (s1 == 2 && s2 == 1) return Right;
    return s2 == 2 ? Top : Inside;
  }
  if (x <= left) {
    if (y > bottom) return LeftBottom;
    if (y < top) return LeftTop;
    return Left;
  }
  if (x >= right) {
    if (y < top) return RightTop;
    if (y > bottom) return RightBottom;
    return Right;
  }
  if (y <= top) return Top;
  if (y >= bottom) return Bottom;
  return Inside;
}

int WRect::IsSegmentIntersects(WPt a, WPt b) const noexcept {
  const WPt d = b - a;
  for (const Edge& edge : EdgesOf(*this)) {
    const Crossing c = CrossingOf(a, d, edge);
    if (!c.parallel && StrictlyInside01(c.t) && StrictlyInside01(c.u)) return 1;
  }
  return 0;
}

int WRect::LineIntersects(WPt& a, WPt& b) const noexcept {
  const WPt d = b - a;
  std::array<WPt, 2> found;
  int count = 0;
  for (const Edge& edge : EdgesOf(*this)) {
    const Crossing c = CrossingOf(a, d, edge);
    if (c.parallel || !StrictlyInside01(c.u)) continue;
    // The point is taken on the edge, from its own parameter.
    found[static_cast<std::size_t>(count)] = edge.At(c.u);
    if (++count == 2) {
      a = found[0];
      b = found[1];
      return 1;
    }
  }
  return 0;
}

int WRect::IsSegmentIntersecting(WPt a, WPt b) const noexcept {
  const auto onSegment = [this](WPt p) {
    const int where = GeometryTools::On_Entity(left, top, right, bottom, p.x, p.y);
    return where >= 1 && where <= 3;
  };
  return onSegment(a) || onSegment(b);
}

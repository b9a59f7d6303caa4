// Rectangles: IntersectRect, PtInRect and LineIntersects beside
// Boost.Geometry.
#include "geometry/boost_adapters.h"
#include "geometry/pairs.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace bench {
namespace {

// ---- IntersectRect / intersects(box, box) ---------------------------------
//
// Peer: bg::intersects(box, box), closed boxes like our exact mode. The
// tolerant mode is timed against the same peer: a Boost user would get the
// tolerance by growing one box beforehand, which is not timed either.

void OursIntersectRectExact(benchmark::State& state) {
  const std::vector<RectPair>& cases = RectPairs();
  Cycle(state, [&cases](std::size_t i) {
    int hit = cases[i].a.IntersectRect(cases[i].b, 0);
    benchmark::DoNotOptimize(hit);
  });
}

void OursIntersectRectTolerant(benchmark::State& state) {
  const std::vector<RectPair>& cases = RectPairs();
  Cycle(state, [&cases](std::size_t i) {
    int hit = cases[i].a.IntersectRect(cases[i].b, 1);
    benchmark::DoNotOptimize(hit);
  });
}

void PeerIntersectsBoxBox(benchmark::State& state) {
  const std::vector<RectPair>& cases = RectPairs();
  Cycle(state, [&cases](std::size_t i) {
    bool hit = bg::intersects(cases[i].a, cases[i].b);
    benchmark::DoNotOptimize(hit);
  });
}

// ---- PtInRect / covered_by(point, box) ------------------------------------
//
// Peer: bg::covered_by(point, box), which counts the boundary as inside
// like PtInRect (bg::within would not).

void OursPtInRectExact(benchmark::State& state) {
  const std::vector<PointRect>& cases = PointsInRects();
  Cycle(state, [&cases](std::size_t i) {
    int in = cases[i].r.PtInRect(cases[i].p, 0);
    benchmark::DoNotOptimize(in);
  });
}

void OursPtInRectTolerant(benchmark::State& state) {
  const std::vector<PointRect>& cases = PointsInRects();
  Cycle(state, [&cases](std::size_t i) {
    int in = cases[i].r.PtInRect(cases[i].p, 1);
    benchmark::DoNotOptimize(in);
  });
}

void PeerCoveredByPointBox(benchmark::State& state) {
  const std::vector<PointRect>& cases = PointsInRects();
  Cycle(state, [&cases](std::size_t i) {
    bool in = bg::covered_by(cases[i].p, cases[i].r);
    benchmark::DoNotOptimize(in);
  });
}

// ---- LineIntersects / clip a line to a box --------------------------------
//
// Boost has no infinite line, so the peer turns the line into a segment
// long enough to span the box and clips it with bg::intersection(box,
// linestring). That call goes to Boost's dedicated Liang-Barsky clipper;
// intersecting the four edges with the segment one by one would take four
// general segment intersections and is what that clipper exists to avoid.
//
// The segment reaches, in the Chebyshev norm, from the line's point a past
// the farthest corner: |s| max(|dx|, |dy|) >= max(|ax - cx|, |ay - cy|) +
// max(w, h) / 2 covers every point of the box on the line, with one
// division and no square root. That step is timed: it is part of what a
// user would have to write, while LineIntersects does its equivalent inside.
// The linestring and the output are kept across calls; the output is
// cleared each time, and Boost allocates the piece it returns.

void OursLineIntersects(benchmark::State& state) {
  const std::vector<LineRect>& cases = LinesNearRects();
  Cycle(state, [&cases](std::size_t i) {
    const LineRect& c = cases[i];
    WPt a = c.a;  // LineIntersects overwrites them on a hit
    WPt b = c.b;
    int hit = c.r.LineIntersects(a, b);
    benchmark::DoNotOptimize(hit);
    benchmark::DoNotOptimize(a);
    benchmark::DoNotOptimize(b);
  });
}

void PeerClipLineBox(benchmark::State& state) {
  const std::vector<LineRect>& cases = LinesNearRects();
  Linestring line{WPt(), WPt()};
  MultiLinestring out;
  Cycle(state, [&cases, &line, &out](std::size_t i) {
    const LineRect& c = cases[i];
    out.clear();
    const double dx = c.b.x - c.a.x;
    const double dy = c.b.y - c.a.y;
    const double step = std::max(std::fabs(dx), std::fabs(dy));
    if (step > 0) {
      const double cx = (c.r.left + c.r.right) / 2;
      const double cy = (c.r.top + c.r.bottom) / 2;
      const double reach = std::max(std::fabs(c.a.x - cx), std::fabs(c.a.y - cy)) +
                           std::max(c.r.right - c.r.left, c.r.bottom - c.r.top) / 2 + 1;
      const double s = reach / step;
      line[0] = WPt(c.a.x - dx * s, c.a.y - dy * s);
      line[1] = WPt(c.a.x + dx * s, c.a.y + dy * s);
      bg::intersection(c.r, line, out);
    }
    std::size_t n = out.size();
    benchmark::DoNotOptimize(n);  // also a memory clobber: the piece counts as read
  });
}

}  // namespace

void RegisterRectPairs(PairRegistry& registry) {
  registry.Add("IntersectRect (exact)", "ours/IntersectRect/exact", OursIntersectRectExact,
               "peer/intersects_box_box", PeerIntersectsBoxBox);
  registry.Add("IntersectRect (tolerant)", "ours/IntersectRect/tolerant", OursIntersectRectTolerant,
               "peer/intersects_box_box", PeerIntersectsBoxBox);
  registry.Add("PtInRect (exact)", "ours/PtInRect/exact", OursPtInRectExact, "peer/covered_by_point_box",
               PeerCoveredByPointBox);
  registry.Add("PtInRect (tolerant)", "ours/PtInRect/tolerant", OursPtInRectTolerant,
               "peer/covered_by_point_box", PeerCoveredByPointBox);
  registry.Add("LineIntersects", "ours/LineIntersects", OursLineIntersects, "peer/clip_line_box",
               PeerClipLineBox);
}

}  // namespace bench

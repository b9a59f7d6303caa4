// Segments and points: ll_Intersection, On_Entity, DistToLine1 and
// CalculateDistanceToRect beside Boost.Geometry.
#include "geometry/boost_adapters.h"
#include "geometry/pairs.h"

#include <cadtools/math_tools.h>

#include <vector>

namespace bench {
namespace {

// ---- ll_Intersection / segment intersection -----------------------------
//
// Peer: bg::intersection of two segments into a vector of points, the
// public way to get the crossing point. Ours also classifies the crossing
// against both segments and reports the crossing of the lines when the
// segments miss, so it answers more than Boost does here. The vector is
// kept across calls and cleared each time, the cheapest honest use.

void OursLlIntersection(benchmark::State& state) {
  const std::vector<SegPair>& cases = SegmentPairs();
  Cycle(state, [&cases](std::size_t i) {
    const SegPair& c = cases[i];
    double ix = 0;
    double iy = 0;
    int code = CMathTools::ll_Intersection(c.first.a.x, c.first.a.y, c.first.b.x, c.first.b.y,
                                           c.second.a.x, c.second.a.y, c.second.b.x, c.second.b.y,
                                           &ix, &iy, 1, 0);
    benchmark::DoNotOptimize(code);
    benchmark::DoNotOptimize(ix);
    benchmark::DoNotOptimize(iy);
  });
}

void PeerSegmentIntersection(benchmark::State& state) {
  const std::vector<SegPair>& cases = SegmentPairs();
  std::vector<WPt> out;
  out.reserve(2);
  Cycle(state, [&cases, &out](std::size_t i) {
    const SegPair& c = cases[i];
    out.clear();
    bg::intersection(c.first, c.second, out);
    std::size_t n = out.size();
    benchmark::DoNotOptimize(n);  // also a memory clobber: the points count as read
  });
}

// A stricter peer for the same row: bg::intersects(segment, segment), only
// whether the segments meet, without the point. Boost's cheapest answer to
// part of the question ll_Intersection answers.
void PeerSegmentIntersects(benchmark::State& state) {
  const std::vector<SegPair>& cases = SegmentPairs();
  Cycle(state, [&cases](std::size_t i) {
    bool hit = bg::intersects(cases[i].first, cases[i].second);
    benchmark::DoNotOptimize(hit);
  });
}

// ---- On_Entity / point on segment -----------------------------------------
//
// Peer: the point/segment distance within the tolerance, as a Boost user
// would write it, bg::distance(point, segment) < 0.001; and, in a second
// row, the cheapest honest variant, bg::comparable_distance against 0.001^2,
// which saves the square root. (covered_by and intersects are exact and
// almost never true for a computed point.) Ours returns one of six
// positions, Boost a yes or no.

void OursOnEntity(benchmark::State& state) {
  const std::vector<PointSeg>& cases = PointsNearSegments();
  Cycle(state, [&cases](std::size_t i) {
    const PointSeg& c = cases[i];
    int where = CMathTools::On_Entity(c.s.a.x, c.s.a.y, c.s.b.x, c.s.b.y, c.p.x, c.p.y);
    benchmark::DoNotOptimize(where);
  });
}

void PeerPointOnSegment(benchmark::State& state) {
  const std::vector<PointSeg>& cases = PointsNearSegments();
  Cycle(state, [&cases](std::size_t i) {
    const PointSeg& c = cases[i];
    bool on = bg::distance(c.p, c.s) < 0.001;
    benchmark::DoNotOptimize(on);
  });
}

void PeerPointOnSegmentSquared(benchmark::State& state) {
  const std::vector<PointSeg>& cases = PointsNearSegments();
  Cycle(state, [&cases](std::size_t i) {
    const PointSeg& c = cases[i];
    bool on = bg::comparable_distance(c.p, c.s) < 0.001 * 0.001;
    benchmark::DoNotOptimize(on);
  });
}

// ---- DistToLine1 / point to segment distance ------------------------------
//
// Peer: bg::distance(point, segment). Boost has no infinite line; the
// segment is the closest geometry (a two-point linestring gives the same
// answer through more dispatch). The answers agree when the foot of the
// perpendicular falls on the segment, as it does for 2 in 3 inputs; Boost
// then measures to the nearer end.

void OursDistToLine1(benchmark::State& state) {
  const std::vector<PointSeg>& cases = PointsForLineDistance();
  Cycle(state, [&cases](std::size_t i) {
    const PointSeg& c = cases[i];
    double d = CMathTools::DistToLine1(c.p, c.s.a, c.s.b);
    benchmark::DoNotOptimize(d);
  });
}

void PeerDistancePointSegment(benchmark::State& state) {
  const std::vector<PointSeg>& cases = PointsForLineDistance();
  Cycle(state, [&cases](std::size_t i) {
    const PointSeg& c = cases[i];
    double d = bg::distance(c.p, c.s);
    benchmark::DoNotOptimize(d);
  });
}

// ---- CalculateDistanceToRect / point to outline distance ------------------
//
// Peer: bg::distance(point, closed five-point linestring of the outline).
// The distance to a box or ring is 0 inside, so the outline has to be a
// linestring. The linestrings are built before timing, which favours the
// peer: a user holding a WRect would build one per call.

const std::vector<Linestring>& Outlines() {
  static const std::vector<Linestring> outlines = [] {
    std::vector<Linestring> v;
    v.reserve(kCases);
    for (const PointRect& c : PointsAroundRects()) {
      const WRect& r = c.r;
      v.push_back(Linestring{{r.left, r.top}, {r.right, r.top}, {r.right, r.bottom}, {r.left, r.bottom},
                             {r.left, r.top}});
    }
    return v;
  }();
  return outlines;
}

void OursCalculateDistanceToRect(benchmark::State& state) {
  const std::vector<PointRect>& cases = PointsAroundRects();
  Cycle(state, [&cases](std::size_t i) {
    const PointRect& c = cases[i];
    double d = CMathTools::CalculateDistanceToRect(c.p, c.r);
    benchmark::DoNotOptimize(d);
  });
}

void PeerDistancePointOutline(benchmark::State& state) {
  const std::vector<PointRect>& cases = PointsAroundRects();
  const std::vector<Linestring>& outlines = Outlines();
  Cycle(state, [&cases, &outlines](std::size_t i) {
    double d = bg::distance(cases[i].p, outlines[i]);
    benchmark::DoNotOptimize(d);
  });
}

}  // namespace

void RegisterLinePairs(PairRegistry& registry) {
  registry.Add("ll_Intersection", "ours/ll_Intersection", OursLlIntersection, "peer/segment_intersection",
               PeerSegmentIntersection);
  registry.Add("ll_Intersection (vs yes/no)", "ours/ll_Intersection", OursLlIntersection,
               "peer/segment_intersects", PeerSegmentIntersects);
  registry.Add("On_Entity", "ours/On_Entity", OursOnEntity, "peer/point_on_segment", PeerPointOnSegment);
  registry.Add("On_Entity (vs squared distance)", "ours/On_Entity", OursOnEntity, "peer/point_on_segment_squared",
               PeerPointOnSegmentSquared);
  registry.Add("DistToLine1", "ours/DistToLine1", OursDistToLine1, "peer/distance_point_segment",
               PeerDistancePointSegment);
  registry.Add("CalculateDistanceToRect", "ours/CalculateDistanceToRect", OursCalculateDistanceToRect,
               "peer/distance_point_outline", PeerDistancePointOutline);
}

}  // namespace bench

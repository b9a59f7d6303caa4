// Pre-generated inputs shared by both sides of every pair.
//
// Each set holds kCases cases built once from a fixed seed, before any timed
// loop starts; a benchmark walks through them cyclically, one case per
// iteration. Coordinates are those of an ordinary drawing (0 to 1000 model
// units) and every set mixes hits and misses, so that neither side can
// predict its branches from the previous call.
//
// Our functions and the Boost.Geometry peers read the very same objects:
// boost_adapters.h registers WPt, WRect and Seg with Boost.Geometry.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/geometry/wpt.h>
#include <cadtools/geometry/wrect.h>

#include <cstddef>
#include <vector>

namespace bench {

inline constexpr std::size_t kCases = 4096;
inline constexpr std::size_t kCaseMask = kCases - 1;
static_assert((kCases & kCaseMask) == 0, "kCases must be a power of two");

// A segment from a to b.
struct Seg {
  WPt a;
  WPt b;
};

struct SegPair {
  Seg first;
  Seg second;
};

struct PointSeg {
  WPt p;
  Seg s;
};

struct PointRect {
  WPt p;
  WRect r;  // normalised: left <= right, top <= bottom
};

struct RectPair {
  WRect a;  // both normalised
  WRect b;
};

// The line through a and b (a != b) and a normalised rectangle.
struct LineRect {
  WPt a;
  WPt b;
  WRect r;
};

// A chain of three cubic segments: 10 control points, the 4th and 7th
// shared. Both containers hold the same points.
struct BezierChain {
  CArray<WPt, WPt> ours;
  std::vector<WPt> plain;
};

// Pairs of segments; about a third cross, a tenth are parallel or
// collinear, a quarter of all segments are horizontal or vertical.
const std::vector<SegPair>& SegmentPairs();
// Points at an end of, on, beside, on the extension of, and away from a
// segment; a little over half lie on it within 0.001.
const std::vector<PointSeg>& PointsNearSegments();
// Points whose projection mostly falls on the segment (t in -0.25..1.25).
const std::vector<PointSeg>& PointsForLineDistance();
// Points inside, outside, exactly on an edge line of, and far from a
// rectangle.
const std::vector<PointRect>& PointsAroundRects();
// Overlapping, disjoint, exactly touching and nearly touching (gap below
// 0.001) rectangles.
const std::vector<RectPair>& RectPairs();
// Points inside, outside and within 0.001 of an edge of a rectangle.
const std::vector<PointRect>& PointsInRects();
// Lines near a rectangle, a fifth of them horizontal or vertical; two in
// five cross it.
const std::vector<LineRect>& LinesNearRects();
// Random-walk control polygons; not const because CalculateBezierPoints()
// takes its input by non-const pointer (it does not change it).
std::vector<BezierChain>& BezierChains();

}  // namespace bench

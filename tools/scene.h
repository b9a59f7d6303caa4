// A picture of a question and its answer, in model coordinates; svg.h turns
// it into SVG. The questions fill it, knowing nothing about pixels.
#pragma once

#include <cadtools/geometry/wpt.h>
#include <cadtools/geometry/wrect.h>

#include <string>
#include <variant>
#include <vector>

namespace cadtools::cli {

// What a shape stands for; the writer picks its colour and stroke.
enum class Role {
  kFirst,   // the (first) input: blue
  kSecond,  // a second input: orange
  kAnswer,  // what the library answered: red
  kGuide,   // construction lines such as extensions: grey, dashed
  kAux,     // a derived aid such as a perpendicular: green, dotted
};

struct Segment {
  WPt a, b;
  Role role;
  bool arrow = false;  // an arrowhead at b
};
// The whole line through a and b, cut at the edges of the picture; it does
// not widen the view.
struct InfiniteLine {
  WPt a, b;
  Role role;
};
struct Polyline {
  std::vector<WPt> points;
  Role role;
  bool closed = false;
  bool filled = false;
};
struct Circle {
  WPt centre;
  double radius;
  Role role;
};
struct Ellipse {
  WPt centre;
  double rx, ry;
  double rotation;  // radians, from the x axis toward the y axis
  Role role;
};
// A dot with an optional text beside it.
struct Marker {
  WPt at;
  Role role;
  std::string label;
};
// The zones of WRect::GetPtPosToRect around rect, shaded and named, with
// zone `hit` emphasised; the writer extends the outer ones to the edges.
struct Zones {
  WRect rect;
  bool diagonals;
  int hit;
};

using Shape = std::variant<Segment, InfiniteLine, Polyline, Circle, Ellipse, Marker, Zones>;

struct LegendEntry {
  Role role;
  std::string text;
};

struct Scene {
  std::string title;             // the command line that asked
  std::vector<Shape> shapes;     // drawn in order, later ones on top
  std::vector<WPt> frame;        // extra points the view must include
  std::vector<LegendEntry> legend;
  std::vector<std::string> notes;  // answer lines and remarks under the legend
};

// A rectangle's outline in any orientation: the corners in the order they
// are given.
inline Polyline Outline(const WRect& r, Role role, bool filled = false) {
  return {{{r.left, r.top}, {r.right, r.top}, {r.right, r.bottom}, {r.left, r.bottom}}, role, true, filled};
}

}  // namespace cadtools::cli

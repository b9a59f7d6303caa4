// Questions about segments and lines: intersect, onentity, distance, angle.
#include "geom.h"

#include "format.h"
#include "meanings.h"

#include <cadtools/math_tools.h>

#include <cmath>
#include <numbers>

namespace cadtools::cli {
namespace {

std::string Code(std::string_view key, int code, std::string_view meaning) {
  return std::string(key) + " " + std::to_string(code) + " (" + std::string(meaning) + ")";
}

std::string SegmentText(WPt a, WPt b) { return FormatPointText(a) + " to " + FormatPointText(b); }

// A segment with its end points, drawn over the whole line through it.
void AddSegment(Scene& scene, WPt a, WPt b, Role role) {
  scene.shapes.emplace_back(InfiniteLine{a, b, Role::kGuide});
  scene.shapes.emplace_back(Segment{a, b, role});
  scene.shapes.emplace_back(Marker{a, role, FormatPointText(a)});
  scene.shapes.emplace_back(Marker{b, role, FormatPointText(b)});
}

}  // namespace

Answer AnswerIntersect(const GeomArgs& args) {
  const auto& n = args.numbers;
  const WPt a(n[0], n[1]), b(n[2], n[3]), c(n[4], n[5]), d(n[6], n[7]);
  double x = 0.0;
  double y = 0.0;
  const int code = CMathTools::ll_Intersection(a.x, a.y, b.x, b.y, c.x, c.y, d.x, d.y, &x, &y, args.inclusive,
                                               args.coarse);
  // Parallel and collinear lines have no single crossing, whatever was
  // written to the output point.
  const bool crosses = code >= 2 && code <= 5;
  Answer answer;
  answer.lines.push_back(Code("code", code, IntersectionMeaning(code)));
  answer.lines.push_back(crosses ? "point " + FormatPoint({x, y}) : "point none");

  Scene& scene = answer.scene;
  AddSegment(scene, a, b, Role::kFirst);
  AddSegment(scene, c, d, Role::kSecond);
  scene.legend = {{Role::kFirst, "segment 1, " + SegmentText(a, b)},
                  {Role::kSecond, "segment 2, " + SegmentText(c, d)},
                  {Role::kGuide, "the lines through them"}};
  if (crosses) {
    scene.shapes.emplace_back(Marker{{x, y}, Role::kAnswer, FormatPointText({x, y})});
    scene.legend.push_back({Role::kAnswer, "crossing " + FormatPointText({x, y})});
  }
  return answer;
}

Answer AnswerOnEntity(const GeomArgs& args) {
  const auto& n = args.numbers;
  const WPt a(n[0], n[1]), b(n[2], n[3]), p(n[4], n[5]);
  const int code = CMathTools::On_Entity(a.x, a.y, b.x, b.y, p.x, p.y);
  Answer answer;
  answer.lines.push_back(Code("code", code, OnEntityMeaning(code)));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(InfiniteLine{a, b, Role::kGuide});
  scene.shapes.emplace_back(Segment{a, b, Role::kFirst, true});
  scene.shapes.emplace_back(Marker{a, Role::kFirst, "start"});
  scene.shapes.emplace_back(Marker{b, Role::kFirst, "end"});
  scene.shapes.emplace_back(Marker{p, Role::kAnswer, FormatPointText(p)});
  scene.legend = {{Role::kFirst, "segment " + SegmentText(a, b)},
                  {Role::kGuide, "its extension"},
                  {Role::kAnswer, "point " + FormatPointText(p) + ": " + std::string(OnEntityMeaning(code))}};
  return answer;
}

Answer AnswerDistance(const GeomArgs& args) {
  const auto& n = args.numbers;
  const WPt p(n[0], n[1]), a(n[2], n[3]), b(n[4], n[5]);
  const double line = CMathTools::DistToLine1(p, a, b);
  const double segment = CMathTools::CalculateDistanceToLine(p, a, b);
  const double pick = CMathTools::DistToLine(p, a, b);
  Answer answer;
  answer.lines.push_back("line " + FormatNumber(line) + " (perpendicular distance to the infinite line)");
  answer.lines.push_back("segment " + FormatNumber(segment) +
                         (segment == -1.0 ? " (the point is not beside the segment)"
                                          : " (perpendicular distance beside the segment)"));
  answer.lines.push_back("pick " + FormatNumber(pick) +
                         (pick == -1.0 ? " (outside the picking ellipse)"
                                       : " (picking closeness, not a Euclidean distance)"));

  Scene& scene = answer.scene;
  AddSegment(scene, a, b, Role::kFirst);
  scene.legend = {{Role::kFirst, "segment " + SegmentText(a, b)}};
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double length = std::hypot(dx, dy);
  if (length > 0.0) {
    // Foci a and b, |p - a| + |p - b| <= 1.1 |a - b|: the picking area.
    const double major = 0.55 * length;
    const double minor = std::sqrt(0.55 * 0.55 - 0.25) * length;
    scene.shapes.emplace_back(Ellipse{{a.x + dx * 0.5, a.y + dy * 0.5}, major, minor, std::atan2(dy, dx), Role::kGuide});
    const double t = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (length * length);
    const WPt foot(a.x + t * dx, a.y + t * dy);
    scene.shapes.emplace_back(Segment{p, foot, Role::kAux});
    scene.shapes.emplace_back(Marker{foot, Role::kAux, ""});
    scene.legend.push_back({Role::kAux, "perpendicular to the line, " + FormatNumber(line) + " long"});
    scene.legend.push_back({Role::kGuide, "picking ellipse |p - a| + |p - b| = 1.1 |a - b|"});
  }
  scene.shapes.emplace_back(Marker{p, Role::kAnswer, FormatPointText(p)});
  scene.legend.push_back({Role::kAnswer, "point " + FormatPointText(p)});
  return answer;
}

Answer AnswerAngle(const GeomArgs& args) {
  const auto& n = args.numbers;
  const WPt a(n[0], n[1]), b(n[2], n[3]);
  const double radians = CMathTools::Angle(a.x, a.y, b.x, b.y, args.coarse);
  const double degrees = CMathTools::Grad(radians, 1);
  Answer answer;
  answer.lines.push_back("radians " + FormatNumber(radians) + " (direction in [0, 2pi))");
  answer.lines.push_back("degrees " + FormatNumber(degrees) + " (normalised, rounded to tenths)");

  Scene& scene = answer.scene;
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  scene.shapes.emplace_back(Segment{a, {a.x + length, a.y}, Role::kGuide});
  scene.shapes.emplace_back(Segment{a, b, Role::kFirst, true});
  scene.shapes.emplace_back(Marker{a, Role::kFirst, FormatPointText(a)});
  scene.legend = {{Role::kFirst, "direction " + SegmentText(a, b)}, {Role::kGuide, "angle 0, along +x"}};
  if (length > 0.0 && std::isfinite(radians)) {
    // The arc from angle 0 to the answer, in the library's sense of turning.
    Polyline arc{{}, Role::kAnswer};
    const double r = length * 0.3;
    constexpr int kSteps = 64;
    for (int i = 0; i <= kSteps; ++i) {
      const double t = radians * i / kSteps;
      arc.points.emplace_back(a.x + r * std::cos(t), a.y + r * std::sin(t));
    }
    scene.shapes.emplace_back(std::move(arc));
    scene.legend.push_back({Role::kAnswer, "angle " + FormatNumber(degrees) +
                                               " degrees: it turns clockwise on screen, as y grows downward"});
  }
  return answer;
}

}  // namespace cadtools::cli

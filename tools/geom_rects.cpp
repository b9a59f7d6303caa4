// Questions about rectangles: zone, rectdist, clip, section.
#include "geom.h"

#include "format.h"
#include "meanings.h"

#include <cadtools/math_tools.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace cadtools::cli {
namespace {

WRect RectAt(const std::vector<double>& n, std::size_t first) {
  return {n[first], n[first + 1], n[first + 2], n[first + 3]};
}

}  // namespace

Answer AnswerZone(const GeomArgs& args) {
  const WRect r = RectAt(args.numbers, 0);
  const WPt p(args.numbers[4], args.numbers[5]);
  const int zone = r.GetPtPosToRect(p, args.diagonals ? 1 : 0, 0);
  Answer answer;
  answer.lines.push_back("zone " + std::string(ZoneName(zone)) + " (" + std::to_string(zone) + ")");

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Zones{r, args.diagonals, zone});
  scene.shapes.emplace_back(Outline(r, Role::kFirst));
  scene.shapes.emplace_back(Marker{p, Role::kAnswer, FormatPointText(p)});
  scene.legend = {
      {Role::kFirst, "rectangle " + FormatRectText(r)},
      {Role::kAnswer, "point " + FormatPointText(p) + " in zone " + std::string(ZoneName(zone)) + ", shaded yellow"},
      {Role::kGuide, args.diagonals ? "zones cut by the diagonals" : "the nine zones around the rectangle"}};
  return answer;
}

Answer AnswerRectDist(const GeomArgs& args) {
  const WPt p(args.numbers[0], args.numbers[1]);
  const WRect r = RectAt(args.numbers, 2);
  const double d = CMathTools::CalculateDistanceToRect(p, r);
  Answer answer;
  answer.lines.push_back("distance " + FormatNumber(d) +
                         (d == -1.0 ? " (no edge qualifies)" : " (the smallest positive distance to an edge)"));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Outline(r, Role::kFirst));
  scene.legend = {{Role::kFirst, "rectangle " + FormatRectText(r)}};
  // Perpendiculars to the edges beside the point; the one as long as the
  // answer is drawn as the answer.
  const std::array<std::pair<WPt, WPt>, 4> edges = {{{{r.left, r.top}, {r.right, r.top}},
                                                     {{r.right, r.top}, {r.right, r.bottom}},
                                                     {{r.right, r.bottom}, {r.left, r.bottom}},
                                                     {{r.left, r.bottom}, {r.left, r.top}}}};
  bool drew_aux = false;
  for (const auto& [a, b] : edges) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double length2 = dx * dx + dy * dy;
    if (!(length2 > 0.0)) continue;
    const double t = ((p.x - a.x) * dx + (p.y - a.y) * dy) / length2;
    if (t < 0.0 || t > 1.0) continue;
    const WPt foot(a.x + t * dx, a.y + t * dy);
    const double length = std::hypot(p.x - foot.x, p.y - foot.y);
    if (!(length > 0.0)) continue;
    const bool is_answer = std::fabs(length - d) <= 1e-9 * std::max(1.0, d);
    scene.shapes.emplace_back(Segment{p, foot, is_answer ? Role::kAnswer : Role::kAux});
    drew_aux = drew_aux || !is_answer;
  }
  if (drew_aux) scene.legend.push_back({Role::kAux, "perpendiculars to the edges beside the point"});
  scene.shapes.emplace_back(Marker{p, Role::kAnswer, FormatPointText(p)});
  scene.legend.push_back({Role::kAnswer, "point " + FormatPointText(p) + ", distance " + FormatNumber(d)});
  return answer;
}

Answer AnswerClip(const GeomArgs& args) {
  const WRect r = RectAt(args.numbers, 0);
  const WPt a0(args.numbers[4], args.numbers[5]), b0(args.numbers[6], args.numbers[7]);
  WPt a = a0;
  WPt b = b0;
  const int result = r.LineIntersects(a, b);
  Answer answer;
  answer.lines.push_back("result " + std::to_string(result) +
                         (result != 0 ? " (the line crosses the outline; a and b are the crossings)"
                                      : " (no crossing pair: a and b are unchanged)"));
  answer.lines.push_back("a " + FormatPoint(a));
  answer.lines.push_back("b " + FormatPoint(b));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Outline(r, Role::kFirst));
  scene.shapes.emplace_back(InfiniteLine{a0, b0, Role::kGuide});
  scene.shapes.emplace_back(Marker{a0, Role::kSecond, "a"});
  scene.shapes.emplace_back(Marker{b0, Role::kSecond, "b"});
  scene.legend = {{Role::kFirst, "rectangle " + FormatRectText(r)},
                  {Role::kSecond, "a " + FormatPointText(a0) + ", b " + FormatPointText(b0)},
                  {Role::kGuide, "the line through a and b"}};
  if (result != 0) {
    scene.shapes.emplace_back(Segment{a, b, Role::kAnswer});
    scene.shapes.emplace_back(Marker{a, Role::kAnswer, FormatPointText(a)});
    scene.shapes.emplace_back(Marker{b, Role::kAnswer, FormatPointText(b)});
    scene.legend.push_back({Role::kAnswer, "clipped: " + FormatPointText(a) + " to " + FormatPointText(b)});
  }
  return answer;
}

Answer AnswerSection(const GeomArgs& args) {
  const WRect r1 = RectAt(args.numbers, 0);
  const WRect r2 = RectAt(args.numbers, 4);
  const WRect section = r1.Section(r2);
  WRect anded = r1;
  anded &= r2;
  const int overlap = r1.IntersectRect(r2, 0);
  const int overlap_tolerant = r1.IntersectRect(r2, 1);
  const WRect both = WRect::Union(r1, r2);
  Answer answer;
  answer.lines.push_back("section " + FormatRect(section) + " (the common part; 0 0 0 0 when disjoint)");
  answer.lines.push_back("and " + FormatRect(anded) + " (&=, which never inverts)");
  answer.lines.push_back("overlap " + std::to_string(overlap) + " (IntersectRect, exact)");
  answer.lines.push_back("overlap-tolerant " + std::to_string(overlap_tolerant) + " (IntersectRect within 0.001)");
  answer.lines.push_back("union " + FormatRect(both));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Outline(both, Role::kGuide));
  scene.shapes.emplace_back(Outline(r1, Role::kFirst));
  scene.shapes.emplace_back(Outline(r2, Role::kSecond));
  scene.shapes.emplace_back(Outline(anded, Role::kAux));
  scene.legend = {{Role::kFirst, "rectangle 1 " + FormatRectText(r1)},
                  {Role::kSecond, "rectangle 2 " + FormatRectText(r2)},
                  {Role::kGuide, "union " + FormatRectText(both)},
                  {Role::kAux, "&= " + FormatRectText(anded)}};
  if (overlap != 0) {
    scene.shapes.emplace_back(Outline(section, Role::kAnswer, true));
    if (section.Width() == 0.0 && section.Height() == 0.0) {
      scene.shapes.emplace_back(Marker{{section.left, section.top}, Role::kAnswer, ""});
    }
    scene.legend.push_back({Role::kAnswer, "section " + FormatRectText(section)});
  } else {
    scene.legend.push_back({Role::kAnswer, "no section: the rectangles are disjoint"});
  }
  return answer;
}

}  // namespace cadtools::cli

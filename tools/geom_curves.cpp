// Questions about curves: circles, bezier.
#include "geom.h"

#include "errors.h"
#include "format.h"
#include "meanings.h"

#include <cadtools/math_tools.h>

#include <cmath>

namespace cadtools::cli {
namespace {

// More points than anyone reads; also keeps a tiny step from running for
// minutes and printing gigabytes.
constexpr double kMaxBezierPoints = 1e6;

}  // namespace

Answer AnswerCircles(const GeomArgs& args) {
  const auto& n = args.numbers;
  if (n[2] < 0.0 || n[5] < 0.0) throw UsageError("a radius must not be negative");
  const WPt c1(n[0], n[1]), c2(n[3], n[4]);
  WPt p1;
  WPt p2;
  const int count = CMathTools::aa_Intersection(c1.x, c1.y, n[2], c2.x, c2.y, n[5], &p1.x, &p1.y, &p2.x, &p2.y);
  Answer answer;
  // Nested circles come back as 2 with NaN points; say so rather than
  // claim two crossings.
  const bool finite = std::isfinite(p1.x) && std::isfinite(p1.y) && std::isfinite(p2.x) && std::isfinite(p2.y);
  const std::string_view meaning = count == 2 && !finite ? "nested circles: no finite crossing" : CirclesMeaning(count);
  answer.lines.push_back("count " + std::to_string(count) + " (" + std::string(meaning) + ")");
  // A touching pair reports its point twice; say it once.
  if (count >= 1) answer.lines.push_back("point " + FormatPoint(p1));
  if (count >= 2) answer.lines.push_back("point " + FormatPoint(p2));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Circle{c1, n[2], Role::kFirst});
  scene.shapes.emplace_back(Circle{c2, n[5], Role::kSecond});
  scene.shapes.emplace_back(Marker{c1, Role::kFirst, ""});
  scene.shapes.emplace_back(Marker{c2, Role::kSecond, ""});
  scene.legend = {{Role::kFirst, "circle 1, centre " + FormatPointText(c1) + ", radius " + FormatNumber(n[2])},
                  {Role::kSecond, "circle 2, centre " + FormatPointText(c2) + ", radius " + FormatNumber(n[5])}};
  if (count >= 1) {
    std::string text = "crossing " + FormatPointText(p1);
    scene.shapes.emplace_back(Marker{p1, Role::kAnswer, FormatPointText(p1)});
    if (count >= 2) {
      scene.shapes.emplace_back(Marker{p2, Role::kAnswer, FormatPointText(p2)});
      text += " and " + FormatPointText(p2);
    }
    scene.legend.push_back({Role::kAnswer, text});
  }
  return answer;
}

Answer AnswerBezier(const GeomArgs& args) {
  const double step = args.numbers[0];
  CArray<WPt, WPt> input;
  for (std::size_t i = 1; i + 1 < args.numbers.size(); i += 2) input.Add(WPt(args.numbers[i], args.numbers[i + 1]));
  const INT_PTR segments = input.GetSize() >= 4 ? (input.GetSize() - 1) / 3 : 0;
  if (segments > 0 && step > 0.0 && static_cast<double>(segments) * (1.0 / step + 2.0) > kMaxBezierPoints) {
    throw UsageError("step " + FormatNumber(step) + " gives more than a million points");
  }
  CArray<WPt, WPt> output;
  CMathTools::CalculateBezierPoints(&input, output, step);

  Answer answer;
  answer.lines.push_back("points " + std::to_string(output.GetSize()));
  for (const WPt& p : output) answer.lines.push_back("point " + FormatPoint(p));

  Scene& scene = answer.scene;
  scene.shapes.emplace_back(Polyline{{input.begin(), input.end()}, Role::kGuide});
  scene.shapes.emplace_back(Polyline{{output.begin(), output.end()}, Role::kAnswer});
  constexpr INT_PTR kMaxSampleMarkers = 80;
  if (output.GetSize() <= kMaxSampleMarkers) {
    for (const WPt& p : output) scene.shapes.emplace_back(Marker{p, Role::kAux, ""});
  }
  for (const WPt& p : input) scene.shapes.emplace_back(Marker{p, Role::kSecond, FormatPointText(p)});
  scene.legend = {{Role::kSecond, "control points"},
                  {Role::kGuide, "control polygon"},
                  {Role::kAnswer, "polyline of " + std::to_string(output.GetSize()) + " points, step " +
                                      FormatNumber(step)}};
  if (output.GetSize() <= kMaxSampleMarkers) scene.legend.push_back({Role::kAux, "the points"});
  return answer;
}

}  // namespace cadtools::cli

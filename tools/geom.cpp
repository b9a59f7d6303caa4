#include "geom.h"

#include "errors.h"
#include "format.h"
#include "help.h"
#include "svg.h"

#include <algorithm>
#include <cstddef>
#include <ostream>

namespace cadtools::cli {
namespace {

constexpr Question kQuestions[] = {
    {"intersect", "x1 y1 x2 y2 x3 y3 x4 y4", "crossing of the lines through two segments (ll_Intersection)", 8,
     false, kOptInclusive | kOptCoarse, AnswerIntersect},
    {"circles", "cx1 cy1 r1 cx2 cy2 r2", "crossings of two circles (aa_Intersection)", 6, false, 0,
     AnswerCircles},
    {"onentity", "x1 y1 x2 y2 px py", "where a point lies against a segment (On_Entity)", 6, false, 0,
     AnswerOnEntity},
    {"distance", "px py x1 y1 x2 y2", "distances from a point to a segment (DistToLine1, CalculateDistanceToLine, DistToLine)",
     6, false, 0, AnswerDistance},
    {"angle", "x1 y1 x2 y2", "direction from the first point to the second (Angle, Grad)", 4, false, kOptCoarse,
     AnswerAngle},
    {"zone", "l t r b x y", "the zone of a point around a rectangle (WRect::GetPtPosToRect)", 6, false,
     kOptDiagonals, AnswerZone},
    {"rectdist", "px py l t r b", "distance from a point to the edges of a rectangle (CalculateDistanceToRect)", 6,
     false, 0, AnswerRectDist},
    {"clip", "l t r b ax ay bx by", "the line through a and b clipped to a rectangle (WRect::LineIntersects)", 8,
     false, 0, AnswerClip},
    {"section", "l t r b l2 t2 r2 b2", "common part and union of two rectangles (Section, &=, IntersectRect, Union)",
     8, false, 0, AnswerSection},
    {"bezier", "step x0 y0 x1 y1 x2 y2 x3 y3 [x y ...]", "polyline of a chain of cubic Bezier segments (CalculateBezierPoints)",
     3, true, 0, AnswerBezier},
};

std::string OptionText(unsigned options) {
  std::string s;
  if ((options & kOptInclusive) != 0) s += " [--inclusive 0|1]";
  if ((options & kOptCoarse) != 0) s += " [--coarse 0|1]";
  if ((options & kOptDiagonals) != 0) s += " [--diagonals]";
  return s + " [--svg FILE]";
}

void CheckCount(const Question& q, std::size_t got) {
  const bool ok = q.then_pairs ? got >= q.count && (got - q.count) % 2 == 0 : got == q.count;
  if (ok) return;
  const std::string got_text = ", got " + std::to_string(got);
  if (q.then_pairs) {
    throw UsageError("expected " + std::string(q.operands.substr(0, q.operands.find(' '))) +
                     " and then x y pairs: an odd count of at least " + std::to_string(q.count) + " numbers" +
                     got_text);
  }
  throw UsageError("expected " + std::to_string(q.count) + " numbers" + got_text);
}

// The command line that asked, for the picture's title.
std::string Title(const Question& q, const GeomArgs& args) {
  std::string title = "cadtools geom " + std::string(q.name);
  for (const double v : args.numbers) title += " " + FormatNumber(v);
  if ((q.options & kOptInclusive) != 0) title += " --inclusive " + std::to_string(args.inclusive);
  if ((q.options & kOptCoarse) != 0) title += " --coarse " + std::to_string(args.coarse);
  if (args.diagonals) title += " --diagonals";
  return title;
}

}  // namespace

std::span<const Question> Questions() { return kQuestions; }

const Question* FindQuestion(std::string_view name) {
  for (const Question& q : kQuestions) {
    if (q.name == name) return &q;
  }
  return nullptr;
}

std::string QuestionUsage(const Question& q) {
  return "usage: cadtools geom " + std::string(q.name) + " " + std::string(q.operands) + OptionText(q.options) +
         "\n  " + std::string(q.summary) + "\n";
}

void RunGeom(std::span<const std::string_view> words, std::ostream& out) {
  if (words.empty()) throw UsageError("geom needs a question", GeomShortUsage());
  if (words[0] == "--help" || words[0] == "-h") {
    out << GeomUsage();
    return;
  }
  const Question* q = FindQuestion(words[0]);
  if (q == nullptr) throw UsageError("unknown question '" + std::string(words[0]) + "'", GeomShortUsage());

  Answer answer;
  GeomArgs args;
  try {
    args = ParseGeomArgs(words.subspan(1), q->options);
    if (args.help) {
      out << QuestionUsage(*q);
      return;
    }
    CheckCount(*q, args.numbers.size());
    answer = q->answer(args);
  } catch (const UsageError& e) {
    throw UsageError("geom " + std::string(q->name) + ": " + e.what(), QuestionUsage(*q));
  }

  for (const std::string& line : answer.lines) out << line << '\n';
  out.flush();
  if (!args.svg) return;
  Scene& scene = answer.scene;
  scene.title = Title(*q, args);
  // The answer under the legend; a long point list is cut, the full one is
  // on standard output.
  constexpr std::size_t kMaxNotes = 12;
  std::vector<std::string> notes(answer.lines.begin(),
                                 answer.lines.begin() + static_cast<std::ptrdiff_t>(
                                                            std::min(answer.lines.size(), kMaxNotes)));
  if (answer.lines.size() > kMaxNotes) {
    notes.push_back("... " + std::to_string(answer.lines.size() - kMaxNotes) + " more lines");
  }
  scene.notes.insert(scene.notes.begin(), notes.begin(), notes.end());
  WriteFile(*args.svg, RenderSvg(scene));
}

}  // namespace cadtools::cli

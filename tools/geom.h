// `cadtools geom QUESTION NUMBERS... [OPTIONS]`: the table of questions and
// the command that answers one.
#pragma once

#include "args.h"
#include "scene.h"

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

// What a question prints, one fact per line, and the picture of it.
struct Answer {
  std::vector<std::string> lines;
  Scene scene;
};

struct Question {
  std::string_view name;      // "intersect"
  std::string_view operands;  // "x1 y1 x2 y2 x3 y3 x4 y4"
  std::string_view summary;   // one line for the help
  std::size_t count;          // numbers taken; with then_pairs, the fewest
  bool then_pairs;            // after `count`, any number of x y pairs
  unsigned options;           // OptionBits beyond --svg
  Answer (*answer)(const GeomArgs&);  // called with the numbers checked
};

std::span<const Question> Questions();
const Question* FindQuestion(std::string_view name);

// "usage: cadtools geom intersect x1 ... [--svg FILE]" and its summary.
std::string QuestionUsage(const Question& question);

// Answers the question named by words[0] to out and writes the picture if
// asked. Throws UsageError or OutputError.
void RunGeom(std::span<const std::string_view> words, std::ostream& out);

// The answers, one file per family of questions.
Answer AnswerIntersect(const GeomArgs& args);
Answer AnswerOnEntity(const GeomArgs& args);
Answer AnswerDistance(const GeomArgs& args);
Answer AnswerAngle(const GeomArgs& args);
Answer AnswerZone(const GeomArgs& args);
Answer AnswerRectDist(const GeomArgs& args);
Answer AnswerClip(const GeomArgs& args);
Answer AnswerSection(const GeomArgs& args);
Answer AnswerCircles(const GeomArgs& args);
Answer AnswerBezier(const GeomArgs& args);

}  // namespace cadtools::cli

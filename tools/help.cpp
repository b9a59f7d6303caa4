#include "help.h"

#include "geom.h"

namespace cadtools::cli {
namespace {

std::string QuestionList() {
  std::string text = "questions:\n";
  for (const Question& q : Questions()) {
    text += "  " + std::string(q.name) + " " + std::string(q.operands) + "\n";
    text += "      " + std::string(q.summary) + "\n";
  }
  return text;
}

constexpr const char* kOptions =
    "options:\n"
    "  --svg FILE        also draw the input and the answer as an SVG picture\n"
    "  --inclusive 0|1   intersect: count segment ends with a slack of 1e-6\n"
    "  --coarse 0|1      intersect, angle: tolerance 0.001 instead of 2.2e-13\n"
    "  --diagonals       zone: cut the rectangle by its diagonals\n"
    "  Options may stand anywhere after the question, also as --name=value.\n";

}  // namespace

std::string ShortUsage() {
  return "usage: cadtools --help | --version\n"
         "       cadtools tour\n"
         "       cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n";
}

std::string GeomShortUsage() {
  std::string names;
  for (const Question& q : Questions()) names += (names.empty() ? "" : ", ") + std::string(q.name);
  return "usage: cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n  questions: " + names + "\n";
}

std::string GeomUsage() {
  return "usage: cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n\n" + QuestionList() + "\n" +
         kOptions;
}

std::string FullHelp() {
  return ShortUsage() +
         "\n"
         "Answers plane-geometry questions with the cadtools library, one fact per\n"
         "line, such as 'code 2 (crossing within both segments)' and 'point 1 0'.\n"
         "\n"
         "commands:\n"
         "  tour       a short walk through the geometry, every result computed live\n"
         "  geom       answer one question below\n"
         "  --version  print the version\n"
         "\n" +
         QuestionList() + "\n" + kOptions +
         "\n"
         "Numbers are decimal, as in 3, -0.5, 1e-3; nan and inf are refused. Pictures\n"
         "draw y growing downward, as in the host's rectangles (top < bottom).\n"
         "\n"
         "exit status: 0 answered, 1 the answer or the picture could not be written,\n"
         "2 bad arguments.\n"
         "\n"
         "example: cadtools geom intersect 0 0 2 0 1 -1 1 1 --svg crossing.svg\n";
}

}  // namespace cadtools::cli

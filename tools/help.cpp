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
         "       cadtools geom QUESTION NUMBERS... [OPTIONS] [--svg FILE]\n"
         "       cadtools natsort [-r] [-u] [FILE...]\n"
         "       cadtools like PATTERN [FILE...]\n"
         "       cadtools nextname NAME [-n COUNT]\n"
         "       cadtools units mm2inch|inch2mm VALUE...\n";
}

std::string NatsortUsage() {
  return "usage: cadtools natsort [-r] [-u] [FILE...]\n"
         "  Prints the lines of the files (or of standard input) in natural order:\n"
         "  digit runs compare as numbers (X2 before X10), case and white space are\n"
         "  ignored, equal lines keep their order.\n"
         "  -r  reverse the order\n"
         "  -u  print only the first of lines that compare equal\n";
}

std::string LikeUsage() {
  return "usage: cadtools like PATTERN [FILE...]\n"
         "  Prints the lines of the files (or of standard input) that match PATTERN,\n"
         "  ignoring case. '*' matches any run of characters; each piece between\n"
         "  stars is taken at its first occurrence, so '*ab' does not match 'abab'.\n";
}

std::string NextnameUsage() {
  return "usage: cadtools nextname NAME [-n COUNT]\n"
         "  Prints the COUNT names (default 1) that follow NAME, one per line:\n"
         "  K1 -> K2, X009 -> X010, A1B2 -> A2B3, AZ -> BA, z -> aa.\n"
         "  Write 'nextname -- -n1' for a name that starts with -n.\n";
}

std::string UnitsUsage() {
  return "usage: cadtools units mm2inch|inch2mm VALUE...\n"
         "  Converts each value, snapping the usual pen widths, text heights and\n"
         "  grid sizes to their conventional counterparts (3.175 mm -> 0.125 in,\n"
         "  0.25 in -> 6.35 mm); other values come out rounded to 5 decimals (inches)\n"
         "  or 2 decimals (millimetres).\n";
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
         "Puts the cadtools library in your hands: plane-geometry questions, natural\n"
         "sorting, wildcard filtering, next names and unit conversion. Answers come\n"
         "one fact per line, such as 'code 2 (crossing within both segments)'.\n"
         "\n"
         "commands:\n"
         "  tour       a short walk through the library, every result computed live\n"
         "  geom       answer one geometry question below\n"
         "  natsort    sort lines in natural order (X2 before X10)\n"
         "  like       print the lines that match a '*' pattern\n"
         "  nextname   print the names that follow a name (K1, K2, ...)\n"
         "  units      convert millimetres and inches with snapping\n"
         "  --version  print the version\n"
         "Each command prints its own usage with --help. Text is UTF-8.\n"
         "\n" +
         QuestionList() + "\n" + kOptions +
         "\n"
         "Numbers are decimal, as in 3, -0.5, 1e-3; nan and inf are refused. Pictures\n"
         "draw y growing downward, as in the host's rectangles (top < bottom).\n"
         "\n"
         "exit status: 0 answered, 1 a file could not be read or written, 2 bad\n"
         "arguments.\n"
         "\n"
         "example: cadtools geom intersect 0 0 2 0 1 -1 1 1 --svg crossing.svg\n";
}

}  // namespace cadtools::cli

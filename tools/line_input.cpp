#include "line_input.h"

#include "errors.h"

#include <fstream>
#include <istream>

namespace cadtools::cli {
namespace {

void AppendLines(std::istream& stream, std::vector<std::string>& lines) {
  std::string line;
  while (std::getline(stream, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
  }
}

}  // namespace

std::vector<std::string> ReadLines(std::span<const std::string_view> files, std::istream& in) {
  std::vector<std::string> lines;
  const auto read_in = [&] {
    AppendLines(in, lines);
    if (in.bad()) throw InputError("cannot read standard input");
  };
  if (files.empty()) read_in();
  for (const std::string_view name : files) {
    if (name == "-") {
      read_in();
      continue;
    }
    std::ifstream file{std::string(name), std::ios::binary};
    if (!file) throw InputError("cannot read " + std::string(name));
    AppendLines(file, lines);
    if (file.bad()) throw InputError("cannot read " + std::string(name));
  }
  return lines;
}

}  // namespace cadtools::cli

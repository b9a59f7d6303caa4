// Reading the words of a `geom` command line: numbers and options.
//
// Numbers go through std::from_chars, so "1.5" means the same on every
// target whatever the locale. Only finite decimal numbers are taken: nan and
// inf would flow into the geometry as quietly wrong answers.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

// The options a question may take, as bits of GeomArgs-accepting masks.
enum OptionBit : unsigned {
  kOptInclusive = 1U << 0,  // --inclusive 0|1
  kOptCoarse = 1U << 1,     // --coarse 0|1
  kOptDiagonals = 1U << 2,  // --diagonals
};

struct GeomArgs {
  std::vector<double> numbers;
  int inclusive = 0;
  int coarse = 0;
  bool diagonals = false;
  std::optional<std::string> svg;  // --svg FILE; every question takes it
  bool help = false;               // --help or -h: nothing else was checked
};

// A finite decimal number, with an optional leading '+'. Throws UsageError
// naming the word otherwise.
double ParseNumber(std::string_view word);

// The words after the question name. Options may stand anywhere, as
// "--name value" or "--name=value"; "--" ends them, so everything after it
// is a number. Throws UsageError for unknown options, options the question
// does not take (`accepted` holds its OptionBits), a missing or bad value
// and words that are not numbers.
GeomArgs ParseGeomArgs(std::span<const std::string_view> words, unsigned accepted);

}  // namespace cadtools::cli

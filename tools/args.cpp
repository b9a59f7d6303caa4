#include "args.h"

#include "errors.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace cadtools::cli {
namespace {

std::string Quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

// The value of a 0|1 option.
int ParseBit(std::string_view option, std::string_view value) {
  if (value == "0") return 0;
  if (value == "1") return 1;
  throw UsageError(std::string(option) + " takes 0 or 1, not " + Quoted(value));
}

struct OptionInfo {
  std::string_view name;
  unsigned bit;  // 0 for --svg, which every question takes
  bool takes_value;
};

constexpr OptionInfo kOptions[] = {
    {"--inclusive", kOptInclusive, true},
    {"--coarse", kOptCoarse, true},
    {"--diagonals", kOptDiagonals, false},
    {"--svg", 0, true},
};

}  // namespace

double ParseNumber(std::string_view word) {
  std::string_view digits = word;
  // from_chars refuses a leading '+', but people write it.
  if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-' && digits[1] != '+') {
    digits.remove_prefix(1);
  }
  double value = 0.0;
  const char* const end = digits.data() + digits.size();
  const auto [ptr, ec] = std::from_chars(digits.data(), end, value);
  if (ec == std::errc::result_out_of_range) {
    throw UsageError(Quoted(word) + " is out of the range of double");
  }
  if (ec != std::errc() || ptr != end || digits.empty()) {
    throw UsageError(Quoted(word) + " is not a number");
  }
  if (!std::isfinite(value)) throw UsageError(Quoted(word) + " is not a finite number");
  return value;
}

GeomArgs ParseGeomArgs(std::span<const std::string_view> words, unsigned accepted) {
  GeomArgs out;
  bool options_done = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (options_done || !word.starts_with("--")) {
      if (!options_done && word == "-h") {
        out.help = true;
        return out;
      }
      out.numbers.push_back(ParseNumber(word));
      continue;
    }
    if (word == "--") {
      options_done = true;
      continue;
    }
    if (word == "--help") {
      out.help = true;
      return out;
    }
    const std::size_t eq = word.find('=');
    const std::string_view name = word.substr(0, eq);
    const OptionInfo* info = nullptr;
    for (const OptionInfo& candidate : kOptions) {
      if (candidate.name == name) info = &candidate;
    }
    if (info == nullptr) throw UsageError("unknown option " + Quoted(name));
    if (info->bit != 0 && (accepted & info->bit) == 0) {
      throw UsageError(std::string(name) + " does not apply to this question");
    }
    std::string_view value;
    if (info->takes_value) {
      if (eq != std::string_view::npos) {
        value = word.substr(eq + 1);
      } else if (i + 1 < words.size()) {
        value = words[++i];
      } else {
        throw UsageError(std::string(name) + " needs a value");
      }
    } else if (eq != std::string_view::npos) {
      throw UsageError(std::string(name) + " takes no value");
    }

    if (name == "--inclusive") {
      out.inclusive = ParseBit(name, value);
    } else if (name == "--coarse") {
      out.coarse = ParseBit(name, value);
    } else if (name == "--diagonals") {
      out.diagonals = true;
    } else {
      if (value.empty()) throw UsageError("--svg needs a file name");
      out.svg = std::string(value);
    }
  }
  return out;
}

}  // namespace cadtools::cli

// The commands over names and numbers: natsort, like, nextname, units.
// Each takes the words after its name; --help or -h prints its usage.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace cadtools::cli {

// natsort [-r] [-u] [FILE...]: the lines in natural order (NaturalCompare),
// equal lines in input order; -r reverses, -u keeps the first of equal lines.
void RunNatsort(std::span<const std::string_view> words, std::istream& in, std::ostream& out);
// like PATTERN [FILE...]: the lines that match a '*' pattern (IsTextLike).
void RunLike(std::span<const std::string_view> words, std::istream& in, std::ostream& out);
// nextname NAME [-n COUNT]: the COUNT names after NAME (GetNextName).
void RunNextname(std::span<const std::string_view> words, std::ostream& out);
// units mm2inch|inch2mm VALUE...: each value converted with snapping.
void RunUnits(std::span<const std::string_view> words, std::ostream& out);

}  // namespace cadtools::cli

// Lines of text from files or standard input, for the commands that filter
// or sort lines.
#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

// Every line of the named files in order, or of `in` when no file is named
// ("-" names `in` too). A line ends at "\n" or "\r\n", which are not part
// of it; a last line without an ending counts. The bytes are kept as they
// are (UTF-8 expected, anything accepted). Throws InputError naming a file
// that cannot be read.
std::vector<std::string> ReadLines(std::span<const std::string_view> files, std::istream& in);

}  // namespace cadtools::cli

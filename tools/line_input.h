// Lines of text from files or standard input, for the commands that filter
// or sort lines. The input is read whole, in large blocks, and the lines
// are views into it.
//
//   ReadText({"a.txt", "b.txt"}, in)   // "x\r\ny" + "z\n"  ->  "x\r\ny\nz\n"
//   SplitLines("x\r\ny\n\nz\n")        // "x", "y", "", "z"
#pragma once

#include <iosfwd>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

// The bytes of the named files in order, or of `in` when no file is named
// ("-" names `in` too; it is read once, later "-" add nothing), each
// source's last line ended with "\n" when it has no ending of its own. The
// bytes are kept as they are (UTF-8 expected, anything accepted). Throws
// InputError naming a file that cannot be read.
std::string ReadText(std::span<const std::string_view> files, std::istream& in);

// The lines of a text: each ends at "\n" or "\r\n", which are not part of
// it; a last line without an ending counts.
std::vector<std::string_view> SplitLines(std::string_view text);

// The line that holds text[at] (or ends with it), and where the next one
// starts (the text's size after the last).
struct LineSpan {
  std::string_view text;
  std::size_t next;
};
LineSpan LineAt(std::string_view text, std::size_t at) noexcept;

}  // namespace cadtools::cli

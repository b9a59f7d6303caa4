// The whole command line as a function, so it can be run in a test with
// string streams.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace cadtools::cli {

// Runs `cadtools args...` (args without the program name, UTF-8) and returns
// the exit status: 0 answered, 1 a file could not be read or written, 2 bad
// arguments. `in` is read by the commands that take lines when no file is
// named. Never throws.
int Run(std::span<const std::string_view> args, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace cadtools::cli

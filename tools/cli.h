// The whole command line as a function, so it can be run in a test with
// string streams.
#pragma once

#include <iosfwd>
#include <span>
#include <string_view>

namespace cadtools::cli {

// Runs `cadtools args...` (args without the program name) and returns the
// exit status: 0 answered, 1 output failed, 2 bad arguments. Never throws.
int Run(std::span<const std::string_view> args, std::ostream& out, std::ostream& err);

}  // namespace cadtools::cli

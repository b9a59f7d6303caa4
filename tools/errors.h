// The ways a command can fail, and the exit status each one maps to.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace cadtools::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitOutput = 1;  // a file could not be read, the answer not written, or a command failed
inline constexpr int kExitUsage = 2;   // the command line itself is wrong

// A command line that cannot be answered. `usage` is the synopsis to show
// with the message; empty means the general one.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& message, std::string usage = {})
      : std::runtime_error(message), usage_(std::move(usage)) {}
  const std::string& usage() const noexcept { return usage_; }

 private:
  std::string usage_;
};

// A file or stream could not be read or written.
class IoError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The answer was computed but could not be written out.
class OutputError : public IoError {
 public:
  using IoError::IoError;
};

// An input file could not be read.
class InputError : public IoError {
 public:
  using IoError::IoError;
};

// The command could not do its work: a setting that is not there, a
// registry call that failed, a .reg file with a fault.
class CommandFailed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace cadtools::cli

// The pieces of `cadtools tour`: one line per call, with the call, its live
// result and what to notice, and the sections beyond the geometry.
#pragma once

#include "format.h"

#include <cadtools/compat/cstring.h>

#include <ostream>
#include <string>
#include <string_view>

namespace cadtools::cli {

class Tour {
 public:
  explicit Tour(std::ostream& out) : out_(out) {}

  void Heading(std::string_view text) { out_ << '\n' << text << '\n'; }

  void Step(std::string_view call, const std::string& result, std::string_view note = {}) {
    constexpr std::size_t kCallWidth = 44;
    std::string line = "  " + std::string(call);
    if (line.size() < kCallWidth) line.resize(kCallWidth, ' ');
    line += " -> " + result;
    if (!note.empty()) line += "   " + std::string(note);
    out_ << line << '\n';
  }

  // A line of detail below a step.
  void Detail(std::string_view text) { out_ << "      " << text << '\n'; }

 private:
  std::ostream& out_;
};

inline std::string Num(double v) { return FormatNumber(v); }
inline std::string Int(long long v) { return std::to_string(v); }
inline std::string Bool(bool v) { return v ? "true" : "false"; }
inline std::string Quoted(const CString& s) { return '"' + ToUtf8(s) + '"'; }

// Numbers and units, the text tools, settings with .reg files, and code
// pages.
void NumbersTour(Tour& t);
void TextTour(Tour& t);
void SettingsTour(Tour& t);
void CodePagesTour(Tour& t);
// Strings and calls through the managed bridge, where a runtime runs.
void BridgeTour(Tour& t);
// Where the default font face comes from; run inside the settings tour's
// own store or key, which holds "Arial" as the face by then.
void DefaultFontWalk(Tour& t);

}  // namespace cadtools::cli

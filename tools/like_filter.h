// The lines of a text that match a '*' pattern (IsTextLike), for like on
// lists of a million tags. Most tags are ASCII: the filter looks for a
// literal piece of the pattern across the whole text at once, ignoring
// case, and checks only the lines where it occurs, as bytes; every line
// with a byte beyond ASCII gets the full check on its UTF-16 form, since
// Unicode's lower case can bring a character onto an ASCII one (KELVIN
// SIGN lowers to 'k').
//
//   LikeFilter("*k1*2").Filter("-K12\n-K13\nx\n", out)   // out += "-K12\n"
//
// Each line of the text, cut as SplitLines cuts it, is appended with "\n"
// when IsTextLike(FromUtf8(line), FromUtf8(pattern)) is 1.
#pragma once

#include <cadtools/compat/cstring.h>

#include <string>
#include <string_view>

namespace cadtools::cli {

class LikeFilter {
 public:
  explicit LikeFilter(std::string_view utf8Pattern);

  // Appends the matching lines of text to out, each followed by "\n".
  void Filter(std::string_view text, std::string& out) const;

 private:
  enum class Way {
    kEveryLine,   // the pattern is '*' only
    kEmptyLines,  // the pattern is empty
    kSearch,      // search the piece, check the lines it is in and those beyond ASCII
    kFullCheck,   // check every line on its UTF-16 form
  };

  bool FullCheck(std::string_view line) const;

  CString pattern_;
  Way way_ = Way::kFullCheck;
  bool asciiLines_ = false;   // whether a line of ASCII alone can match
  std::string asciiPattern_;  // the pattern lowered, when that is ASCII
  std::string piece_;         // part of a literal of asciiPattern_
};

}  // namespace cadtools::cli

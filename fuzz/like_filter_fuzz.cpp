// like's whole-text filter against IsTextLike line by line, on arbitrary
// patterns and texts: the whole-buffer searches, the ASCII matching and the
// cutting into lines must keep exactly the lines IsTextLike keeps.
//
// Input: the pattern up to the first '\n', then the text.
#include "like_filter.h"
#include "line_input.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/text_tools.h>

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t cut = std::min(input.find('\n'), input.size());
  const std::string_view pattern = input.substr(0, cut);
  const std::string_view text = input.substr(std::min(cut + 1, input.size()));

  std::string out;
  cadtools::cli::LikeFilter(pattern).Filter(text, out);
  const CString widePattern = cadtools::FromUtf8(pattern);
  std::string expected;
  for (const std::string_view line : cadtools::cli::SplitLines(text)) {
    if (CTextTools::IsTextLike(cadtools::FromUtf8(line), widePattern) != 0) (expected += line) += '\n';
  }
  if (out != expected) std::abort();
  return 0;
}

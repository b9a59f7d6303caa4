// The text of a .reg file from its bytes, as the registry editor reads it.
#include <cadtools/text/code_pages.h>

#include <algorithm>

#include "reg_text.h"
#include "text/code_page_conversion.h"

namespace cadtools::registry::detail {

namespace {

// MS-DOS ended text files with Ctrl-Z; old sample files still carry one.
constexpr WCHAR kDosEndOfFile = 0x1A;

std::size_t LineOf(std::string_view bytes, std::size_t offset) {
  const auto begin = bytes.begin();
  return static_cast<std::size_t>(std::count(begin, begin + static_cast<std::ptrdiff_t>(offset), '\n')) + 1;
}

}  // namespace

WString WidenNarrowText(std::string_view bytes) {
  WString wide;
  wide.reserve(bytes.size());
  if (AppendUtf8(bytes, wide) == std::string_view::npos) return wide;
  return codepage::MultiByteToWide(SystemAnsiCodePage(), bytes);
}

DecodedText DecodeRegText(std::string_view bytes) {
  DecodedText decoded;
  WString& text = decoded.text;
  if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE') {
    bytes.remove_prefix(2);
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
      text.push_back(
          static_cast<WCHAR>(static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    }
    if (bytes.size() % 2 != 0) {
      decoded.error_line = static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n')) + 1;
      decoded.error = "the file ends in the middle of a UTF-16 unit";
    }
  } else if (bytes.size() >= 2 && bytes[0] == '\xFE' && bytes[1] == '\xFF') {
    decoded.error_line = 1;
    decoded.error = "UTF-16 big-endian files are not supported: save as UTF-16LE or UTF-8";
  } else if (bytes.starts_with("\xEF\xBB\xBF")) {
    bytes.remove_prefix(3);
    text.reserve(bytes.size());
    const std::size_t bad = AppendUtf8(bytes, text);
    if (bad != std::string_view::npos) {
      decoded.error_line = LineOf(bytes, bad);
      decoded.error = "the file has a UTF-8 byte order mark but is not valid UTF-8";
    }
  } else {
    text = WidenNarrowText(bytes);
  }
  while (!text.empty() && text.back() == kDosEndOfFile) text.pop_back();
  return decoded;
}

}  // namespace cadtools::registry::detail

#include "line_input.h"

#include "errors.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <istream>

namespace cadtools::cli {
namespace {

constexpr std::size_t kFirstBlock = std::size_t{1} << 16;
constexpr std::size_t kLargestBlock = std::size_t{1} << 24;

// Appends what is left in the stream, `expected` bytes or any other count,
// and ends a last line that has no ending.
void AppendStream(std::istream& stream, std::size_t expected, std::string& text) {
  const std::size_t start = text.size();
  std::size_t block = std::clamp(expected + 1, kFirstBlock, kLargestBlock);
  text.reserve(start + expected + 1);
  while (stream) {
    const std::size_t at = text.size();
    text.resize(at + block);
    stream.read(text.data() + at, static_cast<std::streamsize>(block));
    text.resize(at + static_cast<std::size_t>(stream.gcount()));
    block = std::min(block * 2, kLargestBlock);
  }
  if (text.size() != start && text.back() != '\n') text.push_back('\n');
}

// The size of an open file, or 0 when it cannot tell.
std::size_t FileSize(std::ifstream& file) {
  const std::streamoff end = file.rdbuf()->pubseekoff(0, std::ios::end, std::ios::in);
  const std::streamoff begin = file.rdbuf()->pubseekoff(0, std::ios::beg, std::ios::in);
  return end > 0 && begin == 0 ? static_cast<std::size_t>(end) : 0;
}

// The position of the "\n" that ends the line holding text[at], or the
// text's size.
std::size_t EndOfLine(std::string_view text, std::size_t at) noexcept {
  const void* const found = std::memchr(text.data() + at, '\n', text.size() - at);
  return found == nullptr ? text.size() : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// text[begin, end) without the "\r" of a "\r\n" ending.
std::string_view WithoutEnding(std::string_view text, std::size_t begin, std::size_t end) noexcept {
  if (end > begin && text[end - 1] == '\r') --end;
  return text.substr(begin, end - begin);
}

}  // namespace

std::string ReadText(std::span<const std::string_view> files, std::istream& in) {
  std::string text;
  bool inRead = false;
  const auto read_in = [&] {
    if (inRead) return;
    inRead = true;
    AppendStream(in, 0, text);
    if (in.bad()) throw InputError("cannot read standard input");
  };
  if (files.empty()) read_in();
  for (const std::string_view name : files) {
    if (name == "-") {
      read_in();
      continue;
    }
    std::ifstream file{std::string(name), std::ios::binary};
    if (!file) throw InputError("cannot read " + std::string(name));
    AppendStream(file, FileSize(file), text);
    if (file.bad()) throw InputError("cannot read " + std::string(name));
  }
  return text;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); at = EndOfLine(text, at) + 1) ++count;
  std::vector<std::string_view> lines;
  lines.reserve(count);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = EndOfLine(text, at);
    lines.push_back(WithoutEnding(text, at, end));
    at = end + 1;
  }
  return lines;
}

LineSpan LineAt(std::string_view text, std::size_t at) noexcept {
  std::size_t begin = 0;
  if (at != 0) {
    const std::size_t newline = text.rfind('\n', at - 1);
    if (newline != std::string_view::npos) begin = newline + 1;
  }
  const std::size_t end = EndOfLine(text, at);
  return {WithoutEnding(text, begin, end), std::min(end + 1, text.size())};
}

}  // namespace cadtools::cli

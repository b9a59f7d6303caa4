// like's whole-text filter against IsTextLike line by line, and the pieces
// under it: lines and the buffer searches.
#include "ascii_search.h"
#include "like_filter.h"
#include "line_input.h"
#include "text/random_tags.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

TEST(Lines, EndAtNewlinesWithOrWithoutReturns) {
  const struct {
    std::string text;
    std::vector<std::string_view> lines;
  } cases[] = {
      {"", {}},           {"a", {"a"}}, {"a\n", {"a"}}, {"\n", {""}}, {"a\r\n\r\nb\r", {"a", "", "b"}},
      {"a\r\r\n", {"a\r"}}, {"\ra\rb", {"\ra\rb"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SplitLines(c.text), c.lines) << c.text;
    for (std::size_t at = 0; at < c.text.size(); ++at) {
      const LineSpan span = LineAt(c.text, at);
      EXPECT_EQ(span.next == c.text.size() || c.text[span.next - 1] == '\n', true) << c.text << " at " << at;
    }
  }
  // Standard input is read once; each source's last line is ended.
  std::istringstream in("x\r\ny");
  const std::string_view twice[] = {"-", "-"};
  EXPECT_EQ(ReadText(twice, in), "x\r\ny\n");
}

TEST(AsciiSearch, FindsWhatALoopFinds) {
  std::mt19937 rng(3);
  const std::string alphabet = "aAbB\n\x80k";
  for (int i = 0; i < 3000; ++i) {
    std::string text(rng() % 80, ' ');
    for (char& c : text) c = alphabet[rng() % alphabet.size()];
    std::string needle(1 + rng() % 4, ' ');
    for (char& c : needle) c = "abk"[rng() % 3];
    const std::size_t from = rng() % (text.size() + 1);
    std::size_t expected = from;
    while (expected + needle.size() <= text.size() &&
           !std::equal(needle.begin(), needle.end(), text.begin() + static_cast<std::ptrdiff_t>(expected),
                       [](char n, char t) { return n == (t >= 'A' && t <= 'Z' ? t + 32 : t); })) {
      ++expected;
    }
    if (expected + needle.size() > text.size()) expected = text.size();
    ASSERT_EQ(FindAsciiFolded(text, needle, from), expected) << text << " / " << needle << " from " << from;
    ASSERT_EQ(FindNonAscii(text, from), std::min(text.find('\x80', from), text.size()));
  }
}

std::string LikeReference(std::string_view text, std::string_view pattern) {
  const CString p = FromUtf8(pattern);
  std::string out;
  for (const std::string_view line : SplitLines(text)) {
    if (CTextTools::IsTextLike(FromUtf8(line), p) != 0) (out += line) += '\n';
  }
  return out;
}

TEST(LikeFilter, MatchesIsTextLikeLineByLine) {
  static const char* const kPatternPieces[] = {
      "*", "*", "**", "k", "K", "1", "2", "-", ":", ".", "plc", "x", "\xE2\x84\xAA", "\xC3\x9C", "\xC4\xB0", "i",
      "s", "\xC5\xBF", "\r", "\n", "?", "b", "abababababababababab",
      "\xC5\x81"};  // Ł lowers to U+0142, whose low byte is 'B'

  std::mt19937 rng(5);
  for (int round = 0; round < 3000; ++round) {
    std::string pattern;
    for (std::size_t n = rng() % 5; n > 0; --n) pattern += kPatternPieces[rng() % std::size(kPatternPieces)];
    std::string text;
    for (std::size_t n = rng() % 40; n > 0; --n) {
      // Some long ASCII lines, so that the search runs whole blocks.
      std::string line =
          rng() % 6 == 0 ? std::string(rng() % 70, 'a') + "abababababababababab-K12" : test::RandomTag(rng);
      if (rng() % 4 == 0) line += kPatternPieces[rng() % std::size(kPatternPieces)];
      text += line + (rng() % 5 == 0 ? "\r\n" : "\n");
    }
    if (rng() % 3 == 0) text += test::RandomTag(rng);  // a last line without an ending
    std::string out;
    LikeFilter(pattern).Filter(text, out);
    ASSERT_EQ(out, LikeReference(text, pattern)) << "pattern '" << pattern << "'";
  }
}

}  // namespace
}  // namespace cadtools::cli

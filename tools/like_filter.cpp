#include "like_filter.h"

#include "ascii_search.h"
#include "line_input.h"
#include "text/text_like_ascii.h"

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <algorithm>

namespace cadtools::cli {
namespace {

// Longer pieces are cut to this length, which keeps the search linear.
constexpr std::size_t kPieceMax = 16;

void Append(std::string& out, std::string_view line) {
  out.append(line);
  out.push_back('\n');
}

}  // namespace

LikeFilter::LikeFilter(std::string_view utf8Pattern) : pattern_(FromUtf8(utf8Pattern)) {
  const WStringView p = pattern_.View();
  if (p.empty()) {
    way_ = Way::kEmptyLines;
    return;
  }
  if (p.find_first_not_of(u'*') == WStringView::npos) {
    way_ = Way::kEveryLine;
    return;
  }
  // On an ASCII line the pattern lowered means what the pattern means, when
  // lowering keeps the stars where they are and changes nothing the second
  // time (both hold for Unicode's mappings; checked, not assumed).
  bool lowersToAscii = true;
  for (const WCHAR unit : p) {
    const WCHAR lowered = ToLowerUnit(unit);
    if ((lowered == u'*') != (unit == u'*') || ToLowerUnit(lowered) != lowered) return;  // kFullCheck
    if (lowered >= 0x80) lowersToAscii = false;
    asciiPattern_.push_back(static_cast<char>(lowered));
  }
  way_ = Way::kSearch;
  // A literal unit that lowers beyond ASCII meets no unit of an ASCII line.
  asciiLines_ = lowersToAscii;
  if (!asciiLines_) return;
  std::string_view longest;
  for (std::size_t i = 0; i < asciiPattern_.size();) {
    const std::size_t end = std::min(asciiPattern_.find('*', i), asciiPattern_.size());
    if (end - i > longest.size()) longest = std::string_view(asciiPattern_).substr(i, end - i);
    i = end + 1;
  }
  piece_ = longest.substr(0, kPieceMax);
}

bool LikeFilter::FullCheck(std::string_view line) const {
  return CTextTools::IsTextLike(FromUtf8(line), pattern_) != 0;
}

void LikeFilter::Filter(std::string_view text, std::string& out) const {
  if (way_ != Way::kSearch) {
    for (const std::string_view line : SplitLines(text)) {
      const bool keep = way_ == Way::kEveryLine || (way_ == Way::kEmptyLines ? line.empty() : FullCheck(line));
      if (keep) Append(out, line);
    }
    return;
  }
  // Only lines with the piece or with a byte beyond ASCII can match; the
  // next of each is known from `at` on.
  const std::size_t size = text.size();
  std::size_t nextHigh = FindNonAscii(text, 0);
  std::size_t nextPiece = asciiLines_ ? FindAsciiFolded(text, piece_, 0) : size;
  for (;;) {
    const std::size_t hit = std::min(nextHigh, nextPiece);
    if (hit >= size) break;
    const LineSpan line = LineAt(text, hit);
    const bool high = nextHigh < line.next;
    if (high ? FullCheck(line.text) : text::IsAsciiTextLike(line.text, asciiPattern_)) Append(out, line.text);
    if (nextHigh < line.next) nextHigh = FindNonAscii(text, line.next);
    if (nextPiece < line.next) nextPiece = FindAsciiFolded(text, piece_, line.next);
  }
}

}  // namespace cadtools::cli

// Cutting bracketed segments out of a text.
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstddef>

#include "text/unit_views.h"

namespace cadtools {

using editing::kNotFound;

namespace {

// The working text of TrimStringBySeparatorEx as a gap buffer: the text is
// buf_[0, gap_) followed by buf_[tail_, end). Removing a segment moves the
// gap to it, so a round costs the units it passes over, not the length of
// the text.
class GapText {
 public:
  explicit GapText(WStringView text) : buf_(text), gap_(0), tail_(0) {}

  std::size_t size() const noexcept { return gap_ + (buf_.size() - tail_); }

  // First occurrence of pattern (not empty) at or after from, or kNotFound.
  std::size_t Find(WStringView pattern, std::size_t from) const {
    // Occurrences that start before the gap are checked unit by unit;
    // callers keep `from` within a pattern's length of the gap.
    for (std::size_t i = from; i < gap_; ++i) {
      if (MatchesAt(pattern, i)) return i;
    }
    const std::size_t skip = from > gap_ ? from - gap_ : 0;
    const std::size_t hit = Tail().find(pattern, skip);
    return hit == kNotFound ? kNotFound : gap_ + hit;
  }

  // Removes the units [first, last).
  void Erase(std::size_t first, std::size_t last) {
    MoveGapTo(first);
    tail_ += last - first;
  }

  WString Take() && {
    buf_.erase(gap_, tail_ - gap_);
    return std::move(buf_);
  }

 private:
  WStringView Tail() const noexcept { return WStringView(buf_).substr(tail_); }

  WCHAR At(std::size_t i) const noexcept { return i < gap_ ? buf_[i] : buf_[tail_ + (i - gap_)]; }

  bool MatchesAt(WStringView pattern, std::size_t i) const noexcept {
    if (pattern.size() > size() - i) return false;
    for (std::size_t k = 0; k < pattern.size(); ++k) {
      if (At(i + k) != pattern[k]) return false;
    }
    return true;
  }

  void MoveGapTo(std::size_t pos) {
    if (pos < gap_) {
      const std::size_t n = gap_ - pos;
      std::copy_backward(buf_.begin() + static_cast<std::ptrdiff_t>(pos),
                         buf_.begin() + static_cast<std::ptrdiff_t>(gap_),
                         buf_.begin() + static_cast<std::ptrdiff_t>(tail_));
      gap_ -= n;
      tail_ -= n;
    } else if (pos > gap_) {
      const std::size_t n = pos - gap_;
      std::copy_n(buf_.begin() + static_cast<std::ptrdiff_t>(tail_), n,
                  buf_.begin() + static_cast<std::ptrdiff_t>(gap_));
      gap_ += n;
      tail_ += n;
    }
  }

  WString buf_;
  std::size_t gap_;
  std::size_t tail_;
};

}  // namespace

CString TextEditing::TrimStringBySeparator(CString str, CString open, CString close) {
  if (open.IsEmpty() || close.IsEmpty()) return str;
  const WStringView s = str.View();
  const std::size_t p = s.find(open.View());
  if (p == kNotFound || s.find(close.View(), p + 1) == kNotFound) return str;
  return str.Left(static_cast<int>(p));
}

CString TextEditing::TrimStringBySeparatorEx(CString str, CString open, CString close) {
  if (open.IsEmpty() || close.IsEmpty()) return str;
  const WStringView o = open.View();
  const WStringView c = close.View();
  GapText text(str.View());
  std::size_t from = 0;
  for (;;) {
    const std::size_t p = text.Find(o, from);
    if (p == kNotFound) break;
    const std::size_t q = text.Find(c, p + 1);
    if (q == kNotFound) break;
    // Only the first unit of the close goes with the segment; the rest of
    // a longer close stays in the text.
    text.Erase(p, q + 1);
    // The units before p held no open, so the next one can start at most
    // a unit short of an open's length before p, across the cut.
    from = p >= o.size() ? p - o.size() + 1 : 0;
  }
  return editing::ToCString(std::move(text).Take());
}

}  // namespace cadtools

#include "text/folded_search.h"

#include <algorithm>

namespace cadtools::text {

namespace {

using Index = std::ptrdiff_t;

constexpr bool IsAsciiUnit(WCHAR ch) noexcept { return ch < 0x80; }

// Needles up to this length are searched directly: at most this many unit
// comparisons per text position, and no set-up.
constexpr std::size_t kDirectSearchMax = 16;

// The lowered units of a string.
class Folded {
 public:
  explicit Folded(const WCHAR* s) noexcept : s_(s) {}
  WCHAR operator[](Index i) const noexcept { return ToLowerUnit(s_[i]); }

 private:
  const WCHAR* s_;
};

std::size_t FindDirect(WStringView text, WStringView needle, std::size_t from) noexcept {
  // A text unit can stand for the needle's first unit when it lowers to it:
  // for an ASCII first unit that is itself, its capital and a few units
  // beyond ASCII (KELVIN SIGN lowers to 'k'); ASCII units lower to ASCII.
  const WCHAR first = ToLowerUnit(needle.front());
  const WCHAR firstCapital = IsAsciiUnit(first) ? ToUpperUnit(first) : first;
  const WStringView rest = needle.substr(1);
  const std::size_t last = text.size() - needle.size();
  for (std::size_t at = from; at <= last; ++at) {
    const WCHAR unit = text[at];
    if ((unit == first || unit == firstCapital || (!IsAsciiUnit(unit) && ToLowerUnit(unit) == first)) &&
        EqualFolded(text.substr(at + 1, rest.size()), rest)) {
      return at;
    }
  }
  return WStringView::npos;
}

// Start of the maximal suffix of x[0, m) under the unit order (or the
// reversed order) minus one, and that suffix's period.
Index MaximalSuffix(Folded x, Index m, bool reversedOrder, Index& period) noexcept {
  Index start = -1;
  Index j = 0;
  Index k = 1;
  period = 1;
  while (j + k < m) {
    const WCHAR a = x[j + k];
    const WCHAR b = x[start + k];
    if (a == b) {
      if (k == period) {
        j += period;
        k = 1;
      } else {
        ++k;
      }
    } else if ((a < b) != reversedOrder) {
      j += k;
      k = 1;
      period = j - start;
    } else {
      start = j;
      j = start + 1;
      k = 1;
      period = 1;
    }
  }
  return start;
}

// Crochemore and Perrin's two-way search: the needle x[0, m) is cut at a
// critical factorisation x = u v; the right part is matched forwards and
// then the left part backwards, and a mismatch shifts by an amount that
// never skips an occurrence. Linear time, constant space.
Index FindTwoWay(Folded x, Index m, Folded y, Index n) noexcept {
  Index periodLess = 0;
  Index periodGreater = 0;
  const Index cutLess = MaximalSuffix(x, m, false, periodLess);
  const Index cutGreater = MaximalSuffix(x, m, true, periodGreater);
  const Index cut = std::max(cutLess, cutGreater);  // the last unit of u
  Index period = cutLess > cutGreater ? periodLess : periodGreater;

  bool periodic = true;  // x has the period of v: u repeats at `period`
  for (Index i = 0; i <= cut && periodic; ++i) periodic = x[i] == x[i + period];

  if (periodic) {
    Index memory = -1;  // units of x already known to match after a shift by period
    for (Index j = 0; j <= n - m;) {
      Index i = std::max(cut, memory) + 1;
      while (i < m && x[i] == y[i + j]) ++i;
      if (i < m) {
        j += i - cut;
        memory = -1;
        continue;
      }
      i = cut;
      while (i > memory && x[i] == y[i + j]) --i;
      if (i <= memory) return j;
      j += period;
      memory = m - period - 1;
    }
    return -1;
  }

  period = std::max(cut + 1, m - cut - 1) + 1;
  for (Index j = 0; j <= n - m;) {
    Index i = cut + 1;
    while (i < m && x[i] == y[i + j]) ++i;
    if (i < m) {
      j += i - cut;
      continue;
    }
    i = cut;
    while (i >= 0 && x[i] == y[i + j]) --i;
    if (i < 0) return j;
    j += period;
  }
  return -1;
}

}  // namespace

std::size_t FindFolded(WStringView text, WStringView needle, std::size_t from) noexcept {
  if (from > text.size() || text.size() - from < needle.size()) return WStringView::npos;
  if (needle.empty()) return from;
  if (needle.size() <= kDirectSearchMax) return FindDirect(text, needle, from);
  const Index found = FindTwoWay(Folded(needle.data()), static_cast<Index>(needle.size()),
                                 Folded(text.data() + from), static_cast<Index>(text.size() - from));
  return found < 0 ? WStringView::npos : from + static_cast<std::size_t>(found);
}

}  // namespace cadtools::text

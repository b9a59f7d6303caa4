#include "text/folded_search.h"

#include <algorithm>
#include <type_traits>

namespace cadtools::text {

namespace {

using Index = std::ptrdiff_t;

template <class Char>
constexpr bool IsAsciiUnit(Char ch) noexcept {
  return static_cast<std::make_unsigned_t<Char>>(ch) < 0x80;
}

inline WCHAR Capital(WCHAR ch) noexcept { return ToUpperUnit(ch); }
inline char Capital(char ch) noexcept { return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 32) : ch; }

// Needles up to this length are searched directly: at most this many unit
// comparisons per text position, and no set-up.
constexpr std::size_t kDirectSearchMax = 16;

// The lowered units of a string.
template <class Char>
class Folded {
 public:
  explicit Folded(const Char* s) noexcept : s_(s) {}
  Char operator[](Index i) const noexcept { return Lowered(s_[i]); }

 private:
  const Char* s_;
};

template <class Char>
std::size_t FindDirect(std::basic_string_view<Char> text, std::basic_string_view<Char> needle,
                       std::size_t from) noexcept {
  // A text unit can stand for the needle's first unit when it lowers to it:
  // for an ASCII first unit that is itself, its capital and a few units
  // beyond ASCII (KELVIN SIGN lowers to 'k'); ASCII units lower to ASCII.
  const Char first = Lowered(needle.front());
  const Char firstCapital = IsAsciiUnit(first) ? Capital(first) : first;
  const std::basic_string_view<Char> rest = needle.substr(1);
  const std::size_t last = text.size() - needle.size();
  for (std::size_t at = from; at <= last; ++at) {
    const Char unit = text[at];
    if ((unit == first || unit == firstCapital || (!IsAsciiUnit(unit) && Lowered(unit) == first)) &&
        EqualFolded(text.substr(at + 1, rest.size()), rest)) {
      return at;
    }
  }
  return std::basic_string_view<Char>::npos;
}

// Start of the maximal suffix of x[0, m) under the unit order (or the
// reversed order) minus one, and that suffix's period.
template <class Char>
Index MaximalSuffix(Folded<Char> x, Index m, bool reversedOrder, Index& period) noexcept {
  Index start = -1;
  Index j = 0;
  Index k = 1;
  period = 1;
  while (j + k < m) {
    const Char a = x[j + k];
    const Char b = x[start + k];
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
template <class Char>
Index FindTwoWay(Folded<Char> x, Index m, Folded<Char> y, Index n) noexcept {
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

template <class Char>
std::size_t Find(std::basic_string_view<Char> text, std::basic_string_view<Char> needle, std::size_t from) noexcept {
  constexpr std::size_t kNone = std::basic_string_view<Char>::npos;
  if (from > text.size() || text.size() - from < needle.size()) return kNone;
  if (needle.empty()) return from;
  if (needle.size() <= kDirectSearchMax) return FindDirect(text, needle, from);
  const Index found = FindTwoWay(Folded<Char>(needle.data()), static_cast<Index>(needle.size()),
                                 Folded<Char>(text.data() + from), static_cast<Index>(text.size() - from));
  return found < 0 ? kNone : from + static_cast<std::size_t>(found);
}

}  // namespace

std::size_t FindFolded(WStringView text, WStringView needle, std::size_t from) noexcept {
  return Find(text, needle, from);
}

std::size_t FindFolded(std::string_view text, std::string_view needle, std::size_t from) noexcept {
  return Find(text, needle, from);
}

}  // namespace cadtools::text

// NaturalCompare, CompareRight and CompareLeft.
#include <cadtools/text/natural_names.h>

#include <cadtools/compat/wide_ctype.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace cadtools {

namespace {

constexpr WCHAR kEmpty[] = {0};

const WCHAR* OrEmpty(const WCHAR* s) noexcept { return s == nullptr ? kEmpty : s; }

int Sign(WCHAR a, WCHAR b) noexcept { return a < b ? -1 : 1; }

// Per ASCII unit: its capital when no rule of the comparison applies to it,
// or kOwnRule for white space, digits and the terminator. The same answers
// as IsWideSpace, IsWideDigit and ToUpperUnit, in one look-up.
constexpr std::uint16_t kOwnRule = 0x8000;
constexpr std::array<std::uint16_t, 128> kAsciiCapitals = [] {
  std::array<std::uint16_t, 128> table{};
  for (std::uint16_t c = 0; c < 128; ++c) {
    const bool ownRule = c == 0 || c == ' ' || (c >= 9 && c <= 13) || (c >= '0' && c <= '9');
    table[c] = ownRule ? kOwnRule : c >= 'a' && c <= 'z' ? static_cast<std::uint16_t>(c - 32) : c;
  }
  return table;
}();

// The outcome of comparing two digit runs, and how far the walk went: when
// the result is 0 both runs are `length` units long.
struct RunOrder {
  int result;
  std::size_t length;
};

// Runs read as integers: a longer run is larger; between runs of the same
// length the first differing digit decides.
RunOrder CompareRuns(const WCHAR* a, const WCHAR* b) noexcept {
  int bias = 0;
  for (std::size_t i = 0;; ++i) {
    const bool digitA = IsWideDigit(a[i]);
    const bool digitB = IsWideDigit(b[i]);
    if (!digitA && !digitB) return {bias, i};
    if (!digitA) return {-1, i};
    if (!digitB) return {1, i};
    if (bias == 0 && a[i] != b[i]) bias = Sign(a[i], b[i]);
  }
}

// Runs read as fractions (after a leading zero): digit by digit, a run that
// ends first is smaller.
RunOrder CompareFractionRuns(const WCHAR* a, const WCHAR* b) noexcept {
  for (std::size_t i = 0;; ++i) {
    const bool digitA = IsWideDigit(a[i]);
    const bool digitB = IsWideDigit(b[i]);
    if (!digitA && !digitB) return {0, i};
    if (!digitA) return {-1, i};
    if (!digitB) return {1, i};
    if (a[i] != b[i]) return {Sign(a[i], b[i]), i};
  }
}

// What CompareRuns (or CompareFractionRuns, for a run that began with '0')
// gives for the rest of two runs whose shared digits ended right before a
// and b, where *a != *b: the same walk, with its first step taken apart.
int DecideInsideRuns(const WCHAR* a, const WCHAR* b, bool fraction) noexcept {
  bool digitA = IsWideDigit(*a);
  bool digitB = IsWideDigit(*b);
  if (digitA != digitB) return digitA ? 1 : -1;
  if (!digitA) return 0;  // both runs end here, equal
  const int bias = Sign(*a, *b);
  if (fraction) return bias;
  do {
    digitA = IsWideDigit(*++a);
    digitB = IsWideDigit(*++b);
  } while (digitA && digitB);
  return digitA == digitB ? bias : digitA ? 1 : -1;
}

const WCHAR* SkipSpace(const WCHAR* s) noexcept {
  while (IsWideSpace(*s)) ++s;
  return s;
}

}  // namespace

int NaturalNames::CompareRight(const WCHAR* a, const WCHAR* b) noexcept {
  return CompareRuns(OrEmpty(a), OrEmpty(b)).result;
}

int NaturalNames::CompareLeft(const WCHAR* a, const WCHAR* b) noexcept {
  return CompareFractionRuns(OrEmpty(a), OrEmpty(b)).result;
}

int NaturalNames::NaturalCompare(const WCHAR* a, const WCHAR* b) noexcept {
  a = OrEmpty(a);
  b = OrEmpty(b);
  for (;;) {
    // Units the names share (long stretches in a sorted list of tags)
    // compare equal under every rule, so they are only walked.
    const WCHAR* const shared = a;
    for (;;) {  // two units a turn; a[1] is there once a[0] is no terminator
      if (a[0] != b[0] || a[0] == 0) break;
      if (a[1] != b[1] || a[1] == 0) {
        ++a;
        ++b;
        break;
      }
      a += 2;
      b += 2;
    }
    if (*a == *b) return 0;
    // A difference right after shared digits lies inside a digit run that
    // both names opened at once: no run is open where the walk starts. The
    // shared digits left the comparison undecided, so the rest of the runs
    // decides it, the way the run's first digit picks. When both runs end
    // here instead, they were equal and the names go on.
    if (a != shared && IsWideDigit(a[-1])) {
      const WCHAR* run = a - 1;
      while (run != shared && IsWideDigit(run[-1])) --run;
      const int order = DecideInsideRuns(a, b, *run == u'0');
      if (order != 0) return order;
    }
    // Two ASCII units without a rule of their own decide by their capitals.
    if (*a < 0x80 && *b < 0x80) {
      const std::uint16_t capitalA = kAsciiCapitals[static_cast<std::size_t>(*a)];
      const std::uint16_t capitalB = kAsciiCapitals[static_cast<std::size_t>(*b)];
      if ((capitalA | capitalB) < kOwnRule) {
        if (capitalA != capitalB) return capitalA < capitalB ? -1 : 1;
        ++a;
        ++b;
        continue;
      }
    }
    a = SkipSpace(a);
    b = SkipSpace(b);
    const WCHAR ca = *a;
    const WCHAR cb = *b;
    if (IsWideDigit(ca) && IsWideDigit(cb)) {
      const RunOrder order = ca == u'0' || cb == u'0' ? CompareFractionRuns(a, b) : CompareRuns(a, b);
      if (order.result != 0) return order.result;
      // Both walks return 0 only when the runs have the same length and no
      // digit differs, so the runs are the same units. Going on unit by
      // unit would compare every suffix of them again (each also 0, each
      // unit also equal) and arrive at the same place; jumping there keeps
      // the result and spares quadratic time on long equal runs.
      a += order.length;
      b += order.length;
      continue;
    }
    if (ca == 0 && cb == 0) return 0;
    const WCHAR ua = ToUpperUnit(ca);
    const WCHAR ub = ToUpperUnit(cb);
    if (ua != ub) return Sign(ua, ub);
    ++a;
    ++b;
  }
}

}  // namespace cadtools

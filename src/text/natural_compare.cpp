// NaturalCompare, CompareRight and CompareLeft.
#include <cadtools/text/natural_names.h>

#include "text/unit_classes.h"

#include <cstddef>

namespace cadtools {

namespace {

constexpr WCHAR kEmpty[] = {0};

const WCHAR* OrEmpty(const WCHAR* s) noexcept { return s == nullptr ? kEmpty : s; }

int Sign(WCHAR a, WCHAR b) noexcept { return a < b ? -1 : 1; }

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
    const bool digitA = text::IsDigitUnit(a[i]);
    const bool digitB = text::IsDigitUnit(b[i]);
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
    const bool digitA = text::IsDigitUnit(a[i]);
    const bool digitB = text::IsDigitUnit(b[i]);
    if (!digitA && !digitB) return {0, i};
    if (!digitA) return {-1, i};
    if (!digitB) return {1, i};
    if (a[i] != b[i]) return {Sign(a[i], b[i]), i};
  }
}

const WCHAR* SkipSpace(const WCHAR* s) noexcept {
  while (text::IsSpaceUnit(*s)) ++s;
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
    // Names that share a prefix (the usual case in a sorted list of tags)
    // pass it here without the full per-unit rules, which would only
    // advance both sides over such units.
    while (*a == *b && text::IsPlainAscii(*a)) {
      ++a;
      ++b;
    }
    a = SkipSpace(a);
    b = SkipSpace(b);
    const WCHAR ca = *a;
    const WCHAR cb = *b;
    if (text::IsDigitUnit(ca) && text::IsDigitUnit(cb)) {
      const RunOrder order = ca == u'0' || cb == u'0' ? CompareFractionRuns(a, b) : CompareRuns(a, b);
      if (order.result != 0) return order.result;
      // Both walks return 0 only when the runs have the same length and no
      // digit differs, so the runs are the same units. Going on unit by
      // unit would compare every suffix of them again (also 0, also equal
      // units) and arrive at the same place; jumping there keeps the
      // result and spares quadratic time on long equal runs.
      a += order.length;
      b += order.length;
      continue;
    }
    if (ca == 0 && cb == 0) return 0;
    const WCHAR ua = text::UpperUnit(ca);
    const WCHAR ub = text::UpperUnit(cb);
    if (ua != ub) return Sign(ua, ub);
    ++a;
    ++b;
  }
}

}  // namespace cadtools

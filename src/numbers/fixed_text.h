// The host's "format with %.Nf and read back with wcstod" round trip,
// without locale, streams or allocation.
//
//   RoundThroughFixedText(0.0762, 2)      // 0.08
//   RoundThroughFixedText(3.175, 2)       // 3.17 (3.175 is just below)
//   RoundThroughFixedText(0.013858, 5)    // 0.01386
#pragma once

#include <array>
#include <charconv>
#include <cmath>

namespace cadtools::detail {

// v formatted in fixed notation with `decimals` digits after the point and
// parsed back: both steps correctly rounded, so the result is the double
// nearest to the decimal text printf would write. NaN and infinities are
// returned unchanged.
inline double RoundThroughFixedText(double v, int decimals) noexcept {
  if (!std::isfinite(v)) return v;
  // The longest text: a sign, the 309 integer digits of DBL_MAX, the point
  // and the decimals (at most 5 here).
  std::array<char, 400> buf;
  const auto written = std::to_chars(buf.data(), buf.data() + buf.size(), v, std::chars_format::fixed, decimals);
  double parsed = v;
  std::from_chars(buf.data(), written.ptr, parsed, std::chars_format::fixed);
  return parsed;
}

}  // namespace cadtools::detail

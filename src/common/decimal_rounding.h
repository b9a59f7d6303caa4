// The library's shared decimal rounding, and exact powers of ten.
//
// DecimalRound(v, n) multiplies by 10^n, splits the product into integer
// part i and fraction r (both with the product's sign), moves i one step
// away from zero when |r| >= 0.5 -- upward only when i > 0, downward
// otherwise -- and divides by 10^n. Stored drawings and the host's snapping
// depend on the asymmetry this gives for a positive product below 1:
//
//   DecimalRound(0.7, 0)   // -1.0, not 1.0
//   DecimalRound(1.26, 1)  // 1.3
//   DecimalRound(-2.5, 0)  // -3.0
#pragma once

#include <cstdint>

namespace cadtools::detail {

// 10^n, correctly rounded, for n in [0, 308]; +infinity above.
double Pow10(std::uint32_t n) noexcept;

// The factor the host uses for a count of decimals: the count, taken as an
// unsigned 32-bit number, is narrowed to single precision before the power
// is taken. A negative count is therefore huge and the factor infinite.
double DecimalFactor(std::uint32_t decimals) noexcept;

// Rounds v with the factor f (normally DecimalFactor(n)). Never undefined:
// an infinite factor or value gives NaN or infinity.
double DecimalRound(double v, double f) noexcept;

}  // namespace cadtools::detail

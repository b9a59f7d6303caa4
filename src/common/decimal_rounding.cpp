#include "common/decimal_rounding.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace cadtools::detail {

namespace {

constexpr std::uint32_t kMaxExponent = 308;

// Parsing "1eN" is correctly rounded on every target, unlike pow(), whose
// last bit may differ between run-time libraries.
std::array<double, kMaxExponent + 1> MakePowersOfTen() noexcept {
  std::array<double, kMaxExponent + 1> table{};
  for (std::uint32_t n = 0; n <= kMaxExponent; ++n) {
    const std::string text = "1e" + std::to_string(n);
    std::from_chars(text.data(), text.data() + text.size(), table[n]);
  }
  return table;
}

}  // namespace

double Pow10(std::uint32_t n) noexcept {
  static const std::array<double, kMaxExponent + 1> table = MakePowersOfTen();
  return n <= kMaxExponent ? table[n] : std::numeric_limits<double>::infinity();
}

double DecimalFactor(std::uint32_t decimals) noexcept {
  // Every float is an integer above 2^24, so the narrowed count is still
  // an integer; it only loses low bits, which cannot matter past 308.
  const float narrowed = static_cast<float>(decimals);
  if (narrowed > static_cast<float>(kMaxExponent)) {
    return std::numeric_limits<double>::infinity();
  }
  return Pow10(static_cast<std::uint32_t>(narrowed));
}

double DecimalRound(double v, double f) noexcept {
  const double product = v * f;
  double whole = 0.0;
  const double fraction = std::modf(product, &whole);
  if (std::fabs(fraction) >= 0.5) {
    whole = whole > 0.0 ? whole + 1.0 : whole - 1.0;
  }
  return whole / f;
}

}  // namespace cadtools::detail

// Millimetres and inches, snapping to the usual drawing sizes, and the
// host's decimal rounding.
#include <cadtools/numbers/number_tools.h>

#include "common/decimal_rounding.h"
#include "common/float_narrow.h"
#include "numbers/fixed_text.h"
#include "numbers/snap_table.h"

#include <cmath>

namespace cadtools {

namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kSquareMmPerSquareInch = 645.16;

// Decimals of the round trip: a snapped inch value, a computed one, and
// every millimetre value.
constexpr int kSnappedInchDecimals = 3;
constexpr int kComputedInchDecimals = 5;
constexpr int kMmDecimals = 2;

bool Matches(double key, double v) noexcept { return std::fabs(key - v) < detail::kSnapTolerance; }

// The difference taken in single precision, compared in double.
bool Matches(float key, float v) noexcept {
  const float difference = key - v;
  return std::fabs(static_cast<double>(difference)) < detail::kSnapTolerance;
}

}  // namespace

double NumberTools::MM2Inch(double mm) noexcept { return mm / kMmPerInch; }

double NumberTools::Inch2MM(double inch) noexcept { return inch * kMmPerInch; }

double NumberTools::MM2Inchx2(double mm2) noexcept { return mm2 / kSquareMmPerSquareInch; }

double NumberTools::MM2InchRound(double mm) noexcept {
  for (const detail::SnapPair& pair : detail::kSnapTable) {
    if (Matches(pair.mm, mm)) return detail::RoundThroughFixedText(pair.inch, kSnappedInchDecimals);
  }
  return detail::RoundThroughFixedText(mm / kMmPerInch, kComputedInchDecimals);
}

float NumberTools::MM2InchRound(float mm) noexcept {
  for (const detail::SnapPair& pair : detail::kSnapTable) {
    if (Matches(static_cast<float>(pair.mm), mm)) {
      // printf receives the float promoted to double.
      const double inch = static_cast<double>(static_cast<float>(pair.inch));
      return detail::NarrowToFloat(detail::RoundThroughFixedText(inch, kSnappedInchDecimals));
    }
  }
  return detail::NarrowToFloat(
      detail::RoundThroughFixedText(static_cast<double>(mm) / kMmPerInch, kComputedInchDecimals));
}

double NumberTools::Inch2MMRound(double inch) noexcept {
  double mm = inch * kMmPerInch;
  for (const detail::InchKey& key : detail::kInchKeys) {
    if (Matches(key.inch, inch)) {
      mm = key.mm;
      break;
    }
  }
  return detail::RoundThroughFixedText(mm, kMmDecimals);
}

float NumberTools::Inch2MMRound(float inch) noexcept {
  double mm = static_cast<double>(inch) * kMmPerInch;
  for (const detail::InchKey& key : detail::kInchKeys) {
    if (Matches(static_cast<float>(key.inch), inch)) {
      mm = static_cast<double>(static_cast<float>(key.mm));
      break;
    }
  }
  return detail::NarrowToFloat(detail::RoundThroughFixedText(mm, kMmDecimals));
}

double NumberTools::RoundDouble(double value, UINT decimals) noexcept {
  // DecimalFactor passes the count through single precision as the host
  // does; DecimalRound carries out steps 2 to 4 exactly (the test on the
  // integer part, not on the product).
  return detail::DecimalRound(value, detail::DecimalFactor(decimals));
}

}  // namespace cadtools

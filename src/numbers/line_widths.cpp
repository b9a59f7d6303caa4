// Line widths: the host's index-to-width lookup holds no entries, so every
// index has the width 0 in every unit. The steps are kept so that the
// results are the host's formulas applied to that width.
#include <cadtools/numbers/number_tools.h>

namespace cadtools {

namespace {

// The lookup: no entries, so every index and unit give 0.
constexpr double WidthOf(UINT /*index*/, int /*unit*/) noexcept { return 0.0; }

constexpr int Thousandths(double width) noexcept { return static_cast<int>(width * 1000.0 + 0.5); }

// The unit the string form is computed in (the host's default).
constexpr int kStringUnit = 0;

}  // namespace

int NumberTools::GetLineWidth(UINT index, int unit) noexcept { return Thousandths(WidthOf(index, unit)); }

double NumberTools::GetLineWidthAsFloat(UINT index, int unit) noexcept { return WidthOf(index, unit); }

CString NumberTools::GetLineWidthAsString(UINT index, int asDecimal, int threeDecimals) {
  const double width = WidthOf(index, kStringUnit);
  CString text;
  if (asDecimal == 0) {
    text.Format(CADTOOLS_WIDE("%d"), Thousandths(width));
  } else {
    text.Format(threeDecimals != 0 ? CADTOOLS_WIDE("%.3f") : CADTOOLS_WIDE("%.2f"), width);
  }
  return text;
}

}  // namespace cadtools

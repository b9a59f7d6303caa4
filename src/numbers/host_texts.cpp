// The host's texts, the formatting through them, and cutting a unit
// suffix from a text.
#include <cadtools/numbers/number_tools.h>

#include "numbers/host_format.h"

namespace cadtools {

CString NumberTools::m_strCadMes_031;
CString NumberTools::m_strCadMes_036;
CString NumberTools::m_strCadMes_037;
CString NumberTools::m_strCadMes_113;
CString NumberTools::m_strCadMes_114;
CString NumberTools::m_strCadMes_115;

namespace {

// The numbers formatted through the host's text, or "" when the text does
// not fit them (detail::IsFloatFormat).
template <class... Numbers>
CString FormatThrough(const CString& host_text, Numbers... numbers) {
  CString result;
  if (detail::IsFloatFormat(detail::HostFormatText(host_text), static_cast<int>(sizeof...(Numbers)))) {
    // GetString() stops at the first NUL, as the validated text does.
    result.Format(host_text.GetString(), numbers...);
  }
  return result;
}

}  // namespace

CString NumberTools::FormatStringMMInch(double a, double b) { return FormatThrough(m_strCadMes_037, a, b); }

CString NumberTools::FormatStringMMInch(double a, double b, double c, double d) {
  return FormatThrough(m_strCadMes_031, a, b, c, d);
}

CString NumberTools::FormatStringMMInchRectangle(double a, double b, double c, double d) {
  return FormatThrough(m_strCadMes_036, a, b, c, d);
}

CString NumberTools::RemoveInchMMFromString(CString text, int unit) {
  const int at = text.Find(unit == 1 ? CADTOOLS_WIDE("\"") : CADTOOLS_WIDE("mm"));
  if (at < 0) return CString();  // no marker: nothing is kept, on purpose
  CString kept = text.Left(at);
  kept.Trim();
  return kept;
}

}  // namespace cadtools

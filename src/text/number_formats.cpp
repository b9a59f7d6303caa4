// Number format texts: the zero-padded integer format test and the
// trimming of surplus decimals.
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "text/unit_views.h"

namespace cadtools {

int TextEditing::IsValidNumberFormat(CString fmt) noexcept {
  const WStringView f = fmt.View();
  if (f.size() < 4 || f[0] != u'%' || f[1] != u'0' || (f.back() != u'd' && f.back() != u'D')) return 0;
  const WStringView width = f.substr(2, f.size() - 3);
  return std::all_of(width.begin(), width.end(), IsWideDigit) ? 1 : 0;
}

CString TextEditing::FormatFloatNumber(CString text, int minDecimals) {
  int separator = text.Find(u'.');
  if (separator < 0) separator = text.Find(u',');
  if (separator < 0) return text;
  // The host adds in 32-bit int; a huge minDecimals wraps to a negative
  // count, which Left and Mid clamp to 0.
  const auto keep = static_cast<int>(static_cast<std::uint32_t>(separator) + 1U +
                                     static_cast<std::uint32_t>(minDecimals));
  if (text.GetLength() <= keep) return text;
  const CString decimals = text.Mid(keep);
  return text.Left(keep) + editing::ToCString(editing::DropTrailing(decimals.View(), editing::IsUnit(u'0')));
}

}  // namespace cadtools

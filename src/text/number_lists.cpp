// Separated lists of integers read into a set.
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "text/unit_views.h"

namespace cadtools {

namespace {

// The host's wide text-to-long conversion: optional white space, optional
// sign, ASCII digits up to the first other unit. No digits gives 0; a value
// beyond 32 bits saturates at LONG_MAX or LONG_MIN.
LONG WideToLong(WStringView v) noexcept {
  constexpr std::int64_t kMagnitudeCap = std::int64_t{1} << 31;  // |LONG_MIN|
  v = editing::DropLeading(v, IsWideSpace);
  bool negative = false;
  if (!v.empty() && (v.front() == u'-' || v.front() == u'+')) {
    negative = v.front() == u'-';
    v.remove_prefix(1);
  }
  std::int64_t magnitude = 0;
  for (const WCHAR c : v) {
    if (c < u'0' || c > u'9') break;
    magnitude = std::min(magnitude * 10 + (c - u'0'), kMagnitudeCap);
  }
  if (negative) return static_cast<LONG>(-magnitude);
  return static_cast<LONG>(std::min(magnitude, kMagnitudeCap - 1));
}

void AddToken(CMap<LONG, LONG, short, short>& set, WStringView token) {
  token = editing::TrimSpace(token);
  if (!token.empty()) set.SetAt(WideToLong(token), 0);
}

}  // namespace

void TextEditing::FillLongMapFromString(CMap<LONG, LONG, short, short>& set, CString str, WCHAR sep) {
  set.RemoveAll();
  const WStringView s = editing::TrimSpace(str.View());
  std::size_t start = 0;
  if (s.empty()) return;
  for (std::size_t hit = s.find(sep); hit != editing::kNotFound; hit = s.find(sep, start)) {
    AddToken(set, s.substr(start, hit - start));
    start = hit + 1;
  }
  AddToken(set, s.substr(start));
}

}  // namespace cadtools

// The four tests of numeric strings. Each scans from index 0 and stops at
// the first unit that fails; their answers for the empty string differ on
// purpose (IsNumeric and IsHexNumeric 1, IsDigit and IsDouble 0).
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/numbers/number_tools.h>

namespace cadtools {

namespace {

constexpr bool IsAsciiDigit(WCHAR c) noexcept { return c >= u'0' && c <= u'9'; }

constexpr bool IsAsciiHexDigit(WCHAR c) noexcept {
  return IsAsciiDigit(c) || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
}

template <class Pred>
bool AllUnits(WStringView text, Pred pred) noexcept {
  for (const WCHAR c : text) {
    if (!pred(c)) return false;
  }
  return true;
}

}  // namespace

int NumberTools::IsNumeric(CString text) noexcept { return AllUnits(text.View(), IsAsciiDigit) ? 1 : 0; }

int NumberTools::IsHexNumeric(CString text) noexcept { return AllUnits(text.View(), IsAsciiHexDigit) ? 1 : 0; }

int NumberTools::IsDigit(CString text) noexcept {
  const WStringView units = text.View();
  if (units.empty()) return 0;
  return AllUnits(units, [](WCHAR c) { return IsWideDigit(c); }) ? 1 : 0;
}

int NumberTools::IsDouble(CString text) noexcept {
  const WStringView units = text.View();
  if (units.empty()) return 0;
  bool separator_seen = false;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const WCHAR c = units[i];
    if (IsWideDigit(c)) continue;
    if (c != u',' && c != u'.') return 0;
    // A separator may be neither first nor last, and only one is allowed.
    if (i == 0 || i + 1 == units.size() || separator_seen) return 0;
    separator_seen = true;
  }
  return 1;
}

}  // namespace cadtools

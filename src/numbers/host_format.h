// Which host format texts may format a given count of doubles.
//
// The formatting functions pass only doubles, so a host text is used only
// when every conversion in it is a floating one and there are no more
// conversions than numbers; anything else formats to "" instead of
// printing garbage. A conversion is accepted when it is
//
//   '%'  flags "-+ #0" (any number)  width (digits)  ['.' digits]  ['l' | 'L']
//        one of "fFeEgGaA"
//
// "%%" is a literal percent. Fewer conversions than numbers are fine, and
// a text without any conversion is a fixed text. Rejected:
//
//   IsFloatFormat("%.2f mm (%.3f\")", 2)   // true
//   IsFloatFormat("%-08.3lf%%", 1)        // true
//   IsFloatFormat("no numbers", 2)         // true
//   IsFloatFormat("", 2)                   // false (unassigned)
//   IsFloatFormat("%s", 2)                 // false (not floating)
//   IsFloatFormat("%*f", 2)                // false (width from an argument)
//   IsFloatFormat("%.*f", 2)               // false
//   IsFloatFormat("%f %f %f", 2)           // false (one too many)
//   IsFloatFormat("50%", 2)                // false (lone '%' at the end)
//   IsFloatFormat("%hf", 2), ("%llf", 2)   // false (other lengths)
//
// A period without digits ("%.f") is printf's precision 0 and accepted.
// Header-only so that the tests and the fuzzer check the very same rule.
#pragma once

#include <cadtools/compat/cstring.h>

namespace cadtools::detail {

constexpr bool IsFormatDigit(WCHAR c) noexcept { return c >= u'0' && c <= u'9'; }

constexpr bool IsFormatFlag(WCHAR c) noexcept {
  return c == u'-' || c == u'+' || c == u' ' || c == u'#' || c == u'0';
}

constexpr bool IsFloatConversion(WCHAR c) noexcept {
  return c == u'f' || c == u'F' || c == u'e' || c == u'E' || c == u'g' || c == u'G' || c == u'a' || c == u'A';
}

// True when fmt may format `numbers` doubles (see above).
constexpr bool IsFloatFormat(WStringView fmt, int numbers) noexcept {
  if (fmt.empty()) return false;
  const std::size_t n = fmt.size();
  int conversions = 0;
  std::size_t i = 0;
  while (i < n) {
    if (fmt[i] != u'%') {
      ++i;
      continue;
    }
    ++i;
    if (i < n && fmt[i] == u'%') {
      ++i;
      continue;
    }
    while (i < n && IsFormatFlag(fmt[i])) ++i;
    while (i < n && IsFormatDigit(fmt[i])) ++i;
    if (i < n && fmt[i] == u'.') {
      ++i;
      while (i < n && IsFormatDigit(fmt[i])) ++i;
    }
    if (i < n && (fmt[i] == u'l' || fmt[i] == u'L')) ++i;
    if (i >= n || !IsFloatConversion(fmt[i])) return false;
    ++i;
    if (++conversions > numbers) return false;
  }
  return true;
}

// The text a host format string stands for: its units up to the first NUL,
// as the host's C string is read.
inline WStringView HostFormatText(const CString& text) noexcept {
  const WStringView units = text.View();
  return units.substr(0, units.find(WCHAR{0}));
}

}  // namespace cadtools::detail

// Character classes and case beyond ASCII from the Windows character
// tables, corrected where they part from Unicode so that Windows answers
// as ICU does on the other targets:
// - C1_SPACE is White_Space exactly;
// - C1_DIGIT also counts the superscripts one, two and three, which are no
//   decimal digits;
// - LCMapStringW maps only pairs that map back; the one-way simple mappings
//   of Unicode (micro sign, dotless i, long s, final sigma, the title-case
//   digraphs, the Greek symbol variants, Kelvin and Angstrom signs, ...)
//   are added from the table below.
#include <cadtools/compat/wide_ctype.h>

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace cadtools::detail {

namespace {

struct OneWayMapping {
  std::uint16_t from;
  std::uint16_t to;
};

constexpr OneWayMapping kUpper[] = {
    {0x00B5, 0x039C}, {0x0131, 0x0049}, {0x017F, 0x0053}, {0x01C5, 0x01C4}, {0x01C8, 0x01C7},
    {0x01CB, 0x01CA}, {0x01F2, 0x01F1}, {0x0345, 0x0399}, {0x03C2, 0x03A3}, {0x03D0, 0x0392},
    {0x03D1, 0x0398}, {0x03D5, 0x03A6}, {0x03D6, 0x03A0}, {0x03F0, 0x039A}, {0x03F1, 0x03A1},
    {0x03F5, 0x0395}, {0x1C80, 0x0412}, {0x1C81, 0x0414}, {0x1C82, 0x041E}, {0x1C83, 0x0421},
    {0x1C84, 0x0422}, {0x1C85, 0x0422}, {0x1C86, 0x042A}, {0x1C87, 0x0462}, {0x1C88, 0xA64A},
    {0x1E9B, 0x1E60}, {0x1FBE, 0x0399},
};

constexpr OneWayMapping kLower[] = {
    {0x0130, 0x0069}, {0x01C5, 0x01C6}, {0x01C8, 0x01C9}, {0x01CB, 0x01CC}, {0x01F2, 0x01F3},
    {0x03F4, 0x03B8}, {0x1E9E, 0x00DF}, {0x2126, 0x03C9}, {0x212A, 0x006B}, {0x212B, 0x00E5},
};

template <std::size_t N>
constexpr bool IsSorted(const OneWayMapping (&table)[N]) {
  for (std::size_t i = 1; i < N; ++i) {
    if (table[i - 1].from >= table[i].from) return false;
  }
  return true;
}
static_assert(IsSorted(kUpper) && IsSorted(kLower));

template <std::size_t N>
bool FindOneWay(const OneWayMapping (&table)[N], WCHAR ch, WCHAR& mapped) noexcept {
  const auto* it = std::lower_bound(std::begin(table), std::end(table), ch,
                                    [](const OneWayMapping& m, WCHAR c) { return m.from < c; });
  if (it == std::end(table) || it->from != ch) return false;
  mapped = static_cast<WCHAR>(it->to);
  return true;
}

WORD CharType(WCHAR ch) noexcept {
  WORD type = 0;
  return GetStringTypeW(CT_CTYPE1, &ch, 1, &type) ? type : 0;
}

WCHAR MapUnit(WCHAR ch, DWORD flags) noexcept {
  WCHAR out = ch;
  return LCMapStringW(LOCALE_INVARIANT, flags, &ch, 1, &out, 1) == 1 ? out : ch;
}

constexpr bool IsSurrogate(WCHAR ch) noexcept { return ch >= 0xD800 && ch <= 0xDFFF; }

}  // namespace

bool IsWideSpaceBeyondAscii(WCHAR ch) noexcept { return (CharType(ch) & C1_SPACE) != 0; }

bool IsWideDigitBeyondAscii(WCHAR ch) noexcept {
  if (ch == 0x00B2 || ch == 0x00B3 || ch == 0x00B9) return false;
  return (CharType(ch) & C1_DIGIT) != 0;
}

WCHAR ToLowerBeyondAscii(WCHAR ch) noexcept {
  WCHAR mapped = ch;
  if (IsSurrogate(ch) || FindOneWay(kLower, ch, mapped)) return mapped;
  return MapUnit(ch, LCMAP_LOWERCASE);
}

WCHAR ToUpperBeyondAscii(WCHAR ch) noexcept {
  WCHAR mapped = ch;
  if (IsSurrogate(ch) || FindOneWay(kUpper, ch, mapped)) return mapped;
  return MapUnit(ch, LCMAP_UPPERCASE);
}

}  // namespace cadtools::detail

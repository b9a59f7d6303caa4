// Character classes and case folding of one UTF-16 unit for the text tools'
// hot loops: ASCII from a small table, everything beyond from
// cadtools::IsWideSpace, IsWideDigit, ToUpperUnit and ToLowerUnit. The
// table is built from the same rules those functions apply to ASCII, so the
// answers are the same; only the cost differs.
#pragma once

#include <cadtools/compat/wide_ctype.h>
#include <cadtools/compat/win_types.h>

#include <array>
#include <cstdint>

namespace cadtools::text {

enum class UnitKind : std::uint8_t {
  kPlain,  // anything else: letters, punctuation, control units
  kSpace,
  kDigit,
  kEnd,  // the terminating zero
};

struct AsciiUnit {
  UnitKind kind;
  char upper;
  char lower;
};

inline constexpr std::array<AsciiUnit, 128> kAsciiUnits = [] {
  std::array<AsciiUnit, 128> table{};
  for (int c = 0; c < 128; ++c) {
    AsciiUnit& u = table[static_cast<std::size_t>(c)];
    u.kind = c == 0                            ? UnitKind::kEnd
             : c == ' ' || (c >= 9 && c <= 13) ? UnitKind::kSpace
             : c >= '0' && c <= '9'            ? UnitKind::kDigit
                                               : UnitKind::kPlain;
    u.upper = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    u.lower = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  }
  return table;
}();

constexpr bool IsAscii(WCHAR ch) noexcept { return ch < 0x80; }

inline const AsciiUnit& AsciiOf(WCHAR ch) noexcept { return kAsciiUnits[static_cast<std::size_t>(ch)]; }

// An ASCII unit that natural comparison treats as an ordinary character
// (no space, digit or terminator): two equal ones simply advance.
inline bool IsPlainAscii(WCHAR ch) noexcept { return IsAscii(ch) && AsciiOf(ch).kind == UnitKind::kPlain; }

inline bool IsSpaceUnit(WCHAR ch) noexcept {
  return IsAscii(ch) ? AsciiOf(ch).kind == UnitKind::kSpace : detail::IsWideSpaceBeyondAscii(ch);
}

inline bool IsDigitUnit(WCHAR ch) noexcept {
  return IsAscii(ch) ? AsciiOf(ch).kind == UnitKind::kDigit : detail::IsWideDigitBeyondAscii(ch);
}

inline WCHAR UpperUnit(WCHAR ch) noexcept {
  return IsAscii(ch) ? static_cast<WCHAR>(AsciiOf(ch).upper) : detail::ToUpperBeyondAscii(ch);
}

inline WCHAR LowerUnit(WCHAR ch) noexcept {
  return IsAscii(ch) ? static_cast<WCHAR>(AsciiOf(ch).lower) : detail::ToLowerBeyondAscii(ch);
}

}  // namespace cadtools::text

// Character classes and case beyond ASCII from ICU (every target but
// Windows). Surrogates are neither space nor digit and map to themselves;
// a mapping that would leave the basic plane is not taken.
#include <cadtools/compat/wide_ctype.h>

#include <unicode/uchar.h>

namespace cadtools::detail {

namespace {

constexpr bool IsSurrogate(WCHAR ch) noexcept { return ch >= 0xD800 && ch <= 0xDFFF; }

WCHAR KeepInUnit(WCHAR ch, UChar32 mapped) noexcept {
  return mapped >= 0 && mapped <= 0xFFFF && !IsSurrogate(ch) ? static_cast<WCHAR>(mapped) : ch;
}

}  // namespace

bool IsWideSpaceBeyondAscii(WCHAR ch) noexcept { return !IsSurrogate(ch) && u_isUWhiteSpace(ch) != 0; }

bool IsWideDigitBeyondAscii(WCHAR ch) noexcept {
  return !IsSurrogate(ch) && u_charType(ch) == U_DECIMAL_DIGIT_NUMBER;
}

WCHAR ToLowerBeyondAscii(WCHAR ch) noexcept { return KeepInUnit(ch, u_tolower(ch)); }

WCHAR ToUpperBeyondAscii(WCHAR ch) noexcept { return KeepInUnit(ch, u_toupper(ch)); }

}  // namespace cadtools::detail

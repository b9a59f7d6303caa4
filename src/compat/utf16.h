// UTF-16 building blocks shared by CString and its Format engine.
#pragma once

#include <cadtools/compat/cstring.h>

#include <cstddef>
#include <cstdint>

namespace cadtools::detail {

inline constexpr WCHAR kReplacementChar = 0xFFFD;

constexpr bool IsHighSurrogate(std::uint32_t u) noexcept { return u >= 0xD800 && u <= 0xDBFF; }
constexpr bool IsLowSurrogate(std::uint32_t u) noexcept { return u >= 0xDC00 && u <= 0xDFFF; }

// One code point as UTF-16: a unit up to U+FFFF (a lone surrogate value
// stays one unit), a pair up to U+10FFFF, U+FFFD beyond.
void AppendCodePoint(WString& out, std::uint32_t cp);

// n wchar_t units: copied where wchar_t is UTF-16, decoded as UTF-32
// elsewhere.
void AppendWide(WString& out, const wchar_t* p, std::size_t n);

}  // namespace cadtools::detail

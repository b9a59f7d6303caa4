// IsTextLike on ASCII bytes, for the command line's filter, which meets
// most lines of a tag list as plain ASCII and need not convert them.
//
//   IsAsciiTextLike("Motor12", "mot*12")   // true, as IsTextLike(L"Motor12", L"mot*12")
//   IsAsciiTextLike("abab", "*ab")         // false: the first "ab" is taken
//
// Text and pattern must both be ASCII (no byte from 0x80 up): then the
// answer is IsTextLike's on their UTF-16 forms, since ASCII units lower to
// ASCII units, and only by 'A' to 'Z'.
#pragma once

#include <string_view>

namespace cadtools::text {

bool IsAsciiTextLike(std::string_view text, std::string_view pattern) noexcept;

}  // namespace cadtools::text

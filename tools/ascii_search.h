// Searches over a whole text buffer, sixteen bytes a step where the
// processor has SSE2, for the like command's first pass over its input.
//
//   FindNonAscii("PLC\nL\xC3\xBC" "fter 3", 0)   // 5: the first byte from 0x80 up
//   FindAsciiFolded("-k2\n-K12\n", "k1", 0)      // 5: "K1", ignoring case
//   FindAsciiFolded("-k2\n-K12\n", "k1", 6)      // 9: nothing, the text's size
//
// Both return the text's size when there is nothing to find.
#pragma once

#include <cstddef>
#include <string_view>

namespace cadtools::cli {

// The first position at or after `from` of a byte from 0x80 up.
std::size_t FindNonAscii(std::string_view text, std::size_t from) noexcept;

// The first position at or after `from` where `lowered` (ASCII, in lower
// case, not empty) occurs in the text, ASCII letters matching either case.
std::size_t FindAsciiFolded(std::string_view text, std::string_view lowered, std::size_t from) noexcept;

}  // namespace cadtools::cli

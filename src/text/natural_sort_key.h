// Sort keys for natural order: byte strings that sort as NaturalCompare
// orders their names, so that a long list can be sorted by keys computed
// once per name (compared with memcmp, a key that is a prefix of another
// first) instead of by a comparison of the names at every step.
//
//   key("X2")   < key("x10")     "X" 31 "2"    <  "X" 32 "10"
//   key("a b") == key("AB")      "AB": white space and case do not count
//   key("x010") < key("x02")     "X" 30 "10" 01 < "X" 30 "2" 01: after a
//                                leading zero a run compares digit by digit
//   key("K\u0663")               none: a digit beyond ASCII
//
// A key has one element per character the comparison looks at:
// - a run of digits that starts with '0': 30, the rest of its digits, 01
//   (of two runs that agree until one ends, that one is smaller);
// - another run of digits: 30 plus its length for up to eight digits, or
//   39 and its length in base 255 (the count of base-255 digits first, each
//   digit plus one), then its digits (a longer run is larger);
// - any other character but white space: its capital, a UTF-16 unit
//   written as UTF-8 writes a code point of that value, which keeps the
//   order of the units (surrogates included). Capitals below '0' come
//   before every run, those above '9' after; no capital is a digit.
// White space gives nothing, and the first NUL ends the name.
//
// Digits beyond ASCII have no key: they lie between other characters in
// the order of units, yet a run of them is compared with an ASCII run by
// its length, so that "10" < "A" < "\u0661" < "10" and no key can place
// them. Names holding one are compared with NaturalCompare itself.
//
// No key holds a zero byte, so keys padded with zeros compare as the keys.
#pragma once

#include <cadtools/compat/cstring.h>

#include <cstddef>
#include <string_view>

namespace cadtools::text {

inline constexpr std::size_t kNoSortKey = static_cast<std::size_t>(-1);

// Room enough for the key of a name of `units` UTF-16 units or `units`
// bytes of UTF-8.
constexpr std::size_t NaturalSortKeyBound(std::size_t units) noexcept { return 3 * units + 11; }

// Writes the key of `name` at `out` (room for NaturalSortKeyBound(size)
// bytes) and returns its length, or kNoSortKey.
std::size_t WriteNaturalSortKey(WStringView name, char* out) noexcept;
// The same for a name in UTF-8, read as FromUtf8 reads it (each broken
// sequence one U+FFFD).
std::size_t WriteNaturalSortKeyUtf8(std::string_view name, char* out);

}  // namespace cadtools::text

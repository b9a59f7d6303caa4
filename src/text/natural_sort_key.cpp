#include "text/natural_sort_key.h"

#include <cadtools/compat/wide_ctype.h>

#include <cstdint>
#include <cstring>

namespace cadtools::text {

namespace {

constexpr unsigned char kZeroRun = 0x30;  // '0': a run read digit by digit
constexpr unsigned char kLongRun = 0x39;  // '9': a run of nine digits or more
constexpr unsigned char kRunEnd = 0x01;   // ends a run after a leading zero
constexpr std::size_t kShortRunMax = 8;   // runs up to this length say it in one byte

bool IsAsciiDigit(std::uint32_t unit) noexcept { return unit >= '0' && unit <= '9'; }

// Writes a 16-bit value as UTF-8 writes a code point: one to three bytes,
// and the byte order is the order of the values.
char* WriteUnit(std::uint32_t value, char* out) noexcept {
  if (value < 0x80) {
    *out++ = static_cast<char>(value);
  } else if (value < 0x800) {
    *out++ = static_cast<char>(0xC0 | (value >> 6));
    *out++ = static_cast<char>(0x80 | (value & 0x3F));
  } else {
    *out++ = static_cast<char>(0xE0 | (value >> 12));
    *out++ = static_cast<char>(0x80 | ((value >> 6) & 0x3F));
    *out++ = static_cast<char>(0x80 | (value & 0x3F));
  }
  return out;
}

// The length of a run of nine digits or more: the count of its base-255
// digits, then the digits, most significant first, each plus one (so that
// no byte is zero). Fewer digits mean a smaller length.
char* WriteLongRunLength(std::size_t length, char* out) noexcept {
  unsigned char digits[sizeof(std::size_t) + 1];
  std::size_t count = 0;
  for (std::size_t rest = length; rest != 0; rest /= 255) digits[count++] = static_cast<unsigned char>(rest % 255 + 1);
  *out++ = static_cast<char>(count);
  while (count != 0) *out++ = static_cast<char>(digits[--count]);
  return out;
}

// Writes the key of the units [p, end); Unit is WCHAR, or unsigned char
// for a name that is all ASCII.
template <class Unit>
std::size_t WriteKey(const Unit* p, const Unit* end, char* const out) noexcept {
  char* o = out;
  while (p != end && *p != 0) {
    const auto unit = static_cast<WCHAR>(*p);
    if (IsAsciiDigit(unit)) {
      const Unit* run = p;
      while (p != end && IsAsciiDigit(*p)) ++p;
      const auto length = static_cast<std::size_t>(p - run);
      if (unit == '0') {
        *o++ = static_cast<char>(kZeroRun);
        ++run;
      } else if (length <= kShortRunMax) {
        *o++ = static_cast<char>(kZeroRun + length);
      } else {
        *o++ = static_cast<char>(kLongRun);
        o = WriteLongRunLength(length, o);
      }
      for (; run != p; ++run) *o++ = static_cast<char>(*run);
      if (unit == '0') *o++ = static_cast<char>(kRunEnd);
      continue;
    }
    ++p;
    if (IsWideSpace(unit)) continue;
    if (IsWideDigit(unit)) return kNoSortKey;
    o = WriteUnit(ToUpperUnit(unit), o);
  }
  return static_cast<std::size_t>(o - out);
}

}  // namespace

std::size_t WriteNaturalSortKey(WStringView name, char* out) noexcept {
  return WriteKey(name.data(), name.data() + name.size(), out);
}

std::size_t WriteNaturalSortKeyUtf8(std::string_view name, char* out) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(name.data());
  const unsigned char* const end = bytes + name.size();
  const unsigned char* p = bytes;
  while (p != end && *p < 0x80) ++p;
  if (p == end) return WriteKey(bytes, end, out);
  const CString units = FromUtf8(name);
  return WriteNaturalSortKey(units.View(), out);
}

}  // namespace cadtools::text

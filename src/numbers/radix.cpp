// Hexadecimal and binary text, and reversing a text.
#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/numbers/number_tools.h>

#include <array>
#include <climits>
#include <cstdint>
#include <new>
#include <stdexcept>

namespace cadtools {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

// Up to 32 digits, kept at the end of buf.
struct Digits {
  std::array<WCHAR, 32> buf{};
  int count = 0;
  WStringView View() const noexcept {
    const auto n = static_cast<std::size_t>(count);
    return {buf.data() + (buf.size() - n), n};
  }
};

// The digits of v in base 2^bits_per_digit (1 or 4), most significant
// first, without leading zeros ("0" for 0).

Digits DigitsOf(std::uint32_t v, unsigned bits_per_digit) noexcept {
  Digits d;
  const std::uint32_t mask = (1U << bits_per_digit) - 1U;
  std::size_t pos = d.buf.size();
  do {
    d.buf[--pos] = static_cast<WCHAR>(kHexDigits[v & mask]);
    v >>= bits_per_digit;
    ++d.count;
  } while (v != 0);
  return d;
}

CString FromView(WStringView v) { return CString(v.data(), static_cast<int>(v.size())); }

// -1, or the value of a hexadecimal digit. A unit beyond 0xFF would not
// survive narrowing to a char and is never a digit.
constexpr int HexValue(WCHAR c) noexcept {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return -1;
}

}  // namespace

CString NumberTools::itohex(int value, int width) {
  if (width <= 0) return CString();
  const Digits d = DigitsOf(static_cast<std::uint32_t>(value), 4);
  if (width <= d.count) return FromView(d.View().substr(static_cast<std::size_t>(d.count - width)));
  // One allocation of the full width, filled with '0', then the digits.
  CString result;
  try {
    result = CString(static_cast<WCHAR>(u'0'), width);
  } catch (const std::bad_alloc&) {
    ThrowMemory();
  } catch (const std::length_error&) {
    ThrowMemory();
  }
  for (int k = 0; k < d.count; ++k) result.SetAt(width - d.count + k, d.View()[static_cast<std::size_t>(k)]);
  return result;
}

CString NumberTools::itohex(int value) { return FromView(DigitsOf(static_cast<std::uint32_t>(value), 4).View()); }

int NumberTools::hextoi(CString text) noexcept {
  const WStringView s = text.View();
  std::size_t i = 0;
  while (i < s.size() && IsWideSpace(s[i])) ++i;
  bool negative = false;
  if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) {
    negative = s[i] == u'-';
    ++i;
  }
  // "0x" without a digit after it reads as the digit 0 or as nothing: 0
  // either way, so the prefix can be skipped unconditionally.
  if (i + 1 < s.size() && s[i] == u'0' && (s[i + 1] == u'x' || s[i + 1] == u'X')) i += 2;

  // The magnitude saturates just above the largest one an int can take.
  constexpr std::uint64_t kCap = std::uint64_t{1} << 32;
  std::uint64_t magnitude = 0;
  for (; i < s.size(); ++i) {
    const int digit = HexValue(s[i]);
    if (digit < 0) break;
    magnitude = magnitude * 16 + static_cast<std::uint64_t>(digit);
    if (magnitude > kCap) magnitude = kCap;
  }
  if (negative) {
    return magnitude >= std::uint64_t{1} << 31 ? INT_MIN : -static_cast<int>(magnitude);
  }
  return magnitude > static_cast<std::uint64_t>(INT_MAX) ? INT_MAX : static_cast<int>(magnitude);
}

CString NumberTools::DecimalToBinary(LONG value) {
  return FromView(DigitsOf(static_cast<std::uint32_t>(value), 1).View());
}

LONG NumberTools::BinaryToDecimal(CString text) noexcept {
  // (int)pow(2, k) is exact below 2^31; from there on (infinity included)
  // x86's truncation gives the integer-indefinite value INT_MIN. Products
  // and the sum wrap in 32 bits.
  const WStringView s = text.View();
  const std::size_t n = s.size();
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t k = n - 1 - i;
    const std::uint32_t power = k < 31 ? std::uint32_t{1} << k : std::uint32_t{0x80000000U};
    const auto digit = static_cast<std::uint32_t>(static_cast<int>(s[i]) - 48);
    sum += digit * power;
  }
  return static_cast<LONG>(sum);
}

CString NumberTools::ReverseBinary(CString text) {
  const WStringView s = text.View();
  WString reversed(s.rbegin(), s.rend());
  return CString(reversed.data(), static_cast<int>(reversed.size()));
}

CString NumberTools::CreateABCDuplicate(int number) {
  // The host's arithmetic, gaps included: the last letter is 64 + r, the
  // others 65 + r, and a quotient from 1 to 25 is dropped.
  int q = number / 25;
  int r = number - 25 * q;
  CString result(static_cast<WCHAR>(64 + r));
  while (q > 25) {
    const int c = q;
    q = c / 25;
    r = c - 25 * q;
    result.Insert(0, static_cast<WCHAR>(65 + r));
  }
  return result;
}

}  // namespace cadtools

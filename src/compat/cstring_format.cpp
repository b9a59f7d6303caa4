// CString::Format: printf-style text over typed arguments. The rules are in
// cstring.h; this file only carries them out.
#include <cadtools/compat/cstring.h>

#include "compat/utf16.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

using cadtools::WString;
using cadtools::WStringView;
using cadtools::detail::FormatArg;
using Kind = FormatArg::Kind;

// One %-directive of the format text, as parsed.
struct Directive {
  bool left = false;   // -
  bool plus = false;   // +
  bool space = false;  // ' '
  bool alt = false;    // #
  bool zero = false;   // 0
  bool width_star = false;
  bool precision_star = false;
  int width = 0;
  int precision = -1;  // -1: none
  int bits = 32;       // integer width from the length modifier
  bool narrow = false; // h or hh: %c is a Latin-1 byte
  WCHAR conv = 0;
};

constexpr bool IsDigit(WCHAR c) noexcept { return c >= u'0' && c <= u'9'; }

// Digits of a width or precision, saturated at the cap.
int ParseNumber(WStringView fmt, std::size_t& i) noexcept {
  int v = 0;
  for (; i < fmt.size() && IsDigit(fmt[i]); ++i) {
    v = std::min(v * 10 + (fmt[i] - u'0'), cadtools::kFormatMaxWidth);
  }
  return v;
}

// Parses the conversion after its '%' at fmt[i]; on success i is past the
// conversion character. nullopt: not a conversion this engine understands.
std::optional<Directive> ParseDirective(WStringView fmt, std::size_t& i) noexcept {
  Directive s;
  for (; i < fmt.size(); ++i) {
    const WCHAR c = fmt[i];
    if (c == u'-') s.left = true;
    else if (c == u'+') s.plus = true;
    else if (c == u' ') s.space = true;
    else if (c == u'#') s.alt = true;
    else if (c == u'0') s.zero = true;
    else break;
  }
  if (i < fmt.size() && fmt[i] == u'*') {
    s.width_star = true;
    ++i;
  } else {
    s.width = ParseNumber(fmt, i);
  }
  if (i < fmt.size() && fmt[i] == u'.') {
    ++i;
    if (i < fmt.size() && fmt[i] == u'*') {
      s.precision_star = true;
      ++i;
    } else {
      s.precision = ParseNumber(fmt, i);
    }
  }
  const auto at = [&](std::size_t k) { return k < fmt.size() ? fmt[k] : WCHAR{0}; };
  switch (at(i)) {
    case u'h':
      s.narrow = true;
      if (at(i + 1) == u'h') {
        s.bits = 8;
        ++i;
      } else {
        s.bits = 16;
      }
      ++i;
      break;
    case u'l':
      if (at(i + 1) == u'l') {
        s.bits = 64;
        ++i;
      }
      ++i;
      break;
    case u'I':
      if (at(i + 1) == u'6' && at(i + 2) == u'4') {
        i += 2;
      } else if (at(i + 1) == u'3' && at(i + 2) == u'2') {
        s.bits = 32;
        i += 3;
        break;
      }
      s.bits = 64;
      ++i;
      break;
    case u'L':
    case u'z':
    case u'j':
    case u't':
      s.bits = 64;
      ++i;
      break;
    case u'w':
      ++i;
      break;
    default:
      break;
  }
  s.conv = at(i);
  if (s.conv == 0 || std::u16string_view(u"diuoxXcCsSfFeEgGaAp%").find(static_cast<char16_t>(s.conv)) ==
                         std::u16string_view::npos) {
    return std::nullopt;
  }
  ++i;
  if (s.conv == u'C') s.narrow = true;
  return s;
}

bool IsInteger(const FormatArg& a) noexcept { return a.kind == Kind::kSigned || a.kind == Kind::kUnsigned; }
bool IsString(const FormatArg& a) noexcept {
  return a.kind == Kind::kNarrow || a.kind == Kind::kChar16 || a.kind == Kind::kWide || a.kind == Kind::kCString;
}

std::uint64_t AddressOf(const FormatArg& a) noexcept {
  const void* p = nullptr;
  switch (a.kind) {
    case Kind::kPointer: p = a.p; break;
    case Kind::kNarrow: p = a.narrow; break;
    case Kind::kChar16: p = a.u16; break;
    case Kind::kWide: p = a.wide; break;
    case Kind::kCString: p = a.str->GetString(); break;
    default: break;
  }
  return reinterpret_cast<std::uintptr_t>(p);
}

// A floating value truncated toward zero and clamped to [lo, hi]; NaN is 0.
template <class T>
T Saturate(double d, double lo, double hi, T min, T max) noexcept {
  if (std::isnan(d)) return 0;
  const double t = std::trunc(d);
  if (t < lo) return min;
  if (t >= hi) return max;
  return static_cast<T>(t);
}

// The argument as an integer of `bits` bits, signed or unsigned, returned
// as its two's-complement pattern in 64 bits (sign-extended when signed).
std::uint64_t IntegerValue(const FormatArg& a, int bits, bool is_signed) noexcept {
  const std::uint64_t mask = bits == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
  if (a.kind == Kind::kFloat) {
    const double half = std::ldexp(1.0, bits - 1);
    if (is_signed) {
      const auto max = static_cast<std::int64_t>(mask >> 1);
      return static_cast<std::uint64_t>(Saturate<std::int64_t>(a.d, -half, half, -max - 1, max));
    }
    return Saturate<std::uint64_t>(a.d, 0.0, 2.0 * half, 0, mask);
  }
  const std::uint64_t raw =
      a.kind == Kind::kSigned ? static_cast<std::uint64_t>(a.i) : a.kind == Kind::kUnsigned ? a.u : AddressOf(a);
  std::uint64_t v = raw & mask;
  if (is_signed && bits < 64 && (v >> (bits - 1)) != 0) v |= ~mask;  // sign-extend
  return v;
}

double FloatValue(const FormatArg& a) noexcept {
  if (a.kind == Kind::kSigned) return static_cast<double>(a.i);
  if (a.kind == Kind::kUnsigned) return static_cast<double>(a.u);
  return a.d;
}

void AppendAscii(WString& out, std::string_view s) {
  for (const char c : s) out.push_back(static_cast<WCHAR>(static_cast<unsigned char>(c)));
}

void AppendLatin1(WString& out, const char* s, std::size_t n) {
  for (std::size_t k = 0; k < n; ++k) out.push_back(static_cast<WCHAR>(static_cast<unsigned char>(s[k])));
}

// Length of a NUL-terminated text, reading no more than `limit` units.
template <class C>
std::size_t BoundedLength(const C* s, std::size_t limit) noexcept {
  std::size_t n = 0;
  while (n < limit && s[n] != 0) ++n;
  return n;
}

// The string argument as UTF-16, cut to `precision` units when one is set.
WString StringValue(const FormatArg& a, int precision) {
  const std::size_t limit = precision < 0 ? static_cast<std::size_t>(-1) : static_cast<std::size_t>(precision);
  WString s;
  switch (a.kind) {
    case Kind::kNarrow:
      if (a.narrow != nullptr) AppendLatin1(s, a.narrow, BoundedLength(a.narrow, limit));
      break;
    case Kind::kChar16:
      if (a.u16 != nullptr) {
        const std::size_t n = BoundedLength(a.u16, limit);
        for (std::size_t k = 0; k < n; ++k) s.push_back(static_cast<WCHAR>(a.u16[k]));
      }
      break;
    case Kind::kWide:
      // A UTF-32 code point may give two units: read no more than the
      // limit, and cut the result below.
      if (a.wide != nullptr) cadtools::detail::AppendWide(s, a.wide, BoundedLength(a.wide, limit));
      break;
    case Kind::kCString:
      s = a.str->View();
      break;
    default:
      break;
  }
  const bool null = (a.kind == Kind::kNarrow && a.narrow == nullptr) ||
                    (a.kind == Kind::kChar16 && a.u16 == nullptr) || (a.kind == Kind::kWide && a.wide == nullptr);
  if (null) AppendAscii(s, "(null)");
  if (s.size() > limit) s.resize(limit);
  return s;
}

// Pads `body` to the width: spaces on the left (or right with '-'), or
// zeros after the sign and prefix when zero padding applies.
void Emit(WString& out, const Directive& s, std::string_view sign_prefix, const WString& body, bool zero_pad) {
  const std::size_t len = sign_prefix.size() + body.size();
  const std::size_t pad = static_cast<std::size_t>(s.width) > len ? static_cast<std::size_t>(s.width) - len : 0;
  if (!s.left && !zero_pad) out.append(pad, u' ');
  AppendAscii(out, sign_prefix);
  if (!s.left && zero_pad) out.append(pad, u'0');
  out.append(body);
  if (s.left) out.append(pad, u' ');
}

void FormatInteger(WString& out, const Directive& s, const FormatArg& a) {
  const bool is_signed = s.conv == u'd' || s.conv == u'i';
  const std::uint64_t v = IntegerValue(a, s.bits, is_signed);
  const bool negative = is_signed && static_cast<std::int64_t>(v) < 0;
  const std::uint64_t magnitude = negative ? 0 - v : v;

  const int base = s.conv == u'o' ? 8 : (s.conv == u'x' || s.conv == u'X') ? 16 : 10;
  std::array<char, 64> buf{};
  const auto res = std::to_chars(buf.data(), buf.data() + buf.size(), magnitude, base);
  std::string digits(buf.data(), res.ptr);
  if (s.conv == u'X') std::transform(digits.begin(), digits.end(), digits.begin(), [](char c) {
      return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    });
  if (s.precision >= 0) {
    if (magnitude == 0 && s.precision == 0) digits.clear();
    if (digits.size() < static_cast<std::size_t>(s.precision)) {
      digits.insert(0, static_cast<std::size_t>(s.precision) - digits.size(), '0');
    }
  }
  if (s.alt && base == 8 && (digits.empty() || digits[0] != '0')) digits.insert(0, 1, '0');

  std::string prefix;
  if (negative) prefix = "-";
  else if (is_signed && s.plus) prefix = "+";
  else if (is_signed && s.space) prefix = " ";
  if (s.alt && base == 16 && magnitude != 0) prefix += s.conv == u'X' ? "0X" : "0x";

  WString body;
  AppendAscii(body, digits);
  Emit(out, s, prefix, body, s.zero && s.precision < 0);
}

// Formats a finite, non-negative value with std::to_chars. The buffer holds
// the longest text: 309 integer digits of DBL_MAX, the point and the
// largest precision.
std::string ToChars(double v, std::chars_format f, int precision) {
  std::array<char, cadtools::kFormatMaxWidth + 400> buf;
  char* const end = buf.data() + buf.size();
  const auto res = precision < 0 ? std::to_chars(buf.data(), end, v, f)
                                 : std::to_chars(buf.data(), end, v, f, precision);
  return res.ec == std::errc() ? std::string(buf.data(), res.ptr) : std::string();
}

// Position of the exponent marker ('e', or 'p' for hex where 'e' is a
// digit), or the end.
std::size_t ExponentPos(const std::string& s, char marker = 'e') {
  const std::size_t e = s.find(marker);
  return e == std::string::npos ? s.size() : e;
}

// %g: fixed or scientific by the exponent, as C does; without '#' the
// trailing zeros of the fraction go, and the point with them.
std::string FormatGeneral(double v, int precision, bool alt) {
  const int p = precision == 0 ? 1 : precision;
  std::string text = ToChars(v, std::chars_format::scientific, p - 1);
  const std::size_t e = ExponentPos(text);
  const int exponent = e < text.size() ? std::atoi(text.c_str() + e + 1) : 0;
  if (exponent >= -4 && exponent < p) text = ToChars(v, std::chars_format::fixed, p - 1 - exponent);
  const std::size_t mantissa_end = ExponentPos(text);
  const std::size_t point = text.find('.');
  if (!alt && point != std::string::npos && point < mantissa_end) {
    std::size_t cut = mantissa_end;
    while (cut > point + 1 && text[cut - 1] == '0') --cut;
    if (cut == point + 1) cut = point;
    text.erase(cut, mantissa_end - cut);
  }
  return text;
}

void FormatFloat(WString& out, const Directive& s, const FormatArg& a) {
  const double v = FloatValue(a);
  const bool upper = s.conv == u'F' || s.conv == u'E' || s.conv == u'G' || s.conv == u'A';
  const WCHAR lower_conv = upper ? static_cast<WCHAR>(s.conv - u'A' + u'a') : s.conv;
  const bool finite = std::isfinite(v);
  const bool negative = !std::isnan(v) && std::signbit(v);
  const double m = std::fabs(v);

  std::string text;
  std::string prefix = negative ? "-" : s.plus ? "+" : s.space ? " " : "";
  if (!finite) {
    text = std::isnan(v) ? "nan" : "inf";
  } else if (lower_conv == u'f') {
    text = ToChars(m, std::chars_format::fixed, s.precision < 0 ? 6 : s.precision);
  } else if (lower_conv == u'e') {
    text = ToChars(m, std::chars_format::scientific, s.precision < 0 ? 6 : s.precision);
  } else if (lower_conv == u'g') {
    text = FormatGeneral(m, s.precision < 0 ? 6 : s.precision, s.alt);
  } else {  // a
    text = ToChars(m, std::chars_format::hex, s.precision);
    prefix += "0x";
  }
  if (finite && s.alt && text.find('.') == std::string::npos) {
    text.insert(ExponentPos(text, lower_conv == u'a' ? 'p' : 'e'), 1, '.');
  }
  if (upper) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
      return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    std::transform(prefix.begin(), prefix.end(), prefix.begin(), [](char c) { return c == 'x' ? 'X' : c; });
  }
  WString body;
  AppendAscii(body, text);
  Emit(out, s, prefix, body, s.zero && finite);
}

void FormatChar(WString& out, const Directive& s, const FormatArg& a) {
  const std::uint64_t v = IntegerValue(a, 64, false);
  WString body;
  if (s.narrow) {
    body.push_back(static_cast<WCHAR>(v & 0xFF));
  } else {
    cadtools::detail::AppendCodePoint(body, v > 0x10FFFF ? 0xFFFFFFFF : static_cast<std::uint32_t>(v));
  }
  Emit(out, s, {}, body, false);
}

void FormatPointer(WString& out, const Directive& s, const FormatArg& a) {
  const std::uint64_t v = IsInteger(a) ? IntegerValue(a, 64, false) : AddressOf(a);
  constexpr int kDigits = 2 * static_cast<int>(sizeof(void*));
  WString body;
  for (int shift = 4 * (kDigits - 1); shift >= 0; shift -= 4) {
    body.push_back(static_cast<WCHAR>("0123456789ABCDEF"[(v >> shift) & 0xF]));
  }
  Emit(out, s, {}, body, false);
}

class Formatter {
 public:
  Formatter(WString& out, const FormatArg* args, std::size_t count) noexcept
      : m_out(out), m_args(args), m_count(count) {}

  void Run(WStringView fmt) {
    std::size_t i = 0;
    while (i < fmt.size()) {
      const std::size_t pct = fmt.find(u'%', i);
      if (pct == WStringView::npos) {
        m_out.append(fmt.substr(i));
        return;
      }
      m_out.append(fmt.substr(i, pct - i));
      i = pct + 1;
      const std::optional<Directive> directive = ParseDirective(fmt, i);
      if (!directive) {
        // Not understood: copy the '%' and carry on after it, so that the
        // text that follows is still read (and no argument is taken).
        m_out.push_back(u'%');
        i = pct + 1;
        continue;
      }
      if (!Convert(*directive)) m_out.append(fmt.substr(pct, i - pct));
    }
  }

 private:
  const FormatArg* Next() noexcept { return m_next < m_count ? &m_args[m_next++] : nullptr; }

  // The value of an integer argument given for '*'.
  static bool IsNegative(const FormatArg& a) noexcept { return a.kind == Kind::kSigned && a.i < 0; }
  static std::uint64_t Magnitude(const FormatArg& a) noexcept {
    if (a.kind == Kind::kUnsigned) return a.u;
    return a.i < 0 ? 0 - static_cast<std::uint64_t>(a.i) : static_cast<std::uint64_t>(a.i);
  }
  static int StarValue(std::uint64_t magnitude) noexcept {
    return static_cast<int>(std::min<std::uint64_t>(magnitude, cadtools::kFormatMaxWidth));
  }

  // Takes the arguments of one conversion and writes it; false when an
  // argument is missing or of the wrong kind.
  bool Convert(Directive s) {
    if (s.conv == u'%') {
      m_out.push_back(u'%');
      return true;
    }
    bool ok = true;
    if (s.width_star) {
      const FormatArg* w = Next();
      ok = w != nullptr && IsInteger(*w);
      if (ok) {
        if (IsNegative(*w)) s.left = true;
        s.width = StarValue(Magnitude(*w));
      }
    }
    if (s.precision_star) {
      const FormatArg* p = Next();
      ok = ok && p != nullptr && IsInteger(*p);
      if (ok) s.precision = IsNegative(*p) ? -1 : StarValue(Magnitude(*p));
    }
    const FormatArg* a = Next();
    if (!ok || a == nullptr) return false;
    switch (s.conv) {
      case u'd': case u'i': case u'u': case u'o': case u'x': case u'X':
        if (IsString(*a)) return false;
        FormatInteger(m_out, s, *a);
        return true;
      case u'c': case u'C':
        if (IsString(*a)) return false;
        FormatChar(m_out, s, *a);
        return true;
      case u'f': case u'F': case u'e': case u'E': case u'g': case u'G': case u'a': case u'A':
        if (!IsInteger(*a) && a->kind != Kind::kFloat) return false;
        FormatFloat(m_out, s, *a);
        return true;
      case u's': case u'S':
        if (!IsString(*a)) return false;
        Emit(m_out, s, {}, StringValue(*a, s.precision), false);
        return true;
      default:  // p
        if (a->kind == Kind::kFloat) return false;
        FormatPointer(m_out, s, *a);
        return true;
    }
  }

  WString& m_out;
  const FormatArg* m_args;
  std::size_t m_count;
  std::size_t m_next = 0;
};

}  // namespace

void CString::FormatArgs(cadtools::WStringView fmt, const cadtools::detail::FormatArg* args, std::size_t count,
                         bool append) {
  // Built aside: an argument or the format may be this string itself.
  WString out;
  Formatter(out, args, count).Run(fmt);
  if (append) {
    m_str.append(out);
  } else {
    m_str.assign(out);
  }
}

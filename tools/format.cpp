#include "format.h"

#include <array>
#include <charconv>
#include <cmath>

namespace cadtools::cli {
namespace {

// 400 characters hold every form asked for here: the fixed notation of
// 1e308 alone has 309 digits.
template <class... Args>
std::string ToChars(double v, Args... how) {
  std::array<char, 400> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), v, how...);
  if (result.ec != std::errc()) return "?";
  return {buffer.data(), result.ptr};
}

// "1.2500" -> "1.25", "3.000" -> "3".
std::string TrimZeros(std::string text) {
  if (text.find('.') == std::string::npos || text.find('e') != std::string::npos) return text;
  while (text.back() == '0') text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace

std::string FormatNumber(double v) {
  // Plain decimals where people read them easily, exponents for the rest;
  // both are the shortest digits that read back as v.
  const double magnitude = std::fabs(v);
  if (v == 0.0) return "0";
  if (std::isnan(v)) return "nan";  // the sign of a NaN means nothing
  if (magnitude >= 1e-5 && magnitude < 1e15) return ToChars(v, std::chars_format::fixed);
  return ToChars(v, std::chars_format::scientific);
}

std::string FormatPoint(WPt p) { return FormatNumber(p.x) + " " + FormatNumber(p.y); }

std::string FormatPointText(WPt p) { return "(" + FormatNumber(p.x) + ", " + FormatNumber(p.y) + ")"; }

std::string FormatRect(const WRect& r) {
  return FormatNumber(r.left) + " " + FormatNumber(r.top) + " " + FormatNumber(r.right) + " " +
         FormatNumber(r.bottom);
}

std::string FormatRectText(const WRect& r) {
  return "(" + FormatNumber(r.left) + ", " + FormatNumber(r.top) + ", " + FormatNumber(r.right) +
         ", " + FormatNumber(r.bottom) + ")";
}

std::string FormatFixed(double v, int decimals) {
  std::string text = TrimZeros(ToChars(v, std::chars_format::fixed, decimals));
  return text == "-0" ? "0" : text;
}

std::string FormatRounded(double v, int digits) {
  if (std::isnan(v)) return "nan";
  return TrimZeros(ToChars(v == 0.0 ? 0.0 : v, std::chars_format::general, digits));
}

}  // namespace cadtools::cli

// Feeds the numbers and units of CMathTools: the bytes at the end give
// ints and doubles (FuzzedDataProvider takes numbers from the end), the
// rest is read as UTF-16 units (little-endian pairs) for every function
// that takes a text, the three host texts included. Besides crashes, hangs
// and undefined behaviour, a broken property traps:
//   - IsNumeric(s) implies IsHexNumeric(s) and, for a non-empty s, IsDigit(s);
//     IsDigit(s) implies IsDouble(s); every test answers 0 or 1;
//   - ReverseBinary twice is the identity;
//   - hextoi agrees with strtol for short ASCII hex texts, and reads back
//     itohex(v) for v >= 0; itohex(v, w) is w long and ends like itohex(v);
//   - BinaryToDecimal(DecimalToBinary(v)) == v for 0 <= v <= 1048575, and
//     agrees with strtol for texts of up to 31 binary digits;
//   - a formatter gives a non-empty result exactly when the validator
//     accepts the host text;
//   - RemoveInchMMFromString keeps a trimmed part of the text before its
//     marker, or nothing;
//   - the rounding functions keep NaN as NaN; line widths are 0.
#include <cadtools/cadtools.h>

#include "../src/numbers/host_format.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void Check(bool ok) {
  if (!ok) __builtin_trap();
}

CString TextFrom(const std::vector<std::uint8_t>& bytes) {
  cadtools::WString units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units.push_back(static_cast<WCHAR>(bytes[i] | (bytes[i + 1] << 8)));
  }
  return CString(units.data(), static_cast<int>(units.size()));
}

// The text as ASCII, or "" when a unit is beyond 0x7F or is a NUL.
std::string Ascii(const CString& s) {
  std::string out;
  for (const WCHAR c : s.View()) {
    if (c == 0 || c > 0x7F) return {};
    out.push_back(static_cast<char>(c));
  }
  return out;
}

bool AllUnitsIn(const CString& s, std::u16string_view set) {
  for (const WCHAR c : s.View()) {
    if (set.find(static_cast<char16_t>(c)) == std::u16string_view::npos) return false;
  }
  return true;
}

void Tests(const CString& s) {
  const int numeric = CMathTools::IsNumeric(s);
  const int hex = CMathTools::IsHexNumeric(s);
  const int digit = CMathTools::IsDigit(s);
  const int dbl = CMathTools::IsDouble(s);
  for (const int answer : {numeric, hex, digit, dbl}) Check(answer == 0 || answer == 1);
  if (numeric == 1) Check(hex == 1);
  if (numeric == 1 && !s.IsEmpty()) Check(digit == 1);
  if (digit == 1) Check(dbl == 1);
  if (s.IsEmpty()) Check(numeric == 1 && hex == 1 && digit == 0 && dbl == 0);
}

void Texts(const CString& s, int unit) {
  const CString reversed = CMathTools::ReverseBinary(s);
  Check(reversed.GetLength() == s.GetLength());
  Check(CMathTools::ReverseBinary(reversed) == s);

  const int parsed = CMathTools::hextoi(s);
  const std::string ascii = Ascii(s);
  if (!ascii.empty() && ascii.size() <= 7 && CMathTools::IsHexNumeric(s) == 1) {
    Check(parsed == static_cast<int>(std::strtol(ascii.c_str(), nullptr, 16)));
  }

  const LONG binary = CMathTools::BinaryToDecimal(s);
  if (!s.IsEmpty() && s.GetLength() <= 31 && AllUnitsIn(s, u"01")) {
    Check(binary == static_cast<LONG>(std::strtol(ascii.c_str(), nullptr, 2)));
  }

  const CString kept = CMathTools::RemoveInchMMFromString(s, unit);
  const CString marker = unit == 1 ? CString(u"\"") : CString(u"mm");
  const int at = s.Find(marker);
  if (at < 0) {
    Check(kept.IsEmpty());
  } else {
    CString expected = s.Left(at);
    expected.Trim();
    Check(kept == expected);
    Check(kept.GetLength() <= at);
  }
}

void Formatters(const CString& s, double a, double b, double c, double d) {
  const cadtools::WStringView text = cadtools::detail::HostFormatText(s);
  const bool fits_two = cadtools::detail::IsFloatFormat(text, 2);
  const bool fits_four = cadtools::detail::IsFloatFormat(text, 4);
  if (fits_two) Check(fits_four);

  CMathTools::m_strCadMes_037 = s;
  CMathTools::m_strCadMes_031 = s;
  CMathTools::m_strCadMes_036 = s;
  Check(CMathTools::FormatStringMMInch(a, b).IsEmpty() != fits_two);
  Check(CMathTools::FormatStringMMInch(a, b, c, d).IsEmpty() != fits_four);
  const CString rect = CMathTools::FormatStringMMInchRectangle(a, b, c, d);
  Check(rect.IsEmpty() != fits_four);
  if (fits_four) Check(rect == CMathTools::FormatStringMMInch(a, b, c, d));
}

void Integers(FuzzedDataProvider& data) {
  const int v = data.ConsumeIntegral<int>();
  const int width = data.ConsumeIntegralInRange<int>(-8, 3000);

  const CString hex = CMathTools::itohex(v);
  Check(hex.GetLength() >= 1 && hex.GetLength() <= 8);
  if (v >= 0) Check(CMathTools::hextoi(hex) == v);
  const CString padded = CMathTools::itohex(v, width);
  Check(padded.GetLength() == (width > 0 ? width : 0));
  if (width > 0) {
    const int overlap = width < hex.GetLength() ? width : hex.GetLength();
    Check(padded.Right(overlap) == hex.Right(overlap));
    for (int k = 0; k < width - hex.GetLength(); ++k) Check(padded[k] == u'0');
  }

  const auto value = data.ConsumeIntegral<LONG>();
  const CString bits = CMathTools::DecimalToBinary(value);
  Check(bits.GetLength() >= 1 && bits.GetLength() <= 32);
  if (value >= 0 && value <= 1048575) Check(CMathTools::BinaryToDecimal(bits) == value);
  Check(CMathTools::BinaryToDecimal(bits) == value);  // 32 digits or fewer wrap back exactly

  const CString label = CMathTools::CreateABCDuplicate(data.ConsumeIntegral<int>());
  Check(label.GetLength() >= 1 && label.GetLength() <= 7);

  const UINT index = data.ConsumeIntegral<UINT>();
  Check(CMathTools::GetLineWidth(index, data.ConsumeIntegral<int>()) == 0);
  Check(CMathTools::GetLineWidthAsFloat(index, data.ConsumeIntegral<int>()) == 0.0);
  const CString width_text =
      CMathTools::GetLineWidthAsString(index, data.ConsumeIntegral<int>(), data.ConsumeIntegral<int>());
  Check(width_text == CString(u"0") || width_text == CString(u"0.00") || width_text == CString(u"0.000"));
}

void Doubles(FuzzedDataProvider& data, double v, float f) {
  const bool nan = std::isnan(v);
  Check(std::isnan(CMathTools::MM2InchRound(v)) == nan);
  Check(std::isnan(CMathTools::Inch2MMRound(v)) == nan);
  Check(std::isnan(CMathTools::MM2InchRound(f)) == std::isnan(f));
  Check(std::isnan(CMathTools::Inch2MMRound(f)) == std::isnan(f));
  if (std::isinf(v)) {
    Check(CMathTools::MM2InchRound(v) == v);
    Check(CMathTools::Inch2MMRound(v) == v);
  }
  CMathTools::MM2Inch(v);
  CMathTools::Inch2MM(v);
  CMathTools::MM2Inchx2(v);
  CMathTools::RoundDouble(v, data.ConsumeIntegral<UINT>());
  const double small = CMathTools::RoundDouble(v, data.ConsumeIntegralInRange<UINT>(0, 20));
  if (nan) Check(std::isnan(small));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  const double a = data.ConsumeFloatingPoint<double>();
  const double b = data.ConsumeFloatingPoint<double>();
  const double c = data.ConsumeFloatingPoint<double>();
  const double d = data.ConsumeFloatingPoint<double>();
  const float f = data.ConsumeFloatingPoint<float>();
  const int unit = data.ConsumeIntegralInRange<int>(-1, 2);
  Integers(data);
  Doubles(data, a, f);

  const CString text = TextFrom(data.ConsumeRemainingBytes<std::uint8_t>());
  Tests(text);
  Texts(text, unit);
  Formatters(text, a, b, c, d);
  return 0;
}

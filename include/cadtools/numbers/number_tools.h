// cadtools::NumberTools: the numeric, radix and unit functions of
// CMathTools (include <cadtools/math_tools.h> and call them as
// CMathTools::...).
//
// Every function is stateless apart from the six host texts at the end.
// Several results look like slips and are kept on purpose because the host
// and its stored drawings depend on them; each is shown below with its
// example values:
// - the four tests answer the empty string differently (1, 1, 0, 0);
// - CreateABCDuplicate drops quotients from 1 to 25 (25 -> "@");
// - the inch-to-mm snapping knows 0.03 inch, not 0.003 (-> 0.08 mm);
// - RoundDouble sends a positive value below 1 with a fraction >= 0.5 to -1;
// - RemoveInchMMFromString empties a text without the unit;
// - the line widths are always 0.
//
// Guards. No call crashes, hangs or has undefined behaviour on any input:
// - hextoi clamps to INT_MAX / INT_MIN; BinaryToDecimal wraps in 32 bits.
// - itohex honours any width; one the string cannot be allocated for
//   raises CMemoryException*.
// - NaN and infinities pass through the mm/inch functions unchanged;
//   float overloads narrow out-of-range doubles to +-infinity.
// - RoundDouble with a huge (or negative, hence huge) count of decimals has
//   an infinite factor and gives NaN.
// - A host text that does not fit its numbers formats to "" (see
//   FormatStringMMInch).
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API NumberTools {
 public:
  // ---- Numeric strings ------------------------------------------------
  //
  // Each test scans from index 0 and stops at the first unit that fails.
  // IsNumeric and IsHexNumeric are ASCII only; IsDigit and IsDouble take
  // any Unicode decimal digit (general category Nd, cadtools::IsWideDigit),
  // so Arabic-Indic or fullwidth digits pass them.

  // 1 if every unit is '0'..'9'. The empty string gives 1.
  //   IsNumeric("0815")  // 1
  //   IsNumeric("")      // 1
  //   IsNumeric("1.5")   // 0
  //   IsNumeric("\u0663")  // 0 (Arabic-Indic three is not ASCII)
  static int IsNumeric(CString text) noexcept;
  // 1 if every unit is '0'..'9', 'A'..'F' or 'a'..'f'. The empty string
  // gives 1; no "0x" prefix, sign or space is accepted.
  //   IsHexNumeric("1aF")   // 1
  //   IsHexNumeric("")      // 1
  //   IsHexNumeric("0x1F")  // 0
  static int IsHexNumeric(CString text) noexcept;
  // 1 if the text is Unicode decimal digits with at most one separator ','
  // or '.' (either, whatever the locale) that is neither first nor last.
  // No sign, exponent, space or grouping. The empty string gives 0.
  //   IsDouble("12.5")   // 1
  //   IsDouble("0,25")   // 1
  //   IsDouble("12")     // 1
  //   IsDouble("5.")     // 0
  //   IsDouble(".5")     // 0
  //   IsDouble("1.2,3")  // 0 (two separators)
  //   IsDouble("-1.5")   // 0
  //   IsDouble("")       // 0
  static int IsDouble(CString text) noexcept;
  // 1 if every unit is a Unicode decimal digit. The empty string gives 0.
  //   IsDigit("123")     // 1
  //   IsDigit("\u0663")  // 1
  //   IsDigit("")        // 0
  static int IsDigit(CString text) noexcept;

  // ---- Radix conversion -----------------------------------------------

  // value in lower-case hexadecimal (a negative one as its 32-bit two's
  // complement), padded with '0' to width; a longer result keeps only its
  // last width digits. A width of 0 or less gives "". Widths are honoured
  // as given: one the string cannot be allocated for raises
  // CMemoryException*.
  //   itohex(255, 4)   // "00ff"
  //   itohex(10, 4)    // "000a"
  //   itohex(255, 1)   // "f"
  //   itohex(4096, 2)  // "00" (the leading "10" is cut away)
  //   itohex(-1, 4)    // "ffff"
  //   itohex(-1, 10)   // "00ffffffff"
  //   itohex(7, 0)     // ""
  static CString itohex(int value, int width);
  // The same without fill, width or truncation.
  //   itohex(255)  // "ff"
  //   itohex(0)    // "0"
  //   itohex(-1)   // "ffffffff"
  static CString itohex(int value);
  // Parses as the formatted extraction of an int in base 16 does, without
  // streams or locale: leading white space (cadtools::IsWideSpace) is
  // skipped, then an optional '+' or '-', an optional "0x" or "0X", and
  // hexadecimal digits of either case up to the first unit that is not one
  // (a unit beyond 0xFF never is). No leading digit gives 0; a value beyond
  // the int range clamps to INT_MAX or INT_MIN, as C++11 streams store on
  // overflow.
  //   hextoi("ff")         // 255
  //   hextoi("  -0X1a2z")  // -418
  //   hextoi("zz")         // 0
  //   hextoi("7fffffff")   // 2147483647
  //   hextoi("ffffffff")   // 2147483647 (clamped)
  //   hextoi("-80000000")  // -2147483648
  //   hextoi("-ffffffff")  // -2147483648 (clamped)
  static int hextoi(CString text) noexcept;
  // value in base 2, most significant digit first, no leading zeros. The
  // host's range is 0 to 1048575 (20 digits); outside it, the binary form
  // of the value taken as an unsigned 32-bit number.
  //   DecimalToBinary(0)        // "0"
  //   DecimalToBinary(5)        // "101"
  //   DecimalToBinary(1048576)  // "100000000000000000000"
  //   DecimalToBinary(-1)       // "11111111111111111111111111111111"
  static CString DecimalToBinary(LONG value);
  // Sum over i of (unit i - 48) * (int)pow(2, n - 1 - i), in 32 bits that
  // wrap. Units are not validated ("2" counts 2, "a" 49). The power is
  // truncated to int as x86 does: 2^31 and above (and infinity) give
  // INT_MIN, so from the 32nd digit from the right on only a unit's lowest
  // bit counts (in bit 31). Linear in the length.
  //   BinaryToDecimal("101")   // 5
  //   BinaryToDecimal("0011")  // 3
  //   BinaryToDecimal("2")     // 2
  //   BinaryToDecimal("")      // 0
  //   BinaryToDecimal("1" + 30 x "0")   // 1073741824
  //   BinaryToDecimal("1" + 31 x "0")   // -2147483648
  //   BinaryToDecimal("1" + 40 x "0")   // -2147483648 (2^40 is INT_MIN too)
  //   BinaryToDecimal("11" + 31 x "0")  // 0 (INT_MIN twice wraps)
  static LONG BinaryToDecimal(CString text) noexcept;
  // The UTF-16 units in reverse order; any text is accepted.
  //   ReverseBinary("0011")  // "1100"
  //   ReverseBinary("")      // ""
  static CString ReverseBinary(CString text);
  // A letter label, exactly as the host computes it: q = number / 25
  // (truncating), r = number - 25q, result = the unit 64 + r; then while
  // q > 25: r = q % 25, q = q / 25, the unit 65 + r is put in front. A
  // quotient from 1 to 25 is dropped, so numbers below 650 give one unit.
  //   CreateABCDuplicate(1)    // "A"
  //   CreateABCDuplicate(24)   // "X"
  //   CreateABCDuplicate(25)   // "@"
  //   CreateABCDuplicate(26)   // "A"
  //   CreateABCDuplicate(50)   // "@"
  //   CreateABCDuplicate(0)    // "@"
  //   CreateABCDuplicate(650)  // "B@"
  //   CreateABCDuplicate(651)  // "BA"
  //   CreateABCDuplicate(676)  // "CA"
  //   CreateABCDuplicate(-1)   // "?"  (64 - 1; negatives give '(' .. '@')
  static CString CreateABCDuplicate(int number);

  // ---- Millimetres and inches -----------------------------------------
  //
  // One inch is 25.4 mm. The rounding functions snap the usual drawing
  // sizes through this table (a key matches when |key - value| < 0.001,
  // the first match in order wins):
  //
  //   mm    0.08  0.18  0.25 0.35  0.5  0.7   1.0  1.25 1.5  2.0  2.5
  //   inch  0.003 0.007 0.01 0.014 0.02 0.028 0.04 0.05 0.06 0.08 0.1
  //   mm    3.0  3.175 3.5  4.0  4.5  5.0 6.35 10.0
  //   inch  0.12 0.125 0.14 0.16 0.18 0.2 0.25 0.4
  //
  // "Rounded" means formatted in fixed notation with 2, 3 or 5 decimals
  // and read back, correctly rounded and independent of the locale (the
  // value printf with "%.Nf" and wcstod give). NaN and infinities pass
  // through unchanged.

  // mm / 25.4.
  static double MM2Inch(double mm) noexcept;
  // inch * 25.4.
  static double Inch2MM(double inch) noexcept;
  // Square millimetres to square inches: mm2 / 645.16.
  static double MM2Inchx2(double mm2) noexcept;
  // The table's inch value rounded to 3 decimals for a millimetre key,
  // otherwise mm / 25.4 rounded to 5 decimals.
  //   MM2InchRound(3.175)   // 0.125
  //   MM2InchRound(2.0)     // 0.08
  //   MM2InchRound(0.3505)  // 0.014   (within 0.001 of 0.35)
  //   MM2InchRound(0.352)   // 0.01386 (no key: 0.352 / 25.4)
  //   MM2InchRound(7)       // 0.27559
  static double MM2InchRound(double mm) noexcept;
  // The same with every key and value held as a float: key - mm is taken
  // in single precision and compared in double against 0.001; the
  // fallback divides in double; the result is narrowed to float.
  //   MM2InchRound(0.35f)  // 0.014f
  //   MM2InchRound(7.0f)   // 0.27559f
  static float MM2InchRound(float mm) noexcept;
  // The table's millimetre value for an inch key, otherwise inch * 25.4;
  // either way rounded to 2 decimals. The inch keys are tried in the
  // host's order, which is not the table's: 0.03 (not 0.003) first, and
  // 0.1 after 0.125.
  //   Inch2MMRound(0.03)   // 0.08   (the 0.03 key: not 0.76)
  //   Inch2MMRound(0.003)  // 0.08   (no key: 0.0762 rounded)
  //   Inch2MMRound(0.125)  // 3.17   (3.175 lies just below in binary)
  //   Inch2MMRound(0.25)   // 6.35
  //   Inch2MMRound(1.0)    // 25.4
  static double Inch2MMRound(double inch) noexcept;
  // The same keys and order in single precision, as MM2InchRound(float);
  // the fallback multiplies in double.
  //   Inch2MMRound(0.03f)  // 0.08f
  static float Inch2MMRound(float inch) noexcept;
  // The host's rounding: factor = 10^decimals (the count passed through
  // single precision first); x = value * factor split by modf into ip and
  // f; if |f| >= 0.5, ip moves up when ip > 0 and down otherwise; result
  // ip / factor. The test is on ip, not x, so a positive x below 1 with
  // f >= 0.5 goes to -1. More than 308 decimals make the factor infinite
  // and the result NaN.
  //   RoundDouble(1.26, 1)  // 1.3
  //   RoundDouble(2.5, 0)   // 3.0
  //   RoundDouble(-2.5, 0)  // -3.0
  //   RoundDouble(0.4, 0)   // 0.0
  //   RoundDouble(0.5, 0)   // -1.0 (kept on purpose)
  //   RoundDouble(0.7, 0)   // -1.0 (kept on purpose)
  //   RoundDouble(0.05, 1)  // -0.1 (kept on purpose)
  static double RoundDouble(double value, UINT decimals) noexcept;

  // ---- Formatting through the host's texts ----------------------------
  //
  // The numbers are formatted with CString::Format through a host text.
  // The text is read up to its first NUL, as the host's C string is. A
  // text that does not fit its numbers gives "", never garbage: it is used
  // only if every conversion in it is a floating one -- '%', flags
  // "-+ #0", a width of digits, optionally '.' and digits, optionally 'l'
  // or 'L', and one of "fFeEgGaA" -- and there are no more conversions than
  // numbers. "%%" is a literal percent; fewer conversions than numbers are
  // fine (the rest are ignored). "%s", "%d", "%n", "%*f", "%.*f", an
  // unknown conversion, a lone '%' at the end, or one conversion too many
  // give "". So does an unassigned (empty) text. Widths and precisions
  // above 4096 are cut to 4096, as CString::Format does.
  //   m_strCadMes_037 = "%.2f mm (%.3f\")";
  //   FormatStringMMInch(2.5, 0.1)    // "2.50 mm (0.100\")"
  //   m_strCadMes_037 = "%s mm";
  //   FormatStringMMInch(2.5, 0.1)    // "" (not a floating conversion)

  // a, b through m_strCadMes_037.
  static CString FormatStringMMInch(double a, double b);
  // a, b, c, d through m_strCadMes_031.
  static CString FormatStringMMInch(double a, double b, double c, double d);
  // a, b, c, d through m_strCadMes_036.
  static CString FormatStringMMInchRectangle(double a, double b, double c, double d);
  // The text before the first unit marker, trimmed (CString::Trim). The
  // marker is the inch sign '"' (U+0022) for unit 1 and "mm" for any other
  // unit, case-sensitive. A text without the marker gives "".
  //   RemoveInchMMFromString("12.5 mm", 0)    // "12.5"
  //   RemoveInchMMFromString("3 mm 4 mm", 0)  // "3"
  //   RemoveInchMMFromString("0.5\"", 1)      // "0.5"
  //   RemoveInchMMFromString("12.5", 0)       // "" (kept on purpose)
  //   RemoveInchMMFromString("12.5 MM", 0)    // ""
  static CString RemoveInchMMFromString(CString text, int unit);

  // ---- Line widths ----------------------------------------------------
  //
  // The host's index-to-width lookup holds no entries, so every index has
  // the width 0 in every unit. Kept on purpose.

  // The width in thousandths, (int)(width * 1000 + 0.5): always 0.
  static int GetLineWidth(UINT index, int unit) noexcept;
  // The width: always 0.0.
  static double GetLineWidthAsFloat(UINT index, int unit) noexcept;
  // "%d" of the thousandths when asDecimal is 0 ("0"); otherwise "%.3f"
  // when threeDecimals is non-zero ("0.000") and "%.2f" when it is 0
  // ("0.00").
  //   GetLineWidthAsString(5, 1, 1)  // "0.000"
  static CString GetLineWidthAsString(UINT index, int asDecimal, int threeDecimals);

  // ---- Host texts -----------------------------------------------------
  //
  // Empty when the library is loaded; the host assigns them, the library
  // never writes them. Assignments take effect for the next call. Read
  // without locking, as everything runs on the host's UI thread.

  static CString m_strCadMes_031;  // format of FormatStringMMInch with four numbers
  static CString m_strCadMes_036;  // format of FormatStringMMInchRectangle
  static CString m_strCadMes_037;  // format of FormatStringMMInch with two numbers
  static CString m_strCadMes_113;  // kept for the host, not read here
  static CString m_strCadMes_114;  // kept for the host, not read here
  static CString m_strCadMes_115;  // kept for the host, not read here
};

}  // namespace cadtools

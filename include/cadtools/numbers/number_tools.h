// cadtools::NumberTools: the numeric, radix and unit functions of
// CMathTools (include <cadtools/math_tools.h> and call them as
// CMathTools::...).
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API NumberTools {
 public:
  // ---- Numeric strings ------------------------------------------------

  static int IsNumeric(CString text);
  static int IsHexNumeric(CString text);
  static int IsDouble(CString text);
  static int IsDigit(CString text);

  // ---- Radix conversion -----------------------------------------------

  static CString itohex(int value, int width);
  static CString itohex(int value);
  static int hextoi(CString text);
  static CString DecimalToBinary(LONG value);
  static LONG BinaryToDecimal(CString text);
  static CString ReverseBinary(CString text);
  static CString CreateABCDuplicate(int number);

  // ---- Millimetres and inches -----------------------------------------

  static double MM2Inch(double mm);
  static double Inch2MM(double inch);
  static double MM2Inchx2(double mm2);
  static double MM2InchRound(double mm);
  static float MM2InchRound(float mm);
  static double Inch2MMRound(double inch);
  static float Inch2MMRound(float inch);
  static double RoundDouble(double value, UINT decimals);

  // ---- Formatting through the host's texts ----------------------------

  static CString FormatStringMMInch(double a, double b);
  static CString FormatStringMMInch(double a, double b, double c, double d);
  static CString FormatStringMMInchRectangle(double a, double b, double c, double d);
  static CString RemoveInchMMFromString(CString text, int unit);

  // ---- Line widths ----------------------------------------------------

  static int GetLineWidth(UINT index, int unit);
  static double GetLineWidthAsFloat(UINT index, int unit);
  static CString GetLineWidthAsString(UINT index, int asDecimal, int threeDecimals);

  // ---- Host texts -----------------------------------------------------

  static CString m_strCadMes_031;  // format of FormatStringMMInch with four numbers
  static CString m_strCadMes_036;  // format of FormatStringMMInchRectangle
  static CString m_strCadMes_037;  // format of FormatStringMMInch with two numbers
  static CString m_strCadMes_113;  // kept for the host, not read here
  static CString m_strCadMes_114;  // kept for the host, not read here
  static CString m_strCadMes_115;  // kept for the host, not read here
};

}  // namespace cadtools

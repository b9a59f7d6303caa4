// cadtools::TextEditing: splitting, trimming, prefixes, searching and
// parsing of CTextTools (include <cadtools/text_tools.h> and call them as
// CTextTools::...).
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API TextEditing {
 public:
  // ---- Splitting ------------------------------------------------------

  static void SplitStrEx(CArray<CString, CString>& fields, CString str, WCHAR sep);
  static void SplitString(CArray<CString, CString>& fields, CString str, CString sep, int keepLeadingEmpty);

  // ---- Trimming -------------------------------------------------------

  static CString Trim(CString str);
  static CString TrimChar(CString str, WCHAR ch);
  static CString TrimFirstChar(CString str, WCHAR ch);
  static CString TrimStringBySeparator(CString str, CString open, CString close);
  static CString TrimStringBySeparatorEx(CString str, CString open, CString close);
  static CString Remove(CString str, WCHAR ch);

  // ---- Prefixes -------------------------------------------------------

  static CString AddPrefix(const CString& str, const CString& prefix);
  static CString RemovePrefix(const CString& str, const CString& prefix);

  // ---- Searching ------------------------------------------------------

  static int FindNoCase(CString str, CString sub, int start);
  static int FindFirstSeparateStrInStr(CString str, CString word, WCHAR sep, CString& rest);

  // ---- Parsing and cutting --------------------------------------------

  static void FillLongMapFromString(CMap<LONG, LONG, short, short>& set, CString str, WCHAR sep);
  static void GetCharactersArray(CString str, CStringArray& characters);

  // ---- Tests ----------------------------------------------------------

  static bool IsSameArrays(const CStringArray& a, const CStringArray& b);
  static int IsStringDigit(CString str);
  static int IsValidNumberFormat(CString fmt);
  static CString FormatFloatNumber(CString text, int minDecimals);
};

}  // namespace cadtools

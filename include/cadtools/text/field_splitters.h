// cadtools::FieldSplitters: the two field splitters of CMathTools
// (include <cadtools/math_tools.h> and call them as CMathTools::...).
//
// Both scan the string one UTF-16 unit at a time and append each field to
// `fields` after whatever the caller left in it; the array is never
// cleared. Their rules for empty fields differ on purpose (symbol paths and
// stored multi-line texts are cut this way), and differ again from
// CTextTools::SplitStrEx and CTextTools::SplitString. Embedded NULs are
// ordinary units.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API FieldSplitters {
 public:
  // Every sep is a field boundary: empty fields between adjacent
  // separators, before a leading one and after a trailing one are all
  // kept, and an empty str gives one empty field. Returns the array's size
  // after the call.
  //   SplitStr(f, L"DB\\Folder\\Sym", '\\')  // "DB", "Folder", "Sym"
  //   SplitStr(f, L";a;;b;", ';')            // "", "a", "", "b", ""
  //   SplitStr(f, L"", ';')                  // ""
  //   (f held 2 fields before)               // returns 2 + the new ones
  static int SplitStr(CArray<CString, CString>& fields, CString str, WCHAR sep);

  // Splits at each CR LF pair (13, 10). Every other CR is dropped, and so
  // is a LF that does not follow a CR, without splitting. The last field is
  // always appended, so an empty str gives one empty field and a trailing
  // pair an empty last field. Returns 1 in every case.
  //   SplitStrOnSoftReturn(f, L"a\r\nb\nc\r")  // "a", "bc"
  //   SplitStrOnSoftReturn(f, L"\r\n")         // "", ""
  //   SplitStrOnSoftReturn(f, L"\n\rx")        // "x"
  static int SplitStrOnSoftReturn(CArray<CString, CString>& fields, CString str);
};

}  // namespace cadtools

// cadtools::FieldSplitters: the two field splitters of CMathTools
// (include <cadtools/math_tools.h> and call them as CMathTools::...).
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API FieldSplitters {
 public:
  static int SplitStr(CArray<CString, CString>& fields, CString str, WCHAR sep);
  static int SplitStrOnSoftReturn(CArray<CString, CString>& fields, CString str);
};

}  // namespace cadtools

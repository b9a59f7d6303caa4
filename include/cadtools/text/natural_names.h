// cadtools::NaturalNames: natural comparison, wildcard matching and
// next-name generation of CTextTools (include <cadtools/text_tools.h> and
// call them as CTextTools::...).
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API NaturalNames {
 public:
  // ---- Natural comparison ---------------------------------------------

  static int NaturalCompare(const WCHAR* a, const WCHAR* b);
  static int CompareRight(const WCHAR* a, const WCHAR* b);
  static int CompareLeft(const WCHAR* a, const WCHAR* b);

  // ---- Wildcard matching ----------------------------------------------

  static int IsTextLike(CString text, CString pattern);
  static bool IsTextLikeArray(CString text, const CStringArray& list);

  // ---- Next name ------------------------------------------------------

  static CString GetNextName(CString name);

 private:
  static void SplitTextName(CString name, CStringArray& texts, CStringArray& numbers);
  static CString GetNextName(CStringArray& texts, CStringArray& numbers, int step, int factor);
};

}  // namespace cadtools

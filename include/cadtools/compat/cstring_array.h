// CStringArray: the framework's array of CString, a CArray of CString with
// the same interface (INT_PTR indexes, CInvalidArgException* out of range).
//
//   CStringArray names;
//   names.Add(CADTOOLS_WIDE("Wall"));    // 0; a literal converts to CString
//   names.Add(CString(u"Door"));         // 1
//   names[1] == CADTOOLS_WIDE("Door")    // true
//   names.GetAt(2);                      // throws CInvalidArgException*
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cstring.h>

class CStringArray : public CArray<CString, const CString&> {
 public:
  using CArray::CArray;
};

// CByteArray: the framework's growable array of bytes, a CArray of BYTE.
//
//   CByteArray bytes;
//   bytes.Add(0x7F);          // 0
//   bytes.GetSize();          // 1
//   bytes.GetAt(1);           // throws CInvalidArgException*
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/win_types.h>

class CByteArray : public CArray<BYTE, BYTE> {
 public:
  using CArray::CArray;
};

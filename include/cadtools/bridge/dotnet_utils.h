// Strings between the native CString and the managed System.String.
//
//   Ref<System::String> s = CDotNetUtils::CString2DotNetString(u"Klemme X1");
//   CDotNetUtils::DotNetString2CString(s);         // "Klemme X1"
//   CDotNetUtils::DotNetString2CString(nullptr);   // "" (a null string is not an error)
//   CDotNetUtils::CString2DotNetString(u"");       // an empty managed string, not null
//
// Units are copied as they are: umlauts, CJK and surrogate pairs survive a
// round trip, lone surrogates too. Both directions stop at the first NUL, as
// the host's conversions read zero-terminated buffers:
//   CString2DotNetString(CString(u"ab\0cd", 5))    // "ab"
//   DotNetString2CString(<managed "ab\0cd">)       // "ab"
#pragma once

#include <cadtools/bridge/gcroot.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/export.h>

class CADTOOLS_API CDotNetUtils {
 public:
  static CString DotNetString2CString(const cadtools::bridge::Ref<System::String>& a_strText);
  static cadtools::bridge::Ref<System::String> CString2DotNetString(CString a_strText);
};

// The application name in the default registry root.
//
//   cadtools::SetApplicationName(CADTOOLS_WIDE("Host"));
//   CRegBase::GetRegBase();   // "Software\Quenby\Host\Version V8R1\" (no root set)
//
// The host names itself once at start-up, before its first setting is
// read. Until it does, the name is the running program's file name without
// directory and extension ("Host" for C:\Programs\Host.exe), which is what
// the host's settings have always been filed under.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/export.h>

namespace cadtools {

CADTOOLS_API void SetApplicationName(const CString& name);
// The name set last, or the program's base name while none was set (empty
// only when even that cannot be found).
CADTOOLS_API CString GetApplicationName();

}  // namespace cadtools

// The module that supplies the host's dialog resources, by name.
//
// Dialog placements are stored per resource module (see base_dialog.h), so
// a dialog of the same number in two language modules keeps two places.
// The name is the module file's base name, without directory and
// extension:
//
//   cadtools::ui::ModuleBaseName(CADTOOLS_WIDE("C:\\Programs\\Host.exe"));  // "Host"
//
// On Windows the host names the module by handle; until it does, it is the
// program itself, which is where the host's own resources come from.
// Elsewhere the host names it by text; until it does, it is the running
// program's base name.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools::ui {

#if defined(_WIN32)
// nullptr goes back to the program.
CADTOOLS_API void SetResourceModule(HMODULE module) noexcept;
// Where dialog templates and icons are found: the module set, else the
// program.
CADTOOLS_API HMODULE GetResourceModule() noexcept;
#else
// An empty name goes back to the program's name.
CADTOOLS_API void SetResourceModuleName(const CString& name);
#endif

// The current resource module's base name; empty when its file name cannot
// be had.
CADTOOLS_API CString GetResourceModuleName();

// The base name of a module path, split as the Windows C runtime splits
// paths: both slashes separate directories, a drive "X:" is dropped, the
// extension starts at the last dot of the file name. A path whose directory
// is longer than 259 characters, or whose file name or extension is longer
// than 255, gives an empty name, as such paths always have: names stored
// for them must keep matching.
//   "\\server\share\Lib.dll.mui"   -> "Lib.dll"
//   "Host."                        -> "Host"
//   "/opt/host/bin/host"           -> "host"
CADTOOLS_API CString ModuleBaseName(const CString& path);

}  // namespace cadtools::ui

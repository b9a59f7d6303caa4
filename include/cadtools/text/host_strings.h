// The host's string resources, as the library reads them (the default font
// face, resource 19191, is one).
//
// The strings live in the host's resource modules, not in the library.
// The host (or a test) may register a text for an id; a registered text
// wins. Otherwise, on Windows, the string comes from the host's resource
// module (the program's own unless SetHostResourceModule names another);
// elsewhere there is no module, and an unregistered id is the empty string.
//
//   cadtools::SetHostString(19191, CADTOOLS_WIDE("Tahoma (8pt)"));
//   cadtools::LoadHostString(19191);   // "Tahoma (8pt)"
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

// Registers text for id, replacing an earlier one. Not thread-safe against
// LoadHostString: the host registers its strings at start-up.
CADTOOLS_API void SetHostString(UINT id, const CString& text);
// Forgets the text registered for id.
CADTOOLS_API void ClearHostString(UINT id);
// The registered text, else the module's string, else "".
CADTOOLS_API CString LoadHostString(UINT id);

#if defined(_WIN32)
// The module LoadHostString reads string resources from; null means the
// program's own module.
CADTOOLS_API void SetHostResourceModule(HMODULE module) noexcept;
#endif

}  // namespace cadtools

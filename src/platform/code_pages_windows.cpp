// The system's code pages and the conversions between them and UTF-16,
// straight from the system on Windows.
#include <cadtools/text/code_pages.h>

#include "text/code_page_conversion.h"

namespace cadtools {

UINT SystemAnsiCodePage() noexcept { return ::GetACP(); }

UINT SystemOemCodePage() noexcept { return ::GetOEMCP(); }

}  // namespace cadtools

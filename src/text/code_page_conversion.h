// The platform layer of the code-page conversions: MultiByteToWideChar and
// WideCharToMultiByte without flags, on Windows the system's, elsewhere
// our own with the same results.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>

#include <memory>
#include <string>
#include <string_view>

namespace cadtools::codepage {

inline constexpr UINT kUtf8 = 65001;

// bytes in codePage as UTF-16. An invalid code page gives the empty
// string (Windows' length query 0); every byte is converted, NULs too.
WString MultiByteToWide(UINT codePage, std::string_view bytes);
// units in codePage; characters the code page lacks become its default
// character. An invalid code page gives the empty string.
std::string WideToMultiByte(UINT codePage, WStringView units);
// units as UTF-8 in a new[] buffer ending in a zero byte, written in place
// rather than through a string and a copy: the host hands the buffer of
// WideCharToMB on, and long texts made that copy a third of the time.
std::unique_ptr<char[]> WideToUtf8Buffer(WStringView units);

}  // namespace cadtools::codepage

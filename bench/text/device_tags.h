// Device tags as a cabinet drawing carries them, for the text pairs: the
// same tags in UTF-16 for our functions and in UTF-8 for the C library's,
// built once from a fixed seed before any timed loop.
//
// Kinds, mixed at random: "-K12", "-M3.2" (devices), "X1:23" (terminals),
// "PLC.Rack1.Slot04.Ch7" (I/O addresses), "=A1+B2-X15:7" (full
// designations), "Motor 12", "Lüfter 3" (names with a space, some beyond
// ASCII), "-K007", "X01:03" (leading zeros). One tag in six is in lower case.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

// Each side keeps the tags as its users would: CStrings (the host's
// strings, one heap block each beyond a few units) and std::strings (which
// hold short texts inline), in generation order.
struct TagList {
  std::vector<std::string> utf8;
  std::vector<CString> utf16;
  // NUL-terminated views of the strings above, in the same order.
  std::vector<const char*> narrow;
  std::vector<const WCHAR*> wide;
};

// count tags from a fixed seed; the same count gives the same tags.
TagList MakeDeviceTags(std::size_t count);

}  // namespace bench

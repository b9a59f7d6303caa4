// Registry value data on the command line of `cadtools settings`: the TYPE
// words of `set`, and the notation `get` and `list` print.
//
//   ParseTypedValue("dword", {"0x2a"})       // REG_DWORD 2a 00 00 00
//   ParseTypedValue("point", {"3,-4"})       // REG_BINARY 03 00 00 00 fc ff ff ff
//   FormatValue(REG_SZ, data of "red")       // sz "red"
//   FormatValueAs("rect", 16 bytes)          // rect 0,0,100,50
//
// The host's typed settings (float, bool, point, rect, wrect) are stored as
// REG_BINARY raw little-endian images, exactly as the library's typed
// values write them, so a value set here reads back in the host.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_registry_types.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::cli {

struct TypedValue {
  DWORD type = REG_NONE;
  std::vector<BYTE> data;
};

// The data `set KEY TYPE VALUE...` stores. TYPE is one of sz, expand_sz,
// multi_sz, dword, qword, binary, none, float, bool, point, rect, wrect
// or hex(N), or a REG_ name (REG_SZ, REG_DWORD, ...), in any letter case.
// Throws UsageError for an unknown type or values it cannot take.
TypedValue ParseTypedValue(std::string_view type, std::span<const std::string_view> values);

// "TYPE VALUE...": the data in the notation of `set`, taken by its
// registry type. Strings are quoted, with \\, \", \n, \r, \t and \uXXXX
// (other control characters and lone surrogates) escaped; numbers are
// decimal; bytes are hex. Data that does not have its type's exact shape
// is shown as hex(N) with its bytes, which `set` takes back unchanged.
std::string FormatValue(DWORD type, std::span<const BYTE> data);
// The data read as TYPE would read it (the stored type is not looked at,
// as in the host's typed values), or nullopt when it has too few bytes or
// the wrong shape. Throws UsageError for an unknown type.
std::optional<std::string> FormatValueAs(std::string_view type, std::span<const BYTE> data);

// Command-line text (UTF-8) as UTF-16. Names must come through unchanged,
// so text that is not valid UTF-8 is refused (UsageError), not patched.
WString Utf16Argument(std::string_view word);

// "REG_SZ", "REG_DWORD", ..., or "type 0x80000000" for numbers without a name.
std::string RegTypeName(DWORD type);

// `text` for a line of output: UTF-8 with control characters and lone
// surrogates escaped as in FormatValue, without quotes.
std::string EscapedName(WStringView text);

}  // namespace cadtools::cli

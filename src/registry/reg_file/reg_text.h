// Pieces shared by the .reg reader, writer and registry walk.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/registry/reg_file.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace cadtools::registry::detail {

inline constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00";
inline constexpr std::string_view kHeader4 = "REGEDIT4";

// Decodes UTF-8 strictly (no overlong forms, no encoded surrogates, nothing
// past U+10FFFF) and appends to `out`. Returns the offset of the first byte
// that is not part of a valid sequence, or std::string_view::npos.
std::size_t AppendUtf8(std::string_view in, WString& out);

// `text` as UTF-8 for a message: at most 40 units, then "...".
std::string Excerpt(WStringView text);

// "HKEY_CURRENT_USER\path" (or the hive alone for an empty path), UTF-8.
std::string KeyText(RegHive hive, WStringView path);

constexpr bool IsLineBreak(WCHAR ch) noexcept { return ch == u'\r' || ch == u'\n'; }

}  // namespace cadtools::registry::detail

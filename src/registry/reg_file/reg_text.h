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

// The text of a whole .reg file: UTF-16LE after its byte order mark, UTF-8
// after its mark, and without a mark UTF-8 when the bytes are valid UTF-8,
// else the ANSI code page (REGEDIT4 files written on Windows are ANSI). A
// DOS end-of-file mark (0x1A) at the end is dropped. error is set, with
// the line, for bytes that cannot be read as text.
//   DecodeRegText("caf\xC3\xA9")   // u"café"
//   DecodeRegText("caf\xE9")        // u"café" (code page 1252)
struct DecodedText {
  WString text;
  std::size_t error_line = 0;
  std::string error;
};
DecodedText DecodeRegText(std::string_view bytes);

// 8-bit text (string data of REGEDIT4 files) as UTF-16, by the same rule.
WString WidenNarrowText(std::string_view bytes);

// `text` as UTF-8 for a message: at most 40 units, then "...".
std::string Excerpt(WStringView text);

// "HKEY_CURRENT_USER\path" (or the hive alone for an empty path), UTF-8.
std::string KeyText(RegHive hive, WStringView path);

// text as UTF-8, lone surrogates as U+FFFD.
std::string Utf8(WStringView text);

constexpr bool IsLineBreak(WCHAR ch) noexcept { return ch == u'\r' || ch == u'\n'; }

}  // namespace cadtools::registry::detail

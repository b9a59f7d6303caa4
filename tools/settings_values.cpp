#include "settings_values.h"

#include "args.h"
#include "errors.h"
#include "format.h"

#include <cadtools/registry/reg_file.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace cadtools::cli {
namespace {

using registry::DecodeRegMultiString;
using registry::DecodeRegString;

enum class Form { kString, kMultiString, kDword, kQword, kBytes, kFloat, kBool, kPoint, kRect, kWRect };

struct TypeInfo {
  std::string word;
  DWORD type;
  Form form;
};

struct TypeName {
  std::string_view word;
  std::string_view reg_name;  // empty for the host's typed forms
  DWORD type;
  Form form;
};

constexpr TypeName kTypes[] = {
    {"sz", "REG_SZ", REG_SZ, Form::kString},
    {"expand_sz", "REG_EXPAND_SZ", REG_EXPAND_SZ, Form::kString},
    {"multi_sz", "REG_MULTI_SZ", REG_MULTI_SZ, Form::kMultiString},
    {"dword", "REG_DWORD", REG_DWORD, Form::kDword},
    {"qword", "REG_QWORD", REG_QWORD, Form::kQword},
    {"binary", "REG_BINARY", REG_BINARY, Form::kBytes},
    {"none", "REG_NONE", REG_NONE, Form::kBytes},
    {"float", "", REG_BINARY, Form::kFloat},
    {"bool", "", REG_BINARY, Form::kBool},
    {"point", "", REG_BINARY, Form::kPoint},
    {"rect", "", REG_BINARY, Form::kRect},
    {"wrect", "", REG_BINARY, Form::kWRect},
};

constexpr std::string_view kTypeList =
    "sz, expand_sz, multi_sz, dword, qword, binary, none, float, bool, point, rect, "
    "wrect or hex(N)";

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

std::string Quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

std::string HexNumber(std::uint64_t value) {
  char text[24];
  std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(value));
  return text;
}

TypeInfo LookUp(std::string_view word) {
  const std::string lower = Lower(word);
  for (const TypeName& t : kTypes) {
    if (lower == t.word || (!t.reg_name.empty() && lower == Lower(t.reg_name))) {
      return {std::string(t.word), t.type, t.form};
    }
  }
  // hex(N): any registry type by its number, as in .reg files.
  if (lower.size() > 5 && lower.starts_with("hex(") && lower.back() == ')') {
    const std::string_view digits = std::string_view(lower).substr(4, lower.size() - 5);
    DWORD type = 0;
    const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), type, 16);
    if (ec == std::errc() && end == digits.data() + digits.size())
      return {"hex(" + HexNumber(type) + ")", type, Form::kBytes};
  }
  throw UsageError("unknown type " + Quoted(word) + ": use " + std::string(kTypeList));
}

// The words of a list value split at commas and white space: "3,4", "3 4"
// and "3," "4" all give 3 and 4.
std::vector<std::string_view> Tokens(std::span<const std::string_view> values) {
  std::vector<std::string_view> tokens;
  for (const std::string_view value : values) {
    std::size_t start = 0;
    while (start <= value.size()) {
      const std::size_t end = value.find_first_of(", \t", start);
      const std::string_view token = value.substr(start, end == std::string_view::npos ? end : end - start);
      if (!token.empty()) tokens.push_back(token);
      if (end == std::string_view::npos) break;
      start = end + 1;
    }
  }
  return tokens;
}

// Decimal, or hex after 0x.
std::uint64_t ParseUnsigned(std::string_view word, std::uint64_t max) {
  std::string_view digits = word;
  int base = 10;
  if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
    digits.remove_prefix(2);
    base = 16;
  }
  std::uint64_t value = 0;
  const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
  if (ec != std::errc() || end != digits.data() + digits.size() || digits.empty() || value > max) {
    throw UsageError(Quoted(word) + " is not a number from 0 to " + std::to_string(max) + " (decimal or 0x hex)");
  }
  return value;
}

std::int32_t ParseInt32(std::string_view word) {
  std::int32_t value = 0;
  const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (ec != std::errc() || end != word.data() + word.size()) {
    throw UsageError(Quoted(word) + " is not a whole number from -2147483648 to 2147483647");
  }
  return value;
}

void AppendLittleEndian(std::vector<BYTE>& data, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) data.push_back(static_cast<BYTE>((value >> (8 * i)) & 0xFF));
}

std::uint64_t ReadLittleEndian(std::span<const BYTE> data, std::size_t offset, std::size_t bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < bytes; ++i) value |= static_cast<std::uint64_t>(data[offset + i]) << (8 * i);
  return value;
}

void ExpectCount(const TypeInfo& t, std::size_t got, std::size_t want, std::string_view what) {
  if (got != want) {
    throw UsageError(t.word + " takes " + std::string(what) + ", got " + std::to_string(got) + " value" +
                     (got == 1 ? "" : "s"));
  }
}

std::string FloatText(float f) {
  std::array<char, 64> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), f);
  return std::string(buffer.data(), result.ptr);
}

std::string BytesText(std::span<const BYTE> data) {
  std::string text;
  for (const BYTE b : data) {
    char hex[4];
    std::snprintf(hex, sizeof hex, "%02x", static_cast<unsigned>(b));
    text += (text.empty() ? "" : " ") + std::string(hex);
  }
  return text;
}

std::string Escaped(WStringView text, bool quote) {
  std::string out = quote ? "\"" : "";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const WCHAR unit = text[i];
    const bool pair =
        unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
    if (pair) {
      out += ToUtf8(CString(text.data() + i, 2));
      ++i;
    } else if (quote && (unit == u'\\' || unit == u'"')) {
      out += '\\';
      out += static_cast<char>(unit);
    } else if (unit == u'\n') {
      out += "\\n";
    } else if (unit == u'\r') {
      out += "\\r";
    } else if (unit == u'\t') {
      out += "\\t";
    } else if (unit < 0x20 || unit == 0x7F || (unit >= 0xD800 && unit <= 0xDFFF)) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
      out += escape;
    } else {
      out += ToUtf8(CString(&unit, 1));
    }
  }
  return quote ? out + "\"" : out;
}

std::string Join(const std::string& type, const std::string& value) {
  return value.empty() ? type : type + " " + value;
}

// The host's string settings take the text up to the first NUL.
WString HostText(std::span<const BYTE> data) {
  WString text;
  for (std::size_t i = 0; i + 1 < data.size(); i += 2) {
    const auto unit = static_cast<WCHAR>(data[i] | (data[i + 1] << 8));
    if (unit == 0) break;
    text.push_back(unit);
  }
  return text;
}

std::string Coordinates(std::span<const BYTE> data, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    const auto bits = static_cast<std::uint32_t>(ReadLittleEndian(data, static_cast<std::size_t>(4 * i), 4));
    text += (i == 0 ? "" : ",") + std::to_string(static_cast<std::int32_t>(bits));
  }
  return text;
}

}  // namespace

TypedValue ParseTypedValue(std::string_view type, std::span<const std::string_view> values) {
  const TypeInfo t = LookUp(type);
  TypedValue v{t.type, {}};
  switch (t.form) {
    case Form::kString:
      ExpectCount(t, values.size(), 1, "one string");
      v.data = registry::EncodeRegString(Utf16Argument(values[0]));
      break;
    case Form::kMultiString: {
      std::vector<WString> strings;
      for (const std::string_view s : values) strings.push_back(Utf16Argument(s));
      v.data = registry::EncodeRegMultiString(strings);
      break;
    }
    case Form::kDword:
      ExpectCount(t, values.size(), 1, "one number");
      AppendLittleEndian(v.data, ParseUnsigned(values[0], std::numeric_limits<std::uint32_t>::max()), 4);
      break;
    case Form::kQword:
      ExpectCount(t, values.size(), 1, "one number");
      AppendLittleEndian(v.data, ParseUnsigned(values[0], std::numeric_limits<std::uint64_t>::max()), 8);
      break;
    case Form::kBytes:
      for (const std::string_view token : Tokens(values)) {
        unsigned byte = 0;
        const auto [end, ec] = std::from_chars(token.data(), token.data() + token.size(), byte, 16);
        if (ec != std::errc() || end != token.data() + token.size() || token.size() > 2) {
          throw UsageError(Quoted(token) + " is not a hex byte (00 to ff)");
        }
        v.data.push_back(static_cast<BYTE>(byte));
      }
      break;
    case Form::kFloat: {
      ExpectCount(t, values.size(), 1, "one number");
      float f = 0.0f;
      const std::string_view word = values[0];
      const auto [end, ec] = std::from_chars(word.data(), word.data() + word.size(), f);
      if (ec != std::errc() || end != word.data() + word.size() || !std::isfinite(f)) {
        throw UsageError(Quoted(word) + " is not a finite single-precision number");
      }
      AppendLittleEndian(v.data, std::bit_cast<std::uint32_t>(f), 4);
      break;
    }
    case Form::kBool: {
      ExpectCount(t, values.size(), 1, "true or false");
      const std::string word = Lower(values[0]);
      if (word != "true" && word != "false" && word != "1" && word != "0") {
        throw UsageError("bool takes true, false, 1 or 0, not " + Quoted(values[0]));
      }
      v.data.push_back(word == "true" || word == "1" ? 1 : 0);
      break;
    }
    case Form::kPoint:
    case Form::kRect: {
      const std::vector<std::string_view> tokens = Tokens(values);
      const bool point = t.form == Form::kPoint;
      ExpectCount(t, tokens.size(), point ? 2 : 4, point ? "X,Y" : "L,T,R,B");
      for (const std::string_view token : tokens) {
        AppendLittleEndian(v.data, static_cast<std::uint32_t>(ParseInt32(token)), 4);
      }
      break;
    }
    case Form::kWRect: {
      const std::vector<std::string_view> tokens = Tokens(values);
      ExpectCount(t, tokens.size(), 4, "L,T,R,B");
      for (const std::string_view token : tokens) {
        AppendLittleEndian(v.data, std::bit_cast<std::uint64_t>(ParseNumber(token)), 8);
      }
      break;
    }
  }
  return v;
}

std::string FormatValue(DWORD type, std::span<const BYTE> data) {
  switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
      if (const auto text = DecodeRegString(data)) {
        return Join(type == REG_SZ ? "sz" : "expand_sz", Escaped(*text, true));
      }
      break;
    case REG_MULTI_SZ:
      if (const auto strings = DecodeRegMultiString(data)) {
        std::string text = "multi_sz";
        for (const WString& s : *strings) text += " " + Escaped(s, true);
        return text;
      }
      break;
    case REG_DWORD:
      if (data.size() == 4) return "dword " + std::to_string(ReadLittleEndian(data, 0, 4));
      break;
    case REG_QWORD:
      if (data.size() == 8) return "qword " + std::to_string(ReadLittleEndian(data, 0, 8));
      break;
    case REG_BINARY:
      return Join("binary", BytesText(data));
    case REG_NONE:
      return Join("none", BytesText(data));
    default:
      break;
  }
  return Join("hex(" + HexNumber(type) + ")", BytesText(data));
}

std::optional<std::string> FormatValueAs(std::string_view type, std::span<const BYTE> data) {
  const TypeInfo t = LookUp(type);
  std::string value;
  switch (t.form) {
    case Form::kString:
      value = Escaped(HostText(data), true);
      break;
    case Form::kMultiString: {
      const auto strings = DecodeRegMultiString(data);
      if (!strings) return std::nullopt;
      for (const WString& s : *strings) value += (value.empty() ? "" : " ") + Escaped(s, true);
      break;
    }
    case Form::kDword:
    case Form::kQword: {
      // Shorter data fills the low bytes, as the host's DWORD setting reads it.
      const std::size_t size = t.form == Form::kDword ? 4 : 8;
      if (data.size() > size) return std::nullopt;
      value = std::to_string(ReadLittleEndian(data, 0, data.size()));
      break;
    }
    case Form::kBytes:
      value = BytesText(data);
      break;
    case Form::kFloat:
      if (data.size() < 4) return std::nullopt;
      value = FloatText(std::bit_cast<float>(static_cast<std::uint32_t>(ReadLittleEndian(data, 0, 4))));
      break;
    case Form::kBool:
      if (data.empty()) return std::nullopt;
      value = data[0] != 0 ? "true" : "false";
      break;
    case Form::kPoint:
      if (data.size() < 8) return std::nullopt;
      value = Coordinates(data, 2);
      break;
    case Form::kRect:
      if (data.size() < 16) return std::nullopt;
      value = Coordinates(data, 4);
      break;
    case Form::kWRect:
      if (data.size() < 32) return std::nullopt;
      for (std::size_t i = 0; i < 4; ++i) {
        value += (i == 0 ? "" : ",") + FormatNumber(std::bit_cast<double>(ReadLittleEndian(data, 8 * i, 8)));
      }
      break;
  }
  return Join(t.word, value);
}

std::string RegTypeName(DWORD type) {
  static constexpr std::string_view kNames[] = {"REG_NONE",
                                                "REG_SZ",
                                                "REG_EXPAND_SZ",
                                                "REG_BINARY",
                                                "REG_DWORD",
                                                "REG_DWORD_BIG_ENDIAN",
                                                "REG_LINK",
                                                "REG_MULTI_SZ",
                                                "REG_RESOURCE_LIST",
                                                "REG_FULL_RESOURCE_DESCRIPTOR",
                                                "REG_RESOURCE_REQUIREMENTS_LIST",
                                                "REG_QWORD"};
  if (type < std::size(kNames)) return std::string(kNames[type]);
  return "type 0x" + HexNumber(type);
}

std::string EscapedName(WStringView text) { return Escaped(text, false); }

WString Utf16Argument(std::string_view word) {
  // Valid UTF-8 is exactly what comes back unchanged from the way there
  // and back; anything else picked up a U+FFFD on the way.
  const CString wide = FromUtf8(word);
  if (ToUtf8(wide) != word) throw UsageError("'" + ToUtf8(wide) + "' is not valid UTF-8");
  return WString(wide.View());
}

}  // namespace cadtools::cli

// Helpers of the .reg tests: entries in a compact text form for tables,
// and a tree that holds every shape of name and data.
#pragma once

#include <cadtools/registry/reg_file.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::testing {

using registry::RegHive;
using registry::RegKeyEntry;
using registry::RegKeys;
using registry::RegValueEntry;

// UTF-16 units from a char16_t literal, whatever WCHAR is.
inline WString U(std::u16string_view units) { return WString(units.begin(), units.end()); }

inline std::vector<BYTE> Bytes(std::initializer_list<int> values) {
  std::vector<BYTE> bytes;
  for (const int v : values) bytes.push_back(static_cast<BYTE>(v));
  return bytes;
}

inline const char* ShortHiveName(RegHive hive) {
  switch (hive) {
    case RegHive::kLocalMachine:
      return "HKLM";
    case RegHive::kClassesRoot:
      return "HKCR";
    case RegHive::kUsers:
      return "HKU";
    case RegHive::kCurrentUser:
      break;
  }
  return "HKCU";
}

// Entries as one line: [HKCU\path] name=TYPE:xx,xx -name [-HKLM\path].
// Names are shown unit by unit, non-ASCII as <hex>.
inline std::string Describe(const RegKeys& keys) {
  const auto name = [](WStringView text) {
    std::string shown;
    for (const WCHAR unit : text) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "<%x>", static_cast<unsigned>(unit));
      shown += unit >= 0x20 && unit < 0x7F ? std::string(1, static_cast<char>(unit)) : hex;
    }
    return shown;
  };
  std::string text;
  for (const RegKeyEntry& key : keys) {
    text += text.empty() ? "" : " ";
    text += std::string(key.remove ? "[-" : "[") + ShortHiveName(key.hive) +
            (key.path.empty() ? "" : "\\") + name(key.path) + "]";
    for (const RegValueEntry& value : key.values) {
      text += " " + std::string(value.remove ? "-" : "") + (value.name.empty() ? "@" : name(value.name));
      if (value.remove) continue;
      char head[16];
      std::snprintf(head, sizeof head, "=%lx:", static_cast<unsigned long>(value.type));
      text += head;
      for (std::size_t i = 0; i < value.data.size(); ++i) {
        char byte[4];
        std::snprintf(byte, sizeof byte, "%02x", static_cast<unsigned>(value.data[i]));
        text += (i == 0 ? "" : ",") + std::string(byte);
      }
    }
  }
  return text;
}

// A tree below `root` with every value shape: each type, empty data, odd
// lengths (but no odd-length string: wine pads those), the default value,
// names with quotes, backslashes, '=', ']', characters beyond the BMP and
// lone surrogates, long data that wraps and a deep chain of keys.
inline RegKeys EveryShape(RegHive hive, const WString& root) {
  const auto value = [](std::u16string_view name, DWORD type, std::vector<BYTE> data) {
    RegValueEntry v;
    v.name = U(name);
    v.type = type;
    v.data = std::move(data);
    return v;
  };
  std::vector<BYTE> long_data;
  for (int i = 0; i < 300; ++i) long_data.push_back(static_cast<BYTE>(i * 7));
  RegKeys keys;
  keys.push_back(
      {hive,
       root,
       false,
       {value(u"", REG_SZ, registry::EncodeRegString(U(u"default"))),
        value(u"text", REG_SZ, registry::EncodeRegString(U(u"a \"quoted\" C:\\path = x]"))),
        value(u"empty text", REG_SZ, Bytes({0, 0})), value(u"no terminator", REG_SZ, Bytes({'a', 0})),
        value(u"nothing", REG_SZ, {}), value(u"line\u00e9 break", REG_SZ, registry::EncodeRegString(U(u"a\r\nb"))),
        value(u"count", REG_DWORD, Bytes({0x2a, 0, 0, 0x80})), value(u"short dword", REG_DWORD, Bytes({1, 2})),
        value(u"binary", REG_BINARY, Bytes({0, 0xff})), value(u"empty binary", REG_BINARY, {}),
        value(u"long", REG_BINARY, long_data),
        value(u"expand", REG_EXPAND_SZ, registry::EncodeRegString(U(u"%TEMP%\\x"))),
        value(u"multi", REG_MULTI_SZ, Bytes({'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0})),
        value(u"qword", REG_QWORD, Bytes({1, 2, 3, 4, 5, 6, 7, 8})), value(u"none", REG_NONE, {}),
        value(u"big type", 0x80000000u, Bytes({9})), value(u"q\"uote\\back=slash]", REG_BINARY, Bytes({1})),
        value(u"\U0001F600 \xD800 lone \xDFFF", REG_SZ, registry::EncodeRegString(U(u"\U0001F600\xDC00"))),
        value(std::u16string(300, u'n'), REG_DWORD, Bytes({1, 0, 0, 0}))}});
  keys.push_back({hive, root + U(u"\\a]b=c \"d\""), false, {value(u"x", REG_SZ, Bytes({'x', 0, 0, 0}))}});
  keys.push_back({hive, root + U(u"\\\U0001F600\xD801"), false, {}});
  WString deep = root;
  for (int level = 0; level < 24; ++level) {
    deep += U(u"\\level");
    keys.push_back({hive, deep, false, {value(u"depth", REG_DWORD, Bytes({level, 0, 0, 0}))}});
  }
  return keys;
}

}  // namespace cadtools::testing

#include "reg_text.h"

#include <cstdint>

namespace cadtools::registry {

namespace {

struct HiveNames {
  RegHive hive;
  std::string_view name, short_name;
};
constexpr HiveNames kHives[] = {
    {RegHive::kCurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {RegHive::kLocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},
    {RegHive::kClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},
    {RegHive::kUsers, "HKEY_USERS", "HKU"},
};

bool EqualsAsciiNoCase(WStringView text, std::string_view ascii) noexcept {
  if (text.size() != ascii.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    WCHAR ch = text[i];
    if (ch >= u'a' && ch <= u'z') ch = static_cast<WCHAR>(ch - (u'a' - u'A'));
    char want = ascii[i];
    if (want >= 'a' && want <= 'z') want = static_cast<char>(want - ('a' - 'A'));
    if (ch != static_cast<unsigned char>(want)) return false;
  }
  return true;
}

}  // namespace

HKEY HiveHandle(RegHive hive) noexcept {
  switch (hive) {
    case RegHive::kLocalMachine:
      return HKEY_LOCAL_MACHINE;
    case RegHive::kClassesRoot:
      return HKEY_CLASSES_ROOT;
    case RegHive::kUsers:
      return HKEY_USERS;
    case RegHive::kCurrentUser:
      break;
  }
  return HKEY_CURRENT_USER;
}

std::string_view HiveName(RegHive hive) noexcept {
  for (const HiveNames& names : kHives) {
    if (names.hive == hive) return names.name;
  }
  return kHives[0].name;
}

std::optional<RegHive> HiveFromName(WStringView name) noexcept {
  for (const HiveNames& names : kHives) {
    if (EqualsAsciiNoCase(name, names.name) || EqualsAsciiNoCase(name, names.short_name)) return names.hive;
  }
  return std::nullopt;
}

bool operator==(const RegValueEntry& a, const RegValueEntry& b) noexcept {
  return a.name == b.name && a.remove == b.remove && a.type == b.type && a.data == b.data;
}

bool operator==(const RegKeyEntry& a, const RegKeyEntry& b) noexcept {
  return a.hive == b.hive && a.path == b.path && a.remove == b.remove && a.values == b.values;
}

std::optional<WString> DecodeRegString(std::span<const BYTE> data) {
  if (data.size() < 2 || data.size() % 2 != 0) return std::nullopt;
  WString text;
  text.reserve(data.size() / 2 - 1);
  for (std::size_t i = 0; i + 2 < data.size(); i += 2) {
    const auto unit = static_cast<WCHAR>(data[i] | (data[i + 1] << 8));
    if (unit == 0) return std::nullopt;
    text.push_back(unit);
  }
  if (data[data.size() - 2] != 0 || data[data.size() - 1] != 0) return std::nullopt;
  return text;
}

std::vector<BYTE> EncodeRegString(WStringView text) {
  std::vector<BYTE> data;
  data.reserve(2 * text.size() + 2);
  for (const WCHAR unit : text) {
    data.push_back(static_cast<BYTE>(unit & 0xFF));
    data.push_back(static_cast<BYTE>((unit >> 8) & 0xFF));
  }
  data.push_back(0);
  data.push_back(0);
  return data;
}

std::optional<std::vector<WString>> DecodeRegMultiString(std::span<const BYTE> data) {
  if (data.size() < 2 || data.size() % 2 != 0) return std::nullopt;
  std::vector<WString> strings;
  if (data.size() == 2) {
    if (data[0] != 0 || data[1] != 0) return std::nullopt;
    return strings;
  }
  // Every string ends in a NUL and one more NUL ends the list.
  const std::size_t units = data.size() / 2;
  WString current;
  for (std::size_t i = 0; i + 1 < units; ++i) {
    const auto unit = static_cast<WCHAR>(data[2 * i] | (data[2 * i + 1] << 8));
    if (unit == 0) {
      strings.push_back(std::move(current));
      current.clear();
    } else {
      current.push_back(unit);
    }
  }
  if (!current.empty() || data[data.size() - 2] != 0 || data[data.size() - 1] != 0) return std::nullopt;
  return strings;
}

std::vector<BYTE> EncodeRegMultiString(std::span<const WString> strings) {
  std::vector<BYTE> data;
  for (const WString& s : strings) {
    const std::vector<BYTE> one = EncodeRegString(s);
    data.insert(data.end(), one.begin(), one.end());
  }
  data.push_back(0);
  data.push_back(0);
  return data;
}

namespace detail {

std::size_t AppendUtf8(std::string_view in, WString& out) {
  std::size_t i = 0;
  while (i < in.size()) {
    const auto b0 = static_cast<unsigned char>(in[i]);
    if (b0 < 0x80) {
      out.push_back(static_cast<WCHAR>(b0));
      ++i;
      continue;
    }
    std::size_t length = 0;
    std::uint32_t cp = 0;
    std::uint32_t min = 0;
    if (b0 >= 0xC2 && b0 <= 0xDF) {
      length = 2;
      cp = b0 & 0x1Fu;
      min = 0x80;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
      length = 3;
      cp = b0 & 0x0Fu;
      min = 0x800;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
      length = 4;
      cp = b0 & 0x07u;
      min = 0x10000;
    } else {
      return i;
    }
    if (in.size() - i < length) return i;
    for (std::size_t k = 1; k < length; ++k) {
      const auto b = static_cast<unsigned char>(in[i + k]);
      if ((b & 0xC0) != 0x80) return i;
      cp = (cp << 6) | (b & 0x3Fu);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return i;
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<WCHAR>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<WCHAR>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<WCHAR>(cp));
    }
    i += length;
  }
  return std::string_view::npos;
}

std::string Excerpt(WStringView text) {
  constexpr std::size_t kMax = 40;
  const bool cut = text.size() > kMax;
  const WStringView shown = text.substr(0, kMax);
  return ToUtf8(CString(shown.data(), static_cast<int>(shown.size()))) + (cut ? "..." : "");
}

std::string KeyText(RegHive hive, WStringView path) {
  std::string text(HiveName(hive));
  if (!path.empty()) text += '\\' + Utf8(path);
  return text;
}

std::string Utf8(WStringView text) { return ToUtf8(CString(text.data(), static_cast<int>(text.size()))); }

}  // namespace detail
}  // namespace cadtools::registry

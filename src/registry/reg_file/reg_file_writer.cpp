// WriteRegFile: key entries as the registry editor exports them.
#include <cadtools/registry/reg_file.h>

#include <cstdio>

#include "reg_text.h"

namespace cadtools::registry {
namespace {

// The registry editor wraps hex data so that no line, its ",\" included,
// passes column 80.
constexpr std::size_t kMaxColumns = 80;
constexpr std::string_view kIndent = "  ";

// UTF-16LE output that knows its column.
class Output {
 public:
  Output() { bytes_ = "\xFF\xFE"; }

  void Put(WCHAR unit) {
    bytes_.push_back(static_cast<char>(unit & 0xFF));
    bytes_.push_back(static_cast<char>((unit >> 8) & 0xFF));
    ++column_;
  }
  void Put(std::string_view ascii) {
    for (const char c : ascii) Put(static_cast<WCHAR>(static_cast<unsigned char>(c)));
  }
  void Put(WStringView text) {
    for (const WCHAR unit : text) Put(unit);
  }
  void EndLine() {
    Put("\r\n");
    column_ = 0;
  }
  std::size_t column() const noexcept { return column_; }
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
  std::size_t column_ = 0;
};

void PutQuoted(Output& out, WStringView text) {
  out.Put(u'"');
  for (const WCHAR unit : text) {
    if (unit == u'\\' || unit == u'"') out.Put(u'\\');
    out.Put(unit);
  }
  out.Put(u'"');
}

bool HasLineBreak(WStringView text) {
  for (const WCHAR unit : text) {
    if (detail::IsLineBreak(unit)) return true;
  }
  return false;
}

void PutHex(Output& out, DWORD type, const std::vector<BYTE>& data) {
  char text[16];
  if (type == REG_BINARY) {
    out.Put("hex:");
  } else {
    std::snprintf(text, sizeof text, "hex(%lx):", static_cast<unsigned long>(type));
    out.Put(text);
  }
  for (std::size_t i = 0; i < data.size(); ++i) {
    // Room for "xx," and the "\" that would end the line.
    if (out.column() + 4 > kMaxColumns) {
      out.Put(u'\\');
      out.EndLine();
      out.Put(kIndent);
    }
    std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(data[i]));
    out.Put(text);
    if (i + 1 < data.size()) out.Put(u',');
  }
}

void PutValue(Output& out, const RegValueEntry& value) {
  if (value.name.empty()) {
    out.Put(u'@');
  } else {
    PutQuoted(out, value.name);
  }
  out.Put(u'=');
  if (value.remove) {
    out.Put(u'-');
    return;
  }
  if (value.type == REG_SZ) {
    const std::optional<WString> text = DecodeRegString(value.data);
    if (text && !HasLineBreak(*text)) {
      PutQuoted(out, *text);
      return;
    }
  }
  if (value.type == REG_DWORD && value.data.size() == 4) {
    const DWORD number = static_cast<DWORD>(value.data[0]) | (static_cast<DWORD>(value.data[1]) << 8) |
                         (static_cast<DWORD>(value.data[2]) << 16) | (static_cast<DWORD>(value.data[3]) << 24);
    char text[16];
    std::snprintf(text, sizeof text, "dword:%08lx", static_cast<unsigned long>(number));
    out.Put(text);
    return;
  }
  PutHex(out, value.type, value.data);
}

}  // namespace

std::string WriteRegFile(const RegKeys& keys) {
  Output out;
  out.Put(detail::kHeader5);
  out.EndLine();
  out.EndLine();
  for (const RegKeyEntry& key : keys) {
    out.Put(u'[');
    if (key.remove) out.Put(u'-');
    out.Put(HiveName(key.hive));
    if (!key.path.empty()) {
      out.Put(u'\\');
      out.Put(key.path);
    }
    out.Put(u']');
    out.EndLine();
    if (!key.remove) {
      for (const RegValueEntry& value : key.values) {
        PutValue(out, value);
        out.EndLine();
      }
    }
    out.EndLine();
  }
  return out.Take();
}

}  // namespace cadtools::registry

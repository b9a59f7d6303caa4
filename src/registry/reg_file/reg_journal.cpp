// Entries as bytes and back, for the journal of an import.
//
//   "cadtools import 1\n", then per key: hive, remove, line, path, value
//   count; per value: remove, type, line, name, data. Numbers are 32-bit
//   little-endian; a name or path is its unit count and the units, data
//   its byte count and the bytes.
#include <cstdint>

#include "reg_apply.h"

namespace cadtools::registry::detail {

namespace {

constexpr std::string_view kMagic = "cadtools import 1\n";

class Writer {
 public:
  void Number(std::size_t value) {
    for (int shift = 0; shift < 32; shift += 8) out_.push_back(static_cast<char>((value >> shift) & 0xFF));
  }
  void Units(WStringView text) {
    Number(text.size());
    for (const WCHAR unit : text) {
      out_.push_back(static_cast<char>(unit & 0xFF));
      out_.push_back(static_cast<char>(unit >> 8));
    }
  }
  void Bytes(const std::vector<BYTE>& data) {
    Number(data.size());
    out_.append(data.begin(), data.end());
  }
  std::string Take() { return std::move(out_); }

 private:
  std::string out_{kMagic};
};

// Reads what Writer wrote; after the first shortfall every read gives
// nothing and ok() is false.
class Reader {
 public:
  explicit Reader(std::string_view in) : in_(in), ok_(in.starts_with(kMagic)) { in_.remove_prefix(ok_ ? kMagic.size() : in_.size()); }

  std::size_t Number() {
    if (!Take(4)) return 0;
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(taken_[static_cast<std::size_t>(i)]);
    return value;
  }
  WString Units() {
    const std::size_t count = Number();
    WString text;
    if (count > in_.size() / 2 || !Take(2 * count)) {
      ok_ = false;
      return text;
    }
    for (std::size_t i = 0; i < count; ++i) {
      text.push_back(static_cast<WCHAR>(static_cast<unsigned char>(taken_[2 * i]) |
                                        static_cast<unsigned char>(taken_[2 * i + 1]) << 8));
    }
    return text;
  }
  std::vector<BYTE> Bytes() {
    const std::size_t count = Number();
    if (count > in_.size() || !Take(count)) {
      ok_ = false;
      return {};
    }
    return std::vector<BYTE>(taken_.begin(), taken_.end());
  }
  // Whether count more items of at least min_size bytes each can be there.
  bool Room(std::size_t count, std::size_t min_size) {
    ok_ = ok_ && count <= in_.size() / min_size;
    return ok_;
  }
  bool ok() const noexcept { return ok_; }
  bool done() const noexcept { return in_.empty(); }

 private:
  bool Take(std::size_t size) {
    if (!ok_ || in_.size() < size) {
      ok_ = false;
      return false;
    }
    taken_ = in_.substr(0, size);
    in_.remove_prefix(size);
    return true;
  }

  std::string_view in_, taken_;
  bool ok_;
};

}  // namespace

std::string SerializeEntries(const RegKeys& keys) {
  Writer out;
  out.Number(keys.size());
  for (const RegKeyEntry& key : keys) {
    out.Number(static_cast<std::size_t>(key.hive));
    out.Number(key.remove ? 1 : 0);
    out.Number(key.line);
    out.Units(key.path);
    out.Number(key.values.size());
    for (const RegValueEntry& value : key.values) {
      out.Number(value.remove ? 1 : 0);
      out.Number(value.type);
      out.Number(value.line);
      out.Units(value.name);
      out.Bytes(value.data);
    }
  }
  return out.Take();
}

std::optional<RegKeys> DeserializeEntries(std::string_view bytes) {
  Reader in(bytes);
  RegKeys keys;
  const std::size_t key_count = in.Number();
  if (!in.Room(key_count, 20)) return std::nullopt;
  keys.resize(key_count);
  for (RegKeyEntry& key : keys) {
    const std::size_t hive = in.Number();
    if (hive > static_cast<std::size_t>(RegHive::kUsers)) return std::nullopt;
    key.hive = static_cast<RegHive>(hive);
    key.remove = in.Number() != 0;
    key.line = in.Number();
    key.path = in.Units();
    const std::size_t value_count = in.Number();
    if (!in.Room(value_count, 20)) return std::nullopt;
    key.values.resize(value_count);
    for (RegValueEntry& value : key.values) {
      value.remove = in.Number() != 0;
      value.type = static_cast<DWORD>(in.Number());
      value.line = in.Number();
      value.name = in.Units();
      value.data = in.Bytes();
    }
  }
  if (!in.ok() || !in.done()) return std::nullopt;
  return keys;
}

}  // namespace cadtools::registry::detail

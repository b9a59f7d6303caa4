// ExportRegTree and ApplyRegFile: key entries to and from the registry,
// through the same calls the host's settings use. The calls are qualified
// because on Windows the system's functions of the same names are visible
// too.
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/registry_api.h>

#include <algorithm>
#include <string>
#include <utility>

#include "reg_apply.h"
#include "reg_text.h"

namespace cadtools::registry {
namespace {

using detail::KeyText;
using detail::Utf8;

RegTransferResult Failure(LSTATUS status, std::string message) {
  return detail::TransferFailure(status, std::move(message));
}

WString Join(WStringView path, WStringView name) {
  WString joined(path);
  if (!joined.empty()) joined.push_back(u'\\');
  joined.append(name);
  return joined;
}

bool HasLineBreak(WStringView text) { return std::any_of(text.begin(), text.end(), detail::IsLineBreak); }

// Reads one key's values and the names of its subkeys. Buffers start from
// the sizes the key reports and grow when a value changes under us.
LSTATUS ReadKey(HKEY key, RegKeyEntry& entry, std::vector<WString>& subkeys) {
  DWORD subkey_count = 0, max_subkey = 0, value_count = 0, max_name = 0, max_data = 0;
  LSTATUS status = registry::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkey_count, &max_subkey, nullptr,
                                              &value_count, &max_name, &max_data, nullptr, nullptr);
  if (status != ERROR_SUCCESS) return status;

  // Room for the longest name the registry allows: only the data can be
  // short, and then its size is known.
  std::vector<WCHAR> name(std::max<std::size_t>(max_name, kMaxValueNameLength) + 1);
  std::vector<BYTE> data(std::max<DWORD>(max_data, 1));
  for (DWORD i = 0; i < value_count; ++i) {
    RegValueEntry value;
    for (int attempt = 0;; ++attempt) {
      auto name_length = static_cast<DWORD>(name.size());
      auto data_size = static_cast<DWORD>(data.size());
      status =
          registry::RegEnumValueW(key, i, name.data(), &name_length, nullptr, &value.type, data.data(), &data_size);
      if (status == ERROR_MORE_DATA && attempt < 8) {
        data.resize(std::max<std::size_t>(2 * data.size(), data_size));
        continue;
      }
      if (status == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;  // a value went away meanwhile
      if (status != ERROR_SUCCESS) return status;
      value.name.assign(name.data(), name_length);
      value.data.assign(data.data(), data.data() + data_size);
      break;
    }
    entry.values.push_back(std::move(value));
  }

  std::vector<WCHAR> subkey(std::max<DWORD>(max_subkey, static_cast<DWORD>(kMaxKeyNameLength)) + 1);
  for (DWORD i = 0; i < subkey_count; ++i) {
    auto length = static_cast<DWORD>(subkey.size());
    status = registry::RegEnumKeyExW(key, i, subkey.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) break;
    if (status != ERROR_SUCCESS) return status;
    subkeys.emplace_back(subkey.data(), length);
  }
  return ERROR_SUCCESS;
}

}  // namespace

RegTransferResult ExportRegTree(RegHive hive, WStringView path, RegKeys& out) {
  out.clear();
  // Pre-order without recursion: the pending keys, next one last.
  std::vector<WString> pending{WString(path)};
  while (!pending.empty()) {
    RegKeyEntry entry;
    entry.hive = hive;
    entry.path = std::move(pending.back());
    pending.pop_back();

    detail::OpenKey key;
    LSTATUS status = registry::RegOpenKeyExW(HiveHandle(hive), entry.path.c_str(), 0, KEY_READ, key.Receive());
    if (status != ERROR_SUCCESS) {
      return Failure(status, (status == ERROR_FILE_NOT_FOUND ? "no key " : "cannot open ") + KeyText(hive, entry.path));
    }
    std::vector<WString> subkeys;
    status = ReadKey(key.get(), entry, subkeys);
    if (status != ERROR_SUCCESS) return Failure(status, "cannot read " + KeyText(hive, entry.path));

    for (const RegValueEntry& value : entry.values) {
      if (HasLineBreak(value.name)) {
        return Failure(ERROR_INVALID_PARAMETER, "the value name '" + Utf8(value.name) + "' in " +
                                                    KeyText(hive, entry.path) +
                                                    " holds a line break, which a .reg file cannot carry");
      }
    }
    for (auto it = subkeys.rbegin(); it != subkeys.rend(); ++it) {
      if (HasLineBreak(*it)) {
        return Failure(ERROR_INVALID_PARAMETER, "a key name below " + KeyText(hive, entry.path) +
                                                    " holds a line break, which a .reg file cannot carry");
      }
      pending.push_back(Join(entry.path, *it));
    }
    out.push_back(std::move(entry));
  }
  return {};
}

RegTransferResult ApplyRegFile(const RegKeys& keys) {
#if defined(_WIN32)
  return detail::ApplyWithUndo(keys);
#else
  return detail::ApplyInBatch(keys);
#endif
}

}  // namespace cadtools::registry

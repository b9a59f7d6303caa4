// Helpers of the registry conformance tests, which run unchanged against
// the store (Linux) and against the system's registry (Windows, wine).
#pragma once

#include "registry_test_util.h"

#include <cadtools/registry/registry_api.h>

#include <gtest/gtest.h>

#include <string>

#define W(s) CADTOOLS_WIDE(s)

namespace cadtools::testing {

namespace reg = cadtools::registry;

using WStr = std::basic_string<WCHAR>;

// An open key, closed when the object goes.
class Key {
 public:
  Key() = default;
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() { Reset(); }

  HKEY get() const noexcept { return key_; }
  // For the result argument of RegOpenKeyExW and RegCreateKeyExW.
  HKEY* out() noexcept {
    Reset();
    return &key_;
  }
  void Reset() noexcept {
    if (key_ != nullptr) reg::RegCloseKey(key_);
    key_ = nullptr;
  }

 private:
  HKEY key_ = nullptr;
};

inline LONG Open(HKEY base, const WStr& path, Key& key, REGSAM access = KEY_READ) {
  return reg::RegOpenKeyExW(base, path.c_str(), 0, access, key.out());
}

inline LONG Create(HKEY base, const WStr& path, Key& key, REGSAM access = KEY_ALL_ACCESS,
                   DWORD* disposition = nullptr) {
  return reg::RegCreateKeyExW(base, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                              key.out(), disposition);
}

// RegCreateKeyExW with options and a class name.
inline LONG CreateWith(HKEY base, const WStr& path, Key& key, DWORD options, const WCHAR* class_name = nullptr) {
  return reg::RegCreateKeyExW(base, path.c_str(), 0, const_cast<WCHAR*>(class_name), options, KEY_ALL_ACCESS, nullptr,
                              key.out(), nullptr);
}

inline LONG SetBytes(HKEY key, const WCHAR* name, DWORD type, const std::string& bytes) {
  return reg::RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size()));
}

// The type and bytes of a value, or the failure code in result.
struct Stored {
  LONG result = ERROR_SUCCESS;
  DWORD type = 0;
  std::string bytes;
};

inline Stored Query(HKEY key, const WCHAR* name) {
  Stored stored;
  DWORD size = 0;
  stored.result = reg::RegQueryValueExW(key, name, nullptr, &stored.type, nullptr, &size);
  if (stored.result != ERROR_SUCCESS) return stored;
  stored.bytes.assign(size, '\0');
  stored.result = reg::RegQueryValueExW(key, name, nullptr, &stored.type,
                                        reinterpret_cast<BYTE*>(stored.bytes.data()), &size);
  stored.bytes.resize(size);
  return stored;
}

// Name of subkey or value number index, or the failure code in result.
struct Listed {
  LONG result = ERROR_SUCCESS;
  WStr name;
};

inline Listed SubkeyAt(HKEY key, DWORD index) {
  WCHAR name[300] = {};
  DWORD length = 300;
  const LONG result = reg::RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
  return {result, result == ERROR_SUCCESS ? WStr(name, length) : WStr()};
}

inline Listed ValueAt(HKEY key, DWORD index) {
  WCHAR name[300] = {};
  DWORD length = 300;
  const LONG result = reg::RegEnumValueW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr);
  return {result, result == ERROR_SUCCESS ? WStr(name, length) : WStr()};
}

// A scratch key opened with every right.
class ScratchRoot {
 public:
  explicit ScratchRoot(const char* name, HKEY hive = HKEY_CURRENT_USER) : scratch_(name, hive) {
    EXPECT_EQ(Create(hive, scratch_.path(), key_), ERROR_SUCCESS);
  }
  HKEY get() const noexcept { return key_.get(); }
  const ScratchKey& scratch() const noexcept { return scratch_; }

 private:
  ScratchKey scratch_;
  Key key_;
};

}  // namespace cadtools::testing

// Helpers of the registry value tests: a fixture whose root is a scratch
// key of its own, and raw access to the type and bytes that are stored.
#pragma once

#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/registry_api.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "registry_test_util.h"

#define W CADTOOLS_WIDE

namespace cadtools::test {

using Bytes = std::vector<BYTE>;
using WText = std::basic_string<WCHAR>;

struct Stored {
  bool found = false;
  DWORD type = REG_NONE;
  Bytes bytes;
};

inline Stored ReadRaw(HKEY hive, const WText& path, const WCHAR* name) {
  Stored s;
  HKEY key = nullptr;
  if (registry::RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return s;
  DWORD size = 0;
  if (registry::RegQueryValueExW(key, name, nullptr, &s.type, nullptr, &size) == ERROR_SUCCESS) {
    s.bytes.resize(size);
    s.found = registry::RegQueryValueExW(key, name, nullptr, &s.type, s.bytes.data(), &size) == ERROR_SUCCESS;
  }
  registry::RegCloseKey(key);
  return s;
}

inline void WriteRaw(HKEY hive, const WText& path, const WCHAR* name, DWORD type, const Bytes& bytes) {
  HKEY key = nullptr;
  ASSERT_EQ(registry::RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr), 0);
  const BYTE none = 0;
  EXPECT_EQ(registry::RegSetValueExW(key, name, 0, type, bytes.empty() ? &none : bytes.data(),
                                     static_cast<DWORD>(bytes.size())), 0);
  registry::RegCloseKey(key);
}

inline Bytes DwordBytes(DWORD v) {
  return {static_cast<BYTE>(v), static_cast<BYTE>(v >> 8), static_cast<BYTE>(v >> 16), static_cast<BYTE>(v >> 24)};
}

// The root is a fresh scratch key below the current user, set with its
// trailing backslash as the host sets it; Key(name) is "Settings\name".
class RegistryValues : public ::testing::Test {
 protected:
  void SetUp() override { CRegBase::SetRegBase(CString(user_.path()) + W("\\")); }
  void TearDown() override { CRegBase::SetRegBase(CString()); }

  Stored User(const WCHAR* name) const { return ReadRaw(HKEY_CURRENT_USER, user_.Below(W("Settings")), name); }
  void SetUser(const WCHAR* name, DWORD type, const Bytes& b) {
    WriteRaw(HKEY_CURRENT_USER, user_.Below(W("Settings")), name, type, b);
  }
  static CString Key(const WCHAR* name) { return CString(W("Settings\\")) + name; }

  testing::ScratchKey user_{"values"};
};

}  // namespace cadtools::test

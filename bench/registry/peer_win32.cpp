// The Windows peer: the registry API called directly, the open, query or
// set, and close that a typed value does for the caller.
#include "registry/peer.h"
#include "registry/scratch_store.h"

#include <cadtools/registry/registry_api.h>

namespace bench::peer {

Names RowNames() {
  return {"RegOpenKeyExW+RegQueryValueExW", "RegCreateKeyExW+RegSetValueExW", "registry API read+write"};
}

DWORD Read(const WCHAR* path, const WCHAR* name, DWORD fallback) {
  HKEY key = nullptr;
  DWORD value = fallback;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_READ, &key) == ERROR_SUCCESS) {
    DWORD size = sizeof value;
    if (::RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size) != ERROR_SUCCESS) {
      value = fallback;
    }
    ::RegCloseKey(key);
  }
  return value;
}

void Write(const WCHAR* path, const WCHAR* name, DWORD value) {
  HKEY key = nullptr;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS) {
    return;
  }
  ::RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
  ::RegCloseKey(key);
}

}  // namespace bench::peer

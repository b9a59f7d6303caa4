// The registry calls the library makes, in a namespace of our own.
//
//   using namespace cadtools::registry;
//   HKEY key;
//   RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\Quenby", 0, nullptr, REG_OPTION_NON_VOLATILE,
//                   KEY_WRITE, nullptr, &key, nullptr);                    // ERROR_SUCCESS
//   DWORD seven = 7;
//   RegSetValueExW(key, u"Count", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&seven), 4);
//   RegCloseKey(key);
//
// On Windows each call forwards to the system's function of the same name.
// Elsewhere they are an embedded store (one SQLite file per hive) with the
// system's behaviour: the same result codes, access rights, case-blind
// names kept with their case, value types and bytes kept verbatim, subkeys
// listed in case-blind name order and values in creation order, class
// names and volatile keys (until the machine restarts), string data
// without its terminator taken and given as Windows does. Where the store
// sits: $CADTOOLS_REGISTRY_DIR (else $XDG_CONFIG_HOME/cadtools, else
// ~/.config/cadtools) for HKEY_CURRENT_USER, and
// $CADTOOLS_MACHINE_REGISTRY_DIR (else /etc/cadtools) for
// HKEY_LOCAL_MACHINE, which is read-only unless its folder is writable.
// HKEY_CLASSES_ROOT is the merged view of both hives' Software\Classes
// (the user's keys first); below HKEY_USERS the current user's hive is
// HKEY_CURRENT_USER, named by the SID "S-1-22-1-<uid>".
//
//   RegQueryValueExW(key, u"Name", nullptr, nullptr, reinterpret_cast<BYTE*>(1), &size)  // ERROR_NOACCESS
//
// Every call returns a Win32 result code and never throws. A pointer in
// the first 64 KiB, which Windows never maps, gives ERROR_NOACCESS rather
// than a crash; any other pointer must be valid.
#pragma once

#include <cadtools/compat/win_registry_types.h>
#include <cadtools/export.h>

#if defined(_WIN32)
#include <shlwapi.h>
#endif

namespace cadtools::registry {

#if defined(_WIN32)

inline LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR sub_key, DWORD options, REGSAM access, PHKEY result) noexcept {
  return ::RegOpenKeyExW(key, sub_key, options, access, result);
}
inline LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR sub_key, DWORD reserved, LPWSTR class_name, DWORD options,
                               REGSAM access, LPSECURITY_ATTRIBUTES security, PHKEY result,
                               LPDWORD disposition) noexcept {
  return ::RegCreateKeyExW(key, sub_key, reserved, class_name, options, access, security, result, disposition);
}
inline LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                LPDWORD data_size) noexcept {
  return ::RegQueryValueExW(key, name, reserved, type, data, data_size);
}
inline LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                              DWORD data_size) noexcept {
  return ::RegSetValueExW(key, name, reserved, type, data, data_size);
}
inline LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept { return ::RegDeleteValueW(key, name); }
inline LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                             LPWSTR class_name, LPDWORD class_length, PFILETIME last_write) noexcept {
  return ::RegEnumKeyExW(key, index, name, name_length, reserved, class_name, class_length, last_write);
}
inline LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                             LPDWORD type, LPBYTE data, LPDWORD data_size) noexcept {
  return ::RegEnumValueW(key, index, name, name_length, reserved, type, data, data_size);
}
inline LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR class_name, LPDWORD class_length, LPDWORD reserved,
                                LPDWORD sub_keys, LPDWORD max_sub_key_length, LPDWORD max_class_length,
                                LPDWORD values, LPDWORD max_value_name_length, LPDWORD max_value_size,
                                LPDWORD security_descriptor_size, PFILETIME last_write) noexcept {
  return ::RegQueryInfoKeyW(key, class_name, class_length, reserved, sub_keys, max_sub_key_length,
                            max_class_length, values, max_value_name_length, max_value_size,
                            security_descriptor_size, last_write);
}
inline LSTATUS RegCloseKey(HKEY key) noexcept { return ::RegCloseKey(key); }
inline LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR sub_key) noexcept {
  return static_cast<LSTATUS>(::SHDeleteKeyW(key, sub_key));
}

#else

CADTOOLS_API LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR sub_key, DWORD options, REGSAM access,
                                   PHKEY result) noexcept;
CADTOOLS_API LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR sub_key, DWORD reserved, LPWSTR class_name,
                                     DWORD options, REGSAM access, LPSECURITY_ATTRIBUTES security,
                                     PHKEY result, LPDWORD disposition) noexcept;
CADTOOLS_API LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                      LPDWORD data_size) noexcept;
CADTOOLS_API LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                                    DWORD data_size) noexcept;
CADTOOLS_API LSTATUS RegDeleteValueW(HKEY key, LPCWSTR name) noexcept;
CADTOOLS_API LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                                   LPWSTR class_name, LPDWORD class_length, PFILETIME last_write) noexcept;
CADTOOLS_API LSTATUS RegEnumValueW(HKEY key, DWORD index, LPWSTR name, LPDWORD name_length, LPDWORD reserved,
                                   LPDWORD type, LPBYTE data, LPDWORD data_size) noexcept;
CADTOOLS_API LSTATUS RegQueryInfoKeyW(HKEY key, LPWSTR class_name, LPDWORD class_length, LPDWORD reserved,
                                      LPDWORD sub_keys, LPDWORD max_sub_key_length, LPDWORD max_class_length,
                                      LPDWORD values, LPDWORD max_value_name_length, LPDWORD max_value_size,
                                      LPDWORD security_descriptor_size, PFILETIME last_write) noexcept;
CADTOOLS_API LSTATUS RegCloseKey(HKEY key) noexcept;
CADTOOLS_API LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR sub_key) noexcept;

// Closes the store's files and every open key, so that the next call reads
// $CADTOOLS_REGISTRY_DIR and $CADTOOLS_MACHINE_REGISTRY_DIR again. Keys
// opened before are invalid afterwards (ERROR_INVALID_HANDLE). For tools
// that switch between stores within one process; the host never needs it.
CADTOOLS_API void ReloadStoreLocations() noexcept;

#endif

}  // namespace cadtools::registry

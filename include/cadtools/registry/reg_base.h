// CRegBase: where a setting lives in the registry. CRegEnumerator: the
// subkeys and values of one key.
//
// Every setting sits below one root shared by the whole host application.
// The host sets the root once at start-up; until it does, the root is
// "Software\Quenby\<application>\Version V8R1\":
//
//   CRegBase::SetRegBase(CADTOOLS_WIDE("Software\\Quenby\\Host\\"));
//   CRegBase colour(CADTOOLS_WIDE("Settings\\Colour"));
//   colour.m_strKeyPath;     // "Software\Quenby\Host\Settings"
//   colour.m_strValueName;   // "Colour"
//
//   CRegEnumerator keys(CADTOOLS_WIDE("Settings"));
//   CString name;
//   for (DWORD i = 0; keys.EnumerateKeys(i, name); ++i) { ... }
//
// A key string names a value below the root: everything up to its last
// backslash is the key, the rest the value name. The root is used as it
// stands, so a root set without a trailing backslash runs into the key:
// root "Software\X" and key "Settings\Colour" address value "Colour" in
// key "Software\XSettings". Stored settings were written that way, so it
// stays. A key string ending in a backslash names the key's default value.
//
// Nothing here throws. Failures come back as FALSE or as the Win32 result
// code of the registry call (removeKey, removeValue, the pass-through
// EnumerateKeys).
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_registry_types.h>
#include <cadtools/export.h>

#include <vector>

class CADTOOLS_API CRegBase {
 public:
  // Current user's hive, no path, no fallback.
  CRegBase() noexcept;
  // Composes m_strKeyPath and m_strValueName from GetRegBase() + key.
  // Nothing is opened.
  explicit CRegBase(const CString& key, int bLocalMachineFallback = 0, HKEY hBase = HKEY_CURRENT_USER);
  // Member-wise, the handle value included: m_hKey is working storage,
  // never owned.
  CRegBase(const CRegBase&) = default;
  CRegBase& operator=(const CRegBase&) = default;
  ~CRegBase() = default;

  // The root, verbatim: no separator or version is added.
  static void SetRegBase(const CString& root);
  // The root set by SetRegBase, or else the default root formatted anew
  // from the application name (cadtools::GetApplicationName()):
  //   "Software\Quenby\<application>\Version V8R1\"
  static CString GetRegBase();
  // "Version V8R1", the settings generation of this host release.
  static CString GetRegVersion();

  // Deletes the key m_strKeyPath with everything below it. 0 on success,
  // else the Win32 result.
  DWORD removeKey();
  // Deletes the value m_strValueName. 0 on success, else the Win32 result;
  // ERROR_INVALID_HANDLE when the key cannot be opened for writing.
  LONG removeValue();
  // The same deletion reported as TRUE (deleted) or FALSE.
  BOOL RemoveKeyValue();

  // Copies everything below the root from HKEY_LOCAL_MACHINE into
  // HKEY_CURRENT_USER, subkeys before values, without overwriting a value
  // the user already has under any letter case: machine-wide defaults
  // fill gaps, the user's settings win.
  void CopyLocalMachineToCurrentUser();

  HKEY m_hBase;
  // The key an operation has open; 0 between operations, except in a
  // CRegEnumerator, which keeps its key open.
  HKEY m_hKey;
  CString m_strValueName;
  CString m_strKeyPath;
  // Reads that cannot open the key below m_hBase try HKEY_LOCAL_MACHINE
  // once when this is non-zero. Writes never do.
  int m_bLocalMachineFallback;

  static CString m_strRegBase;

 protected:
  // The steps every typed value shares. Each leaves m_hKey at 0 again
  // unless it says otherwise.

  // Opens m_strKeyPath with KEY_READ into m_hKey: below m_hBase, then,
  // with the fallback on, below HKEY_LOCAL_MACHINE. The key stays open.
  bool OpenToRead() noexcept;
  // The data of m_strValueName in the key that OpenToRead opened: its
  // length is asked first, then the bytes are fetched. False when either
  // query fails or the buffer cannot be had.
  bool QueryData(std::vector<BYTE>& data) noexcept;
  // Queries the value straight into `capacity` bytes at dst; data longer
  // than that fails. Data shorter overwrites only its own bytes.
  bool QueryInto(BYTE* dst, DWORD capacity) noexcept;
  // Creates or opens m_strKeyPath below m_hBase with KEY_WRITE, sets the
  // value and closes the key. True when the value was set.
  bool WriteData(DWORD type, const BYTE* data, DWORD size) noexcept;
  void CloseKey() noexcept;

 private:
  // One level of CopyLocalMachineToCurrentUser: source subkeys first,
  // recursively, then the source's values that the destination lacks.
  void QueryKey(HKEY hSource, HKEY hDestination);
};

class CADTOOLS_API CRegEnumerator : public CRegBase {
 public:
  // Opens GetRegBase() + key (leading backslashes dropped) below hBase for
  // reading; the whole text names the key, no value name is split off.
  // m_hKey stays 0 when it cannot be opened, and every enumeration fails.
  explicit CRegEnumerator(const CString& key, HKEY hBase = HKEY_CURRENT_USER);
  // The open key is owned here, so the enumerator is not copied.
  CRegEnumerator(const CRegEnumerator&) = delete;
  CRegEnumerator& operator=(const CRegEnumerator&) = delete;
  ~CRegEnumerator();

  // RegEnumKeyExW on the open key with the caller's buffers. Returns the
  // Win32 result, so 0 means success here.
  BOOL EnumerateKeys(DWORD index, LPWSTR name, LPDWORD nameLength, LPWSTR className, LPDWORD classLength);
  // Subkey `index` into name: TRUE on success (a name cut at 4095
  // characters counts). FALSE past the last subkey, with name unchanged.
  BOOL EnumerateKeys(DWORD index, CString& name);
  // Value `index`: its name (up to 4096 characters) and type, and its data
  // into the caller's buffer. TRUE also when only the data did not fit;
  // FALSE past the last value, with name and type unchanged.
  BOOL EnumerateValues(DWORD index, CString& name, DWORD& type, LPBYTE data, LPDWORD dataLength);
};

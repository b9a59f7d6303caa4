// CRegBase::CopyLocalMachineToCurrentUser: machine-wide defaults become
// the user's settings where the user has none.
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/registry_api.h>

#include <algorithm>
#include <new>
#include <vector>

namespace reg = cadtools::registry;

namespace {

// Buffer sizes of one copy step, in characters or bytes: subkey names up
// to the registry's 255 characters, value names and data up to 16383.
constexpr DWORD kClassCapacity = 260;
constexpr DWORD kSubKeyCapacity = 255;
constexpr DWORD kValueNameCapacity = 16383;
constexpr DWORD kValueDataCapacity = 16383;

// The name in buf as the registry call left it: up to its NUL, at most n.
CString NameIn(const std::vector<WCHAR>& buf, DWORD n) {
  DWORD length = 0;
  while (length < n && length < buf.size() && buf[length] != 0) ++length;
  return CString(buf.data(), static_cast<int>(length));
}

}  // namespace

void CRegBase::CopyLocalMachineToCurrentUser() {
  CString root = GetRegBase();
  root.TrimLeft(static_cast<WCHAR>('\\'));

  // Read access as well as write: the copy lists the user's values at every
  // level, so that none of them is overwritten.
  if (reg::RegOpenKeyExW(HKEY_CURRENT_USER, root, 0, KEY_READ | KEY_WRITE, &m_hKey) != ERROR_SUCCESS &&
      reg::RegCreateKeyExW(HKEY_CURRENT_USER, root, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                           &m_hKey, nullptr) != ERROR_SUCCESS) {
    m_hKey = nullptr;
    return;
  }
  HKEY machine = nullptr;
  if (reg::RegOpenKeyExW(HKEY_LOCAL_MACHINE, root, 0, KEY_READ, &machine) == ERROR_SUCCESS) {
    QueryKey(machine, m_hKey);
    reg::RegCloseKey(machine);
  }
  CloseKey();
}

void CRegBase::QueryKey(HKEY hSource, HKEY hDestination) {
  std::vector<WCHAR> name;
  std::vector<BYTE> data;
  try {
    name.assign(kValueNameCapacity + 1, 0);
    data.assign(kValueDataCapacity, 0);
  } catch (const std::bad_alloc&) {
    return;
  }

  WCHAR className[kClassCapacity] = {};
  DWORD classLength = kClassCapacity;
  DWORD subKeys = 0;
  DWORD values = 0;
  DWORD maxSubKeyLength = 0, maxClassLength = 0, maxValueNameLength = 0, maxValueSize = 0, securitySize = 0;
  FILETIME lastWrite{};
  reg::RegQueryInfoKeyW(hSource, className, &classLength, nullptr, &subKeys, &maxSubKeyLength, &maxClassLength,
                        &values, &maxValueNameLength, &maxValueSize, &securitySize, &lastWrite);
  // The user's own values, counted and named once before anything is
  // copied. Windows lists values in creation order, so the names the copy
  // adds come after these; a registry that lists them by name (wine) would
  // shift them, and listing them afterwards could let a machine value
  // overwrite one the user already has.
  DWORD destinationValues = 0;
  reg::RegQueryInfoKeyW(hDestination, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &destinationValues,
                        nullptr, nullptr, nullptr, nullptr);
  std::vector<CString> userNames;
  for (DWORD k = 0; k < destinationValues; ++k) {
    DWORD length = kValueNameCapacity;
    if (reg::RegEnumValueW(hDestination, k, name.data(), &length, nullptr, nullptr, nullptr, nullptr) ==
        ERROR_SUCCESS) {
      userNames.push_back(NameIn(name, length));
    }
  }

  // Subkeys first, depth-first.
  for (DWORD i = 0; i < subKeys; ++i) {
    DWORD length = kSubKeyCapacity;
    if (reg::RegEnumKeyExW(hSource, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
      continue;
    }
    const CString subKey = NameIn(name, length);
    HKEY destination = nullptr;
    if (reg::RegOpenKeyExW(hDestination, subKey, 0, KEY_ALL_ACCESS, &destination) != ERROR_SUCCESS &&
        reg::RegCreateKeyExW(hDestination, subKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                             &destination, nullptr) != ERROR_SUCCESS) {
      continue;
    }
    HKEY source = nullptr;
    if (reg::RegOpenKeyExW(hSource, subKey, 0, KEY_READ, &source) == ERROR_SUCCESS) {
      QueryKey(source, destination);
      reg::RegCloseKey(source);
    }
    reg::RegCloseKey(destination);
  }

  // Then the values the user does not have under any letter case, each
  // with its type and bytes exactly as the machine holds them.
  for (DWORD j = 0; j < values; ++j) {
    DWORD nameLength = kValueNameCapacity;
    DWORD type = REG_NONE;
    DWORD size = kValueDataCapacity;
    if (reg::RegEnumValueW(hSource, j, name.data(), &nameLength, nullptr, &type, data.data(), &size) !=
        ERROR_SUCCESS) {
      continue;
    }
    const CString valueName = NameIn(name, nameLength);
    const bool userHasIt = std::any_of(userNames.begin(), userNames.end(),
                                       [&](const CString& user) { return user.CompareNoCase(valueName) == 0; });
    if (!userHasIt) reg::RegSetValueExW(hDestination, valueName, 0, type, data.data(), size);
  }
}

// CRegEnumerator: lists the subkeys and values of one key below the root.
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/registry_api.h>

#include <array>

namespace reg = cadtools::registry;

namespace {

// Name buffers of 4096 characters. Subkeys announce one less than the
// buffer and values the whole buffer, as the host's enumerations always
// have; the extra unit below keeps a terminator after a full value name.
constexpr DWORD kNameBuffer = 4096;
constexpr DWORD kKeyNameCapacity = kNameBuffer - 1;
constexpr DWORD kValueNameCapacity = kNameBuffer;
using NameBuffer = std::array<WCHAR, kNameBuffer + 1>;

CString NameIn(const NameBuffer& buf) {
  int length = 0;
  while (static_cast<DWORD>(length) < kNameBuffer && buf[static_cast<std::size_t>(length)] != 0) ++length;
  return CString(buf.data(), length);
}

}  // namespace

CRegEnumerator::CRegEnumerator(const CString& key, HKEY hBase) {
  CString full = GetRegBase() + key;
  full.TrimLeft(static_cast<WCHAR>('\\'));
  if (reg::RegOpenKeyExW(hBase, full, 0, KEY_READ, &m_hKey) != ERROR_SUCCESS) m_hKey = nullptr;
}

CRegEnumerator::~CRegEnumerator() { CloseKey(); }

BOOL CRegEnumerator::EnumerateKeys(DWORD index, LPWSTR name, LPDWORD nameLength, LPWSTR className,
                                   LPDWORD classLength) {
  if (m_hKey == nullptr) return ERROR_INVALID_HANDLE;
  FILETIME lastWrite{};
  return reg::RegEnumKeyExW(m_hKey, index, name, nameLength, nullptr, className, classLength, &lastWrite);
}

BOOL CRegEnumerator::EnumerateKeys(DWORD index, CString& name) {
  if (m_hKey == nullptr) return FALSE;
  NameBuffer buf{};
  DWORD length = kKeyNameCapacity;
  FILETIME lastWrite{};
  const LONG result = reg::RegEnumKeyExW(m_hKey, index, buf.data(), &length, nullptr, nullptr, nullptr, &lastWrite);
  if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return FALSE;
  name = NameIn(buf);
  return TRUE;
}

BOOL CRegEnumerator::EnumerateValues(DWORD index, CString& name, DWORD& type, LPBYTE data, LPDWORD dataLength) {
  if (m_hKey == nullptr) return FALSE;
  NameBuffer buf{};
  DWORD length = kValueNameCapacity;
  DWORD valueType = REG_NONE;
  const LONG result = reg::RegEnumValueW(m_hKey, index, buf.data(), &length, nullptr, &valueType, data, dataLength);
  if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return FALSE;
  type = valueType;
  name = NameIn(buf);
  return TRUE;
}

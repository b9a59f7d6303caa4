// CRegBase: the registry root, key-path composition, deletion and the
// steps the typed values share.
#include <cadtools/registry/application_name.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/registry_api.h>

#include <new>

namespace reg = cadtools::registry;

namespace {

constexpr WCHAR kBackslash = '\\';

}  // namespace

CString CRegBase::m_strRegBase;

void CRegBase::SetRegBase(const CString& root) { m_strRegBase = root; }

CString CRegBase::GetRegBase() {
  if (!m_strRegBase.IsEmpty()) return m_strRegBase;
  // Formatted on every use: the host may name itself after the first call.
  CString root;
  root.Format(CADTOOLS_WIDE("Software\\Quenby\\%s\\%s\\"), cadtools::GetApplicationName(), GetRegVersion());
  return root;
}

CString CRegBase::GetRegVersion() { return CADTOOLS_WIDE("Version V8R1"); }

CRegBase::CRegBase() noexcept : m_hBase(HKEY_CURRENT_USER), m_hKey(nullptr), m_bLocalMachineFallback(0) {}

// root + key, leading backslashes dropped; up to the last backslash is the
// key path, after it the value name, each without the backslashes that
// border the split. With no backslash at all the key path is empty and the
// whole text is the value name.
CRegBase::CRegBase(const CString& key, int bLocalMachineFallback, HKEY hBase)
    : m_hBase(hBase), m_hKey(nullptr), m_bLocalMachineFallback(bLocalMachineFallback) {
  CString full = GetRegBase() + key;
  full.TrimLeft(kBackslash);
  const int split = full.ReverseFind(kBackslash);
  m_strKeyPath = full.Left(split);
  m_strKeyPath.TrimRight(kBackslash);
  m_strValueName = full.Right(full.GetLength() - split);
  m_strValueName.Trim(kBackslash);
}

DWORD CRegBase::removeKey() {
  return static_cast<DWORD>(reg::SHDeleteKeyW(m_hBase, m_strKeyPath));
}

LONG CRegBase::removeValue() {
  if (reg::RegOpenKeyExW(m_hBase, m_strKeyPath, 0, KEY_WRITE, &m_hKey) != ERROR_SUCCESS) {
    m_hKey = nullptr;
    return ERROR_INVALID_HANDLE;  // what deleting through no key gives
  }
  const LONG result = reg::RegDeleteValueW(m_hKey, m_strValueName);
  CloseKey();
  return result;
}

BOOL CRegBase::RemoveKeyValue() {
  HKEY key = nullptr;
  if (reg::RegOpenKeyExW(m_hBase, m_strKeyPath, 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS) return FALSE;
  const LONG result = reg::RegDeleteValueW(key, m_strValueName);
  reg::RegCloseKey(key);
  return result == ERROR_SUCCESS ? TRUE : FALSE;
}

bool CRegBase::OpenToRead() noexcept {
  if (reg::RegOpenKeyExW(m_hBase, m_strKeyPath, 0, KEY_READ, &m_hKey) == ERROR_SUCCESS) return true;
  if (m_bLocalMachineFallback &&
      reg::RegOpenKeyExW(HKEY_LOCAL_MACHINE, m_strKeyPath, 0, KEY_READ, &m_hKey) == ERROR_SUCCESS) {
    return true;
  }
  m_hKey = nullptr;
  return false;
}

bool CRegBase::QueryData(std::vector<BYTE>& data) noexcept {
  DWORD size = 0;
  if (reg::RegQueryValueExW(m_hKey, m_strValueName, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
    return false;
  }
  try {
    data.assign(size, 0);
  } catch (const std::bad_alloc&) {
    return false;
  }
  if (reg::RegQueryValueExW(m_hKey, m_strValueName, nullptr, nullptr, data.data(), &size) != ERROR_SUCCESS) {
    return false;
  }
  data.resize(size);  // the value may have shrunk between the two queries
  return true;
}

bool CRegBase::QueryInto(BYTE* dst, DWORD capacity) noexcept {
  return reg::RegQueryValueExW(m_hKey, m_strValueName, nullptr, nullptr, dst, &capacity) == ERROR_SUCCESS;
}

bool CRegBase::WriteData(DWORD type, const BYTE* data, DWORD size) noexcept {
  if (reg::RegCreateKeyExW(m_hBase, m_strKeyPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &m_hKey,
                           nullptr) != ERROR_SUCCESS) {
    m_hKey = nullptr;
    return false;
  }
  const bool ok = reg::RegSetValueExW(m_hKey, m_strValueName, 0, type, data, size) == ERROR_SUCCESS;
  CloseKey();
  return ok;
}

void CRegBase::CloseKey() noexcept {
  if (m_hKey != nullptr) reg::RegCloseKey(m_hKey);
  m_hKey = nullptr;
}

// CRegStringArray and CRegByteArray: values of variable length.
#include <cadtools/registry/reg_values.h>
#include <cadtools/registry/registry_api.h>

#include <cstddef>
#include <new>
#include <vector>

namespace reg = cadtools::registry;

CRegStringArray::CRegStringArray(const CString& key, int localMachineFallback, HKEY hive)
    : CRegBase(key, localMachineFallback, hive) {}

BOOL CRegStringArray::read(CStringArray& array) {
  if (!OpenToRead()) return FALSE;
  std::vector<BYTE> data;
  const bool ok = QueryData(data);
  CloseKey();
  if (!ok) return FALSE;
  // A lone terminator (or less) is the empty list.
  if (data.size() <= sizeof(WCHAR)) return TRUE;

  // UTF-16 units; an odd last byte is the low half of a unit.
  std::vector<WCHAR> units((data.size() + 1) / 2, 0);
  for (std::size_t i = 0; i < data.size(); ++i) {
    units[i / 2] = static_cast<WCHAR>(units[i / 2] | (static_cast<unsigned>(data[i]) << (8 * (i % 2))));
  }
  // Strings one after the other, while what is consumed stays short of the
  // final terminator; an empty string before it is a real entry.
  const std::size_t end = data.size() - sizeof(WCHAR);
  std::size_t pos = 0;
  do {
    std::size_t length = 0;
    while (pos + length < units.size() && units[pos + length] != 0) ++length;
    array.Add(CString(units.data() + pos, static_cast<int>(length)));
    pos += length + 1;
  } while (pos * sizeof(WCHAR) < end);
  return TRUE;
}

void CRegStringArray::write(const CStringArray& array) {
  std::size_t total = 1;  // the list's own terminator
  for (const CString& s : array) total += static_cast<std::size_t>(s.GetLength()) + 1;
  std::vector<WCHAR> buffer;
  try {
    buffer.assign(total, 0);
  } catch (const std::bad_alloc&) {
    return;
  }
  std::size_t pos = 0;
  for (const CString& s : array) {
    const WCHAR* text = s.GetString();
    for (int i = 0; i < s.GetLength(); ++i) buffer[pos++] = text[i];
    ++pos;  // its NUL
  }
  WriteData(REG_MULTI_SZ, reinterpret_cast<const BYTE*>(buffer.data()),
            static_cast<DWORD>(buffer.size() * sizeof(WCHAR)));
}

CRegByteArray::CRegByteArray(const CString& key, const CByteArray& defaultContents, int localMachineFallback,
                             HKEY hive)
    : CRegBase(key, localMachineFallback, hive), m_value(defaultContents) {
  read();
}

CRegByteArray::~CRegByteArray() { write(); }

BOOL CRegByteArray::read() {
  if (!OpenToRead()) return FALSE;
  std::vector<BYTE> data;
  const bool ok = QueryData(data);
  CloseKey();
  if (!ok) return FALSE;
  try {
    m_value.RemoveAll();
    for (const BYTE b : data) m_value.Add(b);
  } catch (CException* e) {  // out of memory part-way: the bytes read so far stay
    e->Delete();
    return FALSE;
  }
  return TRUE;
}

BOOL CRegByteArray::write() {
  static constexpr BYTE kNothing = 0;  // an empty array has no data pointer
  const BYTE* data = m_value.IsEmpty() ? &kNothing : m_value.GetData();
  return WriteData(REG_BINARY, data, static_cast<DWORD>(m_value.GetSize())) ? TRUE : FALSE;
}

// The read / write / assign / convert cycle that the seven scalar registry
// values share (CRegDWORD, CRegFloat, CRegBOOL, CRegString, CRegPoint,
// CRegRect, CRegWRect; see reg_values.h). Host code uses those classes,
// not this template.
//
// A value is stored as the raw memory image of its plain type, except that
// a bool is its one byte and a string its UTF-16 units with the final NUL;
// the host's existing settings hold exactly those bytes.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_registry_types.h>
#include <cadtools/registry/reg_base.h>

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

namespace cadtools::registry {

// How one plain type is stored: its registry type, the bytes written, how
// data read back becomes the value and when two values count as the same.
// Primary template: the value's memory image as REG_BINARY.
template <class T>
struct ValueLayout {
  static_assert(std::is_trivially_copyable_v<T>);
  static constexpr DWORD kType = REG_BINARY;
  // Whether the registry fills the value's own bytes (no length query).
  static constexpr bool kQueryInPlace = false;

  static const BYTE* Data(const T& value) noexcept { return reinterpret_cast<const BYTE*>(&value); }
  static DWORD Size(const T&) noexcept { return sizeof(T); }
  // The first sizeof(T) bytes. Shorter data leaves the rest of value as it
  // was rather than inventing bytes the setting never had.
  static void Take(const std::vector<BYTE>& data, T& value) noexcept {
    std::memcpy(&value, data.data(), std::min(data.size(), sizeof(T)));
  }
  static bool Same(const T& a, const T& b) noexcept {
    // CPoint and CRect compare with their Win32 base on the right; naming
    // it keeps C++20 from also trying the reversed comparison.
    if constexpr (std::is_base_of_v<POINT, T>) {
      return a == static_cast<const POINT&>(b);
    } else if constexpr (std::is_base_of_v<RECT, T>) {
      return a == static_cast<const RECT&>(b);
    } else {
      return a == b;
    }
  }
};

template <>
struct ValueLayout<DWORD> {
  static constexpr DWORD kType = REG_DWORD;
  // Four bytes at most are queried straight into the value: shorter data
  // replaces only the low-order bytes, longer data fails the query.
  static constexpr bool kQueryInPlace = true;
  static const BYTE* Data(const DWORD& value) noexcept { return reinterpret_cast<const BYTE*>(&value); }
  static DWORD Size(const DWORD&) noexcept { return sizeof(DWORD); }
  static bool Same(DWORD a, DWORD b) noexcept { return a == b; }
};

template <>
struct ValueLayout<bool> {
  static constexpr DWORD kType = REG_BINARY;
  static constexpr bool kQueryInPlace = false;
  static const BYTE* Data(const bool& value) noexcept { return reinterpret_cast<const BYTE*>(&value); }
  static DWORD Size(const bool&) noexcept { return 1; }
  // The first byte, any non-zero byte meaning true; no data keeps value.
  static void Take(const std::vector<BYTE>& data, bool& value) noexcept {
    if (!data.empty()) value = data[0] != 0;
  }
  static bool Same(bool a, bool b) noexcept { return a == b; }
};

template <>
struct ValueLayout<CString> {
  static constexpr DWORD kType = REG_SZ;
  static constexpr bool kQueryInPlace = false;
  static const BYTE* Data(const CString& value) noexcept {
    return reinterpret_cast<const BYTE*>(value.GetString());
  }
  static DWORD Size(const CString& value) noexcept {
    return static_cast<DWORD>(value.GetLength() + 1) * sizeof(WCHAR);
  }
  // The data as UTF-16 up to the first NUL, whatever type it was stored
  // with; an odd last byte is the low half of a unit.
  static void Take(const std::vector<BYTE>& data, CString& value) {
    CString text;
    for (std::size_t i = 0; i < data.size(); i += 2) {
      const unsigned high = i + 1 < data.size() ? data[i + 1] : 0U;
      const auto unit = static_cast<WCHAR>(data[i] | (high << 8));
      if (unit == 0) break;
      text.AppendChar(unit);
    }
    value = text;
  }
  // Letter case matters: "Arial" and "arial" are different settings.
  static bool Same(const CString& a, const CString& b) noexcept { return a == b; }
};

// A registry value cached as a T. Flag is the type of m_bRead and m_bForce
// (int, or a byte for CRegBOOL).
template <class T, class Flag>
class CRegScalar : public CRegBase {
  using Layout = ValueLayout<T>;

 public:
  // Reads the stored value into m_value and returns it. Without a readable
  // value (no key, no value, data too long for a DWORD) m_value becomes
  // m_defaultValue and m_bRead is left as it was.
  T read() {
    if (!OpenToRead()) {
      m_value = m_defaultValue;
      return m_value;
    }
    bool ok;
    if constexpr (Layout::kQueryInPlace) {
      ok = QueryInto(reinterpret_cast<BYTE*>(&m_value), sizeof(T));
    } else {
      std::vector<BYTE> data;
      ok = QueryData(data);
      if (ok) Layout::Take(data, m_value);
    }
    CloseKey();
    if (!ok) {
      m_value = m_defaultValue;
      return m_value;
    }
    m_bRead = 1;
    return m_value;
  }

  // Stores m_value below m_hBase (never the machine hive); m_bRead becomes
  // 1 when it was stored. A failed write is silent.
  void write() noexcept {
    if (WriteData(Layout::kType, Layout::Data(m_value), Layout::Size(m_value))) m_bRead = 1;
  }

  // The cached value while it is known to match the registry, else a
  // fresh read.
  operator T() { return Current(); }  // NOLINT: implicit as the host uses it

  T m_value;
  T m_defaultValue;
  Flag m_bRead;
  Flag m_bForce;

 protected:
  CRegScalar() : m_value(), m_defaultValue(), m_bRead(0), m_bForce(0) {}
  // Composes the path and reads at once: afterwards m_value holds the
  // stored value (m_bRead 1) or the default (m_bRead 0).
  CRegScalar(const CString& key, const T& defaultValue, Flag force, int localMachineFallback, HKEY hive)
      : CRegBase(key, localMachineFallback, hive), m_value(), m_defaultValue(defaultValue), m_bRead(0),
        m_bForce(force) {
    read();
  }
  CRegScalar(const CRegScalar&) = default;
  CRegScalar& operator=(const CRegScalar&) = default;
  ~CRegScalar() = default;

  const T& Current() {
    if (!m_bRead || m_bForce) read();
    return m_value;
  }
  // Write-through, skipped when nothing changed unless forced.
  void Assign(const T& value) {
    if (!m_bForce && Layout::Same(value, m_value)) return;
    m_value = value;
    write();
  }
};

}  // namespace cadtools::registry

// The host's settings as typed registry values.
//
// A value object names one registry value below the root (see reg_base.h),
// reads it when constructed, converts to its plain type wherever one is
// expected, writes through on every assignment and compound operator, and
// writes once more when destroyed:
//
//   CRegDWORD count(CADTOOLS_WIDE("Settings\\Count"), 7);  // reads; 7 when missing
//   DWORD n = count;        // the cached value, no registry access
//   count += 2;             // writes 9
//   count = 9;              // unchanged: nothing written (unless force)
//                           // destruction writes 9 again
//
// Constructing and destroying a value therefore stores its default when
// the setting was missing: that is how defaults become visible in the
// registry for the host's users to edit. m_bRead tells a value read from
// the registry (1) from a default in use (0).
//
// Constructor arguments after the key: the default, force (never trust the
// cache: every conversion re-reads and every assignment writes), the
// HKEY_LOCAL_MACHINE fallback for reads, and the hive written to.
//
// Stored bytes (all little-endian, read back by the host as they lie):
//   CRegDWORD        REG_DWORD   4 bytes
//   CRegFloat        REG_BINARY  4 bytes, IEEE single
//   CRegBOOL         REG_BINARY  1 byte, 0 or 1
//   CRegString       REG_SZ      UTF-16 and its NUL
//   CRegPoint        REG_BINARY  8 bytes: x, y as 32-bit signed
//   CRegRect         REG_BINARY  16 bytes: left, top, right, bottom
//   CRegWRect        REG_BINARY  32 bytes: left, top, right, bottom as doubles
//   CRegStringArray  REG_MULTI_SZ  each string with its NUL, then one NUL
//   CRegByteArray    REG_BINARY  the bytes as they are
// Reads take these bytes whatever registry type the value has. Shorter
// data than the plain type replaces only the bytes it has.
//
// Nothing throws: unreadable values give the default, failed writes are
// silent (m_value keeps the new value, m_bRead stays as it was).
#pragma once

#include <cadtools/compat/cbyte_array.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/point_size_rect.h>
#include <cadtools/export.h>
#include <cadtools/geometry/wrect.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_scalar.h>

class CADTOOLS_API CRegDWORD : public cadtools::registry::CRegScalar<DWORD, int> {
 public:
  CRegDWORD() = default;
  explicit CRegDWORD(const CString& key, DWORD defaultValue = 0, int force = 0, int localMachineFallback = 0,
                     HKEY hive = HKEY_CURRENT_USER);
  CRegDWORD(const CRegDWORD&) = default;
  CRegDWORD& operator=(const CRegDWORD&) = default;
  ~CRegDWORD();

  CRegDWORD& operator=(DWORD value) {
    Assign(value);
    return *this;
  }
  // Unsigned 32-bit arithmetic that wraps around; dividing by zero is the
  // caller's fault, as with a plain DWORD.
  CRegDWORD& operator+=(DWORD d) { return *this = Current() + d; }
  CRegDWORD& operator-=(DWORD d) { return *this = Current() - d; }
  CRegDWORD& operator*=(DWORD d) { return *this = Current() * d; }
  CRegDWORD& operator/=(DWORD d) { return *this = Current() / d; }
  CRegDWORD& operator%=(DWORD d) { return *this = Current() % d; }
  // Shift counts are taken modulo 32, as the host's processor does.
  CRegDWORD& operator<<=(DWORD d) { return *this = Current() << (d % 32); }
  CRegDWORD& operator>>=(DWORD d) { return *this = Current() >> (d % 32); }
  CRegDWORD& operator&=(DWORD d) { return *this = Current() & d; }
  CRegDWORD& operator|=(DWORD d) { return *this = Current() | d; }
  CRegDWORD& operator^=(DWORD d) { return *this = Current() ^ d; }
};

class CADTOOLS_API CRegFloat : public cadtools::registry::CRegScalar<float, int> {
 public:
  CRegFloat() = default;
  explicit CRegFloat(const CString& key, float defaultValue = 0.0f, int force = 0, int localMachineFallback = 0,
                     HKEY hive = HKEY_CURRENT_USER);
  CRegFloat(const CRegFloat&) = default;
  CRegFloat& operator=(const CRegFloat&) = default;
  ~CRegFloat();

  // Floating-point equality: a NaN is never "unchanged" and always written.
  CRegFloat& operator=(float value) {
    Assign(value);
    return *this;
  }
  // Single-precision arithmetic.
  CRegFloat& operator+=(float f) { return *this = Current() + f; }
  CRegFloat& operator-=(float f) { return *this = Current() - f; }
  CRegFloat& operator*=(float f) { return *this = Current() * f; }
  CRegFloat& operator/=(float f) { return *this = Current() / f; }
};

// Value, default and both flags are single bytes here.
class CADTOOLS_API CRegBOOL : public cadtools::registry::CRegScalar<bool, BYTE> {
 public:
  CRegBOOL() = default;
  explicit CRegBOOL(const CString& key, bool defaultValue = false, bool force = false,
                    bool localMachineFallback = false, HKEY hive = HKEY_CURRENT_USER);
  CRegBOOL(const CRegBOOL&) = default;
  CRegBOOL& operator=(const CRegBOOL&) = default;
  ~CRegBOOL();

  CRegBOOL& operator=(bool value) {
    Assign(value);
    return *this;
  }
};

class CADTOOLS_API CRegString : public cadtools::registry::CRegScalar<CString, int> {
 public:
  CRegString() = default;
  // skipWriteOnDestroy: write only on assignment, so that merely looking
  // at a setting does not store its default.
  explicit CRegString(const CString& key, const CString& defaultValue = CString(), int force = 0,
                      int localMachineFallback = 0, HKEY hive = HKEY_CURRENT_USER, int skipWriteOnDestroy = 0);
  CRegString(const CRegString&) = default;
  CRegString& operator=(const CRegString&) = default;
  ~CRegString();

  // Compared with letter case: changing only the case writes.
  CRegString& operator=(const CString& value) {
    Assign(value);
    return *this;
  }
  CRegString& operator+=(const CString& s) { return *this = Current() + s; }

  int m_bSkipWriteOnDestroy = 0;
};

class CADTOOLS_API CRegPoint : public cadtools::registry::CRegScalar<CPoint, int> {
 public:
  CRegPoint() = default;
  explicit CRegPoint(const CString& key, CPoint defaultValue = CPoint(), int force = 0, int localMachineFallback = 0,
                     HKEY hive = HKEY_CURRENT_USER);
  CRegPoint(const CRegPoint&) = default;
  CRegPoint& operator=(const CRegPoint&) = default;
  ~CRegPoint();

  CRegPoint& operator=(CPoint value) {
    Assign(value);
    return *this;
  }
  CRegPoint& operator+=(CPoint p);
  // p minus the stored point, not the other way round: the host's
  // callers were written against this order.
  //   (10, 10) -= (3, 4)   // (-7, -6)
  CRegPoint& operator-=(CPoint p);
};

class CADTOOLS_API CRegRect : public cadtools::registry::CRegScalar<CRect, int> {
 public:
  CRegRect() = default;
  explicit CRegRect(const CString& key, CRect defaultValue = CRect(), int force = 0, int localMachineFallback = 0,
                    HKEY hive = HKEY_CURRENT_USER);
  CRegRect(const CRegRect&) = default;
  CRegRect& operator=(const CRegRect&) = default;
  ~CRegRect();

  CRegRect& operator=(const CRect& value) {
    Assign(value);
    return *this;
  }
  // The current rectangle, kept in the object (m_value) so that the
  // pointer stays valid as long as the object does.
  operator RECT*() {  // NOLINT: implicit as the host uses it
    Current();
    return &m_value;
  }
  operator const RECT*() {  // NOLINT: implicit as the host uses it
    Current();
    return &m_value;
  }

  // Moved by (cx, cy) or (x, y).
  CRegRect& operator+=(SIZE size);
  CRegRect& operator+=(POINT point);
  CRegRect& operator-=(SIZE size);
  CRegRect& operator-=(POINT point);
  // Inflated by each of r's edges: (left - r.left, top - r.top,
  // right + r.right, bottom + r.bottom); -= deflates the same way.
  CRegRect& operator+=(const RECT* r);
  CRegRect& operator-=(const RECT* r);
  // Intersection; (0, 0, 0, 0) when the two do not overlap.
  //   (0, 0, 10, 10) &= (20, 20, 30, 30)   // (0, 0, 0, 0)
  CRegRect& operator&=(const CRect& r);
  // The smallest rectangle holding both; an empty rectangle (no area)
  // adds nothing, and two empty ones give (0, 0, 0, 0).
  CRegRect& operator|=(const CRect& r);
};

class CADTOOLS_API CRegWRect : public cadtools::registry::CRegScalar<WRect, int> {
 public:
  CRegWRect() = default;
  explicit CRegWRect(const CString& key, WRect defaultValue = WRect(), int force = 0, int localMachineFallback = 0,
                     HKEY hive = HKEY_CURRENT_USER);
  CRegWRect(const CRegWRect&) = default;
  CRegWRect& operator=(const CRegWRect&) = default;
  ~CRegWRect();

  // Unchanged, so not written, while every coordinate is within 0.001 of
  // the cached one (WRect's own equality): drawing noise does not churn
  // the registry.
  CRegWRect& operator=(const WRect& value) {
    Assign(value);
    return *this;
  }
};

// A list of strings as REG_MULTI_SZ. It keeps no copy: read and write work
// on the caller's array.
class CADTOOLS_API CRegStringArray : public CRegBase {
 public:
  CRegStringArray() = default;
  explicit CRegStringArray(const CString& key, int localMachineFallback = 0, HKEY hive = HKEY_CURRENT_USER);

  // Appends the stored strings to array (which is not emptied first; empty
  // strings inside the list are kept). A stored empty list leaves array as
  // it was. FALSE when the value cannot be read.
  BOOL read(CStringArray& array);
  // Stores the strings, each with its NUL, and one NUL more: an empty
  // array is stored as a single NUL (2 bytes).
  void write(const CStringArray& array);
};

// Raw bytes as REG_BINARY, kept in the public m_value.
class CADTOOLS_API CRegByteArray : public CRegBase {
 public:
  CRegByteArray() = default;
  // m_value starts as a copy of defaultContents and is then read.
  CRegByteArray(const CString& key, const CByteArray& defaultContents, int localMachineFallback = 0,
                HKEY hive = HKEY_CURRENT_USER);
  CRegByteArray(const CRegByteArray&) = default;
  CRegByteArray& operator=(const CRegByteArray&) = default;
  // Writes m_value.
  ~CRegByteArray();

  // Replaces m_value with the stored bytes; FALSE (m_value unchanged) when
  // they cannot be read.
  BOOL read();
  // TRUE when m_value was stored.
  BOOL write();

  CByteArray m_value;
};

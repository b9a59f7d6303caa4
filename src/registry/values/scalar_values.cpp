// The seven scalar registry values: construction reads, destruction
// writes, and the point and rectangle operators.
#include <cadtools/registry/reg_values.h>

#include <algorithm>

using cadtools::detail::WrapAdd;
using cadtools::detail::WrapSub;

CRegDWORD::CRegDWORD(const CString& key, DWORD defaultValue, int force, int localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive) {}
CRegDWORD::~CRegDWORD() { write(); }

CRegFloat::CRegFloat(const CString& key, float defaultValue, int force, int localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive) {}
CRegFloat::~CRegFloat() { write(); }

CRegBOOL::CRegBOOL(const CString& key, bool defaultValue, bool force, bool localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force ? BYTE{1} : BYTE{0}, localMachineFallback ? 1 : 0, hive) {}
CRegBOOL::~CRegBOOL() { write(); }

CRegString::CRegString(const CString& key, const CString& defaultValue, int force, int localMachineFallback,
                       HKEY hive, int skipWriteOnDestroy)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive), m_bSkipWriteOnDestroy(skipWriteOnDestroy) {}
CRegString::~CRegString() {
  if (!m_bSkipWriteOnDestroy) write();
}

CRegPoint::CRegPoint(const CString& key, CPoint defaultValue, int force, int localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive) {}
CRegPoint::~CRegPoint() { write(); }

CRegPoint& CRegPoint::operator+=(CPoint p) {
  const CPoint& current = Current();
  return *this = CPoint(WrapAdd(current.x, p.x), WrapAdd(current.y, p.y));
}

CRegPoint& CRegPoint::operator-=(CPoint p) {
  const CPoint& current = Current();
  return *this = CPoint(WrapSub(p.x, current.x), WrapSub(p.y, current.y));
}

CRegRect::CRegRect(const CString& key, CRect defaultValue, int force, int localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive) {}
CRegRect::~CRegRect() { write(); }

CRegRect& CRegRect::operator+=(SIZE size) {
  CRect r = Current();
  r.OffsetRect(size.cx, size.cy);
  return *this = r;
}

CRegRect& CRegRect::operator+=(POINT point) { return *this += SIZE{point.x, point.y}; }

CRegRect& CRegRect::operator-=(SIZE size) {
  CRect r = Current();
  r.OffsetRect(WrapSub(0, size.cx), WrapSub(0, size.cy));
  return *this = r;
}

CRegRect& CRegRect::operator-=(POINT point) { return *this -= SIZE{point.x, point.y}; }

CRegRect& CRegRect::operator+=(const RECT* r) {
  const CRect& c = Current();
  return *this = CRect(WrapSub(c.left, r->left), WrapSub(c.top, r->top), WrapAdd(c.right, r->right),
                       WrapAdd(c.bottom, r->bottom));
}

CRegRect& CRegRect::operator-=(const RECT* r) {
  const CRect& c = Current();
  return *this = CRect(WrapAdd(c.left, r->left), WrapAdd(c.top, r->top), WrapSub(c.right, r->right),
                       WrapSub(c.bottom, r->bottom));
}

// As the system's IntersectRect: no common area gives the empty rectangle.
CRegRect& CRegRect::operator&=(const CRect& r) {
  const CRect& c = Current();
  CRect section(std::max(c.left, r.left), std::max(c.top, r.top), std::min(c.right, r.right),
                std::min(c.bottom, r.bottom));
  if (section.IsRectEmpty()) section = CRect();
  return *this = section;
}

// As the system's UnionRect: rectangles without area take no part.
CRegRect& CRegRect::operator|=(const CRect& r) {
  const CRect& c = Current();
  CRect both;
  if (c.IsRectEmpty()) {
    if (!r.IsRectEmpty()) both = r;
  } else if (r.IsRectEmpty()) {
    both = c;
  } else {
    both = CRect(std::min(c.left, r.left), std::min(c.top, r.top), std::max(c.right, r.right),
                 std::max(c.bottom, r.bottom));
  }
  return *this = both;
}

CRegWRect::CRegWRect(const CString& key, WRect defaultValue, int force, int localMachineFallback, HKEY hive)
    : CRegScalar(key, defaultValue, force, localMachineFallback, hive) {}
CRegWRect::~CRegWRect() { write(); }

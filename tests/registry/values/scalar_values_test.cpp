// The scalar values against the registry: when they read and write, the
// bytes they store and take, and their operators.
#include <cadtools/registry/reg_values.h>

#include <functional>
#include <limits>
#include <optional>

#include "values_test_util.h"

namespace cadtools::test {
namespace {

using ScalarValues = RegistryValues;

TEST_F(ScalarValues, ReadOnConstructionWriteThroughAndOnDestruction) {
  {
    CRegDWORD count(Key(W("Count")), 7);
    EXPECT_EQ(count.m_bRead, 0);
    EXPECT_EQ(static_cast<DWORD>(count), 7u);
    EXPECT_FALSE(User(W("Count")).found);
  }
  EXPECT_EQ(User(W("Count")).type, REG_DWORD);  // the default, stored on destruction
  { CRegString font(Key(W("Font")), W("Arial"), 0, 0, HKEY_CURRENT_USER, 1); }
  EXPECT_FALSE(User(W("Font")).found);  // skip-write-on-destroy

  SetUser(W("Count"), REG_DWORD, DwordBytes(3));
  std::optional<CRegDWORD> cached(std::in_place, Key(W("Count")), 7);
  CRegDWORD forced(Key(W("Count")), 7, 1);
  EXPECT_EQ(cached->m_bRead, 1);
  SetUser(W("Count"), REG_DWORD, DwordBytes(4));  // behind both objects' backs
  EXPECT_EQ(static_cast<DWORD>(*cached), 3u);
  EXPECT_EQ(static_cast<DWORD>(forced), 4u);

  *cached = 5;
  EXPECT_EQ(User(W("Count")).bytes, DwordBytes(5));
  SetUser(W("Count"), REG_DWORD, DwordBytes(6));
  *cached = 5;  // unchanged: nothing written
  EXPECT_EQ(User(W("Count")).bytes, DwordBytes(6));
  forced = 6;
  SetUser(W("Count"), REG_DWORD, DwordBytes(8));
  forced = 6;  // unchanged, but forced: written
  EXPECT_EQ(User(W("Count")).bytes, DwordBytes(6));
  cached.reset();  // destruction writes the cache, changed or not
  EXPECT_EQ(User(W("Count")).bytes, DwordBytes(5));
}

// Assigns first, deletes the stored value behind the object's back and
// assigns second: true when the second assignment wrote.
template <class Reg, class T>
bool SecondWrites(const T& first, const T& second) {
  const CString key = W("Settings\\V");
  Reg v(key);
  v = first;
  CRegBase probe(key);
  probe.removeValue();
  v = second;
  return ReadRaw(HKEY_CURRENT_USER, probe.m_strKeyPath.GetString(), probe.m_strValueName).found;
}

TEST_F(ScalarValues, EqualAssignmentWritesNothing) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_TRUE((SecondWrites<CRegFloat>(nan, nan)));  // NaN never equals itself
  EXPECT_FALSE((SecondWrites<CRegWRect>(WRect(0, 0, 1, 1), WRect(0, 0, 1.0005, 1))));
  EXPECT_TRUE((SecondWrites<CRegWRect>(WRect(0, 0, 1, 1), WRect(0, 0, 1.002, 1))));
  EXPECT_TRUE((SecondWrites<CRegString, CString>(W("Arial"), W("arial"))));
  EXPECT_TRUE((SecondWrites<CRegPoint>(CPoint(1, 2), CPoint(1, 3))));
}

// value is stored as exactly (type, bytes), and those bytes read back as value.
template <class Reg, class T>
void ExpectLayout(const T& value, DWORD type, const Bytes& bytes) {
  const CString key = W("Settings\\V");
  {
    Reg r(key);
    r = value;
  }
  const CRegBase b(key);
  const Stored s = ReadRaw(HKEY_CURRENT_USER, b.m_strKeyPath.GetString(), b.m_strValueName);
  EXPECT_EQ(s.type, type);
  EXPECT_EQ(s.bytes, bytes);
  CRegBase(key).removeValue();
  WriteRaw(HKEY_CURRENT_USER, b.m_strKeyPath.GetString(), b.m_strValueName, type, bytes);
  EXPECT_TRUE(registry::ValueLayout<T>::Same(Reg(key).m_value, value));
}

TEST_F(ScalarValues, ByteLayouts) {
  ExpectLayout<CRegDWORD, DWORD>(0x01020304, REG_DWORD, {4, 3, 2, 1});
  ExpectLayout<CRegFloat>(1.5f, REG_BINARY, {0, 0, 0xC0, 0x3F});
  ExpectLayout<CRegBOOL>(true, REG_BINARY, {1});
  ExpectLayout<CRegString, CString>(W("Ab"), REG_SZ, {'A', 0, 'b', 0, 0, 0});
  ExpectLayout<CRegPoint>(CPoint(1, -2), REG_BINARY, {1, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF});
  ExpectLayout<CRegRect>(CRect(1, 2, 3, -4), REG_BINARY, {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 0xFC, 0xFF, 0xFF, 0xFF});
  ExpectLayout<CRegWRect>(WRect(0.5, 1, 2, -1), REG_BINARY,
                          {0, 0, 0, 0, 0, 0, 0xE0, 0x3F, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F,  //
                           0, 0, 0, 0, 0, 0, 0, 0x40, 0, 0, 0, 0, 0, 0, 0xF0, 0xBF});
}

// The registry type is never checked; short data replaces only its own
// bytes; a DWORD longer than 4 bytes gives the default.
TEST_F(ScalarValues, ForeignData) {
  struct Case {
    DWORD type;
    Bytes bytes;
    std::function<bool(const CString&)> check;
  };
  const Case cases[] = {
      {REG_BINARY, {0x34, 0x12}, [](const CString& k) { return CRegDWORD(k, 7) == 0x1234u; }},
      {REG_BINARY, {1, 0, 0, 0, 0, 0, 0, 0}, [](const CString& k) { return CRegDWORD(k, 7).m_bRead == 0; }},
      {REG_BINARY, {5, 0, 0, 0}, [](const CString& k) { return CRegPoint(k, CPoint(7, 7)).m_value == POINT{5, 0}; }},
      {REG_BINARY, {}, [](const CString& k) { return CRegBOOL(k, true).m_value == false; }},
      {REG_BINARY, {'A', 0, 'B', 0, 0, 0, 'C', 0}, [](const CString& k) { return CRegString(k).m_value == W("AB"); }},
      {REG_DWORD, {'A', 0, 'B', 0}, [](const CString& k) { return CRegString(k).m_value == W("AB"); }},
      {REG_BINARY, {'A', 0, 'B'}, [](const CString& k) { return CRegString(k).m_value == W("AB"); }},
  };
  for (const Case& c : cases) {
    SetUser(W("V"), c.type, c.bytes);
    EXPECT_TRUE(c.check(Key(W("V")))) << ::testing::PrintToString(c.bytes);
  }
}

TEST_F(ScalarValues, DwordOperators) {
  struct Case {
    DWORD start;
    std::function<void(CRegDWORD&)> op;
    DWORD expected;
  };
  const Case cases[] = {
      {0xFFFFFFFF, [](CRegDWORD& d) { d += 1; }, 0},  {0, [](CRegDWORD& d) { d -= 1; }, 0xFFFFFFFF},
      {0x80000001, [](CRegDWORD& d) { d *= 2; }, 2},  {1, [](CRegDWORD& d) { d <<= 33; }, 2},
      {0x80000000, [](CRegDWORD& d) { d >>= 63; }, 1},
  };
  for (const Case& c : cases) {
    CRegDWORD d(Key(W("D")));
    d = c.start;
    c.op(d);
    EXPECT_EQ(User(W("D")).bytes, DwordBytes(c.expected)) << c.start;  // written through
  }
}

TEST_F(ScalarValues, PointOperators) {
  CRegPoint p(Key(W("P")), CPoint(10, 10));
  p += CPoint(3, 4);
  EXPECT_EQ(p.m_value, CPoint(13, 14));
  p = CPoint(10, 10);
  p -= CPoint(3, 4);  // the operand minus the point
  EXPECT_EQ(CRegPoint(Key(W("P"))).m_value, CPoint(-7, -6));
}

TEST_F(ScalarValues, RectOperators) {
  const RECT edges{1, 2, 3, 4};
  struct Case {
    CRect start;
    std::function<void(CRegRect&)> op;
    CRect expected;
  };
  const Case cases[] = {
      {{0, 0, 10, 10}, [](CRegRect& r) { r += CSize(1, 2); }, {1, 2, 11, 12}},
      {{0, 0, 10, 10}, [](CRegRect& r) { r -= CPoint(1, 2); }, {-1, -2, 9, 8}},
      {{0, 0, 10, 10}, [&](CRegRect& r) { r += &edges; }, {-1, -2, 13, 14}},
      {{0, 0, 10, 10}, [&](CRegRect& r) { r -= &edges; }, {1, 2, 7, 6}},
      {{0, 0, 10, 10}, [](CRegRect& r) { r &= CRect(5, 5, 20, 20); }, {5, 5, 10, 10}},
      {{0, 0, 10, 10}, [](CRegRect& r) { r &= CRect(20, 20, 30, 30); }, {0, 0, 0, 0}},
      {{0, 0, 10, 10}, [](CRegRect& r) { r |= CRect(5, 5, 20, 20); }, {0, 0, 20, 20}},
      {{0, 0, 10, 10}, [](CRegRect& r) { r |= CRect(30, 30, 30, 40); }, {0, 0, 10, 10}},
      {{5, 5, 5, 5}, [](CRegRect& r) { r |= CRect(7, 7, 6, 6); }, {0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    CRegRect r(Key(W("R")));
    r = c.start;
    c.op(r);
    EXPECT_EQ(CRegRect(Key(W("R"))).m_value, c.expected) << &c - cases;  // written through
  }

  CRegRect r(Key(W("R")), CRect(), 1);
  SetUser(W("R"), REG_BINARY, {9, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0});
  const RECT* seen = r;  // forced: read afresh, into the object itself
  EXPECT_EQ(seen, static_cast<const RECT*>(&r.m_value));
  EXPECT_EQ(seen->left, 9);
}

// A value below HKEY_LOCAL_MACHINE only is read with the fallback, and
// the first write stores it below the current user.
TEST_F(ScalarValues, LocalMachineFallback) {
  testing::ScratchKey machine("values", HKEY_LOCAL_MACHINE);
  WriteRaw(HKEY_LOCAL_MACHINE, machine.Below(W("Settings")), W("Count"), REG_DWORD, DwordBytes(42));
  EXPECT_EQ(CRegDWORD(Key(W("Count")), 7).m_value, 7u);
  CRegBase(Key(W("Count"))).removeKey();  // which that object's destruction created
  {
    CRegDWORD with(Key(W("Count")), 7, 0, 1);
    EXPECT_EQ(with.m_bRead, 1);
    EXPECT_FALSE(User(W("Count")).found);
  }
  EXPECT_EQ(User(W("Count")).bytes, DwordBytes(42));
  CRegBase(Key(W("Count"))).removeValue();  // the user's key exists now: no fallback
  EXPECT_EQ(CRegDWORD(Key(W("Count")), 7, 0, 1).m_value, 7u);
}

}  // namespace
}  // namespace cadtools::test

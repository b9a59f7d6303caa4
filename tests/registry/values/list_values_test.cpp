// CRegStringArray and CRegByteArray against the registry.
#include <cadtools/registry/reg_values.h>

#include <initializer_list>
#include <vector>

#include "values_test_util.h"

namespace cadtools::test {
namespace {

using ListValues = RegistryValues;

CStringArray Strings(std::initializer_list<const WCHAR*> items) {
  CStringArray a;
  for (const WCHAR* s : items) a.Add(s);
  return a;
}

std::vector<CString> Items(const CStringArray& a) { return {a.begin(), a.end()}; }

TEST_F(ListValues, StringArray) {
  struct Case {
    CStringArray strings;
    Bytes bytes;
  };
  const Case cases[] = {
      {Strings({W("a"), W("bc")}), {'a', 0, 0, 0, 'b', 0, 'c', 0, 0, 0, 0, 0}},
      {Strings({W(""), W("x"), W("")}), {0, 0, 'x', 0, 0, 0, 0, 0, 0, 0}},  // empty entries are kept
      {Strings({W("")}), {0, 0, 0, 0}},
      {CStringArray(), {0, 0}},  // reads as nothing: leaves the array as it was
  };
  CRegStringArray list(Key(W("L")));
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << "row " << (&c - cases));
    list.write(c.strings);
    EXPECT_EQ(User(W("L")).type, REG_MULTI_SZ);
    EXPECT_EQ(User(W("L")).bytes, c.bytes);
    CStringArray read = Strings({W("kept")});  // appended to, not emptied
    EXPECT_TRUE(list.read(read));
    std::vector<CString> expected = {W("kept")};
    expected.insert(expected.end(), c.strings.begin(), c.strings.end());
    EXPECT_EQ(Items(read), expected);
  }
  CStringArray none;
  EXPECT_FALSE(CRegStringArray(Key(W("Missing"))).read(none));
}

TEST_F(ListValues, ByteArray) {
  CByteArray def;
  def.Add(1);
  def.Add(2);
  {
    CRegByteArray missing(Key(W("B")), def);
    EXPECT_EQ(Bytes(missing.m_value.begin(), missing.m_value.end()), Bytes({1, 2}));
  }
  EXPECT_EQ(User(W("B")).type, REG_BINARY);  // the default, stored on destruction
  EXPECT_EQ(User(W("B")).bytes, Bytes({1, 2}));
  for (const Bytes& stored : {Bytes{9, 8, 7}, Bytes{}}) {
    SetUser(W("B"), REG_BINARY, stored);
    CRegByteArray bytes(Key(W("B")), def);
    EXPECT_EQ(Bytes(bytes.m_value.begin(), bytes.m_value.end()), stored);
    bytes.m_value.Add(0xFF);
    EXPECT_TRUE(bytes.write());
    EXPECT_EQ(User(W("B")).bytes.size(), stored.size() + 1);
  }
}

}  // namespace
}  // namespace cadtools::test

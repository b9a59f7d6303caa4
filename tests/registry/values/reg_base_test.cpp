// The root, key-path composition, deletion, enumeration and the copy of
// machine defaults to the current user.
#include <cadtools/registry/application_name.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>

#include <set>

#include "values_test_util.h"

namespace cadtools::test {
namespace {

TEST(RegRoot, DefaultRootNamesTheApplication) {
  CRegBase::SetRegBase(CString());
  EXPECT_EQ(GetApplicationName(), W("registry_values_tests"));  // the program's own name
  EXPECT_EQ(CRegBase::GetRegBase(), W("Software\\Quenby\\registry_values_tests\\Version V8R1\\"));
  SetApplicationName(W("Host"));
  EXPECT_EQ(CRegBase(W("Settings\\Text\\Font")).m_strKeyPath,
            W("Software\\Quenby\\Host\\Version V8R1\\Settings\\Text"));
  SetApplicationName(CString());
}

TEST(RegRoot, KeyPathComposition) {
  struct Case {
    const WCHAR* root;
    const WCHAR* key;
    const WCHAR* keyPath;
    const WCHAR* valueName;
  };
  const Case cases[] = {
      {W("Software\\X\\"), W("Settings\\Colour"), W("Software\\X\\Settings"), W("Colour")},
      {W("Software\\X"), W("Settings\\Colour"), W("Software\\XSettings"), W("Colour")},  // root used verbatim
      {W("\\"), W("Colour"), W(""), W("Colour")},                                        // in the hive itself
      {W("\\\\Software\\X\\"), W("A\\B"), W("Software\\X\\A"), W("B")},
      {W("Software\\X\\"), W("\\A\\\\\\B"), W("Software\\X\\\\A"), W("B")},
      {W("Software\\X\\"), W("Settings\\"), W("Software\\X\\Settings"), W("")},  // the default value
  };
  for (const Case& c : cases) {
    CRegBase::SetRegBase(c.root);
    const CRegBase b(c.key);
    EXPECT_EQ(b.m_strKeyPath, c.keyPath) << ::testing::PrintToString(CString(c.key));
    EXPECT_EQ(b.m_strValueName, c.valueName) << ::testing::PrintToString(CString(c.key));
  }
  CRegBase::SetRegBase(CString());
}

using RegBase = RegistryValues;

TEST_F(RegBase, Removal) {
  SetUser(W("A"), REG_DWORD, DwordBytes(1));
  EXPECT_EQ(CRegBase(Key(W("A"))).RemoveKeyValue(), TRUE);
  EXPECT_EQ(CRegBase(Key(W("A"))).RemoveKeyValue(), FALSE);
  EXPECT_EQ(CRegBase(Key(W("A"))).removeValue(), ERROR_FILE_NOT_FOUND);  // a Win32 result, not a BOOL
  EXPECT_EQ(CRegBase(Key(W("A"))).removeKey(), 0u);  // the value's key, with all below it
  EXPECT_NE(CRegBase(Key(W("A"))).removeKey(), 0u);
}

TEST_F(RegBase, Enumerator) {
  WriteRaw(HKEY_CURRENT_USER, user_.Below(W("Settings\\Beta")), W("v"), REG_DWORD, DwordBytes(1));
  WriteRaw(HKEY_CURRENT_USER, user_.Below(W("Settings\\alpha")), W("v"), REG_DWORD, DwordBytes(1));
  SetUser(W("Text"), REG_SZ, {'t', 0, 0, 0});
  SetUser(W("Number"), REG_DWORD, DwordBytes(5));
  CRegEnumerator e(W("Settings"));
  std::set<CString> keys;
  CString name;
  for (DWORD i = 0; e.EnumerateKeys(i, name); ++i) keys.insert(name);
  EXPECT_EQ(keys, (std::set<CString>{W("alpha"), W("Beta")}));
  name = W("as it was");
  EXPECT_FALSE(e.EnumerateKeys(2, name));
  EXPECT_EQ(name, W("as it was"));
  WCHAR buf[16];
  DWORD length = 16;
  EXPECT_EQ(e.EnumerateKeys(2, buf, &length, nullptr, nullptr), ERROR_NO_MORE_ITEMS);  // the Win32 result

  std::set<std::pair<CString, DWORD>> values;
  DWORD type = 99;
  BYTE data[2];
  DWORD size = sizeof data;  // too small for the DWORD: still listed
  for (DWORD i = 0; e.EnumerateValues(i, name, type, data, &size); ++i, size = sizeof data) {
    values.insert({name, type});
  }
  EXPECT_EQ(values, (std::set<std::pair<CString, DWORD>>{{W("Text"), REG_SZ}, {W("Number"), REG_DWORD}}));
  type = 99;
  EXPECT_FALSE(e.EnumerateValues(2, name, type, nullptr, nullptr));
  EXPECT_EQ(type, 99u);
  EXPECT_FALSE(CRegEnumerator(W("Nowhere")).EnumerateKeys(0, name));
}

TEST_F(RegBase, CopyLocalMachineToCurrentUser) {
  testing::ScratchKey machine("values", HKEY_LOCAL_MACHINE);
  // (key below the root, name, type, bytes): machine, user before, user after.
  const auto below = [](const testing::ScratchKey& k, const WCHAR* p) { return *p ? k.Below(p) : WText(k.path()); };
  const auto set = [&](HKEY hive, const testing::ScratchKey& k, const WCHAR* p, const WCHAR* n, DWORD t, Bytes b) {
    WriteRaw(hive, below(k, p), n, t, b);
  };
  set(HKEY_LOCAL_MACHINE, machine, W(""), W("Colour"), REG_SZ, {'m', 0, 0, 0});
  set(HKEY_LOCAL_MACHINE, machine, W(""), W("Fresh"), REG_QWORD, {1, 2, 3, 4, 5, 6, 7, 8});
  set(HKEY_LOCAL_MACHINE, machine, W("Deep"), W("Kept"), REG_DWORD, DwordBytes(4));
  set(HKEY_LOCAL_MACHINE, machine, W("Deep\\Er"), W("Raw"), REG_BINARY, {0xAB});
  set(HKEY_LOCAL_MACHINE, machine, W("Top"), W("Odd"), REG_EXPAND_SZ, {'%', 0, 0, 0});
  set(HKEY_CURRENT_USER, user_, W(""), W("colour"), REG_DWORD, DwordBytes(1));  // the user's, other case
  set(HKEY_CURRENT_USER, user_, W("Deep"), W("KEPT"), REG_BINARY, {7});
  // A copied name listed before the user's own (wine lists by name) must not
  // hide the user's value from the comparison.
  set(HKEY_LOCAL_MACHINE, machine, W("Deep"), W("Aardvark"), REG_DWORD, DwordBytes(2));
  set(HKEY_LOCAL_MACHINE, machine, W("Deep"), W("Zebra"), REG_DWORD, DwordBytes(3));
  set(HKEY_CURRENT_USER, user_, W("Deep"), W("zebra"), REG_BINARY, {9});

  CRegBase().CopyLocalMachineToCurrentUser();

  struct Case {
    const WCHAR *path, *name;
    DWORD type;
    Bytes bytes;
  };
  const Case cases[] = {
      {W(""), W("Colour"), REG_DWORD, DwordBytes(1)},  // the user's setting wins, at the top...
      {W(""), W("Fresh"), REG_QWORD, {1, 2, 3, 4, 5, 6, 7, 8}},
      {W("Deep"), W("Kept"), REG_BINARY, {7}},  // ...and below it
      {W("Deep"), W("Aardvark"), REG_DWORD, DwordBytes(2)},
      {W("Deep"), W("Zebra"), REG_BINARY, {9}},
      {W("Deep\\Er"), W("Raw"), REG_BINARY, {0xAB}},
      {W("Top"), W("Odd"), REG_EXPAND_SZ, {'%', 0, 0, 0}},
  };
  for (const Case& c : cases) {
    const Stored s = ReadRaw(HKEY_CURRENT_USER, below(user_, c.path), c.name);
    EXPECT_TRUE(s.found && s.type == c.type && s.bytes == c.bytes) << ::testing::PrintToString(CString(c.name));
  }
}

}  // namespace
}  // namespace cadtools::test

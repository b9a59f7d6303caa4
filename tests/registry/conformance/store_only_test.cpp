// Where the store follows Windows and wine does not: values listed in
// creation order, the key name limit, classes kept from creation, pointers
// that cannot be used, the size of a missing value with a buffer, and
// HKEY_CLASSES_ROOT merging the user's classes with the machine's.
#include "conformance_util.h"

#include <algorithm>
#include <cstdint>

namespace {

using namespace cadtools::testing;

std::vector<WStr> ValueNames(HKEY key) {
  std::vector<WStr> names;
  for (Listed v; (v = ValueAt(key, static_cast<DWORD>(names.size()))).result == ERROR_SUCCESS;) names.push_back(v.name);
  return names;
}

TEST(StoreOnly, ValuesListInCreationOrder) {
  ScratchRoot root("creation-order");
  const struct {
    const WCHAR* set;     // or null: then
    const WCHAR* remove;
    std::vector<WStr> listed;
  } steps[] = {
      {W("c"), nullptr, {W("c")}},
      {W("a"), nullptr, {W("c"), W("a")}},
      {W("B"), nullptr, {W("c"), W("a"), W("B")}},
      {W("A"), nullptr, {W("c"), W("a"), W("B")}},  // an update keeps its place and its name
      {nullptr, W("C"), {W("a"), W("B")}},
      {W("C"), nullptr, {W("a"), W("B"), W("C")}},  // written again: at the end
  };
  for (const auto& step : steps) {
    const LONG result = step.set != nullptr ? SetBytes(root.get(), step.set, REG_BINARY, "x")
                                            : reg::RegDeleteValueW(root.get(), step.remove);
    ASSERT_EQ(result, ERROR_SUCCESS);
    EXPECT_EQ(ValueNames(root.get()), step.listed) << "step #" << (&step - steps);
  }
}

TEST(StoreOnly, WindowsLimitsAndRights) {
  ScratchRoot root("limits");
  const WStr too_long(256, u'k');
  Key key;
  EXPECT_EQ(Create(root.get(), too_long, key), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Open(root.get(), too_long, key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Open(root.get(), W(""), key, KEY_WRITE), ERROR_SUCCESS);
  EXPECT_EQ(reg::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr),
            ERROR_ACCESS_DENIED);
  // Predefined values beyond the four hives name nothing here.
  const HKEY current_config = CADTOOLS_PREDEFINED_HKEY(0x80000005u);
  EXPECT_EQ(Open(current_config, W("x"), key), ERROR_INVALID_HANDLE);
  EXPECT_EQ(reg::RegCloseKey(current_config), ERROR_SUCCESS);
  // A class is given once, when the key is made (wine takes a new one).
  Key classed;
  ASSERT_EQ(CreateWith(root.get(), W("c"), classed, REG_OPTION_NON_VOLATILE, W("first")), ERROR_SUCCESS);
  ASSERT_EQ(CreateWith(root.get(), W("c"), classed, REG_OPTION_NON_VOLATILE, W("second")), ERROR_SUCCESS);
  WCHAR text[16];
  DWORD length = 16;
  ASSERT_EQ(reg::RegQueryInfoKeyW(classed.get(), text, &length, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(WStr(text, length), W("first"));
  // A missing value reports size 0 also to a caller with a buffer.
  BYTE data[4];
  DWORD size = sizeof data;
  EXPECT_EQ(reg::RegQueryValueExW(root.get(), W("missing"), nullptr, nullptr, data, &size), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(size, 0u);
}

// Pointers in the first 64 KiB, which Windows never maps: ERROR_NOACCESS
// where wine faults.
TEST(StoreOnly, PointersThatCannotBeUsedGiveNoAccess) {
  ScratchRoot root("pointers");
  ASSERT_EQ(SetBytes(root.get(), W("v"), REG_SZ, std::string("a\0\0\0", 4)), ERROR_SUCCESS);
  Key sub;
  ASSERT_EQ(Create(root.get(), W("sub"), sub), ERROR_SUCCESS);
  BYTE* const bad = reinterpret_cast<BYTE*>(std::uintptr_t{0x10});
  WCHAR* const bad_text = reinterpret_cast<WCHAR*>(std::uintptr_t{0xFFF0});
  DWORD* const bad_size = reinterpret_cast<DWORD*>(std::uintptr_t{8});
  const HKEY h = root.get();
  HKEY out = nullptr;
  WCHAR name[8];
  DWORD length = 8, size = 8;
  const struct {
    const char* call;
    LONG result;
  } cases[] = {
      {"query into", reg::RegQueryValueExW(h, W("v"), nullptr, nullptr, bad, &size)},
      {"query size", reg::RegQueryValueExW(h, W("v"), nullptr, nullptr, nullptr, bad_size)},
      {"query name", reg::RegQueryValueExW(h, bad_text, nullptr, nullptr, nullptr, nullptr)},
      {"enum value into", reg::RegEnumValueW(h, 0, name, &length, nullptr, nullptr, bad, &size)},
      {"enum value name", reg::RegEnumValueW(h, 0, bad_text, &length, nullptr, nullptr, nullptr, nullptr)},
      {"enum key name", reg::RegEnumKeyExW(h, 0, bad_text, &length, nullptr, nullptr, nullptr, nullptr)},
      {"info class", reg::RegQueryInfoKeyW(h, bad_text, &length, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                           nullptr, nullptr, nullptr)},
      {"open path", reg::RegOpenKeyExW(h, bad_text, 0, KEY_READ, &out)},
      {"create class", reg::RegCreateKeyExW(h, W("x"), 0, bad_text, 0, KEY_READ, nullptr, &out, nullptr)},
      {"set name", reg::RegSetValueExW(h, bad_text, 0, REG_BINARY, reinterpret_cast<BYTE*>(name), 1)},
      {"delete value", reg::RegDeleteValueW(h, bad_text)},
      {"delete tree", reg::SHDeleteKeyW(h, bad_text)},
  };
  for (const auto& c : cases) EXPECT_EQ(c.result, ERROR_NOACCESS) << c.call;
  EXPECT_EQ(SubkeyAt(h, 1).result, ERROR_NO_MORE_ITEMS);  // "x" was not made
}

// HKEY_CLASSES_ROOT over the user's and the machine's Software\Classes,
// as Windows shows it (wine shows the machine's alone).
class MergedClasses : public ::testing::Test {
 protected:
  MergedClasses() { Cleanup(); }
  ~MergedClasses() override { Cleanup(); }
  static void Cleanup() {
    for (const HKEY hive : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
      for (const WCHAR* name : {W("A"), W("B"), W("C"), W("D")}) reg::SHDeleteKeyW(hive, Classes(name).c_str());
    }
  }
  static WStr Classes(const WStr& name) { return W("Software\\Classes\\cadtools-tests-") + name; }
  // Makes Software\Classes\cadtools-tests-NAME with v = "user" below
  // HKEY_CURRENT_USER, "machine" below HKEY_LOCAL_MACHINE.
  static void Make(std::initializer_list<std::pair<HKEY, const WCHAR*>> keys) {
    for (const auto& [hive, name] : keys) {
      Key key;
      ASSERT_EQ(Create(hive, Classes(name), key), ERROR_SUCCESS);
      ASSERT_EQ(SetBytes(key.get(), W("v"), REG_BINARY, hive == HKEY_CURRENT_USER ? "user" : "machine"),
                ERROR_SUCCESS);
    }
  }
  // The value v below HKEY_CLASSES_ROOT\cadtools-tests-NAME.
  static std::string Seen(const WStr& name) {
    Key key;
    const LONG result = Open(HKEY_CLASSES_ROOT, W("cadtools-tests-") + name, key);
    return result == ERROR_SUCCESS ? Query(key.get(), W("v")).bytes : "<" + std::to_string(result) + ">";
  }
  // Where a key lives: "u", "m", both or neither.
  static std::string Where(const WStr& name) {
    Key key;
    std::string where;
    if (Open(HKEY_CURRENT_USER, Classes(name), key) == ERROR_SUCCESS) where += "u";
    if (Open(HKEY_LOCAL_MACHINE, Classes(name), key) == ERROR_SUCCESS) where += "m";
    return where;
  }
};

TEST_F(MergedClasses, TheUsersKeysWinAndBothAreListed) {
  Make({{HKEY_CURRENT_USER, W("A")},
        {HKEY_CURRENT_USER, W("C")},
        {HKEY_LOCAL_MACHINE, W("A")},
        {HKEY_LOCAL_MACHINE, W("A\\below")},
        {HKEY_LOCAL_MACHINE, W("B")}});
  EXPECT_EQ(Seen(W("A")), "user");
  EXPECT_EQ(Seen(W("B")), "machine");
  EXPECT_EQ(Seen(W("C")), "user");
  EXPECT_EQ(Seen(W("A\\below")), "machine");
  std::vector<WStr> listed;
  for (DWORD i = 0;; ++i) {
    const Listed sub = SubkeyAt(HKEY_CLASSES_ROOT, i);
    if (sub.result != ERROR_SUCCESS) break;
    if (sub.name.starts_with(W("cadtools-tests-"))) listed.push_back(sub.name);
  }
  EXPECT_EQ(listed, (std::vector<WStr>{W("cadtools-tests-A"), W("cadtools-tests-B"), W("cadtools-tests-C")}));
  Key a;
  ASSERT_EQ(Open(HKEY_CLASSES_ROOT, W("cadtools-tests-A"), a), ERROR_SUCCESS);
  EXPECT_EQ(SubkeyAt(a.get(), 0).name, W("below"));  // the machine's subkey, below the user's key
  DWORD subkeys = 0;
  ASSERT_EQ(reg::RegQueryInfoKeyW(a.get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(subkeys, 1u);
  // Deleting a key deletes the one the view shows; the machine's shows
  // through then.
  ASSERT_EQ(reg::SHDeleteKeyW(HKEY_CLASSES_ROOT, W("cadtools-tests-A")), ERROR_SUCCESS);
  EXPECT_EQ(Where(W("A")), "m");
  EXPECT_EQ(Seen(W("A")), "machine");
}

TEST_F(MergedClasses, NewKeysGoBelowTheDeepestKeyOfTheirPath) {
  Make({{HKEY_CURRENT_USER, W("A")},
        {HKEY_LOCAL_MACHINE, W("A")},
        {HKEY_LOCAL_MACHINE, W("B")},
        {HKEY_CURRENT_USER, W("C\\x")},
        {HKEY_LOCAL_MACHINE, W("C")}});
  const struct {
    const WCHAR* path;  // below HKEY_CLASSES_ROOT\cadtools-tests-
    const char* where;
  } cases[] = {
      {W("A\\new"), "u"},      // both have A: the user's
      {W("B\\new"), "m"},      // only the machine has B
      {W("C\\x\\y\\z"), "u"},  // the user's C\x goes deeper
      {W("D"), "m"},           // nothing of it exists: the machine's classes
      {W("D\\deeper"), "m"},
  };
  for (const auto& c : cases) {
    Key key;
    EXPECT_EQ(Create(HKEY_CLASSES_ROOT, W("cadtools-tests-") + WStr(c.path), key), ERROR_SUCCESS);
    EXPECT_EQ(Where(c.path), c.where) << "case #" << (&c - cases);
  }
  // Below a key opened through the view, too.
  Key b, made;
  ASSERT_EQ(Open(HKEY_CLASSES_ROOT, W("cadtools-tests-B"), b, KEY_ALL_ACCESS), ERROR_SUCCESS);
  ASSERT_EQ(Create(b.get(), W("other"), made), ERROR_SUCCESS);
  EXPECT_EQ(Where(W("B\\other")), "m");
}

TEST(StoreOnly, TheUsersHiveIsNotEmptiedThroughHkeyUsers) {
  ScratchRoot root("users-hive");
  EXPECT_EQ(reg::SHDeleteKeyW(HKEY_USERS, OwnSid().c_str()), ERROR_ACCESS_DENIED);
  Key key;
  EXPECT_EQ(Open(HKEY_CURRENT_USER, root.scratch().path(), key), ERROR_SUCCESS);
}

}  // namespace

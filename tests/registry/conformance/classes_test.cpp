// HKEY_CLASSES_ROOT where wine and Windows agree: machine-wide classes
// show through it, new top-level keys go to the machine, and a leading
// backslash opens (but does not create) below it.
#include "conformance_util.h"

namespace {

using namespace cadtools::testing;

class ClassesRoot : public ::testing::Test {
 protected:
  ClassesRoot() {
    const std::string name = "cadtools-tests-classes-" + std::to_string(reinterpret_cast<std::uintptr_t>(this) % 100000);
    name_.assign(name.begin(), name.end());
    Cleanup();
  }
  ~ClassesRoot() override { Cleanup(); }
  void Cleanup() {
    for (const HKEY hive : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) reg::SHDeleteKeyW(hive, Machine().c_str());
  }
  WStr Machine() const { return W("Software\\Classes\\") + name_; }
  WStr name_;
};

TEST_F(ClassesRoot, ShowsTheMachinesClassesAndTakesNewKeysThere) {
  Key made;
  ASSERT_EQ(Create(HKEY_LOCAL_MACHINE, Machine() + W("\\shell"), made), ERROR_SUCCESS);
  ASSERT_EQ(SetBytes(made.get(), W("v"), REG_BINARY, "m"), ERROR_SUCCESS);
  Key through;
  ASSERT_EQ(Open(HKEY_CLASSES_ROOT, name_, through), ERROR_SUCCESS);
  EXPECT_EQ(SubkeyAt(through.get(), 0).name, W("shell"));
  Key shell;
  ASSERT_EQ(Open(through.get(), W("shell"), shell), ERROR_SUCCESS);
  EXPECT_EQ(Query(shell.get(), W("v")).bytes, "m");
  // A new key below the view's own root goes into the machine's classes.
  Key created;
  ASSERT_EQ(Create(HKEY_CLASSES_ROOT, name_ + W("-new"), created), ERROR_SUCCESS);
  Key probe;
  EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, Machine() + W("-new"), probe), ERROR_SUCCESS);
  EXPECT_EQ(Open(HKEY_CURRENT_USER, Machine() + W("-new"), probe), ERROR_FILE_NOT_FOUND);
  reg::SHDeleteKeyW(HKEY_LOCAL_MACHINE, (Machine() + W("-new")).c_str());
  // Leading backslashes: Windows skips them when it opens below the view
  // itself, nowhere else.
  EXPECT_EQ(Open(HKEY_CLASSES_ROOT, W("\\") + name_, probe), ERROR_SUCCESS);
  EXPECT_EQ(Create(HKEY_CLASSES_ROOT, W("\\") + name_, probe), ERROR_BAD_PATHNAME);
  EXPECT_EQ(Open(through.get(), W("\\shell"), probe), ERROR_BAD_PATHNAME);
}

}  // namespace

// Imports against the store where a store refuses writes: nothing of the
// file may stay, whichever engine applies it. Off Windows only: wine's
// registry refuses nothing.
#include <cadtools/registry/registry_api.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "reg_file_test_util.h"
#include "registry/reg_file/reg_apply.h"
#include "registry_test_util.h"

namespace cadtools::testing {
namespace {

using namespace cadtools::registry;

// The machine store somewhere it cannot be (below a file): empty and
// read-only, as for a user who may not write /etc/cadtools.
class RefusedMachineStore {
 public:
  RefusedMachineStore() {
    if (const char* previous = std::getenv("CADTOOLS_MACHINE_REGISTRY_DIR")) previous_ = previous;
    setenv("CADTOOLS_MACHINE_REGISTRY_DIR", "/dev/null/machine", 1);
    ReloadStoreLocations();
  }
  RefusedMachineStore(const RefusedMachineStore&) = delete;
  RefusedMachineStore& operator=(const RefusedMachineStore&) = delete;
  ~RefusedMachineStore() {
    if (previous_) {
      setenv("CADTOOLS_MACHINE_REGISTRY_DIR", previous_->c_str(), 1);
    } else {
      unsetenv("CADTOOLS_MACHINE_REGISTRY_DIR");
    }
    ReloadStoreLocations();
  }

 private:
  std::optional<std::string> previous_;
};

TEST(ImportIntoTheStore, ARefusedStoreRefusesTheWholeFile) {
  const ScratchKey scratch("reg_file_refused");
  const std::string path = ToUtf8(CString(scratch.path()));
  const RefusedMachineStore refused;
  const std::string head = "Windows Registry Editor Version 5.00\n";
  const struct {
    std::string file;
    const char* error;
  } cases[] = {
      {head + "[HKCU\\" + path + "\\A]\n\"a\"=\"b\"\n\n[HKLM\\Software\\cadtools-tests\\m]\n\"b\"=dword:2\n",
       "5: cannot create HKEY_LOCAL_MACHINE\\Software\\cadtools-tests\\m: access denied (error 5)"},
      {head + "[HKCU\\" + path + "\\A]\n\"a\"=\"b\"\n[HKEY_CLASSES_ROOT\\cadtools-tests-refused]\n@=\"x\"\n",
       "4: cannot create HKEY_CLASSES_ROOT\\cadtools-tests-refused: access denied (error 5)"},
  };
  const auto undo = &registry::detail::ApplyWithUndo;
  for (RegTransferResult (*apply)(const RegKeys&) : {&ApplyRegFile, undo}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(::testing::Message() << (apply == undo ? "undoing engine, " : "ApplyRegFile, ") << "case #"
                                        << (&c - cases));
      const RegParseResult parsed = ParseRegFile(c.file);
      ASSERT_FALSE(parsed.error);
      const RegTransferResult applied = apply(parsed.keys);
      EXPECT_EQ(std::to_string(applied.line) + ": " + applied.message, c.error);
      HKEY key = nullptr;
      EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, scratch.path(), 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    }
  }
}

}  // namespace
}  // namespace cadtools::testing

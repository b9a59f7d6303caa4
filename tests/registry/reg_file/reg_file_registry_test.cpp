// .reg files against the registry: export, import, and the round trip
// that users rely on when they move settings between machines.
#include <cadtools/registry/registry_api.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "reg_file_test_util.h"
#include "registry_test_util.h"

namespace cadtools::testing {
namespace {

using namespace cadtools::registry;

// Key by key in path order, values by name: the registry lists values in
// creation order on Windows and by name under wine.
RegKeys Sorted(RegKeys keys) {
  for (RegKeyEntry& key : keys) {
    std::sort(key.values.begin(), key.values.end(),
              [](const RegValueEntry& a, const RegValueEntry& b) { return a.name < b.name; });
  }
  std::sort(keys.begin(), keys.end(), [](const RegKeyEntry& a, const RegKeyEntry& b) { return a.path < b.path; });
  return keys;
}

TEST(RegFileRegistry, ExportImportExportGivesTheSameBytes) {
  const ScratchKey scratch("reg_file_round_trip");
  const WString root = scratch.Below(U(u"tree"));
  const RegKeys shapes = EveryShape(RegHive::kCurrentUser, root);
  ASSERT_TRUE(ApplyRegFile(shapes).ok());

  RegKeys exported;
  const RegTransferResult first = ExportRegTree(RegHive::kCurrentUser, root, exported);
  ASSERT_TRUE(first.ok()) << first.message;
  EXPECT_EQ(Describe(Sorted(exported)), Describe(Sorted(shapes)));
  const std::string bytes = WriteRegFile(exported);

  ASSERT_EQ(registry::SHDeleteKeyW(HKEY_CURRENT_USER, root.c_str()), ERROR_SUCCESS);
  const RegParseResult parsed = ParseRegFile(bytes);
  ASSERT_FALSE(parsed.error) << parsed.error->line << ": " << parsed.error->message;
  ASSERT_TRUE(ApplyRegFile(parsed.keys).ok());
  RegKeys again;
  ASSERT_TRUE(ExportRegTree(RegHive::kCurrentUser, root, again).ok());
  EXPECT_EQ(WriteRegFile(again), bytes);
}

TEST(RegFileRegistry, AppliesDeletionsAndReportsMissingKeys) {
  const ScratchKey scratch("reg_file_apply");
  const std::string path = ToUtf8(CString(scratch.path(), static_cast<int>(WStringView(scratch.path()).size())));
  const auto key = [&](const char* head, const char* below) { return head + path + below + "]\n"; };
  const std::string file = "Windows Registry Editor Version 5.00\n" + key("[HKEY_CURRENT_USER\\", "\\A\\Gone") +
                           "\"v\"=dword:1\n" + key("[HKCU\\", "\\A") + "\"keep\"=\"k\"\n\"drop\"=\"d\"\n" +
                           key("[HKCU\\", "\\A") + "\"drop\"=-\n\"never there\"=-\n" +
                           key("[-HKCU\\", "\\A\\Gone") + key("[-HKCU\\", "\\Never\\There");
  const RegParseResult parsed = ParseRegFile(file);
  ASSERT_FALSE(parsed.error) << parsed.error->message;
  const RegTransferResult applied = ApplyRegFile(parsed.keys);
  ASSERT_TRUE(applied.ok()) << applied.message;

  RegKeys tree;
  ASSERT_TRUE(ExportRegTree(RegHive::kCurrentUser, scratch.Below(U(u"A")), tree).ok());
  EXPECT_EQ(Describe(tree), "[HKCU\\" + path + "\\A] keep=1:6b,00,00,00");

  const RegTransferResult missing = ExportRegTree(RegHive::kCurrentUser, scratch.Below(U(u"Never")), tree);
  EXPECT_EQ(missing.status, ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(missing.message, "no key HKEY_CURRENT_USER\\" + path + "\\Never");
}

}  // namespace
}  // namespace cadtools::testing

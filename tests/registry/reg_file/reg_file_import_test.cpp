// Importing .reg files as the registry editor does, all or nothing: the
// constructs it takes and what the registry holds afterwards, and imports
// that fail in the middle. Both engines run on every platform: the one
// ApplyRegFile uses here, and the one that undoes through the registry
// calls (Windows' ApplyRegFile).
#include <cadtools/registry/registry_api.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "reg_file_test_util.h"
#include "registry/reg_file/reg_apply.h"
#include "registry_test_util.h"

namespace cadtools::testing {
namespace {

using namespace cadtools::registry;

std::string Narrow(WStringView text) { return ToUtf8(CString(text.data(), static_cast<int>(text.size()))); }

std::string Replaced(std::string text, std::string_view from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

// A scratch key below HKCU, written @K in file texts and descriptions.
class Import : public ::testing::Test {
 protected:
  Import() : scratch_("reg_file_import"), path_(Narrow(scratch_.path())) {}

  // The tree below the scratch key, "none" when it is not there. Values
  // by name: wine lists them so.
  std::string Tree() const {
    RegKeys tree;
    const RegTransferResult read = ExportRegTree(RegHive::kCurrentUser, WString(scratch_.path()), tree);
    if (read.status == ERROR_FILE_NOT_FOUND) return "none";
    for (RegKeyEntry& key : tree) {
      std::sort(key.values.begin(), key.values.end(),
                [](const RegValueEntry& a, const RegValueEntry& b) { return a.name < b.name; });
    }
    return Replaced(Describe(tree), "HKCU\\" + path_, "@K");
  }
  // Imports text (@K standing for the scratch key): "error LINE: ..." or
  // the tree afterwards.
  std::string Imported(const std::string& text,
                       RegTransferResult (*apply)(const RegKeys&) = &registry::ApplyRegFile) const {
    const RegParseResult parsed = ParseRegFile(Replaced(text, "@K", "HKEY_CURRENT_USER\\" + path_));
    if (parsed.error) return "error " + std::to_string(parsed.error->line) + ": " + parsed.error->message;
    const RegTransferResult applied = apply(parsed.keys);
    if (!applied.ok()) return "error " + std::to_string(applied.line) + ": " + applied.message;
    return Tree();
  }

  ScratchKey scratch_;
  std::string path_;
};

constexpr std::string_view kHead = "Windows Registry Editor Version 5.00\r\n\r\n";

TEST_F(Import, TakesWhatTheRegistryEditorTakes) {
  const std::pair<std::string, std::string> cases[] = {
      {"[@K]\r\n\"a\"=\"b\" ;note\r\n", "[@K] a=1:62,00,00,00"},
      {"[@K]\n\"d\"=dword:1 ; one\n\"x\"=\"y\";z", "[@K] d=4:01,00,00,00 x=1:79,00,00,00"},
      {"[@K]\n\"a\"=\"x\"\n[@K]\n\"a\"=- ;gone", "[@K]"},
      {"[@K]\n\"d\"=dword: 0000001f\n\"e\"=dword:\t2a ", "[@K] d=4:1f,00,00,00 e=4:2a,00,00,00"},
      {"[@K]\n\"b\"=hex:01,\\\n; a comment line\n\n  02,\\ ;after the backslash\n  03", "[@K] b=3:01,02,03"},
      {"[@K\\Gone]\n\"v\"=dword:1\n[-@K\\Gone]\n\"x\"=\"ignored\"\nnot even a value\n[@K]\n\"k\"=\"v\"",
       "[@K] k=1:76,00,00,00"},
      {"[@K]\r\"a\"=\"b\"\r\"c\"=hex:01,\\\r  02\r", "[@K] a=1:62,00,00,00 c=3:01,02"},
      {"# a comment line\n[@K]\n#\"a\"=\"b\"\n\"c\"=\"d\"\r\n\x1A", "[@K] c=1:64,00,00,00"},
      {"[@K\\A\\]\n\"a\"=\"b\"", "[@K] [@K\\A] a=1:62,00,00,00"},
  };
  for (const auto& [body, want] : cases) {
    registry::SHDeleteKeyW(HKEY_CURRENT_USER, scratch_.path());
    EXPECT_EQ(Imported(std::string(kHead) + body), want) << body;
  }
  registry::SHDeleteKeyW(HKEY_CURRENT_USER, scratch_.path());
  EXPECT_EQ(Imported(" \tREGEDIT4\n[@K]\n\"a\"=\"b\""), "[@K] a=1:62,00,00,00");
}

TEST_F(Import, ClassesRootAndUsersFiles) {
  const std::string classes = "cadtools-tests-import-" + path_.substr(path_.rfind('-') + 1);
  const std::string sid = Narrow(OwnSid());
  const std::string text = std::string(kHead) + "[HKEY_CLASSES_ROOT\\" + classes + "\\shell]\n@=\"open\"\n" +
                           "[HKEY_USERS\\" + sid + "\\" + path_ + "\\own]\n\"a\"=\"b\"\n";
  EXPECT_EQ(Imported(text), "[@K] [@K\\own] a=1:62,00,00,00");
  // A new key of HKEY_CLASSES_ROOT goes to the machine's classes.
  const std::string key = "HKLM\\Software\\Classes\\" + classes;
  const WString machine(FromUtf8(key.substr(5)).GetString());
  RegKeys tree;
  ASSERT_TRUE(ExportRegTree(RegHive::kLocalMachine, machine, tree).ok());
  EXPECT_EQ(Describe(tree), "[" + key + "] [" + key + "\\shell] @=1:6f,00,70,00,65,00,6e,00,00,00");
  registry::SHDeleteKeyW(HKEY_LOCAL_MACHINE, machine.c_str());
}

// Every change of the file fails in turn; each time the registry must be
// as it was before, and the import must work once nothing fails.
TEST_F(Import, ChangesNothingWhenAChangeFails) {
  const std::string before_file = std::string(kHead) +
                                  "[@K\\Old]\n\"v\"=dword:1\n\"w\"=\"keep\"\n[@K\\Del\\Sub]\n\"x\"=hex:03\n";
  const std::string file = std::string(kHead) +
                           "[@K\\New\\Deep]\n\"a\"=\"new\"\n[@K\\Old]\n\"v\"=dword:2\n\"w\"=-\n\"n\"=hex:09\n"
                           "[-@K\\Del]\n[@K\\Del]\n\"y\"=hex(7):00,00\n";
  const auto undo = &registry::detail::ApplyWithUndo;
  for (RegTransferResult (*apply)(const RegKeys&) : {&registry::ApplyRegFile, undo}) {
    SCOPED_TRACE(apply == undo ? "undoing engine" : "ApplyRegFile");
    registry::SHDeleteKeyW(HKEY_CURRENT_USER, scratch_.path());
    const std::string before = Imported(before_file);
    std::size_t failures = 0;
    for (std::size_t change = 1;; ++change) {
      registry::detail::FailChangeForTests(change);
      const std::string got = Imported(file, apply);
      registry::detail::FailChangeForTests(0);
      if (!got.starts_with("error ")) break;  // change counts past the file's changes
      ++failures;
      EXPECT_NE(got.find("(error 1016)"), std::string::npos) << got;
      EXPECT_EQ(Tree(), before) << "change " << change << " failed";
    }
    EXPECT_EQ(failures, 9u);  // 3 keys made, 5 values set or deleted, 1 tree deleted
    EXPECT_EQ(Tree(),
              "[@K] [@K\\Del] y=7:00,00 [@K\\New] [@K\\New\\Deep] a=1:6e,00,65,00,77,00,00,00 "
              "[@K\\Old] n=3:09 v=4:02,00,00,00");
  }
}

// The fuzzer checks that a journal keeps what it is given; here, that a
// journal cut short (a disk that filled up) is no journal.
TEST(ImportJournal, ACutJournalIsRefused) {
  const std::string bytes = registry::detail::SerializeEntries(EveryShape(RegHive::kUsers, U(u"S-1-22-1-0")));
  for (const std::size_t cut : {std::size_t{0}, std::size_t{10}, bytes.size() / 2, bytes.size() - 1}) {
    EXPECT_FALSE(registry::detail::DeserializeEntries(bytes.substr(0, cut)).has_value()) << cut;
  }
  EXPECT_FALSE(registry::detail::DeserializeEntries(bytes + "x").has_value());
}

#if !defined(_WIN32)
// A store that refuses writes: the machine's, put below a file, is empty
// and read-only, as /etc/cadtools is to a user. Wine's registry refuses
// nothing, so this runs off Windows only.
TEST_F(Import, ARefusedStoreRefusesTheWholeFile) {
  const char* const variable = "CADTOOLS_MACHINE_REGISTRY_DIR";
  const std::string previous = std::getenv(variable) != nullptr ? std::getenv(variable) : "/etc/cadtools";
  setenv(variable, "/dev/null/machine", 1);
  ReloadStoreLocations();
  const std::pair<std::string, std::string> cases[] = {
      {"[@K\\A]\n\"a\"=\"b\"\n\n[HKLM\\Software\\cadtools-tests\\m]\n\"b\"=dword:2\n",
       "error 5: cannot create HKEY_LOCAL_MACHINE\\Software\\cadtools-tests\\m: access denied (error 5)"},
      {"[@K\\A]\n\"a\"=\"b\"\n[HKEY_CLASSES_ROOT\\cadtools-tests-refused]\n@=\"x\"\n",
       "error 4: cannot create HKEY_CLASSES_ROOT\\cadtools-tests-refused: access denied (error 5)"},
  };
  for (RegTransferResult (*apply)(const RegKeys&) : {&registry::ApplyRegFile, &registry::detail::ApplyWithUndo}) {
    for (const auto& [body, error] : cases) {
      EXPECT_EQ(Imported("Windows Registry Editor Version 5.00\n" + body, apply), error);
      EXPECT_EQ(Tree(), "none");
    }
  }
  setenv(variable, previous.c_str(), 1);
  ReloadStoreLocations();
}
#endif

}  // namespace
}  // namespace cadtools::testing

// Imports killed at random moments: afterwards the stores hold the whole
// file or none of it, one store or two, and a journal finishes an import
// whose process died between the commits of its stores.
#include <cadtools/registry/reg_file.h>

#include "robustness_util.h"

#include <cstring>
#include <map>
#include <random>

namespace {

using namespace cadtools::testing;
using namespace std::chrono_literals;

constexpr int kValues = 1000;
constexpr const char* kPath = "Software\\cadtools-tests\\import";

// The .reg text of one state of the stores: in the user's store (and the
// machine's, with machine) kValues DWORDs of `value` below kPath, and with
// gone a subkey Gone; without it the file deletes Gone.
std::string StateFile(int value, bool gone, bool machine) {
  std::string text = "Windows Registry Editor Version 5.00\r\n";
  for (const char* hive : {"HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE"}) {
    if (hive[5] == 'L' && !machine) break;
    const std::string key = std::string(hive) + "\\" + kPath;
    text += gone ? "\r\n[" + key + "\\Gone]\r\n\"x\"=dword:7\r\n" : "\r\n[-" + key + "\\Gone]\r\n";
    text += "\r\n[" + key + "]\r\n";
    for (int i = 0; i < kValues; ++i) text += "\"v" + std::to_string(i) + "\"=dword:" + std::to_string(value) + "\r\n";
  }
  return text;
}

// What a store holds of the file: "none" (the state before), "all", or
// what part of it.
std::string Outcome(HKEY hive) {
  const std::u16string path(kPath, kPath + std::strlen(kPath));
  HKEY key = nullptr;
  if (reg::RegOpenKeyExW(hive, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return "no key";
  int old_values = 0, new_values = 0;
  for (int i = 0; i < kValues; ++i) {
    const std::string name = "v" + std::to_string(i);
    const std::u16string wide(name.begin(), name.end());
    DWORD data = 0, size = sizeof data;
    reg::RegQueryValueExW(key, wide.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(&data), &size);
    old_values += data == 1 ? 1 : 0;
    new_values += data == 2 ? 1 : 0;
  }
  HKEY gone = nullptr;
  const bool has_gone = reg::RegOpenKeyExW(key, u"Gone", 0, KEY_READ, &gone) == ERROR_SUCCESS;
  reg::RegCloseKey(gone);
  reg::RegCloseKey(key);
  if (old_values == kValues && has_gone) return "none";
  if (new_values == kValues && !has_gone) return "all";
  return "partial: " + std::to_string(new_values) + " new, " + std::to_string(old_values) + " old values, Gone " +
         (has_gone ? "there" : "gone");
}

class KilledImport : public ::testing::Test {
 protected:
  void Prepare(const std::string& name, bool machine) {
    folder_ = TestFolder(name);
    fs::create_directories(folder_);
    chmod(folder_.c_str(), 0700);  // the file to import sits in the store's own folder
    setenv("CADTOOLS_MACHINE_REGISTRY_DIR", (folder_ + "/machine").c_str(), 1);
    machine_ = machine;
    file_ = folder_ + "/import.reg";
    std::ofstream(file_, std::ios::binary) << StateFile(2, false, machine);
  }
  // Puts the stores back in the state before the file.
  void Reset() {
    UseStore(folder_);
    const reg::RegParseResult before = reg::ParseRegFile(StateFile(1, true, machine_));
    ASSERT_FALSE(before.error);
    ASSERT_TRUE(reg::ApplyRegFile(before.keys).ok());
    UseStore(folder_ + "/elsewhere");  // closes the store before a child writes it
  }
  // The outcome of both stores, looked at as the next process would.
  std::string Outcomes() {
    UseStore(folder_);
    std::string both = Outcome(HKEY_CURRENT_USER);
    if (machine_) both += " | " + Outcome(HKEY_LOCAL_MACHINE);
    return both;
  }
  // A child that imports the file, killed after pause; whether it had
  // begun the import then.
  bool ImportKilledAfter(std::chrono::microseconds pause) {
    Child importer(folder_, {"import", file_}, folder_ + "/out");
    std::this_thread::sleep_for(pause);
    importer.Kill();
    return ReadFile(folder_ + "/out") == "importing\n";
  }
  std::chrono::microseconds TimeOfAWholeImport() {
    Reset();
    const auto start = std::chrono::steady_clock::now();
    Child importer(folder_, {"import", file_}, folder_ + "/out");
    EXPECT_EQ(importer.Wait(60s), 0);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    EXPECT_EQ(ReadFile(folder_ + "/out"), "importing\n0\n");
    EXPECT_EQ(Outcomes(), machine_ ? "all | all" : "all");
    return took;
  }

  void RunTrials(int trials) {
    const auto whole = TimeOfAWholeImport();
    std::mt19937 rng(20260124);
    std::uniform_int_distribution<long> moment(0, whole.count() * 11 / 10);
    std::map<std::string, int> seen;
    for (int trial = 0; trial < trials; ++trial) {
      Reset();
      const bool during = ImportKilledAfter(std::chrono::microseconds(moment(rng)));
      const std::string outcome = Outcomes();
      ++seen[(during ? "killed importing, " : "") + outcome];
      EXPECT_TRUE(outcome == "none" || outcome == "all" || outcome == "none | none" || outcome == "all | all")
          << "trial " << trial << ": " << outcome;
      ASSERT_EQ(IntegrityOf(folder_ + "/user.db"), "ok");
      if (machine_) {
        ASSERT_EQ(IntegrityOf(folder_ + "/machine/machine.db"), "ok");
      }
    }
    std::string summary;
    for (const auto& [outcome, count] : seen) summary += " " + std::to_string(count) + " x " + outcome + ";";
    std::printf("%d imports killed at random within %ld us:%s\n", trials, static_cast<long>(whole.count()),
                summary.c_str());
    RecordProperty("trials", trials);
  }

  std::string folder_, file_;
  bool machine_ = false;
};

TEST_F(KilledImport, OneStoreHoldsAllOrNothing) {
  Prepare("import-one", false);
  RunTrials(150);
}

TEST_F(KilledImport, TwoStoresHoldAllOrNothing) {
  Prepare("import-two", true);
  RunTrials(150);
}

// The process dies right after the machine's store committed: the user's
// store does not have the file yet, the journal says what it lacks, and
// the next session (here this process's) finishes the import.
TEST_F(KilledImport, TheJournalFinishesAnImportCutBetweenItsStores) {
  Prepare("import-cut", true);
  Reset();
  Child importer(folder_, {"import-cut", file_});
  EXPECT_EQ(importer.Wait(60s), 9);
  ASSERT_TRUE(fs::exists(folder_ + "/user.db.import"));
  const char* const count_new = "SELECT count(*) FROM vals WHERE data = x'02000000'";
  EXPECT_EQ(FirstColumn(folder_ + "/machine/machine.db", count_new), std::to_string(kValues));
  EXPECT_EQ(FirstColumn(folder_ + "/user.db", count_new), "0");
  EXPECT_EQ(Outcomes(), "all | all");
  EXPECT_FALSE(fs::exists(folder_ + "/user.db.import"));
}

}  // namespace

// Writers killed at random moments and writers working at once: the store
// stays intact and keeps every write that a caller saw succeed.
#include "robustness_util.h"

#include <map>
#include <random>
#include <set>

namespace {

using namespace cadtools::testing;
using namespace std::chrono_literals;

constexpr const char* kKey = "Software\\cadtools-tests\\robust";

// Creates the store before any child runs, so that a kill never lands
// while the file is being made.
void PrepareStore(const std::string& folder) {
  UseStore(folder);
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\robust", 0, nullptr, 0,
                                 KEY_ALL_ACCESS, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  reg::RegCloseKey(key);
}

TEST(Robustness, KilledWriterLosesNoAcknowledgedWrite) {
  const std::string folder = TestFolder("kill");
  PrepareStore(folder);
  std::mt19937 rng(20260121);
  std::size_t checked = 0;
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const std::string log = folder + "/log-" + std::to_string(round);
    {
      Child writer(folder, {"write", log, kKey, "r" + std::to_string(round)});
      std::this_thread::sleep_for(std::chrono::milliseconds(5 + rng() % 40));
      writer.Kill();
    }
    ASSERT_EQ(IntegrityOf(folder + "/user.db"), "ok");
    for (const auto& [name, data] : Acknowledged(log)) {
      ASSERT_EQ(ValueOf(kKey, name), data) << name;
      ++checked;
    }
  }
  EXPECT_GT(checked, 40u);  // the kills came after writes, not only before
}

TEST(Robustness, WritersAtOnceKeepEveryWrite) {
  const std::string folder = TestFolder("concurrent");
  PrepareStore(folder);
  constexpr int kWriters = 4;
  constexpr int kRounds = 300;
  {
    std::vector<std::unique_ptr<Child>> writers;
    for (int id = 0; id < kWriters; ++id) {
      writers.push_back(std::make_unique<Child>(
          folder, std::vector<std::string>{"mix", folder + "/log-" + std::to_string(id), kKey, std::to_string(id),
                                           std::to_string(kRounds)}));
    }
    for (auto& writer : writers) EXPECT_EQ(writer->Wait(60s), 0);  // 1: a call gave a wrong answer
  }
  ASSERT_EQ(IntegrityOf(folder + "/user.db"), "ok");
  std::map<std::string, std::set<std::string>> shared;  // name -> every data written to it
  std::size_t own = 0;
  for (int id = 0; id < kWriters; ++id) {
    for (const auto& [name, data] : Acknowledged(folder + "/log-" + std::to_string(id))) {
      if (name.rfind("shared", 0) == 0) {
        shared[name].insert(data);
      } else {
        ASSERT_EQ(ValueOf(kKey, name), data) << name;
        ++own;
      }
    }
  }
  EXPECT_EQ(own, std::size_t{kWriters * kRounds});
  ASSERT_EQ(shared.size(), 4u);
  for (const auto& [name, written] : shared) EXPECT_EQ(written.count(ValueOf(kKey, name)), 1u) << name;
}

TEST(Robustness, KeyDeletedByAnotherProcess) {
  const std::string folder = TestFolder("deleted-elsewhere");
  PrepareStore(folder);
  const std::u16string path = u"Software\\cadtools-tests\\robust";
  HKEY before = nullptr;
  ASSERT_EQ(reg::RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &before), ERROR_SUCCESS);
  Child remover(folder, {"delete", kKey}, folder + "/out");
  ASSERT_EQ(remover.Wait(20s), 0);
  ASSERT_EQ(ReadFile(folder + "/out"), "0\n");
  // A handle opened before the deletion sees its key deleted.
  EXPECT_EQ(reg::RegQueryValueExW(before, u"v", nullptr, nullptr, nullptr, nullptr), ERROR_KEY_DELETED);
  reg::RegCloseKey(before);
  // This process still knows the path; a write-through creates the key again.
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(reg::RegSetValueExW(key, u"v", 0, REG_BINARY, reinterpret_cast<const BYTE*>("again"), 5), ERROR_SUCCESS);
  reg::RegCloseKey(key);
  EXPECT_EQ(ValueOf(kKey, "v"), "again");
}

}  // namespace

// Damaged store files, folders that cannot be used, and file modes.
#include "robustness_util.h"

#include <sys/stat.h>

#include <functional>
#include <random>

namespace {

using namespace cadtools::testing;

constexpr const char* kKey = "Software\\cadtools-tests\\damage";

// A store with 200 settings, closed so that all of it is in user.db.
void MakeStore(const std::string& folder) {
  UseStore(folder);
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\damage", 0, nullptr, 0,
                                 KEY_ALL_ACCESS, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  const std::string data(100, 'd');
  for (int i = 0; i < 200; ++i) {
    const std::u16string name = u"setting" + std::u16string(static_cast<std::size_t>(i % 7 + 1), u'x') +
                                static_cast<char16_t>(u'0' + i / 7 % 10) + static_cast<char16_t>(u'A' + i / 70);
    ASSERT_EQ(reg::RegSetValueExW(key, name.c_str(), 0, REG_BINARY, reinterpret_cast<const BYTE*>(data.data()), 100),
              ERROR_SUCCESS);
  }
  reg::RegCloseKey(key);
  UseStore(folder + "-elsewhere");
  ASSERT_FALSE(fs::exists(folder + "/user.db-wal"));
}

std::vector<std::string> AsideFiles(const std::string& folder) {
  std::vector<std::string> aside;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const bool companion = name.find("-wal") != std::string::npos || name.find("-shm") != std::string::npos;
    if (name.rfind("user.db.damaged-", 0) == 0 && !companion) aside.push_back(name);
  }
  return aside;
}

TEST(Damage, DamagedStoreIsKeptAsideAndReplaced) {
  std::mt19937 rng(7);
  const struct {
    const char* name;
    std::function<void(const std::string&)> damage;
    int readers;  // at once: only one of them may move the file aside
  } cases[] = {
      {"garbage",
       [&](const std::string& file) {
         std::string bytes(8192, '\0');
         for (char& b : bytes) b = static_cast<char>(rng());
         std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
       },
       3},
      {"truncated", [](const std::string& file) { fs::resize_file(file, fs::file_size(file) / 2); }, 1},
      {"empty", [](const std::string& file) { fs::resize_file(file, 0); }, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string folder = TestFolder(std::string("damage-") + c.name);
    MakeStore(folder);
    c.damage(folder + "/user.db");
    const std::string damaged = ReadFile(folder + "/user.db");
    std::string errors;
    std::vector<std::unique_ptr<Child>> readers;
    for (int i = 0; i < c.readers; ++i) {
      const std::string n = std::to_string(i);
      readers.push_back(std::make_unique<Child>(folder, std::vector<std::string>{"read", kKey, "settingx0A"},
                                                folder + "-out" + n, folder + "-err" + n));
    }
    for (int i = 0; i < c.readers; ++i) {
      const std::string n = std::to_string(i);
      EXPECT_EQ(readers[static_cast<std::size_t>(i)]->Wait(20s), 0);
      EXPECT_EQ(ReadFile(folder + "-out" + n), "2 \n");  // as for a missing value: defaults apply
      errors += ReadFile(folder + "-err" + n);
    }
    const std::vector<std::string> aside = AsideFiles(folder);
    ASSERT_EQ(aside.size(), 1u);
    EXPECT_TRUE(ReadFile(folder + "/" + aside[0]) == damaged);
    // One report, one line, naming both files.
    const std::string store = "cadtools: settings store " + folder + "/user.db is damaged (";
    EXPECT_EQ(errors.rfind(store, 0), 0u) << errors;
    EXPECT_NE(errors.find("); kept it as " + folder + "/" + aside[0] + " and started a fresh one\n"), std::string::npos)
        << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    // The fresh store works and has nothing more to say.
    Child again(folder, {"write-read", kKey, "fresh", "new"}, folder + "-out", folder + "-err");
    EXPECT_EQ(again.Wait(20s), 0);
    EXPECT_EQ(ReadFile(folder + "-out"), "0 0 new\n");
    EXPECT_EQ(ReadFile(folder + "-err"), "");
  }
}

// Damages the second half of user.db, where the last settings are.
void DamageSecondHalf(const std::string& folder) {
  const std::size_t half = fs::file_size(folder + "/user.db") / 2;
  std::fstream file(folder + "/user.db", std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(half));
  file << std::string(half, 'Z');
}

TEST(Damage, DamageFoundLaterIsHandledTheSameWay) {
  const std::string folder = TestFolder("damage-later");
  MakeStore(folder);
  UseStore(folder);
  ASSERT_EQ(ValueOf(kKey, "settingx0A"), std::string(100, 'd'));  // checked and open
  DamageSecondHalf(folder);
  // Another process writes, so this one reads the file again.
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(std::string(folder + "/user.db").c_str(), &other), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(other, "PRAGMA user_version = 2", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  EXPECT_EQ(ValueOf(kKey, "settingxxx8C"), "<2>");  // the last one written, in the damaged half
  EXPECT_EQ(AsideFiles(folder).size(), 1u);
  EXPECT_EQ(IntegrityOf(folder + "/user.db"), "ok");
  EXPECT_EQ(reg::RegSetValueExW(HKEY_CURRENT_USER, u"v", 0, REG_BINARY, reinterpret_cast<const BYTE*>("x"), 1),
            ERROR_SUCCESS);
}

TEST(Damage, WritesFollowTheStoreWhenAnotherProcessPutsItAside) {
  const std::string folder = TestFolder("damage-elsewhere");
  MakeStore(folder);
  UseStore(folder);
  ASSERT_EQ(ValueOf(kKey, "settingx0A"), std::string(100, 'd'));  // open here, with its pages read
  DamageSecondHalf(folder);
  Child finder(folder, {"read", kKey, "settingx0A"}, folder + "-out", folder + "-err");  // checks, puts it aside
  ASSERT_EQ(finder.Wait(20s), 0);
  ASSERT_EQ(AsideFiles(folder).size(), 1u);
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\damage", 0, nullptr, 0, KEY_WRITE,
                                 nullptr, &key, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(reg::RegSetValueExW(key, u"after", 0, REG_BINARY, reinterpret_cast<const BYTE*>("new"), 3), ERROR_SUCCESS);
  reg::RegCloseKey(key);
  Child reader(folder, {"read", kKey, "after"}, folder + "-out");
  EXPECT_EQ(reader.Wait(20s), 0);
  EXPECT_EQ(ReadFile(folder + "-out"), "0 new\n");  // in the fresh store, not the one put aside
}

TEST(Damage, UnusableFolderFailsCleanlyAndSaysSoOnce) {
  const std::string base = TestFolder("unusable");
  fs::create_directories(base);
  std::ofstream(base + "/file") << "not a folder";
  Child child(base + "/file/cadtools", {"write-read", kKey, "v", "data"}, base + "/out", base + "/err");
  EXPECT_EQ(child.Wait(20s), 0);
  EXPECT_EQ(ReadFile(base + "/out"), "5 2 \n");  // writes denied, reads find nothing
  const std::string errors = ReadFile(base + "/err");
  EXPECT_EQ(errors.rfind("cadtools: settings store " + base + "/file/cadtools/user.db cannot be used (", 0), 0u)
      << errors;
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
}

TEST(Damage, MachineStoreNobodyMadeIsEmptyAndRefusesWrites) {
  const std::string base = TestFolder("no-machine");
  fs::create_directories(base);
  std::ofstream(base + "/file") << "not a folder";
  const char* set = std::getenv("CADTOOLS_MACHINE_REGISTRY_DIR");
  const std::string previous = set != nullptr ? set : "";
  setenv("CADTOOLS_MACHINE_REGISTRY_DIR", (base + "/file/machine").c_str(), 1);
  reg::ReloadStoreLocations();
  HKEY key = nullptr;
  WCHAR name[8];
  DWORD length = 8;
  EXPECT_EQ(reg::RegOpenKeyExW(HKEY_LOCAL_MACHINE, u"Software", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(reg::RegEnumKeyExW(HKEY_LOCAL_MACHINE, 0, name, &length, nullptr, nullptr, nullptr, nullptr),
            ERROR_NO_MORE_ITEMS);
  EXPECT_EQ(reg::RegCreateKeyExW(HKEY_LOCAL_MACHINE, u"Software", 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr),
            ERROR_ACCESS_DENIED);
  EXPECT_EQ(reg::RegSetValueExW(HKEY_LOCAL_MACHINE, u"v", 0, REG_BINARY, reinterpret_cast<const BYTE*>("x"), 1),
            ERROR_ACCESS_DENIED);
  previous.empty() ? unsetenv("CADTOOLS_MACHINE_REGISTRY_DIR")
                   : setenv("CADTOOLS_MACHINE_REGISTRY_DIR", previous.c_str(), 1);
  reg::ReloadStoreLocations();
}

TEST(Privacy, StoreFolderAndFilesAreTheUsersAlone) {
  const std::string base = TestFolder("private");
  const mode_t previous = umask(0);  // the modes must not come from the caller's umask
  UseStore(base + "/deeper");
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\private", 0, nullptr, 0,
                                 KEY_ALL_ACCESS, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  ASSERT_EQ(reg::RegSetValueExW(key, u"v", 0, REG_BINARY, reinterpret_cast<const BYTE*>("x"), 1), ERROR_SUCCESS);
  umask(previous);
  for (const std::string path : {"", "/deeper"}) {
    EXPECT_EQ(fs::status(base + path).permissions(), fs::perms::owner_all) << path;
  }
  for (const std::string suffix : {"", "-wal", "-shm", ".lock"}) {  // the WAL files exist while the store is open
    EXPECT_EQ(fs::status(base + "/deeper/user.db" + suffix).permissions(),
              fs::perms::owner_read | fs::perms::owner_write)
        << suffix;
  }
  UseStore(base + "/elsewhere");  // closes every key
  EXPECT_EQ(reg::RegCloseKey(key), ERROR_INVALID_HANDLE);
}

}  // namespace

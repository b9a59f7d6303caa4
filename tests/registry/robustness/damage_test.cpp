// Damaged store files, folders that cannot be used, and file modes.
#include "robustness_util.h"

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

void Execute(const std::string& file, const char* sql) {
  sqlite3* db = nullptr;
  sqlite3_open(file.c_str(), &db);
  EXPECT_EQ(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
  sqlite3_close(db);
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
      {"faults on many pages",  // SQLite lists them one per line; the report keeps one line
       [](const std::string& file) {
         std::fstream bytes(file, std::ios::in | std::ios::out | std::ios::binary);
         for (std::uintmax_t page = 1; page < fs::file_size(file) / 4096; ++page) {
           bytes.seekp(static_cast<std::streamoff>(page * 4096 + 100));
           bytes << std::string(40, '\x07');
         }
       },
       1},
      {"tables not ours",  // every call would fail without a word
       [](const std::string& file) { Execute(file, "ALTER TABLE vals RENAME TO other"); }, 1},
      {"an index out of step with its table",  // a quick check passes it; writes could vanish
       [](const std::string& file) {
         Execute(file,
                 "PRAGMA writable_schema = ON;"
                 "UPDATE sqlite_schema SET sql = 'CREATE INDEX vals_order ON vals(written)' WHERE name = 'vals_order'");
       },
       1},
      {"empty beside a -wal",  // its -wal may hold the latest settings
       [](const std::string& file) {
         fs::resize_file(file, 0);
         std::ofstream(file + "-wal", std::ios::binary) << std::string(4096, 'w');
       },
       1},
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

// A writer killed while it first made the store leaves an empty file, and
// sometimes the header of a rollback journal beside it. Nothing was ever
// acknowledged from it: the store is set up again, and there is nothing to
// report.
TEST(Damage, StoreCutShortAtCreationIsSetUpAgainSilently) {
  std::string header(512, '\0');  // magic, no page records, original size 0, sector 512, page 4096
  const unsigned char start[] = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7, 0, 0, 0, 0, 0x12, 0x34, 0x56, 0x78,
                                 0,    0,    0,    0,    0,    0,    2,    0,    0, 0, 0x10, 0};
  header.replace(0, sizeof start, reinterpret_cast<const char*>(start), sizeof start);
  for (const std::string journal : {"", "with its journal"}) {
    SCOPED_TRACE(journal);
    const std::string folder = TestFolder("cut-short");
    fs::create_directories(folder);
    std::ofstream(folder + "/user.db");
    if (!journal.empty()) std::ofstream(folder + "/user.db-journal", std::ios::binary) << header;
    Child reader(folder, {"read", kKey, "settingx0A"}, folder + "-out", folder + "-err");
    EXPECT_EQ(reader.Wait(20s), 0);
    EXPECT_EQ(ReadFile(folder + "-out"), "2 \n");
    Child writer(folder, {"write-read", kKey, "fresh", "new"}, folder + "-out2", folder + "-err2");
    EXPECT_EQ(writer.Wait(20s), 0);
    EXPECT_EQ(ReadFile(folder + "-out2"), "0 0 new\n");
    EXPECT_EQ(ReadFile(folder + "-err") + ReadFile(folder + "-err2"), "");
    EXPECT_TRUE(AsideFiles(folder).empty());
    EXPECT_FALSE(fs::exists(folder + "/user.db-journal"));
    EXPECT_EQ(IntegrityOf(folder + "/user.db"), "ok");
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

}  // namespace

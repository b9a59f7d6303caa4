// Stores written before keys had classes, and volatile keys across a
// restart of the machine.
#include "robustness_util.h"

namespace {

using namespace cadtools::testing;

void Exec(const std::string& file, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
  char* error = nullptr;
  EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << (error != nullptr ? error : "");
  sqlite3_free(error);
  sqlite3_close(db);
}

TEST(Schema, StoresOfTheFirstVersionAreReadAndGetClasses) {
  const OpenFolder base;  // another user can reach it
  const std::string folder = base.path() + "/store";
  // Written through this version first, then the columns it added taken
  // away again, as a first version would have left the file.
  UseStore(folder);
  ASSERT_EQ(WriteValue("Software\\cadtools-tests\\old", "v", "kept"), ERROR_SUCCESS);
  UseStore(base.path() + "/elsewhere");
  Exec(folder + "/user.db",
       "ALTER TABLE keys DROP COLUMN class; ALTER TABLE keys DROP COLUMN boot; PRAGMA user_version = 1;");
  const std::optional<Identity> reader = ReaderIdentity();
  if (reader) {
    // Another user reads it as it is (the view of its keys), and writes
    // nothing into it.
    chmod(folder.c_str(), 0755);
    chmod((folder + "/user.db").c_str(), 0644);
    Forked other(*reader, folder, [](Forked& self) { self.Say(ValueOf("Software\\cadtools-tests\\old", "v")); });
    EXPECT_EQ(other.Line(), "kept");
    EXPECT_EQ(other.Wait(), 0);
  }
  UseStore(folder);
  EXPECT_EQ(ValueOf("Software\\cadtools-tests\\old", "v"), "kept");
  HKEY key = nullptr;
  ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\new", 0, const_cast<char16_t*>(u"cls"),
                                 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
            ERROR_SUCCESS);
  char16_t text[8];
  DWORD length = 8;
  EXPECT_EQ(reg::RegQueryInfoKeyW(key, text, &length, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, nullptr),
            ERROR_SUCCESS);
  EXPECT_EQ(std::u16string(text, length), u"cls");
  reg::RegCloseKey(key);
}

// HKEY_CLASSES_ROOT of earlier versions, a store of its own: its keys
// move below the user's Software\Classes, where the user's own win.
TEST(Schema, AnOldClassesStoreMovesIntoTheUsersClasses) {
  const std::string folder = TestFolder("classes-move"), old = TestFolder("classes-old");
  UseStore(old);  // what HKEY_CLASSES_ROOT held, as a hive of its own
  ASSERT_EQ(WriteValue(".cadtools-test\\shell", "", "open"), ERROR_SUCCESS);
  ASSERT_EQ(WriteValue(".cadtools-test", "v", "old"), ERROR_SUCCESS);
  UseStore(folder);
  ASSERT_EQ(WriteValue("Software\\Classes\\.cadtools-test", "v", "user"), ERROR_SUCCESS);
  UseStore(old + "/elsewhere");
  fs::rename(old + "/user.db", folder + "/classes.db");
  UseStore(folder);
  EXPECT_EQ(ValueOf(".cadtools-test", "v", HKEY_CLASSES_ROOT), "user");
  EXPECT_EQ(ValueOf(".cadtools-test\\shell", "", HKEY_CLASSES_ROOT), "open");
  EXPECT_EQ(ValueOf("Software\\Classes\\.cadtools-test\\shell", ""), "open");
  EXPECT_FALSE(fs::exists(folder + "/classes.db"));
  std::size_t kept = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    kept += entry.path().filename().string().starts_with("classes.db.moved-") ? 1u : 0u;
  }
  EXPECT_EQ(kept, 1u);
}

TEST(Schema, VolatileKeysEndWithTheMachinesRun) {
  const OpenFolder base;
  const std::string folder = base.path() + "/store";
  UseStore(folder);
  // The kept key first: the keys a volatile create makes on its way are
  // volatile too.
  for (const auto& [path, options] : {std::pair{u"Software\\cadtools-tests\\kept", REG_OPTION_NON_VOLATILE},
                                      std::pair{u"Software\\cadtools-tests\\vol\\inner", REG_OPTION_VOLATILE}}) {
    HKEY key = nullptr;
    ASSERT_EQ(reg::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &key,
                                   nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(reg::RegSetValueExW(key, u"v", 0, REG_BINARY, reinterpret_cast<const BYTE*>("x"), 1), ERROR_SUCCESS);
    reg::RegCloseKey(key);
  }
  // A restart, as far as the store can tell: its volatile keys are of
  // another run.
  UseStore(base.path() + "/elsewhere");
  UseStore(folder);
  EXPECT_EQ(ValueOf("Software\\cadtools-tests\\vol\\inner", "v"), "x");  // the same run: still there
  UseStore(base.path() + "/elsewhere");
  Exec(folder + "/user.db", "UPDATE keys SET boot = x'00' WHERE boot IS NOT NULL");
  const std::optional<Identity> reader = ReaderIdentity();
  if (reader && reader->other) {
    // A reader that cannot write the store does not see them either.
    chmod(folder.c_str(), 0755);
    chmod((folder + "/user.db").c_str(), 0644);
    Forked other(*reader, folder, [](Forked& self) {
      self.Say(ValueOf("Software\\cadtools-tests\\vol\\inner", "v") + " " + ValueOf("Software\\cadtools-tests\\kept", "v"));
    });
    EXPECT_EQ(other.Line(), "<2> x");
    EXPECT_EQ(other.Wait(), 0);
  }
  UseStore(folder);
  EXPECT_EQ(ValueOf("Software\\cadtools-tests\\vol", "v"), "<2>");
  EXPECT_EQ(ValueOf("Software\\cadtools-tests\\kept", "v"), "x");
  EXPECT_EQ(IntegrityOf(folder + "/user.db"), "ok");
}

}  // namespace

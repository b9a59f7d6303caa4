// Who may read and write the store: folders that are read-only to the
// user, modes that were there before, umasks, folders of another user.
#include "robustness_util.h"

namespace {

using namespace cadtools::testing;

constexpr const char* kKey = "Software\\cadtools-tests\\access";

// Makes folder read-only to reader while others may read it, as a shared
// settings folder is: root's 0755 folder with 0644 files for another user,
// the user's own folder made 0555 otherwise.
void ShareReadOnly(const std::string& folder, const Identity& reader) {
  if (!reader.other) {
    chmod(folder.c_str(), 0555);
    return;
  }
  chmod(folder.c_str(), 0755);
  for (const auto& entry : fs::directory_iterator(folder)) chmod(entry.path().c_str(), 0644);
}

// What a reader finds: two values and their count, and the codes of a
// write and of deleting the key.
void ReadAndTryToWrite(Forked& self) {
  std::string line = "v=" + ValueOf(kKey, "v") + " w=" + ValueOf(kKey, "w");
  HKEY key = nullptr;
  DWORD values = 0;
  if (reg::RegOpenKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\access", 0, KEY_READ, &key) == ERROR_SUCCESS) {
    reg::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &values, nullptr, nullptr,
                          nullptr, nullptr);
    reg::RegCloseKey(key);
  }
  line += " values=" + std::to_string(values) + " set=" + std::to_string(WriteValue(kKey, "v", "mine"));
  line += " delete=" + std::to_string(reg::SHDeleteKeyW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\access"));
  self.Say(line);
}

TEST(ReadOnlyFolder, ReadsSeeTheLatestValuesAndWritesAreRefused) {
  const std::optional<Identity> reader = ReaderIdentity();
  if (!reader) GTEST_SKIP() << "running as root, and there is no user 'nobody' to find the folder read-only";
  const struct {
    const char* name;
    bool writer_stays;  // has the store open: the last write is in the -wal, and there is a -shm
    bool wal_kept;      // the writer is gone, its -wal is there and its -shm is not
  } cases[] = {
      {"closed cleanly: no -wal, no -shm", false, false},
      {"a writer has it open", true, false},
      {"a -wal without its -shm", false, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const OpenFolder base;
    const std::string folder = base.path() + "/store", elsewhere = base.path() + "/elsewhere";
    // Forked before this process opens the store: SQLite's record of the
    // locks a process holds would go with the copy, but the locks do not.
    Forked copy(*reader, folder, [](Forked& self) {
      for (int i = 0; i < 2; ++i) {
        self.Await();
        ReadAndTryToWrite(self);
      }
    });
    UseStore(folder);
    ASSERT_EQ(WriteValue(kKey, "v", "old"), ERROR_SUCCESS);
    ASSERT_EQ(WriteValue(kKey, "w", "x"), ERROR_SUCCESS);
    sqlite3* other = nullptr;  // while it has the store open, closing ours leaves the -wal as it is
    if (c.wal_kept) {
      ASSERT_EQ(sqlite3_open((folder + "/user.db").c_str(), &other), SQLITE_OK);
      ASSERT_EQ(sqlite3_exec(other, "SELECT count(*) FROM vals", nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ASSERT_EQ(WriteValue(kKey, "v", "new"), ERROR_SUCCESS);
    if (!c.writer_stays) UseStore(elsewhere);
    if (other != nullptr) {
      sqlite3_db_config(other, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
      int persist = 1;
      sqlite3_file_control(other, "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
      sqlite3_close(other);
      fs::remove(folder + "/user.db-shm");
    }
    ASSERT_EQ(fs::exists(folder + "/user.db-wal"), c.writer_stays || c.wal_kept);
    ASSERT_EQ(fs::exists(folder + "/user.db-shm"), c.writer_stays);
    ShareReadOnly(folder, *reader);
    copy.Resume();
    EXPECT_EQ(copy.Line(), "v=new w=x values=2 set=5 delete=5");
    // A change made meanwhile is seen by the next call.
    chmod(folder.c_str(), 0700);
    UseStore(folder);
    EXPECT_EQ(WriteValue(kKey, "v", "newer"), ERROR_SUCCESS);
    UseStore(elsewhere);
    ShareReadOnly(folder, *reader);
    copy.Resume();
    EXPECT_EQ(copy.Line(), "v=newer w=x values=2 set=5 delete=5");
    EXPECT_EQ(copy.Wait(), 0);
    EXPECT_EQ(copy.Errors(), "");  // a read-only store is nothing to report
  }
}

TEST(Privacy, StoreFolderAndFilesAreTheUsersAloneWhateverWasThere) {
  const struct {
    const char* name;
    mode_t umask;
    int folder;  // mode of the store folder before, -1: none (made with two parents)
    int files;   // mode given to the store's files after a first use, -1: left alone
  } cases[] = {
      {"new, umask 0", 0, -1, -1},
      {"new, umask 0277", 0277, -1, -1},
      {"new, umask 0777", 0777, -1, -1},
      {"folder 0755", 022, 0755, -1},
      {"folder 0777", 022, 0777, -1},
      {"files 0644", 022, 0700, 0644},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string base = TestFolder("private");
    const std::string folder = c.folder < 0 ? base + "/a/b" : base;
    if (c.folder >= 0) {
      fs::create_directories(folder);
      chmod(folder.c_str(), static_cast<mode_t>(c.folder));
    }
    if (c.files >= 0) {
      UseStore(folder);
      ASSERT_EQ(WriteValue(kKey, "v", "first"), ERROR_SUCCESS);
      UseStore(base + "-elsewhere");
      for (const char* suffix : {"", ".lock"}) {
        chmod((folder + "/user.db" + suffix).c_str(), static_cast<mode_t>(c.files));
      }
    }
    const mode_t previous = umask(c.umask);
    UseStore(folder);
    const LONG wrote = WriteValue(kKey, "v", "x");
    umask(previous);
    ASSERT_EQ(wrote, ERROR_SUCCESS);
    for (const std::string& path : {base, base + "/a", folder}) {
      if (fs::exists(path)) {
        EXPECT_EQ(ModeOf(path), 0700) << path;
      }
    }
    for (const char* suffix : {"", "-wal", "-shm", ".lock"}) {  // the WAL files exist while the store is open
      EXPECT_EQ(ModeOf(folder + "/user.db" + suffix), 0600) << suffix;
    }
    UseStore(base + "-elsewhere");
  }
}

// A store folder that others may use and that is not ours to change: the
// store works in it, its files are private, and it is reported once.
void ExpectLeftAsItIs(const Identity& user, const std::string& folder, mode_t mode, const std::string& why) {
  chmod(folder.c_str(), mode);
  Forked copy(user, folder, [](Forked& self) {
    const LONG first = WriteValue(kKey, "v", "1");
    const LONG second = WriteValue(kKey, "v", "2");
    self.Say(std::to_string(first) + " " + std::to_string(second) + " " + ValueOf(kKey, "v"));
  });
  EXPECT_EQ(copy.Line(), "0 0 2");
  EXPECT_EQ(copy.Wait(), 0);
  char octal[8];
  std::snprintf(octal, sizeof octal, "%04o", static_cast<unsigned>(mode));
  EXPECT_EQ(copy.Errors(), "cadtools: settings store folder " + folder + " is open to other users (mode " + octal +
                               ") but " + why + ", so it is left as it is\n");
  EXPECT_EQ(ModeOf(folder), static_cast<int>(mode));
  EXPECT_EQ(ModeOf(folder + "/user.db"), 0600);
}

TEST(Privacy, FolderOfAnotherUserIsLeftAsItIsAndReportedOnce) {
  const std::optional<Identity> user = ReaderIdentity();
  if (!user || !user->other) GTEST_SKIP() << "only root can give the folder to another user";
  const OpenFolder base;
  fs::create_directory(base.path() + "/everyone");
  ExpectLeftAsItIs(*user, base.path() + "/everyone", 0777, "belongs to another user");
}

// --store or the environment may name a folder that is not the stores'
// alone (a project folder, a home folder, /tmp): its mode is not ours.
TEST(Privacy, FolderThatHoldsOtherFilesIsLeftAsItIsAndReportedOnce) {
  const OpenFolder base;
  const std::string folder = base.path() + "/project";
  fs::create_directory(folder);
  std::ofstream(folder + "/drawing.dwg") << "not a store";
  ExpectLeftAsItIs(Identity{geteuid(), getegid(), false}, folder, 0755, "holds other files");
}

}  // namespace

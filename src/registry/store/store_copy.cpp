// Copying a store into a temporary folder and reading it back as an image.
#include "registry/store/store_copy.h"

#include "registry/store/locations.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace cadtools::registry::store {

namespace {

// A folder of our own for the copy (mkdtemp makes it 0700), removed with
// what is in it when this goes.
class TempFolder {
 public:
  TempFolder() {
    const char* tmpdir = std::getenv("TMPDIR");
    for (const char* root : {tmpdir != nullptr && *tmpdir == '/' ? tmpdir : "", "/tmp"}) {
      if (*root == '\0') continue;
      std::string pattern = std::string(root) + "/cadtools-store-XXXXXX";
      if (mkdtemp(pattern.data()) != nullptr) {
        path_ = pattern;
        return;
      }
      error_ = errno;
    }
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    if (path_.empty()) return;
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) unlink((file() + suffix).c_str());
    rmdir(path_.c_str());
  }

  bool made() const noexcept { return !path_.empty(); }
  int error() const noexcept { return error_; }
  std::string file() const { return path_ + "/store.db"; }

 private:
  std::string path_;
  int error_ = 0;
};

// Copies from to to (a new file, 0600). A missing from copies nothing and
// succeeds: a store without a -wal.
bool CopyFile(const std::string& from, const std::string& to, std::string& why) {
  const int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0) {
    if (errno == ENOENT) return true;
    why = "cannot read " + from + ": " + ErrnoText(errno);
    return false;
  }
  const int out = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  bool done = out >= 0;
  char buffer[65536];
  while (done) {
    const ssize_t got = read(in, buffer, sizeof buffer);
    if (got == 0) break;
    if (got < 0) {
      done = errno == EINTR;
      continue;
    }
    for (ssize_t put = 0; done && put < got;) {
      const ssize_t wrote = write(out, buffer + put, static_cast<std::size_t>(got - put));
      if (wrote > 0) put += wrote;
      done = wrote > 0 || errno == EINTR;
    }
  }
  if (!done) why = "cannot copy " + from + " to " + to + ": " + ErrnoText(errno);
  if (out >= 0) close(out);
  close(in);
  return done;
}

}  // namespace

int CopyStoreImage(const std::string& file, StoreImage& image, std::string& why) {
  const TempFolder folder;
  if (!folder.made()) {
    why = "no temporary folder to read it through: " + ErrnoText(folder.error());
    return SQLITE_CANTOPEN;
  }
  const std::string copy = folder.file();
  if (!CopyFile(file, copy, why) || !CopyFile(file + "-wal", copy + "-wal", why)) return SQLITE_CANTOPEN;
  sqlite3* db = nullptr;
  int result = sqlite3_open_v2(copy.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
                               nullptr);
  if (result == SQLITE_OK) {
    // The copy goes away: no checkpoint into it on close.
    sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    // Reading the schema applies the WAL and finds a file that is no database.
    result = sqlite3_exec(db, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
  }
  if (result == SQLITE_OK) {
    image.bytes.reset(sqlite3_serialize(db, "main", &image.size, 0));
    if (image.bytes == nullptr) result = SQLITE_NOMEM;
  }
  if (result != SQLITE_OK) why = db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(result);
  sqlite3_close(db);
  // Bytes 18 and 19 are the read and write versions, 2 for WAL; an
  // in-memory database has no WAL to read.
  if (result == SQLITE_OK && image.size >= 20 && image.bytes.get()[18] == 2) {
    image.bytes.get()[18] = 1;
    image.bytes.get()[19] = 1;
  }
  return result;
}

}  // namespace cadtools::registry::store

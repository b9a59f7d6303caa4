// Creating, checking and putting aside store files under the store lock.
#include "registry/store/store_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <thread>

namespace cadtools::registry::store {

namespace {

// Longer than any open, check or quarantine takes; a holder that is stuck
// (stopped in a debugger, say) must not hang us, so after this we go on
// without the lock.
constexpr auto kLockPatience = std::chrono::seconds(10);

// The lock file's first bytes count how often a store file in this place
// was put aside; processes that have the store open read the count before
// each write (see Hive::BeforeWrite).
constexpr off_t kCountBytes = sizeof(std::uint64_t);

class StoreLock {
 public:
  StoreLock(const std::string& path, bool may_create, mode_t mode) {
    fd_ = open(path.c_str(), may_create ? O_RDWR | O_CREAT | O_CLOEXEC : O_RDONLY | O_CLOEXEC, mode);
    if (fd_ < 0) return;
    struct stat info {};
    if (may_create && fstat(fd_, &info) == 0) {
      fchmod(fd_, mode);
      if (info.st_size < kCountBytes && ftruncate(fd_, kCountBytes) != 0) {
        // Without the count other processes notice a move by a stat.
      }
    }
    const auto deadline = std::chrono::steady_clock::now() + kLockPatience;
    auto pause = std::chrono::microseconds(200);
    while (flock(fd_, LOCK_EX | LOCK_NB) != 0) {
      if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > deadline) return;
      std::this_thread::sleep_for(pause);
      pause = std::min(pause * 2, std::chrono::microseconds(20000));
    }
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  ~StoreLock() {
    if (fd_ >= 0) close(fd_);  // releases the flock
  }

  std::uint64_t Moves() const noexcept {
    std::uint64_t moves = 0;
    if (fd_ >= 0 && pread(fd_, &moves, sizeof moves, 0) != kCountBytes) moves = 0;
    return moves;
  }
  void CountMove() const noexcept {
    const std::uint64_t moves = Moves() + 1;
    if (fd_ >= 0 && pwrite(fd_, &moves, sizeof moves, 0) != kCountBytes) {
      // Other processes then notice the move by their periodic stat.
    }
  }

 private:
  int fd_ = -1;
};

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

constexpr const char* kCompanions[] = {"-wal", "-shm", "-journal"};

// Renames the file and its companions aside; false when the file stays.
bool MoveAside(const StoreLock& lock, const std::string& file, const std::string& reason, std::string& why) {
  const std::string aside = AsideName(file, "damaged");
  if (!MoveWithCompanions(file, aside)) {
    why = file + " is damaged (" + reason + ") and cannot be moved aside: " + ErrnoText(errno);
    return false;
  }
  lock.CountMove();
  Report("settings store " + file + " is damaged (" + reason + "); kept it as " + aside + " and started a fresh one");
  return true;
}

OpenOutcome Unusable(std::string why) {
  OpenOutcome outcome;
  outcome.why = std::move(why);
  return outcome;
}

OpenOutcome Empty() {
  OpenOutcome outcome;
  outcome.state = OpenState::kEmpty;
  return outcome;
}

// Creates the store file with its mode (an umask does not widen or narrow
// it), so that SQLite gives the -wal and -shm files the same mode.
bool CreateFile(const StoreLocation& where, std::string& why) {
  const int fd = open(where.file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, where.file_mode);
  if (fd < 0) {
    if (errno == EEXIST) return true;
    why = "cannot create " + where.file + ": " + ErrnoText(errno);
    return false;
  }
  fchmod(fd, where.file_mode);
  close(fd);
  return true;
}

SourceStamp::File StampOfFile(const std::string& path) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return {};
  return {info.st_dev, info.st_ino, info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

// Opens and checks the file. In a folder we cannot write, SQLite cannot
// make the -shm that a WAL store needs for reading; such a store is read
// through a copy.
CheckResult OpenChecked(const std::string& file, bool writable, Database& db) {
  const int opened = db.Open(file, !writable);
  if (opened != SQLITE_OK) return {sqlite3_errstr(opened), IsDamage(opened)};
  CheckResult check = db.Check();
  if (writable || check.problem.empty() || check.damaged) return check;
  db.Close();
  std::string why;
  const int copied = db.OpenCopy(file, why);
  if (copied != SQLITE_OK) return {why, IsDamage(copied)};
  return db.Check();
}

OpenOutcome OpenLocked(const StoreLocation& where, bool writable, Database& db, const FileIdentity* damaged,
                       const std::string& reason) {
  const StoreLock lock(where.file + ".lock", writable, where.file_mode);
  for (int attempt = 0; attempt < 4; ++attempt) {
    const SourceStamp source = writable ? SourceStamp() : StampOf(where.file);
    if (source.file.size <= 0 && !writable) {
      // No store, or one that never held data, and none can be made here.
      if (where.shared) return Empty();
      return Unusable("cannot write to " + where.folder);
    }
    struct stat info {};
    if (stat(where.file.c_str(), &info) != 0) {
      std::string why;
      if (!CreateFile(where, why)) return Unusable(why);
      continue;
    }
    const FileIdentity identity{info.st_dev, info.st_ino};
    std::string problem;
    if (damaged != nullptr && *damaged == identity) {
      problem = reason;
    } else if (info.st_size == 0 && StampOfFile(where.file + "-wal").size > 0) {
      // SQLite would delete this -wal. Ours gets one only once the schema
      // is in the file, so it holds data that the file lost.
      problem = "the file is empty but its -wal is not";
    } else {
      const CheckResult check = OpenChecked(where.file, writable, db);
      if (check.problem.empty()) {
        db.Configure(where.shared);
        OpenOutcome outcome;
        outcome.state = OpenState::kFile;
        outcome.identity = identity;
        outcome.moves = lock.Moves();
        if (db.is_copy()) outcome.source = source;
        return outcome;
      }
      db.CloseAside();
      if (!check.damaged) return Unusable("cannot use " + where.file + ": " + check.problem);
      problem = check.problem;
    }
    damaged = nullptr;
    std::string why;
    if (!writable || !MoveAside(lock, where.file, problem, why)) {
      return Unusable(why.empty() ? where.file + " is damaged (" + problem + ") and cannot be moved aside" : why);
    }
  }
  return Unusable("cannot open " + where.file);
}

}  // namespace

std::string AsideName(const std::string& file, std::string_view why) {
  char stamp[32] = {};
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &local);
  const std::string base = file + "." + std::string(why) + "-" + stamp;
  std::string aside = base;
  for (int n = 1; Exists(aside) || Exists(aside + "-wal"); ++n) aside = base + "-" + std::to_string(n);
  return aside;
}

bool MoveWithCompanions(const std::string& file, const std::string& aside) {
  if (rename(file.c_str(), aside.c_str()) != 0) return false;
  for (const char* companion : kCompanions) {
    if (Exists(file + companion)) rename((file + companion).c_str(), (aside + companion).c_str());
  }
  return true;
}

SourceStamp StampOf(const std::string& file) {
  return {StampOfFile(file), StampOfFile(file + "-wal"), Exists(file + "-shm")};
}

OpenOutcome OpenStoreFile(const StoreLocation& where, Database& db, const FileIdentity* damaged,
                          const std::string& reason) {
  if (where.folder.empty()) return Unusable("there is no home folder to keep settings in");
  std::string why;
  if (!MakeFolders(where.folder, where.folder_mode, why)) {
    // Nobody has made a machine store: it is simply empty.
    if (where.shared) return Empty();
    return Unusable(why);
  }
  const bool writable = access(where.folder.c_str(), W_OK) == 0;
  // Before anything is opened: SQLite gives new -wal and -shm files the
  // mode the store file has then.
  const std::string exposed = MakePrivate(where, writable);
  OpenOutcome outcome = OpenLocked(where, writable, db, damaged, reason);
  outcome.exposed = exposed;
  return outcome;
}

void Report(const std::string& line) noexcept {
  std::string text = "cadtools: " + line;
  std::replace(text.begin(), text.end(), '\n', ' ');  // one report, one line
  text += '\n';
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t wrote = write(STDERR_FILENO, text.data() + done, text.size() - done);
    if (wrote <= 0 && errno != EINTR) return;
    if (wrote > 0) done += static_cast<std::size_t>(wrote);
  }
}

}  // namespace cadtools::registry::store

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

std::string AsideName(const std::string& file) {
  char stamp[32] = {};
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", &local);
  const std::string base = file + ".damaged-" + stamp;
  std::string aside = base;
  for (int n = 1; Exists(aside) || Exists(aside + "-wal"); ++n) aside = base + "-" + std::to_string(n);
  return aside;
}

// Renames the file and its companions aside; false when the file stays.
bool MoveAside(const StoreLock& lock, const std::string& file, const std::string& reason, std::string& why) {
  const std::string aside = AsideName(file);
  if (rename(file.c_str(), aside.c_str()) != 0) {
    why = file + " is damaged (" + reason + ") and cannot be moved aside: " + ErrnoText(errno);
    return false;
  }
  for (const char* companion : kCompanions) {
    if (Exists(file + companion)) rename((file + companion).c_str(), (aside + companion).c_str());
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

}  // namespace

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
  const StoreLock lock(where.file + ".lock", writable, where.file_mode);
  bool created = false;  // by us, just now: empty until the schema is written
  for (int attempt = 0; attempt < 4; ++attempt) {
    struct stat info {};
    if (stat(where.file.c_str(), &info) != 0) {
      if (!writable) {
        if (where.shared) return Empty();
        return Unusable("cannot write to " + where.folder);
      }
      if (!CreateFile(where, why)) return Unusable(why);
      created = true;
      continue;
    }
    const FileIdentity identity{info.st_dev, info.st_ino};
    std::string problem;
    if (damaged != nullptr && *damaged == identity) {
      problem = reason;
    } else if (info.st_size == 0 && !created) {
      problem = "the file is empty";
    } else {
      const int opened = db.Open(where.file, !writable);
      if (opened != SQLITE_OK) {
        const int primary = opened & 0xFF;
        if (primary != SQLITE_NOTADB && primary != SQLITE_CORRUPT) {
          return Unusable("cannot open " + where.file + ": " + sqlite3_errstr(opened));
        }
        problem = sqlite3_errstr(opened);
      } else {
        const CheckResult check = db.Check();
        if (check.problem.empty()) {
          db.Configure(where.shared);
          return OpenOutcome{OpenState::kFile, identity, lock.Moves(), {}};
        }
        db.CloseAside();
        if (!check.damaged) return Unusable("cannot use " + where.file + ": " + check.problem);
        problem = check.problem;
      }
    }
    damaged = nullptr;
    if (!writable || !MoveAside(lock, where.file, problem, why)) {
      return Unusable(why.empty() ? where.file + " is damaged (" + problem + ") and cannot be moved aside" : why);
    }
  }
  return Unusable("cannot open " + where.file);
}

void Report(const std::string& line) noexcept {
  const std::string text = "cadtools: " + line + "\n";
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t wrote = write(STDERR_FILENO, text.data() + done, text.size() - done);
    if (wrote <= 0 && errno != EINTR) return;
    if (wrote > 0) done += static_cast<std::size_t>(wrote);
  }
}

}  // namespace cadtools::registry::store

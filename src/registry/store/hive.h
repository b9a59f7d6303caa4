// One hive off Windows: its store file, opened on first use, and a cache
// of key paths.
//
// The cache maps a folded key path to its id. Ids are never reused and
// keys never move, so a value found under a cached id is the right value;
// when nothing is found, the handle layer looks the path up once more
// before it answers (see handles.h). That keeps a typed-value read to one
// SQLite statement.
//
// A hive without a usable file (no folder, a folder we cannot write and no
// store in it, a file we cannot open) is an empty store that refuses
// writes: reads answer ERROR_FILE_NOT_FOUND and writes
// ERROR_ACCESS_DENIED, and the reason is reported once on stderr. Every
// later call tries to open the file again, once per call. A machine store
// that nobody made is empty without a report. A store read through a copy
// (a read-only folder, see store_file.h) looks at its files once per call
// and takes the copy again when they changed.
#pragma once

#include "registry/store/database.h"
#include "registry/store/locations.h"
#include "registry/store/store_file.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace cadtools::registry::store {

class Hive {
 public:
  explicit Hive(HiveKind kind) noexcept : kind_(kind) {}
  Hive(const Hive&) = delete;
  Hive& operator=(const Hive&) = delete;

  // The database, opened on first use.
  Database& db();
  // Writes answer ERROR_ACCESS_DENIED.
  bool read_only();
  // Changes whenever the hive's database is another one than before (a
  // damaged file was replaced, the store was reopened elsewhere); key ids
  // of an older epoch mean nothing.
  std::uint64_t epoch() const noexcept { return epoch_; }

  // Before a write: when the file at the store's path is no longer the one
  // we have open (another process put it aside), opens the current one, so
  // that the write does not go to a file nobody reads. Within a batch's
  // transaction the file stays the one the batch writes.
  void BeforeWrite();
  // After each call: when the call met damage, puts the file aside and
  // starts a fresh store.
  void AfterCall();

  // A new call starts: a hive without a usable file may try it again, and
  // a copy may look at its files, once.
  void NewCall() noexcept { new_call_ = true; }

  // Cached id of a folded path, or null.
  const std::int64_t* Cached(const std::string& path) const noexcept;
  void Remember(const std::string& path, std::int64_t id);
  void ForgetPaths() noexcept { paths_.clear(); }
  // After a batch rolled back: ids it handed out may be given again, so
  // cached paths and the ids of open handles are looked up anew.
  void ForgetIds() noexcept { NewEpoch(); }

  // Closes the file; the next call opens it again. reread_location also
  // reads the environment again and forgets what was reported.
  void Close(bool reread_location) noexcept;
  // Drops a connection inherited through fork() (see Database::Abandon).
  void Abandon() noexcept;

 private:
  enum class State { kClosed, kFile, kEmpty, kUnusable };

  void EnsureOpen();
  void Open(const FileIdentity* damaged, const std::string& reason);
  void NewEpoch() noexcept;
  void MapMoves() noexcept;
  void UnmapMoves() noexcept;

  HiveKind kind_;
  State state_ = State::kClosed;
  bool located_ = false;
  StoreLocation location_;
  Database db_;
  FileIdentity identity_;
  // The move count at the start of the lock file, mapped (see
  // store_file.h), and its value when the file was opened. A write checks
  // it instead of calling stat(); a stat now and then still notices a store
  // file deleted by hand.
  const std::uint64_t* moves_ = nullptr;
  std::uint64_t moves_seen_ = 0;
  std::chrono::steady_clock::time_point next_look_{};
  std::uint64_t epoch_ = 1;
  SourceStamp source_;  // of a copy
  bool reported_ = false;
  bool exposed_reported_ = false;
  bool new_call_ = true;
  std::unordered_map<std::string, std::int64_t> paths_;
};

}  // namespace cadtools::registry::store

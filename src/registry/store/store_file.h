// Opening a hive's store file safely when several processes share it.
//
// Everything that decides which file is the store (creating it, checking
// it, putting a damaged one aside and starting a fresh one) happens under
// an flock on "<file>.lock", so two processes never both move files aside
// or both create the schema. A damaged file is never deleted: it is renamed
// to "<file>.damaged-YYYYMMDD-HHMMSS[-N]" together with its -wal, -shm and
// -journal files, which may hold its latest data, and the reason is written
// once to stderr:
//
//   cadtools: settings store /home/u/.config/cadtools/user.db is damaged
//   (file is not a database); kept it as /home/u/.config/cadtools/
//   user.db.damaged-20260121-093000 and started a fresh one
//
// Damage means: not an SQLite database, a failed quick_check, an empty
// file (we always write the schema when we create one, so an empty file
// was cut short), or an SQLite file that is not a settings store. A file
// that cannot be opened for other reasons (permissions, a lock held too
// long) is left alone.
#pragma once

#include "registry/store/database.h"
#include "registry/store/locations.h"

#include <sys/types.h>

#include <cstdint>
#include <string>

namespace cadtools::registry::store {

// Which file a path named when it was opened, to notice that another
// process has since put it aside.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  bool operator==(const FileIdentity&) const = default;
};

enum class OpenState {
  kFile,      // db is open on the store file
  kEmpty,     // there is no store and we may not create one (a machine store nobody made)
  kUnusable,  // the folder or file cannot be used; why says so
};

struct OpenOutcome {
  OpenState state = OpenState::kUnusable;
  FileIdentity identity;    // of the file, for kFile
  std::uint64_t moves = 0;  // store files put aside here so far, for kFile
  std::string why;          // for kUnusable
};

// The lock file starts with that count: every process that puts a store
// file aside adds one, so that others can tell from a memory read whether
// the file they have open is still the store.

// Opens where.file into db. When damaged is given, a call found the file
// with that identity damaged (for reason): it is put aside first if it is
// still in place, unless another process did so already.
OpenOutcome OpenStoreFile(const StoreLocation& where, Database& db, const FileIdentity* damaged,
                          const std::string& reason);

// Writes "cadtools: <line>" and a newline to stderr in one piece.
void Report(const std::string& line) noexcept;

}  // namespace cadtools::registry::store

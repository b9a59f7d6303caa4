// Opening a hive's store file safely when several processes share it.
//
// Everything that decides which file is the store (creating it, checking
// it, putting a damaged one aside and starting a fresh one) happens under
// an flock on "<file>.lock", so two processes never both move files aside
// or both create the schema. A damaged file is never deleted: it is renamed
// to "<file>.damaged-YYYYMMDD-HHMMSS[-N]" together with its -wal, -shm and
// -journal files, which may hold its latest data, and the reason is written
// once to stderr, on one line:
//
//   cadtools: settings store /home/u/.config/cadtools/user.db is damaged
//   (file is not a database); kept it as /home/u/.config/cadtools/
//   user.db.damaged-20260121-093000 and started a fresh one
//
// Damage means: not an SQLite database, a failed integrity check, an SQLite
// file that is not a settings store, or an empty file beside a -wal that
// is not empty. An empty file alone is a store whose creation was cut short
// before its schema was in it (a -journal beside it has no page to give
// back): no write can have reached it, and it is set up again without a
// word. A file that cannot be opened for other reasons (permissions, a lock
// held too long) is left alone.
//
// In a folder this process cannot write, the store is read-only: read in
// place where SQLite can (a rollback-journal store, or a WAL store whose
// -shm is there), else through a copy in memory (see store_copy.h) that is
// taken again when the files change.
#pragma once

#include "registry/store/database.h"
#include "registry/store/locations.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace cadtools::registry::store {

// Which file a path named when it was opened, to notice that another
// process has since put it aside.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  bool operator==(const FileIdentity&) const = default;
};

// What a copy was taken from: the store file, its -wal and whether a -shm
// exists (a writer has the store open).
struct SourceStamp {
  struct File {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const File&) const = default;
  };
  File file, wal;
  bool shm = false;
  bool operator==(const SourceStamp&) const = default;
};
SourceStamp StampOf(const std::string& file);

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
  SourceStamp source;       // for kFile read through a copy
  std::string exposed;      // the store folder cannot be made private, and why (see MakePrivate)
};

// The lock file starts with that count: every process that puts a store
// file aside adds one, so that others can tell from a memory read whether
// the file they have open is still the store.

// Opens where.file into db. When damaged is given, a call found the file
// with that identity damaged (for reason): it is put aside first if it is
// still in place, unless another process did so already.
OpenOutcome OpenStoreFile(const StoreLocation& where, Database& db, const FileIdentity* damaged,
                          const std::string& reason);

// A name to keep a file under beside itself, "<file>.<why>-YYYYMMDD-HHMMSS"
// with "-N" added when that is taken.
//   AsideName("/s/user.db", "damaged")   // "/s/user.db.damaged-20260121-093000"
std::string AsideName(const std::string& file, std::string_view why);
// Renames file to aside with its -wal, -shm and -journal; false when the
// file itself stays (errno says why).
bool MoveWithCompanions(const std::string& file, const std::string& aside);

// Writes "cadtools: <line>" and a newline to stderr in one piece.
void Report(const std::string& line) noexcept;

}  // namespace cadtools::registry::store

// One SQLite connection to a hive's store, its schema and its prepared
// statements.
//
// Tables (names are big-endian UTF-16 blobs, see names.h):
//   keys(id, parent, name, folded, path, written, class, boot)
//     id INTEGER PRIMARY KEY AUTOINCREMENT: an id is never given to another
//     key, so an open handle whose key was deleted cannot reach a newer key
//     that happens to get the same number. The root key of the hive has id
//     1, parent 0 and the empty path; path is unique, so a whole key path
//     resolves with one indexed look-up; (parent, folded) is unique and
//     lists subkeys in the order Windows enumerates them. class is the
//     class name given when the key was created (big-endian UTF-16, empty
//     for none); boot is null for a key that is kept, and for a volatile
//     key the id of the machine's run that made it (see boot_id.h).
//   vals(key, folded, name, type, data, written)
//     (key, folded) is unique; the rowid gives the creation order in which
//     Windows lists values (an update keeps the row, a value deleted and
//     written again goes to the end).
//   written: the time of the last change as a FILETIME count.
//
// Every call resets its statements when done, so no read transaction stays
// open between calls and the WAL can be checkpointed.
//
// Stores of the first version (without class and boot) get the two
// columns when they are opened for writing. A connection that cannot
// write sees the keys through a view of its own: the missing columns as
// empty, and without the volatile keys of an earlier run of the machine,
// which a writer deletes when it opens the store.
#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace cadtools::registry::store {

// What Database::Check found: nothing (an empty problem), damage, or a
// failure that says nothing about the file (a lock held too long).
struct CheckResult {
  std::string problem;
  bool damaged = false;
};

// SQLITE_CORRUPT and SQLITE_NOTADB: the file is damaged.
bool IsDamage(int result) noexcept;

enum class Sql {
  kFindKey,        // id, parent, volatile of the key with path ?1
  kKeyState,       // written, volatile, class of key ?1 (no row: the key is gone)
  kInsertKey,      // parent ?1, name ?2, folded ?3, path ?4, written ?5, class ?6, boot ?7 (null: kept)
  kTouchKey,       // written of key ?1 = ?2
  kChildInfo,      // count, longest name, latest written, longest class (bytes) of the subkeys of ?1
  kEnumKey,        // name, written, class of subkey number ?2 of ?1
  kListKeys,       // name, folded, written, class of every subkey of ?1, in order
  kGetValue,       // type, data of value ?2 in key ?1
  kSetValue,       // key ?1, folded ?2, name ?3, type ?4, data ?5, written ?6; no row when key ?1 is gone
  kDeleteValue,    // value ?2 of key ?1
  kValueInfo,      // count, longest name, longest data (bytes), latest written of the values of ?1
  kEnumValue,      // name, type, data of value number ?2 of ?1
  kDeleteTreeValues,  // every value of key ?1 and of the keys below it
  kDeleteBelow,    // every key below key ?1
  kDeleteKey,      // key ?1 itself
  kListAllKeys,    // id, parent, name, folded, path, written, class of every key, by id
  kListAllValues,  // key, folded, name, type, data, written of every value
  kAddValue,       // key ?1, folded ?2, name ?3, type ?4, data ?5, written ?6 unless the key has that value
  kBegin,          // BEGIN IMMEDIATE: writers queue here, never in the middle
  kCommit,
  kRollback,
};
inline constexpr int kSqlCount = static_cast<int>(Sql::kRollback) + 1;

class Database {
 public:
  Database() = default;
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database() { Close(); }

  // Opens file, which must exist; read_only opens it for reading only.
  // Returns an SQLite result code; on failure nothing stays open.
  int Open(const std::string& file, bool read_only);
  // A copy of file in memory, read-only, for a store this process cannot
  // read in place (see store_copy.h). Returns an SQLite result code, with
  // why for a copy that could not be made.
  int OpenCopy(const std::string& file, std::string& why);
  // An empty store in memory, for a hive that has no usable file. It
  // answers every read with nothing; the hive refuses writes.
  void OpenEmpty();
  bool is_open() const noexcept { return db_ != nullptr; }
  // SQLite may treat a file it cannot write as read-only on its own.
  bool read_only() const noexcept;
  // A copy from OpenCopy: it does not see later changes of the file.
  bool is_copy() const noexcept { return copy_; }

  // PRAGMA integrity_check, and whether the file is a store of ours whose
  // tables take our statements; the problem is one line, the first fault
  // found. A database without any table (a new file, or an empty one)
  // gets the schema when the connection can write.
  CheckResult Check();
  // Journal and sync settings of a connection that can write; shared
  // stores keep a rollback journal (see database.cpp).
  void Configure(bool shared);
  // Within a transaction (a batch of calls, see batch.h).
  bool in_transaction() const noexcept { return db_ != nullptr && sqlite3_get_autocommit(db_) == 0; }

  // Closes the connection normally (checkpointing the WAL into the file).
  void Close() noexcept;
  // Closes a connection whose file was moved aside: no checkpoint, and
  // the WAL stays with the file it belongs to.
  void CloseAside() noexcept;
  // Forgets a connection inherited through fork() without touching it:
  // the parent still uses its files and locks.
  void Abandon() noexcept;

  // The cached statement, prepared on first use; null when it cannot be
  // prepared (the failure is recorded).
  sqlite3_stmt* Statement(Sql which);

  // Records the outcome of a step; SQLITE_CORRUPT and SQLITE_NOTADB mark
  // the file as damaged.
  void Record(int result) noexcept;
  // Damage seen since the last TakeDamage, and why.
  bool damaged() const noexcept { return !damage_.empty(); }
  std::string TakeDamage();

  std::int64_t changes() const noexcept { return sqlite3_changes64(db_); }
  std::int64_t last_insert_id() const noexcept { return sqlite3_last_insert_rowid(db_); }

 private:
  // Prepares the statement unless it is cached; an SQLite result code.
  int Prepare(Sql which);
  // A store of ours that this connection can write: brought to the
  // current schema, volatile keys of earlier runs removed.
  CheckResult Upgrade(bool first_version);
  // One it cannot write: the view of its keys described above.
  CheckResult SeeKeysAsTheyAre(bool first_version);
  void Finalize() noexcept;

  sqlite3* db_ = nullptr;
  std::array<sqlite3_stmt*, kSqlCount> statements_{};
  std::string damage_;
  bool copy_ = false;
};

// One use of a cached statement, reset when it goes.
//   Query find(db, Sql::kFindKey);
//   find.Bind(1, path);
//   if (find.Row()) id = find.Int(0);
class Query {
 public:
  Query(Database& db, Sql which) : db_(db), stmt_(db.Statement(which)) {}
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;
  ~Query() {
    if (stmt_ != nullptr) sqlite3_reset(stmt_);
  }

  void Bind(int index, std::int64_t value) noexcept;
  // The bytes must outlive the query; an empty view binds an empty blob.
  void Bind(int index, std::string_view bytes) noexcept;
  void BindNull(int index) noexcept;

  // Steps once: true when there is a row. False when done or failed.
  bool Row() noexcept;
  // Runs to the end: true when it succeeded.
  bool Run() noexcept;
  bool failed() const noexcept { return failed_; }

  std::int64_t Int(int column) const noexcept { return sqlite3_column_int64(stmt_, column); }
  std::string_view Blob(int column) const noexcept;

 private:
  Database& db_;
  sqlite3_stmt* stmt_;
  bool failed_ = false;
};

// BEGIN IMMEDIATE ... COMMIT around a write of several statements; rolled
// back unless committed. Taking the write lock at BEGIN means a writer
// waits for others there (busy_timeout) and never fails halfway. Inside a
// transaction that is already open (a batch) it does nothing: the batch
// commits or rolls back the whole.
class Transaction {
 public:
  explicit Transaction(Database& db) : db_(db) {
    if (db_.in_transaction()) {
      nested_ = true;
      return;
    }
    Query begin(db_, Sql::kBegin);
    begun_ = begin.Run();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction() {
    if (begun_ && !committed_) Query(db_, Sql::kRollback).Run();
  }

  bool begun() const noexcept { return begun_ || nested_; }
  bool Commit() noexcept {
    if (nested_) return true;
    Query commit(db_, Sql::kCommit);
    committed_ = commit.Run();
    return committed_;
  }

 private:
  Database& db_;
  bool begun_ = false;
  bool committed_ = false;
  bool nested_ = false;
};

}  // namespace cadtools::registry::store

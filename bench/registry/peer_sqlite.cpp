// The SQLite peer: one table of (key path, value name) -> (type, bytes), in
// a file of its own beside the benchmark's store, in WAL mode with
// synchronous=NORMAL as the store runs. Each call is one prepared statement
// in autocommit, the least a user of SQLite would do for the same work.
#include "registry/peer.h"
#include "registry/scratch_store.h"

#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace bench::peer {
namespace {

class KeyValueTable {
 public:
  KeyValueTable() {
    UseScratchStore();
    const std::string file = ScratchFolder() + "/peer.db";
    if (sqlite3_open(file.c_str(), &db_) != SQLITE_OK) std::abort();
    Exec("PRAGMA journal_mode=WAL");
    Exec("PRAGMA synchronous=NORMAL");
    Exec("CREATE TABLE IF NOT EXISTS settings(path BLOB NOT NULL, name BLOB NOT NULL, type INTEGER NOT NULL,"
         " data BLOB NOT NULL, PRIMARY KEY(path, name)) WITHOUT ROWID");
    Prepare("SELECT data FROM settings WHERE path = ?1 AND name = ?2", &select_);
    Prepare("INSERT INTO settings(path, name, type, data) VALUES(?1, ?2, 4, ?3)"
            " ON CONFLICT(path, name) DO UPDATE SET type = excluded.type, data = excluded.data",
            &upsert_);
  }
  KeyValueTable(const KeyValueTable&) = delete;
  KeyValueTable& operator=(const KeyValueTable&) = delete;
  ~KeyValueTable() {
    sqlite3_finalize(select_);
    sqlite3_finalize(upsert_);
    sqlite3_close(db_);
  }

  DWORD Read(const WCHAR* path, const WCHAR* name, DWORD fallback) {
    BindNames(select_, path, name);
    DWORD value = fallback;
    if (sqlite3_step(select_) == SQLITE_ROW && sqlite3_column_bytes(select_, 0) == sizeof value) {
      std::memcpy(&value, sqlite3_column_blob(select_, 0), sizeof value);
    }
    sqlite3_reset(select_);
    return value;
  }

  void Write(const WCHAR* path, const WCHAR* name, DWORD value) {
    BindNames(upsert_, path, name);
    sqlite3_bind_blob(upsert_, 3, &value, sizeof value, SQLITE_TRANSIENT);
    if (sqlite3_step(upsert_) != SQLITE_DONE) std::abort();
    sqlite3_reset(upsert_);
  }

 private:
  static int Bytes(const WCHAR* s) { return static_cast<int>(std::char_traits<WCHAR>::length(s) * sizeof(WCHAR)); }
  static void BindNames(sqlite3_stmt* stmt, const WCHAR* path, const WCHAR* name) {
    sqlite3_bind_blob(stmt, 1, path, Bytes(path), SQLITE_STATIC);
    sqlite3_bind_blob(stmt, 2, name, Bytes(name), SQLITE_STATIC);
  }
  void Exec(const char* sql) {
    if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
  }
  void Prepare(const char* sql, sqlite3_stmt** stmt) {
    if (sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, stmt, nullptr) != SQLITE_OK) std::abort();
  }

  sqlite3* db_ = nullptr;
  sqlite3_stmt* select_ = nullptr;
  sqlite3_stmt* upsert_ = nullptr;
};

KeyValueTable& Table() {
  static KeyValueTable table;
  return table;
}

}  // namespace

Names RowNames() { return {"SQLite select", "SQLite upsert", "SQLite select+upsert"}; }

DWORD Read(const WCHAR* path, const WCHAR* name, DWORD fallback) { return Table().Read(path, name, fallback); }

void Write(const WCHAR* path, const WCHAR* name, DWORD value) { Table().Write(path, name, value); }

}  // namespace bench::peer

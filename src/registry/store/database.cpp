// The connection, the schema and the statement cache.
#include "registry/store/database.h"

#include "registry/store/boot_id.h"
#include "registry/store/clock.h"
#include "registry/store/store_copy.h"

#include <algorithm>
#include <string>

namespace cadtools::registry::store {

namespace {

// 'CADR': tells our stores from other SQLite files.
constexpr std::int64_t kApplicationId = 0x43414452;
// 2 added the class and boot columns of keys.
constexpr std::int64_t kSchemaVersion = 2;

// Writers of other processes wait this long for each other; a store that
// stays locked longer is treated as failing (reads answer "not found").
constexpr int kBusyTimeoutMs = 5000;

constexpr const char* kSchema =
    "CREATE TABLE keys("
    "  id INTEGER PRIMARY KEY AUTOINCREMENT,"
    "  parent INTEGER NOT NULL,"
    "  name BLOB NOT NULL,"
    "  folded BLOB NOT NULL,"
    "  path BLOB NOT NULL UNIQUE,"
    "  written INTEGER NOT NULL,"
    "  class BLOB NOT NULL DEFAULT x'',"
    "  boot BLOB);"
    "CREATE UNIQUE INDEX keys_children ON keys(parent, folded);"
    "CREATE TABLE vals("
    "  key INTEGER NOT NULL,"
    "  folded BLOB NOT NULL,"
    "  name BLOB NOT NULL,"
    "  type INTEGER NOT NULL,"
    "  data BLOB NOT NULL,"
    "  written INTEGER NOT NULL,"
    "  UNIQUE(key, folded));"
    "CREATE INDEX vals_order ON vals(key);";

constexpr const char* kTree =
    "WITH RECURSIVE tree(id) AS (SELECT ?1 UNION ALL SELECT keys.id FROM keys JOIN tree ON keys.parent = tree.id)";

const std::string& SqlText(Sql which) {
  static const std::array<std::string, kSqlCount> texts = {
      "SELECT id, parent, boot IS NOT NULL FROM keys WHERE path = ?1",
      "SELECT written, boot IS NOT NULL, class FROM keys WHERE id = ?1",
      "INSERT INTO keys(parent, name, folded, path, written, class, boot) VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7)",
      "UPDATE keys SET written = ?2 WHERE id = ?1",
      "SELECT count(*), coalesce(max(length(name)), 0), coalesce(max(written), 0), coalesce(max(length(class)), 0)"
      " FROM keys WHERE parent = ?1",
      "SELECT name, written, class FROM keys WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2",
      "SELECT name, folded, written, class FROM keys WHERE parent = ?1 ORDER BY folded",
      "SELECT type, data FROM vals WHERE key = ?1 AND folded = ?2",
      // One statement, so that a write-through is one autocommit
      // transaction; the EXISTS keeps values off keys deleted meanwhile.
      // Typed values write themselves back on destruction, mostly
      // unchanged: the row then stays byte for byte the same (written
      // too), SQLite leaves its page alone and the commit writes nothing.
      "INSERT INTO vals(key, folded, name, type, data, written) SELECT ?1, ?2, ?3, ?4, ?5, ?6"
      " WHERE EXISTS (SELECT 1 FROM keys WHERE id = ?1)"
      " ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data,"
      " written = CASE WHEN type = excluded.type AND data = excluded.data THEN written ELSE excluded.written END",
      "DELETE FROM vals WHERE key = ?1 AND folded = ?2",
      "SELECT count(*), coalesce(max(length(name)), 0), coalesce(max(length(data)), 0), coalesce(max(written), 0)"
      " FROM vals WHERE key = ?1",
      "SELECT name, type, data FROM vals WHERE key = ?1 ORDER BY rowid LIMIT 1 OFFSET ?2",
      std::string("DELETE FROM vals WHERE key IN (") + kTree + " SELECT id FROM tree)",
      std::string("DELETE FROM keys WHERE id IN (") + kTree + " SELECT id FROM tree WHERE id <> ?1)",
      "DELETE FROM keys WHERE id = ?1 AND parent <> 0",
      "SELECT id, parent, name, folded, path, written, class FROM keys ORDER BY id",
      "SELECT key, folded, name, type, data, written FROM vals ORDER BY rowid",
      "INSERT OR IGNORE INTO vals(key, folded, name, type, data, written) VALUES(?1, ?2, ?3, ?4, ?5, ?6)",
      "BEGIN IMMEDIATE",
      "COMMIT",
      "ROLLBACK",
  };
  return texts[static_cast<std::size_t>(which)];
}

// The first column of the first row of a statement, as text, or the
// failure.
struct FirstValue {
  std::string text;
  int result = SQLITE_OK;
  bool ok() const noexcept { return result == SQLITE_ROW; }
};

FirstValue FirstValueOf(sqlite3* db, const char* sql) {
  sqlite3_stmt* stmt = nullptr;
  FirstValue value;
  value.result = sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr);
  if (value.result == SQLITE_OK) value.result = sqlite3_step(stmt);
  if (value.ok()) {
    const auto* text = sqlite3_column_text(stmt, 0);
    if (text != nullptr) value.text = reinterpret_cast<const char*>(text);
  } else {
    value.text = sqlite3_errmsg(db);
  }
  sqlite3_finalize(stmt);
  return value;
}

// An integrity_check row without the heading SQLite gives its first fault
// ("*** in database main ***" and a line break), on one line.
std::string FaultOf(std::string text) {
  constexpr std::string_view kHeading = "*** in database main ***";
  if (text.starts_with(kHeading)) text.erase(0, kHeading.size());
  std::erase_if(text, [](char c) { return c == '\r'; });
  std::replace(text.begin(), text.end(), '\n', ' ');
  while (!text.empty() && text.front() == ' ') text.erase(0, 1);
  return text;
}

// Statements that change the keys table, which a connection that cannot
// write sees as a view (and cannot prepare them on).
bool ChangesKeys(Sql which) noexcept {
  return which == Sql::kInsertKey || which == Sql::kTouchKey || which == Sql::kDeleteBelow ||
         which == Sql::kDeleteKey;
}

// Runs sql (one statement) with ?1 bound to blob; SQLITE_DONE or
// SQLITE_ROW when it worked.
int Step(sqlite3* db, const char* sql, std::string_view blob) {
  sqlite3_stmt* stmt = nullptr;
  int result = sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr);
  if (result == SQLITE_OK) {
    sqlite3_bind_blob64(stmt, 1, blob.data(), blob.size(), SQLITE_STATIC);
    result = sqlite3_step(stmt);
  }
  sqlite3_finalize(stmt);
  return result;
}

std::string HexBlob(std::string_view bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "x'";
  for (const char c : bytes) {
    text += kDigits[(static_cast<unsigned char>(c) >> 4) & 0xF];
    text += kDigits[static_cast<unsigned char>(c) & 0xF];
  }
  return text + "'";
}

}  // namespace

bool IsDamage(int result) noexcept {
  const int primary = result & 0xFF;
  return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

int Database::Open(const std::string& file, bool read_only) {
  Close();
  const int flags = (read_only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX |
                    SQLITE_OPEN_EXRESCODE;
  const int result = sqlite3_open_v2(file.c_str(), &db_, flags, nullptr);
  if (result != SQLITE_OK) {
    sqlite3_close(db_);
    db_ = nullptr;
    return result;
  }
  sqlite3_busy_timeout(db_, kBusyTimeoutMs);
  return SQLITE_OK;
}

int Database::OpenCopy(const std::string& file, std::string& why) {
  Close();
  StoreImage image;
  int result = CopyStoreImage(file, image, why);
  if (result != SQLITE_OK) return result;
  result = sqlite3_open_v2(":memory:", &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
                           nullptr);
  if (result == SQLITE_OK) {
    result = sqlite3_deserialize(db_, "main", image.bytes.get(), image.size, image.size,
                                 SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_READONLY);
    image.bytes.release();  // SQLite frees it, even when deserializing fails
  }
  if (result != SQLITE_OK) {
    why = sqlite3_errstr(result);
    Close();
    return result;
  }
  copy_ = true;
  return SQLITE_OK;
}

void Database::OpenEmpty() {
  Close();
  sqlite3_open_v2(":memory:", &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  const std::string root = "INSERT INTO keys(id, parent, name, folded, path, written) VALUES(1, 0, x'', x'', x'', 0);";
  sqlite3_exec(db_, (std::string(kSchema) + root).c_str(), nullptr, nullptr, nullptr);
}

bool Database::read_only() const noexcept {
  return copy_ || db_ == nullptr || sqlite3_db_readonly(db_, "main") == 1;
}

CheckResult Database::Check() {
  // integrity_check, not quick_check: only it compares the indexes with
  // their tables, and a value written through a damaged index can vanish
  // from the next read. Once per open it costs little more (4.6 ms instead
  // of 1.5 ms for a store of 9000 values, 1.3 MB). One fault is enough to
  // know; more would only make the report long.
  const FirstValue verdict = FirstValueOf(db_, "PRAGMA integrity_check(1)");
  if (!verdict.ok()) return {verdict.text, IsDamage(verdict.result)};
  if (verdict.text != "ok") return {"integrity check: " + FaultOf(verdict.text), true};
  const FirstValue application = FirstValueOf(db_, "PRAGMA application_id");
  if (!application.ok()) return {application.text, IsDamage(application.result)};
  if (application.text == std::to_string(kApplicationId)) {
    const FirstValue version = FirstValueOf(db_, "PRAGMA user_version");
    if (!version.ok()) return {version.text, IsDamage(version.result)};
    CheckResult adapted = read_only() ? SeeKeysAsTheyAre(version.text == "1") : Upgrade(version.text == "1");
    if (!adapted.problem.empty()) return adapted;
    // Tables that do not take our statements (a damaged schema) would fail
    // every call, and say nothing.
    for (int i = 0; i < kSqlCount; ++i) {
      if (read_only() && ChangesKeys(static_cast<Sql>(i))) continue;
      const int prepared = Prepare(static_cast<Sql>(i));
      if ((prepared & 0xFF) == SQLITE_ERROR) return {std::string("not a settings store: ") + sqlite3_errmsg(db_), true};
      if (prepared != SQLITE_OK) return {sqlite3_errmsg(db_), IsDamage(prepared)};
    }
    return {};
  }
  const FirstValue tables = FirstValueOf(db_, "SELECT count(*) FROM sqlite_schema");
  if (!tables.ok()) return {tables.text, IsDamage(tables.result)};
  if (tables.text != "0") return {"not a settings store", true};
  // A database without tables is a store nobody has written yet. When we
  // cannot write it, reads find no tables and answer "not found".
  if (read_only()) return {};
  const std::string setup = std::string("BEGIN IMMEDIATE;") + kSchema +
                            "INSERT INTO keys(id, parent, name, folded, path, written) VALUES(1, 0, x'', x'', x'', " +
                            std::to_string(FileTimeNow()) + ");PRAGMA application_id = " +
                            std::to_string(kApplicationId) + ";PRAGMA user_version = " +
                            std::to_string(kSchemaVersion) + ";COMMIT;";
  char* error = nullptr;
  const int result = sqlite3_exec(db_, setup.c_str(), nullptr, nullptr, &error);
  if (result == SQLITE_OK) return {};
  CheckResult failed{error != nullptr ? error : "cannot create the tables", IsDamage(result)};
  sqlite3_free(error);
  sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
  return failed;
}

CheckResult Database::Upgrade(bool first_version) {
  if (first_version) {
    char* error = nullptr;
    const int result = sqlite3_exec(db_,
                                    "BEGIN IMMEDIATE;ALTER TABLE keys ADD COLUMN class BLOB NOT NULL DEFAULT x'';"
                                    "ALTER TABLE keys ADD COLUMN boot BLOB;PRAGMA user_version = 2;COMMIT;",
                                    nullptr, nullptr, &error);
    if (result != SQLITE_OK) {
      CheckResult failed{std::string("cannot add class names to the store: ") + (error != nullptr ? error : ""),
                         IsDamage(result)};
      sqlite3_free(error);
      sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
      return failed;
    }
  }
  // Volatile keys of an earlier run of the machine are gone, as Windows
  // forgets them when it restarts. Every key below a volatile key is
  // volatile and of the same run, so their values go with them.
  const std::string& boot = BootId();
  if (boot.empty()) return {};
  const int stale = Step(db_, "SELECT 1 FROM keys WHERE boot IS NOT NULL AND boot <> ?1 LIMIT 1", boot);
  if (stale == SQLITE_DONE) return {};
  if (stale != SQLITE_ROW) return {sqlite3_errmsg(db_), IsDamage(stale)};
  const int results[] = {
      Step(db_, "BEGIN IMMEDIATE", {}),
      Step(db_, "DELETE FROM vals WHERE key IN (SELECT id FROM keys WHERE boot IS NOT NULL AND boot <> ?1)", boot),
      Step(db_, "DELETE FROM keys WHERE boot IS NOT NULL AND boot <> ?1", boot),
      Step(db_, "COMMIT", {}),
  };
  for (const int result : results) {
    if (result != SQLITE_DONE) {
      CheckResult failed{sqlite3_errmsg(db_), IsDamage(result)};
      sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
      return failed;
    }
  }
  return {};
}

CheckResult Database::SeeKeysAsTheyAre(bool first_version) {
  const std::string columns = first_version ? "id, parent, name, folded, path, written, x'' AS class, NULL AS boot"
                                            : "id, parent, name, folded, path, written, class, boot";
  const std::string& boot = BootId();
  const std::string current = first_version || boot.empty() ? "" : " WHERE boot IS NULL OR boot = " + HexBlob(boot);
  const std::string view = "CREATE TEMP VIEW keys AS SELECT " + columns + " FROM main.keys" + current;
  char* error = nullptr;
  const int result = sqlite3_exec(db_, view.c_str(), nullptr, nullptr, &error);
  if (result == SQLITE_OK) return {};
  CheckResult failed{error != nullptr ? error : "cannot read the keys", IsDamage(result)};
  sqlite3_free(error);
  return failed;
}

void Database::Configure(bool shared) {
  if (read_only()) return;
  // The machine store keeps a rollback journal: users who cannot write its
  // folder can still read it, which a WAL database does not allow. The
  // user's store uses WAL, so readers and the writer do not block each
  // other. With synchronous=NORMAL a committed transaction is in the file
  // (or its WAL) when the call returns, so a process that is killed loses
  // nothing; a power cut may lose the last transactions, as the WAL is not
  // synced on each commit. We do not claim more than that for settings.
  sqlite3_exec(db_, shared ? "PRAGMA journal_mode=DELETE" : "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
  sqlite3_exec(db_, "PRAGMA synchronous=NORMAL;PRAGMA journal_size_limit=4194304", nullptr, nullptr, nullptr);
}

void Database::Finalize() noexcept {
  for (sqlite3_stmt*& stmt : statements_) {
    sqlite3_finalize(stmt);
    stmt = nullptr;
  }
}

void Database::Close() noexcept {
  if (db_ == nullptr) return;
  Finalize();
  sqlite3_close(db_);
  db_ = nullptr;
  damage_.clear();
  copy_ = false;
}

void Database::CloseAside() noexcept {
  if (db_ == nullptr) return;
  sqlite3_db_config(db_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  int persist = 1;
  sqlite3_file_control(db_, "main", SQLITE_FCNTL_PERSIST_WAL, &persist);
  Close();
}

void Database::Abandon() noexcept {
  statements_.fill(nullptr);
  db_ = nullptr;
  damage_.clear();
  copy_ = false;
}

int Database::Prepare(Sql which) {
  sqlite3_stmt*& stmt = statements_[static_cast<std::size_t>(which)];
  if (stmt != nullptr) return SQLITE_OK;
  if (db_ == nullptr) return SQLITE_MISUSE;
  const std::string& text = SqlText(which);
  return sqlite3_prepare_v3(db_, text.c_str(), static_cast<int>(text.size()), SQLITE_PREPARE_PERSISTENT, &stmt,
                            nullptr);
}

sqlite3_stmt* Database::Statement(Sql which) {
  Record(Prepare(which));
  return statements_[static_cast<std::size_t>(which)];
}

void Database::Record(int result) noexcept {
  if (IsDamage(result) && damage_.empty()) {
    damage_ = sqlite3_errstr(result);
    if (damage_.empty()) damage_ = "damaged";
  }
}

std::string Database::TakeDamage() {
  std::string reason;
  reason.swap(damage_);
  return reason;
}

void Query::Bind(int index, std::int64_t value) noexcept {
  if (stmt_ != nullptr) sqlite3_bind_int64(stmt_, index, value);
}

void Query::BindNull(int index) noexcept {
  if (stmt_ != nullptr) sqlite3_bind_null(stmt_, index);
}

void Query::Bind(int index, std::string_view bytes) noexcept {
  static const char kNothing[1] = {0};
  if (stmt_ == nullptr) return;
  sqlite3_bind_blob64(stmt_, index, bytes.empty() ? kNothing : bytes.data(), bytes.size(), SQLITE_STATIC);
}

bool Query::Row() noexcept {
  if (stmt_ == nullptr) {
    failed_ = true;
    return false;
  }
  const int result = sqlite3_step(stmt_);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) {
    failed_ = true;
    db_.Record(result);
  }
  return false;
}

bool Query::Run() noexcept {
  while (Row()) {
  }
  return !failed_;
}

std::string_view Query::Blob(int column) const noexcept {
  const void* bytes = sqlite3_column_blob(stmt_, column);
  const int size = sqlite3_column_bytes(stmt_, column);
  if (bytes == nullptr || size <= 0) return {};
  return std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
}

}  // namespace cadtools::registry::store

// The process-wide state of the store and the steps every call shares.
//
// One mutex guards everything: the handle table, the hives and their SQLite
// connections (opened without SQLite's own locking). A call holds it from
// start to end through a Session. Sessions nest: a batch (batch.h) holds
// one while it makes several calls, each with a session of its own inside
// it; only the outermost one starts and ends a call for the hives.
// Connections belong to the process that opened them: a child made by
// fork() opens its own on its first call and never touches the parent's.
#pragma once

#include "registry/store/handles.h"
#include "registry/store/hive.h"
#include "registry/store/names.h"

#include <array>
#include <atomic>
#include <mutex>
#include <thread>
#include <string>
#include <vector>

namespace cadtools::registry::store {

// Internal outcomes besides the Win32 codes.
inline constexpr LONG kKeyGone = -1;      // the key the call works on is not in the database
inline constexpr LONG kStoreFailed = -2;  // SQLite failed: busy too long, I/O, damage

enum class CallKind { kRead, kWrite };

// What a call answers for an outcome: a key that is gone is
// ERROR_KEY_DELETED; a store that fails answers reads as a missing value
// would (typed values then use their defaults) and writes with
// ERROR_REGISTRY_IO_FAILED.
constexpr LONG Answer(LONG result, CallKind kind) noexcept {
  if (result == kKeyGone) return ERROR_KEY_DELETED;
  if (result == kStoreFailed) return kind == CallKind::kRead ? ERROR_FILE_NOT_FOUND : ERROR_REGISTRY_IO_FAILED;
  return result;
}

class Store {
 public:
  static Store& Instance();

  std::mutex& mutex() noexcept { return mutex_; }
  // The thread whose session holds the mutex, if any: its further
  // sessions nest instead of locking again.
  std::atomic<std::thread::id> owner;
  Hive& hive(int index) noexcept { return hives_[static_cast<std::size_t>(index)]; }
  HandleTable& handles() noexcept { return handles_; }
  // The handle that stands for a predefined hive: its root key, all rights.
  Handle& root(int index);

  // ReloadStoreLocations: every handle and file closed, locations read anew.
  void Reload() noexcept;

  // Sessions open now, the outermost one included.
  int depth = 0;
  // Whether a journal of an import cut short has been looked for since the
  // store was located (see batch.h).
  bool journal_checked = false;

  // What HKEY_CLASSES_ROOT stands for in the running call (views.h).
  Handle classes_root;

  // Scratch space of the running call, kept to avoid allocations.
  std::vector<Units> parts;
  std::string path;
  std::string name;
  std::string folded;

 private:
  Store();
  static void CloseFilesAtExit() noexcept;
  static void BeforeFork() noexcept;
  static void AfterForkInParent() noexcept;
  static void AfterForkInChild() noexcept;

  // Not a recursive mutex: a child made by fork() must be able to release
  // the copy its parent locked for the fork, from a thread of another id.
  std::mutex mutex_;
  std::array<Hive, kHiveCount> hives_{Hive(HiveKind::kClassesRoot), Hive(HiveKind::kCurrentUser),
                                      Hive(HiveKind::kLocalMachine), Hive(HiveKind::kUsers)};
  std::array<Handle, kHiveCount> roots_{};
  HandleTable handles_;
};

// One call: holds the store's mutex and, when it ends, lets each hive deal
// with damage the call met.
class Session {
 public:
  Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  Store& store() noexcept { return store_; }
  // The key an HKEY stands for; null when it is none (ERROR_INVALID_HANDLE).
  Handle* Resolve(HKEY key);
  Hive& hive(const Handle& handle) noexcept { return store_.hive(handle.hive); }

 private:
  Store& store_;
  std::unique_lock<std::mutex> lock_;
};

// A key to insert (the parent's written time is the caller's to touch).
struct NewKey {
  std::int64_t parent = 0;
  std::string_view name, folded, path;
  std::int64_t written = 0;
  std::string_view class_name;
  bool is_volatile = false;
};
// Its id, or 0 when the store fails.
std::int64_t InsertKey(Database& db, const NewKey& key);

// ERROR_SUCCESS when key id exists, else kKeyGone or kStoreFailed; with
// is_volatile, whether it is a volatile key.
LONG KeyExists(Database& db, std::int64_t id, bool* is_volatile = nullptr);

// After a look-up under key id found nothing: none when the key exists
// (it has no such item), else kKeyGone (the handle is looked at again) or
// kStoreFailed.
inline LONG NothingFound(Database& db, std::int64_t id, LONG none) {
  const LONG alive = KeyExists(db, id);
  return alive == ERROR_SUCCESS ? none : alive;
}

struct Lookup {
  LONG result = kKeyGone;  // ERROR_SUCCESS, kKeyGone (no such path) or kStoreFailed
  std::int64_t id = 0;
  std::int64_t parent = 0;  // known when verified
  bool verified = false;    // read from the database, not the cache
  bool is_volatile = false; // known when verified
};


// Finds a key by its folded path, in the cache first when trust_cache.
Lookup FindKey(Hive& hive, const std::string& path, bool trust_cache);

// Creates the keys of parts that do not exist below base, in one
// transaction, each with options. Sets created when the last one is new.
// A key that is kept cannot be made below a volatile one: the result is
// then ERROR_CHILD_MUST_BE_VOLATILE and nothing is created.
Lookup CreatePath(Session& session, Handle& base, const std::vector<Units>& parts, const KeyOptions& options,
                  bool& created);

// After a call found no key with the handle's id: ERROR_SUCCESS when the
// handle now names a live key (found again by its path, or created again
// for a handle from RegCreateKeyExW that trusted the cache), kKeyGone when
// its key was deleted, kStoreFailed.
LONG Revive(Session& session, Handle& handle);

// Runs op(id) on the handle's key. op answers kKeyGone when it finds that
// key missing; the handle is then looked at once more (Revive) and op runs
// again on the key found.
template <typename Op>
LONG OnKey(Session& session, Handle& handle, Op&& op) {
  Hive& hive = session.hive(handle);
  hive.db();  // opens the hive, which may start a new epoch
  if (handle.epoch != hive.epoch()) {
    const LONG revived = Revive(session, handle);
    if (revived != ERROR_SUCCESS) return revived;
  }
  LONG result = op(handle.id);
  if (result == kKeyGone) {
    const LONG revived = Revive(session, handle);
    if (revived != ERROR_SUCCESS) return revived;
    result = op(handle.id);
  }
  if (result != kKeyGone && result != kStoreFailed) handle.verified = true;
  return result;
}

// Runs f, turning an exception (out of memory) into a result code: the
// registry calls never throw.
template <typename F>
LSTATUS Guarded(F&& f) noexcept {
  try {
    return f();
  } catch (...) {
    return ERROR_NOT_ENOUGH_MEMORY;
  }
}

}  // namespace cadtools::registry::store

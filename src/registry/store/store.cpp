// The store singleton, sessions, and finding keys for handles.
#include "registry/store/store.h"

#include "registry/store/batch.h"
#include "registry/store/boot_id.h"
#include "registry/store/clock.h"
#include "registry/store/views.h"

#include <pthread.h>

#include <cstdlib>
#include <new>

namespace cadtools::registry::store {

Store& Store::Instance() {
  // Never destroyed: typed values write themselves back in their
  // destructors, and a static one may be destroyed after this would be.
  alignas(Store) static unsigned char storage[sizeof(Store)];
  static Store* const instance = ::new (storage) Store();
  return *instance;
}

Store::Store() {
  for (int i = 0; i < kHiveCount; ++i) roots_[static_cast<std::size_t>(i)].hive = i;
  pthread_atfork(&Store::BeforeFork, &Store::AfterForkInParent, &Store::AfterForkInChild);
  // Closing at exit checkpoints the WAL into the store file and removes
  // the -wal and -shm files. A later call (a static typed value destroyed
  // after this) simply opens the store again.
  std::atexit(&Store::CloseFilesAtExit);
}

void Store::CloseFilesAtExit() noexcept {
  Store& store = Instance();
  std::unique_lock<std::mutex> lock(store.mutex_, std::try_to_lock);
  if (!lock.owns_lock()) return;  // another thread is in a call; leave its files be
  for (Hive& hive : store.hives_) hive.Close(false);
}

// fork() copies the mutex in whatever state it is; holding it across the
// fork makes the child's copy consistent.
void Store::BeforeFork() noexcept { Instance().mutex_.lock(); }
void Store::AfterForkInParent() noexcept { Instance().mutex_.unlock(); }
void Store::AfterForkInChild() noexcept {
  Store& store = Instance();
  store.owner = std::thread::id();
  store.depth = 0;
  for (Hive& hive : store.hives_) hive.Abandon();
  store.mutex_.unlock();
}

Handle& Store::root(int index) {
  Handle& root = roots_[static_cast<std::size_t>(index)];
  Hive& hive = hives_[static_cast<std::size_t>(index)];
  hive.db();
  root.id = 1;
  root.epoch = hive.epoch();
  root.access = KEY_ALL_ACCESS;
  root.verified = true;
  return root;
}

void Store::Reload() noexcept {
  handles_.Clear();
  for (Hive& hive : hives_) hive.Close(true);
  journal_checked = false;
}

Session::Session() : store_(Store::Instance()) {
  // Relaxed is enough: only the thread that stored its own id can find it
  // there, and it reads its own stores in order.
  if (store_.owner.load(std::memory_order_relaxed) == std::this_thread::get_id()) {
    ++store_.depth;
    return;
  }
  lock_ = std::unique_lock<std::mutex>(store_.mutex());
  store_.owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
  store_.depth = 1;
  for (int i = 0; i < kHiveCount; ++i) store_.hive(i).NewCall();
  if (!store_.journal_checked) {
    store_.journal_checked = true;
    FinishImportCutShort();
  }
}

Session::~Session() {
  if (--store_.depth > 0) return;
  for (int i = 0; i < kHiveCount; ++i) store_.hive(i).AfterCall();
  store_.owner.store(std::thread::id(), std::memory_order_relaxed);
}

Handle* Session::Resolve(HKEY key) {
  const int hive = PredefinedHive(key);
  if (hive == kClassesHive) {
    store_.classes_root = ClassesRoot(*this);
    return &store_.classes_root;
  }
  if (hive >= 0) return &store_.root(hive);
  return store_.handles().Find(key);
}

std::int64_t InsertKey(Database& db, const NewKey& key) {
  Query insert(db, Sql::kInsertKey);
  insert.Bind(1, key.parent);
  insert.Bind(2, key.name);
  insert.Bind(3, key.folded);
  insert.Bind(4, key.path);
  insert.Bind(5, key.written);
  insert.Bind(6, key.class_name);
  if (key.is_volatile) {
    insert.Bind(7, BootId());
  } else {
    insert.BindNull(7);
  }
  return insert.Run() ? db.last_insert_id() : 0;
}

LONG KeyExists(Database& db, std::int64_t id, bool* is_volatile) {
  Query query(db, Sql::kKeyState);
  query.Bind(1, id);
  if (query.Row()) {
    if (is_volatile != nullptr) *is_volatile = query.Int(1) != 0;
    return ERROR_SUCCESS;
  }
  return query.failed() ? kStoreFailed : kKeyGone;
}

Lookup FindKey(Hive& hive, const std::string& path, bool trust_cache) {
  Lookup found;
  if (path.empty()) {
    found = {ERROR_SUCCESS, 1, 0, true};
    return found;
  }
  if (trust_cache) {
    if (const std::int64_t* id = hive.Cached(path)) {
      found.result = ERROR_SUCCESS;
      found.id = *id;
      return found;
    }
  }
  Query query(hive.db(), Sql::kFindKey);
  query.Bind(1, path);
  if (query.Row()) {
    found = {ERROR_SUCCESS, query.Int(0), query.Int(1), true, query.Int(2) != 0};
    hive.Remember(path, found.id);
    return found;
  }
  found.result = query.failed() ? kStoreFailed : kKeyGone;
  return found;
}

Lookup CreatePath(Session& session, Handle& base, const std::vector<Units>& parts, const KeyOptions& options,
                  bool& created) {
  Hive& hive = session.hive(base);
  Database& db = hive.db();
  Lookup last;
  last.result = kStoreFailed;
  Transaction transaction(db);
  if (!transaction.begun()) return last;
  bool parent_volatile = false;
  if (!base.is_root()) {
    const LONG alive = KeyExists(db, base.id, &parent_volatile);
    if (alive != ERROR_SUCCESS) {
      last.result = alive;
      return last;
    }
  }
  const std::int64_t now = FileTimeNow();
  std::int64_t parent = base.is_root() ? 1 : base.id;
  std::string path = base.path, name, folded;
  for (const Units part : parts) {
    AppendPathComponent(path, part);
    {
      Query find(db, Sql::kFindKey);
      find.Bind(1, path);
      if (find.Row()) {
        parent = find.Int(0);
        parent_volatile = find.Int(2) != 0;
        created = false;
        continue;
      }
      if (find.failed()) return last;
    }
    if (parent_volatile && !options.is_volatile) {
      last.result = ERROR_CHILD_MUST_BE_VOLATILE;
      return last;
    }
    name.clear();
    AppendName(name, part, NameForm::kAsCreated);
    folded.clear();
    AppendName(folded, part, NameForm::kFolded);
    const std::int64_t id = InsertKey(db, {parent, name, folded, path, now, options.class_name, options.is_volatile});
    if (id == 0) return last;
    Query touch(db, Sql::kTouchKey);
    touch.Bind(1, parent);
    touch.Bind(2, now);
    if (!touch.Run()) return last;
    parent = id;
    parent_volatile = options.is_volatile;
    created = true;
  }
  if (!transaction.Commit()) return last;
  hive.Remember(path, parent);
  last = {ERROR_SUCCESS, parent, 0, true, parent_volatile};
  return last;
}

LONG Revive(Session& session, Handle& handle) {
  Hive& hive = session.hive(handle);
  if (!handle.is_root() && handle.verified && handle.epoch == hive.epoch()) return kKeyGone;
  Lookup found = FindKey(hive, handle.path, false);
  if (found.result == kKeyGone && !handle.recreate.empty() && !hive.read_only()) {
    std::vector<Units> parts;
    SplitKeyPath(handle.recreate.c_str(), parts);
    bool created = false;
    hive.BeforeWrite();
    found = CreatePath(session, session.store().root(handle.hive), parts, handle.recreate_options, created);
  }
  if (found.result != ERROR_SUCCESS) return found.result;
  handle.id = found.id;
  handle.epoch = hive.epoch();
  handle.verified = true;
  return ERROR_SUCCESS;
}

}  // namespace cadtools::registry::store

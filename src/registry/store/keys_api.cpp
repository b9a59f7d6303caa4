// RegOpenKeyExW, RegCreateKeyExW, RegCloseKey, SHDeleteKeyW and
// ReloadStoreLocations off Windows.
#include <cadtools/registry/registry_api.h>

#include "registry/store/clock.h"
#include "registry/store/store.h"

namespace cadtools::registry {

using namespace store;

namespace {

// The key path below the handle's key: base path plus the folded parts.
void JoinPath(std::string& path, const Handle& base, const std::vector<Units>& parts) {
  path = base.path;
  for (const Units part : parts) AppendPathComponent(path, part);
}

// Keys below a handle exist only while the handle's own key does; the
// hive root always does.
LONG CheckBase(Session& session, Handle& base) {
  if (base.is_root()) return ERROR_SUCCESS;
  Database& db = session.hive(base).db();
  return OnKey(session, base, [&](std::int64_t id) { return KeyExists(db, id); });
}

// A second handle on the key of base, with its own rights.
Handle SameKey(const Handle& base, REGSAM rights) {
  Handle copy = base;
  copy.access = rights;
  copy.recreate.clear();
  return copy;
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR sub_key, DWORD /*options: the store has no links*/, REGSAM access,
                      PHKEY result) noexcept {
  if (result == nullptr) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* base = session.Resolve(key);
    if (base == nullptr) return ERROR_INVALID_HANDLE;
    Store& store = session.store();
    const PathProblem problem = SplitKeyPath(sub_key, store.parts);
    if (problem == PathProblem::kLeadingBackslash) return ERROR_BAD_PATHNAME;
    if (problem == PathProblem::kNameTooLong) return ERROR_FILE_NOT_FOUND;  // no key has such a name
    // Opening a hive itself gives the predefined handle back, as Windows does.
    if (store.parts.empty() && PredefinedHive(key) >= 0) {
      *result = key;
      return ERROR_SUCCESS;
    }
    Hive& hive = session.hive(*base);
    const REGSAM rights = MapAccess(access, hive.read_only());
    const LONG alive = CheckBase(session, *base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kRead);
    Handle opened = SameKey(*base, rights);
    if (!store.parts.empty()) {
      JoinPath(store.path, *base, store.parts);
      const Lookup found = FindKey(hive, store.path, true);
      if (found.result == kKeyGone) return ERROR_FILE_NOT_FOUND;
      if (found.result != ERROR_SUCCESS) return Answer(found.result, CallKind::kRead);
      opened.id = found.id;
      opened.verified = found.verified;
      opened.epoch = hive.epoch();
      opened.path = store.path;
    }
    if ((rights & kWriteRights) != 0 && hive.read_only()) return ERROR_ACCESS_DENIED;
    *result = store.handles().Add(std::move(opened));
    return ERROR_SUCCESS;
  });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR sub_key, DWORD reserved, LPWSTR /*class_name: not kept*/,
                        DWORD /*options: every key is kept*/, REGSAM access, LPSECURITY_ATTRIBUTES /*security*/,
                        PHKEY result, LPDWORD disposition) noexcept {
  if (reserved != 0 || result == nullptr) return ERROR_INVALID_PARAMETER;
  *result = nullptr;
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* base = session.Resolve(key);
    if (base == nullptr) return ERROR_INVALID_HANDLE;
    Store& store = session.store();
    const PathProblem problem = SplitKeyPath(sub_key, store.parts);
    if (problem == PathProblem::kLeadingBackslash) return ERROR_BAD_PATHNAME;
    if (problem == PathProblem::kNameTooLong) return ERROR_INVALID_PARAMETER;
    Hive& hive = session.hive(*base);
    const REGSAM rights = MapAccess(access, hive.read_only());
    const LONG alive = CheckBase(session, *base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kRead);
    Handle opened = SameKey(*base, rights);
    bool created = false;
    if (!store.parts.empty()) {
      JoinPath(store.path, *base, store.parts);
      Lookup found = FindKey(hive, store.path, true);
      if (found.result == ERROR_SUCCESS && !found.verified) {
        if (base->is_root()) {
          // From the cache without a look at the database, which keeps a
          // write-through to one SQLite statement. Should another process
          // have deleted the key, the handle creates it again when it
          // finds it gone (see Revive), as this call would have done.
          opened.recreate = NameOf(sub_key);
        } else {
          found.result = KeyExists(hive.db(), found.id);
          if (found.result == ERROR_SUCCESS) found.verified = true;
          if (found.result == kKeyGone) found = FindKey(hive, store.path, false);
        }
      }
      if (found.result == kKeyGone) {
        if (hive.read_only()) return ERROR_ACCESS_DENIED;
        const std::uint64_t epoch = hive.epoch();
        hive.BeforeWrite();
        if (hive.epoch() != epoch) {  // another process replaced the file: look again in the new one
          const LONG again = CheckBase(session, *base);
          if (again != ERROR_SUCCESS) return Answer(again, CallKind::kWrite);
          found = FindKey(hive, store.path, false);
        }
        if (found.result == kKeyGone) found = CreatePath(session, *base, store.parts, created);
      }
      if (found.result != ERROR_SUCCESS) return Answer(found.result, CallKind::kWrite);
      opened.id = found.id;
      opened.verified = found.verified;
      opened.epoch = hive.epoch();
      JoinPath(opened.path, *base, store.parts);
    }
    if ((rights & kWriteRights) != 0 && hive.read_only()) return ERROR_ACCESS_DENIED;
    *result = store.handles().Add(std::move(opened));
    if (disposition != nullptr) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return ERROR_SUCCESS;
  });
}

LSTATUS RegCloseKey(HKEY key) noexcept {
  if (key == nullptr) return ERROR_INVALID_HANDLE;
  if (IsPredefined(key)) return ERROR_SUCCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    return session.store().handles().Remove(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
  });
}

LSTATUS SHDeleteKeyW(HKEY key, LPCWSTR sub_key) noexcept {
  return Guarded([&]() -> LSTATUS {
    Session session;
    Handle* base = session.Resolve(key);
    if (base == nullptr) return ERROR_INVALID_HANDLE;
    Store& store = session.store();
    const PathProblem problem = SplitKeyPath(sub_key, store.parts);
    if (problem == PathProblem::kLeadingBackslash) return ERROR_BAD_PATHNAME;
    if (problem == PathProblem::kNameTooLong) return ERROR_FILE_NOT_FOUND;
    Hive& hive = session.hive(*base);
    if (!hive.read_only()) hive.BeforeWrite();
    const LONG alive = CheckBase(session, *base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kWrite);
    // An empty subkey empties the key itself (values and subkeys) and
    // keeps it, as the shell does.
    const bool whole_key = !store.parts.empty();
    Lookup target{ERROR_SUCCESS, base->id, 0, true};
    if (whole_key) {
      JoinPath(store.path, *base, store.parts);
      target = FindKey(hive, store.path, false);
      if (target.result == kKeyGone) return ERROR_FILE_NOT_FOUND;
      if (target.result != ERROR_SUCCESS) return Answer(target.result, CallKind::kWrite);
    }
    if (hive.read_only()) return ERROR_ACCESS_DENIED;
    Database& db = hive.db();
    Transaction transaction(db);
    if (!transaction.begun()) return Answer(kStoreFailed, CallKind::kWrite);
    // Handles opened from the path cache are checked now, while their keys
    // still exist, so that afterwards they count as deleted (1018) rather
    // than being looked up again by path.
    const std::uint64_t epoch = hive.epoch();
    LONG checked = ERROR_SUCCESS;
    store.handles().ForEach([&](Handle& open) {
      if (&hive != &session.hive(open) || open.verified || open.epoch != epoch || checked == kStoreFailed) return;
      checked = KeyExists(db, open.id);
      if (checked == ERROR_SUCCESS) open.verified = true;
    });
    if (checked == kStoreFailed) return Answer(kStoreFailed, CallKind::kWrite);
    const std::int64_t now = FileTimeNow();
    Query values(db, Sql::kDeleteTreeValues);
    values.Bind(1, target.id);
    Query below(db, Sql::kDeleteBelow);
    below.Bind(1, target.id);
    Query self(db, Sql::kDeleteKey);
    self.Bind(1, target.id);
    Query touch(db, Sql::kTouchKey);
    touch.Bind(1, whole_key ? target.parent : target.id);
    touch.Bind(2, now);
    if (!values.Run() || !below.Run() || (whole_key && !self.Run()) || !touch.Run()) {
      return Answer(kStoreFailed, CallKind::kWrite);
    }
    if (!transaction.Commit()) return Answer(kStoreFailed, CallKind::kWrite);
    hive.ForgetPaths();
    return ERROR_SUCCESS;
  });
}

void ReloadStoreLocations() noexcept {
  Guarded([]() -> LSTATUS {
    Session session;
    session.store().Reload();
    return ERROR_SUCCESS;
  });
}

}  // namespace cadtools::registry

// RegOpenKeyExW, RegCreateKeyExW, RegCloseKey, SHDeleteKeyW and
// ReloadStoreLocations off Windows.
#include <cadtools/registry/registry_api.h>

#include "registry/store/clock.h"
#include "registry/store/store.h"
#include "registry/store/string_data.h"
#include "registry/store/views.h"

namespace cadtools::registry {

using namespace store;

namespace {

// Windows' limit for a class name, that of any counted string.
constexpr std::size_t kMaxClassUnits = 32767;

// The key path below the handle's key: base path plus the folded parts.
void JoinPath(std::string& path, const Handle& base, std::span<const Units> parts) {
  path = base.path;
  for (const Units part : parts) AppendPathComponent(path, part);
}

// Keys below a handle exist only while the handle's own key does; the
// hive root always does, and so does what HKEY_CLASSES_ROOT stands for.
LONG CheckBase(Session& session, HKEY key, Handle& base) {
  if (base.is_root() || PredefinedHive(key) >= 0) return ERROR_SUCCESS;
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

// A handle on a key found in hive h.
Handle KeyIn(Session& session, int h, const Lookup& found, std::string path, REGSAM access, bool classes) {
  Handle handle;
  handle.hive = h;
  handle.id = found.id;
  handle.epoch = session.store().hive(h).epoch();
  handle.verified = found.verified;
  handle.access = MapAccess(access, session.store().hive(h).read_only());
  handle.path = std::move(path);
  handle.classes = classes;
  return handle;
}

// The subkey and the key it is below, as a call names them: Windows skips
// leading backslashes below HKEY_CLASSES_ROOT itself when it opens a key
// (not when it creates one), and HKEY_USERS\<own SID> is the user's hive.
struct Target {
  Handle* base = nullptr;
  LONG problem = ERROR_SUCCESS;  // ERROR_BAD_PATHNAME, or kNameTooLong below
  bool own_subtree = false;
};
constexpr LONG kNameTooLong = -100;

Target Locate(Session& session, HKEY key, LPCWSTR sub_key, bool skip_classes_backslashes) {
  Target target;
  target.base = session.Resolve(key);
  if (target.base == nullptr) return target;
  if (skip_classes_backslashes && PredefinedHive(key) == kClassesHive && sub_key != nullptr) {
    while (*sub_key == u'\\') ++sub_key;
  }
  std::vector<Units>& parts = session.store().parts;
  const PathProblem problem = SplitKeyPath(sub_key, parts);
  if (problem == PathProblem::kLeadingBackslash) target.problem = ERROR_BAD_PATHNAME;
  if (problem == PathProblem::kNameTooLong) target.problem = kNameTooLong;
  if (Handle* own = OwnSubtree(session, key, parts)) {
    target.base = own;
    target.own_subtree = true;
  }
  return target;
}

LSTATUS OpenClassesKey(Session& session, Handle& base, REGSAM access, PHKEY result) {
  Store& store = session.store();
  JoinPath(store.path, base, store.parts);
  int h = kMachineHive;
  const Lookup found = FindClassesKey(session, store.path, h);
  if (found.result == kKeyGone) return ERROR_FILE_NOT_FOUND;
  if (found.result != ERROR_SUCCESS) return Answer(found.result, CallKind::kRead);
  Handle opened = KeyIn(session, h, found, store.path, access, true);
  if ((opened.access & kWriteRights) != 0 && store.hive(h).read_only()) return ERROR_ACCESS_DENIED;
  *result = store.handles().Add(std::move(opened));
  return ERROR_SUCCESS;
}

// Creates (or opens) a key below a key of HKEY_CLASSES_ROOT, where the
// view says it goes.
LSTATUS CreateClassesKey(Session& session, HKEY key, Handle& base, REGSAM access, const KeyOptions& options,
                         PHKEY result, bool& created) {
  Store& store = session.store();
  const std::vector<Units> parts = store.parts;
  // How many components of the path exist in each store.
  int depth[kHiveCount] = {-1, -1, -1, -1};
  std::int64_t ancestor[kHiveCount] = {};
  std::string path;
  for (const int h : {kUserHive, kMachineHive}) {
    for (int k = static_cast<int>(parts.size()); k >= 0 && depth[h] < 0; --k) {
      JoinPath(path, base, std::span(parts).first(static_cast<std::size_t>(k)));
      const Lookup found = FindKey(store.hive(h), path, false);
      if (found.result == ERROR_SUCCESS) {
        depth[h] = k;
        ancestor[h] = found.id;
      } else if (found.result != kKeyGone) {
        return Answer(found.result, CallKind::kWrite);
      }
    }
  }
  const bool below_root = PredefinedHive(key) == kClassesHive;
  const int whole = static_cast<int>(parts.size());
  const int h = depth[kUserHive] == whole ? kUserHive
                : depth[kMachineHive] == whole
                    ? kMachineHive
                    : HiveForNewClassesKey(depth[kUserHive], depth[kMachineHive], below_root);
  Hive& hive = store.hive(h);
  JoinPath(store.path, base, parts);
  Lookup made{ERROR_SUCCESS, ancestor[h], 0, true};
  if (depth[h] < whole) {
    if (hive.read_only()) return ERROR_ACCESS_DENIED;
    hive.BeforeWrite();
    // Below the deepest key that exists; the machine's Software\Classes
    // itself may be missing when nothing of the path is there.
    std::vector<Units> rest(parts.begin() + std::max(depth[h], 0), parts.end());
    Handle from = KeyIn(session, h, made, std::string(), KEY_ALL_ACCESS, true);
    if (depth[h] < 0) {
      from = store.root(h);
      rest.insert(rest.begin(), ClassesParts().begin(), ClassesParts().end());
    } else {
      JoinPath(from.path, base, std::span(parts).first(static_cast<std::size_t>(depth[h])));
    }
    made = CreatePath(session, from, rest, options, created);
    if (made.result != ERROR_SUCCESS) return Answer(made.result, CallKind::kWrite);
  }
  Handle opened = KeyIn(session, h, made, store.path, access, true);
  if ((opened.access & kWriteRights) != 0 && hive.read_only()) return ERROR_ACCESS_DENIED;
  *result = store.handles().Add(std::move(opened));
  return ERROR_SUCCESS;
}

// Deletes the key target (or, when whole_key is false, empties it) with
// everything below it, in one transaction.
LSTATUS DeleteTree(Session& session, Hive& hive, const Lookup& target, bool whole_key) {
  if (hive.read_only()) return ERROR_ACCESS_DENIED;
  Store& store = session.store();
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
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY key, LPCWSTR sub_key, DWORD /*options: the store has no links*/, REGSAM access,
                      PHKEY result) noexcept {
  if (result == nullptr) return ERROR_INVALID_PARAMETER;
  if (AnyUnusable(sub_key, result)) return ERROR_NOACCESS;
  *result = nullptr;
  return Guarded([&]() -> LSTATUS {
    Session session;
    const Target target = Locate(session, key, sub_key, true);
    if (target.base == nullptr) return ERROR_INVALID_HANDLE;
    if (target.problem == ERROR_BAD_PATHNAME) return ERROR_BAD_PATHNAME;
    if (target.problem == kNameTooLong) return ERROR_FILE_NOT_FOUND;  // no key has such a name
    Store& store = session.store();
    Handle& base = *target.base;
    // Opening a hive itself gives the predefined handle back, as Windows does.
    if (store.parts.empty() && PredefinedHive(key) >= 0 && !target.own_subtree) {
      *result = key;
      return ERROR_SUCCESS;
    }
    const LONG alive = CheckBase(session, key, base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kRead);
    if (base.classes && !store.parts.empty()) return OpenClassesKey(session, base, access, result);
    Hive& hive = session.hive(base);
    const REGSAM rights = MapAccess(access, hive.read_only());
    Handle opened = SameKey(base, rights);
    if (!store.parts.empty()) {
      JoinPath(store.path, base, store.parts);
      const Lookup found = FindKey(hive, store.path, true);
      if (found.result == kKeyGone) return ERROR_FILE_NOT_FOUND;
      if (found.result != ERROR_SUCCESS) return Answer(found.result, CallKind::kRead);
      opened.id = found.id;
      opened.verified = found.verified;
      opened.epoch = hive.epoch();
      opened.path = store.path;
    }
    if ((rights & kWriteRights) != 0 && (hive.read_only() || base.missing)) return ERROR_ACCESS_DENIED;
    *result = store.handles().Add(std::move(opened));
    return ERROR_SUCCESS;
  });
}

LSTATUS RegCreateKeyExW(HKEY key, LPCWSTR sub_key, DWORD reserved, LPWSTR class_name, DWORD options, REGSAM access,
                        LPSECURITY_ATTRIBUTES /*security: the store keeps none*/, PHKEY result,
                        LPDWORD disposition) noexcept {
  if (reserved != 0 || result == nullptr) return ERROR_INVALID_PARAMETER;
  if (AnyUnusable(sub_key, class_name, result, disposition)) return ERROR_NOACCESS;
  *result = nullptr;
  const Units class_units = NameOf(class_name);
  if (class_units.size() > kMaxClassUnits) return ERROR_INVALID_PARAMETER;
  return Guarded([&]() -> LSTATUS {
    KeyOptions made;
    made.is_volatile = (options & REG_OPTION_VOLATILE) != 0;
    AppendName(made.class_name, class_units, NameForm::kAsCreated);
    Session session;
    const Target target = Locate(session, key, sub_key, false);
    if (target.base == nullptr) return ERROR_INVALID_HANDLE;
    if (target.problem == ERROR_BAD_PATHNAME) return ERROR_BAD_PATHNAME;
    if (target.problem == kNameTooLong) return ERROR_INVALID_PARAMETER;
    Store& store = session.store();
    Handle& base = *target.base;
    const LONG alive = CheckBase(session, key, base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kRead);
    bool created = false;
    LSTATUS status = ERROR_SUCCESS;
    if (base.classes && !store.parts.empty()) {
      status = CreateClassesKey(session, key, base, access, made, result, created);
    } else {
      Hive& hive = session.hive(base);
      const REGSAM rights = MapAccess(access, hive.read_only());
      Handle opened = SameKey(base, rights);
      if (!store.parts.empty()) {
        JoinPath(store.path, base, store.parts);
        Lookup found = FindKey(hive, store.path, true);
        if (found.result == ERROR_SUCCESS && !found.verified) {
          if (base.is_root()) {
            // From the cache without a look at the database, which keeps a
            // write-through to one SQLite statement. Should another process
            // have deleted the key, the handle creates it again when it
            // finds it gone (see Revive), as this call would have done.
            opened.recreate = NameOf(sub_key);
            opened.recreate_options = made;
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
            const LONG again = CheckBase(session, key, base);
            if (again != ERROR_SUCCESS) return Answer(again, CallKind::kWrite);
            found = FindKey(hive, store.path, false);
          }
          if (found.result == kKeyGone) found = CreatePath(session, base, store.parts, made, created);
        }
        if (found.result != ERROR_SUCCESS) return Answer(found.result, CallKind::kWrite);
        opened.id = found.id;
        opened.verified = found.verified;
        opened.epoch = hive.epoch();
        JoinPath(opened.path, base, store.parts);
      }
      if ((rights & kWriteRights) != 0 && (hive.read_only() || base.missing)) return ERROR_ACCESS_DENIED;
      *result = store.handles().Add(std::move(opened));
    }
    if (status == ERROR_SUCCESS && disposition != nullptr) {
      *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    }
    return status;
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
  if (Unusable(sub_key)) return ERROR_NOACCESS;
  return Guarded([&]() -> LSTATUS {
    Session session;
    const Target target = Locate(session, key, sub_key, false);
    if (target.base == nullptr) return ERROR_INVALID_HANDLE;
    if (target.problem == ERROR_BAD_PATHNAME) return ERROR_BAD_PATHNAME;
    if (target.problem == kNameTooLong) return ERROR_FILE_NOT_FOUND;
    Store& store = session.store();
    Handle& base = *target.base;
    // The current user's whole hive is not emptied through HKEY_USERS.
    if (target.own_subtree && store.parts.empty()) return ERROR_ACCESS_DENIED;
    for (const int h : {base.hive, base.classes ? kUserHive + kMachineHive - base.hive : base.hive}) {
      if (!store.hive(h).read_only()) store.hive(h).BeforeWrite();
    }
    const LONG alive = CheckBase(session, key, base);
    if (alive != ERROR_SUCCESS) return Answer(alive, CallKind::kWrite);
    // An empty subkey empties the key itself (values and subkeys) and
    // keeps it, as the shell does.
    const bool whole_key = !store.parts.empty();
    if (!whole_key) {
      if (base.missing) return ERROR_SUCCESS;  // nothing there to empty
      return DeleteTree(session, session.hive(base), {ERROR_SUCCESS, base.id, 0, true}, false);
    }
    JoinPath(store.path, base, store.parts);
    int h = base.hive;
    const Lookup target_key = base.classes ? FindClassesKey(session, store.path, h)
                                           : FindKey(session.hive(base), store.path, false);
    if (target_key.result == kKeyGone) return ERROR_FILE_NOT_FOUND;
    if (target_key.result != ERROR_SUCCESS) return Answer(target_key.result, CallKind::kWrite);
    return DeleteTree(session, store.hive(h), target_key, true);
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

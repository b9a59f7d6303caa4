// HKEY_CLASSES_ROOT's merged view and the current user's place in
// HKEY_USERS.
#include "registry/store/views.h"

#include <unistd.h>

#include <utility>

namespace cadtools::registry::store {

namespace {

constexpr Units kClassesParts[] = {u"Software", u"Classes"};

std::string Folded(Units name) {
  std::string folded;
  AppendName(folded, name, NameForm::kFolded);
  return folded;
}

LONG ListChildren(Database& db, std::int64_t parent, std::vector<Child>& out) {
  Query query(db, Sql::kListKeys);
  query.Bind(1, parent);
  while (query.Row()) {
    out.push_back({std::string(query.Blob(0)), std::string(query.Blob(1)), std::string(query.Blob(3)), query.Int(2)});
  }
  return query.failed() ? kStoreFailed : ERROR_SUCCESS;
}

// Both lists in folded order; the result holds each folded name once,
// from `first` where both have it.
std::vector<Child> Merge(std::vector<Child> first, std::vector<Child> second) {
  std::vector<Child> merged;
  merged.reserve(first.size() + second.size());
  auto a = first.begin(), b = second.begin();
  while (a != first.end() || b != second.end()) {
    if (b == second.end() || (a != first.end() && a->folded <= b->folded)) {
      if (b != second.end() && a->folded == b->folded) ++b;
      merged.push_back(std::move(*a++));
    } else {
      merged.push_back(std::move(*b++));
    }
  }
  return merged;
}

}  // namespace

const std::string& ClassesPath() {
  static const std::string path = [] {
    std::string folded;
    for (const Units part : kClassesParts) AppendPathComponent(folded, part);
    return folded;
  }();
  return path;
}

std::span<const Units> ClassesParts() { return kClassesParts; }

const std::u16string& OwnSid() {
  static const std::u16string sid = [] {
    const std::string text = "S-1-22-1-" + std::to_string(getuid());
    return std::u16string(text.begin(), text.end());
  }();
  return sid;
}

Lookup FindClassesKey(Session& session, const std::string& path, int& hive) {
  for (const int h : {kUserHive, kMachineHive}) {
    const Lookup found = FindKey(session.store().hive(h), path, false);
    if (found.result != kKeyGone) {
      hive = h;
      return found;
    }
  }
  hive = kMachineHive;
  return {};
}

Handle ClassesRoot(Session& session) {
  Handle root;
  root.classes = true;
  root.access = KEY_ALL_ACCESS;
  root.path = ClassesPath();
  const Lookup found = FindClassesKey(session, root.path, root.hive);
  root.missing = found.result != ERROR_SUCCESS;
  root.id = found.id;
  root.epoch = session.store().hive(root.hive).epoch();
  root.verified = true;
  return root;
}

int HiveForNewClassesKey(int depth_user, int depth_machine, bool below_root) noexcept {
  if (below_root && depth_user <= 0 && depth_machine <= 0) return kMachineHive;
  return depth_user >= depth_machine ? kUserHive : kMachineHive;
}

Handle* OwnSubtree(Session& session, HKEY key, std::vector<Units>& parts) {
  if (PredefinedHive(key) != kUsersHive || parts.empty() || Folded(parts.front()) != Folded(OwnSid())) return nullptr;
  parts.erase(parts.begin());
  return &session.store().root(kUserHive);
}

bool HasMergedChildren(const Handle& handle) noexcept {
  return handle.classes || (handle.hive == kUsersHive && handle.is_root());
}

LONG MergedChildren(Session& session, const Handle& handle, std::vector<Child>& children) {
  children.clear();
  Store& store = session.store();
  if (!handle.classes) {
    Child own;
    AppendName(own.name, OwnSid(), NameForm::kAsCreated);
    own.folded = Folded(OwnSid());
    Query user_root(store.hive(kUserHive).db(), Sql::kKeyState);
    user_root.Bind(1, 1);
    if (user_root.Row()) own.written = user_root.Int(0);
    std::vector<Child> others;
    const LONG listed = ListChildren(store.hive(kUsersHive).db(), 1, others);
    children = Merge({own}, std::move(others));
    return listed;
  }
  for (const int h : {kUserHive, kMachineHive}) {
    Lookup found{ERROR_SUCCESS, handle.id, 0, true};
    if (h != handle.hive || handle.missing) found = FindKey(store.hive(h), handle.path, false);
    if (found.result == kKeyGone) continue;
    if (found.result != ERROR_SUCCESS) return found.result;
    std::vector<Child> more;
    if (ListChildren(store.hive(h).db(), found.id, more) != ERROR_SUCCESS) return kStoreFailed;
    children = Merge(std::move(children), std::move(more));
  }
  return ERROR_SUCCESS;
}

}  // namespace cadtools::registry::store

// The keys of an old classes store, moved below Software\Classes.
#include "registry/store/classes_move.h"

#include "registry/store/store.h"

#include <unistd.h>

#include <unordered_map>

namespace cadtools::registry::store {

namespace {

// The id of the key at path in db, inserted below parent with the given
// name when it is not there; 0 when the store fails.
std::int64_t KeyAt(Database& db, const std::string& path, std::int64_t parent, std::string_view name,
                   std::string_view folded, std::int64_t written, std::string_view class_name) {
  {
    Query find(db, Sql::kFindKey);
    find.Bind(1, path);
    if (find.Row()) return find.Int(0);
    if (find.failed()) return 0;
  }
  return InsertKey(db, {parent, name, folded, path, written, class_name, false});
}

// Copies every key and value of old into db below Software\Classes.
bool CopyBelowClasses(Database& old, Database& db) {
  std::string path, name, folded;
  std::int64_t parent = 1;
  for (const Units part : {Units(u"Software"), Units(u"Classes")}) {
    AppendPathComponent(path, part);
    name.clear();
    AppendName(name, part, NameForm::kAsCreated);
    folded.clear();
    AppendName(folded, part, NameForm::kFolded);
    parent = KeyAt(db, path, parent, name, folded, 0, {});
    if (parent == 0) return false;
  }
  const std::string classes = path;
  std::unordered_map<std::int64_t, std::int64_t> moved{{1, parent}};
  // Parents have smaller ids than their children: ids only grow.
  Query all_keys(old, Sql::kListAllKeys);
  while (all_keys.Row()) {
    const auto found = moved.find(all_keys.Int(1));
    if (found == moved.end()) continue;  // below a key that is not there
    path = classes;
    path.append({'\0', '\\'}).append(all_keys.Blob(4));
    const std::int64_t id = KeyAt(db, path, found->second, all_keys.Blob(2), all_keys.Blob(3), all_keys.Int(5),
                                  all_keys.Blob(6));
    if (id == 0) return false;
    moved.emplace(all_keys.Int(0), id);
  }
  if (all_keys.failed()) return false;
  Query all_values(old, Sql::kListAllValues);
  while (all_values.Row()) {
    const auto found = moved.find(all_values.Int(0));
    if (found == moved.end()) continue;
    Query keep(db, Sql::kAddValue);
    keep.Bind(1, found->second);
    keep.Bind(2, all_values.Blob(1));
    keep.Bind(3, all_values.Blob(2));
    keep.Bind(4, all_values.Int(3));
    keep.Bind(5, all_values.Blob(4));
    keep.Bind(6, all_values.Int(5));
    if (!keep.Run()) return false;
  }
  return !all_values.failed();
}

}  // namespace

void MoveOldClassesStore(const StoreLocation& user, Database& db) {
  const std::string file = user.folder + "/classes.db";
  if (user.folder.empty() || access(file.c_str(), F_OK) != 0) return;
  Database old;
  if (old.Open(file, false) != SQLITE_OK || !old.Check().problem.empty()) return;
  {
    Transaction transaction(db);
    if (!transaction.begun() || !CopyBelowClasses(old, db) || !transaction.Commit()) return;
  }
  old.Close();
  const std::string moved = AsideName(file, "moved");
  if (!MoveWithCompanions(file, moved)) return;
  Report("the keys of " + file + " (HKEY_CLASSES_ROOT of earlier versions) are now below " +
         "HKEY_CURRENT_USER\\Software\\Classes; the file is kept as " + moved);
}

}  // namespace cadtools::registry::store

// ApplyWithUndo: an import through the registry calls that checks the
// rights it needs first and puts back what it changed when a call fails.
#include "reg_apply.h"

#include <algorithm>
#include <vector>

#include "reg_text.h"

namespace cadtools::registry::detail {

namespace {

// Opens path below hive with rights, to see whether that is allowed:
// ERROR_SUCCESS, ERROR_FILE_NOT_FOUND when there is no such key, or why not.
LSTATUS Probe(RegHive hive, const WString& path, REGSAM rights) {
  OpenKey key;
  return registry::RegOpenKeyExW(HiveHandle(hive), path.c_str(), 0, rights, key.Receive());
}

// The path up to (not including) its k-th backslash; the whole path for a
// k beyond them.
WString Prefix(const WString& path, std::size_t k) {
  std::size_t end = 0;
  for (std::size_t i = 0; i <= k; ++i) {
    end = path.find(u'\\', i == 0 ? 0 : end + 1);
    if (end == WString::npos) return path;
  }
  return path.substr(0, end);
}

std::size_t Components(const WString& path) {
  return path.empty() ? 0 : static_cast<std::size_t>(std::count(path.begin(), path.end(), u'\\')) + 1;
}

// The rights an entry needs, checked before anything is written: deleting
// a tree needs DELETE on it; setting values needs KEY_SET_VALUE on the key,
// or, when the key is new, KEY_CREATE_SUB_KEY on the deepest key of its
// path that exists.
LSTATUS CheckRights(const RegKeyEntry& entry) {
  constexpr REGSAM kNone = 0;
  if (entry.remove) {
    const LSTATUS status = Probe(entry.hive, entry.path, DELETE | KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
  }
  const REGSAM for_values = entry.values.empty() ? kNone : KEY_SET_VALUE | KEY_QUERY_VALUE;
  LSTATUS status = Probe(entry.hive, entry.path, for_values);
  if (status != ERROR_FILE_NOT_FOUND) return status;
  for (std::size_t k = Components(entry.path); k-- > 0;) {
    const WString ancestor = k == 0 ? WString() : Prefix(entry.path, k - 1);
    status = Probe(entry.hive, ancestor, kNone);
    if (status == ERROR_FILE_NOT_FOUND) continue;
    return status == ERROR_SUCCESS ? Probe(entry.hive, ancestor, KEY_CREATE_SUB_KEY) : status;
  }
  return ERROR_SUCCESS;
}

// The data of a value, or ERROR_FILE_NOT_FOUND.
LSTATUS ReadValue(RegHive hive, const WString& path, RegValueEntry& value) {
  OpenKey key;
  LSTATUS status = registry::RegOpenKeyExW(HiveHandle(hive), path.c_str(), 0, KEY_QUERY_VALUE, key.Receive());
  for (int attempt = 0; status == ERROR_SUCCESS && attempt < 8; ++attempt) {
    auto size = static_cast<DWORD>(value.data.size());
    status = registry::RegQueryValueExW(key.get(), value.name.c_str(), nullptr, &value.type,
                                        value.data.empty() ? nullptr : value.data.data(), &size);
    if (status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && size > value.data.size())) {
      value.data.resize(size);
      status = ERROR_SUCCESS;
      continue;
    }
    if (status == ERROR_SUCCESS) value.data.resize(size);
    return status;
  }
  return status;
}

// What the import replaced, one change at a time, and how to put it back.
class UndoLog : public ApplyObserver {
 public:
  LSTATUS BeforeCreate(const RegKeyEntry& key) override {
    // The top-most key of the path that is not there: deleting it undoes
    // whatever the import then makes below it.
    for (std::size_t k = 0; k < Components(key.path); ++k) {
      const WString prefix = Prefix(key.path, k);
      const LSTATUS status = Probe(key.hive, prefix, 0);
      if (status == ERROR_FILE_NOT_FOUND) {
        changes_.push_back({Kind::kMadeKey, {key.hive, prefix, false, {}, 0}, {}});
        return ERROR_SUCCESS;
      }
      if (status != ERROR_SUCCESS) return status;
    }
    return ERROR_SUCCESS;
  }

  LSTATUS BeforeDeleteTree(const RegKeyEntry& key) override {
    Change change{Kind::kTree, {key.hive, key.path, false, {}, 0}, {}};
    const RegTransferResult kept = ExportRegTree(key.hive, key.path, change.tree);
    if (kept.status == ERROR_FILE_NOT_FOUND) return ERROR_SUCCESS;
    if (kept.ok()) changes_.push_back(std::move(change));
    return kept.status;
  }

  LSTATUS BeforeValue(const RegKeyEntry& key, const RegValueEntry& value) override {
    Change change{Kind::kValue, {key.hive, key.path, false, {}, 0}, {}};
    RegValueEntry old{value.name, false, REG_NONE, {}, 0};
    const LSTATUS status = ReadValue(key.hive, key.path, old);
    if (status == ERROR_FILE_NOT_FOUND) {
      if (value.remove) return ERROR_SUCCESS;  // nothing there to delete, nothing to put back
      old.remove = true;
    } else if (status != ERROR_SUCCESS) {
      return status;
    }
    change.key.values.push_back(std::move(old));
    changes_.push_back(std::move(change));
    return ERROR_SUCCESS;
  }

  // Puts everything back, newest change first; the first failure, if any.
  LSTATUS Undo() {
    LSTATUS first = ERROR_SUCCESS;
    for (auto it = changes_.rbegin(); it != changes_.rend(); ++it) {
      LSTATUS status = ERROR_SUCCESS;
      const HKEY hive = HiveHandle(it->key.hive);
      if (it->kind != Kind::kValue) {
        status = registry::SHDeleteKeyW(hive, it->key.path.c_str());
        if (status == ERROR_FILE_NOT_FOUND) status = ERROR_SUCCESS;
        if (status == ERROR_SUCCESS && it->kind == Kind::kTree) status = ApplyEntries(it->tree).status;
      } else {
        status = ApplyEntries(RegKeys{it->key}).status;
      }
      if (first == ERROR_SUCCESS) first = status;
    }
    return first;
  }

 private:
  enum class Kind {
    kMadeKey,  // key: the top-most key the import made
    kTree,     // key: deleted by the import, tree: all it held
    kValue,    // key with one value as it was, or "remove" when it was not there
  };
  struct Change {
    Kind kind;
    RegKeyEntry key;
    RegKeys tree;
  };
  std::vector<Change> changes_;
};

}  // namespace

RegTransferResult ApplyWithUndo(const RegKeys& keys) {
  for (const RegKeyEntry& entry : keys) {
    const LSTATUS status = CheckRights(entry);
    if (status != ERROR_SUCCESS) {
      return TransferFailure(status, std::string(entry.remove ? "cannot delete " : "cannot create ") +
                                         KeyText(entry.hive, entry.path),
                             entry.line);
    }
  }
  UndoLog log;
  RegTransferResult result = ApplyEntries(keys, &log);
  if (result.ok()) return result;
  const LSTATUS undone = log.Undo();
  if (undone != ERROR_SUCCESS) {
    result.message += "; putting back what the import changed failed too (error " + std::to_string(undone) + ")";
  }
  return result;
}

}  // namespace cadtools::registry::detail

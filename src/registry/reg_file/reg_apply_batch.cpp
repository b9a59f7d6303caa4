// ApplyInBatch: an import as one transaction per store, off Windows.
#include "reg_apply.h"

#include <array>

#include "reg_text.h"
#include "registry/store/batch.h"
#include "registry/store/views.h"

namespace cadtools::registry {

namespace detail {

namespace {

using store::kMachineHive;
using store::kUserHive;
using store::kUsersHive;

// The store an entry writes; -1 for a key of HKEY_CLASSES_ROOT, which goes
// to the user's or the machine's store depending on what is there.
int StoreOf(const RegKeyEntry& entry) {
  switch (entry.hive) {
    case RegHive::kCurrentUser:
      return kUserHive;
    case RegHive::kLocalMachine:
      return kMachineHive;
    case RegHive::kUsers: {
      const WStringView first = WStringView(entry.path).substr(0, entry.path.find(u'\\'));
      std::string sid, own;
      store::AppendName(sid, first, store::NameForm::kFolded);
      store::AppendName(own, store::OwnSid(), store::NameForm::kFolded);
      return sid == own ? kUserHive : kUsersHive;
    }
    case RegHive::kClassesRoot:
      break;
  }
  return -1;
}

}  // namespace

RegTransferResult ApplyInBatch(const RegKeys& keys, bool finishing) {
  store::Batch batch(finishing);
  // Before anything is written: every store the file needs must take
  // writes. They are joined in one order in every process, so that two
  // imports never wait for each other in a circle.
  std::array<const RegKeyEntry*, store::kHiveCount> first{};
  bool classes = false;
  for (const RegKeyEntry& entry : keys) {
    const int needed = StoreOf(entry);
    if (needed < 0) {
      classes = true;
    } else if (first[static_cast<std::size_t>(needed)] == nullptr) {
      first[static_cast<std::size_t>(needed)] = &entry;
    }
  }
  for (const int h : {kUserHive, kMachineHive, kUsersHive}) {
    if (const RegKeyEntry* entry = first[static_cast<std::size_t>(h)]) {
      const LONG joined = batch.Join(h);
      if (joined != ERROR_SUCCESS) {
        return TransferFailure(joined, std::string(entry->remove ? "cannot delete " : "cannot create ") +
                                           KeyText(entry->hive, entry->path),
                               entry->line);
      }
    } else if (classes && h != kUsersHive) {
      // Where keys of HKEY_CLASSES_ROOT may go. A store that cannot be
      // written refuses the keys meant for it when they come.
      batch.Join(h);
    }
  }
  RegTransferResult result = ApplyEntries(keys);
  if (!result.ok()) return result;  // the batch rolls back
  const LONG committed = batch.Commit([&] { return SerializeEntries(keys); });
  if (committed != ERROR_SUCCESS) return TransferFailure(committed, "cannot commit the import");
  return {};
}

}  // namespace detail

LONG store::ReplayImport(std::string_view journal) {
  const std::optional<RegKeys> keys = detail::DeserializeEntries(journal);
  if (!keys) return ERROR_INVALID_DATA;
  return detail::ApplyInBatch(*keys, true).status;
}

}  // namespace cadtools::registry

// Several registry calls as one change of each store they touch, for
// imports: every change reaches the stores, or none does.
//
//   Batch batch;
//   if (batch.Join(kUserHive) != ERROR_SUCCESS) ...        // before anything is written
//   RegCreateKeyExW(...); RegSetValueExW(...); ...          // inside the transactions
//   batch.Commit([&] { return journal; });                  // else rolled back when it goes
//
// The batch holds the store (a session) for its lifetime, so other threads
// of the process wait, and a write transaction (BEGIN IMMEDIATE) in each
// store it joined, so other processes wait at their next write (up to the
// busy timeout). Calls made meanwhile change nothing in the files until
// Commit; a batch that is not committed rolls back, and so does SQLite
// when the process dies before the commit.
//
// One store commits atomically; two cannot commit as one. So when a batch
// joined several stores, it first writes a journal next to the user's
// store ("user.db.import": what the caller needs to do the whole batch
// again), then commits the stores one after the other, the machine's
// first, and removes the journal. A process killed between two commits
// leaves the journal behind; the next session of that user, in any
// process, does the batch again (ReplayImport) and removes it. Doing an
// import again is harmless: it sets every key and value it names to what
// the file says.
#pragma once

#include "registry/store/store.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace cadtools::registry::store {

class Batch {
 public:
  // finishing: the batch does again an import that its journal describes;
  // the journal is there already and stays unless the batch succeeds.
  explicit Batch(bool finishing = false) : finishing_(finishing) {}
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch() { Rollback(); }

  // Opens the hive's write transaction, once. ERROR_ACCESS_DENIED for a
  // hive that cannot be written, ERROR_REGISTRY_IO_FAILED when the store
  // fails (or stays locked too long).
  LONG Join(int hive);
  bool joined(int hive) const noexcept { return joined_[static_cast<std::size_t>(hive)]; }

  // Commits every hive joined; journal gives the journal's bytes when it
  // is needed. On failure nothing is committed, unless a later store
  // failed after an earlier one committed: then the batch is done again at
  // once, and if that fails too the journal stays for the next session.
  LONG Commit(const std::function<std::string()>& journal);

 private:
  void Rollback() noexcept;

  Session session_;
  std::array<bool, kHiveCount> joined_{};
  bool finishing_;
};

// Called once by the first session of a process (and after the store was
// located anew): finishes an import that a killed process left between
// the commits of its stores. A journal that cannot be done again (the
// stores refuse it) is kept aside as "user.db.import.failed-<time>" and
// reported once; one that meets a failing store stays for the next time.
void FinishImportCutShort() noexcept;

// Does the import of a journal again, in a batch of its own; defined with
// the importer (reg_file). ERROR_SUCCESS, a Win32 code, or
// ERROR_INVALID_DATA for bytes that are no journal.
LONG ReplayImport(std::string_view journal);

// For tests: called after each store a batch commits, with how many it
// committed so far; a test's child process ends itself there to leave a
// journal behind.
void SetAfterCommitForTests(void (*after_commit)(int committed)) noexcept;

}  // namespace cadtools::registry::store

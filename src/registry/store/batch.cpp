// Batches of calls in one transaction per store, and the journal that
// ties the commits of several stores together.
#include "registry/store/batch.h"

#include "registry/store/store_file.h"
#include "registry/store/views.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <sstream>

namespace cadtools::registry::store {

namespace {

// The order of the commits: the machine store first, as its rollback
// journal needs every reader gone and so is the likeliest to fail; the
// user's WAL store last.
constexpr int kCommitOrder[] = {kMachineHive, kUsersHive, kUserHive};

void (*g_after_commit)(int) = nullptr;

std::string JournalFile() {
  const StoreLocation where = LocateHive(HiveKind::kCurrentUser);
  return where.folder.empty() ? std::string() : where.folder + "/user.db.import";
}

// Writes the file whole or not at all: a journal that exists is complete.
bool WriteDurably(const std::string& file, const std::string& bytes) {
  const std::string partial = file + ".partial";
  const int fd = open(partial.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (fd < 0) return false;
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t wrote = write(fd, bytes.data() + done, bytes.size() - done);
    if (wrote < 0 && errno == EINTR) continue;
    if (wrote <= 0) break;
    done += static_cast<std::size_t>(wrote);
  }
  const bool written = done == bytes.size() && fsync(fd) == 0;
  close(fd);
  if (!written || rename(partial.c_str(), file.c_str()) != 0) {
    unlink(partial.c_str());
    return false;
  }
  const std::string folder = file.substr(0, file.find_last_of('/'));
  const int dir = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    fsync(dir);  // the rename itself survives a power cut
    close(dir);
  }
  return true;
}

}  // namespace

LONG Batch::Join(int hive_index) {
  if (joined(hive_index)) return ERROR_SUCCESS;
  Hive& hive = session_.store().hive(hive_index);
  if (hive.read_only()) return ERROR_ACCESS_DENIED;
  hive.BeforeWrite();
  if (!Query(hive.db(), Sql::kBegin).Run()) return ERROR_REGISTRY_IO_FAILED;
  joined_[static_cast<std::size_t>(hive_index)] = true;
  return ERROR_SUCCESS;
}

LONG Batch::Commit(const std::function<std::string()>& journal) {
  int count = 0;
  for (const bool joined : joined_) count += joined ? 1 : 0;
  const std::string file = count > 1 || finishing_ ? JournalFile() : std::string();
  std::string bytes;
  if (count > 1) {
    bytes = journal();
    if (!finishing_ && (file.empty() || !WriteDurably(file, bytes))) {
      Rollback();
      return ERROR_REGISTRY_IO_FAILED;
    }
  }
  int committed = 0;
  for (const int h : kCommitOrder) {
    if (!joined(h)) continue;
    if (!Query(session_.store().hive(h).db(), Sql::kCommit).Run()) break;
    joined_[static_cast<std::size_t>(h)] = false;
    ++committed;
    if (g_after_commit != nullptr) g_after_commit(committed);
  }
  const bool all = committed == count;
  Rollback();
  LONG result = all ? ERROR_SUCCESS : ERROR_REGISTRY_IO_FAILED;
  if (!all && committed > 0 && !finishing_) result = ReplayImport(bytes);  // finish what the first commits began
  if (!file.empty() && (result == ERROR_SUCCESS || (committed == 0 && !finishing_))) unlink(file.c_str());
  return result;
}

void Batch::Rollback() noexcept {
  for (int h = 0; h < kHiveCount; ++h) {
    if (!joined(h)) continue;
    Hive& hive = session_.store().hive(h);
    Query(hive.db(), Sql::kRollback).Run();
    hive.ForgetIds();
    joined_[static_cast<std::size_t>(h)] = false;
  }
}

void FinishImportCutShort() noexcept {
  try {
    const std::string file = JournalFile();
    if (file.empty() || access(file.c_str(), F_OK) != 0) return;
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    const LONG result = ReplayImport(bytes.str());
    if (result == ERROR_SUCCESS) {
      unlink(file.c_str());
    } else if (result != ERROR_REGISTRY_IO_FAILED) {
      const std::string aside = AsideName(file, "failed");
      rename(file.c_str(), aside.c_str());
      Report("an import cut short could not be finished (error " + std::to_string(result) + "); its journal is kept as " +
             aside);
    }
  } catch (...) {
    // Out of memory: the journal stays for the next process.
  }
}

void SetAfterCommitForTests(void (*after_commit)(int)) noexcept { g_after_commit = after_commit; }

}  // namespace cadtools::registry::store

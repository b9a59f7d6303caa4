// Opening, reopening and the path cache of a hive.
#include "registry/store/hive.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cadtools::registry::store {

namespace {

// Settings use a few hundred keys; a cache beyond this is some tool walking
// a big tree, and starting afresh keeps memory bounded.
constexpr std::size_t kMaxCachedPaths = 4096;

}  // namespace

Database& Hive::db() {
  EnsureOpen();
  return db_;
}

bool Hive::read_only() {
  EnsureOpen();
  return state_ != State::kFile || db_.read_only();
}

void Hive::EnsureOpen() {
  if (state_ == State::kClosed || (state_ == State::kUnusable && may_retry_)) {
    may_retry_ = false;
    Open(nullptr, std::string());
  }
}

void Hive::NewEpoch() noexcept {
  ++epoch_;
  paths_.clear();
}

void Hive::Open(const FileIdentity* damaged, const std::string& reason) {
  if (!located_) {
    location_ = LocateHive(kind_);
    located_ = true;
  }
  const State before = state_;
  if (damaged != nullptr) {
    db_.CloseAside();
  } else {
    db_.Close();
  }
  const OpenOutcome outcome = OpenStoreFile(location_, db_, damaged, reason);
  switch (outcome.state) {
    case OpenState::kFile:
      if (before != State::kClosed || outcome.identity != identity_) NewEpoch();
      identity_ = outcome.identity;
      state_ = State::kFile;
      if (folder_fd_ < 0) folder_fd_ = open(location_.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
      return;
    case OpenState::kEmpty:
      db_.OpenEmpty();
      NewEpoch();
      state_ = State::kEmpty;
      return;
    case OpenState::kUnusable:
      if (!reported_) {
        const std::string store = location_.file.empty() ? std::string() : location_.file + " ";
        Report("settings store " + store + "cannot be used (" + outcome.why + "); settings are not kept");
      }
      reported_ = true;
      db_.OpenEmpty();
      NewEpoch();
      state_ = State::kUnusable;
      return;
  }
}

void Hive::BeforeWrite() {
  EnsureOpen();
  if (state_ != State::kFile) return;
  struct stat info {};
  const int found = folder_fd_ >= 0 ? fstatat(folder_fd_, location_.file.c_str() + location_.folder.size() + 1, &info, 0)
                                    : stat(location_.file.c_str(), &info);
  if (found == 0 && FileIdentity{info.st_dev, info.st_ino} == identity_) return;
  // Our file was moved aside: close it as it is and open the current one.
  db_.CloseAside();
  state_ = State::kClosed;
  Open(nullptr, std::string());
}

void Hive::AfterCall() {
  if (state_ != State::kFile || !db_.damaged()) return;
  const FileIdentity damaged = identity_;
  Open(&damaged, db_.TakeDamage());
}

const std::int64_t* Hive::Cached(const std::string& path) const noexcept {
  const auto found = paths_.find(path);
  return found == paths_.end() ? nullptr : &found->second;
}

void Hive::Remember(const std::string& path, std::int64_t id) {
  if (paths_.size() >= kMaxCachedPaths) paths_.clear();
  paths_.insert_or_assign(path, id);
}

void Hive::CloseFolder() noexcept {
  if (folder_fd_ >= 0) close(folder_fd_);
  folder_fd_ = -1;
}

void Hive::Close(bool reread_location) noexcept {
  db_.Close();
  state_ = State::kClosed;
  if (reread_location) {
    CloseFolder();
    located_ = false;
    reported_ = false;
    NewEpoch();
  }
}

void Hive::Abandon() noexcept {
  CloseFolder();  // the child's copy; the parent keeps its own
  db_.Abandon();
  state_ = State::kClosed;
}

}  // namespace cadtools::registry::store

// Opening, reopening and the path cache of a hive.
#include "registry/store/hive.h"

#include "registry/store/classes_move.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cadtools::registry::store {

namespace {

// Settings use a few hundred keys; a cache beyond this is some tool walking
// a big tree, and starting afresh keeps memory bounded.
constexpr std::size_t kMaxCachedPaths = 4096;

constexpr auto kLookAgain = std::chrono::seconds(1);

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
  const bool new_call = new_call_;
  new_call_ = false;
  if (new_call && state_ == State::kFile && db_.is_copy() && StampOf(location_.file) != source_) {
    state_ = State::kClosed;  // the same file keeps its epoch: key ids stay valid
  }
  if (state_ == State::kClosed || (state_ == State::kUnusable && new_call)) Open(nullptr, std::string());
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
  if (!outcome.exposed.empty() && !exposed_reported_) {
    Report(outcome.exposed);
    exposed_reported_ = true;
  }
  switch (outcome.state) {
    case OpenState::kFile:
      if (before != State::kClosed || outcome.identity != identity_) NewEpoch();
      identity_ = outcome.identity;
      source_ = outcome.source;
      state_ = State::kFile;
      if (kind_ == HiveKind::kCurrentUser && !db_.read_only()) MoveOldClassesStore(location_, db_);
      if (moves_ == nullptr) MapMoves();
      moves_seen_ = outcome.moves;
      next_look_ = std::chrono::steady_clock::now() + kLookAgain;
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
  if (state_ != State::kFile || db_.in_transaction()) return;
  const auto now = std::chrono::steady_clock::now();
  if (moves_ != nullptr && __atomic_load_n(moves_, __ATOMIC_ACQUIRE) == moves_seen_ && now < next_look_) return;
  next_look_ = now + kLookAgain;
  struct stat info {};
  if (stat(location_.file.c_str(), &info) == 0 && FileIdentity{info.st_dev, info.st_ino} == identity_) {
    if (moves_ != nullptr) moves_seen_ = __atomic_load_n(moves_, __ATOMIC_ACQUIRE);
    return;
  }
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

void Hive::MapMoves() noexcept {
  const int fd = open((location_.file + ".lock").c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return;
  struct stat info {};
  if (fstat(fd, &info) == 0 && info.st_size >= static_cast<off_t>(sizeof(std::uint64_t))) {
    void* mapped = mmap(nullptr, sizeof(std::uint64_t), PROT_READ, MAP_SHARED, fd, 0);
    if (mapped != MAP_FAILED) moves_ = static_cast<const std::uint64_t*>(mapped);
  }
  close(fd);
}

void Hive::UnmapMoves() noexcept {
  if (moves_ != nullptr) munmap(const_cast<std::uint64_t*>(moves_), sizeof(std::uint64_t));
  moves_ = nullptr;
}

void Hive::Close(bool reread_location) noexcept {
  db_.Close();
  state_ = State::kClosed;
  if (reread_location) {
    UnmapMoves();
    located_ = false;
    reported_ = false;
    exposed_reported_ = false;
    NewEpoch();
  }
}

void Hive::Abandon() noexcept {
  UnmapMoves();  // the child's copy; the parent keeps its own
  db_.Abandon();
  state_ = State::kClosed;
}

}  // namespace cadtools::registry::store

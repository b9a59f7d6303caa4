// Store folders from the environment, and creating them.
#include "registry/store/locations.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

namespace cadtools::registry::store {

namespace {

std::string Env(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string HomeFolder() {
  std::string home = Env("HOME");
  if (!home.empty()) return home;
  const passwd* entry = getpwuid(getuid());
  return entry != nullptr && entry->pw_dir != nullptr ? std::string(entry->pw_dir) : std::string();
}

std::string UserFolder() {
  std::string folder = Env("CADTOOLS_REGISTRY_DIR");
  if (!folder.empty()) return folder;
  // XDG asks to ignore a relative XDG_CONFIG_HOME.
  const std::string config = Env("XDG_CONFIG_HOME");
  if (!config.empty() && config.front() == '/') return config + "/cadtools";
  const std::string home = HomeFolder();
  return home.empty() ? std::string() : home + "/.config/cadtools";
}

// The file of each hive, in the order of HiveKind; its companions and the
// files put aside start with the same name.
constexpr const char* kStoreFiles[] = {"classes.db", "user.db", "machine.db", "users.db"};

// Whether the folder holds nothing but store files.
bool HoldsOnlyStores(const StoreLocation& where) {
  DIR* folder = opendir(where.folder.c_str());
  if (folder == nullptr) return false;
  bool only = true;
  while (const dirent* entry = readdir(folder)) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    only = std::any_of(std::begin(kStoreFiles), std::end(kStoreFiles),
                       [&](const char* file) { return name.starts_with(file); });
    if (!only) break;
  }
  closedir(folder);
  return only;
}

}  // namespace

StoreLocation LocateHive(HiveKind hive) {
  StoreLocation where;
  const char* file = kStoreFiles[static_cast<int>(hive)];
  switch (hive) {
    case HiveKind::kLocalMachine:
      where.folder = Env("CADTOOLS_MACHINE_REGISTRY_DIR");
      if (where.folder.empty()) where.folder = "/etc/cadtools";
      where.shared = true;
      where.folder_mode = 0755;
      where.file_mode = 0644;
      break;
    case HiveKind::kClassesRoot:
    case HiveKind::kUsers:
    case HiveKind::kCurrentUser:
      where.folder = UserFolder();
      break;
  }
  while (where.folder.size() > 1 && where.folder.back() == '/') where.folder.pop_back();
  if (!where.folder.empty()) where.file = where.folder + "/" + file;
  return where;
}

bool MakeFolders(const std::string& folder, mode_t mode, std::string& reason) {
  struct stat info {};
  if (stat(folder.c_str(), &info) == 0) {
    if (S_ISDIR(info.st_mode)) return true;
    reason = folder + " is not a folder";
    return false;
  }
  const std::size_t slash = folder.find_last_of('/');
  if (slash != std::string::npos && slash > 0 && !MakeFolders(folder.substr(0, slash), mode, reason)) return false;
  // The umask may take bits off a new folder, even the owner's own (0277
  // leaves 0500, in which no store can be made); chmod is not subject to it.
  if (mkdir(folder.c_str(), mode) == 0) {
    chmod(folder.c_str(), mode);
    return true;
  }
  if (errno == EEXIST) return true;
  reason = "cannot create " + folder + ": " + ErrnoText(errno);
  return false;
}

std::string MakePrivate(const StoreLocation& where, bool writable) {
  if (where.shared) return {};
  constexpr mode_t kOthers = S_IRWXG | S_IRWXO;
  struct stat info {};
  // By path, not through a descriptor of our own: closing a descriptor of
  // the database would drop the locks an SQLite connection of this process
  // may hold on it. lstat leaves symbolic links alone; a file swapped for a
  // link after it can only lose access of others on a file of ours.
  for (const char* suffix : {"", "-wal", "-shm", "-journal", ".lock"}) {
    const std::string file = where.file + suffix;
    if (lstat(file.c_str(), &info) == 0 && S_ISREG(info.st_mode) && (info.st_mode & kOthers) != 0 &&
        info.st_uid == geteuid()) {
      chmod(file.c_str(), info.st_mode & S_IRWXU);
    }
  }
  if (stat(where.folder.c_str(), &info) != 0 || (info.st_mode & kOthers) == 0) return {};
  // Only a folder of the stores' own: one that --store or the environment
  // names may be a project folder, a home folder or /tmp, whose mode is
  // not ours to change.
  const char* left = info.st_uid != geteuid()  ? "belongs to another user"
                     : !HoldsOnlyStores(where) ? "holds other files"
                                               : nullptr;
  if (left == nullptr) {
    chmod(where.folder.c_str(), info.st_mode & S_IRWXU);
    return {};
  }
  if (!writable) return {};  // nothing of ours goes into it
  char mode[8];
  std::snprintf(mode, sizeof mode, "%04o", static_cast<unsigned>(info.st_mode & 07777));
  return "settings store folder " + where.folder + " is open to other users (mode " + mode + ") but " + left +
         ", so it is left as it is";
}

std::string ErrnoText(int error) {
  char buffer[256] = {};
  // GNU strerror_r returns the text, which may or may not be in buffer.
  return std::string(strerror_r(error, buffer, sizeof buffer));
}

}  // namespace cadtools::registry::store

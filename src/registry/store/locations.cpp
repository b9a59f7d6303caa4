// Store folders from the environment, and creating them.
#include "registry/store/locations.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

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

}  // namespace

StoreLocation LocateHive(HiveKind hive) {
  StoreLocation where;
  const char* file = "user.db";
  switch (hive) {
    case HiveKind::kLocalMachine:
      where.folder = Env("CADTOOLS_MACHINE_REGISTRY_DIR");
      if (where.folder.empty()) where.folder = "/etc/cadtools";
      where.shared = true;
      where.folder_mode = 0755;
      where.file_mode = 0644;
      file = "machine.db";
      break;
    case HiveKind::kClassesRoot:
      where.folder = UserFolder();
      file = "classes.db";
      break;
    case HiveKind::kUsers:
      where.folder = UserFolder();
      file = "users.db";
      break;
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
  if (mkdir(folder.c_str(), mode) == 0 || errno == EEXIST) return true;
  reason = "cannot create " + folder + ": " + ErrnoText(errno);
  return false;
}

std::string ErrnoText(int error) {
  char buffer[256] = {};
  // GNU strerror_r returns the text, which may or may not be in buffer.
  return std::string(strerror_r(error, buffer, sizeof buffer));
}

}  // namespace cadtools::registry::store

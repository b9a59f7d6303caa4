// Where each hive's store file lives, and the file modes it gets.
//
// Settings belong to one user, so the current user's folder is created
// 0700 and its files 0600, whatever the umask; SQLite gives the -wal and
// -shm files the mode of the database file, so they stay private too.
// Store files and a folder of the stores alone that already exist lose any
// access of group and others (0755 becomes 0700, 0644 becomes 0600); their
// owner's own bits stay, so a folder its owner made read-only stays
// read-only. The machine store holds
// defaults that every user reads (CopyLocalMachineToCurrentUser copies them
// into each user's hive), so it is created readable by all: 0755 and 0644,
// and an administrator writes it.
//
//   $CADTOOLS_REGISTRY_DIR          else $XDG_CONFIG_HOME/cadtools, else ~/.config/cadtools
//     user.db      HKEY_CURRENT_USER
//     classes.db   HKEY_CLASSES_ROOT of earlier versions (see classes_move.h)
//     users.db     HKEY_USERS
//   $CADTOOLS_MACHINE_REGISTRY_DIR  else /etc/cadtools
//     machine.db   HKEY_LOCAL_MACHINE
#pragma once

#include <sys/types.h>

#include <string>

namespace cadtools::registry::store {

// The hives, in the order of their predefined handles (0x80000000 + index).
enum class HiveKind { kClassesRoot, kCurrentUser, kLocalMachine, kUsers };
inline constexpr int kHiveCount = 4;

struct StoreLocation {
  std::string folder;  // empty when no folder can be named (no home directory)
  std::string file;    // folder + "/" + the hive's file name
  bool shared = false; // readable by every user (the machine store)
  mode_t folder_mode = 0700;
  mode_t file_mode = 0600;
};

// Reads the environment each time it is called.
StoreLocation LocateHive(HiveKind hive);

// Creates folder and its missing parents with mode, whatever the umask. On
// failure returns false and says why in reason.
bool MakeFolders(const std::string& folder, mode_t mode, std::string& reason);

// Takes group and other access off the user's store files and folder that
// this user owns, the folder only when it holds nothing but stores.
// Returns, for a report, a folder that others may use and that stays so
// while we write our settings into it; empty for the machine store, which
// is shared on purpose.
//   "settings store folder /srv/s is open to other users (mode 0777) but belongs to another user,
//    so it is left as it is"
std::string MakePrivate(const StoreLocation& where, bool writable);

// "No such file or directory" and the like, for messages.
std::string ErrnoText(int error);

}  // namespace cadtools::registry::store

// HKEY_CLASSES_ROOT and HKEY_USERS as Windows shows them.
//
// HKEY_CLASSES_ROOT has no store of its own: it is the merged view of
// HKEY_CURRENT_USER\Software\Classes and HKEY_LOCAL_MACHINE\Software\Classes
// that programs registering file types expect.
//   - A key below it is the user's when the user has one of that path, else
//     the machine's; its values are that key's.
//   - Its subkeys are those of both, each name once, the user's spelling
//     first; RegQueryInfoKeyW counts them so.
//   - A new key goes below the deepest existing key of its path: the user's
//     when both go equally deep, the machine's when nothing of the path
//     exists yet (so a new top-level key needs the machine store, as on
//     Windows it needs an administrator).
//   - Deleting a key deletes the one the path leads to.
// A handle opened below it is a handle of the user's or the machine's key,
// marked so that opening, creating and listing below it go through the view.
//
// HKEY_USERS keeps the other users' keys in its own store; the current
// user's subtree is HKEY_CURRENT_USER, under the SID "S-1-22-1-<uid>" (the
// Unix user SIDs that Samba and NFSv4 use), which HKEY_USERS lists among its
// subkeys:
//   RegOpenKeyExW(HKEY_USERS, u"S-1-22-1-1000\\Software", ...)   // HKCU\Software for uid 1000
#pragma once

#include "registry/store/store.h"

#include <span>
#include <string>
#include <vector>

namespace cadtools::registry::store {

inline constexpr int kClassesHive = 0;
inline constexpr int kUserHive = 1;
inline constexpr int kMachineHive = 2;
inline constexpr int kUsersHive = 3;

// The folded path of Software\Classes, and its two names as written.
const std::string& ClassesPath();
std::span<const Units> ClassesParts();

// "S-1-22-1-<uid>" of this process's user.
const std::u16string& OwnSid();

// The handle HKEY_CLASSES_ROOT stands for in this call: the user's
// Software\Classes when it exists, else the machine's, else a handle that
// is `missing` (reads find nothing, writes of values are refused).
Handle ClassesRoot(Session& session);

// The key a folded path (from ClassesPath on) leads to in the view: the
// user's, else the machine's. hive is set to where it was found.
Lookup FindClassesKey(Session& session, const std::string& path, int& hive);

// Where a new key of the view goes. depth_user and depth_machine are how
// many components of the caller's path exist in each store (-1: not even
// the key the path starts from). Returns the hive.
int HiveForNewClassesKey(int depth_user, int depth_machine, bool below_root) noexcept;

// HKEY_USERS\<own SID>: drops the SID from parts and returns the user's
// root key, when parts start with it below HKEY_USERS; else null.
Handle* OwnSubtree(Session& session, HKEY key, std::vector<Units>& parts);

// A subkey as RegEnumKeyExW lists it.
struct Child {
  std::string name, folded, class_name;  // big-endian UTF-16
  std::int64_t written = 0;
};

// Whether the subkeys of a key are a merged list: those of HKEY_USERS
// itself and of the keys of HKEY_CLASSES_ROOT.
bool HasMergedChildren(const Handle& handle) noexcept;
// That list, in Windows' order; ERROR_SUCCESS or kStoreFailed.
LONG MergedChildren(Session& session, const Handle& handle, std::vector<Child>& children);

}  // namespace cadtools::registry::store

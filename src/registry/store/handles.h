// Open keys of this process: what an HKEY off Windows stands for.
//
// An HKEY is an opaque number from a process-wide table. Numbers are never
// given out twice, so a key closed twice, or used after closing, answers
// ERROR_INVALID_HANDLE as on Windows instead of reaching another key. The
// predefined hives (0x80000000 and up) are not in the table; like Windows,
// only the low 32 bits of such a value count, so HKEY_CURRENT_USER written
// as (HKEY)0x80000001 on a 64-bit build (zero-extended) is the same hive.
//
// A handle names its key by id and keeps the key's folded path. The id may
// come from the path cache without a look-in at the database (that keeps a
// typed-value read to one SQLite statement); such a handle is not yet
// verified. When a call then finds no key with that id, a verified handle's
// key was deleted meanwhile (ERROR_KEY_DELETED), while an unverified one is
// looked up once more by its path, since another process may have deleted
// and re-created the key before we opened it; one from RegCreateKeyExW
// creates its key again if need be, as that call would have.
#pragma once

#include <cadtools/compat/win_registry_types.h>

#include <cstdint>
#include <string>
#include <unordered_map>

namespace cadtools::registry::store {

// What RegCreateKeyExW gives the keys it creates: REG_OPTION_VOLATILE, and
// the class name (big-endian UTF-16, as names are stored).
struct KeyOptions {
  bool is_volatile = false;
  std::string class_name;
};

struct Handle {
  int hive = 0;               // index of the hive, in predefined-handle order
  std::int64_t id = 0;        // the key's id in the hive's database
  std::uint64_t epoch = 0;    // which database of the hive the id belongs to
  REGSAM access = 0;          // rights granted, generic rights mapped
  bool verified = false;      // the id was seen in the database since the handle was opened
  std::string path;           // folded path below the hive; empty for the root key
  std::u16string recreate;    // for RegCreateKeyExW below a hive: the subkey as given, to create it again
  KeyOptions recreate_options;
  bool classes = false;       // a key seen through HKEY_CLASSES_ROOT (see views.h)
  bool missing = false;       // HKEY_CLASSES_ROOT while no store has Software\Classes

  bool is_root() const noexcept { return path.empty(); }
};

// The hive a predefined handle names (0..3), or -1 for any other value.
int PredefinedHive(HKEY key) noexcept;
// Any of the predefined values Windows reserves (0x80000000 to 0x800000FF
// in the low 32 bits); closing one succeeds and does nothing.
bool IsPredefined(HKEY key) noexcept;
HKEY PredefinedHandle(int hive) noexcept;

// Maps GENERIC_* and MAXIMUM_ALLOWED to key rights, as Windows does for
// keys, and drops the WOW64 view flags, which a store without views ignores.
REGSAM MapAccess(REGSAM requested, bool read_only) noexcept;
// Rights that change the registry.
inline constexpr REGSAM kWriteRights = KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_CREATE_LINK | DELETE |
                                       0x00040000 /* WRITE_DAC */ | 0x00080000 /* WRITE_OWNER */;

class HandleTable {
 public:
  HKEY Add(Handle handle);
  // Null when the value is not an open handle.
  Handle* Find(HKEY key) noexcept;
  bool Remove(HKEY key) noexcept;
  void Clear() noexcept { open_.clear(); }

  template <typename Fn>
  void ForEach(Fn&& fn) {
    for (auto& entry : open_) fn(entry.second);
  }

 private:
  std::unordered_map<std::uintptr_t, Handle> open_;
  // Multiples of four, as Windows hands out, far below the predefined range.
  std::uintptr_t next_ = 0x10000;
};

}  // namespace cadtools::registry::store

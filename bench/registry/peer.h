// What a user would write instead of a typed registry value for the same
// work: SQLite used directly off Windows (one prepared select or upsert on
// a key/value table, with the store's durability settings), the registry
// API itself on Windows. One implementation per platform.
#pragma once

#include <cadtools/compat/win_types.h>

namespace bench::peer {

// The peer's benchmark names in the ratio table, for a read, a write and both.
struct Names {
  const char* read;
  const char* write;
  const char* both;
};
Names RowNames();

// Reads the DWORD named `name` below `path`, or `fallback` when missing.
DWORD Read(const WCHAR* path, const WCHAR* name, DWORD fallback);

// Stores `value` as the DWORD named `name` below `path`.
void Write(const WCHAR* path, const WCHAR* name, DWORD value);

}  // namespace bench::peer

// A WAL store read where SQLite cannot read it in place.
//
// Reading a WAL database needs its -shm file, and SQLite can only make one
// in a folder it may write: a store in a read-only folder that its writer
// closed cleanly (so no -shm is left) cannot be opened, and SQLite's
// immutable mode would miss what is still in a -wal. So the file and its
// -wal are copied into a private temporary folder, SQLite applies the WAL
// there, and the pages come back as one image that the caller keeps in
// memory; the copy is gone when this returns.
//
//   StoreImage image;
//   std::string why;
//   if (CopyStoreImage("/srv/settings/user.db", image, why) == SQLITE_OK) ...  // image.size: 32768
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>

namespace cadtools::registry::store {

struct StoreImage {
  struct Free {
    void operator()(unsigned char* image) const noexcept { sqlite3_free(image); }
  };
  std::unique_ptr<unsigned char, Free> bytes;  // from sqlite3_malloc, as sqlite3_deserialize takes it
  sqlite3_int64 size = 0;
};

// The image of file with its -wal applied, marked as a database without a
// WAL so that an in-memory connection can read it. Returns an SQLite result
// code (SQLITE_NOTADB and the like for a damaged file, SQLITE_CANTOPEN with
// why for a copy that cannot be made).
int CopyStoreImage(const std::string& file, StoreImage& image, std::string& why);

}  // namespace cadtools::registry::store

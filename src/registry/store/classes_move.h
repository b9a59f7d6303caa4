// Earlier versions kept HKEY_CLASSES_ROOT in a store of its own,
// classes.db in the user's store folder. HKEY_CLASSES_ROOT is now the
// merged view of the user's and the machine's Software\Classes, so that
// file's keys move into the user's store, below Software\Classes, when the
// user's store is first opened for writing: keys and values the user's
// store has already win, and the file stays as classes.db.moved-<time>.
//
//   classes.db:  .cad\shell @="open"
//   user.db:     Software\Classes\.cad\shell @="open"   (HKEY_CLASSES_ROOT\.cad\shell)
#pragma once

#include "registry/store/database.h"
#include "registry/store/locations.h"

namespace cadtools::registry::store {

// Moves the keys of the classes store beside `user` into db, the user's
// store open for writing. A classes store that cannot be read (damaged,
// not ours) stays where it is; so does everything when db is busy.
void MoveOldClassesStore(const StoreLocation& user, Database& db);

}  // namespace cadtools::registry::store

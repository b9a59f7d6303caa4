// What the database dialog facades share: setting up a new dialog, reading
// its result, and walking the host's maps.
#pragma once

#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/cstring.h>

namespace cadtools::bridge::detail {

// Sets the paths, skin and language of a newly made database dialog, then
// calls Initialize(), in the order the dialogs expect them.
void SetUp(const Object& dialog, const CString& sDbPath, const CString& sSystemPath, const CString& sCommonPath,
           const CString& sSymbolPath, const CString& sSkinName, int languageId);

// Whether a ShowDialog() result is DialogResult.OK (1).
bool DialogResultIsOk(const Value& result);

// f(key, value) for each pair of the map in its own iteration order;
// nothing for a null or empty map.
template <class F>
void ForEachPair(const CMapStringToString* map, F&& f) {
  if (map == nullptr || map->IsEmpty()) return;
  CString key;
  CString value;
  for (POSITION pos = map->GetStartPosition(); pos != nullptr;) {
    map->GetNextAssoc(pos, key, value);
    f(key, value);
  }
}

}  // namespace cadtools::bridge::detail

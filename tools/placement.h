// `cadtools placement`: the dialog placements the host has stored below
// its root in "Settings\WindowPos" (see cadtools/dialog/base_dialog.h).
//
//   cadtools placement list
//     HKEY_CURRENT_USER\Software\Quenby\Host\Version V8R1\Settings\WindowPos
//       IDD1301920x1080Host  dialog 130, display 1920x1080, module Host: 10,20,410,320 (400x300)
//       IDD1301920x1080HostMaximized  dialog 130, display 1920x1080, module Host: maximised
//   cadtools placement --app Draw clear
//
// --app, --root and --store work as for `cadtools settings`.
#pragma once

#include "tour_steps.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>

#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace cadtools::cli {

// The words after `placement`. Throws UsageError for bad arguments and
// CommandFailed when the registry refuses.
void RunPlacement(std::span<const std::string_view> words, std::ostream& out);

// What a value name "IDD<id><width>x<height><module>[Maximized]" says.
struct PlacementName {
  long long id = 0;
  int width = 0;
  int height = 0;
  WString module;
  bool marker = false;  // the "Maximized" value
};

// The parts of a placement value's name, or nullopt for other names.
// Number and width run together in the name, so the split is a guess: the
// widest width from 320 to 16384 pixels without a leading zero wins
// ("1301920" is dialog 130 at width 1920, not 1301 at 920). A name
// written for a dialog number whose digits end like a width can decode
// wrongly; the stored value is not affected.
std::optional<PlacementName> DecodePlacementName(WStringView name);

// The text after the name in `placement list`.
std::string DescribePlacement(WStringView name, DWORD type, std::span<const BYTE> data);

// The tour's steps through a dialog's placement, below the root in force.
void PlacementWalk(Tour& t);

}  // namespace cadtools::cli

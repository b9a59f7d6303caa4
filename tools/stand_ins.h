// The demonstration material that comes with the build tree: the stand-ins
// for the host's managed components and a small symbol database, beside
// the program. An installed cadtools has neither.
#pragma once

#include <filesystem>
#include <initializer_list>

namespace cadtools::cli {

// Loads the named stand-in assemblies from beside the program into the
// running runtime; false when one of them is not there.
bool LoadStandIns(std::initializer_list<const char*> files);

// The demonstration symbol database beside the program.
std::filesystem::path DemoSymbolDatabase();

}  // namespace cadtools::cli

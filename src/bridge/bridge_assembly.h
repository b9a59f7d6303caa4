// Where the bridge's own managed assembly is: beside the module that holds
// the library (the shared library, or the program it is linked into), never
// relative to the working directory.
#pragma once

#include <cadtools/compat/cstring.h>

#include <filesystem>
#include <optional>
#include <vector>

namespace cadtools::bridge::detail {

inline constexpr const char* kBridgeAssemblyName = "CadTools.Bridge.dll";

// The folder of the module this code is in.
std::filesystem::path ModuleFolder();

// The places searched, in order: the module's folder, its cadtools/
// subfolder, and the installed library folder next to a bin/ folder.
std::vector<std::filesystem::path> BridgeAssemblyCandidates(const std::filesystem::path& module_folder);

// The first candidate that exists; otherwise nothing, and *searched lists
// the places looked at.
std::optional<std::filesystem::path> FindBridgeAssembly(CString* searched);

}  // namespace cadtools::bridge::detail

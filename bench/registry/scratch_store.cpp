#include "registry/scratch_store.h"

#include <cadtools/registry/registry_api.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace bench {
namespace {

const WCHAR kScratchKey[] = CADTOOLS_WIDE("Software\\Quenby\\cadtools-bench");

// Removes the scratch store when the benchmark ends.
struct Cleanup {
  ~Cleanup() {
#if defined(_WIN32)
    cadtools::registry::SHDeleteKeyW(HKEY_CURRENT_USER, kScratchKey);
#else
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::remove_all(folder, ignored);
#endif
  }
  std::string folder;
};

Cleanup& State() {
  static Cleanup cleanup;
  return cleanup;
}

}  // namespace

const WCHAR* BenchRootText() { return CADTOOLS_WIDE("Software\\Quenby\\cadtools-bench\\Version V8R1\\"); }

const std::string& ScratchFolder() { return State().folder; }

void UseScratchStore() {
#if defined(_WIN32)
  static const bool once = (State(), cadtools::registry::SHDeleteKeyW(HKEY_CURRENT_USER, kScratchKey), true);
  static_cast<void>(once);
#else
  Cleanup& state = State();
  if (!state.folder.empty()) return;
  std::string pattern = (std::filesystem::temp_directory_path() / "cadtools-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) std::abort();
  state.folder = pattern;
  setenv("CADTOOLS_REGISTRY_DIR", (state.folder + "/user").c_str(), 1);
  setenv("CADTOOLS_MACHINE_REGISTRY_DIR", (state.folder + "/machine").c_str(), 1);
  cadtools::registry::ReloadStoreLocations();
#endif
}

}  // namespace bench

#include "bridge/bridge_assembly.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <system_error>

#ifndef CADTOOLS_INSTALL_LIBDIR
#define CADTOOLS_INSTALL_LIBDIR "lib"
#endif

namespace cadtools::bridge::detail {

namespace fs = std::filesystem;

fs::path ModuleFolder() {
#if defined(_WIN32)
  HMODULE module = nullptr;
  const auto* address = reinterpret_cast<LPCWSTR>(&ModuleFolder);
  if (!::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            address, &module)) {
    return {};
  }
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD n = ::GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (n == 0) return {};
    if (n < path.size()) {
      path.resize(n);
      break;
    }
    path.resize(path.size() * 2);
  }
  return fs::path(path).parent_path();
#else
  std::error_code error;
  Dl_info info{};
  if (::dladdr(reinterpret_cast<void*>(&ModuleFolder), &info) != 0 && info.dli_fname != nullptr) {
    const fs::path module(info.dli_fname);
    // The program itself may be named as it was started; the kernel knows
    // its real place.
    if (module.is_absolute()) return fs::weakly_canonical(module, error).parent_path();
  }
  const fs::path exe = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::path() : exe.parent_path();
#endif
}

namespace {
// A path for a message.
CString PathText(const fs::path& p) {
#if defined(_WIN32)
  const std::wstring w = p.wstring();
  return CString(w.c_str(), static_cast<int>(w.size()));
#else
  return FromUtf8(p.string());
#endif
}
}  // namespace

std::vector<fs::path> BridgeAssemblyCandidates(const fs::path& module_folder) {
  const fs::path name(kBridgeAssemblyName);
  return {module_folder / name, module_folder / "cadtools" / name,
          module_folder.parent_path() / CADTOOLS_INSTALL_LIBDIR / "cadtools" / name};
}

std::optional<fs::path> FindBridgeAssembly(CString* searched) {
  std::error_code error;
  CString places;
  for (const fs::path& candidate : BridgeAssemblyCandidates(ModuleFolder())) {
    if (fs::is_regular_file(candidate, error)) return candidate;
    if (!places.IsEmpty()) places += CADTOOLS_WIDE(", ");
    places += PathText(candidate);
  }
  if (searched != nullptr) *searched = places;
  return std::nullopt;
}

}  // namespace cadtools::bridge::detail

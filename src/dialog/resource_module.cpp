// The resource module's name.
#include <cadtools/dialog/resource_module.h>

#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <filesystem>
#include <system_error>
#endif

namespace cadtools::ui {

namespace {

// The buffer sizes, terminating NUL included, that the host's placements
// were always named with.
constexpr int kMaxDirectory = 260;
constexpr int kMaxFileName = 256;
constexpr int kMaxExtension = 256;

bool IsSeparator(WCHAR c) noexcept { return c == '\\' || c == '/'; }

#if defined(_WIN32)

HMODULE& ChosenModule() noexcept {
  static HMODULE module = nullptr;
  return module;
}

CString ModulePath() {
  // A path longer than this would not split into the name buffers anyway.
  WCHAR path[1024];
  const HMODULE module = GetResourceModule();
  const DWORD n = ::GetModuleFileNameW(module, path, 1024);
  if (n == 0 || n >= 1024) return CString();
  return CString(path, static_cast<int>(n));
}

#else

CString& ChosenName() {
  static CString name;
  return name;
}

CString ProgramPath() {
  std::error_code error;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return CString();
  // Bytes that are not UTF-8 are taken as Latin-1.
  const std::string bytes = exe.string();
  std::u16string units;
  try {
    units = exe.u16string();
  } catch (...) {
    units.clear();
    for (const char c : bytes) units.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
  }
  return CString(units.c_str(), static_cast<int>(units.size()));
}

#endif

}  // namespace

#if defined(_WIN32)
void SetResourceModule(HMODULE module) noexcept { ChosenModule() = module; }

HMODULE GetResourceModule() noexcept { return ChosenModule() ? ChosenModule() : ::GetModuleHandleW(nullptr); }

CString GetResourceModuleName() { return ModuleBaseName(ModulePath()); }
#else
void SetResourceModuleName(const CString& name) { ChosenName() = name; }

CString GetResourceModuleName() {
  return ChosenName().IsEmpty() ? ModuleBaseName(ProgramPath()) : ChosenName();
}
#endif

CString ModuleBaseName(const CString& path) {
  const int length = path.GetLength();
  const int start = length >= 2 && path[1] == ':' ? 2 : 0;
  const int directoryStart = start;
  int fileStart = start;
  for (int i = start; i < length; ++i) {
    if (IsSeparator(path[i])) fileStart = i + 1;
  }
  int dot = length;
  for (int i = length - 1; i >= fileStart; --i) {
    if (path[i] == '.') {
      dot = i;
      break;
    }
  }
  if (fileStart - directoryStart >= kMaxDirectory || dot - fileStart >= kMaxFileName ||
      length - dot >= kMaxExtension) {
    return CString();
  }
  return path.Mid(fileStart, dot - fileStart);
}

}  // namespace cadtools::ui

// The application name of the default registry root.
#include <cadtools/registry/application_name.h>

#include <string>

#if defined(_WIN32)
#include <windows.h>
#else
#include <filesystem>
#include <system_error>
#endif

namespace cadtools {

namespace {

// The name the host set, or nothing yet. A function-local object, so that
// settings read while other files' statics start up find it constructed.
CString& SetName() {
  static CString name;
  return name;
}

// The running program's file path, in UTF-16.
std::basic_string<WCHAR> ProgramPath() {
#if defined(_WIN32)
  std::basic_string<WCHAR> path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD n = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (n == 0) return {};
    if (n < path.size()) {
      path.resize(n);
      return path;
    }
    path.resize(path.size() * 2);  // cut short: try again with more room
  }
#else
  std::error_code error;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  try {
    return exe.u16string();
  } catch (...) {  // not UTF-8: keep the bytes as Latin-1
    const std::string bytes = exe.string();
    std::basic_string<WCHAR> out;
    for (const char c : bytes) out.push_back(static_cast<WCHAR>(static_cast<unsigned char>(c)));
    return out;
  }
#endif
}

// "C:\Programs\Host.exe" -> "Host"; "/opt/host/bin/host" -> "host".
CString BaseNameWithoutExtension(const std::basic_string<WCHAR>& path) {
#if defined(_WIN32)
  const auto slash = path.find_last_of(L"\\/");
#else
  const auto slash = path.find_last_of(u'/');
#endif
  std::basic_string<WCHAR> name = slash == std::basic_string<WCHAR>::npos ? path : path.substr(slash + 1);
  const auto dot = name.find_last_of(static_cast<WCHAR>('.'));
  if (dot != std::basic_string<WCHAR>::npos && dot > 0) name.resize(dot);
  return CString(name.c_str(), static_cast<int>(name.size()));
}

}  // namespace

void SetApplicationName(const CString& name) { SetName() = name; }

CString GetApplicationName() {
  if (!SetName().IsEmpty()) return SetName();
  return BaseNameWithoutExtension(ProgramPath());
}

}  // namespace cadtools

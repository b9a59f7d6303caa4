// Shared helpers of the registry tests: a scratch key of the test's own
// that is deleted again afterwards, so that tests never touch a real
// setting and runs under wine (one shared registry) do not see each other.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/registry/registry_api.h>

#include <string>

#if defined(_WIN32)
#include <process.h>
#include <sddl.h>
#else
#include <unistd.h>
#endif

namespace cadtools::testing {

// "Software\cadtools-tests\NAME-PID" below a hive, removed with everything
// below it when the object goes.
class ScratchKey {
 public:
  explicit ScratchKey(const char* name, HKEY hive = HKEY_CURRENT_USER) : hive_(hive) {
#if defined(_WIN32)
    const int pid = _getpid();
#else
    const int pid = static_cast<int>(getpid());
#endif
    const std::string path = std::string("Software\\cadtools-tests\\") + name + "-" + std::to_string(pid);
    path_.assign(path.begin(), path.end());
    cadtools::registry::SHDeleteKeyW(hive_, path_.c_str());
  }
  ScratchKey(const ScratchKey&) = delete;
  ScratchKey& operator=(const ScratchKey&) = delete;
  ~ScratchKey() { cadtools::registry::SHDeleteKeyW(hive_, path_.c_str()); }

  HKEY hive() const noexcept { return hive_; }
  // The path below the hive, without a trailing backslash.
  const WCHAR* path() const noexcept { return path_.c_str(); }
  // path() + "\" + rest.
  std::basic_string<WCHAR> Below(const std::basic_string<WCHAR>& rest) const {
    return path_ + static_cast<WCHAR>('\\') + rest;
  }

 private:
  HKEY hive_;
  std::basic_string<WCHAR> path_;
};

// The current user's SID, the name of its hive below HKEY_USERS.
inline std::basic_string<WCHAR> OwnSid() {
#if defined(_WIN32)
  HANDLE token = nullptr;
  BYTE buffer[256];
  DWORD length = 0;
  LPWSTR text = nullptr;
  std::basic_string<WCHAR> sid;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) &&
      GetTokenInformation(token, TokenUser, buffer, sizeof buffer, &length) &&
      ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(buffer)->User.Sid, &text)) {
    sid = text;
    LocalFree(text);
  }
  if (token != nullptr) CloseHandle(token);
  return sid;
#else
  const std::string sid = "S-1-22-1-" + std::to_string(getuid());
  return std::basic_string<WCHAR>(sid.begin(), sid.end());
#endif
}

}  // namespace cadtools::testing

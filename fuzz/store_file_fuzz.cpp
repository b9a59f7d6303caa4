// The settings store on arbitrary bytes as its file: whatever a crash, a
// disk or a user left in user.db, the registry calls never crash, hang or
// invoke undefined behaviour; they answer with Win32 codes, never report
// a size larger than the buffer they filled, and say at most once on
// stderr that the file is damaged. While nothing was reported, a value
// written reads back as written: the host relies on settings it saved.
//
// Input: the bytes of user.db. The seeds are real stores written by the
// library, cut short and with bits flipped.
#include <cadtools/registry/registry_api.h>

#include <fcntl.h>
#include <sanitizer/common_interface_defs.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>

namespace {

namespace fs = std::filesystem;
namespace reg = cadtools::registry;

std::string g_folder;   // the store's folder; its parent is removed at exit
int g_stderr = -1;      // the real stderr
int g_reports = -1;     // what the store writes to stderr during one input

std::string Captured() {
  struct stat info {};
  std::string text;
  if (fstat(g_reports, &info) == 0 && info.st_size > 0) {
    text.resize(static_cast<std::size_t>(info.st_size));
    if (pread(g_reports, text.data(), text.size(), 0) != info.st_size) text.clear();
  }
  return text;
}

// Puts stderr back and shows what the store said, so that a finding is
// readable.
void ShowReports() {
  dup2(g_stderr, STDERR_FILENO);
  const std::string text = Captured();
  if (!text.empty() && write(STDERR_FILENO, text.data(), text.size()) < 0) {
  }
}

void Require(bool ok) {
  if (ok) return;
  ShowReports();
  std::abort();
}

std::size_t Reports() {
  const std::string text = Captured();
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

bool IsAnswer(LONG result) {
  for (const LONG known : {ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_MORE_DATA,
                           ERROR_NO_MORE_ITEMS, ERROR_KEY_DELETED, ERROR_REGISTRY_IO_FAILED}) {
    if (result == known) return true;
  }
  return false;
}

LONG Checked(LONG result) {
  Require(IsAnswer(result));
  return result;
}

// Lists the values of key, and the subkeys of key and of each subkey.
void Walk(HKEY key, int depth) {
  DWORD keys = 0, values = 0, longest_name = 0, longest_data = 0;
  Checked(reg::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, &longest_name,
                                &longest_data, nullptr, nullptr));
  for (DWORD i = 0; i < 8; ++i) {
    WCHAR name[64];
    BYTE data[64];
    DWORD name_length = 64, size = sizeof data, type = 0;
    const LONG got = Checked(reg::RegEnumValueW(key, i, name, &name_length, nullptr, &type, data, &size));
    if (got == ERROR_NO_MORE_ITEMS) break;
    if (got == ERROR_SUCCESS) Require(name_length < 64 && size <= sizeof data);
  }
  for (DWORD i = 0; i < 8; ++i) {
    WCHAR name[64];
    DWORD name_length = 64;
    const LONG got =
        Checked(reg::RegEnumKeyExW(key, i, name, &name_length, nullptr, nullptr, nullptr, nullptr));
    if (got == ERROR_NO_MORE_ITEMS) break;
    if (got != ERROR_SUCCESS) continue;
    Require(name_length < 64);
    HKEY sub = nullptr;
    if (depth < 2 && Checked(reg::RegOpenKeyExW(key, name, 0, KEY_READ, &sub)) == ERROR_SUCCESS) {
      Walk(sub, depth + 1);
      reg::RegCloseKey(sub);
    }
  }
}

void WriteAndReadBack(const char16_t* path, const char16_t* name, const std::string& data) {
  HKEY key = nullptr;
  if (Checked(reg::RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                                   nullptr)) != ERROR_SUCCESS) {
    return;
  }
  const LONG set = Checked(reg::RegSetValueExW(key, name, 0, REG_BINARY,
                                               reinterpret_cast<const BYTE*>(data.data()),
                                               static_cast<DWORD>(data.size())));
  BYTE back[64];
  DWORD size = sizeof back, type = 0;
  const LONG got = Checked(reg::RegQueryValueExW(key, name, nullptr, &type, back, &size));
  if (set == ERROR_SUCCESS && Reports() == 0) {
    Require(got == ERROR_SUCCESS && type == REG_BINARY && size == data.size() &&
            std::equal(data.begin(), data.end(), back));
  }
  reg::RegCloseKey(key);
}

void Exercise() {
  Walk(HKEY_CURRENT_USER, 0);
  HKEY key = nullptr;
  if (Checked(reg::RegOpenKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\cli-round_trip", 0, KEY_READ,
                                 &key)) == ERROR_SUCCESS) {
    BYTE data[16];
    DWORD size = sizeof data;
    Checked(reg::RegQueryValueExW(key, u"c dword", nullptr, nullptr, data, &size));
    reg::RegCloseKey(key);
  }
  WriteAndReadBack(u"Software\\cadtools-tests\\cli-round_trip", u"c dword", "new");
  WriteAndReadBack(u"Software\\fuzz\\a\\b", u"v", std::string(40, 'v'));
  if (Checked(reg::RegOpenKeyExW(HKEY_CURRENT_USER, u"Software\\cadtools-tests\\cli-round_trip", 0, KEY_WRITE,
                                 &key)) == ERROR_SUCCESS) {
    Checked(reg::RegDeleteValueW(key, u"a text"));
    reg::RegCloseKey(key);
  }
  Checked(reg::SHDeleteKeyW(HKEY_CURRENT_USER, u"Software\\fuzz"));
  Walk(HKEY_CURRENT_USER, 0);
}

void RemoveFolder() {
  std::error_code ignored;
  fs::remove_all(fs::path(g_folder).parent_path(), ignored);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // tmpfs where there is one: the store syncs its file now and then.
  std::string pattern = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/store-fuzz-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) std::abort();
  g_folder = pattern + "/user";
  setenv("CADTOOLS_REGISTRY_DIR", g_folder.c_str(), 1);
  setenv("CADTOOLS_MACHINE_REGISTRY_DIR", (pattern + "/machine").c_str(), 1);
  g_stderr = dup(STDERR_FILENO);
  g_reports = memfd_create("store-reports", MFD_CLOEXEC);
  if (g_stderr < 0 || g_reports < 0) std::abort();
  __sanitizer_set_death_callback(ShowReports);
  std::atexit(RemoveFolder);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::error_code ignored;
  fs::remove_all(g_folder, ignored);
  fs::create_directory(g_folder, ignored);
  const int file = open((g_folder + "/user.db").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  Require(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size));
  close(file);

  Require(ftruncate(g_reports, 0) == 0 && lseek(g_reports, 0, SEEK_SET) == 0);
  dup2(g_reports, STDERR_FILENO);
  reg::ReloadStoreLocations();  // the store opens on the first call
  Exercise();
  reg::ReloadStoreLocations();  // and closes here
  Require(Reports() <= 1);
  dup2(g_stderr, STDERR_FILENO);
  return 0;
}

// Helpers of the robustness tests: child processes on a store folder of
// their own, the store file read with SQLite directly, and the log of
// acknowledged writes.
#pragma once

#include <cadtools/registry/registry_api.h>

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

extern char** environ;

namespace cadtools::testing {

namespace fs = std::filesystem;
namespace reg = cadtools::registry;
using namespace std::chrono_literals;

// A new folder beside the one CTest gives this program.
inline std::string TestFolder(const std::string& name) {
  static const std::string base = [] {
    const char* dir = std::getenv("CADTOOLS_REGISTRY_DIR");  // set by CTest
    return std::string(dir != nullptr ? dir : "/tmp/cadtools-robustness");
  }();
  fs::remove_all(base + "-" + name);
  return base + "-" + name;
}

// Points this process's store at folder (closing the one it used).
inline void UseStore(const std::string& folder) {
  setenv("CADTOOLS_REGISTRY_DIR", folder.c_str(), 1);
  reg::ReloadStoreLocations();
}

inline std::string ReadFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// The store child (store_child.cpp) on the store in folder, with stdout
// and stderr going to files. Killed if it is still running at the end.
class Child {
 public:
  Child(const std::string& folder, std::vector<std::string> args, const std::string& out = "/dev/null",
        const std::string& err = "/dev/null") {
    std::vector<std::string> env = {"CADTOOLS_REGISTRY_DIR=" + folder};
    for (char** e = environ; *e != nullptr; ++e) {
      if (std::string(*e).rfind("CADTOOLS_REGISTRY_DIR=", 0) != 0) env.emplace_back(*e);
    }
    args.insert(args.begin(), CADTOOLS_STORE_CHILD);
    std::vector<char*> argv, envp;
    for (std::string& a : args) argv.push_back(a.data());
    for (std::string& e : env) envp.push_back(e.data());
    argv.push_back(nullptr);
    envp.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), envp.data()) != 0) pid_ = -1;
    posix_spawn_file_actions_destroy(&actions);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { Kill(); }

  void Kill() {
    if (pid_ > 0) kill(pid_, SIGKILL);
    Wait(10s);
  }

  // The exit code; -1 when it died of a signal or did not end in time.
  int Wait(std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    for (int status = 0; pid_ > 0; std::this_thread::sleep_for(2ms)) {
      if (waitpid(pid_, &status, WNOHANG) == pid_) {
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
      }
      if (std::chrono::steady_clock::now() > deadline) kill(pid_, SIGKILL);
    }
    return -1;
  }

 private:
  pid_t pid_ = -1;
};

// The first column of the first row of sql on a store file, opened with
// SQLite directly, as text; SQLite's message when there is none.
inline std::string FirstColumn(const std::string& file, const char* sql) {
  sqlite3* db = nullptr;
  sqlite3_stmt* stmt = nullptr;
  std::string verdict = "cannot open";
  if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
    const bool row = sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) == SQLITE_OK && sqlite3_step(stmt) == SQLITE_ROW;
    verdict = row ? reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)) : sqlite3_errmsg(db);
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return verdict;
}

// PRAGMA integrity_check of a store file.
inline std::string IntegrityOf(const std::string& file) { return FirstColumn(file, "PRAGMA integrity_check"); }

// The "name data" lines of a log; a line cut short by a kill (no newline)
// does not count.
inline std::vector<std::pair<std::string, std::string>> Acknowledged(const std::string& log) {
  std::vector<std::pair<std::string, std::string>> writes;
  const std::string text = ReadFile(log);
  for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    const std::size_t space = text.find(' ', start);
    writes.emplace_back(text.substr(start, space - start), text.substr(space + 1, end - space - 1));
  }
  return writes;
}

// Writes name = data (REG_BINARY) below HKCU\key_path, creating the key.
inline LONG WriteValue(const std::string& key_path, const std::string& name, const std::string& data) {
  const std::u16string key_name(key_path.begin(), key_path.end()), value_name(name.begin(), name.end());
  HKEY key = nullptr;
  LONG result = reg::RegCreateKeyExW(HKEY_CURRENT_USER, key_name.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                                     nullptr);
  if (result == ERROR_SUCCESS) {
    result = reg::RegSetValueExW(key, value_name.c_str(), 0, REG_BINARY, reinterpret_cast<const BYTE*>(data.data()),
                                 static_cast<DWORD>(data.size()));
    reg::RegCloseKey(key);
  }
  return result;
}

// The data of a value as a typed value reads it; "<code>" on failure.
inline std::string ValueOf(const std::string& key_path, const std::string& name, HKEY hive = HKEY_CURRENT_USER) {
  const std::u16string key_name(key_path.begin(), key_path.end()), value_name(name.begin(), name.end());
  HKEY key = nullptr;
  char data[256];
  DWORD size = sizeof data;
  LONG result = reg::RegOpenKeyExW(hive, key_name.c_str(), 0, KEY_READ, &key);
  if (result == ERROR_SUCCESS) {
    result = reg::RegQueryValueExW(key, value_name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data), &size);
    reg::RegCloseKey(key);
  }
  return result == ERROR_SUCCESS ? std::string(data, size) : "<" + std::to_string(result) + ">";
}

// Permission bits of a path, as 0700 and the like; -1 when it is missing.
inline int ModeOf(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 ? static_cast<int>(info.st_mode & 07777) : -1;
}

// A folder below /tmp that every user can reach (the build tree may sit
// in a home folder others cannot enter), removed with its content at the
// end.
class OpenFolder {
 public:
  OpenFolder() {
    std::string pattern = "/tmp/cadtools-tests-XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) path_ = pattern;
    chmod(path_.c_str(), 0755);
  }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;
  ~OpenFolder() {
    std::error_code ignored;
    for (const auto& entry : fs::recursive_directory_iterator(path_, ignored)) {
      if (entry.is_directory(ignored)) chmod(entry.path().c_str(), 0700);  // one made read-only
    }
    fs::remove_all(path_, ignored);
  }
  const std::string& path() const noexcept { return path_; }

 private:
  std::string path_;
};

// The user a Forked process runs as: "nobody" when this process runs as
// root, which passes every permission check (so a folder is read-only
// only to someone else); else this user. Empty when root finds no nobody.
struct Identity {
  uid_t uid;
  gid_t gid;
  bool other;  // not this process's user
};
inline std::optional<Identity> ReaderIdentity() {
  if (geteuid() != 0) return Identity{geteuid(), getegid(), false};
  const passwd* nobody = getpwnam("nobody");
  if (nobody == nullptr) return std::nullopt;
  return Identity{nobody->pw_uid, nobody->pw_gid, true};
}

// A copy of this test process made by fork(), running body as `as` on
// the store in folder, with its stderr kept. The body says lines to the
// test (Say, read with Line) and may wait for it (Await, Resume); it uses
// no test macros, and the copy ends with _exit when the body returns.
class Forked {
 public:
  Forked(const Identity& as, const std::string& folder, const std::function<void(Forked&)>& body) {
    if (pipe(to_child_) != 0 || pipe(from_child_) != 0 || pipe(errors_) != 0) return;
    pid_ = fork();
    if (pid_ != 0) {
      close(to_child_[0]);
      close(from_child_[1]);
      close(errors_[1]);
      return;
    }
    close(to_child_[1]);
    close(from_child_[0]);
    close(errors_[0]);
    dup2(errors_[1], STDERR_FILENO);
    if (as.other && (setgroups(0, nullptr) != 0 || setgid(as.gid) != 0 || setuid(as.uid) != 0)) _exit(90);
    setenv("CADTOOLS_REGISTRY_DIR", folder.c_str(), 1);
    reg::ReloadStoreLocations();
    body(*this);
    _exit(0);
  }
  Forked(const Forked&) = delete;
  Forked& operator=(const Forked&) = delete;
  ~Forked() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      Wait();
    }
    for (int fd : {to_child_[1], from_child_[0], errors_[0]}) close(fd);
  }

  // In the copy.
  void Say(const std::string& line) {
    const std::string text = line + "\n";
    if (write(from_child_[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) _exit(91);
  }
  void Await() {
    char go = 0;
    if (read(to_child_[0], &go, 1) != 1) _exit(92);
  }

  // In the test: the next line said; empty when the copy ended first.
  std::string Line() {
    std::string line;
    for (char c = 0; read(from_child_[0], &c, 1) == 1 && c != '\n';) line += c;
    return line;
  }
  void Resume() {
    if (write(to_child_[1], "g", 1) != 1) ADD_FAILURE() << "the forked process is gone";
  }
  // The exit code (0: the body returned), then what went to stderr.
  int Wait() {
    int status = 0;
    if (pid_ <= 0 || waitpid(pid_, &status, 0) != pid_) return -1;
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  std::string Errors() {
    std::string text;
    char buffer[4096];
    for (ssize_t got; (got = read(errors_[0], buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(got));
    }
    return text;
  }

 private:
  pid_t pid_ = -1;
  int to_child_[2] = {-1, -1};
  int from_child_[2] = {-1, -1};
  int errors_[2] = {-1, -1};
};

}  // namespace cadtools::testing

// A process that uses the store the way the host does, for the robustness
// tests. Each write that returns ERROR_SUCCESS is acknowledged by a line
// "name data" appended to a log, so that the test knows what must survive.
//
//   store_child write LOG KEY PREFIX      PREFIX-0, PREFIX-1, ... until killed
//   store_child mix LOG KEY ID COUNT      own and shared values, reads, subtrees; exit 1 on a bad answer
//   store_child read KEY NAME             prints the result code (and the data)
//   store_child write-read KEY NAME DATA  prints the codes of a write and a read back
//   store_child delete KEY                prints the code of deleting the key
//   store_child import FILE               imports a .reg file; prints the result code
//   store_child import-cut FILE           the same, ending itself as soon as the first store committed
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/registry_api.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "registry/store/batch.h"

namespace {

namespace reg = cadtools::registry;

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

class Log {
 public:
  explicit Log(const char* path) : fd_(open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600)) {}
  ~Log() { close(fd_); }
  void Ack(const std::string& name, const std::string& data) const {
    const std::string line = name + " " + data + "\n";
    if (write(fd_, line.data(), line.size()) != static_cast<ssize_t>(line.size())) std::exit(3);
  }

 private:
  int fd_;
};

LONG Set(HKEY key, const std::string& name, const std::string& data) {
  return reg::RegSetValueExW(key, Wide(name).c_str(), 0, REG_BINARY, reinterpret_cast<const BYTE*>(data.data()),
                             static_cast<DWORD>(data.size()));
}

// The read of a typed value: open, query, close.
LONG Read(const std::string& key_path, const std::string& name, std::string& data) {
  HKEY key = nullptr;
  LONG result = reg::RegOpenKeyExW(HKEY_CURRENT_USER, Wide(key_path).c_str(), 0, KEY_READ, &key);
  if (result != ERROR_SUCCESS) return result;
  char buffer[256];
  DWORD size = sizeof buffer;
  result = reg::RegQueryValueExW(key, Wide(name).c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer), &size);
  if (result == ERROR_SUCCESS) data.assign(buffer, size);
  reg::RegCloseKey(key);
  return result;
}

HKEY CreateKey(const std::string& path) {
  HKEY key = nullptr;
  const LONG result = reg::RegCreateKeyExW(HKEY_CURRENT_USER, Wide(path).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                                           nullptr, &key, nullptr);
  if (result != ERROR_SUCCESS) std::exit(4);
  return key;
}

int WriteUntilKilled(const Log& log, const std::string& key_path, const std::string& prefix) {
  const HKEY key = CreateKey(key_path);
  for (long i = 0;; ++i) {
    const std::string name = prefix + "-" + std::to_string(i);
    const std::string data = name + ":" + std::string(static_cast<std::size_t>(i % 97), 'x');
    if (Set(key, name, data) == ERROR_SUCCESS) log.Ack(name, data);
  }
}

int Mix(const Log& log, const std::string& key_path, const std::string& id, long count) {
  const HKEY key = CreateKey(key_path);
  for (long i = 0; i < count; ++i) {
    const std::string data = id + ":" + std::to_string(i);
    const std::string own = "own" + id + "-" + std::to_string(i);
    const std::string shared = "shared" + std::to_string(i % 4);
    if (Set(key, own, data) != ERROR_SUCCESS || Set(key, shared, data) != ERROR_SUCCESS) return 1;
    log.Ack(own, data);
    log.Ack(shared, data);
    std::string seen;
    const LONG read = Read(key_path, "shared" + std::to_string((i + 1) % 4), seen);
    if (read != ERROR_FILE_NOT_FOUND && (read != ERROR_SUCCESS || seen.find(':') == std::string::npos)) return 1;
    if (i % 25 == 0) {  // a subtree made and deleted in the middle of it all
      const std::string tree = key_path + "\\tmp" + id;
      const HKEY leaf = CreateKey(tree + "\\a\\b");
      const LONG set = Set(leaf, "v", data);
      reg::RegCloseKey(leaf);
      if (set != ERROR_SUCCESS || reg::SHDeleteKeyW(HKEY_CURRENT_USER, Wide(tree).c_str()) != ERROR_SUCCESS) return 1;
    }
  }
  return 0;
}

int Import(const char* file) {
  std::ostringstream bytes;
  bytes << std::ifstream(file, std::ios::binary).rdbuf();
  const reg::RegParseResult parsed = reg::ParseRegFile(bytes.str());
  if (parsed.error) return 5;
  std::printf("importing\n");  // the test tells kills in the import from kills before it
  std::fflush(stdout);
  std::printf("%ld\n", static_cast<long>(reg::ApplyRegFile(parsed.keys).status));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string mode = argc > 1 ? argv[1] : "";
  if (mode == "write" && argc == 5) return WriteUntilKilled(Log(argv[2]), argv[3], argv[4]);
  if (mode == "mix" && argc == 6) return Mix(Log(argv[2]), argv[3], argv[4], std::atol(argv[5]));
  if (mode == "read" && argc == 4) {
    std::string data;
    const LONG result = Read(argv[2], argv[3], data);
    std::printf("%ld %s\n", static_cast<long>(result), data.c_str());
    return 0;
  }
  if (mode == "write-read" && argc == 5) {
    HKEY key = nullptr;
    LONG set = reg::RegCreateKeyExW(HKEY_CURRENT_USER, Wide(argv[2]).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                    &key, nullptr);
    if (set == ERROR_SUCCESS) set = Set(key, argv[3], argv[4]);
    reg::RegCloseKey(key);
    std::string data;
    const LONG read = Read(argv[2], argv[3], data);
    std::printf("%ld %ld %s\n", static_cast<long>(set), static_cast<long>(read), data.c_str());
    return 0;
  }
  if (mode == "delete" && argc == 3) {
    std::printf("%ld\n", static_cast<long>(reg::SHDeleteKeyW(HKEY_CURRENT_USER, Wide(argv[2]).c_str())));
    return 0;
  }
  if (mode == "import" && argc == 3) return Import(argv[2]);
  if (mode == "import-cut" && argc == 3) {
    // Dies like a killed process: no exit handlers, nothing flushed.
    cadtools::registry::store::SetAfterCommitForTests([](int) { _exit(9); });
    return Import(argv[2]);
  }
  std::fprintf(stderr, "usage: store_child write|mix|read|write-read|delete|import|import-cut ...\n");
  return 2;
}

// The id of the machine's current run.
#include "registry/store/boot_id.h"

#include <fstream>

namespace cadtools::registry::store {

namespace {

std::string FirstLine(const char* file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

std::string ReadBootId() {
  std::string id = FirstLine("/proc/sys/kernel/random/boot_id");
  if (!id.empty()) return id;
  std::ifstream stat("/proc/stat");
  for (std::string word; stat >> word;) {
    if (word == "btime" && stat >> word) return "btime-" + word;
  }
  return {};
}

}  // namespace

const std::string& BootId() {
  static const std::string id = ReadBootId();
  return id;
}

}  // namespace cadtools::registry::store

// cadtools_tags [COUNT]: writes COUNT device tags (default 1000000), one a
// line, from the benchmarks' fixed seed: the input bench/cli times the
// command line on. The same count gives the same bytes on every run.
#include "text/device_tags.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

int main(int argc, char** argv) {
  std::size_t count = 1000000;
  if (argc > 1) {
    const char* const end = argv[1] + std::strlen(argv[1]);
    const auto [at, ec] = std::from_chars(argv[1], end, count);
    if (ec != std::errc() || at != end) {
      std::fprintf(stderr, "usage: cadtools_tags [COUNT]\n");
      return 2;
    }
  }
  const bench::TagList tags = bench::MakeDeviceTags(count);
  std::string text;
  for (const std::string& tag : tags.utf8) (text += tag) += '\n';
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0 ? 0 : 1;
}

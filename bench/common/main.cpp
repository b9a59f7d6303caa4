// cadtools_bench: each of our hot functions beside the call a user would
// otherwise write for the same job (Boost.Geometry, glibc, ICU, POSIX, or
// plain C++ where there is no library), on the same inputs. After the usual
// Google Benchmark output it prints one line per pair with the ratio
// ours/peer.
//
//   cadtools_bench --benchmark_min_time=0.2 --benchmark_repetitions=5
//
// Every Google Benchmark flag works. --benchmark_filter selects whole pairs:
// a pair runs when the pattern matches its row, our benchmark or the peer's,
// so --benchmark_filter=On_Entity runs both sides (a pattern starting with
// '-' is left to the library as it is). With --benchmark_format=json or csv
// the table goes to stderr so that stdout stays machine-readable.
#include "common/ratio_table.h"
#include "common/subjects.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <iostream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

std::string EscapeForRegex(const std::string& s) {
  std::string out;
  for (const char c : s) {
    if (std::strchr(".^$|()[]{}*+?\\", c) != nullptr) out += '\\';
    out += c;
  }
  return out;
}

// Widens the user's filter to both sides of every pair it touches.
void FilterWholePairs(const std::vector<bench::Pair>& pairs) {
  const std::string filter = benchmark::GetBenchmarkFilter();
  if (filter.empty() || filter == "." || filter == "all" || filter[0] == '-') return;
  std::regex re;
  try {
    re = std::regex(filter);
  } catch (const std::regex_error&) {
    return;  // the library reports the bad pattern
  }
  std::set<std::string> names;
  for (const bench::Pair& p : pairs) {
    if (std::regex_search(p.row, re) || std::regex_search(p.ours, re) || std::regex_search(p.peer, re)) {
      names.insert(p.ours);
      names.insert(p.peer);
    }
  }
  if (names.empty()) return;
  std::string widened = "^(";
  for (const std::string& n : names) {
    if (widened.size() > 2) widened += '|';
    widened += EscapeForRegex(n);
  }
  widened += ")(/real_time)?$";  // wall-clock rows carry that suffix
  benchmark::SetBenchmarkFilter(widened);
}

}  // namespace

int main(int argc, char** argv) {
  bool machineFormat = false;
  for (int i = 1; i < argc; ++i) {
    const char* arg = argv[i];
    if (std::strncmp(arg, "--benchmark_format=", 19) == 0 && std::strcmp(arg + 19, "console") != 0) {
      machineFormat = true;
    }
  }

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;

  bench::PairRegistry registry;
  bench::RegisterSubjects(registry);
  FilterWholePairs(registry.pairs());

  // The default display reporter honours --benchmark_format; it belongs to
  // the library and is not deleted here.
  bench::CollectingReporter reporter(benchmark::CreateDefaultDisplayReporter());
  benchmark::RunSpecifiedBenchmarks(&reporter);
  bench::PrintRatioTable(machineFormat ? std::cerr : std::cout, registry.pairs(), reporter.timings());
  benchmark::Shutdown();
  return 0;
}

// Pairs of benchmarks (ours beside its peer) and the ratio table printed
// after the usual benchmark output.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace bench {

using BenchFn = void (*)(benchmark::State&);

// What a pair is timed by: the CPU time of this process, or the wall clock
// where the work happens partly elsewhere (the kernel flushing a file, or
// wine's registry server answering for the registry).
enum class Clock { kCpu, kWall };

struct Pair {
  std::string row;   // the function of ours, as shown in the table
  std::string ours;  // benchmark names
  std::string peer;
  Clock clock = Clock::kCpu;
};

// Registers benchmarks pair by pair, ours immediately before its peer so
// that both run under the same machine load. A peer shared by two rows is
// registered once.
class PairRegistry {
 public:
  void Add(std::string row, std::string oursName, BenchFn ours, std::string peerName, BenchFn peer,
           Clock clock = Clock::kCpu);
  const std::vector<Pair>& pairs() const { return pairs_; }

 private:
  void Register(const std::string& name, BenchFn fn, Clock clock);

  std::vector<Pair> pairs_;
  std::set<std::string> registered_;
};

// Forwards everything to the display reporter and keeps, per benchmark, the
// CPU time per iteration of each repetition and the aggregates.
class CollectingReporter : public benchmark::BenchmarkReporter {
 public:
  explicit CollectingReporter(benchmark::BenchmarkReporter* display) : display_(display) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

  struct Measures {
    std::vector<double> runs;                  // ns per iteration, one per repetition
    std::map<std::string, double> aggregates;  // "median", "min", ... in ns
  };
  struct Timings {
    Measures cpu, wall;
    long long repetitions = 0;  // behind the aggregates
    const Measures& by(Clock clock) const { return clock == Clock::kWall ? wall : cpu; }
  };
  const std::map<std::string, Timings>& timings() const { return timings_; }

 private:
  benchmark::BenchmarkReporter* display_;
  std::map<std::string, Timings> timings_;
};

// One line per pair: function, ours, peer and ours/peer from the medians of
// the repetitions, then the ratio of the fastest repetitions. Rows timed by
// the wall clock are marked so.
void PrintRatioTable(std::ostream& out, const std::vector<Pair>& pairs,
                     const std::map<std::string, CollectingReporter::Timings>& timings);

// The smallest value; registered as an extra statistic so that the minimum
// is there even when only aggregates are reported.
double MinOf(const std::vector<double>& v);

}  // namespace bench

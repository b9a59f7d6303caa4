#include "common/ratio_table.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

namespace bench {
namespace {

double ToNanoseconds(double value, benchmark::TimeUnit unit) {
  switch (unit) {
    case benchmark::kSecond: return value * 1e9;
    case benchmark::kMillisecond: return value * 1e6;
    case benchmark::kMicrosecond: return value * 1e3;
    case benchmark::kNanosecond: break;
  }
  return value;
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  const std::size_t n = v.size();
  return n % 2 == 1 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

struct Summary {
  double median;
  std::optional<double> min;
  std::size_t count;  // repetitions behind the median
};

std::optional<Summary> Summarise(const std::map<std::string, CollectingReporter::Timings>& timings,
                                 const std::string& name, Clock clock) {
  const auto it = timings.find(name);
  if (it == timings.end()) return std::nullopt;
  const CollectingReporter::Measures& t = it->second.by(clock);
  if (!t.runs.empty()) {
    return Summary{Median(t.runs), t.runs.size() > 1 ? std::optional(MinOf(t.runs)) : std::nullopt,
                   t.runs.size()};
  }
  // Only aggregates were reported (--benchmark_report_aggregates_only).
  const auto median = t.aggregates.find("median");
  if (median == t.aggregates.end()) return std::nullopt;
  const auto min = t.aggregates.find("min");
  return Summary{median->second, min == t.aggregates.end() ? std::nullopt : std::optional(min->second),
                 static_cast<std::size_t>(it->second.repetitions)};
}

std::string Format(const char* fmt, double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, fmt, v);
  return buf;
}

// A time in the unit that keeps it short: "12.34 ns", "1.25 s".
std::string FormatTime(double ns) {
  if (ns < 1e4) return Format("%.2f ns", ns);
  if (ns < 1e7) return Format("%.2f us", ns / 1e3);
  if (ns < 1e10) return Format("%.2f ms", ns / 1e6);
  return Format("%.2f s", ns / 1e9);
}

}  // namespace

double MinOf(const std::vector<double>& v) { return v.empty() ? 0.0 : *std::min_element(v.begin(), v.end()); }

void PairRegistry::Register(const std::string& name, BenchFn fn, Clock clock) {
  if (!registered_.insert(name).second) return;
  auto* b = benchmark::RegisterBenchmark(name.c_str(), fn)->ComputeStatistics("min", MinOf);
  if (clock == Clock::kWall) b->UseRealTime();
}

void PairRegistry::Add(std::string row, std::string oursName, BenchFn ours, std::string peerName, BenchFn peer,
                       Clock clock) {
  Register(oursName, ours, clock);
  Register(peerName, peer, clock);
  pairs_.push_back({std::move(row), std::move(oursName), std::move(peerName), clock});
}

bool CollectingReporter::ReportContext(const Context& context) { return display_->ReportContext(context); }

void CollectingReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred) continue;
    Timings& t = timings_[run.run_name.function_name];
    const double cpu = ToNanoseconds(run.GetAdjustedCPUTime(), run.time_unit);
    const double wall = ToNanoseconds(run.GetAdjustedRealTime(), run.time_unit);
    if (run.run_type == Run::RT_Iteration) {
      t.cpu.runs.push_back(cpu);
      t.wall.runs.push_back(wall);
    } else if (run.aggregate_unit == benchmark::kTime) {
      t.cpu.aggregates[run.aggregate_name] = cpu;
      t.wall.aggregates[run.aggregate_name] = wall;
      t.repetitions = run.repetitions;
    }
  }
  display_->ReportRuns(runs);
}

void CollectingReporter::Finalize() { display_->Finalize(); }

void PrintRatioTable(std::ostream& out, const std::vector<Pair>& pairs,
                     const std::map<std::string, CollectingReporter::Timings>& timings) {
  struct Line {
    std::string row, ours, peer, ratio, minRatio, peerName;
  };
  std::vector<Line> lines;
  std::size_t reps = 0;
  for (const Pair& p : pairs) {
    const std::optional<Summary> ours = Summarise(timings, p.ours, p.clock);
    const std::optional<Summary> peer = Summarise(timings, p.peer, p.clock);
    if (!ours) continue;  // filtered out (its peer may have run for another row)
    Line line{p.clock == Clock::kWall ? p.row + " (wall)" : p.row, FormatTime(ours->median), "n/a", "n/a", "",
              p.peer};
    if (peer) {
      line.peer = FormatTime(peer->median);
      line.ratio = Format("%.3f", ours->median / peer->median);
      if (ours->min && peer->min) line.minRatio = Format("%.3f", *ours->min / *peer->min);
      reps = std::max({reps, ours->count, peer->count});
    }
    lines.push_back(std::move(line));
  }
  if (lines.empty()) return;

  std::size_t wRow = 0, wOurs = 0, wPeer = 0, wRatio = 0, wMin = 0;
  for (const Line& l : lines) {
    wRow = std::max(wRow, l.row.size());
    wOurs = std::max(wOurs, l.ours.size());
    wPeer = std::max(wPeer, l.peer.size());
    wRatio = std::max(wRatio, l.ratio.size());
    wMin = std::max(wMin, l.minRatio.size());
  }
  auto pad = [](const std::string& s, std::size_t w, bool right) {
    const std::string fill(w > s.size() ? w - s.size() : 0, ' ');
    return right ? fill + s : s + fill;
  };

  out << "\nours/peer, CPU time per call (wall-clock time on rows marked so)";
  if (reps > 1) out << " (median of " << reps << " repetitions; min: ratio of the fastest repetitions)";
  out << "; below 1 means ours is faster\n";
  for (const Line& l : lines) {
    out << pad(l.row, wRow, false) << "  ours " << pad(l.ours, wOurs, true) << "  peer "
        << pad(l.peer, wPeer, true) << "  ratio " << pad(l.ratio, wRatio, true);
    if (wMin > 0) out << "  min " << pad(l.minRatio, wMin, true);
    out << "  vs " << l.peerName << '\n';
  }
  out.flush();
}

}  // namespace bench

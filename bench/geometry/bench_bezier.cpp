// CalculateBezierPoints beside a cubic Bezier sampler written the plain way.
// Boost.Geometry has no curves, so the peer is the loop a user would write.
#include "geometry/pairs.h"

#include <cadtools/math_tools.h>

#include <vector>

namespace bench {
namespace {

constexpr double kStep = 0.05;

// Samples each cubic segment of the chain (control points 3s to 3s + 3) at
// t = 0, step, 2 step, ... while t <= 1, in Bernstein form. The t loop is
// the usual `t += step`, which yields the same points per segment as
// CalculateBezierPoints (20 for a step of 0.05: the summed t overshoots 1).
void SampleCubicChain(const std::vector<WPt>& ctrl, std::vector<WPt>& out, double step) {
  for (std::size_t s = 0; s + 3 < ctrl.size(); s += 3) {
    const WPt p0 = ctrl[s];
    const WPt p1 = ctrl[s + 1];
    const WPt p2 = ctrl[s + 2];
    const WPt p3 = ctrl[s + 3];
    for (double t = 0.0; t <= 1.0; t += step) {
      const double u = 1.0 - t;
      const double b0 = u * u * u;
      const double b1 = 3 * u * u * t;
      const double b2 = 3 * u * t * t;
      const double b3 = t * t * t;
      out.push_back(WPt(b0 * p0.x + b1 * p1.x + b2 * p2.x + b3 * p3.x,
                        b0 * p0.y + b1 * p1.y + b2 * p2.y + b3 * p3.y));
    }
  }
}

// Both sides empty their output at the start of each call and keep its
// capacity, so neither allocates after the first call.

void OursCalculateBezierPoints(benchmark::State& state) {
  std::vector<BezierChain>& chains = BezierChains();
  CArray<WPt, WPt> out;
  CMathTools::CalculateBezierPoints(&chains[0].ours, out, kStep);
  state.SetLabel(std::to_string(out.GetSize()) + " points");
  Cycle(state, [&chains, &out](std::size_t i) {
    out.RemoveAll();
    CMathTools::CalculateBezierPoints(&chains[i].ours, out, kStep);
    benchmark::DoNotOptimize(out.GetData());  // also a memory clobber: the points count as read
  });
}

void PeerCubicBezierSampler(benchmark::State& state) {
  const std::vector<BezierChain>& chains = BezierChains();
  std::vector<WPt> out;
  SampleCubicChain(chains[0].plain, out, kStep);
  state.SetLabel(std::to_string(out.size()) + " points");
  Cycle(state, [&chains, &out](std::size_t i) {
    out.clear();
    SampleCubicChain(chains[i].plain, out, kStep);
    benchmark::DoNotOptimize(out.data());
  });
}

}  // namespace

void RegisterBezierPairs(PairRegistry& registry) {
  registry.Add("CalculateBezierPoints", "ours/CalculateBezierPoints", OursCalculateBezierPoints,
               "peer/cubic_bezier_sampler", PeerCubicBezierSampler);
}

}  // namespace bench

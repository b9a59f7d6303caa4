// The benchmark pairs, one file per group of functions.
#pragma once

#include "inputs.h"
#include "ratio_table.h"

#include <benchmark/benchmark.h>

#include <cstddef>

namespace bench {

void RegisterLinePairs(PairRegistry& registry);
void RegisterRectPairs(PairRegistry& registry);
void RegisterBezierPairs(PairRegistry& registry);

// Runs body(i) once per iteration with i = 0, 1, ..., kCases - 1, 0, ...:
// the same walk through the inputs for both sides of a pair.
template <class Body>
inline void Cycle(benchmark::State& state, Body body) {
  std::size_t i = 0;
  for ([[maybe_unused]] auto _ : state) {
    body(i);
    i = (i + 1) & kCaseMask;
  }
}

}  // namespace bench

// What the geometry pairs share: their inputs and the walk through them.
#pragma once

#include "common/subjects.h"
#include "geometry/inputs.h"

#include <benchmark/benchmark.h>

#include <cstddef>

namespace bench {

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

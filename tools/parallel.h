// Work split over the processor's cores for the commands on long inputs.
//
//   RunParallel(2, [&](unsigned part) { Sort(halves[part]); });
#pragma once

#include <functional>

namespace cadtools::cli {

// The number of parts worth running at once: the processor's cores, at
// least one, at most eight.
unsigned DefaultThreads() noexcept;

// Runs task(0), ..., task(parts - 1) at the same time, part 0 on the
// calling thread, and returns when all have ended. The first exception a
// part throws is thrown again here, once every part has ended.
void RunParallel(unsigned parts, const std::function<void(unsigned)>& task);

}  // namespace cadtools::cli

#include "parallel.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <vector>

namespace cadtools::cli {

unsigned DefaultThreads() noexcept { return std::clamp(std::thread::hardware_concurrency(), 1U, 8U); }

void RunParallel(unsigned parts, const std::function<void(unsigned)>& task) {
  std::vector<std::exception_ptr> failures(parts);
  const auto run = [&](unsigned part) {
    try {
      task(part);
    } catch (...) {
      failures[part] = std::current_exception();
    }
  };
  {
    std::vector<std::jthread> threads;
    threads.reserve(parts);
    for (unsigned part = 1; part < parts; ++part) threads.emplace_back(run, part);
    if (parts > 0) run(0);
  }
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

}  // namespace cadtools::cli

// The random numbers behind every benchmark input.
#pragma once

#include <cstdint>

namespace bench {

// splitmix64: tiny, and the same sequence on every compiler and library,
// unlike the standard distributions.
class Rng {
 public:
  explicit Rng(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
    return z ^ (z >> 31);
  }
  // Uniform in [lo, hi).
  double Uniform(double lo, double hi) {
    const double unit = static_cast<double>(Next() >> 11) * 0x1.0p-53;
    return lo + (hi - lo) * unit;
  }
  // A number in [0, 100) to pick a case kind by percentage.
  int Percent() { return static_cast<int>(Next() % 100U); }
  bool Coin() { return (Next() & 1U) != 0; }
  // Uniform in [0, n), n > 0.
  int Below(int n) { return static_cast<int>(Next() % static_cast<std::uint64_t>(n)); }

 private:
  std::uint64_t state_;
};

}  // namespace bench

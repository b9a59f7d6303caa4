// The host's size snapping table: pen widths, text heights and grid sizes
// in millimetres and their conventional counterparts in inches.
//
// MM2InchRound tries the millimetre keys in table order. Inch2MMRound tries
// inch keys in the host's own order, which is not the table's: its first
// key is 0.03 inch, not 0.003 (a slip in the host that stored drawings
// depend on: 0.03 inch snaps to 0.08 mm), and its 0.1 inch comes after
// 0.125 instead of before 0.12. Both are derived below from the one table
// so that the values cannot drift apart.
#pragma once

#include <array>
#include <cstddef>

namespace cadtools::detail {

struct SnapPair {
  double mm;
  double inch;
};

// Match when |key - value| < kSnapTolerance; the first match wins.
inline constexpr double kSnapTolerance = 0.001;

inline constexpr std::array<SnapPair, 19> kSnapTable{{
    {0.08, 0.003},
    {0.18, 0.007},
    {0.25, 0.01},
    {0.35, 0.014},
    {0.5, 0.02},
    {0.7, 0.028},
    {1.0, 0.04},
    {1.25, 0.05},
    {1.5, 0.06},
    {2.0, 0.08},
    {2.5, 0.1},
    {3.0, 0.12},
    {3.175, 0.125},
    {3.5, 0.14},
    {4.0, 0.16},
    {4.5, 0.18},
    {5.0, 0.2},
    {6.35, 0.25},
    {10.0, 0.4},
}};

// One inch key of Inch2MMRound and the millimetres it gives.
struct InchKey {
  double inch;
  double mm;
};

// The host's inch-to-mm order, as indexes into kSnapTable: the table's
// order with 2.5 mm / 0.1 inch (index 10) moved after 3.175 mm / 0.125 inch
// (index 12).
inline constexpr std::array<std::size_t, 19> kInchOrder{0,  1,  2,  3,  4,  5,  6,  7,  8, 9,
                                                        11, 12, 10, 13, 14, 15, 16, 17, 18};

// The host's key for 0.08 mm is 0.03 inch, not the table's 0.003.
inline constexpr double kInchKeyOf008mm = 0.03;

constexpr std::array<InchKey, 19> MakeInchKeys() noexcept {
  std::array<InchKey, 19> keys{};
  for (std::size_t k = 0; k < keys.size(); ++k) {
    const SnapPair& pair = kSnapTable[kInchOrder[k]];
    keys[k] = {pair.mm == 0.08 ? kInchKeyOf008mm : pair.inch, pair.mm};
  }
  return keys;
}

inline constexpr std::array<InchKey, 19> kInchKeys = MakeInchKeys();

static_assert(kInchKeys[0].inch == 0.03 && kInchKeys[0].mm == 0.08, "0.03 inch is the first key");
static_assert(kInchKeys[10].inch == 0.12 && kInchKeys[11].inch == 0.125 && kInchKeys[12].inch == 0.1,
              "0.1 inch comes after 0.125");
static_assert(kInchKeys[18].inch == 0.4 && kInchKeys[18].mm == 10.0, "0.4 inch is the last key");

}  // namespace cadtools::detail

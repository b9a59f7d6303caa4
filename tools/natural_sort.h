// Lines in natural order (NaturalCompare), for natsort on lists of a
// million tags: each line's sort key is computed once, the keys are sorted
// eight bytes at a time, and the work is shared out over the cores.
//
//   NaturalSortOrder({"x10", "X9", "x9"}, {})                 // 1 2 0
//   NaturalSortOrder({"x10", "X9", "x9"}, {.reverse = true})  // 0 1 2: equal lines keep their order
//   NaturalSortOrder({"x10", "X9", "x9"}, {.unique = true})   // 1 0
//
// The order is the one a stable sort by NaturalCompare gives. Lines that
// have no sort key (digits beyond ASCII) are sorted with NaturalCompare
// and put in place among the others by binary search; on such lines the
// comparison can go round in a circle ("10" < "A" < "\u0661" < "10"),
// where no order agrees with every pair and this one is one of many.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace cadtools::cli {

struct NaturalSortOptions {
  bool reverse = false;  // larger lines first; equal lines still in input order
  bool unique = false;   // only the first of lines that compare equal
  unsigned threads = 1;
  // Fewer lines than this a thread are sorted on fewer threads.
  std::size_t minLinesPerThread = 16384;
  // Stretches of this many lines or more are sorted by radix passes,
  // shorter ones by comparisons.
  std::size_t minLinesForRadix = 1024;
};

// The indexes of the lines in the order natsort prints them.
std::vector<std::size_t> NaturalSortOrder(std::span<const std::string_view> lines, const NaturalSortOptions& options);

}  // namespace cadtools::cli

// natsort's keyed sort against the stable sort by NaturalCompare that it
// replaces, on random tag lists, on one thread and on several.
#include "natural_sort.h"
#include "text/random_tags.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

// What natsort printed before it had keys: a stable sort by the comparison
// (reversed for -r), and for -u the first of each run of equal lines.
std::vector<std::size_t> ComparisonOrder(const std::vector<std::string_view>& lines, bool reverse, bool unique) {
  std::vector<CString> names;
  for (const std::string_view line : lines) names.push_back(FromUtf8(line));
  const auto compare = [&](std::size_t a, std::size_t b) { return CTextTools::NaturalCompare(names[a], names[b]); };
  std::vector<std::size_t> order(lines.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return (reverse ? -1 : 1) * compare(a, b) < 0; });
  if (!unique) return order;
  std::vector<std::size_t> kept;
  for (const std::size_t i : order) {
    if (kept.empty() || compare(kept.back(), i) != 0) kept.push_back(i);
  }
  return kept;
}

void ExpectComparisonOrder(const std::vector<std::string>& list, unsigned threads, std::size_t minForRadix = 2) {
  const std::vector<std::string_view> lines(list.begin(), list.end());
  for (const int flags : {0, 1, 2, 3}) {
    const NaturalSortOptions options{.reverse = (flags & 1) != 0,
                                     .unique = (flags & 2) != 0,
                                     .threads = threads,
                                     .minLinesPerThread = 1,
                                     .minLinesForRadix = minForRadix};
    ASSERT_EQ(NaturalSortOrder(lines, options), ComparisonOrder(lines, options.reverse, options.unique))
        << lines.size() << " lines, flags " << flags << ", " << threads << " threads";
  }
}

TEST(NaturalSortOrder, IsTheStableSortByNaturalCompare) {
  std::mt19937 rng(14);
  for (unsigned round = 0; round < 300; ++round) {
    std::vector<std::string> list;
    const std::size_t count = rng() % 120;
    for (std::size_t i = 0; i < count; ++i) {
      // Many near and exact repeats, so that equal lines meet.
      list.push_back(i > 0 && rng() % 3 == 0 ? test::RelatedTag(rng, list[rng() % i]) : test::RandomTag(rng));
      if (rng() % 8 == 0) list.push_back(list.back());
    }
    // Radix passes and comparisons sort the same.
    ExpectComparisonOrder(list, 1 + round % 3, round % 2 == 0 ? 2 : 1024);
  }
}

TEST(NaturalSortOrder, PlacesLinesWithoutKeys) {
  // Runs of both kinds of digits after the same letter: the comparison is a
  // strict weak order on such lists, so there is one right answer.
  static const char* const kDigits[] = {"1", "0", "9", "\xD9\xA3", "\xD9\xA0", "\xEF\xBC\x93"};
  const auto run = [](std::mt19937& r) {
    std::string s;
    for (std::size_t n = 1 + r() % 3; n > 0; --n) s += kDigits[r() % std::size(kDigits)];
    return s;
  };
  std::mt19937 rng(41);
  for (unsigned round = 0; round < 200; ++round) {
    std::vector<std::string> list;
    for (std::size_t n = rng() % 60; n > 0; --n) {
      list.push_back(std::string(rng() % 2 == 0 ? "K" : "k") + run(rng) + (rng() % 2 == 0 ? ":" + run(rng) : ""));
    }
    ExpectComparisonOrder(list, 1 + round % 2);
  }
  // Where the comparison goes in circles, every line is still printed once.
  const std::vector<std::string_view> circle = {"A", "10", "\xD9\xA1", "A", "10"};
  std::vector<std::size_t> order = NaturalSortOrder(circle, {});
  std::sort(order.begin(), order.end());
  EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace cadtools::cli

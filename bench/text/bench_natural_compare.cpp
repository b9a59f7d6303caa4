// Sorting a million device tags with NaturalCompare beside the same sort
// with glibc's strverscmp (on the tags in UTF-8) and with ICU's collator
// with numeric collation (on the same UTF-16 strings).
//
// Every side sorts pointers to its strings with std::stable_sort, which
// stays within bounds even for a comparator that is no strict weak order,
// and starts each iteration from a fresh copy of the unsorted list (copied
// while the clock is stopped).
#include "common/subjects.h"
#include "text/device_tags.h"

#include <cadtools/text_tools.h>

#include <benchmark/benchmark.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string.h>  // strverscmp (GNU)
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kTags = 1000000;

const TagList& Tags() {
  static const TagList tags = MakeDeviceTags(kTags);
  return tags;
}

template <class Char, class Less>
void SortTags(benchmark::State& state, const std::vector<const Char*>& tags, Less less) {
  std::vector<const Char*> work;
  for ([[maybe_unused]] auto _ : state) {
    state.PauseTiming();
    work = tags;
    state.ResumeTiming();
    std::stable_sort(work.begin(), work.end(), less);
    benchmark::DoNotOptimize(work.data());
    benchmark::ClobberMemory();
  }
  state.SetLabel(std::to_string(tags.size()) + " tags");
}

void OursNaturalCompareSort(benchmark::State& state) {
  SortTags(state, Tags().wide,
           [](const WCHAR* a, const WCHAR* b) { return CTextTools::NaturalCompare(a, b) < 0; });
}

void PeerStrverscmpSort(benchmark::State& state) {
  SortTags(state, Tags().narrow, [](const char* a, const char* b) { return strverscmp(a, b) < 0; });
}

// The root collator with numbers compared by value, at secondary strength
// so that case is ignored, as NaturalCompare ignores it.
std::unique_ptr<UCollator, void (*)(UCollator*)> OpenNumericCollator() {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<UCollator, void (*)(UCollator*)> collator(ucol_open("", &status), ucol_close);
  ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
  ucol_setAttribute(collator.get(), UCOL_STRENGTH, UCOL_SECONDARY, &status);
  if (U_FAILURE(status)) std::abort();
  return collator;
}

void PeerIcuCollatorSort(benchmark::State& state) {
  const auto collator = OpenNumericCollator();
  SortTags(state, Tags().wide, [c = collator.get()](const UChar* a, const UChar* b) {
    return ucol_strcoll(c, a, -1, b, -1) == UCOL_LESS;
  });
}

}  // namespace

void RegisterNaturalComparePairs(PairRegistry& registry) {
  registry.Add("NaturalCompare sort", "ours/NaturalCompare_sort", OursNaturalCompareSort,
               "peer/strverscmp_sort", PeerStrverscmpSort);
  registry.Add("NaturalCompare sort", "ours/NaturalCompare_sort", OursNaturalCompareSort,
               "peer/icu_numeric_collator_sort", PeerIcuCollatorSort);
}

}  // namespace bench

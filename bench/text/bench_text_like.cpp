// IsTextLike beside POSIX fnmatch with FNM_CASEFOLD (IsTextLike ignores
// case too), on the same device tags and '*' patterns, in UTF-8 for
// fnmatch. Both sides walk the same (tag, pattern) pairs, one per
// iteration; ours takes its CString arguments by value, as the host calls it.
#include "common/subjects.h"
#include "text/device_tags.h"

#include <cadtools/text_tools.h>

#include <benchmark/benchmark.h>

#include <fnmatch.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kPairs = 4096;

// Filters a user types into a tag list: prefixes, suffixes, parts.
const char* const kPatterns[] = {"-k*",   "*rack1*", "x1*",    "*:7",  "plc.*.slot0*", "=a1*", "*-x1*",
                                 "*.2",   "-m*",     "*motor*", "x*:1*", "=*+b*",        "*1",   "-q007",
                                 "*fan*", "=c*-k*",  "x2*:*",  "*0*"};

// Pair i: texts[i] against patterns[i], the same in UTF-16 and UTF-8.
struct MatchInputs {
  std::vector<CString> texts, patterns;
  std::vector<std::string> texts8, patterns8;
};

const MatchInputs& Inputs() {
  static const MatchInputs inputs = [] {
    const TagList tags = MakeDeviceTags(kPairs);
    MatchInputs in;
    for (std::size_t i = 0; i < kPairs; ++i) {
      const char* const pattern = kPatterns[i % std::size(kPatterns)];
      in.texts.emplace_back(tags.wide[i]);
      in.texts8.push_back(tags.utf8[i]);
      in.patterns.push_back(cadtools::FromUtf8(pattern));
      in.patterns8.emplace_back(pattern);
    }
    return in;
  }();
  return inputs;
}

// Calls match(i) for pair i = 0, 1, ..., kPairs - 1, 0, ..., and labels
// the benchmark with the number of matching pairs.
template <class Match>
void MatchPairs(benchmark::State& state, Match match) {
  std::size_t hits = 0;
  for (std::size_t i = 0; i < kPairs; ++i) hits += match(i) ? 1U : 0U;
  state.SetLabel(std::to_string(hits) + " of " + std::to_string(kPairs) + " match");
  std::size_t i = 0;
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(match(i));
    i = i + 1 == kPairs ? 0 : i + 1;
  }
}

void OursIsTextLike(benchmark::State& state) {
  const MatchInputs& in = Inputs();
  MatchPairs(state, [&in](std::size_t i) { return CTextTools::IsTextLike(in.texts[i], in.patterns[i]) != 0; });
}

// The same texts against "**", which matches at once: what is left is the
// call with its argument copies, the floor under the row above. A CString
// holds its own units, so each by-value argument longer than the inline
// buffer is allocated, copied and freed per call.
void OursIsTextLikeFloor(benchmark::State& state) {
  const MatchInputs& in = Inputs();
  const CString everything(CADTOOLS_WIDE("**"));
  MatchPairs(state, [&](std::size_t i) { return CTextTools::IsTextLike(in.texts[i], everything) != 0; });
}

void PeerFnmatch(benchmark::State& state) {
  const MatchInputs& in = Inputs();
  MatchPairs(state, [&in](std::size_t i) {
    return fnmatch(in.patterns8[i].c_str(), in.texts8[i].c_str(), FNM_CASEFOLD) == 0;
  });
}

}  // namespace

void RegisterTextLikePairs(PairRegistry& registry) {
  registry.Add("IsTextLike", "ours/IsTextLike", OursIsTextLike, "peer/fnmatch_casefold", PeerFnmatch);
  registry.Add("IsTextLike, pattern ** (copies only)", "ours/IsTextLike_star_star", OursIsTextLikeFloor,
               "peer/fnmatch_casefold", PeerFnmatch);
}

}  // namespace bench

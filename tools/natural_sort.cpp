#include "natural_sort.h"

#include "parallel.h"
#include "text/natural_sort_key.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <numeric>
#include <utility>

namespace cadtools::cli {
namespace {

constexpr std::size_t kChunk = 8;  // key bytes compared at once

// A line's key, in the key store of the part that made it.
struct KeyRef {
  const char* data;
  std::size_t size;
};

// A line and kChunk bytes of its key from the depth being sorted.
struct Entry {
  std::uint64_t chunk;
  std::size_t line;
};

// Entries in key order, and lines in input order where their keys agree:
// a stable sort is a sort by key and line.
bool operator<(const Entry& a, const Entry& b) noexcept {
  return a.chunk != b.chunk ? a.chunk < b.chunk : a.line < b.line;
}

std::uint64_t FromBigEndian(std::uint64_t raw) noexcept {
  if constexpr (std::endian::native == std::endian::little) return __builtin_bswap64(raw);
  return raw;
}

// kChunk bytes of a key from `depth` as a big-endian number, zeros past
// its end; since keys hold no zero byte, such numbers order as the keys.
// Every key store ends with kChunk spare bytes, so the load stays inside.
std::uint64_t ChunkAt(const KeyRef& key, std::size_t depth) noexcept {
  if (depth >= key.size) return 0;
  std::uint64_t raw = 0;
  std::memcpy(&raw, key.data + depth, kChunk);
  const std::uint64_t value = FromBigEndian(raw);
  const std::size_t rest = key.size - depth;
  return rest >= kChunk ? value : value & (~std::uint64_t{0} << (8 * (kChunk - rest)));
}

// Chunk values that cut the lines into `count` buckets of about the same
// size, from the keys of a sample of the lines; equal chunks always fall
// into the same bucket, so lines with equal keys do too.
std::vector<std::uint64_t> Splitters(std::span<const std::string_view> lines, unsigned count) {
  if (count < 2) return {};
  const std::size_t step = std::max<std::size_t>(1, lines.size() / (256 * std::size_t{count}));
  std::vector<std::uint64_t> sample;
  std::string key;
  for (std::size_t i = 0; i < lines.size(); i += step) {
    key.resize(text::NaturalSortKeyBound(lines[i].size()) + kChunk);
    const std::size_t size = text::WriteNaturalSortKeyUtf8(lines[i], key.data());
    if (size != text::kNoSortKey) sample.push_back(ChunkAt({key.data(), size}, 0));
  }
  std::sort(sample.begin(), sample.end());
  std::vector<std::uint64_t> splitters;
  for (unsigned b = 1; b < count && !sample.empty(); ++b) splitters.push_back(sample[b * sample.size() / count]);
  return splitters;
}

unsigned BucketOf(std::uint64_t chunk, const std::vector<std::uint64_t>& splitters) noexcept {
  return static_cast<unsigned>(std::upper_bound(splitters.begin(), splitters.end(), chunk) - splitters.begin());
}

// The keys of a stretch of lines, made by one thread, and its lines with
// keys by bucket, in input order.
struct KeyedPart {
  std::unique_ptr<char[]> store;
  std::vector<std::vector<Entry>> buckets;
  std::vector<std::size_t> keyless;  // in input order
};

void MakeKeys(std::span<const std::string_view> lines, std::size_t begin, std::size_t end,
              const std::vector<std::uint64_t>& splitters, KeyRef* keys, KeyedPart& part) {
  std::size_t room = kChunk;
  for (std::size_t i = begin; i < end; ++i) room += text::NaturalSortKeyBound(lines[i].size());
  part.store = std::make_unique_for_overwrite<char[]>(room);
  char* out = part.store.get();
  for (std::size_t i = begin; i < end; ++i) {
    const std::size_t size = text::WriteNaturalSortKeyUtf8(lines[i], out);
    keys[i] = {size == text::kNoSortKey ? nullptr : out, size};
    if (size != text::kNoSortKey) out += size;
  }
  std::memset(out, 0, kChunk);
  part.buckets.resize(splitters.size() + 1);
  for (std::vector<Entry>& bucket : part.buckets) bucket.reserve((end - begin) / part.buckets.size() * 5 / 4);
  for (std::size_t i = begin; i < end; ++i) {
    if (keys[i].data == nullptr) {
      part.keyless.push_back(i);
      continue;
    }
    const std::uint64_t chunk = ChunkAt(keys[i], 0);
    part.buckets[BucketOf(chunk, splitters)].push_back({chunk, i});
  }
}

// Sorts entries by chunk, entries with equal chunks in the order they
// came (a radix sort, a byte a pass from the least significant; bytes
// that all entries share are skipped). scratch has room for them all.
void RadixSortByChunk(std::span<Entry> entries, Entry* scratch) noexcept {
  constexpr std::size_t kBytes = sizeof(std::uint64_t);
  std::size_t counts[kBytes][256] = {};
  for (const Entry& e : entries) {
    for (std::size_t b = 0; b < kBytes; ++b) ++counts[b][(e.chunk >> (8 * b)) & 0xFF];
  }
  Entry* from = entries.data();
  Entry* to = scratch;
  for (std::size_t b = 0; b < kBytes; ++b) {
    std::size_t* const count = counts[b];
    if (count[(from->chunk >> (8 * b)) & 0xFF] == entries.size()) continue;
    std::size_t offset = 0;
    for (std::size_t v = 0; v < 256; ++v) offset += std::exchange(count[v], offset);
    for (const Entry* e = from; e != from + entries.size(); ++e) to[count[(e->chunk >> (8 * b)) & 0xFF]++] = *e;
    std::swap(from, to);
  }
  if (from != entries.data()) std::copy(from, from + entries.size(), entries.data());
}

// How many bytes from `depth` on the keys of all the entries share.
std::size_t SharedLength(std::span<const Entry> entries, const KeyRef* keys, std::size_t depth) noexcept {
  const KeyRef& first = keys[entries.front().line];
  std::size_t shared = first.size > depth ? first.size - depth : 0;
  for (const Entry& e : entries.subspan(1)) {
    const KeyRef& key = keys[e.line];
    const std::size_t limit = std::min(shared, key.size > depth ? key.size - depth : 0);
    std::size_t i = 0;
    while (i < limit && first.data[depth + i] == key.data[depth + i]) ++i;
    shared = i;
  }
  return shared;
}

// Sorts entries that come in input order by key, kChunk bytes a round:
// entries that agree so far are sorted again by their next bytes until
// their keys end. same[i] tells whether entry i has the key of entry i - 1.
void SortByKeys(std::vector<Entry>& entries, const KeyRef* keys, std::size_t minForRadix,
                std::vector<std::uint8_t>& same) {
  same.assign(entries.size(), 0);
  std::vector<Entry> scratch;
  struct Range {
    std::size_t begin, end, depth;
  };
  std::vector<Range> todo{{0, entries.size(), 0}};
  while (!todo.empty()) {
    const Range r = todo.back();
    todo.pop_back();
    const std::span<Entry> range(entries.data() + r.begin, r.end - r.begin);
    if (r.depth != 0) {
      for (Entry& e : range) e.chunk = ChunkAt(keys[e.line], r.depth);
    }
    if (range.size() < minForRadix) {
      if (!std::is_sorted(range.begin(), range.end())) std::sort(range.begin(), range.end());
    } else {
      scratch.resize(std::max(scratch.size(), range.size()));
      RadixSortByChunk(range, scratch.data());
    }
    for (std::size_t g = r.begin; g < r.end;) {
      std::size_t h = g + 1;
      while (h < r.end && entries[h].chunk == entries[g].chunk) ++h;
      if (h - g > 1) {
        // A zero in the last byte: the keys ended within this chunk.
        if ((entries[g].chunk & 0xFF) == 0) {
          std::fill_n(same.begin() + static_cast<std::ptrdiff_t>(g + 1), h - g - 1, 1);
        } else {
          // When no entry of the range differed, the keys may share much
          // more (long lines with one start): walk it at once.
          const std::size_t next = r.depth + kChunk;
          const bool whole = g == r.begin && h == r.end;
          todo.push_back({g, h, whole ? next + SharedLength(range, keys, next) : next});
        }
      }
      g = h;
    }
  }
}

// The lines in key order, on `threads` threads, whether each has the key
// of the one before, and the lines without keys.
struct KeyOrder {
  std::vector<std::size_t> lines;
  std::vector<std::uint8_t> same;
  std::vector<std::size_t> keyless;
};

KeyOrder SortKeyed(std::span<const std::string_view> lines, unsigned threads, std::size_t minForRadix) {
  const std::size_t n = lines.size();
  const std::vector<std::uint64_t> splitters = Splitters(lines, threads);
  const auto keys = std::make_unique_for_overwrite<KeyRef[]>(n);
  std::vector<KeyedPart> parts(threads);
  RunParallel(threads, [&](unsigned t) {
    MakeKeys(lines, n * t / threads, n * (t + 1) / threads, splitters, keys.get(), parts[t]);
  });

  // Each thread sorts one bucket, its entries from every part in turn.
  std::vector<std::vector<Entry>> buckets(splitters.size() + 1);
  std::vector<std::vector<std::uint8_t>> same(buckets.size());
  RunParallel(static_cast<unsigned>(buckets.size()), [&](unsigned b) {
    std::vector<Entry>& mine = buckets[b];
    std::size_t count = 0;
    for (const KeyedPart& part : parts) count += part.buckets[b].size();
    mine.reserve(count);
    for (KeyedPart& part : parts) {
      mine.insert(mine.end(), part.buckets[b].begin(), part.buckets[b].end());
      part.buckets[b] = {};
    }
    SortByKeys(mine, keys.get(), minForRadix, same[b]);
  });

  KeyOrder order;
  order.lines.reserve(n);
  order.same.reserve(n);
  for (std::size_t b = 0; b < buckets.size(); ++b) {
    for (const Entry& e : buckets[b]) order.lines.push_back(e.line);
    order.same.insert(order.same.end(), same[b].begin(), same[b].end());
  }
  for (const KeyedPart& part : parts) {
    order.keyless.insert(order.keyless.end(), part.keyless.begin(), part.keyless.end());
  }
  return order;
}

// Puts the lines without a key in their places: sorted among themselves
// with NaturalCompare, each after the keyed lines that compare smaller. No
// keyed line compares equal to one without a key: a digit beyond ASCII
// equals no other unit, not even in another case.
void InsertKeyless(std::span<const std::string_view> lines, KeyOrder& order) {
  const auto wide = [&](std::size_t line) { return FromUtf8(lines[line]); };
  const auto compare = [](const CString& a, const CString& b) { return CTextTools::NaturalCompare(a, b); };
  std::vector<CString> names;
  for (const std::size_t line : order.keyless) names.push_back(wide(line));
  std::vector<std::size_t> sorted(names.size());
  std::iota(sorted.begin(), sorted.end(), std::size_t{0});
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](std::size_t a, std::size_t b) { return compare(names[a], names[b]) < 0; });

  std::vector<std::size_t> merged;
  std::vector<std::uint8_t> same;
  std::vector<std::uint8_t> inserted;
  merged.reserve(order.lines.size() + sorted.size());
  const auto take = [&](std::size_t from, std::size_t to) {
    merged.insert(merged.end(), order.lines.begin() + static_cast<std::ptrdiff_t>(from),
                  order.lines.begin() + static_cast<std::ptrdiff_t>(to));
    same.insert(same.end(), order.same.begin() + static_cast<std::ptrdiff_t>(from),
                order.same.begin() + static_cast<std::ptrdiff_t>(to));
    inserted.insert(inserted.end(), to - from, 0);
  };
  std::size_t from = 0;
  for (const std::size_t s : sorted) {
    // The place after the last keyed line that compares smaller, searched
    // from the place of the one before (never before it, so that the lines
    // stay sorted among themselves even where the comparison goes in
    // circles) in steps that double, then halve: many lines without keys
    // cost a walk through the keyed ones, few a binary search each.
    const auto smaller = [&](std::size_t k) { return compare(wide(order.lines[k]), names[s]) < 0; };
    std::size_t low = from;   // the lines before are smaller
    std::size_t high = from;  // the line there is not, or the end
    for (std::size_t step = 1; high < order.lines.size() && smaller(high); step *= 2) {
      low = high + 1;
      high = std::min(low + step, order.lines.size());
    }
    while (low < high) {
      const std::size_t middle = low + (high - low) / 2;
      if (smaller(middle)) {
        low = middle + 1;
      } else {
        high = middle;
      }
    }
    const std::size_t to = low;
    take(from, to);
    merged.push_back(order.keyless[s]);
    same.push_back(0);
    inserted.push_back(1);
    from = to;
  }
  take(from, order.lines.size());
  for (std::size_t k = 1; k < merged.size(); ++k) {
    if (inserted[k] != 0 || inserted[k - 1] != 0) same[k] = compare(wide(merged[k - 1]), wide(merged[k])) == 0 ? 1 : 0;
  }
  order.lines = std::move(merged);
  order.same = std::move(same);
}

}  // namespace

std::vector<std::size_t> NaturalSortOrder(std::span<const std::string_view> lines, const NaturalSortOptions& options) {
  const std::size_t perThread = std::max<std::size_t>(options.minLinesPerThread, 1);
  const auto threads =
      static_cast<unsigned>(std::clamp<std::size_t>(lines.size() / perThread, 1, std::max(options.threads, 1U)));
  KeyOrder order = SortKeyed(lines, threads, options.minLinesForRadix);
  if (!order.keyless.empty()) InsertKeyless(lines, order);
  if (!options.reverse && !options.unique) return std::move(order.lines);

  // Equal lines stand together; reversed, the groups change places but
  // keep their lines in input order.
  std::vector<std::size_t> printed;
  printed.reserve(order.lines.size());
  const auto group = [&](std::size_t begin, std::size_t end) {
    const auto first = order.lines.begin() + static_cast<std::ptrdiff_t>(begin);
    printed.insert(printed.end(), first,
                   options.unique ? first + 1 : order.lines.begin() + static_cast<std::ptrdiff_t>(end));
  };
  const std::size_t n = order.lines.size();
  if (!options.reverse) {
    for (std::size_t begin = 0; begin < n;) {
      std::size_t end = begin + 1;
      while (end < n && order.same[end] != 0) ++end;
      group(begin, end);
      begin = end;
    }
  } else {
    for (std::size_t end = n; end > 0;) {
      std::size_t begin = end - 1;
      while (begin > 0 && order.same[begin] != 0) --begin;
      group(begin, end);
      end = begin;
    }
  }
  return printed;
}

}  // namespace cadtools::cli

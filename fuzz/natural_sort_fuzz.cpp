// Sort keys and natsort's keyed sort against NaturalCompare on arbitrary
// names: the keys order every pair as the comparison does, and the sorted
// list is the stable sort by the comparison.
//
// Input: a first byte that chooses the form of the rest, UTF-8 lines (even)
// or UTF-16 units in little-endian pairs cut at '\n' units (odd; lone
// surrogates and NULs included), and for UTF-8 from how many lines on the
// sort takes radix passes.
#include "natural_sort.h"
#include "text/natural_sort_key.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace {

void Require(bool ok) {
  if (!ok) std::abort();
}

std::optional<std::string> Key(const CString& name) {
  std::string key(cadtools::text::NaturalSortKeyBound(static_cast<std::size_t>(name.GetLength())), '\0');
  const std::size_t size = cadtools::text::WriteNaturalSortKey(name.View(), key.data());
  if (size == cadtools::text::kNoSortKey) return std::nullopt;
  key.resize(size);
  return key;
}

bool HasOtherDigit(const CString& name) {
  for (const WCHAR* p = name; *p != 0; ++p) {
    if (cadtools::IsWideDigit(*p) && *p > u'9') return true;
  }
  return false;
}

int Sign(int c) { return (c > 0) - (c < 0); }

void CheckKeys(const std::vector<CString>& names) {
  std::vector<std::optional<std::string>> keys;
  for (const CString& name : names) {
    keys.push_back(Key(name));
    Require(keys.back().has_value() != HasOtherDigit(name));
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (std::size_t j = 0; j < names.size(); ++j) {
      if (keys[i] && keys[j]) {
        Require(Sign(keys[i]->compare(*keys[j])) == CTextTools::NaturalCompare(names[i], names[j]));
      }
    }
  }
}

void CheckSort(const std::vector<std::string_view>& lines, const std::vector<CString>& names, std::size_t minForRadix) {
  const bool allKeyed = std::none_of(names.begin(), names.end(), HasOtherDigit);
  for (const int flags : {0, 1, 2, 3}) {
    const cadtools::cli::NaturalSortOptions options{.reverse = (flags & 1) != 0,
                                                    .unique = (flags & 2) != 0,
                                                    .threads = 2,
                                                    .minLinesPerThread = 1,
                                                    .minLinesForRadix = minForRadix};
    std::vector<std::size_t> order = cadtools::cli::NaturalSortOrder(lines, options);
    // The comparison's own stable sort, and -u's first of equal lines.
    const auto compare = [&](std::size_t a, std::size_t b) { return CTextTools::NaturalCompare(names[a], names[b]); };
    std::vector<std::size_t> expected(lines.size());
    std::iota(expected.begin(), expected.end(), std::size_t{0});
    std::stable_sort(expected.begin(), expected.end(), [&](std::size_t a, std::size_t b) {
      return (options.reverse ? -compare(a, b) : compare(a, b)) < 0;
    });
    if (options.unique) {
      std::vector<std::size_t> kept;
      for (const std::size_t i : expected) {
        if (kept.empty() || compare(kept.back(), i) != 0) kept.push_back(i);
      }
      expected = kept;
    }
    if (allKeyed) {
      Require(order == expected);
    } else if (!options.unique) {
      std::sort(order.begin(), order.end());
      std::sort(expected.begin(), expected.end());
      Require(order == expected);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  std::vector<CString> names;
  if (data[0] % 2 == 1) {
    CString name;
    for (std::size_t i = 0; i + 1 < rest.size(); i += 2) {
      const auto unit =
          static_cast<WCHAR>(static_cast<unsigned char>(rest[i]) | static_cast<unsigned char>(rest[i + 1]) << 8);
      if (unit == u'\n') {
        names.push_back(name);
        name = CString();
      } else {
        name.AppendChar(unit);
      }
    }
    names.push_back(name);
    CheckKeys(names);
    return 0;
  }
  std::vector<std::string_view> lines;
  for (std::size_t at = 0; at <= rest.size();) {
    const std::size_t end = std::min(rest.find('\n', at), rest.size());
    lines.push_back(rest.substr(at, end - at));
    names.push_back(cadtools::FromUtf8(lines.back()));
    at = end + 1;
  }
  CheckKeys(names);
  CheckSort(lines, names, data[0] / 2U % 8U + 1U);
  return 0;
}

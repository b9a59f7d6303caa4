// The .reg reader on arbitrary bytes: no crash, hang or undefined
// behaviour; a refusal always names a line and keeps nothing; and what it
// accepts survives the trip through the writer: writing the entries and
// reading them back gives the same entries, and writing those again the
// same bytes. Users move settings between machines with these files, so
// an entry that changed on the way would silently change a setting. The
// journal of an import keeps the entries exactly too.
#include <cadtools/registry/reg_file.h>

#include "registry/reg_file/reg_apply.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using namespace cadtools::registry;

void Require(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const RegParseResult parsed = ParseRegFile(bytes);
  if (parsed.error) {
    // Lines are counted in bytes' worth of line ends at most: LF, CR LF
    // and a lone CR each end one.
    const auto breaks = static_cast<std::size_t>(
        std::count_if(bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; }));
    Require(parsed.keys.empty() && !parsed.error->message.empty());
    Require(parsed.error->line >= 1 && parsed.error->line <= breaks + 1);
    return 0;
  }
  const std::string written = WriteRegFile(parsed.keys);
  const RegParseResult again = ParseRegFile(written);
  Require(!again.error);
  Require(again.keys == parsed.keys);
  Require(WriteRegFile(again.keys) == written);
  const auto journal = detail::DeserializeEntries(detail::SerializeEntries(parsed.keys));
  Require(journal && *journal == parsed.keys);
  return 0;
}

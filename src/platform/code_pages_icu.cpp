// The system's code pages and the conversions between them and UTF-16
// where Windows is not there to ask: the code pages come from the
// environment, the conversions from our own UTF-8 codec and from ICU, and
// both give what Windows gives for the same bytes.
#include <cadtools/text/code_pages.h>

#include <cstdlib>
#include <charconv>
#include <string_view>

#include "text/code_page_conversion.h"

namespace cadtools {

namespace {

// A positive number in the variable, else fallback.
UINT CodePageFromEnvironment(const char* variable, UINT fallback) noexcept {
  const char* value = std::getenv(variable);
  if (value == nullptr) return fallback;
  const std::string_view text(value);
  UINT codePage = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), codePage);
  return ec == std::errc{} && end == text.data() + text.size() && codePage > 0 ? codePage : fallback;
}

}  // namespace

UINT SystemAnsiCodePage() noexcept { return CodePageFromEnvironment("CADTOOLS_ACP", 1252); }

UINT SystemOemCodePage() noexcept { return CodePageFromEnvironment("CADTOOLS_OEMCP", 437); }

}  // namespace cadtools

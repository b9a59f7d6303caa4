// `cadtools placement` without the registry: how value names are read and
// how each stored value is described.
#include "placement.h"
#include "settings_values.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

std::string Decoded(const char* name) {
  const std::optional<PlacementName> d = DecodePlacementName(Utf16Argument(name));
  if (!d) return "-";
  return std::to_string(d->id) + "|" + std::to_string(d->width) + "x" + std::to_string(d->height) + "|" +
         ToUtf8(CString(d->module.c_str(), static_cast<int>(d->module.size()))) + (d->marker ? "|marker" : "");
}

TEST(PlacementNames, NumberWidthHeightAndModule) {
  struct Case {
    const char* name;
    const char* expected;
  };
  const Case cases[] = {
      {"IDD1301920x1080Host", "130|1920x1080|Host"},
      {"IDD1301920x1080HostMaximized", "130|1920x1080|Host|marker"},
      {"IDD1001280x1024Lib", "100|1280x1024|Lib"},      // not 1001 at width 280
      {"IDD800512345x600Lib", "8005|12345x600|Lib"},    // the widest plausible width
      {"IDD-51024x768Host", "-5|1024x768|Host"},
      {"IDD1920x1080Host", "1|920x1080|Host"},  // no number at all: a guess
      {"IDD130x1080Host", "-"},
      {"IDD1301920Host", "-"},
      {"Parts", "-"},
  };
  for (const Case& c : cases) EXPECT_EQ(Decoded(c.name), c.expected) << c.name;
}

TEST(PlacementNames, DescriptionsOfStoredData) {
  const auto rect = [](std::vector<LONG> fields) {
    std::vector<BYTE> bytes;
    for (const LONG v : fields) {
      for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<BYTE>(static_cast<DWORD>(v) >> shift));
    }
    return bytes;
  };
  struct Case {
    const char* name;
    DWORD type;
    std::vector<BYTE> data;
    const char* expected;
  };
  const Case cases[] = {
      {"IDD130800x600H", REG_BINARY, rect({10, 20, 410, 320}),
       "dialog 130, display 800x600, module H: 10,20,410,320 (400x300)"},
      {"IDD130800x600HMaximized", REG_BINARY, rect({-1, -1, -1, -1}),
       "dialog 130, display 800x600, module H: maximised"},
      {"IDD130800x600HMaximized", REG_BINARY, rect({0, 0, 0, 0}), "dialog 130, display 800x600, module H: not maximised"},
      {"Parts", REG_BINARY, rect({-32000, -32000, -31840, -31972}),
       "-32000,-32000,-31840,-31972 (160x28), on no display: forgotten at the next opening"},
      {"Parts", REG_BINARY, rect({5, 5, 5, 50}), "5,5,5,50 (no area: none)"},
      {"Parts", REG_BINARY, {1, 2}, "binary 01 02"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DescribePlacement(Utf16Argument(c.name), c.type, c.data), c.expected) << c.name;
  }
}

}  // namespace
}  // namespace cadtools::cli

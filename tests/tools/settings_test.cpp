// `cadtools settings` without the registry: where a KEY word leads, the
// TYPE words of set and the notation get prints.
#include "errors.h"
#include "settings.h"
#include "settings_values.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace cadtools::cli {
namespace {

using registry::RegHive;

std::string Narrow(WStringView text) { return ToUtf8(CString(text.data(), static_cast<int>(text.size()))); }

std::string Where(std::string_view key, std::string_view root, bool value_name) {
  const SettingsLocation at = ResolveSettingsKey(key, Utf16Argument(root), value_name);
  return (at.hive == RegHive::kCurrentUser ? "HKCU|" : "HKLM|") + Narrow(at.path) + "|" + Narrow(at.name);
}

TEST(ResolveSettingsKey, JoinsKeysToTheRootAsTheHostDoes) {
  const char* app = "Software\\Quenby\\Draw\\Version V8R1\\";
  struct Case {
    const char* key;
    const char* root;
    bool value_name;
    const char* want;
  };
  const Case cases[] = {
      {"Settings\\Text\\DefaultFontName", app, true,
       "HKCU|Software\\Quenby\\Draw\\Version V8R1\\Settings\\Text|DefaultFontName"},
      {"Settings\\", app, true, "HKCU|Software\\Quenby\\Draw\\Version V8R1\\Settings|"},
      {"Settings\\Colour", "Software\\X", true, "HKCU|Software\\XSettings|Colour"},  // the root as it stands
      {"Name", "", true, "HKCU||Name"},
      {"K\\\\V", "\\\\Software\\", true, "HKCU|Software\\K|V"},
      {"HKLM\\Software\\Q\\Name", app, true, "HKLM|Software\\Q|Name"},
      {"HKEY_CURRENT_USER\\\\Software\\Q", app, true, "HKCU|Software|Q"},
      {"hkcu", app, true, "HKCU||"},
      {"HKCUx\\V", "R\\", true, "HKCU|R\\HKCUx|V"},
      {"Settings\\", app, false, "HKCU|Software\\Quenby\\Draw\\Version V8R1\\Settings"},
      {"", app, false, "HKCU|Software\\Quenby\\Draw\\Version V8R1"},
      {"HKEY_LOCAL_MACHINE\\Software\\Q\\", app, false, "HKLM|Software\\Q"},
  };
  for (const Case& c : cases) {
    const std::string want = c.value_name ? c.want : std::string(c.want) + "|";
    EXPECT_EQ(Where(c.key, c.root, c.value_name), want) << c.key << " below " << c.root;
  }
  const WString before = SettingsRoot();
  {
    const ScopedSettingsRoot scope(std::string("Draw"), std::nullopt);
    EXPECT_EQ(Narrow(SettingsRoot()), app);
  }
  {
    const ScopedSettingsRoot scope(std::nullopt, std::string("Software\\X"));
    EXPECT_EQ(Narrow(SettingsRoot()), "Software\\X");
  }
  EXPECT_EQ(SettingsRoot(), before);  // the next command starts from the library's own root
  EXPECT_THROW(Where("Bad\xC3", app, true), UsageError);
}

std::string Hex(const std::vector<BYTE>& data) {
  std::string text;
  for (const BYTE b : data) {
    char hex[4];
    std::snprintf(hex, sizeof hex, "%02x", static_cast<unsigned>(b));
    text += hex;
  }
  return text;
}

TEST(SettingsValues, SetStoresWhatGetPrintsBack) {
  struct Case {
    std::string_view type;
    std::vector<std::string_view> values;
    DWORD stored_type;
    const char* bytes;
    const char* printed;  // by the stored type, as get prints it
  };
  const Case cases[] = {
      {"sz", {"a\"\\"}, REG_SZ, "610022005c000000", "sz \"a\\\"\\\\\""},
      {"REG_EXPAND_SZ", {"%T%"}, REG_EXPAND_SZ, "2500540025000000", "expand_sz \"%T%\""},
      {"multi_sz", {"a", "", "b"}, REG_MULTI_SZ, "610000000000620000000000", "multi_sz \"a\" \"\" \"b\""},
      {"multi_sz", {}, REG_MULTI_SZ, "0000", "multi_sz"},
      {"dword", {"0x2A"}, REG_DWORD, "2a000000", "dword 42"},
      {"dword", {"4294967295"}, REG_DWORD, "ffffffff", "dword 4294967295"},
      {"qword", {"0x100000000"}, REG_QWORD, "0000000001000000", "qword 4294967296"},
      {"binary", {"01 ff,2", "a"}, REG_BINARY, "01ff020a", "binary 01 ff 02 0a"},
      {"hex(80000000)", {}, 0x80000000u, "", "hex(80000000)"},
      {"float", {"1.5"}, REG_BINARY, "0000c03f", "binary 00 00 c0 3f"},
      {"bool", {"TRUE"}, REG_BINARY, "01", "binary 01"},
      {"point", {"3,-4"}, REG_BINARY, "03000000fcffffff", "binary 03 00 00 00 fc ff ff ff"},
      {"rect", {"1", "2,", "3", "4"}, REG_BINARY, "01000000020000000300000004000000", nullptr},
      {"wrect",
       {"0,0,0.5,-2"},
       REG_BINARY,
       "00000000000000000000000000000000000000000000e03f00000000000000c0",
       nullptr},
  };
  for (const Case& c : cases) {
    const TypedValue v = ParseTypedValue(c.type, c.values);
    EXPECT_EQ(v.type, c.stored_type) << c.type;
    EXPECT_EQ(Hex(v.data), c.bytes) << c.type;
    if (c.printed != nullptr) {
      EXPECT_EQ(FormatValue(v.type, v.data), c.printed) << c.type;
    }
  }
}

TEST(SettingsValues, GetShowsOddDataAsHexAndReadsTypedForms) {
  const std::vector<BYTE> rect = {0xff, 0xff, 0xff, 0xff, 2, 0, 0, 0, 0x2c, 1, 0, 0, 4, 0, 0, 0};
  EXPECT_EQ(FormatValue(REG_SZ, std::vector<BYTE>{'a', 0, 'b'}), "hex(1) 61 00 62");
  EXPECT_EQ(FormatValue(REG_SZ, std::vector<BYTE>{'\n', 0, 0, 0xD8, 0, 0}), "sz \"\\n\\ud800\"");
  EXPECT_EQ(FormatValue(REG_DWORD, std::vector<BYTE>{1, 2}), "hex(4) 01 02");
  EXPECT_EQ(FormatValue(REG_MULTI_SZ, std::vector<BYTE>{'a', 0, 0, 0}), "hex(7) 61 00 00 00");
  EXPECT_EQ(FormatValueAs("rect", rect), "rect -1,2,300,4");
  EXPECT_EQ(FormatValueAs("point", rect), "point -1,2");
  EXPECT_EQ(FormatValueAs("bool", rect), "bool true");
  EXPECT_EQ(FormatValueAs("sz", std::vector<BYTE>{'a', 0, 0, 0, 'b', 0}), "sz \"a\"");
  EXPECT_EQ(FormatValueAs("dword", std::vector<BYTE>{1, 1}), "dword 257");
  EXPECT_EQ(FormatValueAs("float", std::vector<BYTE>{0xcd, 0xcc, 0xcc, 0x3d}), "float 0.1");
  EXPECT_EQ(FormatValueAs("wrect", rect), std::nullopt);
  EXPECT_EQ(FormatValueAs("dword", rect), std::nullopt);
  EXPECT_EQ(FormatValueAs("bool", {}), std::nullopt);
}

TEST(SettingsValues, RefusesValuesATypeCannotTake) {
  const std::pair<std::string_view, std::vector<std::string_view>> cases[] = {
      {"frob", {"1"}},
      {"hex(x)", {}},
      {"sz", {}},
      {"sz", {"a", "b"}},
      {"dword", {"-1"}},
      {"dword", {"0x"}},
      {"dword", {"4294967296"}},
      {"qword", {"18446744073709551616"}},
      {"binary", {"100"}},
      {"binary", {"0x1"}},
      {"float", {"nan"}},
      {"float", {"1e39"}},
      {"bool", {"yes"}},
      {"point", {"1"}},
      {"point", {"1,2,3"}},
      {"rect", {"1,2,3,2147483648"}},
      {"wrect", {"1,2,3,inf"}},
      {"sz", {"\xFF"}},
  };
  for (const auto& [type, values] : cases) {
    EXPECT_THROW(ParseTypedValue(type, values), UsageError) << type << " " << (values.empty() ? "" : values[0]);
  }
}

}  // namespace
}  // namespace cadtools::cli

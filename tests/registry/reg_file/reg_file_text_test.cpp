// The .reg text format on its own: reading, writing, the round trip.
#include <gtest/gtest.h>

#include <string>

#include "reg_file_test_util.h"

namespace cadtools::testing {
namespace {

using registry::ParseRegFile;
using registry::WriteRegFile;

constexpr std::string_view kHead = "Windows Registry Editor Version 5.00\r\n\r\n";

std::string Parsed(const std::string& bytes) {
  const registry::RegParseResult r = ParseRegFile(bytes);
  if (r.error) return "error " + std::to_string(r.error->line) + ": " + r.error->message;
  return Describe(r.keys);
}

// UTF-8 text as the UTF-16LE file the registry editor writes.
std::string Utf16File(std::string_view utf8) {
  const CString wide = FromUtf8(utf8);
  std::string bytes = "\xFF\xFE";
  for (const WCHAR unit : wide.View()) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

TEST(ParseRegFile, ReadsEveryLineForm) {
  const std::pair<std::string, std::string> cases[] = {
      {"[HKEY_CURRENT_USER\\S\\K]\r\n\"a\"=\"x\\\\y\\\"z\"\r\n@=\"\"",
       "[HKCU\\S\\K] a=1:78,00,5c,00,79,00,22,00,7a,00,00,00 @=1:00,00"},
      {"[hkcu\\K]\n\"d\"=dword:0000002A\n\"e\"=DWORD:1", "[HKCU\\K] d=4:2a,00,00,00 e=4:01,00,00,00"},
      {"[HKLM\\K]\n\"b\"=hex:\n\"c\"=hex(b):01,02,\\\n  03 , 4\n\"n\"=hex(0):ff",
       "[HKLM\\K] b=3: c=b:01,02,03,04 n=0:ff"},
      {"[HKEY_LOCAL_MACHINE\\K]\n\"t\"=hex(80000000):00\n\"x\"=-\n@=-", "[HKLM\\K] t=80000000:00 -x -@"},
      {"; comment\n\n  [-HKEY_CURRENT_USER\\A\\B]  \n[HKEY_CURRENT_USER]\n \"q\" = \"v\" ",
       "[-HKCU\\A\\B] [HKCU] q=1:76,00,00,00"},
      {"[HKCU\\a]b]]\n\"=]\\\"\"=hex:1", "[HKCU\\a]b]] =]\"=3:01"},
      {"[HKCU\\K]\n\"\xF0\x9F\x98\x80\"=\"\xC3\xA9\"", "[HKCU\\K] <d83d><de00>=1:e9,00,00,00"},
  };
  for (const auto& [body, want] : cases) {
    EXPECT_EQ(Parsed(std::string(kHead) + body), want) << body;
    EXPECT_EQ(Parsed(Utf16File(std::string(kHead) + body)), want) << "UTF-16: " << body;
  }
  EXPECT_EQ(Parsed("\xEF\xBB\xBF" + std::string(kHead) + "[HKCU\\K]"), "[HKCU\\K]");
  // REGEDIT4 keeps string data in 8 bits; the registry holds it wide.
  EXPECT_EQ(Parsed("REGEDIT4\n[HKCU\\K]\n\"m\"=hex(7):61,00,c3,a9,00,00\n\"b\"=hex:61,00"),
            "[HKCU\\K] m=7:61,00,00,00,e9,00,00,00,00,00 b=3:61,00");
}

// The same file in each encoding a user brings: what the registry editor
// writes, UTF-8 from an editor, and ANSI (code page 1252 here) from
// REGEDIT4 files made on Windows, where "café" must arrive as it left.
TEST(ParseRegFile, ReadsEveryEncoding) {
  const std::string body = "[HKCU\\Caf\xC3\xA9]\r\n\"a\"=\"caf\xC3\xA9\"\r\n";
  const std::string want = "[HKCU\\Caf<e9>] a=1:63,00,61,00,66,00,e9,00,00,00";
  const std::string ansi = "[HKCU\\Caf\xE9]\r\n\"a\"=\"caf\xE9\"\r\n";
  const std::pair<std::string, std::string> cases[] = {
      {Utf16File(std::string(kHead) + body), want},
      {"\xEF\xBB\xBF" + std::string(kHead) + body, want},
      {std::string(kHead) + body, want},
      {"REGEDIT4\r\n\r\n" + body, want},
      {"REGEDIT4\r\n\r\n" + ansi, want},
      {std::string(kHead) + ansi, want},
      // 8-bit string data of REGEDIT4 files, by the same rule.
      {"REGEDIT4\r\n[HKCU\\K]\r\n\"e\"=hex(2):63,61,66,e9,00\r\n", "[HKCU\\K] e=2:63,00,61,00,66,00,e9,00,00,00"},
      {"REGEDIT4\r\n[HKCU\\K]\r\n\"e\"=hex(2):63,c3,a9,00\r\n", "[HKCU\\K] e=2:63,00,e9,00,00,00"},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(Parsed(cases[i].first), cases[i].second) << "case #" << i;
}

TEST(ParseRegFile, NamesTheLineOfTheFirstFault) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "error 1: empty file"},
      {"Windows Registry Editor Version 4.00\n", "error 1: not a registry file"},
      {"\xFE\xFFxx", "error 1: UTF-16 big-endian"},
      {"\xEF\xBB\xBFREGEDIT4\n[HKCU\\K]\n\"a\"=\"\xC3\"", "error 3: the file has a UTF-8 byte order mark"},
      {"REGEDIT4\n\"a\"=\"b\"", "error 2: value line before the first [KEY]"},
      {"REGEDIT4\n[HKCU\\K\n", "error 2: key line without a closing ']'"},
      {"REGEDIT4\n[HKCU\\K] x", "error 2: text after the key's closing ']'"},
      {"REGEDIT4\n[HKEY_CURRENT_CONFIG\\K]", "error 2: hive HKEY_CURRENT_CONFIG is not supported"},
      {"REGEDIT4\n[-HKU\\S-1-5-21-1]", "error 2: refusing to delete a user's whole hive"},
      {"REGEDIT4\n[HKEY_FOO\\K]", "error 2: unknown hive 'HKEY_FOO'"},
      {"REGEDIT4\n[-HKCU]", "error 2: refusing to delete a whole hive"},
      {"REGEDIT4\n[HKCU\\a\\\\b]", "error 2: empty key name"},
      {"REGEDIT4\n[HKCU\\\\a]", "error 2: empty key name"},
      {"REGEDIT4\n[HKCU\\" + std::string(256, 'k') + "]", "error 2: key name of 256 characters"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"\"b\"", "error 3: expected '='"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=\"b\" c", "error 3: unexpected text after the closing quote"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=\"b", "error 3: string without its closing quote"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\\n\"=\"b\"", "error 3: unknown escape '\\n' in a value name"},
      {"REGEDIT4\n[HKCU\\K]\n\"" + std::string(16384, 'v') + "\"=-", "error 3: value name of 16384 characters"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=dword:123456789", "error 3: dword: needs 1 to 8 hex digits"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=dword:", "error 3: dword: needs 1 to 8 hex digits"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex(123456789):", "error 3: hex(N): needs a type number"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex(2)01", "error 3: expected ':' after hex(N)"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex:01,\\\n 02,\\\n zz", "error 5: expected a hex byte"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex:123", "error 3: expected a hex byte"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex:01 02", "error 3: expected ',' between hex bytes"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex:,01", "error 3: expected a hex byte before ','"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=hex:01,\\", "error 3: the hex data goes on past the end of the file"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=sz:x", "error 3: unknown value data 'sz:x'"},
      {"REGEDIT4\n[HKCU\\K]\nname=1", "error 3: expected [KEY], a value line"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\r\"=-\r\n", "error 3: value name without its closing quote"},
      {"REGEDIT4\n[HKCU\\K]\n\"a\"=\"b\" ;\n\"c\"=dword:1 2", "error 4: dword: needs 1 to 8 hex digits"},
      {"REGEDIT4\r[HKCU\\K]\r\"a\"=hex:01,\\\r;\r\r  zz", "error 6: expected a hex byte"},      {std::string("REGEDIT4\n[HKCU\\K]\n\"a") + '\0' + "\"=-", "error 3: NUL character"},
  };
  for (const auto& [text, want] : cases) {
    const std::string got = Parsed(text);
    EXPECT_EQ(got.substr(0, want.size()), want) << text.substr(0, 60);
  }
  EXPECT_EQ(Parsed(Utf16File("REGEDIT4\n\n\"a\"") + "x").substr(0, 39), "error 3: the file ends in the middle of");
}

std::string ValueLines(const RegValueEntry& value) {
  const std::string bytes = WriteRegFile({{RegHive::kCurrentUser, U(u"K"), false, {value}}});
  std::string text;  // back to 8 bits: the cases are ASCII
  for (std::size_t i = 2; i < bytes.size(); i += 2) text.push_back(bytes[i]);
  const std::string head = std::string(kHead) + "[HKEY_CURRENT_USER\\K]\r\n";
  EXPECT_EQ(text.substr(0, head.size()), head);
  return text.substr(head.size());
}

TEST(WriteRegFile, ChoosesTheFormThatKeepsEveryByte) {
  const auto v = [](std::u16string_view name, DWORD type, std::vector<BYTE> data, bool remove = false) {
    return RegValueEntry{U(name), remove, type, std::move(data), 0};
  };
  const std::pair<RegValueEntry, std::string> cases[] = {
      {v(u"s", REG_SZ, Bytes({'a', 0, '"', 0, '\\', 0, 0, 0})), "\"s\"=\"a\\\"\\\\\"\r\n\r\n"},
      {v(u"", REG_SZ, Bytes({0, 0})), "@=\"\"\r\n\r\n"},
      {v(u"q\"\\", REG_DWORD, Bytes({0xef, 0xbe, 0xad, 0xde})), "\"q\\\"\\\\\"=dword:deadbeef\r\n\r\n"},
      {v(u"d", REG_DWORD, Bytes({1, 0, 0})), "\"d\"=hex(4):01,00,00\r\n\r\n"},
      {v(u"d", REG_DWORD_BIG_ENDIAN, Bytes({1, 0, 0, 0})), "\"d\"=hex(5):01,00,00,00\r\n\r\n"},
      {v(u"s", REG_SZ, Bytes({'a', 0})), "\"s\"=hex(1):61,00\r\n\r\n"},
      {v(u"s", REG_SZ, Bytes({'a', 0, 0, 0, 0})), "\"s\"=hex(1):61,00,00,00,00\r\n\r\n"},
      {v(u"s", REG_SZ, Bytes({'a', 0, 0, 0, 'b', 0, 0, 0})), "\"s\"=hex(1):61,00,00,00,62,00,00,00\r\n\r\n"},
      {v(u"s", REG_SZ, Bytes({'\n', 0, 0, 0})), "\"s\"=hex(1):0a,00,00,00\r\n\r\n"},
      {v(u"s", REG_SZ, {}), "\"s\"=hex(1):\r\n\r\n"},
      {v(u"e", REG_EXPAND_SZ, Bytes({'a', 0, 0, 0})), "\"e\"=hex(2):61,00,00,00\r\n\r\n"},
      {v(u"b", REG_BINARY, {}), "\"b\"=hex:\r\n\r\n"},
      {v(u"n", REG_NONE, Bytes({0xAB})), "\"n\"=hex(0):ab\r\n\r\n"},
      {v(u"t", 0x80000000u, {}), "\"t\"=hex(80000000):\r\n\r\n"},
      {v(u"x", REG_BINARY, {}, true), "\"x\"=-\r\n\r\n"},
  };
  for (const auto& [value, want] : cases) EXPECT_EQ(ValueLines(value), want) << want;
}

TEST(WriteRegFile, WrapsHexDataAtEightyColumns) {
  std::vector<BYTE> data;
  for (int i = 0; i < 47; ++i) data.push_back(static_cast<BYTE>(i));
  std::string want = "\"ShellState\"=hex:";
  for (int i = 0; i < 47; ++i) {
    char byte[4];
    std::snprintf(byte, sizeof byte, "%02x", i);
    want += byte;
    if (i == 19 || i == 44)
      want += ",\\\r\n  ";  // 20 bytes after the name, then 25 a line
    else if (i < 46)
      want += ",";
  }
  const std::string got = ValueLines({U(u"ShellState"), false, REG_BINARY, data, 0});
  EXPECT_EQ(got, want + "\r\n\r\n");
  // A name that leaves no room breaks before the first byte.
  const std::string long_name(76, 'n');
  EXPECT_EQ(ValueLines({WString(long_name.begin(), long_name.end()), false, REG_BINARY, Bytes({1}), 0}),
            "\"" + long_name + "\"=hex:\\\r\n  01\r\n\r\n");
}

TEST(WriteRegFile, WritesKeysAsTheRegistryEditorDoes) {
  const RegKeys keys = {{RegHive::kLocalMachine, U(u"A"), true, {}, 0},
                        {RegHive::kCurrentUser, U(u""), false, {}, 0},
                        {RegHive::kCurrentUser, U(u"B\\C"), false, {}, 0}};
  EXPECT_EQ(WriteRegFile(keys),
            Utf16File(std::string(kHead) + "[-HKEY_LOCAL_MACHINE\\A]\r\n\r\n[HKEY_CURRENT_USER]\r\n\r\n"
                                           "[HKEY_CURRENT_USER\\B\\C]\r\n\r\n"));
}

TEST(RegFile, RoundTripsEveryShapeInMemory) {
  RegKeys keys = EveryShape(RegHive::kLocalMachine, U(u"Software\\Quenby\\T"));
  keys.front().values.push_back({U(u"odd"), false, REG_SZ, Bytes({'a', 0, 0}), 0});
  const std::string bytes = WriteRegFile(keys);
  const registry::RegParseResult parsed = ParseRegFile(bytes);
  ASSERT_FALSE(parsed.error) << parsed.error->line << ": " << parsed.error->message;
  EXPECT_EQ(Describe(parsed.keys), Describe(keys));
  EXPECT_EQ(WriteRegFile(parsed.keys), bytes);
}

TEST(RegStringData, DecodesOnlyWhatEncodesBackTheSame) {
  const std::pair<std::vector<BYTE>, int> multi_cases[] = {
      {Bytes({0, 0}), 0},
      {Bytes({0, 0, 0, 0}), 1},
      {Bytes({'a', 0, 0, 0, 0, 0}), 1},
      {Bytes({'a', 0, 0, 0, 0, 0, 'b', 0, 0, 0, 0, 0}), 3},
      {Bytes({'a', 0, 0, 0}), -1},
      {Bytes({0}), -1},
      {Bytes({}), -1},
      {Bytes({'a', 0, 0, 0, 0, 0, 0}), -1},
      {Bytes({1, 0}), -1},
  };
  for (const auto& [data, count] : multi_cases) {
    const auto strings = registry::DecodeRegMultiString(data);
    EXPECT_EQ(strings ? static_cast<int>(strings->size()) : -1, count) << data.size();
    if (strings) {
      EXPECT_EQ(registry::EncodeRegMultiString(*strings), data);
    }
  }
  EXPECT_EQ(registry::DecodeRegString(Bytes({'a', 0, 0, 0})), U(u"a"));
  for (const std::vector<BYTE>& data :
       {Bytes({}), Bytes({0}), Bytes({'a', 0}), Bytes({0, 0, 0, 0}), Bytes({0, 0, 0})}) {
    EXPECT_FALSE(registry::DecodeRegString(data)) << data.size();
  }
}

}  // namespace
}  // namespace cadtools::testing

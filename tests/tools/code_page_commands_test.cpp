// convert and charset without the process around them: code page words,
// the conversions byte for byte, and the charset answers.
#include "code_page_commands.h"
#include "errors.h"

#include <cadtools/text/code_pages.h>

#include <gtest/gtest.h>

#include <string>

namespace cadtools::cli {
namespace {

using namespace std::string_literals;

TEST(ParseCodePage, NumbersNamesAndRefusals) {
  const std::pair<const char*, UINT> known[] = {
      {"1252", 1252},  {"CP932", 932},     {"65001", 65001}, {"UTF-8", 65001}, {"utf8", 65001},
      {"utf-16", 1200}, {"UTF16LE", 1200}, {"utf-16be", 1201}, {"0", 0},
  };
  for (const auto& [word, codePage] : known) EXPECT_EQ(ParseCodePage(word), codePage) << word;
  EXPECT_EQ(ParseCodePage("ANSI"), SystemAnsiCodePage());
  EXPECT_EQ(ParseCodePage("oem"), SystemOemCodePage());
  for (const char* word : {"", "cp", "-1", "65536", "12a", " 1252", "latin1", "utf-32", "0x4e4"}) {
    EXPECT_FALSE(ParseCodePage(word).has_value()) << "'" << word << "'";
  }
}

TEST(CodePageAvailable, WindowsCodePagesAndUnicodeOnly) {
  for (const UINT codePage : {1252U, 437U, 932U, 65001U, 1200U, 1201U}) EXPECT_TRUE(CodePageAvailable(codePage)) << codePage;
  for (const UINT codePage : {12345U, 99U, 65535U}) EXPECT_FALSE(CodePageAvailable(codePage)) << codePage;
}

TEST(ConvertText, GivesWindowsBytesAndKeepsEverythingElse) {
  struct Case {
    UINT from;
    UINT to;
    std::string in;
    std::string out;
  };
  const Case cases[] = {
      {1252, 65001, "caf\xE9\r\n\0\x1A x"s, "caf\xC3\xA9\r\n\0\x1A x"s},  // line ends, NUL and Ctrl-Z kept
      {1252, 65001, "\x80\x81", "\xE2\x82\xAC\xC2\x81"},  // 0x81 has no character: Windows reads U+0081
      {65001, 1252, "\xE2\x82\xAC\xC3\xA9", "\x80\xE9"},
      {65001, 437, "\xE2\x82\xAC" "a", "?a"},  // 437 has no euro sign
      {65001, 65001, "\xC3(\xFF", "\xEF\xBF\xBD(\xEF\xBF\xBD"},  // broken UTF-8 comes out repaired
      {65001, 1200, "a\xF0\x9F\x98\x80", "a\0\x3D\xD8\x00\xDE"s},
      {1200, 65001, "\x00\xD8" "a\0"s, "\xEF\xBF\xBD" "a"},  // lone surrogate
      {1200, 65001, "a\0b"s, "a\xEF\xBF\xBD"},                // odd last byte
      {1201, 1200, "\0a\xFE\xFF"s, "a\0\xFF\xFE"s},           // a byte-order mark is only a character
      {932, 65001, "\x82\xA0" "A", "\xE3\x81\x82" "A"},
      {65001, 932, "\xE3\x81\x82", "\x82\xA0"},
      {1251, 1253, "\xC0", "?"},  // Cyrillic A has no Greek byte
      {1252, 1200, "", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ConvertText(c.from, c.to, c.in), c.out) << c.from << " -> " << c.to << " of '" << c.in << "'";
  }
}

TEST(DescribeCharset, NumbersAndNamesBothWays) {
  const std::pair<const char*, const char*> cases[] = {
      {"204", "Cyrillic, code page 1251"},
      {" greek ", "161, code page 1253"},
      {"Chinese", "136, code page 950"},  // whole names: not Chinese(GB2312)
      {"chinese(gb2312)", "134, code page 936"},
      {"77", "77 (no name), code page 2"},
      {"163", "Vietnamese, code page 0 (the system's ANSI code page)"},
      {"255", "OEM, code page 1"},
      {"DEFAULT", "1, code page 0 (the system's ANSI code page)"},
      {"Klingon", "1, code page 0 (the system's ANSI code page); 'Klingon' is no charset name, which the host reads "
                  "as 1 (Default)"},
      {"-1", "1, code page 0 (the system's ANSI code page); '-1' is no charset name, which the host reads as 1 "
             "(Default)"},
  };
  for (const auto& [word, answer] : cases) EXPECT_EQ(DescribeCharset(word), answer) << word;
  for (const char* word : {"256", "99999999999"}) EXPECT_THROW(DescribeCharset(word), UsageError) << word;
}

}  // namespace
}  // namespace cadtools::cli

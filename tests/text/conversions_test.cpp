// Conversions between multi-byte text and UTF-16. The expected values are
// what Windows gives (the Windows builds run these against the system), so
// every target must produce them.
#include <cadtools/text_tools.h>

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "text/code_page_conversion.h"
#include "text_test_util.h"

namespace {

using cadtools::WString;
using Units = std::vector<unsigned>;

CString FromUnits(const Units& units) {
  WString s;
  for (const unsigned u : units) s.push_back(static_cast<WCHAR>(u));
  return CString(s.data(), static_cast<int>(s.size()));
}

std::string Hex(const std::string& bytes) {
  std::string out;
  for (const char c : bytes) out += testing::PrintToString(static_cast<unsigned>(static_cast<unsigned char>(c))) + " ";
  return out;
}

struct Decoding {
  int codePage;
  const char* bytes;
  Units expected;
};

void ExpectDecodings(std::initializer_list<Decoding> cases) {
  for (const Decoding& c : cases) {
    EXPECT_EQ(CTextTools::MB2Unicode(c.bytes, c.codePage), FromUnits(c.expected))
        << "code page " << c.codePage << ", bytes " << Hex(c.bytes);
  }
}

TEST(MB2UnicodeTest, Utf8ReplacesBrokenSequencesAsWindowsDoes) {
  ExpectDecodings({
      {65001, "caf\xC3\xA9", {0x63, 0x61, 0x66, 0xE9}},
      {65001, "\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
      {65001, "\xEF\xBB\xBF" "a", {0xFEFF, 0x61}},
      {65001, "\xC3(", {0xFFFD, 0x28}},
      {65001, "\x80", {0xFFFD}},
      {65001, "\xC0\xAF", {0xFFFD, 0xFFFD}},
      {65001, "\xE0\x80\x80", {0xFFFD, 0xFFFD}},
      {65001, "\xED\xA0\x80", {0xFFFD, 0xFFFD}},
      {65001, "\xF4\x90\x80\x80", {0xFFFD, 0xFFFD, 0xFFFD}},
      {65001, "\xF8\x88\x80\x80\x80", {0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}},
      {65001, "a\xF0\x9F(b", {0x61, 0xFFFD, 0x28, 0x62}},
      {65001, "\xC2\xC3\xA9", {0xFFFD, 0xE9}},
      {65001, "\xE2\x82", {0xFFFD}},
      {65001, "\xF0\x9F\x98", {0xFFFD}},
      {65001, "\xE0\x41", {0xFFFD, 0x41}},
  });
}

TEST(MB2UnicodeTest, Windows1252KeepsItsHolesAsControls) {
  ExpectDecodings({
      {1252, "\x80\x81\x82\x8D\x8E\x8F", {0x20AC, 0x81, 0x201A, 0x8D, 0x17D, 0x8F}},
      {1252, "\x90\x91\x9D\x9E\x9F", {0x90, 0x2018, 0x9D, 0x17E, 0x178}},
      {1252, "\xE9\xFF\x7F", {0xE9, 0xFF, 0x7F}},
  });
}

TEST(MB2UnicodeTest, DoubleBytePagesReadLeadAndNextByteAsOne) {
  ExpectDecodings({
      {932, "\x82\xA0", {0x3042}},
      {932, "\x81\x3F", {0x30FB}},      // a pair without a character
      {932, "\x82 x", {0x30FB, 0x78}},  // the space is taken with the lead
      {932, "\x85\x40", {0x30FB}},
      {932, "\xF0\x40", {0xE000}},      // user-defined characters
      {932, "\x80\xA0\xFD", {0x80, 0xF8F0, 0xF8F1}},
      {932, "\x5C\x7E", {0x5C, 0x7E}},
      {936, "\xB0\xA1", {0x554A}},
      {936, "\x80\xFF", {0x20AC, 0xF8F5}},
      {936, "\x81\x30", {0x3F}},
      {936, "\xAA\xA1\xA1\x40", {0xE000, 0xE4C6}},
      {932, "\x1A\x1C\x7F", {0x1A, 0x1C, 0x7F}},  // controls are themselves
      {949, "\xB0\xA1\x80", {0xAC00, 0x80}},
      {950, "\xA4\x40\xFF", {0x4E00, 0xF8F8}},
  });
}

TEST(MB2UnicodeTest, LeadByteAtTheEndPairsWithTheTerminator) {
  ExpectDecodings({
      {932, "a\x82", {0x61, 0x30FB}},
      {936, "a\xB0", {0x61, 0x3F}},
  });
}

TEST(MB2UnicodeTest, OemMacSymbolAndSystemPages) {
  ExpectDecodings({
      {437, "\x80\xE1\xFF\x01", {0xC7, 0xDF, 0xA0, 0x01}},
      {850, "\xD5", {0x131}},
      {437, "\x1A\x1C\x7F\xE6", {0x1A, 0x1C, 0x7F, 0xB5}},
      {10000, "\x80\xA5\xBD", {0xC4, 0x2022, 0x2126}},
      {1253, "\xAA\xC1", {0xF8F9, 0x391}},
      {852, "\xAA", {0xAC}},
      {1255, "\xCA\xD9\xFF", {0x5BA, 0xF88D, 0xF896}},  // bytes without a character: private use
      {1257, "\xA1\xA5", {0xF8FC, 0xF8FD}},
      {2, "\x80\xA5", {0xC4, 0x2022}},  // the Mac code page
      {42, "\x01\x41\xFF", {0x01, 0xF041, 0xF0FF}},
  });
}

TEST(MB2UnicodeTest, EmptyTextAndInvalidCodePagesGiveEmpty) {
  ExpectDecodings({
      {12345, "abc", {}},
      {1200, "ab", {}},
      {65001, "", {}},
      {1252, "", {}},
  });
  EXPECT_EQ(CTextTools::MB2Unicode(CStringA("a\0b", 3), 1252), CString(W("a")));
  EXPECT_EQ(CTextTools::MB2Unicode(CStringA("\0b", 2), 1252), CString());
}

#if !defined(_WIN32)
TEST(MB2UnicodeTest, SystemPagesFollowTheEnvironment) {
  setenv("CADTOOLS_ACP", "932", 1);
  setenv("CADTOOLS_OEMCP", "850", 1);
  EXPECT_EQ(CTextTools::MB2Unicode("\x82\xA0", -1), FromUnits({0x3042}));
  EXPECT_EQ(CTextTools::MB2Unicode("\x82\xA0", 0), FromUnits({0x3042}));
  EXPECT_EQ(CTextTools::MB2Unicode("\xD5", 1), FromUnits({0x131}));
  unsetenv("CADTOOLS_ACP");
  unsetenv("CADTOOLS_OEMCP");
}
#endif

TEST(MB2UnicodeTest, NegativeAndZeroMeanTheAnsiCodePage) {
  const CString expected = CTextTools::MB2Unicode("\x80\xE9", static_cast<int>(cadtools::SystemAnsiCodePage()));
  EXPECT_EQ(CTextTools::MB2Unicode("\x80\xE9", -1), expected);
  EXPECT_EQ(CTextTools::MB2Unicode("\x80\xE9", 0), expected);
  EXPECT_EQ(CTextTools::MB2Unicode("\x80\xE9", 3), expected);
}

TEST(WideCharToMBTest, GivesUtf8WithReplacedLoneSurrogates) {
  const struct {
    Units text;
    std::string expected;
  } cases[] = {
      {{}, ""},
      {{0xE9}, "\xC3\xA9"},
      {{0x20AC, 0x41}, "\xE2\x82\xAC" "A"},
      {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
      {{0xD800}, "\xEF\xBF\xBD"},
      {{0xDC00, 0x61}, "\xEF\xBF\xBD" "a"},
      {{0xD83D, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
      {{0xFFFF}, "\xEF\xBF\xBF"},
      {{0x61, 0, 0x62}, std::string("a\0b", 3)},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<char[]> buffer(CTextTools::WideCharToMB(FromUnits(c.text)));
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(Hex(std::string(buffer.get(), c.expected.size())), Hex(c.expected));
    EXPECT_EQ(buffer[c.expected.size()], '\0');
  }
}

TEST(MB2WideCharTest, ReadsUtf8AndToleratesNull) {
  EXPECT_EQ(CTextTools::MB2WideChar(nullptr), CString());
  EXPECT_EQ(CTextTools::MB2WideChar(""), CString());
  EXPECT_EQ(CTextTools::MB2WideChar("caf\xC3\xA9"), FromUnits({0x63, 0x61, 0x66, 0xE9}));
  EXPECT_EQ(CTextTools::MB2WideChar("\xFF" "a"), FromUnits({0xFFFD, 0x61}));
}

TEST(MB2WideCharTest, WellFormedTextSurvivesTheRoundTrip) {
  std::mt19937 rng(20261121);
  std::uniform_int_distribution<unsigned> pick(1, 0x10FFFF);
  for (int round = 0; round < 300; ++round) {
    Units units;
    for (int i = round % 12; i > 0; --i) {
      unsigned cp = pick(rng);
      if (cp >= 0xD800 && cp <= 0xDFFF) cp = 0xE9;
      if (cp < 0x10000) {
        units.push_back(cp);
      } else {
        units.push_back(0xD800 + ((cp - 0x10000) >> 10));
        units.push_back(0xDC00 + ((cp - 0x10000) & 0x3FF));
      }
    }
    const CString text = FromUnits(units);
    const std::unique_ptr<char[]> bytes(CTextTools::WideCharToMB(text));
    EXPECT_EQ(CTextTools::MB2WideChar(bytes.get()), text);
  }
}

// Counted bytes through the platform layer: a lead byte before a NUL
// stands alone, and the NUL stays.
TEST(MultiByteToWideTest, LeadByteBeforeNulStandsAlone) {
  const struct {
    unsigned codePage;
    std::string bytes;
    Units expected;
  } cases[] = {
      {932, std::string("\x82\0a", 3), {0x30FB, 0, 0x61}},
      {936, std::string("\xB0\0", 2), {0x3F, 0}},
      {932, std::string("\x82", 1), {0x30FB}},
  };
  for (const auto& c : cases) {
    const WString wide = cadtools::codepage::MultiByteToWide(c.codePage, c.bytes);
    EXPECT_EQ(CString(wide.data(), static_cast<int>(wide.size())), FromUnits(c.expected)) << Hex(c.bytes);
  }
}

// The narrowing direction of the platform layer, for the code pages the
// host's ANSI and OEM texts use.
TEST(WideToMultiByteTest, UnmappableCharactersBecomeTheDefaultCharacter) {
  const struct {
    unsigned codePage;
    Units text;
    std::string expected;
  } cases[] = {
      {1252, {0x20AC, 0x81, 0x8D, 0x4E00, 0xE9, 0x2013, 0x80, 0xFF, 0xFFFD}, "\x80\x81\x8D?\xE9\x96?\xFF?"},
      {1252, {0xD83D, 0xDE00}, "??"},
      {932, {0x3042, 0x4E00, 0xFF71, 0x5C, 0xAC00, 0x2160, 0xFFE5}, "\x82\xA0\x88\xEA\xB1\x5C?\x87\x54\x81\x8F"},
      {932, {0xF8F0, 0xE000, 0x20AC}, "\xA0\xF0\x40?"},
      {936, {0x4E00, 0x3042, 0x20AC, 0xE9, 0xAC00, 0xB7, 0x100}, "\xD2\xBB\xA4\xA2\x80\xA8\xA6?\xA1\xA4\xA8\xA1"},
      {437, {0xC7, 0xE9, 0x20AC, 0x3B1, 0x2591, 0xA0, 0x4E00}, "\x80\x82?\xE0\xB0\xFF?"},
      {437, {0x1A, 0x1C, 0x7F, 0xB5, 0xFFE9}, "\x1A\x1C\x7F\xE6?"},
      {932, {0x1A, 0x1C, 0x7F, 0x4FE0}, "\x1A\x1C\x7F?"},  // no IBM variants
      {1253, {0xF8F9, 0xAA, 0x391}, "\xAA?\xC1"},
      {65001, {0x61, 0, 0xD800}, std::string("a\0\xEF\xBF\xBD", 5)},
      {12345, {0x61}, ""},
      {1200, {0x61}, ""},
  };
  for (const auto& c : cases) {
    const CString text = FromUnits(c.text);
    const std::string bytes = cadtools::codepage::WideToMultiByte(
        c.codePage, cadtools::WStringView(text.GetString(), static_cast<std::size_t>(text.GetLength())));
    EXPECT_EQ(Hex(bytes), Hex(c.expected)) << "code page " << c.codePage;
  }
}

}  // namespace

// UTF-16 to code-page bytes for every unit, as Windows writes them: the
// characters a code page has, its best-fit replacements for the ones it
// lacks, and '?' for the rest. The Windows builds run this against the
// system, so the fingerprints below hold for every target.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "text/code_page_conversion.h"

namespace {

using cadtools::WString;
using cadtools::codepage::WideToMultiByte;

std::string Write(unsigned codePage, const WString& units) {
  return WideToMultiByte(codePage, cadtools::WStringView(units.data(), units.size()));
}

std::string WriteUnit(unsigned codePage, unsigned unit) {
  return Write(codePage, WString(1, static_cast<WCHAR>(unit)));
}

// FNV-1a over each unit's bytes and their count, unit by unit.
std::uint64_t Fingerprint(unsigned codePage) {
  std::uint64_t h = 14695981039346656037ULL;
  const auto mix = [&h](unsigned byte) {
    h ^= byte & 0xFFU;
    h *= 1099511628211ULL;
  };
  for (unsigned u = 0; u <= 0xFFFF; ++u) {
    const std::string bytes = WriteUnit(codePage, u);
    mix(static_cast<unsigned>(bytes.size()));
    for (const char c : bytes) mix(static_cast<unsigned char>(c));
  }
  return h;
}

TEST(BestFitTest, EveryUnitAsWindowsWritesIt) {
  const struct {
    unsigned codePage;
    std::uint64_t fingerprint;
  } cases[] = {
      {437, 0x1BABC39D6555A4A8ULL}, {850, 0x86C50263D1DB8264ULL}, {852, 0xC64B918D99964AAAULL},
      {866, 0x7D1DF4076F779D31ULL}, {874, 0x144218D769D6D80EULL}, {1250, 0xD63F89C255A09562ULL},
      {1251, 0xF96C2F4B3D12AB39ULL}, {1252, 0x44ADFB929326EB91ULL}, {1253, 0x6D3DCEE445975979ULL},
      {1254, 0x4723691CDCEE8CBFULL}, {1255, 0x3CFC8A2D28A20C52ULL}, {1256, 0x6FFD98F08BD6CE43ULL},
      {1257, 0x81A30F784328B160ULL}, {1258, 0x7D7808286A9F5CACULL}, {10000, 0x10383C6CAF02B3C5ULL},
      {932, 0x68A3F6D6A81A6562ULL}, {936, 0x79D08EB34B751CCCULL}, {949, 0x10018B7D7B09EB53ULL},
      {950, 0x1E3056C4C81AE42FULL},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Fingerprint(c.codePage), c.fingerprint) << "code page " << c.codePage;
  }
}

TEST(BestFitTest, LackedCharactersBecomeNearOnes) {
  const struct {
    unsigned codePage;
    unsigned unit;
    std::string bytes;
  } cases[] = {
      {1252, 0x0100, "A"},          // A with macron
      {1252, 0x0107, "c"},          // c with acute
      {1252, 0x2264, "="},          // less-than or equal to
      {1252, 0xFF21, "A"},          // fullwidth A
      {437, 0x00A4, "\x0F"},        // the currency sign as the sun glyph
      {437, 0x00C0, "A"},           // A with grave
      {850, 0x0100, "A"},
      {1250, 0x00C0, "A"},
      {1251, 0x00E9, "e"},
      {932, 0x00A2, "\x81\x91"},    // cent sign as the fullwidth one
      {932, 0x00A5, "\\"},          // yen sign
      {1252, 0x4E00, "?"},          // no near character
      {1252, 0xD800, "?"},          // lone surrogate
      {10000, 0xF8FF, "\xF0"},      // the Apple logo
      {852, 0x00AC, "\xAA"},       // written as read
      {1255, 0x05BA, "\xCA"},
      {10000, 0x0100, "?"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WriteUnit(c.codePage, c.unit), c.bytes) << "code page " << c.codePage << ", unit " << c.unit;
  }
}

// A text is written as its units one by one: no character depends on
// its neighbours.
TEST(BestFitTest, TextIsWrittenUnitByUnit) {
  std::mt19937 random(5);
  std::uniform_int_distribution<unsigned> unit(0x20, 0xD7FF);
  for (const unsigned codePage : {437U, 1250U, 1252U, 1258U, 932U, 936U, 950U}) {
    WString text;
    std::string expected;
    for (int i = 0; i < 400; ++i) {
      // Mostly Latin, Greek and Cyrillic, where best fits are, and some CJK.
      const unsigned u = i % 4 == 0 ? unit(random) : 0x20 + unit(random) % 0x4E0;
      text.push_back(static_cast<WCHAR>(u));
      expected += WriteUnit(codePage, u);
    }
    EXPECT_EQ(Write(codePage, text), expected) << "code page " << codePage;
  }
}

}  // namespace

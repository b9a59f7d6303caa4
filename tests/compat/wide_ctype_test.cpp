#include <cadtools/compat/wide_ctype.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

using cadtools::IsWideDigit;
using cadtools::IsWideSpace;
using cadtools::ToLowerUnit;
using cadtools::ToUpperUnit;

WCHAR U(unsigned u) { return static_cast<WCHAR>(u); }

std::vector<unsigned> UnitsWhere(bool (*test)(WCHAR) noexcept) {
  std::vector<unsigned> found;
  for (unsigned u = 0; u <= 0xFFFF; ++u) {
    if (test(U(u))) found.push_back(u);
  }
  return found;
}

// FNV-1a over every unit's four answers: pins the whole table, so a target
// whose character data differs from the others fails here.
std::uint64_t Fingerprint() {
  std::uint64_t h = 14695981039346656037ULL;
  const auto mix = [&h](unsigned v) {
    for (int byte = 0; byte < 2; ++byte) {
      h ^= (v >> (8 * byte)) & 0xFFU;
      h *= 1099511628211ULL;
    }
  };
  for (unsigned u = 0; u <= 0xFFFF; ++u) {
    mix(ToUpperUnit(U(u)));
    mix(ToLowerUnit(U(u)));
    mix((IsWideSpace(U(u)) ? 1U : 0U) | (IsWideDigit(U(u)) ? 2U : 0U));
  }
  return h;
}

TEST(WideCtypeTest, SpaceIsWhiteSpaceProperty) {
  const std::vector<unsigned> want = {0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,
                                      0xA0,   0x1680, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004,
                                      0x2005, 0x2006, 0x2007, 0x2008, 0x2009, 0x200A, 0x2028,
                                      0x2029, 0x202F, 0x205F, 0x3000};
  EXPECT_EQ(UnitsWhere(IsWideSpace), want);
}

TEST(WideCtypeTest, DigitIsDecimalNumber) {
  const struct {
    unsigned unit;
    bool digit;
  } cases[] = {
      {'0', true},     {'9', true},     {'/', false},    {':', false},    {0x0660, true},  // Arabic-Indic
      {0x0669, true},  {0x06F0, true},  {0x0966, true},  {0xFF10, true},  {0xFF19, true},  // fullwidth
      {0x00B2, false}, {0x00B3, false}, {0x00B9, false}, {0x00BD, false}, {0x2070, false},  // not Nd
      {0x2460, false}, {0x216B, false}, {0x3007, false}, {0xD835, false}, {0xFFFF, false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsWideDigit(U(c.unit)), c.digit) << std::hex << c.unit;
  EXPECT_EQ(UnitsWhere(IsWideDigit).size(), 370U);  // Nd units of the basic plane
}

TEST(WideCtypeTest, SimpleCaseMapping) {
  const struct {
    unsigned unit;
    unsigned upper;
    unsigned lower;
  } cases[] = {
      {'a', 'A', 'a'},          {'Z', 'Z', 'z'},          {'1', '1', '1'},
      {0x00E9, 0x00C9, 0x00E9},  // é
      {0x00DF, 0x00DF, 0x00DF},  // ß: no one-unit capital
      {0x1E9E, 0x1E9E, 0x00DF},  // capital sharp s lowers to ß
      {0x00FF, 0x0178, 0x00FF},  // ÿ / Ÿ
      {0x00B5, 0x039C, 0x00B5},  // micro sign
      {0x0131, 'I', 0x0131},     // dotless i
      {0x0130, 0x0130, 'i'},     // dotted capital I
      {0x017F, 'S', 0x017F},     // long s
      {0x01C5, 0x01C4, 0x01C6},  // title-case Dž
      {0x03C2, 0x03A3, 0x03C2},  // final sigma
      {0x0416, 0x0416, 0x0436},  // Ж
      {0x212A, 0x212A, 'k'},     // Kelvin sign
      {0x10D0, 0x1C90, 0x10D0},  // Georgian mkhedruli
      {0xFF41, 0xFF21, 0xFF41},  // fullwidth a
      {0xD801, 0xD801, 0xD801},  // a surrogate maps to itself
      {0x0149, 0x0149, 0x0149},  // ŉ: its capital is two units
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ToUpperUnit(U(c.unit)), U(c.upper)) << std::hex << c.unit;
    EXPECT_EQ(ToLowerUnit(U(c.unit)), U(c.lower)) << std::hex << c.unit;
  }
}

TEST(WideCtypeTest, SameTableOnEveryTarget) { EXPECT_EQ(Fingerprint(), 11873138918270575459ULL); }

}  // namespace

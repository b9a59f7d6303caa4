// Random device tags in UTF-8 for the tests of natural sorting and
// filtering: the shapes of real tags ("-K12", "=A1+B2-X15:7",
// "PLC.Rack1.Slot04") mixed with what breaks naive code: leading zeros,
// long digit runs (past the lengths where sort keys change their form),
// case variants, white space beyond ASCII, letters whose case maps onto
// ASCII (KELVIN SIGN, dotted capital I, long s), broken UTF-8, characters
// beyond the basic plane, NULs and empty tags.
#pragma once

#include <cstddef>
#include <iterator>
#include <random>
#include <string>

namespace cadtools::test {

struct TagShapes {
  bool otherDigits = false;  // digits beyond ASCII (Arabic-Indic, fullwidth)
};

inline std::string RandomDigits(std::mt19937& rng) {
  static constexpr std::size_t kLengths[] = {1, 1, 1, 2, 2, 3, 4, 8, 9, 10, 254, 255, 256};
  const std::size_t roll = rng() % 16;
  const std::size_t length = roll < std::size(kLengths) ? kLengths[roll] : 1 + rng() % 40;
  std::string run;
  if (rng() % 3 == 0) run = std::string(1 + rng() % 3, '0');
  while (run.size() < length) run.push_back(static_cast<char>('0' + rng() % 10));
  return run;
}

inline std::string RandomTag(std::mt19937& rng, TagShapes shapes = {}) {
  static const char* const kPieces[] = {
      "-", "=", "+", ".", ":", "_", "~", " ", "\t", "K", "k", "X", "x", "M", "PLC", "plc", "Rack", "Slot",
      "\xC3\xBC",          // ü
      "\xC3\x9C",          // Ü
      "\xC3\x9F",          // ß
      "\xC5\xBF",          // long s
      "\xE2\x84\xAA",      // KELVIN SIGN
      "\xC4\xB0",          // I with dot above
      "\xC4\xB1",          // dotless i
      "\xC2\xA0",          // no-break space
      "\xE3\x80\x80",      // ideographic space
      "\xD0\x96",          // Ж
      "\xF0\x9F\x98\x80",  // beyond the basic plane: two UTF-16 units
      "\xFF", "\xC3", "\xE2\x84", "\x01", "\x7F",
  };
  static const char* const kOtherDigits[] = {"\xD9\xA3", "\xD9\xA0", "\xEF\xBC\x93"};  // ٣ ٠ ３
  if (rng() % 25 == 0) return {};
  std::string tag;
  const std::size_t parts = 1 + rng() % 8;
  for (std::size_t i = 0; i < parts; ++i) {
    const std::size_t roll = rng() % 100;
    if (roll < 40) {
      tag += RandomDigits(rng);
    } else if (roll < 41) {
      tag.push_back('\0');
    } else if (shapes.otherDigits && roll < 46) {
      tag += kOtherDigits[rng() % std::size(kOtherDigits)];
    } else {
      tag += kPieces[rng() % std::size(kPieces)];
    }
  }
  return tag;
}

// A tag that shares a random part of `tag`'s beginning, so that a
// comparison has to look past it.
inline std::string RelatedTag(std::mt19937& rng, const std::string& tag, TagShapes shapes = {}) {
  return tag.substr(0, tag.empty() ? 0 : rng() % (tag.size() + 1)) + RandomTag(rng, shapes);
}

}  // namespace cadtools::test

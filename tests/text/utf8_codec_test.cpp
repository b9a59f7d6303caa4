// The UTF-8 codec's fast paths (the block loops, ASCII runs copied in
// blocks, whole two- and three-byte sequences, encoding without branches),
// with the block loops and without them, against a plain
// byte-by-byte model of the same rules, on random mixes of every kind of
// input, so that a fast path never changes a result. The rules themselves
// are checked against Windows' results in conversions_test.cpp.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "platform/utf8_blocks.h"
#include "platform/utf8_codec.h"

namespace {

using cadtools::WString;

constexpr WCHAR kReplacement = 0xFFFD;

void ModelPut(WString& out, std::uint32_t cp) {
  if (cp < 0x10000) {
    out.push_back(static_cast<WCHAR>(cp));
  } else {
    out.push_back(static_cast<WCHAR>(0xD800U + ((cp - 0x10000U) >> 10)));
    out.push_back(static_cast<WCHAR>(0xDC00U + ((cp - 0x10000U) & 0x3FFU)));
  }
}

// One lead byte at a time: its length, then its second byte's range.
WString ModelDecode(const std::string& text) {
  WString out;
  const auto at = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const auto continuation = [](std::uint8_t b) { return (b & 0xC0U) == 0x80U; };
  std::size_t i = 0;
  while (i < text.size()) {
    const std::uint8_t b = at(i);
    std::size_t length = 0;
    std::uint8_t low = 0x80;
    std::uint8_t high = 0xBF;
    if (b < 0x80) {
      out.push_back(b);
      ++i;
      continue;
    }
    if (b >= 0xC2 && b <= 0xDF) length = 2;
    if (b >= 0xE0 && b <= 0xEF) length = 3;
    if (b >= 0xF0 && b <= 0xF4) length = 4;
    if (b == 0xE0) low = 0xA0;
    if (b == 0xED) high = 0x9F;
    if (b == 0xF0) low = 0x90;
    if (b == 0xF4) high = 0x8F;
    if (length == 0) {
      out.push_back(kReplacement);
      ++i;
    } else if (text.size() - i < length) {
      out.push_back(kReplacement);
      break;
    } else if (!continuation(at(i + 1))) {
      out.push_back(kReplacement);
      ++i;
    } else if (at(i + 1) < low || at(i + 1) > high) {
      out.push_back(kReplacement);
      i += 2;
    } else {
      std::uint32_t cp = b & (0x7FU >> length);
      std::size_t read = 1;
      while (read < length && continuation(at(i + read))) cp = (cp << 6) | (at(i + read++) & 0x3FU);
      if (read < length) {
        out.push_back(kReplacement);
      } else {
        ModelPut(out, cp);
      }
      i += read;
    }
  }
  return out;
}

void ModelPutUtf8(std::string& out, std::uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0U | (cp >> 6));
    out += static_cast<char>(0x80U | (cp & 0x3FU));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0U | (cp >> 12));
    out += static_cast<char>(0x80U | ((cp >> 6) & 0x3FU));
    out += static_cast<char>(0x80U | (cp & 0x3FU));
  } else {
    out += static_cast<char>(0xF0U | (cp >> 18));
    out += static_cast<char>(0x80U | ((cp >> 12) & 0x3FU));
    out += static_cast<char>(0x80U | ((cp >> 6) & 0x3FU));
    out += static_cast<char>(0x80U | (cp & 0x3FU));
  }
}

std::string ModelEncode(const WString& units) {
  std::string out;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const std::uint32_t u = units[i];
    const bool pair = u >= 0xD800 && u <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
                      units[i + 1] <= 0xDFFF;
    if (pair) {
      ModelPutUtf8(out, 0x10000U + ((u - 0xD800U) << 10) + (units[i + 1] - 0xDC00U));
      ++i;
    } else {
      ModelPutUtf8(out, u >= 0xD800 && u <= 0xDFFF ? kReplacement : u);
    }
  }
  return out;
}

// Pieces that take each path: ASCII runs longer and shorter than a block,
// letters of one, two, three and four bytes, broken and cut-off sequences.
// Long texts of whole letters, where the block loops do most of the work,
// come as often as short ones full of faults.
std::string RandomBytes(std::mt19937& rng) {
  static const char* const kLetters[] = {"\xC3\xA9", "\xD0\x96", "\xDF\xBF", "\xC2\x80", "\xE2\x82\xAC",
                                         "\xE6\x97\xA5", "\xED\x9F\xBF", "\xEF\xBF\xBF", "\xE0\xA0\x80",
                                         "\xEE\x80\x80", " ", "\r\n", "K"};
  static const char* const kOthers[] = {"\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\xC3", "\xE2\x82",
                                        "\xF0\x9F\x98", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80",
                                        "\xF4\x90\x80\x80", "\x80", "\xBF", "\xFF", "\xF5", "\xE1("};
  std::string text;
  const bool faultsRare = rng() % 2 == 0;
  const int pieces = static_cast<int>(rng() % (faultsRare ? 200 : 24));
  for (int p = 0; p < pieces; ++p) {
    const auto kind = rng() % (faultsRare ? 64 : 3);
    if (kind == 0) {
      const std::size_t run = rng() % 40;
      for (std::size_t k = 0; k < run; ++k) text += static_cast<char>(0x20 + rng() % 0x5F);
    } else if (kind == 1) {
      text += kOthers[rng() % std::size(kOthers)];
    } else {
      text += kLetters[rng() % std::size(kLetters)];
    }
  }
  return text;
}

WString RandomUnits(std::mt19937& rng) {
  WString units;
  const bool faultsRare = rng() % 2 == 0;
  const int pieces = static_cast<int>(rng() % (faultsRare ? 200 : 24));
  for (int p = 0; p < pieces; ++p) {
    // The first three kinds are letters of one, two and three bytes.
    switch (rng() % (faultsRare && rng() % 32 != 0 ? 3 : 6)) {
      case 0: {
        const std::size_t run = rng() % 40;
        for (std::size_t k = 0; k < run; ++k) units.push_back(static_cast<WCHAR>(rng() % 0x80));
        break;
      }
      case 1: units.push_back(static_cast<WCHAR>(0x80 + rng() % 0x780)); break;
      case 2: units.push_back(static_cast<WCHAR>(0x800 + rng() % 0xD000)); break;
      case 3: units += WString{static_cast<WCHAR>(0xD800 + rng() % 0x400), static_cast<WCHAR>(0xDC00 + rng() % 0x400)}; break;
      case 4: units.push_back(static_cast<WCHAR>(0xD800 + rng() % 0x800)); break;  // alone, high or low
      default: units.push_back(static_cast<WCHAR>(0xE000 + rng() % 0x2000)); break;
    }
  }
  return units;
}

using cadtools::codepage::Utf8Loops;

class Utf8CodecLoops : public ::testing::TestWithParam<Utf8Loops> {};

TEST_P(Utf8CodecLoops, DecodingMatchesTheByteByByteModel) {
  std::mt19937 rng(20261121);
  for (int n = 0; n < 20000; ++n) {
    const std::string text = RandomBytes(rng);
    ASSERT_EQ(cadtools::codepage::DecodeUtf8(text, GetParam()), ModelDecode(text)) << "case " << n;
  }
}

TEST_P(Utf8CodecLoops, EncodingMatchesTheUnitByUnitModel) {
  std::mt19937 rng(11212026);
  for (int n = 0; n < 20000; ++n) {
    const WString units = RandomUnits(rng);
    ASSERT_EQ(cadtools::codepage::EncodeUtf8(units, GetParam()), ModelEncode(units)) << "case " << n;
  }
}

INSTANTIATE_TEST_SUITE_P(BothLoops, Utf8CodecLoops,
                         ::testing::Values(Utf8Loops::kBlocksWherePossible, Utf8Loops::kCharactersOnly),
                         [](const ::testing::TestParamInfo<Utf8Loops>& loops) {
                           return loops.param == Utf8Loops::kBlocksWherePossible ? "Blocks" : "CharactersOnly";
                         });

// The block loops must carry mixed-script text to its last window: were a
// step to give up on text it should take, results would stay right and
// only the benchmark would notice.
TEST(Utf8Blocks, TakeWholeMixedScriptText) {
  if (!cadtools::codepage::HaveUtf8Blocks()) GTEST_SKIP() << "no block loops on this processor";
  const std::string word = "Sch\xC3\xBCtz \xE9\x9B\xBB\xE5\x8B\x95\xE6\xA9\x9F \xCE\x88\xCE\xBB \xEC\xA0\x9C ";
  std::string bytes;
  while (bytes.size() < 4096) bytes += word;
  const WString units = ModelDecode(bytes);
  WString decoded(bytes.size(), WCHAR{0});
  const auto read = cadtools::codepage::DecodeUtf8Blocks(reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                                         bytes.size(), decoded.data());
  EXPECT_GT(read.read, bytes.size() - 16);
  std::string encoded(bytes.size(), '\0');
  const auto written = cadtools::codepage::EncodeUtf8Blocks(units.data(), units.size(), encoded.data());
  EXPECT_GT(written.read, units.size() - 40);
}

}  // namespace

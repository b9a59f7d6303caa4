// Our UTF-8 codec, byte for byte what Windows produces for broken input
// too, so that texts stored by the host read the same on every target.
#include "platform/utf8_codec.h"

#include "platform/utf8_blocks.h"
#include "text/code_page_conversion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace cadtools::codepage {

namespace {

constexpr WCHAR kReplacement = 0xFFFD;

constexpr bool IsContinuation(std::uint8_t b) noexcept { return (b & 0xC0U) == 0x80U; }

// What a lead byte promises: the sequence length, the bits it carries and
// the range its second byte must lie in. length 0: not a lead byte.
struct Lead {
  std::size_t length;
  std::uint32_t bits;
  std::uint8_t secondLow;
  std::uint8_t secondHigh;
};

constexpr Lead ReadLead(std::uint8_t b) noexcept {
  if (b >= 0xC2 && b <= 0xDF) return {2, b & 0x1FU, 0x80, 0xBF};
  if (b == 0xE0) return {3, 0, 0xA0, 0xBF};                 // no overlong forms
  if (b == 0xED) return {3, 0x0D, 0x80, 0x9F};              // no surrogates
  if (b >= 0xE1 && b <= 0xEF) return {3, b & 0x0FU, 0x80, 0xBF};
  if (b == 0xF0) return {4, 0, 0x90, 0xBF};                 // no overlong forms
  if (b >= 0xF1 && b <= 0xF3) return {4, b & 0x07U, 0x80, 0xBF};
  if (b == 0xF4) return {4, 0x04, 0x80, 0x8F};              // up to U+10FFFF
  return {0, 0, 0, 0};
}

// Whether the eight bytes at p are all ASCII; the runs of them, which most
// of the host's texts are, are copied without looking at each byte.
bool EightAscii(const std::uint8_t* p) noexcept {
  std::uint64_t v;
  std::memcpy(&v, p, sizeof v);
  return (v & 0x8080808080808080ULL) == 0;
}

// Whether the four units at p are all ASCII.
bool FourAscii(const WCHAR* p) noexcept {
  std::uint64_t v;
  std::memcpy(&v, p, sizeof v);
  return (v & 0xFF80FF80FF80FF80ULL) == 0;
}

// Units from 0x80 count one byte more than ASCII, from 0x800 two more.
std::size_t ExtraUtf8Bytes(const WCHAR* p, std::size_t size) noexcept {
  std::size_t total = 0;
  std::size_t k = 0;
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  const __m128i two = _mm_set1_epi16(2);
  const __m128i under80 = _mm_set1_epi16(0x7F);
  const __m128i under800 = _mm_set1_epi16(0x7FF);
  while (size - k >= 8) {
    // Each lane gains at most 2 a step: 16000 steps stay below 32768.
    const std::size_t steps = std::min<std::size_t>((size - k) / 8, 16000);
    __m128i lanes = zero;
    for (std::size_t step = 0; step < steps; ++step, k += 8) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + k));
      // All ones (-1) where the unit is at most 0x7F, resp. 0x7FF.
      const __m128i ascii = _mm_cmpeq_epi16(_mm_subs_epu16(v, under80), zero);
      const __m128i two_bytes = _mm_cmpeq_epi16(_mm_subs_epu16(v, under800), zero);
      lanes = _mm_add_epi16(lanes, _mm_add_epi16(two, _mm_add_epi16(ascii, two_bytes)));
    }
    const __m128i pairs = _mm_madd_epi16(lanes, _mm_set1_epi16(1));
    alignas(16) std::int32_t sums[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(sums), pairs);
    total += static_cast<std::size_t>(sums[0]) + static_cast<std::size_t>(sums[1]) + static_cast<std::size_t>(sums[2]) +
             static_cast<std::size_t>(sums[3]);
  }
#endif
  for (; k < size; ++k) total += (p[k] >= 0x80 ? 1U : 0U) + (p[k] >= 0x800 ? 1U : 0U);
  return total;
}

WCHAR* PutCodePoint(WCHAR* out, std::uint32_t cp) noexcept {
  if (cp < 0x10000) {
    *out++ = static_cast<WCHAR>(cp);
    return out;
  }
  cp -= 0x10000;
  *out++ = static_cast<WCHAR>(0xD800U + (cp >> 10));
  *out++ = static_cast<WCHAR>(0xDC00U + (cp & 0x3FFU));
  return out;
}

char* PutUtf8(char* out, std::uint32_t cp) noexcept {
  const auto byte = [&out](std::uint32_t b) { *out++ = static_cast<char>(static_cast<std::uint8_t>(b)); };
  if (cp < 0x80) {
    byte(cp);
  } else if (cp < 0x800) {
    byte(0xC0U | (cp >> 6));
    byte(0x80U | (cp & 0x3FU));
  } else if (cp < 0x10000) {
    byte(0xE0U | (cp >> 12));
    byte(0x80U | ((cp >> 6) & 0x3FU));
    byte(0x80U | (cp & 0x3FU));
  } else {
    byte(0xF0U | (cp >> 18));
    byte(0x80U | ((cp >> 12) & 0x3FU));
    byte(0x80U | ((cp >> 6) & 0x3FU));
    byte(0x80U | (cp & 0x3FU));
  }
  return out;
}

// Where the block loops may first run: at the start, or never.
std::size_t FirstBlock(Utf8Loops loops) noexcept {
  return loops == Utf8Loops::kBlocksWherePossible && HaveUtf8Blocks() ? 0 : SIZE_MAX;
}

// Lets a block loop run from i once the character loop has reached
// blocksFrom: it moves i and o on, and the character loop then takes the
// block it stopped at (`stride` elements) before it may run again.
template <class In, class Out>
void OfferBlocks(BlockProgress (*blocks)(const In*, std::size_t, Out*) noexcept, std::size_t stride, const In* in,
                 std::size_t size, std::size_t& i, Out*& o, std::size_t& blocksFrom) noexcept {
  if (i < blocksFrom) return;
  const BlockProgress done = blocks(in + i, size - i, o);
  i += done.read;
  o += done.written;
  blocksFrom = i + stride;
}

}  // namespace

WString DecodeUtf8(std::string_view bytes, Utf8Loops loops) {
  // Every byte gives at most one unit: a four-byte sequence gives two.
  WString out(bytes.size(), WCHAR{0});
  WCHAR* o = out.data();
  const auto* const begin = reinterpret_cast<const std::uint8_t*>(bytes.data());
  const std::size_t size = bytes.size();
  const auto at = [begin](std::size_t i) { return begin[i]; };
  std::size_t blocksFrom = FirstBlock(loops);
  std::size_t i = 0;
  while (i < size) {
    OfferBlocks(DecodeUtf8Blocks, 16, begin, size, i, o, blocksFrom);
    if (i == size) break;
    const std::uint8_t b = at(i);
    if (b < 0x80) {
#if defined(__SSE2__)
      // Sixteen bytes widened at once; the units after the first non-ASCII
      // byte are written too but not kept (each byte gives at most one
      // unit, so there is room), and the scan goes on from that byte.
      if (size - i >= 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin + i));
        const __m128i zero = _mm_setzero_si128();
        _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_unpacklo_epi8(v, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(o + 8), _mm_unpackhi_epi8(v, zero));
        const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(v));
        const std::size_t ascii = mask == 0 ? 16U : static_cast<std::size_t>(__builtin_ctz(mask));
        o += ascii;
        i += ascii;
        continue;
      }
#endif
      while (size - i >= 8 && EightAscii(begin + i)) {
        for (std::size_t k = 0; k < 8; ++k) o[k] = begin[i + k];
        o += 8;
        i += 8;
      }
      if (i < size && at(i) < 0x80) {
        *o++ = at(i);
        ++i;
      }
      continue;
    }
    // Whole two- and three-byte sequences, the letters of European and CJK
    // texts, without the general path's questions.
    if (b >= 0xC2 && b <= 0xDF && size - i >= 2 && IsContinuation(at(i + 1))) {
      *o++ = static_cast<WCHAR>(((b & 0x1FU) << 6) | (at(i + 1) & 0x3FU));
      i += 2;
      continue;
    }
    if (b >= 0xE1 && b <= 0xEC && size - i >= 3 && IsContinuation(at(i + 1)) && IsContinuation(at(i + 2))) {
      *o++ = static_cast<WCHAR>(((b & 0x0FU) << 12) | ((at(i + 1) & 0x3FU) << 6) | (at(i + 2) & 0x3FU));
      i += 3;
      continue;
    }
    const Lead lead = ReadLead(b);
    if (lead.length == 0) {
      *o++ = kReplacement;
      ++i;
      continue;
    }
    if (size - i < lead.length) {  // cut off: the rest is one replacement
      *o++ = kReplacement;
      break;
    }
    const std::uint8_t second = at(i + 1);
    if (!IsContinuation(second)) {
      *o++ = kReplacement;
      ++i;
      continue;
    }
    if (second < lead.secondLow || second > lead.secondHigh) {
      *o++ = kReplacement;
      i += 2;
      continue;
    }
    std::uint32_t cp = (lead.bits << 6) | (second & 0x3FU);
    std::size_t read = 2;
    while (read < lead.length && IsContinuation(at(i + read))) {
      cp = (cp << 6) | (at(i + read) & 0x3FU);
      ++read;
    }
    o = read < lead.length ? (*o = kReplacement, o + 1) : PutCodePoint(o, cp);
    i += read;
  }
  out.resize(static_cast<std::size_t>(o - out.data()));
  return out;
}

namespace {

// At most three bytes per unit: counting them first keeps a buffer near its
// final size (a surrogate pair, four bytes, counts six). Three bytes of
// slack follow, as EncodeInto writes every character as four.
std::size_t EncodedBound(WStringView units) noexcept {
  return units.size() + ExtraUtf8Bytes(units.data(), units.size()) + 3;
}

// Encodes units into out, which holds EncodedBound(units) bytes; returns the
// number of bytes of the text.
std::size_t EncodeInto(WStringView units, char* const out, Utf8Loops loops) noexcept {
  const WCHAR* const p = units.data();
  const std::size_t size = units.size();
  char* o = out;
  std::size_t blocksFrom = FirstBlock(loops);
  std::size_t i = 0;
  while (i < size) {
    OfferBlocks(EncodeUtf8Blocks, 8, p, size, i, o, blocksFrom);
    if (i == size) break;
    std::uint32_t u = p[i];
    if (u < 0x80) {
#if defined(__SSE2__)
      // Eight units narrowed at once, kept up to the first non-ASCII one
      // (the buffer holds at least a byte for each unit still to come).
      if (size - i >= 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        const __m128i high = _mm_and_si128(v, _mm_set1_epi16(static_cast<short>(0xFF80)));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(v, v));
        const unsigned wide = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(high, _mm_setzero_si128()))) ^ 0xFFFFU;
        const std::size_t ascii = wide == 0 ? 8U : static_cast<std::size_t>(__builtin_ctz(wide)) / 2;
        o += ascii;
        i += ascii;
        continue;
      }
#endif
      while (size - i >= 4 && FourAscii(p + i)) {
        for (std::size_t k = 0; k < 4; ++k) o[k] = static_cast<char>(p[i + k]);
        o += 4;
        i += 4;
      }
      if (i == size) break;
      u = p[i];
    }
    if (u - 0xD800U < 0x800U) {  // a surrogate: paired, four bytes; alone, U+FFFD
      if (u <= 0xDBFF && i + 1 < size && p[i + 1] >= 0xDC00 && p[i + 1] <= 0xDFFF) {
        o = PutUtf8(o, 0x10000U + ((u - 0xD800U) << 10) + (p[i + 1] - 0xDC00U));
        i += 2;
      } else {
        o = PutUtf8(o, kReplacement);
        ++i;
      }
      continue;
    }
    // One, two or three bytes, chosen without branches: mixed scripts
    // switch between them too often for a branch to guess.
    const std::uint32_t two = u >= 0x80 ? 1U : 0U;
    const std::uint32_t three = u >= 0x800 ? 1U : 0U;
    const std::uint32_t last = 0x80U | (u & 0x3FU);
    const std::uint32_t asTwo = (0xC0U | (u >> 6)) | (last << 8);
    const std::uint32_t asThree = (0xE0U | (u >> 12)) | ((0x80U | ((u >> 6) & 0x3FU)) << 8) | (last << 16);
    const std::uint32_t word = three != 0 ? asThree : (two != 0 ? asTwo : u);
    const unsigned char bytes[4] = {static_cast<unsigned char>(word), static_cast<unsigned char>(word >> 8),
                                    static_cast<unsigned char>(word >> 16), 0};
    std::memcpy(o, bytes, 4);
    o += 1 + two + three;
    ++i;
  }
  return static_cast<std::size_t>(o - out);
}

}  // namespace

std::string EncodeUtf8(WStringView units, Utf8Loops loops) {
  std::string out(EncodedBound(units), '\0');
  out.resize(EncodeInto(units, out.data(), loops));
  return out;
}

std::unique_ptr<char[]> WideToUtf8Buffer(WStringView units) {
  std::unique_ptr<char[]> buffer(new char[EncodedBound(units) + 1]);  // written, not zeroed first
  buffer[EncodeInto(units, buffer.get(), Utf8Loops::kBlocksWherePossible)] = '\0';
  return buffer;
}

}  // namespace cadtools::codepage

// The UTF-8 block loops with SSSE3 shuffles, chosen at run time: the x86
// baseline we build for is SSE2, and pshufb is what lets a step place
// characters of one, two and three bytes side by side without branches.
#include "platform/utf8_blocks.h"

#include <array>

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
#define CADTOOLS_UTF8_BLOCKS 1
#include <immintrin.h>
#else
#define CADTOOLS_UTF8_BLOCKS 0
#endif

namespace cadtools::codepage {

#if CADTOOLS_UTF8_BLOCKS

namespace {

// A pshufb control per index: 0x80 clears a byte.
struct ShuffleTable {
  alignas(16) std::array<std::array<std::uint8_t, 16>, 256> control;
  std::array<std::uint8_t, 256> length;  // bytes the control fills
};

// Encoding: four units sit in 32-bit lanes as [last, middle, lead, 0]
// bytes. Index bits 0-3 say that unit 0-3 is at least U+0080, bits 4-7
// that it is at least U+0800; the control lines up each unit's 1, 2 or 3
// bytes, lead first.
constexpr ShuffleTable MakeEncodeTable() {
  ShuffleTable table{};
  for (unsigned index = 0; index < 256; ++index) {
    unsigned n = 0;
    for (unsigned unit = 0; unit < 4; ++unit) {
      const unsigned length = 1 + ((index >> unit) & 1U) + ((index >> (unit + 4)) & 1U);
      for (unsigned byte = length; byte-- > 0;) table.control[index][n++] = static_cast<std::uint8_t>(4 * unit + byte);
    }
    table.length[index] = static_cast<std::uint8_t>(n);
    for (; n < 16; ++n) table.control[index][n] = 0x80;
  }
  return table;
}

// Decoding: eight 16-bit lanes, of which the index's bits keep some, in
// order, at the front.
constexpr ShuffleTable MakeCompactTable() {
  ShuffleTable table{};
  for (unsigned index = 0; index < 256; ++index) {
    unsigned n = 0;
    for (unsigned lane = 0; lane < 8; ++lane) {
      if (((index >> lane) & 1U) == 0) continue;
      table.control[index][n++] = static_cast<std::uint8_t>(2 * lane);
      table.control[index][n++] = static_cast<std::uint8_t>(2 * lane + 1);
    }
    table.length[index] = static_cast<std::uint8_t>(n / 2);
    for (; n < 16; ++n) table.control[index][n] = 0x80;
  }
  return table;
}

constexpr ShuffleTable kEncodeTable = MakeEncodeTable();
constexpr ShuffleTable kCompactTable = MakeCompactTable();

#define CADTOOLS_SSSE3 __attribute__((target("ssse3")))

CADTOOLS_SSSE3 inline __m128i Control(const ShuffleTable& table, unsigned index) noexcept {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(table.control[index].data()));
}

CADTOOLS_SSSE3 inline __m128i Bytes(int value) noexcept { return _mm_set1_epi8(static_cast<char>(value)); }
CADTOOLS_SSSE3 inline __m128i Units(int value) noexcept { return _mm_set1_epi16(static_cast<short>(value)); }

CADTOOLS_SSSE3 inline unsigned Mask(__m128i lanes) noexcept { return static_cast<unsigned>(_mm_movemask_epi8(lanes)); }

// Lanes of bytes that are at most `limit`, unsigned.
CADTOOLS_SSSE3 inline __m128i AtMost(__m128i v, int limit) noexcept {
  return _mm_cmpeq_epi8(_mm_min_epu8(v, Bytes(limit)), v);
}

// Bytes of the window no block takes: F0-FF (four-byte leads and bytes no
// sequence has), C0 and C1 (overlong two-byte leads), a byte after E0
// below A0 (overlong three-byte forms) and a byte after ED from A0 on
// (UTF-16 surrogates). Each is the character loop's to turn into U+FFFD.
CADTOOLS_SSSE3 inline __m128i Unsupported(__m128i window) noexcept {
  const __m128i before = _mm_slli_si128(window, 1);
  const __m128i belowA0 = AtMost(window, 0x9F);
  const __m128i fourByteOrWorse = _mm_cmpeq_epi8(_mm_max_epu8(window, Bytes(0xF0)), window);
  const __m128i overlongLead = _mm_cmpeq_epi8(_mm_and_si128(window, Bytes(0xFE)), Bytes(0xC0));
  const __m128i overlongThree = _mm_and_si128(_mm_cmpeq_epi8(before, Bytes(0xE0)), belowA0);
  const __m128i surrogate = _mm_andnot_si128(belowA0, _mm_cmpeq_epi8(before, Bytes(0xED)));
  return _mm_or_si128(_mm_or_si128(fourByteOrWorse, overlongLead), _mm_or_si128(overlongThree, surrogate));
}

// The unit each byte would end, were it the last byte of its sequence:
// its payload, plus the one before it shifted by 6 if it is a continuation
// byte, plus the one two back shifted by 12 if the byte before is one too.
// `widen` picks the low or high eight bytes.
template <class Widen>
CADTOOLS_SSSE3 inline __m128i EndingUnits(__m128i payload, __m128i continuation, Widen widen) noexcept {
  const __m128i zero = _mm_setzero_si128();
  const __m128i one = widen(_mm_slli_si128(payload, 1), zero);
  const __m128i two = widen(_mm_slli_si128(payload, 2), zero);
  const __m128i afterOne = widen(continuation, continuation);
  const __m128i secondContinuation = _mm_and_si128(continuation, _mm_slli_si128(continuation, 1));
  const __m128i afterTwo = widen(secondContinuation, secondContinuation);
  return _mm_or_si128(widen(payload, zero), _mm_or_si128(_mm_and_si128(_mm_slli_epi16(one, 6), afterOne),
                                                         _mm_and_si128(_mm_slli_epi16(two, 12), afterTwo)));
}

CADTOOLS_SSSE3 BlockProgress DecodeBlocksSsse3(const std::uint8_t* bytes, std::size_t size, WCHAR* out) noexcept {
  const __m128i zero = _mm_setzero_si128();
  // The payload bits of a byte by its high nibble: ASCII 7, continuation
  // 6, two-byte lead 5, three-byte lead 4.
  const __m128i payloadBits =
      _mm_setr_epi8(0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x7F, 0x3F, 0x3F, 0x3F, 0x3F, 0x1F, 0x1F, 0x0F, 0x0F);
  std::size_t read = 0;
  WCHAR* o = out;
  while (size - read >= 16) {
    const __m128i window = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + read));
    if (Mask(window) == 0) {  // ASCII: widened as it is
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_unpacklo_epi8(window, zero));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o + 8), _mm_unpackhi_epi8(window, zero));
      read += 16;
      o += 16;
      continue;
    }
    if (Mask(Unsupported(window)) != 0) break;
    const __m128i continuation = _mm_cmplt_epi8(window, Bytes(-64));  // 80-BF, as signed bytes
    const unsigned follows = Mask(continuation);
    const unsigned twoLeads = Mask(_mm_cmpeq_epi8(_mm_and_si128(window, Bytes(0xE0)), Bytes(0xC0)));
    const unsigned threeLeads = Mask(_mm_cmpeq_epi8(_mm_and_si128(window, Bytes(0xF0)), Bytes(0xE0)));
    // Byte k ends a character when byte k+1 does not continue one; the
    // step takes the characters up to the last end among bytes 0-14.
    const unsigned ends = (~follows >> 1) & 0x7FFFU;
    if (ends == 0) break;
    const unsigned taken = 32U - static_cast<unsigned>(__builtin_clz(ends));
    // The continuation bytes must be exactly those the leads promise, over
    // the bytes taken and the one after them (which a cut-off character
    // would have needed).
    const unsigned promised = (twoLeads << 1) | (threeLeads << 1) | (threeLeads << 2);
    if (((promised ^ follows) & ((2U << taken) - 1U)) != 0) break;

    const __m128i highNibbles = _mm_and_si128(_mm_srli_epi16(window, 4), Bytes(0x0F));
    const __m128i payload = _mm_and_si128(window, _mm_shuffle_epi8(payloadBits, highNibbles));
    const auto lowHalf = [](__m128i a, __m128i b) { return _mm_unpacklo_epi8(a, b); };
    const auto highHalf = [](__m128i a, __m128i b) { return _mm_unpackhi_epi8(a, b); };
    const __m128i low = EndingUnits(payload, continuation, lowHalf);
    const __m128i high = EndingUnits(payload, continuation, highHalf);
    const unsigned keepLow = ends & 0xFFU;
    const unsigned keepHigh = ends >> 8;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_shuffle_epi8(low, Control(kCompactTable, keepLow)));
    o += kCompactTable.length[keepLow];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_shuffle_epi8(high, Control(kCompactTable, keepHigh)));
    o += kCompactTable.length[keepHigh];
    read += taken;
  }
  return {read, static_cast<std::size_t>(o - out)};
}

CADTOOLS_SSSE3 BlockProgress EncodeBlocksSsse3(const WCHAR* units, std::size_t size, char* out) noexcept {
  const __m128i zero = _mm_setzero_si128();
  std::size_t read = 0;
  char* o = out;
  // A step writes 16 bytes for the first four units and 16 more after
  // their 12 at most: 28 bytes, which the text's remaining 32 units (a
  // byte each at least) guarantee.
  while (size - read >= 32) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + read));
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + read + 8));
    if (Mask(_mm_cmpeq_epi16(_mm_and_si128(_mm_or_si128(v, next), Units(0xFF80)), zero)) == 0xFFFFU) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(v, next));  // sixteen ASCII units
      read += 16;
      o += 16;
      continue;
    }
    const __m128i ascii = _mm_cmpeq_epi16(_mm_subs_epu16(v, Units(0x7F)), zero);
    const __m128i upTo7FF = _mm_cmpeq_epi16(_mm_subs_epu16(v, Units(0x7FF)), zero);
    const unsigned narrow = Mask(_mm_packs_epi16(ascii, upTo7FF));  // bits 0-7 ASCII, 8-15 up to U+07FF
    if (narrow == 0xFFFFU) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(v, v));
      read += 8;
      o += 8;
      continue;
    }
    if (Mask(_mm_cmpeq_epi16(_mm_and_si128(v, Units(0xF800)), Units(0xD800))) != 0) break;
    // last: the unit itself (ASCII) or 10xxxxxx of its low six bits;
    // middle, in the high byte: 110xxxxx (two bytes) or 10xxxxxx (three);
    // lead: 1110xxxx.
    const __m128i last = _mm_or_si128(_mm_and_si128(v, _mm_or_si128(Units(0x3F), _mm_and_si128(ascii, Units(0x40)))),
                                      _mm_andnot_si128(ascii, Units(0x80)));
    const __m128i middle = _mm_or_si128(_mm_or_si128(_mm_and_si128(_mm_slli_epi16(v, 2), Units(0x3F00)), Units(0x8000)),
                                        _mm_and_si128(upTo7FF, Units(0x4000)));
    const __m128i lastAndMiddle = _mm_or_si128(last, middle);
    const __m128i lead = _mm_or_si128(_mm_srli_epi16(v, 12), Units(0xE0));
    const unsigned wide = ~narrow & 0xFFFFU;  // bits 0-7 from U+0080, 8-15 from U+0800
    const unsigned first = (wide & 0x0FU) | ((wide >> 4) & 0xF0U);
    const unsigned second = ((wide >> 4) & 0x0FU) | ((wide >> 8) & 0xF0U);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                     _mm_shuffle_epi8(_mm_unpacklo_epi16(lastAndMiddle, lead), Control(kEncodeTable, first)));
    o += kEncodeTable.length[first];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                     _mm_shuffle_epi8(_mm_unpackhi_epi16(lastAndMiddle, lead), Control(kEncodeTable, second)));
    o += kEncodeTable.length[second];
    read += 8;
  }
  return {read, static_cast<std::size_t>(o - out)};
}

#undef CADTOOLS_SSSE3

}  // namespace

bool HaveUtf8Blocks() noexcept {
  static const bool have = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0;
  }();
  return have;
}

BlockProgress DecodeUtf8Blocks(const std::uint8_t* bytes, std::size_t size, WCHAR* out) noexcept {
  return HaveUtf8Blocks() ? DecodeBlocksSsse3(bytes, size, out) : BlockProgress{0, 0};
}

BlockProgress EncodeUtf8Blocks(const WCHAR* units, std::size_t size, char* out) noexcept {
  return HaveUtf8Blocks() ? EncodeBlocksSsse3(units, size, out) : BlockProgress{0, 0};
}

#else  // no block loops on this processor: the character loops do it all

bool HaveUtf8Blocks() noexcept { return false; }

BlockProgress DecodeUtf8Blocks(const std::uint8_t*, std::size_t, WCHAR*) noexcept { return {0, 0}; }

BlockProgress EncodeUtf8Blocks(const WCHAR*, std::size_t, char*) noexcept { return {0, 0}; }

#endif

}  // namespace cadtools::codepage

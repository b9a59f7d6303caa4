#include "ascii_search.h"

#include "text/folded_search.h"

#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace cadtools::cli {
namespace {

bool IsHigh(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }

char OtherCase(char lowered) noexcept {
  return lowered >= 'a' && lowered <= 'z' ? static_cast<char>(lowered - 32) : lowered;
}

bool MatchesAt(const char* p, std::string_view lowered) noexcept {
  for (std::size_t i = 0; i < lowered.size(); ++i) {
    if (text::Lowered(p[i]) != lowered[i]) return false;
  }
  return true;
}

#if defined(__SSE2__)
__m128i Load(const char* p) noexcept { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

// Bytes of block equal to a or to b.
__m128i EitherOf(__m128i block, __m128i a, __m128i b) noexcept {
  return _mm_or_si128(_mm_cmpeq_epi8(block, a), _mm_cmpeq_epi8(block, b));
}

unsigned Mask(__m128i bytes) noexcept { return static_cast<unsigned>(_mm_movemask_epi8(bytes)); }
#endif

}  // namespace

std::size_t FindNonAscii(std::string_view text, std::size_t from) noexcept {
  const char* p = text.data() + from;
  const char* const end = text.data() + text.size();
#if defined(__SSE2__)
  for (; end - p >= 64; p += 64) {
    const __m128i any = _mm_or_si128(_mm_or_si128(Load(p), Load(p + 16)), _mm_or_si128(Load(p + 32), Load(p + 48)));
    if (Mask(any) != 0) break;
  }
  for (; end - p >= 16; p += 16) {
    if (const unsigned mask = Mask(Load(p)); mask != 0) {
      return static_cast<std::size_t>(p - text.data()) + static_cast<std::size_t>(std::countr_zero(mask));
    }
  }
#endif
  for (; p != end; ++p) {
    if (IsHigh(*p)) break;
  }
  return static_cast<std::size_t>(p - text.data());
}

std::size_t FindAsciiFolded(std::string_view text, std::string_view lowered, std::size_t from) noexcept {
  const std::size_t m = lowered.size();
  if (from > text.size() || text.size() - from < m) return text.size();
  const char* p = text.data() + from;
  const char* const lastStart = text.data() + text.size() - m;
#if defined(__SSE2__)
  // Blocks of sixteen starts: those where the first and the last byte of
  // the needle match are checked in full.
  const __m128i first = _mm_set1_epi8(lowered.front());
  const __m128i firstOther = _mm_set1_epi8(OtherCase(lowered.front()));
  const __m128i last = _mm_set1_epi8(lowered.back());
  const __m128i lastOther = _mm_set1_epi8(OtherCase(lowered.back()));
  for (; lastStart - p >= 15; p += 16) {
    unsigned mask =
        Mask(_mm_and_si128(EitherOf(Load(p), first, firstOther), EitherOf(Load(p + m - 1), last, lastOther)));
    for (; mask != 0; mask &= mask - 1) {
      const char* const at = p + std::countr_zero(mask);
      if (MatchesAt(at, lowered)) return static_cast<std::size_t>(at - text.data());
    }
  }
#endif
  for (; p <= lastStart; ++p) {
    if (MatchesAt(p, lowered)) return static_cast<std::size_t>(p - text.data());
  }
  return text.size();
}

}  // namespace cadtools::cli

#include <cadtools/compat/wide_case.h>

#include <cstdint>

namespace cadtools {

namespace {

// Capital letters first..last (every unit, or every second one for the
// blocks that alternate capital/small) map to capital + delta.
struct CaseRange {
  std::uint16_t first;
  std::uint16_t last;
  std::int16_t delta;
  std::uint8_t step;
};

constexpr CaseRange kRanges[] = {
    {0x0041, 0x005A, 32, 1},    // A-Z
    {0x00C0, 0x00D6, 32, 1},    // À-Ö
    {0x00D8, 0x00DE, 32, 1},    // Ø-Þ
    {0x0100, 0x012E, 1, 2},     // Ā ā .. Į į
    {0x0132, 0x0136, 1, 2},     // Ĳ ĳ .. Ķ ķ
    {0x0139, 0x0147, 1, 2},     // Ĺ ĺ .. Ň ň
    {0x014A, 0x0176, 1, 2},     // Ŋ ŋ .. Ŷ ŷ
    {0x0178, 0x0178, -121, 1},  // Ÿ ÿ
    {0x0179, 0x017D, 1, 2},     // Ź ź .. Ž ž
    {0x0386, 0x0386, 38, 1},    // Ά ά
    {0x0388, 0x038A, 37, 1},    // Έ έ .. Ί ί
    {0x038C, 0x038C, 64, 1},    // Ό ό
    {0x038E, 0x038F, 63, 1},    // Ύ ύ, Ώ ώ
    {0x0391, 0x03A1, 32, 1},    // Α-Ρ
    {0x03A3, 0x03AB, 32, 1},    // Σ-Ϋ
    {0x0400, 0x040F, 80, 1},    // Ѐ-Џ
    {0x0410, 0x042F, 32, 1},    // А-Я
    {0x0460, 0x0480, 1, 2},     // Ѡ ѡ .. Ҁ ҁ
    {0x048A, 0x04BE, 1, 2},     // Ҋ ҋ .. Ҿ ҿ
    {0x04C0, 0x04C0, 15, 1},    // Ӏ ӏ
    {0x04C1, 0x04CD, 1, 2},     // Ӂ ӂ .. Ӎ ӎ
    {0x04D0, 0x04FE, 1, 2},     // Ӑ ӑ .. Ӿ ӿ
};

constexpr bool InRange(const CaseRange& r, std::int32_t c) noexcept {
  return c >= r.first && c <= r.last && (c - r.first) % r.step == 0;
}

}  // namespace

WCHAR ToLowerUnit(WCHAR ch) noexcept {
  const auto c = static_cast<std::int32_t>(ch);
  if (c < 0x80) return (c >= 'A' && c <= 'Z') ? static_cast<WCHAR>(c + 32) : ch;
  if (c > 0x04FF) return ch;
  if (c == 0x0130) return static_cast<WCHAR>(0x0069);  // İ has no small form of its own
  for (const CaseRange& r : kRanges) {
    if (InRange(r, c)) return static_cast<WCHAR>(c + r.delta);
  }
  return ch;
}

WCHAR ToUpperUnit(WCHAR ch) noexcept {
  const auto c = static_cast<std::int32_t>(ch);
  if (c < 0x80) return (c >= 'a' && c <= 'z') ? static_cast<WCHAR>(c - 32) : ch;
  if (c > 0x04FF) return ch;
  switch (c) {  // small letters whose capital maps back to another small one
    case 0x00B5: return static_cast<WCHAR>(0x039C);  // µ -> Μ
    case 0x0131: return static_cast<WCHAR>(0x0049);  // ı -> I
    case 0x017F: return static_cast<WCHAR>(0x0053);  // ſ -> S
    case 0x03C2: return static_cast<WCHAR>(0x03A3);  // ς -> Σ
    default: break;
  }
  for (const CaseRange& r : kRanges) {
    if (InRange(r, c - r.delta)) return static_cast<WCHAR>(c - r.delta);
  }
  return ch;
}

}  // namespace cadtools

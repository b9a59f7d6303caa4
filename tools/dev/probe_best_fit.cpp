// Asks Windows which bytes WideCharToMultiByte (no flags, no default
// character) gives for every UTF-16 unit, and prints, as C++ data, the
// units where that is not the plain reverse of MultiByteToWideChar: the
// best-fit replacements and the characters Windows writes otherwise than
// it reads them. The code-page tables used off Windows are the plain
// reverse plus these pairs.
//
// The plain reverse: every valid single byte, then every valid lead and
// trail pair in ascending order; the first sequence that reads as a unit
// is the one that unit is written as; a unit no sequence reads as is '?'.
//
// Built only for Windows (CADTOOLS_BUILD_PROBES); run under wine:
//   cmake --preset win64 -DCADTOOLS_BUILD_PROBES=ON
//   cmake --build --preset win64 --target probe_best_fit
//   cmake/wine-run build/win64/wineprefix build/win64/tools/probe_best_fit.exe |
//     tr -d '\r' > src/platform/code_page_best_fit.h
#include <windows.h>

#include <array>
#include <cstdio>
#include <vector>

namespace {

constexpr unsigned kNone = 0xFFFFFFFFU;

bool IsLead(UINT codePage, unsigned b) {
  return IsDBCSLeadByteEx(codePage, static_cast<BYTE>(b)) != FALSE;
}

// The unit the bytes read as, or kNone when Windows calls them invalid.
unsigned Read(UINT codePage, const char* bytes, int length) {
  std::array<wchar_t, 4> out{};
  const int n = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes, length, out.data(), 4);
  return n == 1 ? static_cast<unsigned>(out[0]) : kNone;
}

// What Windows writes for one unit, as lead * 256 + trail for two bytes.
unsigned Write(UINT codePage, unsigned unit) {
  const wchar_t in = static_cast<wchar_t>(unit);
  std::array<char, 8> out{};
  const int n = WideCharToMultiByte(codePage, 0, &in, 1, out.data(), 8, nullptr, nullptr);
  const auto byte = [&out](std::size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(out[i])); };
  if (n == 1) return byte(0);
  if (n == 2) return (byte(0) << 8) | byte(1);
  return kNone;
}

void Probe(UINT codePage) {
  std::vector<unsigned> reverse(0x10000, kNone);
  const auto note = [&reverse](unsigned unit, unsigned bytes) {
    if (unit != kNone && reverse[unit] == kNone) reverse[unit] = bytes;
  };
  for (unsigned b = 0; b < 0x100; ++b) {
    if (IsLead(codePage, b)) continue;
    const char single = static_cast<char>(b);
    note(Read(codePage, &single, 1), b);
  }
  for (unsigned b = 0; b < 0x100; ++b) {
    if (!IsLead(codePage, b)) continue;
    for (unsigned t = 1; t < 0x100; ++t) {
      const std::array<char, 2> pair{static_cast<char>(b), static_cast<char>(t)};
      note(Read(codePage, pair.data(), 2), (b << 8) | t);
    }
  }
  std::printf("inline constexpr Pair k%u[] = {", codePage);
  int count = 0;
  for (unsigned u = 0; u < 0x10000; ++u) {
    const unsigned plain = reverse[u] == kNone ? '?' : reverse[u];
    const unsigned got = Write(codePage, u);
    if (got == plain) continue;
    std::printf("%s{0x%04X, 0x%X},", count % 6 == 0 ? "\n    " : " ", u, got == kNone ? '?' : got);
    ++count;
  }
  std::printf("\n};  // %d pairs\n\n", count);
}

}  // namespace

int main() {
  constexpr std::array<UINT, 19> kCodePages{437,  850,  852,  866,  874,  1250,  1251, 1252, 1253, 1254,
                                            1255, 1256, 1257, 1258, 10000, 932, 936,  949,  950};
  std::printf(
      "// What Windows' WideCharToMultiByte (no flags) writes for the units where\n"
      "// that is not the plain reverse of what it reads: best-fit replacements\n"
      "// (U+0100 is 'A' in 1252) and characters written otherwise than read.\n"
      "// Pairs of {unit, bytes}, sorted by unit; two bytes as lead * 256 + trail.\n"
      "// Generated from the system's answers under wine by\n"
      "// tools/dev/probe_best_fit.cpp (see there for the command); do not edit.\n"
      "#pragma once\n\n#include <cstdint>\n#include <span>\n\n"
      "namespace cadtools::codepage::bestfit {\n\n"
      "struct Pair {\n  std::uint16_t unit;\n  std::uint16_t bytes;\n};\n\n");
  for (const UINT cp : kCodePages) Probe(cp);
  std::printf("struct CodePagePairs {\n  unsigned codePage;\n  std::span<const Pair> pairs;\n};\n\n");
  std::printf("inline constexpr CodePagePairs kCodePages[] = {");
  for (std::size_t i = 0; i < kCodePages.size(); ++i) {
    std::printf("%s{%u, k%u},", i % 6 == 0 ? "\n    " : " ", kCodePages[i], kCodePages[i]);
  }
  std::printf("\n};\n\n}  // namespace cadtools::codepage::bestfit\n");
  return 0;
}

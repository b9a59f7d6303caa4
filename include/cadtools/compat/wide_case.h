// cadtools::ToLowerUnit / ToUpperUnit: case mapping of one UTF-16 unit, the
// same on every target (CString::MakeLower, MakeUpper and CompareNoCase use
// it).
//
//   ToUpperUnit(u'a')      // u'A'
//   ToLowerUnit(0x00C9)    // 0x00E9   (É -> é)
//   ToUpperUnit(0x00FF)    // 0x0178   (ÿ -> Ÿ)
//   ToUpperUnit(0x00DF)    // 0x00DF   (ß has no one-unit capital)
//   ToLowerUnit(0x0130)    // u'i'     (İ -> i)
//   ToUpperUnit(0x03C2)    // 0x03A3   (final ς -> Σ)
//   ToLowerUnit(0x0416)    // 0x0436   (Ж -> ж)
//
// Covered: ASCII, Latin-1 Supplement, Latin Extended-A, the Greek letters
// (with tonos and dialytika) and the Cyrillic block, with Unicode's simple
// one-to-one mappings. Every other unit, surrogates included, maps to
// itself. No locale is consulted (no Turkish dotless-i rule), so a
// case-insensitive comparison gives the same answer on every machine.
#pragma once

#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

CADTOOLS_API WCHAR ToLowerUnit(WCHAR ch) noexcept;
CADTOOLS_API WCHAR ToUpperUnit(WCHAR ch) noexcept;

}  // namespace cadtools

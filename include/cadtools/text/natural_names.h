// cadtools::NaturalNames: natural comparison, wildcard matching and
// next-name generation of CTextTools (include <cadtools/text_tools.h> and
// call them as CTextTools::...).
//
// Characters are UTF-16 code units. White space is cadtools::IsWideSpace,
// a digit in the comparison family is cadtools::IsWideDigit (any Unicode
// decimal digit), case is cadtools::ToUpperUnit / ToLowerUnit: the same on
// every target and in every locale. Several results are irregular on
// purpose, because names and filters that the host has stored depend on
// them; each one is shown below with its example values.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API NaturalNames {
 public:
  // ---- Natural comparison ---------------------------------------------

  // Orders names as a person reads them: -1, 0 or 1. Digit runs compare by
  // value, other units by their upper case as unsigned 16-bit numbers (the
  // end of a name is smaller than any unit), and white space is skipped
  // before every unit, also inside names. A digit run that starts with '0'
  // (on either side) compares digit by digit, as a fraction (CompareLeft);
  // otherwise the runs compare as integers (CompareRight). A null pointer
  // is the empty string.
  //   NaturalCompare(u"file9", u"file10")   // -1
  //   NaturalCompare(u"File10", u"file10")  // 0   (case is ignored)
  //   NaturalCompare(u"a b", u"ab")         // 0   (spaces are skipped)
  //   NaturalCompare(u"a01", u"a1")         // -1  ("01" vs "1" left-aligned)
  //   NaturalCompare(u"x010", u"x02")       // -1  (a leading zero: digit by digit)
  //   NaturalCompare(u"x1 2", u"x12")       // -1  (a space ends a digit run)
  // NaturalCompare(a, b) == -NaturalCompare(b, a). Names that compare 0
  // keep their order under std::stable_sort.
  static int NaturalCompare(const WCHAR* a, const WCHAR* b) noexcept;
  // Two digit runs as integers: a longer run is larger; between runs of
  // the same length the first differing digit decides. The walk stops
  // where a run ends, so what follows does not count.
  //   CompareRight(u"12", u"9")     // 1
  //   CompareRight(u"25x", u"29")   // -1
  //   CompareRight(u"7a", u"7b")    // 0
  static int CompareRight(const WCHAR* a, const WCHAR* b) noexcept;
  // Two digit runs digit by digit (a run after a leading zero): the first
  // differing digit decides, a run that ends first is smaller.
  //   CompareLeft(u"010", u"02")   // -1
  //   CompareLeft(u"01", u"010")   // -1
  //   CompareLeft(u"05", u"05 ")   // 0
  static int CompareLeft(const WCHAR* a, const WCHAR* b) noexcept;

  // ---- Wildcard matching ----------------------------------------------

  // 1 when text matches pattern, ignoring case; '*' matches any run of
  // units, none included, and adjacent '*' act as one. There is no other
  // wildcard. An empty pattern matches only the empty text; a pattern of
  // '*' only matches everything; otherwise the empty text matches nothing.
  //   IsTextLike(L"Motor", L"")            // 0
  //   IsTextLike(L"", L"")                 // 1
  //   IsTextLike(L"anything", L"**")       // 1
  //   IsTextLike(L"", L"a*")               // 0
  //   IsTextLike(L"MOTOR", L"motor")       // 1
  //   IsTextLike(L"Motor12", L"mot*12")    // 1
  //   IsTextLike(L"xMotor", L"mot*")       // 0
  // Each literal part of the pattern is taken at its first occurrence
  // after the previous one and never reconsidered, so a pattern that ends
  // in a literal can miss a text that ends with it:
  //   IsTextLike(L"abab", L"*ab")          // 0  (the first "ab" is taken)
  //   IsTextLike(L"abab", L"*ab*")         // 1
  // Embedded NULs are ordinary units. Linear time in the lengths.
  static int IsTextLike(CString text, CString pattern) noexcept;
  // Whether text, with every U+00A4 (currency sign) read as '^', equals
  // the elements of list joined with '^', case-sensitive. The empty list
  // joins to the empty string. Currency signs inside the elements are not
  // replaced, so such an element never matches.
  //   IsTextLikeArray(L"a\u00A4b", {L"a", L"b"})   // true
  //   IsTextLikeArray(L"a^b", {L"a", L"b"})        // true
  //   IsTextLikeArray(L"A^b", {L"a", L"b"})        // false
  //   IsTextLikeArray(L"", {})                     // true
  //   IsTextLikeArray(L"\u00A4", {L"\u00A4"})      // false
  static bool IsTextLikeArray(CString text, const CStringArray& list) noexcept;

  // ---- Next name ------------------------------------------------------

  // The name that follows name, as the host proposes it for a new item.
  //
  // One to three ASCII letters count as a letter number (A = 1 ... Z = 26,
  // "AA" = 27) and give the next one in at most two letters, in the case
  // of the last letter; a first letter past 'Z' is dropped:
  //   GetNextName(L"A")     // "B"
  //   GetNextName(L"Z")     // "AA"
  //   GetNextName(L"z")     // "aa"
  //   GetNextName(L"Az")    // "ba"  (the last letter decides the case)
  //   GetNextName(L"ZY")    // "ZZ"
  //   GetNextName(L"ZZ")    // "A"   (not "AAA")
  //   GetNextName(L"ABC")   // "D"   (three letters give at most two)
  //
  // Any other name has every run of ASCII digits advanced by one, printed
  // as "%d". A run that gets shorter and began with '0' gets back one '0',
  // however many were lost:
  //   GetNextName(L"")        // ""
  //   GetNextName(L"K1")      // "K2"
  //   GetNextName(L"12")      // "13"
  //   GetNextName(L"A1B2")    // "A2B3"   (every number, not only the last)
  //   GetNextName(L"Motor")   // "Motor"  (no number, unchanged)
  //   GetNextName(L"K99")     // "K100"
  //   GetNextName(L"K099")    // "K100"
  //   GetNextName(L"K0099")   // "K0100"
  //   GetNextName(L"X009")    // "X010"
  //   GetNextName(L"X001")    // "X02"
  // A run is read as the host's 32-bit int: saturated at 2147483647, and
  // the addition wraps:
  //   GetNextName(L"K2147483647")    // "K-2147483648"
  //   GetNextName(L"K99999999999")   // "K-2147483648"
  static CString GetNextName(CString name);

 private:
  // Appends the parts of name, texts and numbers alternating: name =
  // texts[0] numbers[0] texts[1] numbers[1] ..., where numbers are runs of
  // ASCII digits. A name that starts with a digit gets an empty texts[0].
  //   "K12A3" -> texts "K", "A"   numbers "12", "3"
  //   "12"    -> texts ""         numbers "12"
  static void SplitTextName(CString name, CStringArray& texts, CStringArray& numbers);
  // Joins texts and numbers again, each non-empty number advanced by
  // step * factor (wrapping in 32 bits) as GetNextName(name) describes.
  static CString GetNextName(CStringArray& texts, CStringArray& numbers, int step, int factor);
};

}  // namespace cadtools

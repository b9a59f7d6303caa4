// cadtools::TextEditing: splitting, trimming, prefixes, searching and
// parsing of CTextTools (include <cadtools/text_tools.h> and call them as
// CTextTools::...).
//
// Strings are UTF-16 units; lengths and indexes count units. Embedded NULs
// and lone surrogates are ordinary units everywhere: nothing stops at a NUL
// in the text or in a separator. White space is cadtools::IsWideSpace
// (Unicode White_Space). The case-insensitive functions lower-case one unit
// at a time (cadtools::ToLowerUnit), so an index found in the lower-cased
// text is also an index into the text as passed.
//
// Several rules look inconsistent from one function to the next (which
// empty fields a splitter keeps, what TrimChar treats as space); the host
// and the data it has stored rely on each of them, and each is shown below
// with its example values.
#pragma once

#include <cadtools/compat/carray.h>
#include <cadtools/compat/cmap.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools {

class CADTOOLS_API TextEditing {
 public:
  // ---- Splitting ------------------------------------------------------
  // Both append to `fields` after what the caller left in it.

  // Splits at a sep that follows a unit other than sep. A sep at index 0,
  // or right after another sep, is kept as text in the field instead of
  // making an empty one. The last field is always appended.
  //   SplitStrEx(f, L",,a,b,,c", ',')  // ",,a", "b", ",c"
  //   SplitStrEx(f, L"a,,b", ',')      // "a", ",b"
  //   SplitStrEx(f, L",a", ',')        // ",a"
  //   SplitStrEx(f, L"a,", ',')        // "a", ""
  //   SplitStrEx(f, L"", ',')          // ""
  static void SplitStrEx(CArray<CString, CString>& fields, CString str, WCHAR sep);

  // Splits at every occurrence of the string sep (case-sensitive). An empty
  // str appends nothing; a str without sep, or an empty sep, appends str as
  // one field. A leading empty field is kept only when keepLeadingEmpty is
  // non-zero; empty fields between adjacent separators are always kept; a
  // trailing separator never gives an empty last field.
  //   SplitString(f, L";a;;b;", L";", 0)  // "a", "", "b"
  //   SplitString(f, L";a;;b;", L";", 1)  // "", "a", "", "b"
  //   SplitString(f, L"a::b", L"::", 0)   // "a", "b"
  //   SplitString(f, L"abc", L";", 0)     // "abc"
  //   SplitString(f, L"", L";", 1)        // nothing
  static void SplitString(CArray<CString, CString>& fields, CString str, CString sep, int keepLeadingEmpty);

  // ---- Trimming -------------------------------------------------------

  // Without leading and trailing white space.
  //   Trim(L"\t a b \u3000")  // "a b"
  static CString Trim(CString str);

  // Without leading and trailing runs of white space and ch.
  //   TrimChar(L"  --ab--  ", '-')  // "ab"
  //   TrimChar(L"- -x- -", '-')     // "x"
  // Each side removes a run of white space, then a run of ch, and goes on
  // only while the end it works on is U+0020 or ch. Other white space
  // therefore stays when it is not behind a space or ch:
  //   TrimChar(L"\tab\t", '-')      // "\tab\t"
  //   TrimChar(L"-\tab", '-')       // "\tab"
  //   TrimChar(L"a\t-", '-')        // "a\t"
  // When the left side uses the whole str up, the right side reads index
  // -1 and raises CInvalidArgException*, which the host relies on: an empty
  // str, or one such as "  --  " or " \t-- -". The right side alone may
  // still remove everything, without an exception.
  //   TrimChar(L"", 'x')            // throws CInvalidArgException*
  //   TrimChar(L" \t-- -", '-')     // throws CInvalidArgException*
  //   TrimChar(L" -\t-", '-')       // "\t"
  //   TrimChar(L"\t ", '-')         // ""
  // Guard: the left side stops when the string is used up, so ch == 0
  // cannot make it loop forever; TrimChar(L"", 0) raises like any empty
  // str.
  static CString TrimChar(CString str, WCHAR ch);

  // Without its first unit when that is ch; only one is removed.
  //   TrimFirstChar(L"==x", '=')  // "=x"
  //   TrimFirstChar(L"x=", '=')   // "x="
  static CString TrimFirstChar(CString str, WCHAR ch);

  // Cut before the first bracketed segment: with p the first open and a
  // close found from p + 1 on, str.Left(p). Everything from the open on
  // goes, text after the close included. str as it is when open or close
  // is empty or no complete pair occurs.
  //   TrimStringBySeparator(L"Motor (spare) A", L"(", L")")  // "Motor "
  //   TrimStringBySeparator(L"Motor (spare", L"(", L")")     // "Motor (spare"
  //   TrimStringBySeparator(L"a)b(c", L"(", L")")            // "a)b(c"
  static CString TrimStringBySeparator(CString str, CString open, CString close);

  // Every bracketed segment removed. Each round finds the first open, then
  // the first close from one unit after it, and removes the units from the
  // open up to and including the first unit of the close; rounds go on
  // until no pair is left. A close of more than one unit therefore leaves
  // its other units in place, and a removal can join the text on either
  // side into a new open. Empty open or close gives str as it is. The
  // result is that of rounds that each search from the start, but each
  // search resumes near the last cut, so long texts with many segments
  // cost about their length.
  //   TrimStringBySeparatorEx(L"Motor (spare) A (old)", L"(", L")")  // "Motor  A "
  //   TrimStringBySeparatorEx(L"a[x]]b", L"[", L"]]")               // "a]b"
  //   TrimStringBySeparatorEx(L"((x))", L"(", L")")                 // ")"
  //   TrimStringBySeparatorEx(L"aabx)b)", L"ab", L")")             // ""  (via "ab)")
  static CString TrimStringBySeparatorEx(CString str, CString open, CString close);

  // Without any occurrence of ch.
  //   Remove(L"1 000 000", ' ')  // "1000000"
  static CString Remove(CString str, WCHAR ch);

  // ---- Prefixes (case-sensitive) --------------------------------------

  // prefix + str, unless str already starts with prefix and is longer.
  // A str that is empty or nothing but the prefix carries no content and
  // gives "".
  //   AddPrefix(L"A1", L"=")   // "=A1"
  //   AddPrefix(L"=A1", L"=")  // "=A1"
  //   AddPrefix(L"=", L"=")    // ""
  //   AddPrefix(L"", L"=")     // ""
  static CString AddPrefix(const CString& str, const CString& prefix);

  // str without a leading prefix; str as it is when it does not start with
  // prefix.
  //   RemovePrefix(L"=A1", L"=")  // "A1"
  //   RemovePrefix(L"=", L"=")    // ""
  //   RemovePrefix(L"x=", L"=")   // "x="
  static CString RemovePrefix(const CString& str, const CString& prefix);

  // ---- Searching (case-insensitive, per unit) -------------------------

  // Index of the first occurrence of sub at or after start, or -1. An
  // empty sub is found at start; a start outside [0, length] gives -1.
  //   FindNoCase(L"Rack PLC plc", L"plc", 0)  // 5
  //   FindNoCase(L"Rack PLC plc", L"plc", 6)  // 9
  //   FindNoCase(L"abc", L"", 3)              // 3
  static int FindNoCase(CString str, CString sub, int start);

  // 1 when str starts with word (ignoring case) as a separate leading item:
  // str is word itself, or the unit after word is sep. On success rest
  // becomes the part of str after word, sep included, as passed; on failure
  // rest is left untouched.
  //   FindFirstSeparateStrInStr(L"PLC.Rack1", L"plc", '.', rest)  // 1, rest ".Rack1"
  //   FindFirstSeparateStrInStr(L"plc", L"PLC", '.', rest)        // 1, rest ""
  //   FindFirstSeparateStrInStr(L"PLCX", L"plc", '.', rest)       // 0, rest untouched
  //   FindFirstSeparateStrInStr(L"", L"", '.', rest)              // 1, rest ""
  //   FindFirstSeparateStrInStr(L".x", L"", '.', rest)            // 1, rest ".x"
  static int FindFirstSeparateStrInStr(CString str, CString word, WCHAR sep, CString& rest);

  // ---- Parsing and cutting --------------------------------------------

  // Empties set, then enters the number of every non-blank sep-separated
  // token as a key with value 0. A token converts as the host's wide
  // text-to-long does: optional white space, optional sign, ASCII digits up
  // to the first other unit; no digits gives 0 (so text is never
  // rejected), and values beyond 32 bits saturate at LONG_MAX / LONG_MIN.
  //   FillLongMapFromString(set, L" 3, 5 ,,5, x ", ',')     // keys 0, 3, 5
  //   FillLongMapFromString(set, L"12abc;-7", ';')          // keys 12, -7
  //   FillLongMapFromString(set, L"99999999999", ',')       // key 2147483647
  static void FillLongMapFromString(CMap<LONG, LONG, short, short>& set, CString str, WCHAR sep);

  // Empties characters, then appends str cut into characters: a high
  // surrogate (D800-DBFF) is held back and put in front of the next unit,
  // so a surrogate pair is one element of two units and every other unit
  // an element of its own. A high surrogate that ends str, or that is
  // followed by another high surrogate (which takes its place), is lost;
  // a lone low surrogate is an element of its own.
  //   GetCharactersArray(L"a\U0001F600b", out)  // "a", "\U0001F600", "b"
  //   GetCharactersArray(u"\xDC00x\xD800", out) // "\xDC00", "x"
  //   GetCharactersArray(u"\xD800\xD801y", out) // "\xD801y"
  static void GetCharactersArray(CString str, CStringArray& characters);

  // ---- Tests ----------------------------------------------------------

  // Same size and equal elements at every index (case-sensitive).
  static bool IsSameArrays(const CStringArray& a, const CStringArray& b) noexcept;

  // 1 when str is not empty and made only of '0'..'9'; no sign, space or
  // other script's digits.
  //   IsStringDigit(L"0042")  // 1
  //   IsStringDigit(L"-1")    // 0
  //   IsStringDigit(L"")      // 0
  static int IsStringDigit(CString str) noexcept;

  // 1 for a zero-padded integer format: "%0", then decimal digits (any
  // script, as the host's wide digit test), then 'd' or 'D', at least four
  // units in all.
  //   IsValidNumberFormat(L"%03d")   // 1
  //   IsValidNumberFormat(L"%010D")  // 1
  //   IsValidNumberFormat(L"%3d")    // 0
  //   IsValidNumberFormat(L"%0d")    // 0
  //   IsValidNumberFormat(L"%03x")   // 0
  static int IsValidNumberFormat(CString fmt) noexcept;

  // text, a number already formatted, without trailing zeros beyond
  // minDecimals decimals. The separator is the first '.', else the first
  // ','; text without either comes back as it is. The separator itself is
  // kept even when no decimal is left.
  //   FormatFloatNumber(L"12.5000", 1)  // "12.5"
  //   FormatFloatNumber(L"12.5000", 0)  // "12.5"
  //   FormatFloatNumber(L"3.000", 0)    // "3."
  //   FormatFloatNumber(L"7,2500", 2)   // "7,25"
  //   FormatFloatNumber(L"1.5", 3)      // "1.5"
  // A negative minDecimals moves the kept part before the separator (the
  // sum wraps in 32 bits as on the host); zeros are still trimmed only from
  // the end:
  //   FormatFloatNumber(L"100.0", -5)   // "100."
  static CString FormatFloatNumber(CString text, int minDecimals);
};

}  // namespace cadtools

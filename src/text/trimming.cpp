// Trimming white space and single characters.
#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include "text/unit_views.h"

namespace cadtools {

using editing::DropLeading;
using editing::DropTrailing;
using editing::IsUnit;

namespace {

constexpr WCHAR kSpace = 0x20;

// One round of TrimChar on one side: the run of white space, then the run
// of ch.
WStringView DropLeadingRound(WStringView v, WCHAR ch) { return DropLeading(DropLeading(v, IsWideSpace), IsUnit(ch)); }
WStringView DropTrailingRound(WStringView v, WCHAR ch) {
  return DropTrailing(DropTrailing(v, IsWideSpace), IsUnit(ch));
}

}  // namespace

CString TextEditing::Trim(CString str) { return str.Trim(); }

CString TextEditing::TrimChar(CString str, WCHAR ch) {
  const auto starts_trim = [ch](WCHAR c) { return c == kSpace || c == ch; };
  WStringView v = str.View();
  // Every round removes at least the unit that started it, and the loop
  // ends when nothing is left (ch == 0 would otherwise match the
  // terminator of an empty string for ever).
  while (!v.empty() && starts_trim(v.front())) v = DropLeadingRound(v, ch);
  // The host reads the last unit before testing the length: nothing left
  // means index -1, which the host relies on raising.
  if (v.empty()) ThrowInvalidArg();
  while (starts_trim(v.back())) {
    v = DropTrailingRound(v, ch);
    if (v.size() <= 1) break;  // goes on only while the last index is > 0
  }
  return editing::ToCString(v);
}

CString TextEditing::TrimFirstChar(CString str, WCHAR ch) {
  if (!str.IsEmpty() && str.GetAt(0) == ch) str.Delete(0);
  return str;
}

CString TextEditing::Remove(CString str, WCHAR ch) {
  str.Remove(ch);
  return str;
}

}  // namespace cadtools

// Cutting a text into characters, and tests on texts and arrays.
#include <cadtools/text_tools.h>

#include <algorithm>

namespace cadtools {

namespace {

constexpr bool IsHighSurrogate(WCHAR c) noexcept { return c >= 0xD800 && c <= 0xDBFF; }

}  // namespace

void TextEditing::GetCharactersArray(CString str, CStringArray& characters) {
  characters.RemoveAll();
  // A high surrogate waits for the unit after it; a later high surrogate
  // takes its place, and one at the end is never appended.
  CString pending;
  for (const WCHAR c : str.View()) {
    if (IsHighSurrogate(c)) {
      pending = CString(c);
      continue;
    }
    pending.AppendChar(c);
    characters.Add(pending);
    pending.Empty();
  }
}

bool TextEditing::IsSameArrays(const CStringArray& a, const CStringArray& b) noexcept {
  return a.GetSize() == b.GetSize() && std::equal(a.begin(), a.end(), b.begin());
}

int TextEditing::IsStringDigit(CString str) noexcept {
  const WStringView s = str.View();
  const bool digits = !s.empty() && std::all_of(s.begin(), s.end(), [](WCHAR c) { return c >= u'0' && c <= u'9'; });
  return digits ? 1 : 0;
}

}  // namespace cadtools

// Case-insensitive searching, one unit at a time, so that an index in the
// lower-cased text is an index in the text as passed.
#include <cadtools/compat/wide_ctype.h>
#include <cadtools/text_tools.h>

#include <algorithm>
#include <cstddef>

namespace cadtools {

namespace {

bool SameNoCase(WCHAR a, WCHAR b) noexcept { return a == b || ToLowerUnit(a) == ToLowerUnit(b); }

bool StartsWithNoCase(WStringView s, WStringView prefix) noexcept {
  return s.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), s.begin(), SameNoCase);
}

}  // namespace

int TextEditing::FindNoCase(CString str, CString sub, int start) {
  const WStringView s = str.View();
  const WStringView n = sub.View();
  if (start < 0 || start > str.GetLength()) return -1;
  const auto from = s.begin() + start;
  const auto hit = std::search(from, s.end(), n.begin(), n.end(), SameNoCase);
  if (hit == s.end() && !n.empty()) return -1;
  return static_cast<int>(hit - s.begin());
}

int TextEditing::FindFirstSeparateStrInStr(CString str, CString word, WCHAR sep, CString& rest) {
  const WStringView s = str.View();
  const WStringView w = word.View();
  if (s.empty() && w.empty()) {
    rest.Empty();
    return 1;
  }
  if (!StartsWithNoCase(s, w)) return 0;
  if (s.size() == w.size()) {
    rest.Empty();
    return 1;
  }
  if (s[w.size()] != sep) return 0;
  rest = str.Mid(static_cast<int>(w.size()));
  return 1;
}

}  // namespace cadtools

// The four field splitters. Each keeps its own rule for empty fields:
// stored symbol paths, multi-line texts and lists are cut the way the host
// has always cut them.
#include <cadtools/math_tools.h>
#include <cadtools/text_tools.h>

#include <cstddef>

#include "text/unit_views.h"

namespace cadtools {

using editing::AppendField;
using editing::kNotFound;

namespace {

constexpr WCHAR kCarriageReturn = 13;
constexpr WCHAR kLineFeed = 10;

}  // namespace

int FieldSplitters::SplitStr(CArray<CString, CString>& fields, CString str, WCHAR sep) {
  const WStringView s = str.View();
  std::size_t start = 0;
  for (std::size_t hit = s.find(sep); hit != kNotFound; hit = s.find(sep, start)) {
    AppendField(fields, s.substr(start, hit - start));
    start = hit + 1;
  }
  AppendField(fields, s.substr(start));
  return static_cast<int>(fields.GetSize());
}

int FieldSplitters::SplitStrOnSoftReturn(CArray<CString, CString>& fields, CString str) {
  const WStringView s = str.View();
  CString field;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const WCHAR c = s[i];
    if (c == kLineFeed && i > 0 && s[i - 1] == kCarriageReturn) {
      fields.Add(field);
      field.Empty();
    } else if (c != kCarriageReturn && c != kLineFeed) {
      field.AppendChar(c);
    }
  }
  fields.Add(field);
  return 1;
}

void TextEditing::SplitStrEx(CArray<CString, CString>& fields, CString str, WCHAR sep) {
  // A sep splits only after a unit other than sep; the others stay in the
  // field as text.
  const WStringView s = str.View();
  std::size_t start = 0;
  for (std::size_t i = 1; i < s.size(); ++i) {
    if (s[i] == sep && s[i - 1] != sep) {
      AppendField(fields, s.substr(start, i - start));
      start = i + 1;
    }
  }
  AppendField(fields, s.substr(start));
}

void TextEditing::SplitString(CArray<CString, CString>& fields, CString str, CString sep, int keepLeadingEmpty) {
  const WStringView s = str.View();
  const WStringView d = sep.View();
  if (s.empty()) return;
  // An empty separator would be found at every index without advancing:
  // the whole text is one field.
  const std::size_t first = d.empty() ? kNotFound : s.find(d);
  if (first == kNotFound) {
    fields.Add(str);
    return;
  }
  if (keepLeadingEmpty != 0 || first > 0) AppendField(fields, s.substr(0, first));
  std::size_t start = first + d.size();
  while (start < s.size()) {
    const std::size_t hit = s.find(d, start);
    if (hit == kNotFound) break;
    AppendField(fields, s.substr(start, hit - start));
    start = hit + d.size();
  }
  if (start < s.size()) AppendField(fields, s.substr(start));
}

}  // namespace cadtools

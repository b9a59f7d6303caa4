// Natural comparison, wildcard matching and next names on arbitrary UTF-16
// text (lone surrogates and embedded NULs included): no crash, hang or
// undefined behaviour, and the properties that sorting and filtering in
// the host rely on hold.
//
// Input: one byte that places the split, then UTF-16 units (little-endian
// pairs) cut into two strings a and b.
#include <cadtools/text_tools.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool ok) {
  if (!ok) std::abort();
}

bool IsOrder(int r) { return r == -1 || r == 0 || r == 1; }

// Pointers that stop at the first embedded NUL, as the host passes them.
void CheckComparison(const CString& a, const CString& b) {
  const int ab = CTextTools::NaturalCompare(a, b);
  Require(IsOrder(ab));
  Require(ab == -CTextTools::NaturalCompare(b, a));
  Require(CTextTools::NaturalCompare(a, a) == 0);
  Require(CTextTools::CompareRight(a, b) == -CTextTools::CompareRight(b, a));
  Require(CTextTools::CompareLeft(a, b) == -CTextTools::CompareLeft(b, a));
}

void CheckMatching(const CString& a, const CString& b) {
  const int like = CTextTools::IsTextLike(a, b);
  Require(like == 0 || like == 1);
  Require(CTextTools::IsTextLike(a, CADTOOLS_WIDE("*")) == 1);
  if (!a.IsEmpty() && a.Find(u'*') < 0) Require(CTextTools::IsTextLike(a, a) == 1);

  // b cut at every '^' joins back to b, so the list matches b exactly when
  // b holds no currency sign (which the text side would read as '^').
  CStringArray parts;
  int start = 0;
  for (int i = 0; i <= b.GetLength(); ++i) {
    if (i == b.GetLength() || b.GetAt(i) == u'^') {
      parts.Add(b.Mid(start, i - start));
      start = i + 1;
    }
  }
  Require(CTextTools::IsTextLikeArray(b, parts) == (b.Find(static_cast<WCHAR>(0x00A4)) < 0));
  CTextTools::IsTextLikeArray(a, parts);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const std::size_t units = (size - 1) / 2;
  CString all;
  for (std::size_t i = 0; i < units; ++i) {
    all.AppendChar(static_cast<WCHAR>(data[1 + 2 * i] | (data[2 + 2 * i] << 8)));
  }
  const int split = static_cast<int>(data[0] % (units + 1));
  const CString a = all.Left(split);
  const CString b = all.Mid(split);

  CheckComparison(a, b);
  CheckMatching(a, b);
  CTextTools::GetNextName(a);
  CTextTools::GetNextName(b);
  return 0;
}

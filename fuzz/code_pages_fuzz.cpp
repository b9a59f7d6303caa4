// The code-page conversions and name functions of CTextTools on arbitrary
// bytes: no crash, hang or undefined behaviour, results no longer than
// the input allows, and UTF-8 round trips that the host's stored texts
// rely on. The UTF-8 codec gives the same with its block loops as with
// its character loops alone.
//
// Input: one byte that picks the code page, then the bytes to convert,
// which are also read as UTF-16 units (little-endian pairs).
#include <cadtools/compat/exceptions.h>
#include <cadtools/text_tools.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/utf8_codec.h"

namespace {

void Require(bool ok) {
  if (!ok) std::abort();
}

constexpr std::array<int, 12> kCodePages{65001, 1252, 932, 936, 949, 950, 437, 42, 12345, 65000, -1, 1};

bool IsWellFormed(const CString& s) {
  for (int i = 0; i < s.GetLength(); ++i) {
    const WCHAR u = s[i];
    if (u >= 0xD800 && u <= 0xDBFF) {
      if (i + 1 >= s.GetLength() || s[i + 1] < 0xDC00 || s[i + 1] > 0xDFFF) return false;
      ++i;
    } else if (u >= 0xDC00 && u <= 0xDFFF) {
      return false;
    }
  }
  return true;
}

CString Utf8RoundTrip(const CString& s) {
  const std::unique_ptr<char[]> bytes(CTextTools::WideCharToMB(s));
  return CTextTools::MB2WideChar(bytes.get());
}

void CheckBytes(int codePage, const std::string& bytes) {
  const CString wide = CTextTools::MB2Unicode(CStringA(bytes.data(), static_cast<int>(bytes.size())), codePage);
  const int textLength = static_cast<int>(bytes.find('\0') == std::string::npos ? bytes.size() : bytes.find('\0'));
  if (codePage != 65000) Require(wide.GetLength() <= textLength + 1);
  if (codePage == 65001) {
    // Broken UTF-8 becomes U+FFFD, never a lone surrogate, so the text
    // survives a trip through UTF-8 unchanged.
    Require(IsWellFormed(wide));
    Require(Utf8RoundTrip(wide) == wide);
  }
}

void CheckUnits(const CString& units) {
  // Lone surrogates become U+FFFD; the text ends at its first NUL.
  CString expected(units.GetString());
  for (int i = 0; i < expected.GetLength(); ++i) {
    const WCHAR u = expected[i];
    const bool high = u >= 0xD800 && u <= 0xDBFF;
    const bool pairs = high && i + 1 < expected.GetLength() && expected[i + 1] >= 0xDC00 && expected[i + 1] <= 0xDFFF;
    if (pairs) {
      ++i;
    } else if (u >= 0xD800 && u <= 0xDFFF) {
      expected.SetAt(i, 0xFFFD);
    }
  }
  Require(Utf8RoundTrip(units) == expected);
  (void)CTextTools::CharToOemA(units);
  (void)CTextTools::OemToCharA(units);
  (void)CTextTools::IsTextSurrogate(units);
}

void CheckNames(const CString& a, const CString& b) {
  const int charset = CTextTools::GetCharset(a);
  Require(charset == 1 || CTextTools::GetCharset(charset).CompareNoCase(CString(a).Trim()) == 0);
  (void)CTextTools::CreateImagePath(a, b, a, b, charset, b);
  (void)CTextTools::CreateImageFolderPath(b, a, a, charset, b);
  try {
    (void)CTextTools::CreateFullPathName(a, b, a, b, a);
  } catch (CInvalidArgException* e) {  // name and variant blank: TrimChar's rule
    e->Delete();
  }
}

void CheckCodecLoops(const std::string& bytes, const cadtools::WString& units) {
  using cadtools::codepage::Utf8Loops;
  namespace codepage = cadtools::codepage;
  Require(codepage::DecodeUtf8(bytes, Utf8Loops::kBlocksWherePossible) ==
          codepage::DecodeUtf8(bytes, Utf8Loops::kCharactersOnly));
  Require(codepage::EncodeUtf8(units, Utf8Loops::kBlocksWherePossible) ==
          codepage::EncodeUtf8(units, Utf8Loops::kCharactersOnly));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int codePage = kCodePages[data[0] % kCodePages.size()];
  const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
  CheckBytes(codePage, bytes);

  cadtools::WString units;
  for (std::size_t i = 1; i + 1 < size; i += 2) {
    units.push_back(static_cast<WCHAR>(data[i] | (data[i + 1] << 8)));
  }
  CheckCodecLoops(bytes, units);
  const CString wide(units.data(), static_cast<int>(units.size()));
  CheckUnits(wide);
  const int half = wide.GetLength() / 2;
  CheckNames(wide.Left(half), wide.Mid(half));
  return 0;
}

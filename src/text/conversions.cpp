// MB2Unicode, WideCharToMB and MB2WideChar over the platform's
// MultiByteToWideChar / WideCharToMultiByte.
#include <cadtools/text_tools.h>

#include <cstring>
#include <memory>

#include "text/code_page_conversion.h"

namespace cadtools {

namespace {

// The null-terminated text with its terminator, as the host's calls pass
// it with length -1: a lead byte just before the end pairs with the NUL
// on a double-byte code page, and UTF-8 cut off before the NUL is read
// as Windows reads it in that case.
std::string_view WithTerminator(const char* text) { return {text, std::strlen(text) + 1}; }

// The converted text up to its first NUL.
CString UpToNul(const WString& units) {
  const std::size_t end = units.find(WCHAR{0});
  return CString(units.data(), static_cast<int>(end == WString::npos ? units.size() : end));
}

}  // namespace

CString CodePages::MB2Unicode(CStringA text, int codePage) {
  if (text.IsEmpty()) return CString();
  const UINT cp = codePage < 0 ? SystemAnsiCodePage() : static_cast<UINT>(codePage);
  return UpToNul(codepage::MultiByteToWide(cp, WithTerminator(text.GetString())));
}

char* CodePages::WideCharToMB(CString text) {
  const WStringView units(text.GetString(), static_cast<std::size_t>(text.GetLength()));
  return codepage::WideToUtf8Buffer(units).release();  // the caller releases it with delete[]
}

CString CodePages::MB2WideChar(const char* text) {
  if (text == nullptr) return CString();
  // UTF-8 gives U+0000 only for a NUL byte, so the terminator's is the one
  // NUL there is: no need to look for it (on long texts, a second pass).
  const WString units = codepage::MultiByteToWide(codepage::kUtf8, WithTerminator(text));
  const std::size_t length = units.empty() ? 0 : units.size() - (units.back() == WCHAR{0} ? 1 : 0);
  return CString(units.data(), static_cast<int>(length));
}

namespace {

// The text up to its first NUL, as the system calls taking it see it.
WStringView TextUpToNul(const CString& text) { return WStringView(text.GetString()); }

// Narrowed to one code page, the bytes (up to a NUL) read in another.
CString Reinterpret(const CString& text, UINT from, UINT to, std::size_t maxBytes) {
  std::string bytes = codepage::WideToMultiByte(from, TextUpToNul(text));
  if (bytes.size() > maxBytes) bytes.resize(maxBytes);
  bytes.push_back('\0');
  return UpToNul(codepage::MultiByteToWide(to, bytes));
}

}  // namespace

CString CodePages::CharToOemA(CString text) {
  // The OEM buffer has one byte per unit of the text.
  return Reinterpret(text, SystemOemCodePage(), SystemAnsiCodePage(), static_cast<std::size_t>(text.GetLength()));
}

CString CodePages::OemToCharA(CString text) {
  return Reinterpret(text, SystemAnsiCodePage(), SystemOemCodePage(), std::string::npos);
}

}  // namespace cadtools

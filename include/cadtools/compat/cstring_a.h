// CStringA: the framework's narrow string, reduced to what the code-page
// conversions of CTextTools take and give. It holds bytes in whatever code
// page the caller means; nothing here interprets them.
//
//   CStringA bytes("Motor \xE9");
//   bytes.GetLength();   // 7
//   bytes.GetString();   // NUL-terminated, as the host passes it on
//
// Embedded NULs are kept by the (pointer, length) constructor; functions
// that take "the null-terminated text" see it only up to the first NUL.
#pragma once

#include <compare>
#include <string>
#include <string_view>

class CStringA {
 public:
  using XCHAR = char;
  using PCXSTR = const char*;

  CStringA() = default;
  // A null psz gives the empty string, as the framework's class does.
  CStringA(const char* psz) : m_str(psz != nullptr ? psz : "") {}  // NOLINT: implicit as in the framework
  // The first nLength bytes of pch, NULs included; none for a null pch or
  // a length below 1.
  CStringA(const char* pch, int nLength)
      : m_str(pch, nLength > 0 && pch != nullptr ? static_cast<std::size_t>(nLength) : 0U) {}

  int GetLength() const noexcept { return static_cast<int>(m_str.size()); }
  bool IsEmpty() const noexcept { return m_str.empty(); }
  // Always NUL-terminated.
  PCXSTR GetString() const noexcept { return m_str.c_str(); }
  operator PCXSTR() const noexcept { return m_str.c_str(); }  // NOLINT: implicit as in the framework

  friend bool operator==(const CStringA& a, const CStringA& b) noexcept { return a.m_str == b.m_str; }
  friend bool operator==(const CStringA& a, const char* b) noexcept {
    return a.m_str == std::string_view(b != nullptr ? b : "");
  }
  // Byte-wise, as unsigned char, the order strcmp gives.
  friend std::strong_ordering operator<=>(const CStringA& a, const CStringA& b) noexcept {
    const int c = a.m_str.compare(b.m_str);
    return c <=> 0;
  }

 private:
  std::string m_str;
};

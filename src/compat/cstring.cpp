#include <cadtools/compat/cstring.h>
#include <cadtools/compat/wide_ctype.h>

#include "compat/utf16.h"

#include <algorithm>
#include <ostream>

namespace cadtools::detail {

void AppendCodePoint(WString& out, std::uint32_t cp) {
  if (cp <= 0xFFFF) {
    out.push_back(static_cast<WCHAR>(cp));
  } else if (cp <= 0x10FFFF) {
    cp -= 0x10000;
    out.push_back(static_cast<WCHAR>(0xD800 + (cp >> 10)));
    out.push_back(static_cast<WCHAR>(0xDC00 + (cp & 0x3FF)));
  } else {
    out.push_back(kReplacementChar);
  }
}

void AppendWide(WString& out, const wchar_t* p, std::size_t n) {
  if constexpr (sizeof(wchar_t) == sizeof(WCHAR)) {
    for (std::size_t i = 0; i < n; ++i) out.push_back(static_cast<WCHAR>(p[i]));
  } else {
    for (std::size_t i = 0; i < n; ++i) AppendCodePoint(out, static_cast<std::uint32_t>(p[i]));
  }
}

}  // namespace cadtools::detail

namespace {

using cadtools::WString;
using cadtools::WStringView;

WStringView ViewOrEmpty(const WCHAR* psz) noexcept { return psz == nullptr ? WStringView() : WStringView(psz); }

// Lengths and counts as the host passes them (int), clamped to the string.
std::size_t ClampIndex(int i, std::size_t len) noexcept {
  if (i <= 0) return 0;
  return std::min(static_cast<std::size_t>(i), len);
}

template <class Map>
int CompareUnits(WStringView a, WStringView b, Map map) noexcept {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = static_cast<std::uint16_t>(map(a[i]));
    const auto y = static_cast<std::uint16_t>(map(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

WCHAR Same(WCHAR c) noexcept { return c; }

template <class Units, class Pred>
void TrimRightIf(Units& s, Pred pred) {
  std::size_t end = s.size();
  while (end > 0 && pred(s[end - 1])) --end;
  s.erase(end);
}

template <class Units, class Pred>
void TrimLeftIf(Units& s, Pred pred) {
  std::size_t begin = 0;
  while (begin < s.size() && pred(s[begin])) ++begin;
  s.erase(0, begin);
}

// The set is copied: it may point into the string being trimmed.
auto InSet(const WCHAR* pszTargets) {
  return [set = WString(ViewOrEmpty(pszTargets))](WCHAR c) { return set.find(c) != WString::npos; };
}

void AppendUtf8(std::string& out, std::uint32_t cp) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

// Walks the code points of a UTF-16 text: f(code point, is a lone surrogate).
template <class F>
void ForEachCodePoint(WStringView s, F f) {
  using cadtools::detail::IsHighSurrogate;
  using cadtools::detail::IsLowSurrogate;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const std::uint32_t u = s[i];
    if (IsHighSurrogate(u) && i + 1 < s.size() && IsLowSurrogate(s[i + 1])) {
      f(0x10000 + ((u - 0xD800) << 10) + (static_cast<std::uint32_t>(s[i + 1]) - 0xDC00), false);
      ++i;
    } else {
      f(u, IsHighSurrogate(u) || IsLowSurrogate(u));
    }
  }
}

}  // namespace

CString::CString(const wchar_t* psz) {
  if (psz == nullptr) return;
  WString units;
  cadtools::detail::AppendWide(units, psz, std::char_traits<wchar_t>::length(psz));
  m_str.assign(units);
}

CString::CString(const char16_t* psz) {
  if (psz == nullptr) return;
  const std::size_t n = std::char_traits<char16_t>::length(psz);
  m_str.resize(n);
  std::transform(psz, psz + n, m_str.begin(), [](char16_t c) { return static_cast<WCHAR>(c); });
}

CString::CString(const WCHAR* pch, int nLength) {
  if (nLength < 0 || (pch == nullptr && nLength > 0)) cadtools::ThrowInvalidArg();
  if (nLength > 0) m_str.assign(WStringView(pch, static_cast<std::size_t>(nLength)));
}

CString::CString(WCHAR ch, int nRepeat) {
  if (nRepeat > 0) m_str.assign(static_cast<std::size_t>(nRepeat), ch);
}

WCHAR CString::GetAt(int iChar) const {
  if (iChar < 0 || iChar > GetLength()) cadtools::ThrowInvalidArg();
  return m_str.c_str()[iChar];
}

void CString::SetAt(int iChar, WCHAR ch) {
  if (iChar < 0 || iChar >= GetLength()) cadtools::ThrowInvalidArg();
  m_str[static_cast<std::size_t>(iChar)] = ch;
}

CString CString::Left(int nCount) const {
  CString r;
  r.m_str.assign(View().substr(0, ClampIndex(nCount, m_str.size())));
  return r;
}

CString CString::Mid(int iFirst) const {
  CString r;
  if (iFirst <= GetLength()) r.m_str.assign(View().substr(ClampIndex(iFirst, m_str.size())));
  return r;
}

CString CString::Mid(int iFirst, int nCount) const {
  CString r;
  if (iFirst > GetLength()) return r;
  const std::size_t first = ClampIndex(iFirst, m_str.size());
  r.m_str.assign(View().substr(first, ClampIndex(nCount, m_str.size() - first)));
  return r;
}

CString CString::Right(int nCount) const {
  CString r;
  const std::size_t n = ClampIndex(nCount, m_str.size());
  r.m_str.assign(View().substr(m_str.size() - n, n));
  return r;
}

int CString::Find(WCHAR ch, int iStart) const noexcept {
  if (iStart < 0 || iStart >= GetLength()) return -1;
  const std::size_t pos = m_str.find(ch, static_cast<std::size_t>(iStart));
  return pos == WString::npos ? -1 : static_cast<int>(pos);
}

int CString::Find(PCXSTR psz, int iStart) const noexcept {
  if (psz == nullptr || iStart < 0 || iStart > GetLength()) return -1;
  const std::size_t pos = m_str.find(psz, static_cast<std::size_t>(iStart));
  return pos == WString::npos ? -1 : static_cast<int>(pos);
}

int CString::ReverseFind(WCHAR ch) const noexcept {
  const std::size_t pos = m_str.rfind(ch);
  return pos == WString::npos ? -1 : static_cast<int>(pos);
}

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(WCHAR chTarget) { return TrimRight(chTarget).TrimLeft(chTarget); }
CString& CString::Trim(PCXSTR pszTargets) {
  const auto in_set = InSet(pszTargets);
  TrimRightIf(m_str, in_set);
  TrimLeftIf(m_str, in_set);
  return *this;
}

CString& CString::TrimLeft() {
  TrimLeftIf(m_str, cadtools::IsWideSpace);
  return *this;
}
CString& CString::TrimLeft(WCHAR chTarget) {
  TrimLeftIf(m_str, [chTarget](WCHAR c) { return c == chTarget; });
  return *this;
}
CString& CString::TrimLeft(PCXSTR pszTargets) {
  TrimLeftIf(m_str, InSet(pszTargets));
  return *this;
}

CString& CString::TrimRight() {
  TrimRightIf(m_str, cadtools::IsWideSpace);
  return *this;
}
CString& CString::TrimRight(WCHAR chTarget) {
  TrimRightIf(m_str, [chTarget](WCHAR c) { return c == chTarget; });
  return *this;
}
CString& CString::TrimRight(PCXSTR pszTargets) {
  TrimRightIf(m_str, InSet(pszTargets));
  return *this;
}

CString& CString::MakeLower() {
  std::transform(m_str.begin(), m_str.end(), m_str.begin(), cadtools::ToLowerUnit);
  return *this;
}

CString& CString::MakeUpper() {
  std::transform(m_str.begin(), m_str.end(), m_str.begin(), cadtools::ToUpperUnit);
  return *this;
}

int CString::Replace(WCHAR chOld, WCHAR chNew) {
  if (chOld == chNew) return 0;
  int count = 0;
  for (WCHAR& c : m_str) {
    if (c == chOld) {
      c = chNew;
      ++count;
    }
  }
  return count;
}

int CString::Replace(PCXSTR pszOld, PCXSTR pszNew) {
  const WStringView old_text = ViewOrEmpty(pszOld);
  if (old_text.empty()) return 0;
  const WStringView new_text = ViewOrEmpty(pszNew);
  WString result;
  int count = 0;
  std::size_t from = 0;
  for (std::size_t hit = m_str.find(old_text); hit != WString::npos; hit = m_str.find(old_text, from)) {
    result.append(View().substr(from, hit - from)).append(new_text);
    from = hit + old_text.size();
    ++count;
  }
  if (count > 0) {
    result.append(View().substr(from));
    m_str.assign(result);
  }
  return count;
}

int CString::Remove(WCHAR chRemove) {
  const std::size_t before = m_str.size();
  m_str.erase(std::remove(m_str.begin(), m_str.end(), chRemove), m_str.end());
  return static_cast<int>(before - m_str.size());
}

int CString::Insert(int iIndex, WCHAR ch) {
  m_str.insert(ClampIndex(iIndex, m_str.size()), WStringView(&ch, 1));
  return GetLength();
}

int CString::Insert(int iIndex, PCXSTR psz) {
  const WString text(ViewOrEmpty(psz));  // psz may point into this string
  m_str.insert(ClampIndex(iIndex, m_str.size()), text);
  return GetLength();
}

int CString::Delete(int iIndex, int nCount) {
  const std::size_t first = ClampIndex(iIndex, m_str.size());
  m_str.erase(first, ClampIndex(nCount, m_str.size() - first));
  return GetLength();
}

int CString::Compare(const CString& str) const noexcept { return CompareUnits(m_str, str.m_str, Same); }
int CString::Compare(PCXSTR psz) const noexcept { return CompareUnits(m_str, ViewOrEmpty(psz), Same); }
int CString::CompareNoCase(const CString& str) const noexcept {
  return CompareUnits(m_str, str.m_str, cadtools::ToLowerUnit);
}
int CString::CompareNoCase(PCXSTR psz) const noexcept {
  return CompareUnits(m_str, ViewOrEmpty(psz), cadtools::ToLowerUnit);
}

void CString::Append(PCXSTR psz) { m_str.append(ViewOrEmpty(psz)); }

void CString::Append(PCXSTR pch, int nLength) {
  if (nLength < 0 || (pch == nullptr && nLength > 0)) cadtools::ThrowInvalidArg();
  if (nLength > 0) m_str.append(WStringView(pch, static_cast<std::size_t>(nLength)));
}

CString& CString::operator+=(const CString& str) {
  m_str.append(str.m_str);
  return *this;
}
CString& CString::operator+=(PCXSTR psz) {
  Append(psz);
  return *this;
}
CString& CString::operator+=(WCHAR ch) {
  m_str.push_back(ch);
  return *this;
}

namespace cadtools {

std::string ToUtf8(const CString& str) {
  std::string out;
  out.reserve(static_cast<std::size_t>(str.GetLength()));
  ForEachCodePoint(str.View(), [&out](std::uint32_t cp, bool lone) {
    AppendUtf8(out, lone ? detail::kReplacementChar : cp);
  });
  return out;
}

CString FromUtf8(std::string_view utf8) {
  WString out;
  out.reserve(utf8.size());
  const std::size_t n = utf8.size();
  std::size_t i = 0;
  while (i < n) {
    const auto b = static_cast<unsigned char>(utf8[i]);
    if (b < 0x80) {
      out.push_back(b);
      ++i;
      continue;
    }
    // Continuation bytes needed, and the allowed range of the first one:
    // this rejects overlong forms, encoded surrogates and values past
    // U+10FFFF at the earliest byte.
    int need = 0;
    unsigned lo = 0x80;
    unsigned hi = 0xBF;
    if (b >= 0xC2 && b <= 0xDF) {
      need = 1;
    } else if (b >= 0xE0 && b <= 0xEF) {
      need = 2;
      if (b == 0xE0) lo = 0xA0;
      if (b == 0xED) hi = 0x9F;
    } else if (b >= 0xF0 && b <= 0xF4) {
      need = 3;
      if (b == 0xF0) lo = 0x90;
      if (b == 0xF4) hi = 0x8F;
    }
    std::uint32_t cp = b & (0x3FU >> need);
    std::size_t j = i + 1;
    bool ok = need > 0;
    for (int k = 0; ok && k < need; ++k, ++j) {
      const unsigned c = j < n ? static_cast<unsigned char>(utf8[j]) : 0;
      ok = j < n && c >= lo && c <= hi;
      cp = (cp << 6) | (c & 0x3F);
      lo = 0x80;
      hi = 0xBF;
    }
    if (ok) {
      detail::AppendCodePoint(out, cp);
      i = j;
    } else {
      // The bad byte itself starts the next sequence.
      out.push_back(detail::kReplacementChar);
      i = need > 0 ? std::max(i + 1, j - 1) : i + 1;
    }
  }
  CString r;
  r.Append(out.data(), static_cast<int>(out.size()));
  return r;
}

}  // namespace cadtools

void PrintTo(const CString& str, std::ostream* os) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string text = "L\"";
  ForEachCodePoint(str.View(), [&text](std::uint32_t cp, bool lone) {
    if (lone || cp < 0x20 || cp == 0x7F) {
      text += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) text.push_back(kHex[(cp >> shift) & 0xF]);
    } else {
      if (cp == '"' || cp == '\\') text.push_back('\\');
      AppendUtf8(text, cp);
    }
  });
  text.push_back('"');
  *os << text;
}

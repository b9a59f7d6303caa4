// Feeds arbitrary UTF-16 text (embedded NULs and lone surrogates included)
// to every splitting, trimming, prefix, search and parsing function, and
// checks what their results must satisfy whatever the input. The first
// units choose the separators and characters:
//   unit 0      sep / ch for the one-unit functions
//   unit 1      bits 0-1 and 2-3: lengths of the strings A and B (0-3),
//               bit 4: SplitString's flag, bits 5-14 and sign bit 15: a
//               start index or count of decimals (1023 for the int limits)
//   next units  A (separator string, open, prefix, word, sub), then B
//               (close), then the text.
// The only exception allowed is TrimChar's CInvalidArgException*.
#include <cadtools/cadtools.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

using cadtools::WString;
using cadtools::WStringView;
using Fields = CArray<CString, CString>;

void Require(bool ok) {
  if (!ok) std::abort();
}

CString Of(WStringView v) { return CString(v.data(), static_cast<int>(v.size())); }

WString Join(const Fields& fields, WStringView sep, INT_PTR from = 0) {
  WString joined;
  for (INT_PTR i = from; i < fields.GetSize(); ++i) {
    if (i > from) joined.append(sep);
    joined.append(fields[i].View());
  }
  return joined;
}

struct Input {
  WCHAR unit;
  int number;
  bool flag;
  CString a, b, text;
};

void Splitters(const Input& in) {
  const WStringView s = in.text.View();
  const WCHAR sep = in.unit;
  const WStringView one(&sep, 1);

  Fields f;
  f.Add(CString(u"old"));
  const int size = CMathTools::SplitStr(f, in.text, sep);
  Require(size == f.GetSize());
  Require(Join(f, one, 1) == s && f[0] == CString(u"old"));

  // Every unit stays except CR and LF; each CR LF pair adds a field.
  f.RemoveAll();
  Require(CMathTools::SplitStrOnSoftReturn(f, in.text) == 1);
  WString kept;
  INT_PTR pairs = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] != 13 && s[i] != 10) kept.push_back(s[i]);
    if (s[i] == 10 && i > 0 && s[i - 1] == 13) ++pairs;
  }
  Require(Join(f, WStringView()) == kept && f.GetSize() == pairs + 1);

  f.RemoveAll();
  CTextTools::SplitStrEx(f, in.text, sep);
  Require(Join(f, one) == s);

  // Only separators go: a leading empty field without the flag and the
  // empty field after a trailing separator are the only ones not appended.
  f.RemoveAll();
  CTextTools::SplitString(f, in.text, in.a, in.flag ? 1 : 0);
  const WStringView d = in.a.View();
  if (s.empty()) {
    Require(f.GetSize() == 0);
  } else if (d.empty()) {
    Require(f.GetSize() == 1 && f[0] == in.text);
  } else {
    const WString joined = Join(f, d);
    const WString lead = (!in.flag && s.starts_with(d)) ? WString(d) : WString();
    Require(lead + joined == s || lead + joined + WString(d) == s);
  }
}

bool IsSpaceOr(WCHAR c, WCHAR ch) { return c == u' ' || c == ch; }

void Trimming(const Input& in) {
  const WStringView s = in.text.View();
  const WCHAR ch = in.unit;

  const CString trimmed = CTextTools::Trim(in.text);
  const WStringView t = trimmed.View();
  Require(t.empty() || (!cadtools::IsWideSpace(t.front()) && !cadtools::IsWideSpace(t.back())));
  Require(s.find(t) != WStringView::npos);

  try {
    const CString r = CTextTools::TrimChar(in.text, ch);
    const WStringView v = r.View();
    Require(s.find(v) != WStringView::npos);
    Require(v.empty() || (!IsSpaceOr(v.front(), ch) && !IsSpaceOr(v.back(), ch)));
  } catch (CException* e) {
    const bool invalid_arg = dynamic_cast<CInvalidArgException*>(e) != nullptr;
    e->Delete();
    Require(invalid_arg && (s.empty() || IsSpaceOr(s.front(), ch)));
  }

  const CString first = CTextTools::TrimFirstChar(in.text, ch);
  Require(first == in.text || (s.front() == ch && first.View() == s.substr(1)));

  const CString removed = CTextTools::Remove(in.text, ch);
  std::size_t count = 0;
  for (const WCHAR c : s) count += c == ch ? 1U : 0U;
  Require(removed.View().find(ch) == WStringView::npos && removed.View().size() == s.size() - count);
}

// Rounds from the start of the text each time, as the host runs them.
WString RemoveSegmentsByRounds(WString s, WStringView open, WStringView close) {
  for (;;) {
    const std::size_t p = s.find(open);
    if (p == WString::npos) return s;
    const std::size_t q = s.find(close, p + 1);
    if (q == WString::npos) return s;
    s.erase(p, q + 1 - p);
  }
}

void Brackets(const Input& in) {
  const WStringView s = in.text.View();
  const CString first = CTextTools::TrimStringBySeparator(in.text, in.a, in.b);
  Require(s.starts_with(first.View()));

  const CString all = CTextTools::TrimStringBySeparatorEx(in.text, in.a, in.b);
  if (in.a.IsEmpty() || in.b.IsEmpty()) {
    Require(all == in.text);
  } else if (s.size() <= 2048) {
    Require(all.View() == RemoveSegmentsByRounds(WString(s), in.a.View(), in.b.View()));
  }
}

void PrefixesAndSearch(const Input& in) {
  const WStringView s = in.text.View();
  const WStringView p = in.a.View();
  const CString added = CTextTools::AddPrefix(in.text, in.a);
  Require(added.IsEmpty() || added.View().starts_with(p));
  // What AddPrefix put in front, RemovePrefix takes off again.
  if (!s.empty() && s != p) {
    const CString expected = s.starts_with(p) ? Of(s.substr(p.size())) : in.text;
    Require(CTextTools::RemovePrefix(added, in.a) == expected);
  }
  const CString removed = CTextTools::RemovePrefix(in.text, in.a);
  Require(removed == in.text || in.a + removed == in.text);

  // The same answer as a search in two lower-cased copies.
  CString lower_text = in.text, lower_sub = in.a;
  lower_text.MakeLower();
  lower_sub.MakeLower();
  const int start = in.number;
  const int found = CTextTools::FindNoCase(in.text, in.a, start);
  if (start < 0 || start > in.text.GetLength()) {
    Require(found == -1);
  } else {
    const std::size_t hit = lower_text.View().find(lower_sub.View(), static_cast<std::size_t>(start));
    Require(found == (hit == WStringView::npos ? -1 : static_cast<int>(hit)));
  }

  CString rest(u"untouched");
  if (CTextTools::FindFirstSeparateStrInStr(in.text, in.a, in.unit, rest) != 0) {
    Require(lower_text.View().starts_with(lower_sub.View()));
    const WStringView r = rest.View();
    Require(r.empty() ? s.size() == p.size() : (r.front() == in.unit && p.size() + r.size() == s.size()));
  } else {
    Require(rest == CString(u"untouched"));
  }
}

bool IsHigh(WCHAR c) { return c >= 0xD800 && c <= 0xDBFF; }

void Parsing(const Input& in) {
  const WStringView s = in.text.View();

  CMap<LONG, LONG, short, short> set;
  set.SetAt(7, 1);
  CTextTools::FillLongMapFromString(set, in.text, in.unit);
  std::size_t tokens = 1;
  for (const WCHAR c : s) tokens += c == in.unit ? 1U : 0U;
  Require(static_cast<std::size_t>(set.GetCount()) <= tokens);
  LONG key = 0;
  short value = 0;
  for (POSITION pos = set.GetStartPosition(); pos != nullptr;) {
    set.GetNextAssoc(pos, key, value);
    Require(value == 0);
  }

  // Joined, the characters give the text without the high surrogates that
  // nothing followed but another high surrogate or the end.
  CStringArray characters;
  characters.Add(CString(u"old"));
  CTextTools::GetCharactersArray(in.text, characters);
  WString expected, joined;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (!IsHigh(s[i]) || (i + 1 < s.size() && !IsHigh(s[i + 1]))) expected.push_back(s[i]);
  }
  for (const CString& c : characters) {
    const WStringView v = c.View();
    Require(v.size() == 1 ? !IsHigh(v[0]) : (v.size() == 2 && IsHigh(v[0]) && !IsHigh(v[1])));
    joined.append(v);
  }
  Require(joined == expected);
  Require(CTextTools::IsSameArrays(characters, characters));

  if (CTextTools::IsStringDigit(in.text) != 0) {
    Require(!s.empty());
    for (const WCHAR c : s) Require(c >= u'0' && c <= u'9');
  }
  if (CTextTools::IsValidNumberFormat(in.text) != 0) Require(s.size() >= 4 && s.starts_with(u"%0"));

  // Only trailing zeros go.
  const CString formatted = CTextTools::FormatFloatNumber(in.text, in.number);
  Require(s.starts_with(formatted.View()));
  for (const WCHAR c : s.substr(formatted.View().size())) Require(c == u'0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  std::vector<WCHAR> units(size / 2);
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<WCHAR>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
  }
  if (units.size() < 2) return 0;
  const unsigned control = units[1];
  const std::size_t len_a = control & 3U, len_b = (control >> 2) & 3U;
  std::size_t pos = 2;
  const auto take = [&](std::size_t n) {
    n = std::min(n, units.size() - pos);
    const CString s(units.data() + pos, static_cast<int>(n));
    pos += n;
    return s;
  };
  Input in;
  in.unit = units[0];
  in.flag = (control & 16U) != 0;
  // The largest magnitude stands for the int limits.
  const int magnitude = static_cast<int>((control >> 5) & 0x3FFU);
  in.number = magnitude == 0x3FF ? INT_MAX : magnitude;
  if ((control & 0x8000U) != 0) in.number = magnitude == 0x3FF ? INT_MIN : -in.number;
  in.a = take(len_a);
  in.b = take(len_b);
  in.text = take(units.size() - pos);

  Splitters(in);
  Trimming(in);
  Brackets(in);
  PrefixesAndSearch(in);
  Parsing(in);
  return 0;
}

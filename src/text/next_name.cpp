// GetNextName and its helpers SplitTextName and GetNextName(texts, numbers, ...).
#include <cadtools/text/natural_names.h>

#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>

namespace cadtools {

namespace {

constexpr int kLetters = 26;

// Names split at ASCII digits only; other decimal digits stay text.
constexpr bool IsAsciiDigit(WCHAR ch) noexcept { return ch >= u'0' && ch <= u'9'; }

constexpr bool IsAsciiLetter(WCHAR ch) noexcept { return (ch >= u'A' && ch <= u'Z') || (ch >= u'a' && ch <= u'z'); }

constexpr bool IsLetterName(WStringView name) noexcept {
  if (name.empty() || name.size() > 3) return false;
  for (const WCHAR ch : name) {
    if (!IsAsciiLetter(ch)) return false;
  }
  return true;
}

// The next letter number: "A" -> "B", "Z" -> "AA", "ZZ" -> "A". The result
// has room for two letters, and a first letter past "Z" is dropped.
CString NextLetterName(WStringView name) {
  const WCHAR base = name.back() >= u'a' ? u'a' : u'A';
  int value = 0;
  for (const WCHAR ch : name) value = value * kLetters + (ch >= u'a' ? ch - u'a' : ch - u'A') + 1;
  const int n = value + 1;
  int q = n / kLetters;
  int r = n - kLetters * q;
  if (r == 0) {
    r = kLetters;
    --q;
  }
  const auto letter = [base](int v) { return static_cast<WCHAR>(base + v - 1); };
  const WCHAR pair[] = {q >= 1 && q <= kLetters ? letter(q) : WCHAR{' '}, letter(r)};
  CString result(pair, 2);
  result.Trim();
  return result;
}

// The value of a run of ASCII digits, as the host's wide text-to-int
// conversion reads it: saturated at INT_MAX.
std::int32_t ReadInt(WStringView digits) noexcept {
  std::int32_t value = 0;
  for (const WCHAR ch : digits) {
    const int digit = ch - u'0';
    if (value > (INT_MAX - digit) / 10) return INT_MAX;
    value = value * 10 + digit;
  }
  return value;
}

// The host adds in its 32-bit int and wraps: 2147483647 + 1 is -2147483648.
constexpr std::int32_t WrappingAdd(std::int32_t a, std::uint32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + b);
}

// numbers[i] advanced by delta and printed as "%d", with one '0' put back
// in front when the number got shorter and had a leading zero ("009" ->
// "010", "001" -> "02").
CString AdvanceNumber(const CString& number, std::uint32_t delta) {
  char digits[12];
  const std::int32_t sum = WrappingAdd(ReadInt(number.View()), delta);
  const char* const end = std::to_chars(digits, digits + sizeof digits, sum).ptr;
  const int length = static_cast<int>(end - digits);
  CString result;
  if (length < number.GetLength() && number.GetAt(0) == u'0') result.AppendChar(u'0');
  for (const char* c = digits; c != end; ++c) result.AppendChar(static_cast<WCHAR>(*c));
  return result;
}

}  // namespace

CString NaturalNames::GetNextName(CString name) {
  const WStringView view = name.View();
  if (view.empty()) return CString();
  if (IsLetterName(view)) return NextLetterName(view);
  CStringArray texts;
  CStringArray numbers;
  SplitTextName(name, texts, numbers);
  return GetNextName(texts, numbers, 1, 1);
}

void NaturalNames::SplitTextName(CString name, CStringArray& texts, CStringArray& numbers) {
  const WStringView view = name.View();
  if (view.empty()) return;
  // A leading number gets an empty text before it, so that the name reads
  // texts[0] numbers[0] texts[1] numbers[1] ...
  if (IsAsciiDigit(view[0])) texts.Add(CString());
  std::size_t start = 0;
  for (std::size_t i = 1; i <= view.size(); ++i) {
    const bool digits = IsAsciiDigit(view[start]);
    if (i < view.size() && IsAsciiDigit(view[i]) == digits) continue;
    (digits ? numbers : texts).Add(CString(view.data() + start, static_cast<int>(i - start)));
    start = i;
  }
}

CString NaturalNames::GetNextName(CStringArray& texts, CStringArray& numbers, int step, int factor) {
  const std::uint32_t delta = static_cast<std::uint32_t>(step) * static_cast<std::uint32_t>(factor);
  CString result;
  for (INT_PTR i = 0; i < texts.GetSize(); ++i) {
    result += texts[i];
    if (i < numbers.GetSize() && !numbers[i].IsEmpty()) result += AdvanceNumber(numbers[i], delta);
  }
  return result;
}

}  // namespace cadtools

// IsTextLike and IsTextLikeArray.
#include <cadtools/text/natural_names.h>

#include "text/folded_search.h"
#include "text/text_like_ascii.h"

#include <cstddef>
#include <string_view>

namespace cadtools {

namespace {

constexpr char kStar = '*';
constexpr WCHAR kCurrencySign = 0x00A4;  // the host's list separator in a text
constexpr WCHAR kCaret = u'^';           // the same separator in a joined list

constexpr WCHAR AsJoined(WCHAR ch) noexcept { return ch == kCurrencySign ? kCaret : ch; }

// Matches a pattern that holds at least one '*'. Each literal part is taken
// at its first occurrence after the previous one, without backtracking:
// the host's filters have always matched that way.
template <class Char>
bool MatchStarPattern(std::basic_string_view<Char> text, std::basic_string_view<Char> pattern) noexcept {
  using View = std::basic_string_view<Char>;
  const bool openStart = pattern.front() == kStar;
  const bool openEnd = pattern.back() == kStar;
  std::size_t matchedTo = 0;  // end of the last literal's occurrence
  bool firstLiteral = true;
  std::size_t i = 0;
  while (i < pattern.size()) {
    if (pattern[i] == kStar) {
      ++i;
      continue;
    }
    std::size_t end = pattern.find(static_cast<Char>(kStar), i);
    if (end == View::npos) end = pattern.size();
    const View literal = pattern.substr(i, end - i);
    // Without a leading '*' the first literal must start the text, and its
    // first occurrence is there exactly when the text starts with it.
    const std::size_t at = firstLiteral && !openStart
                               ? (text::EqualFolded(text.substr(0, literal.size()), literal) ? 0 : View::npos)
                               : text::FindFolded(text, literal, matchedTo);
    if (at == View::npos) return false;
    firstLiteral = false;
    matchedTo = at + literal.size();
    i = end;
  }
  return openEnd || matchedTo == text.size();
}

// Without a '*': an empty pattern matches the empty text only, any other
// the text that equals it. With one, a pattern of '*' only matches
// everything and the empty text matches nothing else (no literal of the
// pattern occurs in it); MatchStarPattern gives both.
template <class Char>
bool TextLike(std::basic_string_view<Char> text, std::basic_string_view<Char> pattern) noexcept {
  if (pattern.find(static_cast<Char>(kStar)) == std::basic_string_view<Char>::npos) {
    return pattern.empty() ? text.empty() : text::EqualFolded(text, pattern);
  }
  return MatchStarPattern(text, pattern);
}

}  // namespace

int NaturalNames::IsTextLike(CString text, CString pattern) noexcept {
  return TextLike(text.View(), pattern.View()) ? 1 : 0;
}

bool text::IsAsciiTextLike(std::string_view text, std::string_view pattern) noexcept {
  return TextLike(text, pattern);
}

bool NaturalNames::IsTextLikeArray(CString text, const CStringArray& list) noexcept {
  // Compares the text, read with every currency sign as a caret, to the
  // elements joined with carets, without building either string.
  const WStringView t = text.View();
  std::size_t pos = 0;
  const CString* elements = list.GetData();
  for (INT_PTR k = 0; k < list.GetSize(); ++k) {
    if (k > 0) {
      if (pos == t.size() || AsJoined(t[pos]) != kCaret) return false;
      ++pos;
    }
    const WStringView element = elements[k].View();
    if (t.size() - pos < element.size()) return false;
    for (const WCHAR unit : element) {
      if (AsJoined(t[pos]) != unit) return false;
      ++pos;
    }
  }
  return pos == t.size();
}

}  // namespace cadtools

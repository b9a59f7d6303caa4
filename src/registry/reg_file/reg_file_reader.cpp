// ParseRegFile: .reg text into key entries, all or nothing, taking what the
// registry editor takes.
#include <cadtools/registry/reg_file.h>

#include <algorithm>
#include <string>
#include <utility>

#include "reg_text.h"

namespace cadtools::registry {
namespace {

using detail::Excerpt;

// The first fault of a file; caught once, in ParseRegFile.
struct Fault {
  std::size_t line;
  std::string message;
};

[[noreturn]] void Fail(std::size_t line, std::string message) { throw Fault{line, std::move(message)}; }

constexpr bool IsBlank(WCHAR ch) noexcept { return ch == u' ' || ch == u'\t'; }

WStringView TrimLeft(WStringView s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  return s;
}

WStringView TrimRight(WStringView s) {
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

WStringView Trim(WStringView s) { return TrimRight(TrimLeft(s)); }

// The registry editor skips lines that start with ";" or "#".
bool IsComment(WStringView trimmed) { return !trimmed.empty() && (trimmed.front() == u';' || trimmed.front() == u'#'); }

// text up to a ";" that starts a comment after value data.
WStringView BeforeComment(WStringView text) { return text.substr(0, text.find(u';')); }

bool StartsWithNoCase(WStringView text, std::string_view ascii) {
  if (text.size() < ascii.size()) return false;
  for (std::size_t i = 0; i < ascii.size(); ++i) {
    WCHAR ch = text[i];
    if (ch >= u'A' && ch <= u'Z') ch = static_cast<WCHAR>(ch + (u'a' - u'A'));
    if (ch != static_cast<unsigned char>(ascii[i])) return false;
  }
  return true;
}

bool Equals(WStringView text, std::string_view ascii) {
  return std::equal(text.begin(), text.end(), ascii.begin(), ascii.end(),
                    [](WCHAR a, char b) { return a == static_cast<unsigned char>(b); });
}

int HexDigit(WCHAR ch) noexcept {
  if (ch >= u'0' && ch <= u'9') return ch - u'0';
  if (ch >= u'a' && ch <= u'f') return ch - u'a' + 10;
  if (ch >= u'A' && ch <= u'F') return ch - u'A' + 10;
  return -1;
}

// 1 to `max_digits` hex digits, the whole of `text`.
std::optional<DWORD> HexNumber(WStringView text, std::size_t max_digits) {
  if (text.empty() || text.size() > max_digits) return std::nullopt;
  DWORD value = 0;
  for (const WCHAR ch : text) {
    const int digit = HexDigit(ch);
    if (digit < 0) return std::nullopt;
    value = (value << 4) | static_cast<DWORD>(digit);
  }
  return value;
}

class Parser {
 public:
  explicit Parser(WStringView text) : text_(text) {}

  RegKeys Run() {
    if (text_.empty()) Fail(1, "empty file: expected 'Windows Registry Editor Version 5.00'");
    WStringView header;
    NextLine(header);
    header = Trim(header);
    if (Equals(header, detail::kHeader4)) {
      narrow_ = true;
    } else if (!Equals(header, detail::kHeader5)) {
      Fail(1, "not a registry file: expected 'Windows Registry Editor Version 5.00' or 'REGEDIT4', found '" +
                  Excerpt(header) + "'");
    }
    WStringView line;
    while (NextLine(line)) {
      line = TrimLeft(line);
      if (line.empty() || IsComment(line)) continue;
      if (line.front() == u'[') {
        KeyLine(line);
      } else if (!keys_.empty() && keys_.back().remove) {
        // The registry editor ignores what follows a [-KEY] line up to the
        // next key line; settings exports of popular tools rely on it.
      } else if (line.front() == u'"' || line.front() == u'@') {
        ValueLine(line);
      } else {
        Fail(line_,
             "expected [KEY], a value line (\"name\"=... or @=...) or a ; comment, found '" + Excerpt(line) + "'");
      }
    }
    return std::move(keys_);
  }

 private:
  // The next line without its line end (CR LF, LF or a lone CR, all of
  // which the registry editor takes); false at the end.
  bool NextLine(WStringView& line) {
    if (pos_ > text_.size() || (pos_ == text_.size() && pos_ != 0)) return false;
    static constexpr WCHAR kLineEnds[] = {u'\r', u'\n', 0};
    const std::size_t end = text_.find_first_of(kLineEnds, pos_);
    line = text_.substr(pos_, end == WStringView::npos ? WStringView::npos : end - pos_);
    pos_ = end == WStringView::npos ? text_.size() + 1 : end + 1;
    if (end != WStringView::npos && text_[end] == u'\r' && pos_ < text_.size() && text_[pos_] == u'\n') ++pos_;
    ++line_;
    // A NUL inside a line would end up in a name, where the registry
    // cannot take it.
    if (line.find(WCHAR{0}) != WStringView::npos) Fail(line_, "NUL character inside a line");
    return true;
  }

  void KeyLine(WStringView line) {
    const std::size_t close = line.rfind(u']');
    if (close == WStringView::npos) Fail(line_, "key line without a closing ']'");
    if (!TrimLeft(line.substr(close + 1)).empty()) {
      Fail(line_, "text after the key's closing ']': '" + Excerpt(line.substr(close + 1)) + "'");
    }
    WStringView key = line.substr(1, close - 1);
    RegKeyEntry entry;
    entry.line = line_;
    if (!key.empty() && key.front() == u'-') {
      entry.remove = true;
      key.remove_prefix(1);
    }
    // [HKEY_CURRENT_USER\Software\A\] names A, as the registry takes it.
    while (!key.empty() && key.back() == u'\\') key.remove_suffix(1);
    const std::size_t slash = key.find(u'\\');
    const WStringView hive_name = key.substr(0, slash);
    const std::optional<RegHive> hive = HiveFromName(hive_name);
    if (!hive) Fail(line_, UnknownHive(hive_name));
    entry.hive = *hive;
    if (slash != WStringView::npos) {
      entry.path = WString(key.substr(slash + 1));
      CheckPath(entry.path);
    }
    if (entry.remove && entry.path.empty()) Fail(line_, "refusing to delete a whole hive");
    // Below HKEY_USERS the first key is a user's whole hive.
    if (entry.remove && entry.hive == RegHive::kUsers && entry.path.find(u'\\') == WString::npos) {
      Fail(line_, "refusing to delete a user's whole hive");
    }
    keys_.push_back(std::move(entry));
  }

  std::string UnknownHive(WStringView name) const {
    static constexpr std::string_view kOthers[] = {"HKEY_CURRENT_CONFIG", "HKCC", "HKEY_PERFORMANCE_DATA",
                                                   "HKEY_DYN_DATA"};
    for (const std::string_view other : kOthers) {
      if (name.size() == other.size() && StartsWithNoCase(name, Lower(other))) {
        return "hive " + std::string(other) + " is not supported";
      }
    }
    return "unknown hive '" + Excerpt(name) +
           "': expected HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT or HKEY_USERS";
  }

  static std::string Lower(std::string_view ascii) {
    std::string lower(ascii);
    for (char& c : lower) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
  }

  void CheckPath(WStringView path) const {
    std::size_t depth = 0;
    std::size_t start = 0;
    while (true) {
      const std::size_t end = path.find(u'\\', start);
      const WStringView name = path.substr(start, end == WStringView::npos ? WStringView::npos : end - start);
      if (name.empty()) Fail(line_, "empty key name in '" + Excerpt(path) + "' (two backslashes, or one at the start)");
      if (name.size() > kMaxKeyNameLength) {
        Fail(line_, "key name of " + std::to_string(name.size()) + " characters: at most 255 are allowed");
      }
      if (++depth > kMaxKeyDepth) Fail(line_, "key path deeper than 512 levels");
      if (end == WStringView::npos) return;
      start = end + 1;
    }
  }

  void ValueLine(WStringView line) {
    if (keys_.empty()) Fail(line_, "value line before the first [KEY] line");
    RegValueEntry value;
    value.line = line_;
    WStringView rest;
    if (line.front() == u'@') {
      rest = line.substr(1);
    } else {
      std::size_t end = 0;
      value.name = QuotedText(line, end, "value name");
      rest = line.substr(end);
      if (value.name.size() > kMaxValueNameLength) {
        Fail(line_, "value name of " + std::to_string(value.name.size()) + " characters: at most 16383 are allowed");
      }
    }
    rest = TrimLeft(rest);
    if (rest.empty() || rest.front() != u'=') Fail(line_, "expected '=' after the value name");
    rest = TrimLeft(rest.substr(1));
    ValueData(rest, value);
    keys_.back().values.push_back(std::move(value));
  }

  // The text of the quoted string at the start of `line` with \\ and \"
  // undone; `end` is set past the closing quote.
  WString QuotedText(WStringView line, std::size_t& end, std::string_view what) const {
    WString text;
    for (std::size_t i = 1; i < line.size(); ++i) {
      const WCHAR ch = line[i];
      if (ch == u'"') {
        end = i + 1;
        return text;
      }
      if (ch == u'\\') {
        if (i + 1 == line.size()) break;
        const WCHAR next = line[++i];
        if (next != u'\\' && next != u'"') {
          Fail(line_, "unknown escape '\\" + Excerpt(WStringView(&next, 1)) + "' in a " + std::string(what) +
                          ": only \\\\ and \\\" are known");
        }
        text.push_back(next);
      } else {
        text.push_back(ch);
      }
    }
    Fail(line_, std::string(what) + " without its closing quote");
  }

  // Nothing but blanks and a ; comment may follow value data.
  void ExpectEnd(WStringView rest, std::string_view after) const {
    if (!Trim(BeforeComment(rest)).empty()) {
      Fail(line_, "unexpected text after the " + std::string(after) + ": '" + Excerpt(rest) + "'");
    }
  }

  void ValueData(WStringView data, RegValueEntry& value) {
    if (!data.empty() && data.front() == u'"') {
      std::size_t end = 0;
      const WString text = QuotedText(data, end, "string");
      ExpectEnd(data.substr(end), "closing quote");
      value.type = REG_SZ;
      value.data = EncodeRegString(text);
      return;
    }
    if (!data.empty() && data.front() == u'-') {
      ExpectEnd(data.substr(1), "'-'");
      value.remove = true;
      return;
    }
    if (StartsWithNoCase(data, "dword:")) {
      const WStringView digits = Trim(BeforeComment(data.substr(6)));
      const std::optional<DWORD> number = HexNumber(digits, 8);
      if (!number) Fail(line_, "dword: needs 1 to 8 hex digits, found '" + Excerpt(data.substr(6)) + "'");
      value.type = REG_DWORD;
      for (int shift = 0; shift < 32; shift += 8) value.data.push_back(static_cast<BYTE>((*number >> shift) & 0xFF));
      return;
    }
    if (StartsWithNoCase(data, "hex:")) {
      value.type = REG_BINARY;
      HexData(data.substr(4), value.data);
      return;
    }
    if (StartsWithNoCase(data, "hex(")) {
      const std::size_t close = data.find(u')');
      const std::optional<DWORD> type =
          close == WStringView::npos ? std::nullopt : HexNumber(data.substr(4, close - 4), 8);
      if (!type) Fail(line_, "hex(N): needs a type number of 1 to 8 hex digits");
      if (close + 1 >= data.size() || data[close + 1] != u':') Fail(line_, "expected ':' after hex(N)");
      value.type = *type;
      HexData(data.substr(close + 2), value.data);
      if (narrow_ && (value.type == REG_SZ || value.type == REG_EXPAND_SZ || value.type == REG_MULTI_SZ)) {
        Widen(value);
      }
      return;
    }
    Fail(line_, "unknown value data '" + Excerpt(data) + "': expected \"text\", dword:, hex:, hex(N): or -");
  }

  // Comma-separated bytes of one or two hex digits, going on over lines
  // that end in a backslash (a ; comment may follow it, and blank or
  // comment lines may come between). Each line is read on its own, so a
  // fault is reported on the line that holds it.
  void HexData(WStringView segment, std::vector<BYTE>& out) {
    bool after_byte = false;
    while (true) {
      segment = TrimRight(BeforeComment(segment));
      const bool more = !segment.empty() && segment.back() == u'\\';
      if (more) segment.remove_suffix(1);
      std::size_t i = 0;
      while (true) {
        while (i < segment.size() && IsBlank(segment[i])) ++i;
        if (i == segment.size()) break;
        if (segment[i] == u',') {
          if (!after_byte) Fail(line_, "expected a hex byte before ','");
          after_byte = false;
          ++i;
          continue;
        }
        if (after_byte) Fail(line_, "expected ',' between hex bytes, found '" + Excerpt(segment.substr(i)) + "'");
        std::size_t digits = 0;
        int byte = 0;
        while (i < segment.size() && HexDigit(segment[i]) >= 0 && digits < 3) {
          byte = byte * 16 + HexDigit(segment[i]);
          ++i;
          ++digits;
        }
        if (digits == 0 || digits > 2) {
          Fail(line_, "expected a hex byte (00 to ff), found '" + Excerpt(segment.substr(i - digits)) + "'");
        }
        out.push_back(static_cast<BYTE>(byte));
        after_byte = true;
      }
      if (!more) return;
      WStringView next;
      do {
        if (!NextLine(next)) Fail(line_, "the hex data goes on past the end of the file");
        next = TrimLeft(next);
      } while (next.empty() || IsComment(next));
      segment = next;
    }
  }

  // REGEDIT4 files hold string data as 8-bit text; the registry holds
  // UTF-16, so the bytes are decoded (UTF-8 when they are valid UTF-8,
  // else the ANSI code page, as the text of the file) and stored wide.
  void Widen(RegValueEntry& value) const {
    const std::string_view narrow(reinterpret_cast<const char*>(value.data.data()), value.data.size());
    const WString wide = detail::WidenNarrowText(narrow);
    value.data.clear();
    for (const WCHAR unit : wide) {
      value.data.push_back(static_cast<BYTE>(unit & 0xFF));
      value.data.push_back(static_cast<BYTE>((unit >> 8) & 0xFF));
    }
  }

  WStringView text_;
  std::size_t pos_ = 0;
  std::size_t line_ = 0;
  bool narrow_ = false;
  RegKeys keys_;
};

}  // namespace

RegParseResult ParseRegFile(std::string_view bytes) {
  RegParseResult result;
  try {
    const detail::DecodedText decoded = detail::DecodeRegText(bytes);
    if (!decoded.error.empty()) Fail(decoded.error_line, decoded.error);
    result.keys = Parser(decoded.text).Run();
  } catch (Fault& fault) {
    result.keys.clear();
    result.error = RegFileError{fault.line, std::move(fault.message)};
  }
  return result;
}

}  // namespace cadtools::registry

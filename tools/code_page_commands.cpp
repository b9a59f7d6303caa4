#include "code_page_commands.h"

#include "errors.h"
#include "help.h"
#include "settings.h"

#include <cadtools/registry/reg_values.h>
#include <cadtools/text/host_strings.h>
#include <cadtools/text_tools.h>

#include "text/code_page_conversion.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <fstream>
#include <istream>
#include <iterator>
#include <ostream>

namespace cadtools::cli {
namespace {

constexpr UINT kDefaultFontString = 19191;

std::string Lower(std::string_view word) {
  std::string text(word);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

std::optional<unsigned> Digits(std::string_view text) {
  unsigned value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::string_view TrimSpaces(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

WString FromUtf16(std::string_view bytes, bool big_endian) {
  WString units;
  units.reserve(bytes.size() / 2 + 1);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    units.push_back(static_cast<WCHAR>(big_endian ? (first << 8) | second : (second << 8) | first));
  }
  if (bytes.size() % 2 != 0) units.push_back(static_cast<WCHAR>(0xFFFD));
  return units;
}

std::string ToUtf16(WStringView units, bool big_endian) {
  std::string bytes;
  bytes.reserve(units.size() * 2);
  for (const WCHAR unit : units) {
    const auto low = static_cast<char>(static_cast<unsigned>(unit) & 0xFFU);
    const auto high = static_cast<char>(static_cast<unsigned>(unit) >> 8);
    bytes.push_back(big_endian ? high : low);
    bytes.push_back(big_endian ? low : high);
  }
  return bytes;
}

bool IsUtf16(UINT codePage) { return codePage == kUtf16Le || codePage == kUtf16Be; }

std::string CodePageText(UINT codePage) {
  return codePage == 0 ? "code page 0 (the system's ANSI code page)" : "code page " + std::to_string(codePage);
}

// Options given as "--from CP" or "--from=CP".
bool TakeValue(std::span<const std::string_view> words, std::size_t& i, std::string_view name,
               std::optional<std::string_view>& value) {
  const std::string_view word = words[i];
  if (!word.starts_with(name)) return false;
  std::string_view given;
  if (word.size() == name.size()) {
    if (++i == words.size()) throw UsageError("option " + std::string(name) + " needs a code page", ConvertUsage());
    given = words[i];
  } else if (word[name.size()] == '=') {
    given = word.substr(name.size() + 1);
  } else {
    return false;
  }
  if (value) throw UsageError("option " + std::string(name) + " given twice", ConvertUsage());
  value = given;
  return true;
}

UINT RequireCodePage(const std::optional<std::string_view>& word, std::string_view option) {
  if (!word) throw UsageError("option " + std::string(option) + " is missing", ConvertUsage());
  const std::optional<UINT> codePage = ParseCodePage(*word);
  if (!codePage) {
    throw UsageError("unknown code page '" + std::string(*word) +
                         "': give a number such as 1252, 932 or 65001, or utf-8, utf-16, utf-16be, ansi, oem",
                     ConvertUsage());
  }
  if (!CodePageAvailable(*codePage)) {
    throw UsageError("code page " + std::to_string(*codePage) + " is not available here", ConvertUsage());
  }
  return *codePage;
}

std::string ReadAll(std::istream& stream) {
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool WantsHelp(std::span<const std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [](std::string_view w) { return w == "--help" || w == "-h"; });
}

}  // namespace

std::optional<UINT> ParseCodePage(std::string_view word) {
  const std::string name = Lower(word);
  if (name == "utf-8" || name == "utf8") return codepage::kUtf8;
  if (name == "utf-16" || name == "utf16" || name == "utf-16le" || name == "utf16le") return kUtf16Le;
  if (name == "utf-16be" || name == "utf16be") return kUtf16Be;
  if (name == "ansi") return SystemAnsiCodePage();
  if (name == "oem") return SystemOemCodePage();
  const std::string_view number = std::string_view(name).starts_with("cp") ? std::string_view(name).substr(2) : name;
  const std::optional<unsigned> value = Digits(number);
  if (!value || *value > 65535) return std::nullopt;
  return static_cast<UINT>(*value);
}

bool CodePageAvailable(UINT codePage) {
  return IsUtf16(codePage) || !codepage::MultiByteToWide(codePage, "A").empty();
}

std::string ConvertText(UINT from, UINT to, std::string_view bytes) {
  // The system calls count in int.
  if (bytes.size() > INT_MAX / 2) throw CommandFailed("the input is too large (at most 1 GiB)");
  const WString units = IsUtf16(from) ? FromUtf16(bytes, from == kUtf16Be) : codepage::MultiByteToWide(from, bytes);
  return IsUtf16(to) ? ToUtf16(units, to == kUtf16Be) : codepage::WideToMultiByte(to, units);
}

std::string DescribeCharset(std::string_view word) {
  const std::string_view trimmed = TrimSpaces(word);
  const bool digits = !trimmed.empty() && trimmed.find_first_not_of("0123456789") == std::string_view::npos;
  if (digits) {
    const std::optional<unsigned> number = Digits(trimmed);
    if (!number || *number > 255) throw UsageError("'" + std::string(word) + "' is not a charset number from 0 to 255", CharsetUsage());
    const int charset = static_cast<int>(*number);
    const std::string name = ToUtf8(CTextTools::GetCharset(charset));
    const UINT codePage = CTextTools::CharsetToCodePage(static_cast<unsigned char>(charset));
    return (name == std::to_string(charset) ? name + " (no name)" : name) + ", " + CodePageText(codePage);
  }
  const int charset = CTextTools::GetCharset(FromUtf8(word));
  std::string text = std::to_string(charset) + ", " +
                     CodePageText(CTextTools::CharsetToCodePage(static_cast<unsigned char>(charset)));
  // Unknown names fall to 1 just as "Default" does; say which it was.
  if (charset == 1 && CTextTools::GetCharset(1).CompareNoCase(CString(FromUtf8(word)).Trim()) != 0) {
    text += "; '" + std::string(trimmed) + "' is no charset name, which the host reads as 1 (Default)";
  }
  return text;
}

DefaultFontSource FindDefaultFont() {
  DefaultFontSource source;
  source.host_string = LoadHostString(kDefaultFontString);
  // The face part of the string, as the host cuts it: "Tahoma (8pt)" is Tahoma.
  CString face = source.host_string;
  const int open = face.Find(u'(');
  if (open >= 0 && face.ReverseFind(u')') > open) face = face.Left(open);
  face.Trim();
  // Read only: the last argument keeps the object from storing its default.
  CRegString setting(CADTOOLS_WIDE("Settings\\Text\\DefaultFontName"), face, 0, 0, HKEY_CURRENT_USER, 1);
  source.from_setting = setting.m_bRead != 0;
  if (source.from_setting) {
    const CString stored = setting;
    source.setting = stored;
    face = source.setting;
  }
  // A stored list of faces gives its first.
  const int semicolon = face.Find(u';');
  if (semicolon >= 0) face = face.Left(semicolon);
  source.face = face;
  return source;
}

void RunConvert(std::span<const std::string_view> words, std::istream& in, std::ostream& out) {
  std::optional<std::string_view> from;
  std::optional<std::string_view> to;
  std::optional<std::string_view> file;
  bool options = true;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (options && (word == "--help" || word == "-h")) {
      out << ConvertUsage();
      return;
    }
    if (options && word == "--") {
      options = false;
      continue;
    }
    if (options && (TakeValue(words, i, "--from", from) || TakeValue(words, i, "--to", to))) continue;
    if (options && word.size() > 1 && word[0] == '-') {
      throw UsageError("unknown option '" + std::string(word) + "'", ConvertUsage());
    }
    if (file) throw UsageError("give at most one file", ConvertUsage());
    file = word;
  }
  const UINT source = RequireCodePage(from, "--from");
  const UINT target = RequireCodePage(to, "--to");

  std::string bytes;
  if (!file || *file == "-") {
    bytes = ReadAll(in);
    if (in.bad()) throw InputError("cannot read standard input");
  } else {
    std::ifstream stream{std::string(*file), std::ios::binary};
    if (!stream) throw InputError("cannot read " + std::string(*file));
    bytes = ReadAll(stream);
    if (stream.bad()) throw InputError("cannot read " + std::string(*file));
  }
  const std::string converted = ConvertText(source, target, bytes);
  out.write(converted.data(), static_cast<std::streamsize>(converted.size()));
}

void RunCharset(std::span<const std::string_view> words, std::ostream& out) {
  if (WantsHelp(words)) {
    out << CharsetUsage();
    return;
  }
  if (words.size() > 1) throw UsageError("give one name or number (quote a name with spaces)", CharsetUsage());
  if (!words.empty()) {
    out << DescribeCharset(words[0]) << '\n';
    return;
  }
  // No word: every charset that has a name or a code page.
  for (int charset = 0; charset <= 255; ++charset) {
    const bool named = ToUtf8(CTextTools::GetCharset(charset)) != std::to_string(charset);
    if (named || CTextTools::CharsetToCodePage(static_cast<unsigned char>(charset)) != 0) {
      out << charset << "  " << DescribeCharset(std::to_string(charset)) << '\n';
    }
  }
}

void RunFont(std::span<const std::string_view> words, std::ostream& out) {
  const SettingsOptions o = ParseSettingsOptions(words, FontUsage());
  if (o.help) {
    out << FontUsage();
    return;
  }
  if (!o.command.empty()) throw UsageError("font takes only --app, --root and --store", FontUsage());
  const ScopedSettingsRoot library_root(o.app, o.root);
  const ScopedStoreFolder store(o.store);
  const DefaultFontSource font = FindDefaultFont();
  const std::string key = SettingsKeyText(registry::RegHive::kCurrentUser,
                                          ResolveSettingsKey("Settings\\Text\\DefaultFontName", SettingsRoot(), true).path);
  if (font.face.IsEmpty()) {
    out << "no default face";
  } else {
    out << "face \"" << ToUtf8(font.face) << '"';
  }
  if (font.from_setting) {
    out << "\nfrom the setting " << key << "\\DefaultFontName \"" << ToUtf8(font.setting) << "\"\n";
  } else if (!font.host_string.IsEmpty()) {
    out << "\nfrom the host string " << kDefaultFontString << " \"" << ToUtf8(font.host_string) << "\"; the host stores\n"
        << "the face in " << key << "\\DefaultFontName when it first asks\n";
  } else {
    out << "\nneither the setting " << key << "\\DefaultFontName nor the host string " << kDefaultFontString
        << " is there\n";
  }
}

}  // namespace cadtools::cli

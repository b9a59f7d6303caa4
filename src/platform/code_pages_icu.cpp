// The system's code pages and the conversions between them and UTF-16
// where Windows is not there to ask: the code pages come from the
// environment, UTF-8 from our own codec, the other code pages from ICU's
// mapping tables, arranged to give what Windows gives for the same bytes.
//
// Each code page becomes a table, built once per process on first use:
// bytes to UTF-16 for every single byte and, on double-byte code pages,
// for every lead byte with every second byte; UTF-16 to bytes for every
// unit. Windows reads a lead byte and whatever byte but NUL follows as
// one character, so the tables do too, and they carry what Windows reads
// otherwise than ICU (C0 controls as themselves, C1 controls and
// private-use characters for bytes without a character). Compared with
// wine's MultiByteToWideChar over every byte and byte pair of 437, 850,
// 852, 866, 874, 932, 936, 949, 950, 1250-1258 and 10000, the results are
// the same.
// What neither has becomes the code page's default character. For the
// code pages the host's texts use, UTF-16 to bytes is the plain reverse
// of bytes to UTF-16 plus the pairs in code_page_best_fit.h, taken from
// Windows itself, so that best-fit replacements (U+0100 is 'A' in 1252)
// come out as they do there; other code pages use ICU's fallbacks.
#include <cadtools/text/code_pages.h>

#include <unicode/ucnv.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/code_page_best_fit.h"
#include "platform/utf8_codec.h"
#include "text/code_page_conversion.h"

namespace cadtools {

namespace {

// A positive number in the variable, else fallback.
UINT CodePageFromEnvironment(const char* variable, UINT fallback) noexcept {
  const char* value = std::getenv(variable);
  if (value == nullptr) return fallback;
  const std::string_view text(value);
  UINT codePage = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), codePage);
  return ec == std::errc{} && end == text.data() + text.size() && codePage > 0 ? codePage : fallback;
}

}  // namespace

UINT SystemAnsiCodePage() noexcept { return CodePageFromEnvironment("CADTOOLS_ACP", 1252); }

UINT SystemOemCodePage() noexcept { return CodePageFromEnvironment("CADTOOLS_OEMCP", 437); }

namespace codepage {

namespace {

// The code page numbers that stand for another one, as Windows reads them.
constexpr UINT kAnsi = 0;
constexpr UINT kOem = 1;
constexpr UINT kMac = 2;
constexpr UINT kThreadAnsi = 3;
constexpr UINT kSymbol = 42;
constexpr UINT kMacRoman = 10000;

// Windows refuses these in the multi-byte calls although ICU has them.
constexpr std::array<UINT, 4> kUnicodeOnly{1200, 1201, 12000, 12001};

constexpr char16_t kUnmapped = 0xFFFF;  // no code page maps a byte to U+FFFF
constexpr std::uint16_t kNoBytes = 0xFFFF;

struct LeadRange {
  unsigned first;
  unsigned last;
};

// The double-byte code pages Windows has: their lead bytes and the
// character a byte pair without a character becomes.
struct DoubleByteLayout {
  UINT codePage;
  std::array<LeadRange, 2> leads;
  char16_t defaultUnicode;
};

constexpr std::array<DoubleByteLayout, 4> kDoubleByte{{
    {932, {{{0x81, 0x9F}, {0xE0, 0xFC}}}, 0x30FB},
    {936, {{{0x81, 0xFE}, {0, 0}}}, u'?'},
    {949, {{{0x81, 0xFE}, {0, 0}}}, u'?'},
    {950, {{{0x81, 0xFE}, {0, 0}}}, u'?'},
}};

// Single bytes that Windows reads otherwise than ICU's tables do: bytes
// without a character that Windows gives a C1 control or a private-use
// character, and a few characters it takes from another block.
struct ByteOverride {
  UINT codePage;
  unsigned byte;
  char16_t unit;
};

constexpr std::array<ByteOverride, 31> kByteOverrides{{
    {437, 0xE6, 0x00B5},   {852, 0xAA, 0x00AC},   {1253, 0xAA, 0xF8F9}, {1253, 0xD2, 0xF8FA},
    {1253, 0xFF, 0xF8FB},  {1255, 0xCA, 0x05BA},  {1255, 0xD9, 0xF88D}, {1255, 0xDA, 0xF88E},
    {1255, 0xDB, 0xF88F},  {1255, 0xDC, 0xF890},  {1255, 0xDD, 0xF891}, {1255, 0xDE, 0xF892},
    {1255, 0xDF, 0xF893},  {1255, 0xFB, 0xF894},  {1255, 0xFC, 0xF895}, {1255, 0xFF, 0xF896},
    {1257, 0xA1, 0xF8FC},  {1257, 0xA5, 0xF8FD},
    {10000, 0xBD, 0x2126}, {932, 0x80, 0x0080},   {932, 0xA0, 0xF8F0},  {932, 0xFD, 0xF8F1},
    {932, 0xFE, 0xF8F2},   {932, 0xFF, 0xF8F3},   {936, 0x80, 0x20AC},  {936, 0xFF, 0xF8F5},
    {949, 0x80, 0x0080},   {949, 0xFF, 0xF8F7},   {950, 0x80, 0x0080},  {950, 0xFF, 0xF8F8},
}};

struct IcuConverter {
  UConverter* handle = nullptr;
  IcuConverter() = default;
  explicit IcuConverter(UConverter* h) : handle(h) {}
  IcuConverter(const IcuConverter&) = delete;
  IcuConverter& operator=(const IcuConverter&) = delete;
  ~IcuConverter() {
    if (handle != nullptr) ucnv_close(handle);
  }
};

// ICU's converter for a Windows code page, or none.
std::unique_ptr<IcuConverter> OpenConverter(UINT codePage) {
  std::vector<std::string> names;
  if (codePage == 65000) names.emplace_back("UTF-7");
  if (codePage >= 28591 && codePage <= 28599) names.push_back("ISO-8859-" + std::to_string(codePage - 28590));
  if (codePage == 28603 || codePage == 28605) names.push_back("ISO-8859-" + std::to_string(codePage - 28590));
  for (const char* prefix : {"windows-", "cp", "ibm-"}) names.push_back(prefix + std::to_string(codePage));
  for (const std::string& name : names) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* handle = ucnv_open(name.c_str(), &status);
    if (U_SUCCESS(status) && handle != nullptr) return std::make_unique<IcuConverter>(handle);
  }
  return nullptr;
}

// The C0 controls and DEL are themselves in every Windows code page; some
// of ICU's IBM tables swap 0x1A, 0x1C and 0x7F and map other characters
// to controls.
constexpr bool IsControl(unsigned c) noexcept { return c < 0x20 || c == 0x7F; }

// One character's bytes to one UTF-16 unit, or kUnmapped.
char16_t IcuToUnit(UConverter* cnv, const char* bytes, int length) {
  ucnv_reset(cnv);
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setToUCallBack(cnv, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  std::array<UChar, 4> out{};
  const int32_t n = ucnv_toUChars(cnv, out.data(), static_cast<int32_t>(out.size()), bytes, length, &status);
  return U_SUCCESS(status) && n == 1 && out[0] != kUnmapped ? static_cast<char16_t>(out[0]) : kUnmapped;
}

// One UTF-16 unit to one or two bytes (a pair as lead * 256 + trail), or
// kNoBytes.
std::uint16_t IcuFromUnit(UConverter* cnv, char16_t unit) {
  ucnv_reset(cnv);
  UErrorCode status = U_ZERO_ERROR;
  ucnv_setFromUCallBack(cnv, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  std::array<char, 8> out{};
  const UChar in = unit;
  const int32_t n = ucnv_fromUChars(cnv, out.data(), static_cast<int32_t>(out.size()), &in, 1, &status);
  if (U_FAILURE(status)) return kNoBytes;
  const auto byte = [&out](std::size_t i) { return static_cast<std::uint16_t>(static_cast<std::uint8_t>(out[i])); };
  if (n == 1) return byte(0);
  if (n == 2) return static_cast<std::uint16_t>((byte(0) << 8) | byte(1));
  return kNoBytes;
}

// A code page of one or two bytes per character, as tables.
class TableCodePage {
 public:
  TableCodePage(UINT codePage, UConverter* cnv, const DoubleByteLayout* layout)
      : m_doubleByte(layout != nullptr), m_defaultUnicode(layout != nullptr ? layout->defaultUnicode : u'?') {
    m_toUnicode.assign(m_doubleByte ? 0x10000U + 0x100U : 0x100U, kUnmapped);
    m_fromUnicode.assign(0x10000U, kNoBytes);
    if (layout != nullptr) {
      for (const LeadRange& r : layout->leads) {
        for (unsigned b = r.first; b != 0 && b <= r.last; ++b) m_lead[b] = true;
      }
    }
    for (unsigned b = 0; b < 0x100U; ++b) {
      if (m_lead[b]) {
        for (unsigned t = 0; t < 0x100U; ++t) {
          const std::array<char, 2> pair{static_cast<char>(b), static_cast<char>(t)};
          m_toUnicode[0x100U + (b << 8) + t] = IcuToUnit(cnv, pair.data(), 2);
        }
        continue;
      }
      const char single = static_cast<char>(b);
      char16_t unit = IsControl(b) ? static_cast<char16_t>(b) : IcuToUnit(cnv, &single, 1);
      // Windows gives the C1 control for a byte without a character.
      if (unit == kUnmapped && b >= 0x80 && b <= 0x9F && !m_doubleByte) unit = static_cast<char16_t>(b);
      m_toUnicode[b] = unit;
    }
    // What ICU reads for the bytes Windows reads otherwise: Windows does not
    // write those characters as these bytes either.
    std::vector<char16_t> replaced;
    for (const ByteOverride& o : kByteOverrides) {
      if (o.codePage != codePage) continue;
      if (m_toUnicode[o.byte] != kUnmapped && m_toUnicode[o.byte] != o.unit) replaced.push_back(m_toUnicode[o.byte]);
      m_toUnicode[o.byte] = o.unit;
    }
    for (const bestfit::CodePagePairs& known : bestfit::kCodePages) {
      if (known.codePage == codePage) {
        WriteAsWindows(known.pairs);
        return;
      }
    }
    // Elsewhere ICU's fallback mappings (a character narrowed to a near
    // one) stand in for Windows' best fit.
    ucnv_setFallback(cnv, 1);
    for (unsigned u = 0; u < 0x10000U; ++u) {
      if (u >= 0xD800 && u <= 0xDFFF) continue;
      const std::uint16_t bytes =
          IsControl(u) ? static_cast<std::uint16_t>(u) : IcuFromUnit(cnv, static_cast<char16_t>(u));
      // Only the controls themselves become control bytes.
      m_fromUnicode[u] = !IsControl(u) && bytes <= 0xFF && IsControl(bytes) ? kNoBytes : bytes;
    }
    for (const char16_t unit : replaced) m_fromUnicode[unit] = kNoBytes;
    // Windows converts what it reads back to the bytes it came from.
    for (std::size_t i = 0; i < m_toUnicode.size(); ++i) {
      const char16_t unit = m_toUnicode[i];
      if (unit == kUnmapped || m_fromUnicode[unit] != kNoBytes) continue;
      m_fromUnicode[unit] = static_cast<std::uint16_t>(i < 0x100U ? i : i - 0x100U);
    }
  }

  // The bytes Windows writes for each unit: the first single byte or byte
  // pair that reads as it, except where Windows' own pairs say otherwise
  // (its best-fit replacements among them).
  void WriteAsWindows(std::span<const bestfit::Pair> pairs) {
    const auto note = [this](std::size_t index, unsigned bytes) {
      const char16_t unit = m_toUnicode[index];
      if (unit != kUnmapped && m_fromUnicode[unit] == kNoBytes) m_fromUnicode[unit] = static_cast<std::uint16_t>(bytes);
    };
    for (unsigned b = 0; b < 0x100U; ++b) {
      if (!m_lead[b]) note(b, b);
    }
    for (unsigned b = 0; b < 0x100U; ++b) {
      if (!m_lead[b]) continue;
      for (unsigned t = 1; t < 0x100U; ++t) note(0x100U + (b << 8) + t, (b << 8) | t);
    }
    for (const bestfit::Pair& p : pairs) m_fromUnicode[p.unit] = p.bytes;
  }

  WString ToWide(std::string_view bytes) const {
    WString out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const unsigned b = static_cast<std::uint8_t>(bytes[i]);
      char16_t unit = kUnmapped;
      if (!m_lead[b]) {
        unit = m_toUnicode[b];
      } else if (i + 1 < bytes.size() && bytes[i + 1] != '\0') {
        unit = m_toUnicode[0x100U + (b << 8) + static_cast<std::uint8_t>(bytes[++i])];
      }  // a lead byte at the end or before a NUL stands alone
      out.push_back(static_cast<WCHAR>(unit == kUnmapped ? m_defaultUnicode : unit));
    }
    return out;
  }

  std::string ToBytes(WStringView units) const {
    std::string out;
    out.reserve(units.size());
    for (const WCHAR unit : units) {
      const std::uint16_t bytes = m_fromUnicode[static_cast<std::uint16_t>(unit)];
      if (bytes == kNoBytes) {
        out.push_back('?');
      } else if (bytes > 0xFF) {
        out.push_back(static_cast<char>(bytes >> 8));
        out.push_back(static_cast<char>(bytes & 0xFFU));
      } else {
        out.push_back(static_cast<char>(bytes));
      }
    }
    return out;
  }

 private:
  bool m_doubleByte;
  char16_t m_defaultUnicode;
  std::array<bool, 0x100> m_lead{};
  std::vector<char16_t> m_toUnicode;
  std::vector<std::uint16_t> m_fromUnicode;
};

// Windows' symbol code page: bytes from 0x20 on are the private-use
// characters U+F020 to U+F0FF.
WString SymbolToWide(std::string_view bytes) {
  WString out;
  for (const char c : bytes) {
    const unsigned b = static_cast<std::uint8_t>(c);
    out.push_back(static_cast<WCHAR>(b < 0x20 ? b : 0xF000U + b));
  }
  return out;
}

std::string SymbolToBytes(WStringView units) {
  std::string out;
  for (const WCHAR unit : units) {
    if (unit < 0x20) {
      out.push_back(static_cast<char>(unit));
    } else if (unit >= 0xF020 && unit <= 0xF0FF) {
      out.push_back(static_cast<char>(unit & 0xFFU));
    } else {
      return {};
    }
  }
  return out;
}

// A code page ICU has, but not as one or two bytes per character (UTF-7,
// EUC, ISO-2022, GB 18030): converted as a stream with ICU's substitutes.
class StreamCodePage {
 public:
  explicit StreamCodePage(std::unique_ptr<IcuConverter> cnv) : m_cnv(std::move(cnv)) {}

  WString ToWide(std::string_view bytes) const {
    ucnv_reset(m_cnv->handle);
    UErrorCode status = U_ZERO_ERROR;
    std::u16string out(bytes.size() * 2 + 1, u'\0');
    const int32_t n = ucnv_toUChars(m_cnv->handle, out.data(), static_cast<int32_t>(out.size()), bytes.data(),
                                    static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return {};
    return WString(out.begin(), out.begin() + n);
  }

  std::string ToBytes(WStringView units) const {
    ucnv_reset(m_cnv->handle);
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setSubstChars(m_cnv->handle, "?", 1, &status);
    const std::u16string in(units.begin(), units.end());
    std::string out(units.size() * 8 + 8, '\0');
    const int32_t n = ucnv_fromUChars(m_cnv->handle, out.data(), static_cast<int32_t>(out.size()), in.data(),
                                      static_cast<int32_t>(in.size()), &status);
    if (U_FAILURE(status)) return {};
    out.resize(static_cast<std::size_t>(n));
    return out;
  }

 private:
  std::unique_ptr<IcuConverter> m_cnv;
};

struct CodePage {
  std::unique_ptr<TableCodePage> table;
  std::unique_ptr<StreamCodePage> stream;
  mutable std::mutex streamLock;  // an ICU converter keeps state
};

UINT ResolveCodePage(UINT codePage) {
  switch (codePage) {
    case kAnsi:
    case kThreadAnsi:
      return SystemAnsiCodePage();
    case kOem:
      return SystemOemCodePage();
    case kMac:
      return kMacRoman;
    default:
      return codePage;
  }
}

// The tables of a code page, built on first use; null when there is no
// such code page.
const CodePage* FindCodePage(UINT codePage) {
  static std::mutex lock;
  static std::map<UINT, std::unique_ptr<CodePage>> pages;
  const std::lock_guard<std::mutex> guard(lock);
  const auto found = pages.find(codePage);
  if (found != pages.end()) return found->second.get();
  std::unique_ptr<CodePage> page;
  bool unicodeOnly = false;
  for (const UINT u : kUnicodeOnly) unicodeOnly = unicodeOnly || u == codePage;
  std::unique_ptr<IcuConverter> cnv = unicodeOnly ? nullptr : OpenConverter(codePage);
  if (cnv != nullptr) {
    page = std::make_unique<CodePage>();
    const DoubleByteLayout* layout = nullptr;
    for (const DoubleByteLayout& l : kDoubleByte) {
      if (l.codePage == codePage) layout = &l;
    }
    if (layout != nullptr || ucnv_getMaxCharSize(cnv->handle) == 1) {
      page->table = std::make_unique<TableCodePage>(codePage, cnv->handle, layout);
    } else {
      page->stream = std::make_unique<StreamCodePage>(std::move(cnv));
    }
  }
  return pages.emplace(codePage, std::move(page)).first->second.get();
}

}  // namespace

WString MultiByteToWide(UINT codePage, std::string_view bytes) {
  codePage = ResolveCodePage(codePage);
  if (codePage == kUtf8) return DecodeUtf8(bytes);
  if (codePage == kSymbol) return SymbolToWide(bytes);
  const CodePage* page = FindCodePage(codePage);
  if (page == nullptr) return {};
  if (page->table != nullptr) return page->table->ToWide(bytes);
  const std::lock_guard<std::mutex> guard(page->streamLock);
  return page->stream->ToWide(bytes);
}

std::string WideToMultiByte(UINT codePage, WStringView units) {
  codePage = ResolveCodePage(codePage);
  if (codePage == kUtf8) return EncodeUtf8(units);
  if (codePage == kSymbol) return SymbolToBytes(units);
  const CodePage* page = FindCodePage(codePage);
  if (page == nullptr) return {};
  if (page->table != nullptr) return page->table->ToBytes(units);
  const std::lock_guard<std::mutex> guard(page->streamLock);
  return page->stream->ToBytes(units);
}

}  // namespace codepage

}  // namespace cadtools

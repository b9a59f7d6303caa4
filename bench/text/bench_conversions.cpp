// WideCharToMB and MB2WideChar beside glibc iconv (UTF-16LE <-> UTF-8, the
// converter opened once, outside the loop) and ICU's u_strToUTF8 /
// u_strFromUTF8, on 1 MiB of text: mostly ASCII (settings, tags, paths
// with a few accented letters), and mixed European and CJK (translated
// drawing texts). Ours pays for what the host's calls pay: the CString
// argument by value, the new[] buffer it hands back, and the strlen of a
// NUL-terminated input; the peers write into buffers allocated up front.
#include "common/rng.h"
#include "common/subjects.h"

#include <cadtools/text_tools.h>

#include <benchmark/benchmark.h>

#include <iconv.h>
#include <unicode/ustring.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kTextBytes = 1U << 20;

// A text in both forms; utf8 is NUL-terminated for MB2WideChar.
struct Text {
  std::string utf8;
  std::u16string utf16;
  CString wide;
};

void AppendUtf8(std::string& out, char32_t c) {
  const auto byte = [&out](unsigned b) { out.push_back(static_cast<char>(static_cast<unsigned char>(b))); };
  if (c < 0x80) {
    byte(static_cast<unsigned>(c));
  } else if (c < 0x800) {
    byte(0xC0U | static_cast<unsigned>(c >> 6));
    byte(0x80U | static_cast<unsigned>(c & 0x3F));
  } else {
    byte(0xE0U | static_cast<unsigned>(c >> 12));
    byte(0x80U | static_cast<unsigned>((c >> 6) & 0x3F));
    byte(0x80U | static_cast<unsigned>(c & 0x3F));
  }
}

// Words drawn at random until the UTF-8 form holds 1 MiB: `percent` of
// them from `rarer`, the rest from `plain`.
Text MakeText(std::uint64_t seed, const std::vector<std::u32string>& plain, const std::vector<std::u32string>& rarer,
              int percent) {
  Rng rng(seed);
  Text text;
  std::u32string chars;
  std::size_t bytes = 0;
  while (bytes < kTextBytes) {
    const auto& pool = rng.Percent() < percent ? rarer : plain;
    const std::u32string& word = pool[static_cast<std::size_t>(rng.Below(static_cast<int>(pool.size())))];
    std::string encoded;
    for (const char32_t c : word) AppendUtf8(encoded, c);
    encoded += rng.Below(12) == 0 ? "\r\n" : " ";
    if (bytes + encoded.size() > kTextBytes) break;
    bytes += encoded.size();
    text.utf8 += encoded;
    chars += word;
    chars += encoded.size() > 1 && encoded.back() == '\n' ? U"\r\n" : U" ";
  }
  for (const char32_t c : chars) text.utf16.push_back(static_cast<char16_t>(c));  // all in the BMP
  text.wide = CString(reinterpret_cast<const WCHAR*>(text.utf16.c_str()), static_cast<int>(text.utf16.size()));
  return text;
}

const Text& AsciiHeavy() {
  static const Text text = MakeText(
      11,
      {U"Settings", U"Motor", U"-K10", U"PLC.Rack1.Slot04", U"C:\\Projects\\Plant\\Drawings", U"=A1+B2-X3",
       U"DefaultFontName", U"Layer", U"0.25", U"Terminal", U"cable", U"W1234", U"page", U"sheet", U"of"},
      {U"Schütz", U"café", U"Größe", U"Überlast", U"résumé"}, 3);
  return text;
}

const Text& MixedCjk() {
  static const Text text = MakeText(
      12, {U"Motor", U"Schütz", U"Überlastrelais", U"Έλεγχος", U"Кабель", U"Zöłć", U"-K10", U"Ściana", U"Ωmega"},
      {U"電動機", U"接触器", U"端子台", U"配線図", U"モーター", U"ケーブル", U"제어반", U"电缆"}, 45);
  return text;
}

void Label(benchmark::State& state, const Text& text) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(text.utf8.size()));
  state.SetLabel(std::to_string(text.utf8.size()) + " UTF-8 bytes, " + std::to_string(text.utf16.size()) + " units");
}

// ---- UTF-16 to UTF-8 ----------------------------------------------------

void OursWideCharToMB(benchmark::State& state, const Text& text) {
  for ([[maybe_unused]] auto _ : state) {
    const std::unique_ptr<char[]> bytes(CTextTools::WideCharToMB(text.wide));
    benchmark::DoNotOptimize(bytes.get());
  }
  Label(state, text);
}

class Iconv {
 public:
  Iconv(const char* to, const char* from) : handle_(iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("iconv_open failed");
  }
  Iconv(const Iconv&) = delete;
  Iconv& operator=(const Iconv&) = delete;
  ~Iconv() { iconv_close(handle_); }

  // All of in into out; the bytes written.
  std::size_t Convert(const char* in, std::size_t inBytes, std::vector<char>& out) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    char* source = const_cast<char*>(in);  // iconv's signature, it does not write
    char* target = out.data();
    std::size_t left = out.size();
    if (iconv(handle_, &source, &inBytes, &target, &left) == static_cast<std::size_t>(-1)) {
      throw std::runtime_error("iconv failed");
    }
    return out.size() - left;
  }

 private:
  iconv_t handle_;
};

void PeerIconvToUtf8(benchmark::State& state, const Text& text) {
  Iconv converter("UTF-8", "UTF-16LE");
  std::vector<char> out(text.utf16.size() * 3 + 1);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(converter.Convert(reinterpret_cast<const char*>(text.utf16.data()),
                                               text.utf16.size() * 2, out));
  }
  Label(state, text);
}

void PeerIcuToUtf8(benchmark::State& state, const Text& text) {
  std::vector<char> out(text.utf16.size() * 3 + 1);
  for ([[maybe_unused]] auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &length, text.utf16.data(),
                static_cast<int32_t>(text.utf16.size()), &status);
    if (U_FAILURE(status)) state.SkipWithError("u_strToUTF8 failed");
    benchmark::DoNotOptimize(length);
  }
  Label(state, text);
}

// ---- UTF-8 to UTF-16 ----------------------------------------------------

void OursMB2WideChar(benchmark::State& state, const Text& text) {
  for ([[maybe_unused]] auto _ : state) {
    const CString wide = CTextTools::MB2WideChar(text.utf8.c_str());
    benchmark::DoNotOptimize(wide.GetString());
  }
  Label(state, text);
}

void PeerIconvFromUtf8(benchmark::State& state, const Text& text) {
  Iconv converter("UTF-16LE", "UTF-8");
  std::vector<char> out(text.utf8.size() * 2 + 2);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(converter.Convert(text.utf8.data(), text.utf8.size(), out));
  }
  Label(state, text);
}

void PeerIcuFromUtf8(benchmark::State& state, const Text& text) {
  std::vector<UChar> out(text.utf8.size() + 1);
  for ([[maybe_unused]] auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &length, text.utf8.data(),
                  static_cast<int32_t>(text.utf8.size()), &status);
    if (U_FAILURE(status)) state.SkipWithError("u_strFromUTF8 failed");
    benchmark::DoNotOptimize(length);
  }
  Label(state, text);
}

template <void (*Run)(benchmark::State&, const Text&), const Text& (*Data)()>
void On(benchmark::State& state) {
  Run(state, Data());
}

}  // namespace

void RegisterConversionPairs(PairRegistry& registry) {
  registry.Add("WideCharToMB, ASCII-heavy 1 MiB", "ours/WideCharToMB_ascii", On<OursWideCharToMB, AsciiHeavy>,
               "peer/iconv_utf16le_to_utf8_ascii", On<PeerIconvToUtf8, AsciiHeavy>);
  registry.Add("WideCharToMB, ASCII-heavy 1 MiB", "ours/WideCharToMB_ascii", On<OursWideCharToMB, AsciiHeavy>,
               "peer/u_strToUTF8_ascii", On<PeerIcuToUtf8, AsciiHeavy>);
  registry.Add("WideCharToMB, European/CJK 1 MiB", "ours/WideCharToMB_cjk", On<OursWideCharToMB, MixedCjk>,
               "peer/iconv_utf16le_to_utf8_cjk", On<PeerIconvToUtf8, MixedCjk>);
  registry.Add("WideCharToMB, European/CJK 1 MiB", "ours/WideCharToMB_cjk", On<OursWideCharToMB, MixedCjk>,
               "peer/u_strToUTF8_cjk", On<PeerIcuToUtf8, MixedCjk>);
  registry.Add("MB2WideChar, ASCII-heavy 1 MiB", "ours/MB2WideChar_ascii", On<OursMB2WideChar, AsciiHeavy>,
               "peer/iconv_utf8_to_utf16le_ascii", On<PeerIconvFromUtf8, AsciiHeavy>);
  registry.Add("MB2WideChar, ASCII-heavy 1 MiB", "ours/MB2WideChar_ascii", On<OursMB2WideChar, AsciiHeavy>,
               "peer/u_strFromUTF8_ascii", On<PeerIcuFromUtf8, AsciiHeavy>);
  registry.Add("MB2WideChar, European/CJK 1 MiB", "ours/MB2WideChar_cjk", On<OursMB2WideChar, MixedCjk>,
               "peer/iconv_utf8_to_utf16le_cjk", On<PeerIconvFromUtf8, MixedCjk>);
  registry.Add("MB2WideChar, European/CJK 1 MiB", "ours/MB2WideChar_cjk", On<OursMB2WideChar, MixedCjk>,
               "peer/u_strFromUTF8_cjk", On<PeerIcuFromUtf8, MixedCjk>);
}

}  // namespace bench

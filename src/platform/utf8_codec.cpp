// Our UTF-8 codec, byte for byte what Windows produces for broken input
// too, so that texts stored by the host read the same on every target.
#include "platform/utf8_codec.h"

#include <cstddef>
#include <cstdint>

namespace cadtools::codepage {

namespace {

constexpr WCHAR kReplacement = 0xFFFD;

constexpr bool IsContinuation(std::uint8_t b) noexcept { return (b & 0xC0U) == 0x80U; }

// What a lead byte promises: the sequence length, the bits it carries and
// the range its second byte must lie in. length 0: not a lead byte.
struct Lead {
  std::size_t length;
  std::uint32_t bits;
  std::uint8_t secondLow;
  std::uint8_t secondHigh;
};

constexpr Lead ReadLead(std::uint8_t b) noexcept {
  if (b >= 0xC2 && b <= 0xDF) return {2, b & 0x1FU, 0x80, 0xBF};
  if (b == 0xE0) return {3, 0, 0xA0, 0xBF};                 // no overlong forms
  if (b == 0xED) return {3, 0x0D, 0x80, 0x9F};              // no surrogates
  if (b >= 0xE1 && b <= 0xEF) return {3, b & 0x0FU, 0x80, 0xBF};
  if (b == 0xF0) return {4, 0, 0x90, 0xBF};                 // no overlong forms
  if (b >= 0xF1 && b <= 0xF3) return {4, b & 0x07U, 0x80, 0xBF};
  if (b == 0xF4) return {4, 0x04, 0x80, 0x8F};              // up to U+10FFFF
  return {0, 0, 0, 0};
}

void AppendCodePoint(WString& out, std::uint32_t cp) {
  if (cp < 0x10000) {
    out.push_back(static_cast<WCHAR>(cp));
    return;
  }
  cp -= 0x10000;
  out.push_back(static_cast<WCHAR>(0xD800U + (cp >> 10)));
  out.push_back(static_cast<WCHAR>(0xDC00U + (cp & 0x3FFU)));
}

void AppendUtf8(std::string& out, std::uint32_t cp) {
  const auto byte = [&out](std::uint32_t b) { out.push_back(static_cast<char>(static_cast<std::uint8_t>(b))); };
  if (cp < 0x80) {
    byte(cp);
  } else if (cp < 0x800) {
    byte(0xC0U | (cp >> 6));
    byte(0x80U | (cp & 0x3FU));
  } else if (cp < 0x10000) {
    byte(0xE0U | (cp >> 12));
    byte(0x80U | ((cp >> 6) & 0x3FU));
    byte(0x80U | (cp & 0x3FU));
  } else {
    byte(0xF0U | (cp >> 18));
    byte(0x80U | ((cp >> 12) & 0x3FU));
    byte(0x80U | ((cp >> 6) & 0x3FU));
    byte(0x80U | (cp & 0x3FU));
  }
}

}  // namespace

WString DecodeUtf8(std::string_view bytes) {
  WString out;
  out.reserve(bytes.size());
  const auto at = [bytes](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::uint8_t b = at(i);
    if (b < 0x80) {
      out.push_back(b);
      ++i;
      continue;
    }
    const Lead lead = ReadLead(b);
    if (lead.length == 0) {
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    if (bytes.size() - i < lead.length) {  // cut off: the rest is one replacement
      out.push_back(kReplacement);
      break;
    }
    const std::uint8_t second = at(i + 1);
    if (!IsContinuation(second)) {
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    if (second < lead.secondLow || second > lead.secondHigh) {
      out.push_back(kReplacement);
      i += 2;
      continue;
    }
    std::uint32_t cp = (lead.bits << 6) | (second & 0x3FU);
    std::size_t read = 2;
    while (read < lead.length && IsContinuation(at(i + read))) {
      cp = (cp << 6) | (at(i + read) & 0x3FU);
      ++read;
    }
    if (read < lead.length) {
      out.push_back(kReplacement);
    } else {
      AppendCodePoint(out, cp);
    }
    i += read;
  }
  return out;
}

std::string EncodeUtf8(WStringView units) {
  std::string out;
  out.reserve(units.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    const std::uint32_t u = units[i];
    if (u >= 0xD800 && u <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF) {
      AppendUtf8(out, 0x10000U + ((u - 0xD800U) << 10) + (units[i + 1] - 0xDC00U));
      ++i;
    } else if (u >= 0xD800 && u <= 0xDFFF) {
      AppendUtf8(out, kReplacement);
    } else {
      AppendUtf8(out, u);
    }
  }
  return out;
}

}  // namespace cadtools::codepage

#include "text/device_tags.h"

#include "common/rng.h"

#include <cctype>

namespace bench {
namespace {

std::string Number(Rng& rng, int lo, int hi) { return std::to_string(lo + rng.Below(hi - lo + 1)); }

// At least `width` digits, with leading zeros.
std::string Padded(Rng& rng, int lo, int hi, std::size_t width) {
  const std::string n = Number(rng, lo, hi);
  return std::string(n.size() < width ? width - n.size() : 0, '0') + n;
}

char Letter(Rng& rng, const char* letters) {
  return letters[rng.Below(static_cast<int>(std::char_traits<char>::length(letters)))];
}

std::string MakeTag(Rng& rng) {
  const int kind = rng.Percent();
  std::string tag;
  if (kind < 30) {
    tag = std::string("-") + Letter(rng, "KMFQSXHAB") + Number(rng, 1, 150);
    if (rng.Percent() < 30) tag += "." + Number(rng, 1, 9);
  } else if (kind < 50) {
    tag = "X" + Number(rng, 1, 40) + ":" + Number(rng, 1, 60);
  } else if (kind < 60) {
    tag = "PLC.Rack" + Number(rng, 1, 4) + ".Slot" + Padded(rng, 1, 16, 2);
    if (rng.Coin()) tag += ".Ch" + Number(rng, 0, 31);
  } else if (kind < 80) {
    tag = std::string("=") + Letter(rng, "ABCDE") + Number(rng, 1, 9) + "+" + Letter(rng, "ABCDEFG") +
          Number(rng, 1, 20) + "-" + Letter(rng, "KMXQF") + Number(rng, 1, 99);
    if (rng.Coin()) tag += ":" + Number(rng, 1, 24);
  } else if (kind < 90) {
    static const char* const kWords[] = {"Motor", "Pump", "Fan", "L\xC3\xBC" "fter", "Heizung S\xC3\xBC" "d",
                                         "Valve"};
    tag = std::string(kWords[rng.Below(6)]) + " " + Number(rng, 1, 30);
  } else {
    tag = rng.Coin() ? std::string("-") + Letter(rng, "KMF") + Padded(rng, 1, 120, 3)
                     : "X" + Padded(rng, 1, 40, 2) + ":" + Padded(rng, 1, 60, 2);
  }
  if (rng.Below(6) == 0) {
    for (char& c : tag) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return tag;
}

}  // namespace

TagList MakeDeviceTags(std::size_t count) {
  Rng rng(0x7a6e5d4c3b2a1908ULL);
  TagList list;
  list.utf8.reserve(count);
  list.utf16.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    list.utf8.push_back(MakeTag(rng));
    list.utf16.push_back(cadtools::FromUtf8(list.utf8.back()));
  }
  // Views only once the vectors no longer move their strings.
  for (std::size_t i = 0; i < count; ++i) {
    list.narrow.push_back(list.utf8[i].c_str());
    list.wide.push_back(list.utf16[i].GetString());
  }
  return list;
}

}  // namespace bench

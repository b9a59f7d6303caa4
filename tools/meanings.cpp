#include "meanings.h"

#include <array>

namespace cadtools::cli {
namespace {

// Codes outside a table come from a library that has grown a case this tool
// does not know yet; say so instead of guessing.
constexpr std::string_view kUnknown = "unknown code";

template <std::size_t N>
std::string_view Lookup(const std::array<std::string_view, N>& table, int code) {
  if (code < 0 || static_cast<std::size_t>(code) >= N) return kUnknown;
  return table[static_cast<std::size_t>(code)];
}

}  // namespace

std::string_view IntersectionMeaning(int code) {
  static constexpr std::array<std::string_view, 6> kTable = {
      "parallel lines",
      "collinear lines",
      "crossing within both segments",
      "crossing within the first segment only",
      "crossing within the second segment only",
      "crossing outside both segments",
  };
  return Lookup(kTable, code);
}

std::string_view OnEntityMeaning(int code) {
  static constexpr std::array<std::string_view, 7> kTable = {
      kUnknown,
      "at the start point",
      "at the end point",
      "on the segment",
      "within the segment's extent but off it",
      "on the segment's extension",
      "elsewhere",
  };
  return Lookup(kTable, code);
}

std::string_view CirclesMeaning(int count) {
  static constexpr std::array<std::string_view, 3> kTable = {
      "no crossing",
      "touching from outside",
      "two crossings",
  };
  return Lookup(kTable, count);
}

std::string_view ZoneName(int zone) {
  static constexpr std::array<std::string_view, 9> kTable = {
      "LeftBottom", "Left", "LeftTop", "Top", "RightTop", "Right", "RightBottom", "Bottom", "Inside",
  };
  static_assert(WRect::LeftBottom == 0 && WRect::Inside == 8);
  if (zone < 0 || zone > 8) return "?";
  return kTable[static_cast<std::size_t>(zone)];
}

}  // namespace cadtools::cli

// WPt: the double-precision drawing point of the whole library.
//
//   WPt a(1, 2), b(0.5, 0.5);
//   a + b;                               // (1.5, 2.5)
//   a - b;                               // (0.5, 1.5)
//   WPt(0.1 + 0.2, 0) == WPt(0.3, 0);    // false: == is exact
//
// Two doubles in declared order and nothing else: the host passes points by
// value across the library's interface and relies on that layout. Tolerant
// comparison is CMathTools::equal_2.
#pragma once

#include <type_traits>

struct WPt {
  double x;
  double y;

  constexpr WPt() noexcept : x(0.0), y(0.0) {}
  constexpr WPt(double px, double py) noexcept : x(px), y(py) {}

  constexpr WPt operator+(const WPt& other) const noexcept { return {x + other.x, y + other.y}; }
  constexpr WPt operator-(const WPt& other) const noexcept { return {x - other.x, y - other.y}; }

  // Exact: a NaN coordinate makes two points unequal.
  constexpr bool operator==(const WPt& other) const noexcept { return x == other.x && y == other.y; }
  constexpr bool operator!=(const WPt& other) const noexcept { return !(*this == other); }
};

static_assert(std::is_trivially_copyable_v<WPt> && std::is_standard_layout_v<WPt>);
static_assert(sizeof(WPt) == 2 * sizeof(double));

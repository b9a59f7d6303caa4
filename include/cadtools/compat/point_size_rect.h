// CPoint, CSize and CRect: the framework's integer point, extent and
// rectangle, thin value wrappers over POINT, SIZE and RECT.
//
//   CPoint p(3, 4);           // p.x == 3, p.y == 4
//   CRect r(0, 0, 10, 5);     // r.Width() == 10, r.Height() == 5
//   r.PtInRect(CPoint(9, 4))  // TRUE; the right and bottom edges are outside
//
// Arithmetic is in LONG (32-bit) as on Windows; it wraps instead of
// overflowing, so no input is undefined.
#pragma once

#include <cadtools/compat/win_types.h>

#include <cstdint>
#include <utility>

namespace cadtools::detail {
// 32-bit two's-complement arithmetic as the host's integer types do it.
constexpr LONG WrapAdd(LONG a, LONG b) noexcept {
  return static_cast<LONG>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr LONG WrapSub(LONG a, LONG b) noexcept {
  return static_cast<LONG>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
}  // namespace cadtools::detail

class CSize : public SIZE {
 public:
  constexpr CSize() noexcept : SIZE{0, 0} {}
  constexpr CSize(int initCX, int initCY) noexcept : SIZE{initCX, initCY} {}
  constexpr CSize(SIZE s) noexcept : SIZE{s} {}  // NOLINT: implicit as in MFC

  constexpr bool operator==(const SIZE& o) const noexcept { return cx == o.cx && cy == o.cy; }
  constexpr bool operator!=(const SIZE& o) const noexcept { return !(*this == o); }
};

class CPoint : public POINT {
 public:
  constexpr CPoint() noexcept : POINT{0, 0} {}
  constexpr CPoint(int initX, int initY) noexcept : POINT{initX, initY} {}
  constexpr CPoint(POINT p) noexcept : POINT{p} {}  // NOLINT: implicit as in MFC

  constexpr void Offset(int dx, int dy) noexcept {
    x = cadtools::detail::WrapAdd(x, dx);
    y = cadtools::detail::WrapAdd(y, dy);
  }
  constexpr bool operator==(const POINT& o) const noexcept { return x == o.x && y == o.y; }
  constexpr bool operator!=(const POINT& o) const noexcept { return !(*this == o); }
  constexpr CPoint operator+(const SIZE& s) const noexcept {
    return {cadtools::detail::WrapAdd(x, s.cx), cadtools::detail::WrapAdd(y, s.cy)};
  }
  constexpr CPoint operator-(const SIZE& s) const noexcept {
    return {cadtools::detail::WrapSub(x, s.cx), cadtools::detail::WrapSub(y, s.cy)};
  }
  constexpr CSize operator-(const POINT& p) const noexcept {
    return {cadtools::detail::WrapSub(x, p.x), cadtools::detail::WrapSub(y, p.y)};
  }
};

class CRect : public RECT {
 public:
  constexpr CRect() noexcept : RECT{0, 0, 0, 0} {}
  constexpr CRect(int l, int t, int r, int b) noexcept : RECT{l, t, r, b} {}
  constexpr CRect(const RECT& r) noexcept : RECT{r} {}  // NOLINT: implicit as in MFC
  constexpr CRect(POINT topLeft, SIZE size) noexcept
      : RECT{topLeft.x, topLeft.y, cadtools::detail::WrapAdd(topLeft.x, size.cx),
             cadtools::detail::WrapAdd(topLeft.y, size.cy)} {}

  constexpr int Width() const noexcept { return cadtools::detail::WrapSub(right, left); }
  constexpr int Height() const noexcept { return cadtools::detail::WrapSub(bottom, top); }
  constexpr CSize Size() const noexcept { return {Width(), Height()}; }
  constexpr CPoint TopLeft() const noexcept { return {left, top}; }
  constexpr CPoint BottomRight() const noexcept { return {right, bottom}; }
  constexpr CPoint CenterPoint() const noexcept {
    return {static_cast<LONG>((static_cast<std::int64_t>(left) + right) / 2),
            static_cast<LONG>((static_cast<std::int64_t>(top) + bottom) / 2)};
  }
  // Empty when it has no area: right <= left or bottom <= top.
  constexpr BOOL IsRectEmpty() const noexcept { return right <= left || bottom <= top; }
  constexpr BOOL IsRectNull() const noexcept { return left == 0 && top == 0 && right == 0 && bottom == 0; }
  // Half-open as in Win32: the left and top edges are inside, right and bottom are not.
  constexpr BOOL PtInRect(POINT p) const noexcept {
    return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
  }
  constexpr void SetRect(int l, int t, int r, int b) noexcept { *this = CRect(l, t, r, b); }
  constexpr void OffsetRect(int dx, int dy) noexcept {
    left = cadtools::detail::WrapAdd(left, dx);
    right = cadtools::detail::WrapAdd(right, dx);
    top = cadtools::detail::WrapAdd(top, dy);
    bottom = cadtools::detail::WrapAdd(bottom, dy);
  }
  constexpr void NormalizeRect() noexcept {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
  }
  constexpr bool operator==(const RECT& o) const noexcept {
    return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
  }
  constexpr bool operator!=(const RECT& o) const noexcept { return !(*this == o); }
};

// WRect members: normalisation, unions, intersections and containment.
#include <cadtools/geometry/wrect.h>

#include <algorithm>
#include <cmath>
#include <utility>

void WRect::NormalizeRect() noexcept {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
}

WPt WRect::GetCenterWPt() noexcept {
  NormalizeRect();
  return {right - (right - left) * 0.5, bottom - (bottom - top) * 0.5};
}

void WRect::Inflate(float d) noexcept {
  const double wide = static_cast<double>(d);
  left -= wide;
  top -= wide;
  right += wide;
  bottom += wide;
}

void WRect::Deflate(float d) noexcept {
  const double wide = static_cast<double>(d);
  left += wide;
  top += wide;
  right -= wide;
  bottom -= wide;
}

void WRect::Location(double x, double y) noexcept {
  const double width = right - left;
  const double height = bottom - top;
  left = x;
  top = y;
  right = x + width;
  bottom = y + height;
}

int WRect::IsEmpty() const noexcept { return left == 0.0 && top == 0.0 && right == 0.0 && bottom == 0.0; }

void WRect::Invalidate() noexcept { *this = WRect(kInvalidLow, kInvalidLow, kInvalidHigh, kInvalidHigh); }

int WRect::IsInvalid() const noexcept {
  return left == kInvalidLow && top == kInvalidLow && right == kInvalidHigh && bottom == kInvalidHigh;
}

int WRect::IsValid() const noexcept { return right >= left && bottom >= top; }

WRect WRect::Union(WRect a, WRect b) noexcept {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

WRect& WRect::operator+=(const WRect& other) noexcept { return *this = Union(*this, other); }

WRect& WRect::operator|=(const WRect& other) noexcept { return *this = Union(*this, other); }

WRect& WRect::operator&=(const WRect& other) noexcept {
  left = std::max(left, other.left);
  top = std::max(top, other.top);
  right = std::max(std::min(right, other.right), left);
  bottom = std::max(std::min(bottom, other.bottom), top);
  return *this;
}

WRect WRect::Section(WRect other) const noexcept {
  const WRect overlap(std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                      std::min(bottom, other.bottom));
  if (overlap.top <= overlap.bottom && overlap.left <= overlap.right) return overlap;
  return {};
}

WRect WRect::TranslateRect(WRect r, WPt first, WPt second) noexcept {
  const double dx = first.x - second.x;
  const double dy = first.y - second.y;
  return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

int WRect::operator==(const WRect& other) const noexcept {
  return std::fabs(left - other.left) < kTolerance && std::fabs(top - other.top) < kTolerance &&
         std::fabs(right - other.right) < kTolerance && std::fabs(bottom - other.bottom) < kTolerance;
}

int WRect::RectInRect(const WRect& other, int tolerant) const noexcept {
  return PtInRect(other.left, other.top, tolerant) && PtInRect(other.left, other.bottom, tolerant) &&
         PtInRect(other.right, other.top, tolerant) && PtInRect(other.right, other.bottom, tolerant);
}

int WRect::RectOutsideRect(const WRect& other) const noexcept {
  return !(PtInRect(other.left, other.top, 0) || PtInRect(other.left, other.bottom, 0) ||
           PtInRect(other.right, other.top, 0) || PtInRect(other.right, other.bottom, 0));
}

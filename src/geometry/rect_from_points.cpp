// Rectangles built from picked points, and where a point lies around one.
#include <cadtools/geometry/geometry_tools.h>

#include <algorithm>
#include <utility>

using cadtools::GeometryTools;

WRect GeometryTools::CreateRectFrom2Points(WPt a, WPt b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

WRect GeometryTools::NormalizeSelectedRect(WPt a, WPt b) { return CreateRectFrom2Points(a, b); }

WRect GeometryTools::NormalizeSelectedGDIRect(WPt a, WPt b) {
  // A vertical pick from top to bottom comes back in GDI's origin-and-extent
  // form; the host's selection code expects exactly that.
  if (a.x == b.x && a.y <= b.y) return {a.x, a.y, 0.0, b.y - a.y};
  return CreateRectFrom2Points(a, b);
}

WRect GeometryTools::ScaleRect(WPt centre, WRect r, double sx, double sy) {
  const WPt topLeft = ScalePoint(centre, WPt(r.left, r.top), sx, sy);
  const WPt bottomRight = ScalePoint(centre, WPt(r.right, r.bottom), sx, sy);
  WRect scaled(topLeft, bottomRight);
  scaled.NormalizeRect();
  return scaled;
}

bool GeometryTools::IsPointOutsideRect(WPt pt, WPt c1, WPt c2) {
  const WRect r = CreateRectFrom2Points(c1, c2);
  return !(r.left < pt.x && pt.x < r.right && r.top < pt.y && pt.y < r.bottom);
}

int GeometryTools::FindSideRectNear(WPt pt, WPt c1, WPt c2) {
  const double midX = (c2.x + c1.x) * 0.5;
  const double midY = (c2.y + c1.y) * 0.5;
  if (pt.x < c1.x) return pt.y > midY ? 8 : 7;
  if (pt.x < c2.x) {
    if (pt.y > c1.y) return pt.x < midX ? 1 : 2;
    if (pt.y < c2.y) return pt.x < midX ? 6 : 5;
    return 0;
  }
  return pt.y > midY ? 3 : 4;
}

int GeometryTools::FindSideByDiagOnRect(WPt pt, WRect r) {
  const int s1 = GetSide(r.left, r.bottom, r.right, r.top, pt.x, pt.y);
  const int s2 = GetSide(r.left, r.top, r.right, r.bottom, pt.x, pt.y);
  if (s1 != 1) return s2 == 1 ? 1 : 2;
  return s2 == 1 ? 3 : 4;
}

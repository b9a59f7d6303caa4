#include "geometry/inputs.h"

#include "common/rng.h"

#include <cmath>
#include <numbers>

namespace bench {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

WPt Lerp(WPt a, WPt b, double t) { return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)}; }

// Unit normal of a -> b.
WPt Normal(WPt a, WPt b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double len = std::hypot(dx, dy);
  return {-dy / len, dx / len};
}

// Midpoint anywhere in the drawing, length 10 to 400; one in four is
// horizontal or vertical, as so many lines of a drawing are.
Seg RandomSegment(Rng& rng) {
  const WPt m{rng.Uniform(0, 1000), rng.Uniform(0, 1000)};
  const double half = rng.Uniform(10, 400) / 2;
  double dx = 0;
  double dy = 0;
  const int kind = rng.Percent();
  if (kind < 13) {
    dx = half;
  } else if (kind < 25) {
    dy = half;
  } else {
    const double angle = rng.Uniform(0, kTwoPi);
    dx = half * std::cos(angle);
    dy = half * std::sin(angle);
  }
  if (rng.Coin()) {
    dx = -dx;
    dy = -dy;
  }
  return {{m.x - dx, m.y - dy}, {m.x + dx, m.y + dy}};
}

// left and top in 0..800, width and height in minSize..200.
WRect RandomRect(Rng& rng, double minSize) {
  const double l = rng.Uniform(0, 800);
  const double t = rng.Uniform(0, 800);
  return {l, t, l + rng.Uniform(minSize, 200), t + rng.Uniform(minSize, 200)};
}

template <class T, class Make>
std::vector<T> Generate(std::uint64_t seed, Make make) {
  Rng rng(seed);
  std::vector<T> cases;
  cases.reserve(kCases);
  for (std::size_t i = 0; i < kCases; ++i) cases.push_back(make(rng));
  return cases;
}

}  // namespace

const std::vector<SegPair>& SegmentPairs() {
  static const std::vector<SegPair> cases = Generate<SegPair>(0x5e65e6, [](Rng& rng) {
    const Seg s1 = RandomSegment(rng);
    const int kind = rng.Percent();
    if (kind < 5) {  // parallel, offset sideways
      const WPt n = Normal(s1.a, s1.b);
      const double off = rng.Uniform(1, 50);
      const double shift = rng.Uniform(-100, 100);
      const WPt d = Lerp(s1.a, s1.b, shift / 400) - s1.a;
      return SegPair{s1, {{s1.a.x + n.x * off + d.x, s1.a.y + n.y * off + d.y},
                          {s1.b.x + n.x * off + d.x, s1.b.y + n.y * off + d.y}}};
    }
    if (kind < 10) {  // collinear, overlapping or not
      return SegPair{s1, {Lerp(s1.a, s1.b, rng.Uniform(-1, 1)), Lerp(s1.a, s1.b, rng.Uniform(0.5, 2))}};
    }
    // A second segment whose midpoint lies near the first one's.
    Seg s2 = RandomSegment(rng);
    const WPt m1 = Lerp(s1.a, s1.b, 0.5);
    const WPt m2 = Lerp(s2.a, s2.b, 0.5);
    const WPt to{m1.x - m2.x + rng.Uniform(-120, 120), m1.y - m2.y + rng.Uniform(-120, 120)};
    s2.a = s2.a + to;
    s2.b = s2.b + to;
    return SegPair{s1, s2};
  });
  return cases;
}

const std::vector<PointSeg>& PointsNearSegments() {
  static const std::vector<PointSeg> cases = Generate<PointSeg>(0x0e7717, [](Rng& rng) {
    const Seg s = RandomSegment(rng);
    const int kind = rng.Percent();
    WPt p;
    if (kind < 10) {
      p = s.a;
    } else if (kind < 15) {
      p = {s.a.x + rng.Uniform(-0.0004, 0.0004), s.a.y + rng.Uniform(-0.0004, 0.0004)};
    } else if (kind < 25) {
      p = s.b;
    } else if (kind < 55) {
      p = Lerp(s.a, s.b, rng.Uniform(0.05, 0.95));
    } else if (kind < 70) {  // within the extent, beside the segment
      const WPt n = Normal(s.a, s.b);
      const double off = rng.Uniform(0.01, 50) * (rng.Coin() ? 1 : -1);
      const WPt q = Lerp(s.a, s.b, rng.Uniform(0, 1));
      p = {q.x + n.x * off, q.y + n.y * off};
    } else if (kind < 80) {  // on the extension
      p = Lerp(s.a, s.b, rng.Coin() ? rng.Uniform(-1, -0.05) : rng.Uniform(1.05, 2));
    } else {
      p = {rng.Uniform(0, 1000), rng.Uniform(0, 1000)};
    }
    return PointSeg{p, s};
  });
  return cases;
}

const std::vector<PointSeg>& PointsForLineDistance() {
  static const std::vector<PointSeg> cases = Generate<PointSeg>(0xd157, [](Rng& rng) {
    const Seg s = RandomSegment(rng);
    const WPt n = Normal(s.a, s.b);
    const WPt q = Lerp(s.a, s.b, rng.Uniform(-0.25, 1.25));
    const double off = rng.Uniform(-200, 200);
    return PointSeg{{q.x + n.x * off, q.y + n.y * off}, s};
  });
  return cases;
}

const std::vector<PointRect>& PointsAroundRects() {
  static const std::vector<PointRect> cases = Generate<PointRect>(0x2ec7, [](Rng& rng) {
    const WRect r = RandomRect(rng, 1);
    const int kind = rng.Percent();
    WPt p;
    if (kind < 40) {
      p = {rng.Uniform(r.left, r.right), rng.Uniform(r.top, r.bottom)};
    } else if (kind < 80) {  // outside, within 100 of the rectangle
      do {
        p = {rng.Uniform(r.left - 100, r.right + 100), rng.Uniform(r.top - 100, r.bottom + 100)};
      } while (p.x >= r.left && p.x <= r.right && p.y >= r.top && p.y <= r.bottom);
    } else if (kind < 90) {  // exactly on the line of an edge
      p = {rng.Uniform(r.left - 100, r.right + 100), rng.Uniform(r.top - 100, r.bottom + 100)};
      switch (rng.Percent() % 4) {
        case 0: p.x = r.left; break;
        case 1: p.x = r.right; break;
        case 2: p.y = r.top; break;
        default: p.y = r.bottom; break;
      }
    } else {
      p = {rng.Uniform(0, 1000), rng.Uniform(0, 1000)};
    }
    return PointRect{p, r};
  });
  return cases;
}

const std::vector<RectPair>& RectPairs() {
  static const std::vector<RectPair> cases = Generate<RectPair>(0x2ec72ec7, [](Rng& rng) {
    const WRect a = RandomRect(rng, 0);
    const int kind = rng.Percent();
    const double w = rng.Uniform(0, 200);
    const double h = rng.Uniform(0, 200);
    WRect b;
    if (kind < 80) {  // near a: centres at most 150 apart on each axis
      const double cx = (a.left + a.right) / 2 + rng.Uniform(-150, 150);
      const double cy = (a.top + a.bottom) / 2 + rng.Uniform(-150, 150);
      b = {cx - w / 2, cy - h / 2, cx + w / 2, cy + h / 2};
    } else {
      // Beside a, right or below, exactly touching or with a gap under 0.001.
      const double gap = kind < 90 ? 0.0 : rng.Uniform(0.0001, 0.0009);
      const double slide = rng.Uniform(-100, 100);
      if (rng.Coin()) {
        b = {a.right + gap, a.top + slide, a.right + gap + w, a.top + slide + h};
      } else {
        b = {a.left + slide, a.bottom + gap, a.left + slide + w, a.bottom + gap + h};
      }
    }
    return RectPair{a, b};
  });
  return cases;
}

const std::vector<PointRect>& PointsInRects() {
  static const std::vector<PointRect> cases = Generate<PointRect>(0x1917, [](Rng& rng) {
    const WRect r = RandomRect(rng, 1);
    const int kind = rng.Percent();
    WPt p;
    if (kind < 45) {
      p = {rng.Uniform(r.left, r.right), rng.Uniform(r.top, r.bottom)};
    } else if (kind < 85) {  // outside, within 50 of the rectangle
      do {
        p = {rng.Uniform(r.left - 50, r.right + 50), rng.Uniform(r.top - 50, r.bottom + 50)};
      } while (p.x >= r.left && p.x <= r.right && p.y >= r.top && p.y <= r.bottom);
    } else {  // within 0.0009 of an edge, either side
      p = {rng.Uniform(r.left, r.right), rng.Uniform(r.top, r.bottom)};
      const double d = rng.Uniform(-0.0009, 0.0009);
      switch (rng.Percent() % 4) {
        case 0: p.x = r.left + d; break;
        case 1: p.x = r.right + d; break;
        case 2: p.y = r.top + d; break;
        default: p.y = r.bottom + d; break;
      }
    }
    return PointRect{p, r};
  });
  return cases;
}

const std::vector<LineRect>& LinesNearRects() {
  static const std::vector<LineRect> cases = Generate<LineRect>(0x111e, [](Rng& rng) {
    const double l = rng.Uniform(100, 700);
    const double t = rng.Uniform(100, 700);
    const double w = rng.Uniform(20, 300);
    const double h = rng.Uniform(20, 300);
    const WRect r{l, t, l + w, t + h};
    // A point in the rectangle grown by its own size on every side.
    const WPt a{rng.Uniform(l - w, l + 2 * w), rng.Uniform(t - h, t + 2 * h)};
    const double len = rng.Uniform(1, 50);
    const int kind = rng.Percent();
    WPt b;
    if (kind < 10) {
      b = {a.x + (rng.Coin() ? len : -len), a.y};
    } else if (kind < 20) {
      b = {a.x, a.y + (rng.Coin() ? len : -len)};
    } else {
      const double angle = rng.Uniform(0, kTwoPi);
      b = {a.x + len * std::cos(angle), a.y + len * std::sin(angle)};
    }
    return LineRect{a, b, r};
  });
  return cases;
}

std::vector<BezierChain>& BezierChains() {
  static std::vector<BezierChain> cases = Generate<BezierChain>(0xbe21e2, [](Rng& rng) {
    BezierChain chain;
    WPt p{rng.Uniform(0, 1000), rng.Uniform(0, 1000)};
    for (int i = 0; i < 10; ++i) {
      chain.ours.Add(p);
      chain.plain.push_back(p);
      p = {p.x + rng.Uniform(-100, 100), p.y + rng.Uniform(-100, 100)};
    }
    return chain;
  });
  return cases;
}

}  // namespace bench

#include "view.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cadtools::cli {
namespace {

// Which side of the line a->b p lies on, as the sign of the cross product.
double Side(WPt a, WPt b, WPt p) { return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x); }

}  // namespace

std::optional<Bounds> BoundsOf(std::span<const WPt> points) {
  std::optional<Bounds> box;
  for (const WPt& p : points) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) continue;
    if (!box) {
      box = Bounds{p.x, p.y, p.x, p.y};
      continue;
    }
    box->min_x = std::min(box->min_x, p.x);
    box->min_y = std::min(box->min_y, p.y);
    box->max_x = std::max(box->max_x, p.x);
    box->max_y = std::max(box->max_y, p.y);
  }
  return box;
}

View FitView(Bounds content, double max_width, double max_height) {
  double w = content.max_x - content.min_x;
  double h = content.max_y - content.min_y;
  // A lone point gets a unit box; anything else at least a quarter of its
  // longer side across, so a horizontal segment is not drawn in a sliver.
  double side = std::max(w, h);
  if (side == 0.0) side = 1.0;
  // Not finer than the doubles around the content can resolve, nor so fine
  // that the scale overflows.
  const double magnitude = std::max({std::fabs(content.min_x), std::fabs(content.max_x),
                                     std::fabs(content.min_y), std::fabs(content.max_y)});
  side = std::max({side, magnitude * 1e-12, 1e-100});
  const double cx = content.min_x + w * 0.5;
  const double cy = content.min_y + h * 0.5;
  w = std::max(w, side * 0.25);
  h = std::max(h, side * 0.25);
  const double pad = side * 0.1;
  View view{};
  view.model = {cx - w * 0.5 - pad, cy - h * 0.5 - pad, cx + w * 0.5 + pad, cy + h * 0.5 + pad};
  const double model_w = view.model.max_x - view.model.min_x;
  const double model_h = view.model.max_y - view.model.min_y;
  view.scale = std::min(max_width / model_w, max_height / model_h);
  view.width = model_w * view.scale;
  view.height = model_h * view.scale;
  return view;
}

std::optional<std::pair<WPt, WPt>> ClipLine(WPt a, WPt b, const Bounds& box) {
  // Liang-Barsky over the whole line: t runs over all reals.
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  if (dx == 0.0 && dy == 0.0) return std::nullopt;
  double t0 = -std::numeric_limits<double>::infinity();
  double t1 = std::numeric_limits<double>::infinity();
  const auto edge = [&](double p, double q) {  // keeps t with p t <= q
    if (p == 0.0) return q >= 0.0;
    const double t = q / p;
    if (p < 0.0) {
      t0 = std::max(t0, t);
    } else {
      t1 = std::min(t1, t);
    }
    return true;
  };
  if (!edge(-dx, a.x - box.min_x) || !edge(dx, box.max_x - a.x) || !edge(-dy, a.y - box.min_y) ||
      !edge(dy, box.max_y - a.y) || !(t0 <= t1)) {
    return std::nullopt;
  }
  return std::pair{WPt(a.x + t0 * dx, a.y + t0 * dy), WPt(a.x + t1 * dx, a.y + t1 * dy)};
}

std::vector<WPt> ClipPolygon(const std::vector<WPt>& polygon, WPt a, WPt b, WPt keep) {
  const double want = Side(a, b, keep);
  std::vector<WPt> out;
  if (want == 0.0) return out;
  // Vertices on the line are kept and never cut again, so no duplicates.
  const auto side = [&](WPt p) { return Side(a, b, p) * want; };
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const WPt cur = polygon[i];
    const WPt next = polygon[(i + 1) % polygon.size()];
    const double sc = side(cur);
    const double sn = side(next);
    if (sc >= 0.0) out.push_back(cur);
    if ((sc > 0.0 && sn < 0.0) || (sc < 0.0 && sn > 0.0)) {
      const double t = sc / (sc - sn);
      out.emplace_back(cur.x + t * (next.x - cur.x), cur.y + t * (next.y - cur.y));
    }
  }
  return out;
}

std::vector<WPt> Corners(const Bounds& box) {
  return {{box.min_x, box.min_y}, {box.max_x, box.min_y}, {box.max_x, box.max_y}, {box.min_x, box.max_y}};
}

double NiceStep(double extent, int parts) {
  const double raw = extent / parts;
  if (!(raw > 0.0) || !std::isfinite(raw)) return 1.0;
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  const double fraction = raw / power;
  if (fraction < 1.5) return power;
  if (fraction < 3.5) return 2.0 * power;
  if (fraction < 7.5) return 5.0 * power;
  return 10.0 * power;
}

}  // namespace cadtools::cli

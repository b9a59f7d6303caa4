#include "svg.h"

#include "errors.h"
#include "format.h"
#include "meanings.h"
#include "view.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <fstream>
#include <numbers>
#include <system_error>

namespace cadtools::cli {
namespace {

// Pixel layout: the drawing, then the legend and the notes below it.
constexpr double kMaxDrawWidth = 640.0;
constexpr double kMaxDrawHeight = 480.0;
constexpr double kMarginLeft = 64.0;  // room for the y grid labels
constexpr double kMarginTop = 52.0;   // the title and the x grid labels
constexpr double kMarginRight = 24.0;
constexpr double kMinWidth = 600.0;  // the legend needs the room
constexpr double kLineHeight = 18.0;

struct Paint {
  const char* colour;
  double width;
  const char* dash;  // empty: solid
};

Paint PaintOf(Role role) {
  switch (role) {
    case Role::kFirst: return {"#1f77b4", 2.0, ""};
    case Role::kSecond: return {"#ff7f0e", 2.0, ""};
    case Role::kAnswer: return {"#d62728", 3.0, ""};
    case Role::kGuide: return {"#8c8c8c", 1.0, "6 4"};
    case Role::kAux: return {"#2ca02c", 1.5, "3 3"};
  }
  return {"#000000", 1.0, ""};
}

std::string Escape(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string Px(double v) { return FormatFixed(v, 2); }

// Extreme inputs can put a derived point (a foot, a clipped end) at
// infinity; such a shape is left out rather than written as invalid SVG.
bool Finite(WPt p) { return std::isfinite(p.x) && std::isfinite(p.y); }

// Points each shape needs in view.
void AddFrame(const Shape& shape, std::vector<WPt>& frame) {
  std::visit(
      [&frame](const auto& s) {
        using T = std::decay_t<decltype(s)>;
        if constexpr (std::is_same_v<T, Segment>) {
          frame.push_back(s.a);
          frame.push_back(s.b);
        } else if constexpr (std::is_same_v<T, InfiniteLine>) {
          // Unbounded: it fits itself to whatever else is shown.
        } else if constexpr (std::is_same_v<T, Polyline>) {
          frame.insert(frame.end(), s.points.begin(), s.points.end());
        } else if constexpr (std::is_same_v<T, Circle>) {
          const double r = std::fabs(s.radius);
          frame.emplace_back(s.centre.x - r, s.centre.y - r);
          frame.emplace_back(s.centre.x + r, s.centre.y + r);
        } else if constexpr (std::is_same_v<T, Ellipse>) {
          const double c = std::cos(s.rotation);
          const double n = std::sin(s.rotation);
          const double hx = std::hypot(s.rx * c, s.ry * n);
          const double hy = std::hypot(s.rx * n, s.ry * c);
          frame.emplace_back(s.centre.x - hx, s.centre.y - hy);
          frame.emplace_back(s.centre.x + hx, s.centre.y + hy);
        } else if constexpr (std::is_same_v<T, Marker>) {
          frame.push_back(s.at);
        } else if constexpr (std::is_same_v<T, Zones>) {
          // Room around the rectangle so the outer zones show and take labels.
          const double w = std::fabs(s.rect.right - s.rect.left);
          const double h = std::fabs(s.rect.bottom - s.rect.top);
          const double m = std::max({w, h, 1.0}) * 0.35;
          frame.emplace_back(std::min(s.rect.left, s.rect.right) - m, std::min(s.rect.top, s.rect.bottom) - m);
          frame.emplace_back(std::max(s.rect.left, s.rect.right) + m, std::max(s.rect.top, s.rect.bottom) + m);
        }
      },
      shape);
}

class Writer {
 public:
  Writer(const Scene& scene, const View& view) : scene_(scene), view_(view) {
    width_ = std::max(kMarginLeft + view.width + kMarginRight, kMinWidth);
    legend_top_ = kMarginTop + view.height + 30.0;
    const auto lines = static_cast<double>(scene.legend.size() + scene.notes.size());
    height_ = legend_top_ + lines * kLineHeight + 16.0;
  }

  std::string Render() {
    out_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    out_ += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Px(width_) + "\" height=\"" + Px(height_) +
            "\" viewBox=\"0 0 " + Px(width_) + " " + Px(height_) +
            "\" font-family=\"DejaVu Sans, Arial, sans-serif\" font-size=\"12\">\n";
    out_ += "<title>" + Escape(scene_.title) + "</title>\n";
    out_ += "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    out_ += "<defs><clipPath id=\"area\"><rect x=\"" + Px(kMarginLeft) + "\" y=\"" + Px(kMarginTop) +
            "\" width=\"" + Px(view_.width) + "\" height=\"" + Px(view_.height) + "\"/></clipPath></defs>\n";
    Grid();
    out_ += "<g class=\"shapes\" clip-path=\"url(#area)\">\n";
    for (const Shape& shape : scene_.shapes) {
      std::visit([this](const auto& s) { Draw(s); }, shape);
    }
    out_ += "</g>\n<g class=\"labels\">\n" + labels_ + "</g>\n";
    out_ += "<rect class=\"frame\" x=\"" + Px(kMarginLeft) + "\" y=\"" + Px(kMarginTop) + "\" width=\"" +
            Px(view_.width) + "\" height=\"" + Px(view_.height) + "\" fill=\"none\" stroke=\"#444\"/>\n";
    Heading();
    Legend();
    out_ += "</svg>\n";
    return std::move(out_);
  }

 private:
  WPt ToPx(WPt p) const {
    const WPt v = view_.ToPixels(p);
    return {v.x + kMarginLeft, v.y + kMarginTop};
  }
  std::string Xy(WPt model) const {
    const WPt p = ToPx(model);
    return Px(p.x) + "," + Px(p.y);
  }
  static std::string Stroke(Role role) {
    const Paint paint = PaintOf(role);
    std::string s = " stroke=\"" + std::string(paint.colour) + "\" stroke-width=\"" + Px(paint.width) + "\"";
    if (*paint.dash != '\0') s += " stroke-dasharray=\"" + std::string(paint.dash) + "\"";
    return s;
  }
  void Line(WPt a, WPt b, const std::string& style) {
    const WPt pa = ToPx(a);
    const WPt pb = ToPx(b);
    if (!Finite(pa) || !Finite(pb)) return;
    out_ += "<line x1=\"" + Px(pa.x) + "\" y1=\"" + Px(pa.y) + "\" x2=\"" + Px(pb.x) + "\" y2=\"" + Px(pb.y) + "\"" +
            style + "/>\n";
  }
  void Text(WPt px, const std::string& text, const std::string& attributes) {
    if (!Finite(px)) return;
    out_ += "<text x=\"" + Px(px.x) + "\" y=\"" + Px(px.y) + "\"" + attributes + ">" + Escape(text) + "</text>\n";
  }
  std::string Points(const std::vector<WPt>& points) const {
    std::string s;
    for (const WPt& p : points) {
      if (!Finite(ToPx(p))) continue;
      if (!s.empty()) s += ' ';
      s += Xy(p);
    }
    return s;
  }

  void Grid() {
    const Bounds& m = view_.model;
    const double step = NiceStep(std::max(m.max_x - m.min_x, m.max_y - m.min_y), 8);
    out_ += "<g class=\"grid\" stroke=\"#e4e4e4\" stroke-width=\"1\">\n";
    std::string labels;
    // k * step with k counted from the first multiple in view; at most a
    // few dozen lines whatever the numbers.
    const auto each = [&](double lo, double hi, auto&& draw) {
      const double first = std::ceil(lo / step);
      for (int i = 0; i < 64; ++i) {
        const double v = (first + i) * step;
        if (v > hi) break;
        draw(v);
      }
    };
    each(m.min_x, m.max_x, [&](double x) {
      Line({x, m.min_y}, {x, m.max_y}, x == 0.0 ? " stroke=\"#b0b0b0\"" : "");
      const WPt at = ToPx({x, m.min_y});
      labels += "<text x=\"" + Px(at.x) + "\" y=\"" + Px(at.y - 6.0) + "\" text-anchor=\"middle\">" +
                Escape(FormatRounded(x, 12)) + "</text>\n";
    });
    each(m.min_y, m.max_y, [&](double y) {
      Line({m.min_x, y}, {m.max_x, y}, y == 0.0 ? " stroke=\"#b0b0b0\"" : "");
      const WPt at = ToPx({m.min_x, y});
      labels += "<text x=\"" + Px(at.x - 6.0) + "\" y=\"" + Px(at.y + 4.0) + "\" text-anchor=\"end\">" +
                Escape(FormatRounded(y, 12)) + "</text>\n";
    });
    out_ += "</g>\n<g class=\"grid-labels\" fill=\"#777\" font-size=\"10\">\n" + labels + "</g>\n";
  }

  void Heading() {
    Text({kMarginLeft, 18.0}, scene_.title, " font-weight=\"bold\"");
    // Which way the axes run: y downward, as in the host's rectangles.
    const double x0 = 12.0;
    const double y0 = kMarginTop - 22.0;
    out_ += "<g class=\"axes\" stroke=\"#444\" fill=\"#444\" font-size=\"10\">\n";
    out_ += "<line x1=\"" + Px(x0) + "\" y1=\"" + Px(y0) + "\" x2=\"" + Px(x0 + 26) + "\" y2=\"" + Px(y0) + "\"/>\n";
    out_ += "<polygon points=\"" + Px(x0 + 30) + "," + Px(y0) + " " + Px(x0 + 24) + "," + Px(y0 - 3) + " " +
            Px(x0 + 24) + "," + Px(y0 + 3) + "\"/>\n";
    out_ += "<line x1=\"" + Px(x0) + "\" y1=\"" + Px(y0) + "\" x2=\"" + Px(x0) + "\" y2=\"" + Px(y0 + 26) + "\"/>\n";
    out_ += "<polygon points=\"" + Px(x0) + "," + Px(y0 + 30) + " " + Px(x0 - 3) + "," + Px(y0 + 24) + " " +
            Px(x0 + 3) + "," + Px(y0 + 24) + "\"/>\n";
    out_ += "<text x=\"" + Px(x0 + 33) + "\" y=\"" + Px(y0 + 4) + "\" stroke=\"none\">x</text>\n";
    out_ += "<text x=\"" + Px(x0 + 5) + "\" y=\"" + Px(y0 + 36) + "\" stroke=\"none\">y</text>\n";
    out_ += "</g>\n";
  }

  void Legend() {
    out_ += "<g class=\"legend\">\n";
    double y = legend_top_;
    for (const LegendEntry& entry : scene_.legend) {
      const Paint paint = PaintOf(entry.role);
      out_ += "<line x1=\"" + Px(kMarginLeft) + "\" y1=\"" + Px(y - 4) + "\" x2=\"" + Px(kMarginLeft + 28) +
              "\" y2=\"" + Px(y - 4) + "\"" + Stroke(entry.role) + "/>\n";
      out_ += "<circle cx=\"" + Px(kMarginLeft + 14) + "\" cy=\"" + Px(y - 4) + "\" r=\"3\" fill=\"" +
              paint.colour + "\"/>\n";
      Text({kMarginLeft + 38, y}, entry.text, "");
      y += kLineHeight;
    }
    for (const std::string& note : scene_.notes) {
      Text({kMarginLeft, y}, note, " font-family=\"DejaVu Sans Mono, Consolas, monospace\" fill=\"#333\"");
      y += kLineHeight;
    }
    out_ += "</g>\n";
  }

  void Draw(const Segment& s) {
    Line(s.a, s.b, Stroke(s.role) + " stroke-linecap=\"round\"");
    const WPt a = ToPx(s.a);
    const WPt b = ToPx(s.b);
    const double len = std::hypot(b.x - a.x, b.y - a.y);
    if (!s.arrow || !(len > 0.0) || !std::isfinite(len)) return;
    const double ux = (b.x - a.x) / len;
    const double uy = (b.y - a.y) / len;
    const auto corner = [&](double side) {
      return Px(b.x - 12 * ux - side * 5 * uy) + "," + Px(b.y - 12 * uy + side * 5 * ux);
    };
    out_ += "<polygon points=\"" + Px(b.x) + "," + Px(b.y) + " " + corner(1) + " " + corner(-1) +
            "\" fill=\"" + PaintOf(s.role).colour + "\"/>\n";
  }
  void Draw(const InfiniteLine& s) {
    if (const auto part = ClipLine(s.a, s.b, view_.model)) Line(part->first, part->second, Stroke(s.role));
  }
  void Draw(const Polyline& s) {
    const char* element = s.closed ? "polygon" : "polyline";
    const std::string fill =
        s.filled ? " fill=\"" + std::string(PaintOf(s.role).colour) + "\" fill-opacity=\"0.25\"" : " fill=\"none\"";
    out_ += std::string("<") + element + " points=\"" + Points(s.points) + "\"" + fill + Stroke(s.role) +
            " stroke-linejoin=\"round\"/>\n";
  }
  void Draw(const Circle& s) {
    const WPt c = ToPx(s.centre);
    if (!Finite(c) || !std::isfinite(s.radius * view_.scale)) return;
    out_ += "<circle cx=\"" + Px(c.x) + "\" cy=\"" + Px(c.y) + "\" r=\"" + Px(std::fabs(s.radius) * view_.scale) +
            "\" fill=\"none\"" + Stroke(s.role) + "/>\n";
  }
  void Draw(const Ellipse& s) {
    const WPt c = ToPx(s.centre);
    if (!Finite(c) || !std::isfinite(s.rx * view_.scale) || !std::isfinite(s.ry * view_.scale)) return;
    const double degrees = s.rotation * 180.0 / std::numbers::pi;
    out_ += "<ellipse cx=\"" + Px(c.x) + "\" cy=\"" + Px(c.y) + "\" rx=\"" + Px(s.rx * view_.scale) + "\" ry=\"" +
            Px(s.ry * view_.scale) + "\" transform=\"rotate(" + Px(degrees) + " " + Px(c.x) + " " + Px(c.y) +
            ")\" fill=\"none\"" + Stroke(s.role) + "/>\n";
  }
  void Draw(const Marker& s) {
    const WPt c = ToPx(s.at);
    if (!Finite(c)) return;
    const Paint paint = PaintOf(s.role);
    out_ += "<circle cx=\"" + Px(c.x) + "\" cy=\"" + Px(c.y) + "\" r=\"" + (s.role == Role::kAnswer ? "5" : "4") +
            "\" fill=\"" + paint.colour + "\" stroke=\"white\" stroke-width=\"1\"/>\n";
    if (!s.label.empty()) Label(c, s.label, paint.colour);
  }
  // Marker texts go on top of everything, unclipped, and turn to the other
  // side of their point near the right or top edge of the drawing.
  void Label(WPt at, const std::string& text, const char* colour) {
    constexpr double kCharWidth = 7.5;  // bold 12 px, roughly
    const double width = kCharWidth * static_cast<double>(text.size());
    const bool flip_x = at.x + 8 + width > kMarginLeft + view_.width;
    const bool flip_y = at.y - 20 < kMarginTop;
    labels_ += "<text x=\"" + Px(flip_x ? at.x - 8 : at.x + 8) + "\" y=\"" + Px(flip_y ? at.y + 18 : at.y - 8) +
               "\"" + (flip_x ? " text-anchor=\"end\"" : "") + " fill=\"" + colour +
               "\" stroke=\"white\" stroke-width=\"3\" paint-order=\"stroke\" font-weight=\"bold\">" +
               Escape(text) + "</text>\n";
  }
  void Draw(const Zones& z) {
    out_ += "<g class=\"zones\">\n";
    if (z.diagonals) {
      DiagonalZones(z);
    } else {
      GridZones(z);
    }
    out_ += "</g>\n";
  }

  void Zone(const std::vector<WPt>& polygon, int code, bool hit, int shade) {
    if (polygon.size() < 3) return;
    static constexpr std::array<const char*, 2> kShades = {"#e8eef8", "#f4f4f4"};
    const char* fill = hit ? "#ffd84d" : kShades[static_cast<std::size_t>(shade % 2)];
    out_ += "<polygon points=\"" + Points(polygon) + "\" fill=\"" + fill + "\" fill-opacity=\"" +
            (hit ? "0.75" : "1") + "\" stroke=\"none\"/>\n";
    WPt centre;
    for (const WPt& p : polygon) centre = centre + p;
    const double n = static_cast<double>(polygon.size());
    const WPt at = ToPx({centre.x / n, centre.y / n});
    Text({at.x, at.y + 4}, std::string(ZoneName(code)),
         std::string(" text-anchor=\"middle\" fill=\"") + (hit ? "#7a5b00" : "#8a94a6") + "\"" +
             (hit ? " font-weight=\"bold\"" : ""));
  }

  void GridZones(const Zones& z) {
    const Bounds& m = view_.model;
    const double left = std::min(z.rect.left, z.rect.right);
    const double right = std::max(z.rect.left, z.rect.right);
    const double top = std::min(z.rect.top, z.rect.bottom);
    const double bottom = std::max(z.rect.top, z.rect.bottom);
    const std::array<double, 4> xs = {m.min_x, left, right, m.max_x};
    const std::array<double, 4> ys = {m.min_y, top, bottom, m.max_y};
    // Rows from the top of the picture (smallest y) down.
    static constexpr int kCodes[3][3] = {
        {WRect::LeftTop, WRect::Top, WRect::RightTop},
        {WRect::Left, WRect::Inside, WRect::Right},
        {WRect::LeftBottom, WRect::Bottom, WRect::RightBottom},
    };
    for (std::size_t row = 0; row < 3; ++row) {
      for (std::size_t col = 0; col < 3; ++col) {
        if (!(xs[col] < xs[col + 1]) || !(ys[row] < ys[row + 1])) continue;
        const int code = kCodes[row][col];
        Zone(Corners({xs[col], ys[row], xs[col + 1], ys[row + 1]}), code, code == z.hit,
             static_cast<int>(row + col));
      }
    }
    const std::string edge = " stroke=\"#9aa5b8\" stroke-width=\"1\" stroke-dasharray=\"2 3\"";
    Line({left, m.min_y}, {left, m.max_y}, edge);
    Line({right, m.min_y}, {right, m.max_y}, edge);
    Line({m.min_x, top}, {m.max_x, top}, edge);
    Line({m.min_x, bottom}, {m.max_x, bottom}, edge);
  }

  void DiagonalZones(const Zones& z) {
    const WRect& r = z.rect;
    const double w = r.right - r.left;
    const double h = r.bottom - r.top;
    const WPt d1a(r.left, r.top), d1b(r.right, r.bottom);
    const WPt d2a(r.right, r.top), d2b(r.left, r.bottom);
    const WPt c(r.left + w * 0.5, r.top + h * 0.5);
    if (w != 0.0 && h != 0.0) {
      const double aw = std::fabs(w);
      const double ah = std::fabs(h);
      const double top = std::min(r.top, r.bottom);
      const double bottom = std::max(r.top, r.bottom);
      const double left = std::min(r.left, r.right);
      const double right = std::max(r.left, r.right);
      // Each zone: the view on one side of both diagonals, found from a
      // point that lies plainly in it.
      const std::array<std::pair<int, WPt>, 4> zones = {{
          {WRect::Top, {c.x, top - ah}},
          {WRect::Right, {right + aw, c.y}},
          {WRect::Bottom, {c.x, bottom + ah}},
          {WRect::Left, {left - aw, c.y}},
      }};
      int shade = 0;
      for (const auto& [code, inner] : zones) {
        const auto half = ClipPolygon(Corners(view_.model), d1a, d1b, inner);
        Zone(ClipPolygon(half, d2a, d2b, inner), code, code == z.hit, shade++);
      }
    }
    const bool on_diagonal = z.hit == WRect::Inside;
    const std::string style = on_diagonal ? " stroke=\"#e0a800\" stroke-width=\"3\""
                                          : " stroke=\"#9aa5b8\" stroke-width=\"1\" stroke-dasharray=\"2 3\"";
    for (const auto& [a, b] : {std::pair{d1a, d1b}, std::pair{d2a, d2b}}) {
      if (const auto part = ClipLine(a, b, view_.model)) Line(part->first, part->second, style);
    }
    if (on_diagonal) {
      const WPt at = ToPx(c);
      Text({at.x, at.y - 10}, "Inside (on a diagonal)",
           " text-anchor=\"middle\" fill=\"#7a5b00\" font-weight=\"bold\"");
    }
  }

  const Scene& scene_;
  const View& view_;
  std::string out_;
  std::string labels_;
  double width_ = 0.0;
  double height_ = 0.0;
  double legend_top_ = 0.0;
};

}  // namespace

std::string RenderSvg(const Scene& scene) {
  std::vector<WPt> frame = scene.frame;
  for (const Shape& shape : scene.shapes) AddFrame(shape, frame);
  for (const WPt& p : frame) {
    if (std::fabs(p.x) > kDrawableLimit || std::fabs(p.y) > kDrawableLimit) {
      throw OutputError("cannot draw coordinates beyond 1e100 such as " + FormatPointText(p));
    }
  }
  const Bounds content = BoundsOf(frame).value_or(Bounds{0.0, 0.0, 1.0, 1.0});
  const View view = FitView(content, kMaxDrawWidth, kMaxDrawHeight);
  return Writer(scene, view).Render();
}

void WriteFile(const std::string& path, const std::string& text) {
  errno = 0;
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  const auto failure = [&path](int error) {
    const std::string reason = error != 0 ? std::generic_category().message(error) : "write failed";
    return OutputError("cannot write '" + path + "': " + reason);
  };
  if (!file) throw failure(errno);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) throw failure(errno);
}

}  // namespace cadtools::cli

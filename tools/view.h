// The mapping from model coordinates to the pixels of a picture, and the
// clipping that keeps unbounded shapes inside it. Pure functions.
#pragma once

#include <cadtools/geometry/wpt.h>

#include <optional>
#include <span>
#include <vector>

namespace cadtools::cli {

struct Bounds {
  double min_x, min_y, max_x, max_y;
};

// Model coordinates beyond this cannot be drawn: the view arithmetic would
// lose all precision or overflow.
inline constexpr double kDrawableLimit = 1e100;

// The smallest box around the finite points; nullopt when there are none.
std::optional<Bounds> BoundsOf(std::span<const WPt> points);

// Model bounds padded on every side and scaled to fit max_width x
// max_height pixels, keeping the aspect ratio. The y axis is not flipped:
// y grows downward in the picture as in the host's rectangles.
struct View {
  Bounds model;   // the padded box that is visible
  double scale;   // pixels per model unit
  double width;   // pixels
  double height;  // pixels

  WPt ToPixels(WPt p) const noexcept {
    return {(p.x - model.min_x) * scale, (p.y - model.min_y) * scale};
  }
};

// A point, a flat or a thin content box is widened so it still gets a
// sensible picture; padding is a tenth of the larger side.
View FitView(Bounds content, double max_width, double max_height);

// The part of the line through a and b (a != b) inside box, or nullopt.
std::optional<std::pair<WPt, WPt>> ClipLine(WPt a, WPt b, const Bounds& box);

// The part of a convex polygon on the same side of the line through a and b
// as `keep` (Sutherland-Hodgman, one edge).
std::vector<WPt> ClipPolygon(const std::vector<WPt>& polygon, WPt a, WPt b, WPt keep);

// The corners of box, clockwise on screen from the top left.
std::vector<WPt> Corners(const Bounds& box);

// A step of 1, 2 or 5 times a power of ten that cuts `extent` into about
// `parts` pieces: the spacing of grid lines.
double NiceStep(double extent, int parts);

}  // namespace cadtools::cli

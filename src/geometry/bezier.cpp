// Cubic Bezier chains sampled into polylines.
#include <cadtools/geometry/math_tools.h>

namespace {

// More points than this for one segment means a step no caller would pass
// on purpose (below 1e-7): it would exhaust memory or, once the step is
// below the precision of t, never end.
constexpr double kMaxPointsPerSegment = 1e7;

WPt CubicPoint(const WPt& p0, const WPt& p1, const WPt& p2, const WPt& p3, double t) {
  const double u = 1.0 - t;
  return {u * u * u * p0.x + 3.0 * u * u * t * p1.x + 3.0 * u * t * t * p2.x + t * t * t * p3.x,
          u * u * u * p0.y + 3.0 * u * u * t * p1.y + 3.0 * u * t * t * p2.y + t * t * t * p3.y};
}

}  // namespace

void CMathTools::CalculateBezierPoints(CArray<WPt, WPt>* input, CArray<WPt, WPt>& output, double step) {
  if (input == nullptr) return;
  // The count is taken once, so output may be the input array itself.
  const INT_PTR count = input->GetSize();
  if (count == 0) return;
  if (count < 4) {
    for (INT_PTR i = 0; i < count; ++i) output.Add(input->GetAt(i));
    return;
  }
  if (!(step > 0.0) || 1.0 / step > kMaxPointsPerSegment) return;

  for (INT_PTR first = 0; first + 3 < count; first += 3) {
    const WPt p0 = input->GetAt(first);
    const WPt p1 = input->GetAt(first + 1);
    const WPt p2 = input->GetAt(first + 2);
    const WPt p3 = input->GetAt(first + 3);
    // t is summed, not recomputed from a counter: the host's polylines
    // depend on where the sum lands (0.1 ends at 0.9999999999999999,
    // 0.5 reaches 1.0 and repeats the shared end point).
    double t = 0.0;
    do {
      output.Add(CubicPoint(p0, p1, p2, p3, t));
      t += step;
    } while (1.0 >= t);
  }
}

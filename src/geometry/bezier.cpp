// Cubic Bezier chains sampled into polylines.
#include <cadtools/geometry/geometry_tools.h>

#include <array>
#include <cstddef>
#include <vector>

using cadtools::GeometryTools;

namespace {

// More points than this for one segment means a step no caller would pass
// on purpose (below 1e-7): it would exhaust memory or, once the step is
// below the precision of t, never end.
constexpr double kMaxPointsPerSegment = 1e7;

// Parameter lists up to this length live on the stack.
constexpr std::size_t kStackParameters = 256;

WPt CubicPoint(const WPt& p0, const WPt& p1, const WPt& p2, const WPt& p3, double t) {
  const double u = 1.0 - t;
  return {u * u * u * p0.x + 3.0 * u * u * t * p1.x + 3.0 * u * t * t * p2.x + t * t * t * p3.x,
          u * u * u * p0.y + 3.0 * u * u * t * p1.y + 3.0 * u * t * t * p2.y + t * t * t * p3.y};
}

}  // namespace

void GeometryTools::CalculateBezierPoints(CArray<WPt, WPt>* input, CArray<WPt, WPt>& output, double step) {
  if (input == nullptr) return;
  // The count is taken once, so output may be the input array itself.
  const INT_PTR count = input->GetSize();
  if (count == 0) return;
  if (count < 4) {
    for (INT_PTR i = 0; i < count; ++i) output.Add(input->GetAt(i));
    return;
  }
  if (!(step > 0.0) || 1.0 / step > kMaxPointsPerSegment) return;

  // t is summed, not recomputed from a counter: the host's polylines depend
  // on where the sum lands (0.1 ends at 0.9999999999999999, 0.5 reaches 1.0
  // and repeats the shared end point). Every segment restarts at 0 and sums
  // the same steps, so the sums are found once; the usual few stay on the
  // stack.
  std::array<double, kStackParameters> onStack;
  std::vector<double> onHeap;
  std::size_t perSegment = 0;
  double t = 0.0;
  do {
    if (perSegment < onStack.size()) {
      onStack[perSegment] = t;
    } else {
      if (perSegment == onStack.size()) onHeap.assign(onStack.begin(), onStack.end());
      onHeap.push_back(t);
    }
    ++perSegment;
    t += step;
  } while (1.0 >= t);
  const double* parameters = onHeap.empty() ? onStack.data() : onHeap.data();

  // Room for every point at once, then the points in order: the same
  // elements as growing the array one point at a time.
  const INT_PTR segments = (count - 1) / 3;
  const INT_PTR start = output.GetSize();
  output.SetSize(start + segments * static_cast<INT_PTR>(perSegment));
  WPt* out = output.GetData() + start;
  for (INT_PTR s = 0; s < segments; ++s) {
    const WPt p0 = input->GetAt(3 * s);
    const WPt p1 = input->GetAt(3 * s + 1);
    const WPt p2 = input->GetAt(3 * s + 2);
    const WPt p3 = input->GetAt(3 * s + 3);
    for (std::size_t i = 0; i < perSegment; ++i) *out++ = CubicPoint(p0, p1, p2, p3, parameters[i]);
  }
}

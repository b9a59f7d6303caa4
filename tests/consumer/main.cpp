// Uses the installed library through its umbrella header.
#include <cadtools/cadtools.h>

#include <cstdio>

int main() {
  int failures = 0;
  const auto check = [&failures](bool ok, const char* what) {
    std::printf("%s %s\n", ok ? "ok  " : "FAIL", what);
    failures += ok ? 0 : 1;
  };

  double x = 0, y = 0;
  check(CMathTools::ll_Intersection(0, 0, 2, 0, 1, -1, 1, 1, &x, &y, 0, 0) == 2 && x == 1 && y == 0,
        "ll_Intersection crosses at (1, 0)");
  check(WRect(0, 0, 10, 10).GetPtPosToRect(WPt(5, 11), 0, 0) == WRect::Bottom, "zone of (5, 11) is Bottom");
  check(CMathTools::PolarRound(0, 0, 0, 0.7, 0).x == -1.0, "PolarRound keeps the host's rounding");

  CArray<WPt, WPt> points;
  try {
    points.GetAt(3);
    check(false, "out-of-range index throws");
  } catch (CException* e) {
    check(dynamic_cast<CInvalidArgException*>(e) != nullptr, "out-of-range index throws CInvalidArgException");
    e->Delete();
  }
  std::printf("%s\n", failures == 0 ? "consumer: all checks passed" : "consumer: checks failed");
  return failures == 0 ? 0 : 1;
}

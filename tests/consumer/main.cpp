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
  check(CMathTools::MM2InchRound(3.175) == 0.125, "MM2InchRound snaps 3.175 mm to 0.125 in");
  CMathTools::m_strCadMes_037 = CADTOOLS_WIDE("%.1f mm / %.2f in");  // the host's text, across the library boundary
  check(CMathTools::FormatStringMMInch(25.4, 1.0) == CADTOOLS_WIDE("25.4 mm / 1.00 in"),
        "FormatStringMMInch uses the host's text");
  check(CTextTools::NaturalCompare(CADTOOLS_WIDE("X2"), CADTOOLS_WIDE("X10")) < 0, "X2 sorts before X10");
  check(CTextTools::TrimChar(CADTOOLS_WIDE("  --\u00C9b--  "), '-') == CADTOOLS_WIDE("\u00C9b"),
        "TrimChar strips spaces and the character");

  CArray<WPt, WPt> points;
  try {
    points.GetAt(3);
    check(false, "out-of-range index throws");
  } catch (CException* e) {
    check(dynamic_cast<CInvalidArgException*>(e) != nullptr, "out-of-range index throws CInvalidArgException");
    e->Delete();
  }
  // The bridge finds its managed assembly in the installed tree, relative to
  // the library, whatever the working directory.
  CString why;
  if (cadtools::bridge::Runtime::Available(&why)) {
    const CString text(CADTOOLS_WIDE("Klemme \u00C4 \U0001F600"));
    check(CDotNetUtils::DotNetString2CString(CDotNetUtils::CString2DotNetString(text)) == text,
          "a string crosses into the managed runtime and back");
  } else {
    std::printf("FAIL the managed runtime did not start: %s\n", cadtools::ToUtf8(why).c_str());
    ++failures;
  }
  std::printf("%s\n", failures == 0 ? "consumer: all checks passed" : "consumer: checks failed");
  return failures == 0 ? 0 : 1;
}

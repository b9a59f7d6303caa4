#include "tour.h"

#include "format.h"
#include "meanings.h"
#include "tour_steps.h"

#include <cadtools/cadtools.h>

#include <numbers>
#include <ostream>
#include <string>
#include <string_view>

namespace cadtools::cli {
namespace {

constexpr double kPi = std::numbers::pi;

std::string Pt(WPt p) { return FormatPointText(p); }
std::string Rect(const WRect& r) { return FormatRectText(r); }
std::string Coded(int code, std::string_view meaning) { return Int(code) + " (" + std::string(meaning) + ")"; }

void ValueTypes(Tour& t) {
  t.Heading("Points and rectangles: WPt and WRect, plain doubles");
  t.Step("WPt(1, 2) + WPt(0.5, 0.5)", Pt(WPt(1, 2) + WPt(0.5, 0.5)));
  t.Step("WPt(0.1 + 0.2, 0) == WPt(0.3, 0)", Bool(WPt(0.1 + 0.2, 0) == WPt(0.3, 0)),
         "== on points is exact; equal_2 is the tolerant test");
  t.Step("WRect(5, 7, 1, 2).Width()", Num(WRect(5, 7, 1, 2).Width()), "nothing normalises on its own");
  WRect box;
  box.Invalidate();
  t.Step("box.Invalidate()", Rect(box), "the invalid sentinel");
  box += WRect(1, 2, 3, 4);
  t.Step("box += WRect(1, 2, 3, 4)", Rect(box), "the sentinel unites away");
}

void TolerantTests(Tour& t) {
  t.Heading("Tolerant rectangle tests: tolerant != 0 widens every edge by 0.001");
  const WRect r(0, 0, 10, 10);
  t.Step("(0, 0, 10, 10).PtInRect((-0.0005, 5), 0)", Int(r.PtInRect(WPt(-0.0005, 5), 0)));
  t.Step("(0, 0, 10, 10).PtInRect((-0.0005, 5), 1)", Int(r.PtInRect(WPt(-0.0005, 5), 1)));
  t.Step("(0, 0, 1, 1) == (0.0009, 0, 1, 1)", Int(WRect(0, 0, 1, 1) == WRect(0.0009, 0, 1, 1)),
         "== on rectangles is tolerant");
  t.Step("(0, 0, 1, 1).IntersectRect((1.0005, 0, 2, 1), 1)",
         Int(WRect(0, 0, 1, 1).IntersectRect(WRect(1.0005, 0, 2, 1), 1)));
}

void Angles(Tour& t) {
  t.Heading("Angles: directions in radians [0, 2pi), arcs in degrees");
  t.Step("Angle(0, 0, 1, -1, 0)", Num(CMathTools::Angle(0, 0, 1, -1, 0)), "7pi/4");
  t.Step("Angle(0, 0, 1, 0.0005, 1)", Num(CMathTools::Angle(0, 0, 1, 0.0005, 1)), "coarse: snaps to the axis");
  t.Step("Grad(-pi/2, 1)", Num(CMathTools::Grad(-kPi / 2, 1)), "normalised, rounded to tenths");
  t.Step("Rad(-90, 1)", Num(CMathTools::Rad(-90, 1)), "3pi/2");
  t.Step("NormalizeRad(2pi - 5e-7)", Num(CMathTools::NormalizeRad(2 * kPi - 5e-7)),
         "just below 2pi comes out slightly negative");
  t.Step("NormAngle(370, 0)", Num(CMathTools::NormAngle(370, 0)));
  t.Step("NormAngle(10, 20)", Num(CMathTools::NormAngle(10, 20)), "raised to at least the lower bound");
  const auto norm2 = [](double start, double end) {
    CMathTools::Norm2Angles(start, end);
    return "(" + Num(start) + ", " + Num(end) + ")";
  };
  t.Step("Norm2Angles(350, 10)", norm2(350, 10), "the end passes 360");
  t.Step("Norm2Angles(30, 30)", norm2(30, 30), "a full circle");
  t.Step("Norm2Angles(-90, 0)", norm2(-90, 0));
  t.Step("IsEqual_Angle(0, 359.9995)", Int(CMathTools::IsEqual_Angle(0, 359.9995)));
  t.Step("IsEqual_Angle(359.9995, 0)", Int(CMathTools::IsEqual_Angle(359.9995, 0)),
         "one-sided: only the first is shifted a turn");
}

void Rounding(Tour& t) {
  t.Heading("Rounding: the shared decimal rounding and Round()");
  t.Step("PolarRound(0, 0, 0, 0.7, 0)", Pt(CMathTools::PolarRound(0, 0, 0, 0.7, 0)),
         "integer part 0 with fraction >= 0.5 goes to -1");
  t.Step("PolarRound(0, 0, 0, 1.26, 1)", Pt(CMathTools::PolarRound(0, 0, 0, 1.26, 1)));
  t.Step("GetSide(0, 0, 10, 0, 5, 0.0007)", Int(CMathTools::GetSide(0, 0, 10, 0, 5, 0.0007)),
         "the same quirk: 0.0007 rounds to -0.001, below");
  t.Step("Round(-2.97)", Int(CMathTools::Round(-2.97)), "truncates toward zero");
}

void Intersections(Tour& t) {
  t.Heading("Intersections");
  const auto lines = [](double x3, double y3, double x4, double y4) {
    double x = 0.0;
    double y = 0.0;
    const int code = CMathTools::ll_Intersection(0, 0, 2, 0, x3, y3, x4, y4, &x, &y, 0, 0);
    const std::string at = code >= 2 ? " at " + Pt({x, y}) : "";
    return Coded(code, IntersectionMeaning(code)) + at;
  };
  t.Step("ll_Intersection((0,0)-(2,0), (1,-1)-(1,1))", lines(1, -1, 1, 1));
  t.Step("ll_Intersection((0,0)-(2,0), (1,2)-(1,3))", lines(1, 2, 1, 3));
  t.Step("ll_Intersection((0,0)-(2,0), (3,-1)-(3,1))", lines(3, -1, 3, 1));
  t.Step("ll_Intersection((0,0)-(2,0), (0,1)-(2,1))", lines(0, 1, 2, 1));
  const auto circles = [](double cx2, double r2) {
    WPt a;
    WPt b;
    const int n = CMathTools::aa_Intersection(0, 0, 5, cx2, 0, r2, &a.x, &a.y, &b.x, &b.y);
    std::string text = Int(n);
    if (n >= 1) text += ": " + Pt(a);
    if (n >= 2) text += " " + Pt(b);
    return text;
  };
  t.Step("aa_Intersection(((0,0), 5), ((8,0), 5))", circles(8, 5));
  t.Step("aa_Intersection(((0,0), 5), ((10,0), 5))", circles(10, 5), "touching, reported once here");
}

void OnEntity(Tour& t) {
  t.Heading("On_Entity: a point against the segment (0, 0)-(10, 0)");
  for (const WPt p : {WPt(0.0005, 0), WPt(10, 0), WPt(5, 0), WPt(5, 1), WPt(-5, 0), WPt(15, 5)}) {
    const int code = CMathTools::On_Entity(0, 0, 10, 0, p.x, p.y);
    t.Step(Pt(p), Coded(code, OnEntityMeaning(code)));
  }
}

void Distances(Tour& t) {
  t.Heading("Distances to the segment (0, 0)-(10, 0)");
  const WPt a(0, 0);
  const WPt b(10, 0);
  t.Step("DistToLine1((5, 3))", Num(CMathTools::DistToLine1(WPt(5, 3), a, b)), "to the infinite line");
  t.Step("CalculateDistanceToLine((5, 3))", Num(CMathTools::CalculateDistanceToLine(WPt(5, 3), a, b)));
  t.Step("CalculateDistanceToLine((15, 3))", Num(CMathTools::CalculateDistanceToLine(WPt(15, 3), a, b)),
         "beyond the end");
  t.Step("DistToLine((5, 0.5))", Num(CMathTools::DistToLine(WPt(5, 0.5), a, b)), "a picking measure");
  t.Step("CalculateDistanceToRect((5, 2), (0, 0, 10, 10))",
         Num(CMathTools::CalculateDistanceToRect(WPt(5, 2), WRect(0, 0, 10, 10))));
  t.Step("OrthogLength(0, 0, 3, 4)", Num(CMathTools::OrthogLength(0, 0, 3, 4)));
}

void Bezier(Tour& t) {
  t.Heading("Bezier points");
  CArray<WPt, WPt> control;
  for (const WPt p : {WPt(0, 0), WPt(0, 10), WPt(10, 10), WPt(10, 0)}) control.Add(p);
  CArray<WPt, WPt> points;
  CMathTools::CalculateBezierPoints(&control, points, 0.25);
  std::string text = Int(points.GetSize()) + " points:";
  for (const WPt& p : points) text += " " + Pt(p);
  t.Step("(0,0) (0,10) (10,10) (10,0), step 0.25", text);
}

void Zones(Tour& t) {
  t.Heading("Zones and clipping around (0, 0, 10, 10); y grows downward, so Bottom is y > 10");
  const WRect r(0, 0, 10, 10);
  const auto zone = [&r](WPt p, int diagonals) { return std::string(ZoneName(r.GetPtPosToRect(p, diagonals, 0))); };
  t.Step("GetPtPosToRect((5, 11), 0, 0)", zone({5, 11}, 0));
  t.Step("GetPtPosToRect((0, 0), 0, 0)", zone({0, 0}, 0), "corners belong to the side columns");
  t.Step("GetPtPosToRect((8, 5), 1, 0)", zone({8, 5}, 1), "cut by the diagonals");
  t.Step("GetPtPosToRect((5, 5), 1, 0)", zone({5, 5}, 1), "on a diagonal");
  const auto clip = [&r](WPt a, WPt b) {
    const int hit = r.LineIntersects(a, b);
    return Int(hit) + (hit != 0 ? ": " + Pt(a) + " " + Pt(b) : "");
  };
  t.Step("LineIntersects((-5, 5), (-4, 5))", clip({-5, 5}, {-4, 5}));
  t.Step("LineIntersects((0, 0), (10, 10))", clip({0, 0}, {10, 10}), "a corner does not count");
  t.Step("IsSegmentIntersects((10, 5), (15, 5))", Int(r.IsSegmentIntersects(WPt(10, 5), WPt(15, 5))),
         "touching is not crossing");
  WRect anded(0, 0, 1, 1);
  anded &= WRect(2, 2, 3, 3);
  t.Step("(0, 0, 1, 1).Section((2, 2, 3, 3))", Rect(WRect(0, 0, 1, 1).Section(WRect(2, 2, 3, 3))));
  t.Step("(0, 0, 1, 1) &= (2, 2, 3, 3)", Rect(anded), "never inverts: the far corner");
}

}  // namespace

void PrintTour(std::ostream& out) {
  out << "cadtools " << kVersionString << ": a tour of the library. Every result is computed now.\n";
  Tour t(out);
  ValueTypes(t);
  TolerantTests(t);
  Angles(t);
  Rounding(t);
  Intersections(t);
  OnEntity(t);
  Distances(t);
  Bezier(t);
  Zones(t);
  NumbersTour(t);
  TextTour(t);
  SettingsTour(t);
  CodePagesTour(t);
  BridgeTour(t);
  out << "\nAsk your own: cadtools geom --help (add --svg FILE for a picture), and\n"
         "cadtools natsort, like, nextname, units, settings, placement, convert, charset,\n"
         "font, symbol and pane, each with --help.\n";
}

}  // namespace cadtools::cli

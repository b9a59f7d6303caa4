// Feeds arbitrary doubles (NaN, infinities, huge and subnormal values
// included) to every geometric function: none may crash, hang or have
// undefined behaviour.
#include <cadtools/cadtools.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>

namespace {

struct Inputs {
  explicit Inputs(FuzzedDataProvider& provider) : data(provider) {}
  double D() { return data.ConsumeFloatingPoint<double>(); }
  float F() { return data.ConsumeFloatingPoint<float>(); }
  int I() { return data.ConsumeIntegral<int>(); }
  WPt P() { return {D(), D()}; }
  WRect R() { return {D(), D(), D(), D()}; }
  FuzzedDataProvider& data;
};

void Angles(Inputs& in) {
  double a = in.D(), b = in.D();
  CMathTools::Norm2Angles(a, b);
  CMathTools::SortAngle(a, b);
  CMathTools::NormAngle(in.D(), in.D());
  CMathTools::IsEqual_Angle(in.D(), in.D());
  CMathTools::IsLess_Angle(in.D(), in.D());
  CMathTools::NormalizeRad(in.D());
  CMathTools::Rad(in.D(), in.I());
  CMathTools::Grad(in.D(), in.I());
  CMathTools::RadEllipse(in.D(), in.D(), in.D());
  CMathTools::NormSinOrCos(in.D());
  CMathTools::Angle(in.D(), in.D(), in.D(), in.D(), in.I());
  CMathTools::Angle(CPoint(in.I(), in.I()), CPoint(in.I(), in.I()), in.I());
  CMathTools::Length(CPoint(in.I(), in.I()), CPoint(in.I(), in.I()));
  CMathTools::GetSide(in.D(), in.D(), in.D(), in.D(), in.D(), in.D());
  CMathTools::PolarRound(in.D(), in.D(), in.D(), in.D(), in.I());
  CMathTools::Round(in.D());
  CMathTools::BinomialTheorem(in.data.ConsumeIntegral<std::uint64_t>(), in.data.ConsumeIntegral<std::uint64_t>());
  CMathTools::equal_1(in.F(), in.F(), in.D());
  CMathTools::Compare_1(in.F(), in.F(), in.D());
}

void Lines(Inputs& in) {
  double x = 0, y = 0, x2 = 0, y2 = 0;
  CMathTools::ll_Intersection(in.D(), in.D(), in.D(), in.D(), in.D(), in.D(), in.D(), in.D(), &x, &y, in.I(), in.I());
  CMathTools::aa_Intersection(in.D(), in.D(), in.D(), in.D(), in.D(), in.D(), &x, &y, &x2, &y2);
  CMathTools::On_Entity(in.D(), in.D(), in.D(), in.D(), in.D(), in.D());
  CMathTools::PtOnLine(in.D(), in.D(), in.D(), in.D(), in.D(), in.D(), in.I());
  CMathTools::DistToLine(in.P(), in.P(), in.P());
  CMathTools::CalculateDistanceToRect(in.P(), in.R());
  WPt ccw, cw;
  CMathTools::GetOrthogPtsOnDistance(in.P(), in.P(), in.P(), in.D(), ccw, cw);
  CMathTools::FindSideByDiagOnRect(in.P(), in.R());
  CMathTools::ScaleRect(in.P(), in.R(), in.D(), in.D());
}

void Rects(Inputs& in) {
  WRect r = in.R();
  const WRect other = in.R();
  WPt a = in.P(), b = in.P();
  r.GetPtPosToRect(a, in.I(), in.I());
  r.IsSegmentIntersects(a, b);
  r.LineIntersects(a, b);
  r.IsSegmentIntersecting(a, b);
  r.IntersectRect(other, in.I());
  r.RectInRect(other, in.I());
  r.RectOutsideRect(other);
  r.PtInRect(in.F(), in.F(), in.I());
  r.Section(other);
  r &= other;
  r.Inflate(in.F());
  r.SetWidth(in.F());
  r.GetCenterWPt();
}

void Bezier(Inputs& in) {
  CArray<WPt, WPt> input;
  const int count = in.data.ConsumeIntegralInRange(0, 13);
  for (int i = 0; i < count; ++i) input.Add(in.P());
  // Any step is safe; tiny positive ones are merely slow and large, so the
  // fuzzer keeps them at a size it can check many times a second.
  double step = in.D();
  if (step > 0 && step < 1e-3) step = 1e-3;
  CArray<WPt, WPt> output;
  CMathTools::CalculateBezierPoints(&input, output, step);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider provider(bytes, size);
  Inputs in(provider);
  switch (provider.ConsumeIntegralInRange(0, 3)) {
    case 0: Angles(in); break;
    case 1: Lines(in); break;
    case 2: Rects(in); break;
    default: Bezier(in); break;
  }
  return 0;
}

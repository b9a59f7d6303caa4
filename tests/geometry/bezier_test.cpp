#include "geometry/geometry_test_util.h"

#include <limits>
#include <vector>

namespace {

CArray<WPt, WPt> Points(std::initializer_list<WPt> pts) {
  CArray<WPt, WPt> a;
  for (const WPt& p : pts) a.Add(p);
  return a;
}

std::vector<WPt> ToVector(const CArray<WPt, WPt>& a) { return {a.begin(), a.end()}; }

TEST(Bezier, ShortInputsAndSegments) {
  const WPt s0(0, 0), s1(0, 1), s2(1, 1), s3(1, 0), s4(1, -1), s5(2, -1), s6(2, 0);
  struct Case {
    const char* name;
    CArray<WPt, WPt> input;
    double step;
    std::vector<WPt> expected;
  };
  const Case cases[] = {
      {"empty", Points({}), 0.5, {}},
      {"three points are copied", Points({s0, s1, s2}), 0.5, {s0, s1, s2}},
      {"one segment", Points({s0, s1, s2, s3}), 0.5, {s0, WPt(0.5, 0.75), s3}},
      {"leftovers ignored", Points({s0, s1, s2, s3, s4, s5}), 0.5, {s0, WPt(0.5, 0.75), s3}},
      {"shared end point twice", Points({s0, s1, s2, s3, s4, s5, s6}), 0.5,
       {s0, WPt(0.5, 0.75), s3, s3, WPt(1.5, -0.75), s6}},
      {"quarter steps", Points({s0, s1, s2, s3}), 0.25,
       {s0, WPt(0.15625, 0.5625), WPt(0.5, 0.75), WPt(0.84375, 0.5625), s3}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CArray<WPt, WPt> input = c.input;
    CArray<WPt, WPt> output;
    CMathTools::CalculateBezierPoints(&input, output, c.step);
    EXPECT_EQ(ToVector(output), c.expected);
  }
}

TEST(Bezier, SummedParameterStopsShortOfTheEnd) {
  CArray<WPt, WPt> input = Points({WPt(0, 0), WPt(0, 1), WPt(1, 1), WPt(1, 0), WPt(1, -1), WPt(2, -1), WPt(2, 0)});
  CArray<WPt, WPt> output = Points({WPt(-7, -7)});  // kept; new points follow
  CMathTools::CalculateBezierPoints(&input, output, 0.1);
  ASSERT_EQ(output.GetSize(), 1 + 11 + 11);
  EXPECT_EQ(output[0], WPt(-7, -7));
  // Ten additions of 0.1 give 0.9999999999999999: the last point is near,
  // not at, the end point, and the next segment starts exactly at it.
  EXPECT_NE(output[11], WPt(1, 0));
  EXPECT_TRUE(cadtools::test::NearPoint(output[11], WPt(1, 0), 1e-15));
  EXPECT_EQ(output[12], WPt(1, 0));
}

TEST(Bezier, LongParameterListsKeepTheSameRule) {
  // 2^-10 sums exactly: 1025 points per segment, the last one at t = 1.
  CArray<WPt, WPt> input = Points({WPt(0, 0), WPt(0, 1), WPt(1, 1), WPt(1, 0), WPt(1, -1), WPt(2, -1), WPt(2, 0)});
  CArray<WPt, WPt> output;
  CMathTools::CalculateBezierPoints(&input, output, 1.0 / 1024);
  ASSERT_EQ(output.GetSize(), 2 * 1025);
  EXPECT_EQ(output[512], WPt(0.5, 0.75));
  EXPECT_EQ(output[1024], WPt(1, 0));
  EXPECT_EQ(output[1025], WPt(1, 0));
  EXPECT_EQ(output[1025 + 512], WPt(1.5, -0.75));
  EXPECT_EQ(output[2049], WPt(2, 0));
}

TEST(Bezier, GuardsAppendNothing) {
  CArray<WPt, WPt> input = Points({WPt(0, 0), WPt(0, 1), WPt(1, 1), WPt(1, 0)});
  for (const double step : {0.0, -0.5, std::numeric_limits<double>::quiet_NaN(), 1e-300}) {
    CArray<WPt, WPt> output;
    CMathTools::CalculateBezierPoints(&input, output, step);
    EXPECT_EQ(output.GetSize(), 0) << step;
  }
  CArray<WPt, WPt> output;
  CMathTools::CalculateBezierPoints(nullptr, output, 0.5);
  EXPECT_EQ(output.GetSize(), 0);

  // The input may be the output: only the points present at the call count.
  CMathTools::CalculateBezierPoints(&input, input, 0.5);
  ASSERT_EQ(input.GetSize(), 4 + 3);
  EXPECT_EQ(input[5], WPt(0.5, 0.75));
}

}  // namespace

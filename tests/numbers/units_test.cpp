// Expected doubles are compared exactly: every rounded result is the double
// nearest to a short decimal text, which the literal below is too.
#include "numbers_test_util.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr float kNaNf = std::numeric_limits<float>::quiet_NaN();
constexpr float kInff = std::numeric_limits<float>::infinity();

// The host's snapping table, millimetres to inches, written out again here
// so that a slip in the library's copy shows.
struct Pair {
  double mm, inch;
};
constexpr Pair kTable[] = {
    {0.08, 0.003}, {0.18, 0.007}, {0.25, 0.01}, {0.35, 0.014}, {0.5, 0.02},  {0.7, 0.028}, {1.0, 0.04},
    {1.25, 0.05},  {1.5, 0.06},   {2.0, 0.08},  {2.5, 0.1},    {3.0, 0.12},  {3.175, 0.125}, {3.5, 0.14},
    {4.0, 0.16},   {4.5, 0.18},   {5.0, 0.2},   {6.35, 0.25},  {10.0, 0.4},
};

TEST(Units, PlainConversions) {
  EXPECT_EQ(CMathTools::MM2Inch(25.4), 1.0);
  EXPECT_EQ(CMathTools::MM2Inch(50.8), 2.0);
  EXPECT_EQ(CMathTools::MM2Inch(7.0), 7.0 / 25.4);
  EXPECT_EQ(CMathTools::Inch2MM(1.0), 25.4);
  EXPECT_EQ(CMathTools::Inch2MM(0.5), 12.7);
  EXPECT_EQ(CMathTools::MM2Inchx2(645.16), 1.0);
  EXPECT_EQ(CMathTools::MM2Inchx2(100.0), 100.0 / 645.16);
  EXPECT_TRUE(std::isnan(CMathTools::MM2Inch(kNaN)));
  EXPECT_EQ(CMathTools::Inch2MM(-kInf), -kInf);
}

TEST(Units, MM2InchRoundSnapsEveryKey) {
  for (const Pair& p : kTable) {
    EXPECT_EQ(CMathTools::MM2InchRound(p.mm), p.inch) << p.mm;
    EXPECT_EQ(CMathTools::MM2InchRound(static_cast<float>(p.mm)), static_cast<float>(p.inch)) << p.mm;
    // Within 0.001 (strictly) on either side.
    EXPECT_EQ(CMathTools::MM2InchRound(p.mm + 0.0009), p.inch) << p.mm;
    EXPECT_EQ(CMathTools::MM2InchRound(p.mm - 0.0009), p.inch) << p.mm;
  }
}

TEST(Units, MM2InchRound) {
  struct Case {
    double mm, expected;
  };
  const Case cases[] = {
      {0.3505, 0.014},   // within tolerance of 0.35
      {0.352, 0.01386},  // no key: 0.352 / 25.4 to five decimals
      {7.0, 0.27559},  // no key
      {0.0, 0.0}, {25.4, 1.0}, {254.0, 10.0},
      {0.349, 0.01374},  // 0.35 - 0.349 is not below 0.001 in double
      {0.351, 0.01382},
      {-0.35, -0.01378},  // keys are positive
      {0.0001, 0.0},
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::MM2InchRound(c.mm), c.expected) << c.mm;
  EXPECT_FALSE(std::signbit(CMathTools::MM2InchRound(0.0001)));
  EXPECT_TRUE(std::signbit(CMathTools::MM2InchRound(-0.0001)));  // "-0.00000" reads back as -0.0
}

TEST(Units, MM2InchRoundFloat) {
  struct Case {
    float mm, expected;
  };
  const Case cases[] = {
      {0.35f, 0.014f}, {0.3505f, 0.014f}, {0.352f, 0.01386f}, {3.175f, 0.125f}, {7.0f, 0.27559f},
      // Keys are held as float, so near the tolerance the float overload
      // differs from the double one, and from double keys (the difference
      // itself is exact in float this close to a key):
      {0.349f, 0.014f},     // 0.35f - 0.349f = 0.00099998..., while 0.35 - 0.349 is not below 0.001
      {6.349f, 0.25f},      // 6.35f - 6.349f < 0.001, but 6.35 - 6.349f (as double) is not
      {0.179f, 0.00705f},   // 0.18f - 0.179f >= 0.001, but 0.18 - 0.179f (as double) is below
      {0.351f, 0.01382f},
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::MM2InchRound(c.mm), c.expected) << c.mm;
}

TEST(Units, Inch2MMRoundSnapsInTheHostsOrder) {
  // Every inch key but 0.003 and 0.125 gives its millimetres back.
  for (const Pair& p : kTable) {
    if (p.inch == 0.003 || p.inch == 0.125) continue;
    EXPECT_EQ(CMathTools::Inch2MMRound(p.inch), p.mm) << p.inch;
  }
  struct Case {
    double inch, expected;
  };
  const Case cases[] = {
      {0.03, 0.08},  // the 0.03 key: 0.08 mm, not 0.76
      {0.0305, 0.08}, {0.0295, 0.08},
      {0.003, 0.08},   // no key: 0.0762 rounded
      {0.0031, 0.08},  // no key: 0.07874 rounded
      {0.125, 3.17},   // 3.175 lies just below in binary
      {1.0, 25.4},     // no key
      {0.5, 12.7},     {0.0, 0.0},
      {0.012, 0.3},    // no key: 0.3048 rounded
      {-0.25, -6.35},  // no key: -6.35
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::Inch2MMRound(c.inch), c.expected) << c.inch;
  EXPECT_TRUE(std::signbit(CMathTools::Inch2MMRound(-0.0001)));  // "-0.00"
}

TEST(Units, Inch2MMRoundFloat) {
  struct Case {
    float inch, expected;
  };
  const Case cases[] = {
      {0.03f, 0.08f}, {0.003f, 0.08f}, {0.125f, 3.17f}, {0.25f, 6.35f}, {1.0f, 25.4f}, {0.1f, 2.5f}, {0.4f, 10.0f},
      // Keys held as float: 0.031f is 0.001 or more from 0.03f, though
      // less than 0.001 from the double 0.03; so no key: 0.7874 rounded.
      {0.031f, 0.79f},
  };
  for (const Case& c : cases) EXPECT_EQ(CMathTools::Inch2MMRound(c.inch), c.expected) << c.inch;
}

TEST(Units, RoundingKeepsNonFiniteValuesAndHugeOnes) {
  EXPECT_TRUE(std::isnan(CMathTools::MM2InchRound(kNaN)));
  EXPECT_TRUE(std::isnan(CMathTools::Inch2MMRound(kNaN)));
  EXPECT_TRUE(std::isnan(CMathTools::MM2InchRound(kNaNf)));
  EXPECT_TRUE(std::isnan(CMathTools::Inch2MMRound(kNaNf)));
  EXPECT_EQ(CMathTools::MM2InchRound(kInf), kInf);
  EXPECT_EQ(CMathTools::MM2InchRound(-kInf), -kInf);
  EXPECT_EQ(CMathTools::Inch2MMRound(kInf), kInf);
  EXPECT_EQ(CMathTools::Inch2MMRound(-kInff), -kInff);
  EXPECT_EQ(CMathTools::MM2InchRound(kInff), kInff);
  // The fixed text of a huge value is exact, so it reads back unchanged.
  EXPECT_EQ(CMathTools::MM2InchRound(DBL_MAX), DBL_MAX / 25.4);
  EXPECT_EQ(CMathTools::Inch2MMRound(-1e300), -1e300 * 25.4);
  EXPECT_EQ(CMathTools::Inch2MMRound(DBL_MAX), kInf);  // the product overflows
  // In float, the millimetres of FLT_MAX inches overflow on narrowing.
  EXPECT_EQ(CMathTools::Inch2MMRound(FLT_MAX), kInff);
  EXPECT_EQ(CMathTools::MM2InchRound(FLT_MAX), static_cast<float>(static_cast<double>(FLT_MAX) / 25.4));
  // Subnormals round to zero.
  EXPECT_EQ(CMathTools::MM2InchRound(4.9e-324), 0.0);
  EXPECT_EQ(CMathTools::Inch2MMRound(1e-40f), 0.0f);
}

TEST(Units, RoundDoubleKeepsTheHostsAsymmetry) {
  struct Case {
    double value;
    UINT decimals;
    double expected;
  };
  const Case cases[] = {
      {0.7, 0, -1.0},  // ip is 0, not > 0: down
      {0.5, 0, -1.0},      {0.05, 1, -0.1},     {0.4, 0, 0.0},       {-0.5, 0, -1.0},  {-2.5, 0, -3.0},
      {2.5, 0, 3.0},       {1.5, 0, 2.0},       {1.26, 1, 1.3},      {1.25, 1, 1.3},   {1.24, 1, 1.2},
      {-1.26, 1, -1.3},    {0.123456, 3, 0.123}, {0.9996, 3, 1.0},
      {0.0006, 3, -0.001},  // x = 0.6: ip 0: down
      {123.0, 2, 123.0},   {0.0, 5, 0.0},       {1.5, 308, 1.5},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::RoundDouble(c.value, c.decimals), c.expected) << c.value << ", " << c.decimals;
  }
}

TEST(Units, RoundDoubleWithAnInfiniteFactorIsNaN) {
  // 10^309 and beyond are infinite: x is infinite (or NaN for 0), and
  // ip / factor is NaN.
  for (const UINT decimals : {309U, 400U, 16777217U, UINT_MAX}) {
    EXPECT_TRUE(std::isnan(CMathTools::RoundDouble(1.5, decimals))) << decimals;
    EXPECT_TRUE(std::isnan(CMathTools::RoundDouble(0.0, decimals))) << decimals;
  }
  EXPECT_TRUE(std::isnan(CMathTools::RoundDouble(kNaN, 2)));
  EXPECT_EQ(CMathTools::RoundDouble(kInf, 2), kInf);
  EXPECT_EQ(CMathTools::RoundDouble(-kInf, 0), -kInf);
}

}  // namespace

#include "geometry/geometry_test_util.h"

#include <cstdint>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Tolerances, ZeroTests) {
  EXPECT_EQ(CMathTools::equal_0(1e-13), 1);
  EXPECT_EQ(CMathTools::equal_0(3e-13), 0);
  EXPECT_EQ(CMathTools::equal_0(-2.2e-13), 1);
  EXPECT_EQ(CMathTools::equal_0(2.220446049250313e-13), 0);  // strict
  EXPECT_EQ(CMathTools::equal_0(1e-4f), 1);
  EXPECT_EQ(CMathTools::equal_0(-1.1920928955078125e-4f), 0);
  EXPECT_EQ(CMathTools::equal_0(1.2e-4f), 0);
  EXPECT_EQ(CMathTools::equal_0(kNaN), 0);
}

TEST(Tolerances, FloatOverloadsSubtractInSinglePrecision) {
  // 1e-8f - 1.0f rounds to -1.0f in float; in double it is -0.99999999.
  EXPECT_EQ(CMathTools::equal_1(1.0f, 1e-8f, 0.999999995), 0);
  EXPECT_EQ(CMathTools::equal_1(1.0, 1e-8, 0.999999995), 1);
  EXPECT_EQ(CMathTools::Compare_1(1.0f, 1e-8f, 0.999999995), 1);
  EXPECT_EQ(CMathTools::Compare_1(1.0, 1e-8, 0.999999995), 0);
}

TEST(Tolerances, CompareAndEqual) {
  struct Case {
    double a, b, tol;
    int equal, compare;
  };
  const Case cases[] = {
      {1.0, 1.0005, 0.001, 1, 0}, {2.0, 1.0, 0.001, 0, 1},   {1.0, 2.0, 0.001, 0, -1},
      {1.0, 1.001, 0.001, 1, 0},  // 1.001 - 1 is 0.00099999999999989
      {1.0, 1.0011, 0.001, 0, -1}, {kNaN, 1.0, 0.001, 0, -1}, {-5.0, -5.0, 0.0, 0, -1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.a << " vs " << c.b);
    EXPECT_EQ(CMathTools::equal_1(c.a, c.b, c.tol), c.equal);
    EXPECT_EQ(CMathTools::Compare_1(c.a, c.b, c.tol), c.compare);
  }
  EXPECT_EQ(CMathTools::equal_2(WPt(0, 0), WPt(0.0009, -0.0009), 0.001), 1);
  EXPECT_EQ(CMathTools::equal_2(WPt(0, 0), WPt(0.0009, 0.001), 0.001), 0);  // per axis, strict
}

TEST(Tolerances, RoundTruncatesTowardZero) {
  struct Case {
    double v;
    LONG expected;
  };
  const Case cases[] = {
      {0.3, 0},    {2.97, 2},    {-2.97, -2},          {-0.5, 0},
      {0.99, 0},   {1.0, 1},     {-1.0, -1},           {123456.789, 123456},
      {2147483647.0, 2147483647}, {kNaN, std::numeric_limits<LONG>::min()},
      {1e10, std::numeric_limits<LONG>::min()}, {-1e300, std::numeric_limits<LONG>::min()},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::Round(c.v), c.expected) << c.v;
  }
}

TEST(Tolerances, FactorialsWrap) {
  struct Case {
    std::uint64_t n, expected;
  };
  const Case cases[] = {
      {0, 1}, {1, 1}, {5, 120}, {20, 2432902008176640000ULL},
      {21, 14197454024290336768ULL},  // 21! modulo 2^64
      {66, 0},
      {std::numeric_limits<std::uint64_t>::max(), 0},  // returns at once
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CMathTools::Factorial(c.n), c.expected) << c.n;
  }
  EXPECT_EQ(CMathTools::BinomialTheorem(5, 2), 10u);
  EXPECT_EQ(CMathTools::BinomialTheorem(20, 10), 184756u);
  EXPECT_EQ(CMathTools::BinomialTheorem(7, 0), 1u);
  EXPECT_EQ(CMathTools::BinomialTheorem(3, 5), 0u);  // k > n: wrapped divisor 0
}

}  // namespace

// Tolerance comparisons and the small integer helpers of CMathTools.
#include <cadtools/geometry/geometry_tools.h>

#include "geometry/constants.h"

#include <cmath>
#include <limits>

using cadtools::GeometryTools;
using namespace cadtools::geometry;

int GeometryTools::equal_0(float v) { return std::fabs(v) < static_cast<float>(kFloatZero); }

int GeometryTools::equal_0(double v) { return std::fabs(v) < kFine; }

int GeometryTools::equal_1(float a, float b, double tol) {
  const float difference = b - a;  // single precision, as the host subtracts
  return static_cast<double>(std::fabs(difference)) < tol;
}

int GeometryTools::equal_1(double a, double b, double tol) { return std::fabs(b - a) < tol; }

int GeometryTools::equal_2(WPt a, WPt b, double tol) {
  return std::fabs(b.x - a.x) < tol && std::fabs(b.y - a.y) < tol;
}

int GeometryTools::Compare_1(float a, float b, double tol) {
  if (equal_1(a, b, tol)) return 0;
  return a > b ? 1 : -1;
}

int GeometryTools::Compare_1(double a, double b, double tol) {
  if (equal_1(a, b, tol)) return 0;
  return a > b ? 1 : -1;
}

LONG GeometryTools::Round(double v) {
  const double tenths = v >= 0.0 ? std::floor(v / 0.1) * 0.1 : std::ceil(v / 0.1) * 0.1;
  // Out of range (or NaN) the x86 conversion yields the integer-indefinite
  // value; C++ leaves it undefined, so it is spelled out.
  if (!(tenths > -2147483649.0 && tenths < 2147483648.0)) {
    return std::numeric_limits<LONG>::min();
  }
  return static_cast<LONG>(tenths);
}

std::uint64_t GeometryTools::Factorial(std::uint64_t n) {
  // The host's recursion n * (n - 1)! in wrapping arithmetic, as a loop.
  // The product gains a factor 2 at every even step and is 0 modulo 2^64
  // from 66! on, where the loop stops: any n returns at once.
  std::uint64_t product = 1;
  for (std::uint64_t i = 2; i <= n && product != 0; ++i) {
    product *= i;
  }
  return product;
}

std::uint64_t GeometryTools::BinomialTheorem(std::uint64_t n, std::uint64_t k) {
  const std::uint64_t divisor = Factorial(k) * Factorial(n - k);
  // A wrapped divisor of 0 (k > n, or n > 20) would fault the division.
  return divisor == 0 ? 0 : Factorial(n) / divisor;
}

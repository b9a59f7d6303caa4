// Constants of the geometric functions, written exactly as the host's code
// has them; results must match it bit for bit.
#pragma once

namespace cadtools::geometry {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kHalfPi = 1.5707963267948966;
inline constexpr double kThreeHalfPi = 4.71238898038469;
inline constexpr double kTwoPi = 6.283185307179586;
// NormalizeRad's upper bound, 2pi - 1e-6.
inline constexpr double kRadUpper = 6.283184307179586;

inline constexpr double kCoarse = 0.001;                  // model units or radians
inline constexpr double kFine = 2.220446049250313e-13;    // 1000 x double epsilon
inline constexpr double kFloatZero = 1.1920928955078125e-4;  // 1000 x float epsilon

// The "none" distance: the starting minimum and the invalid-rectangle corner.
inline constexpr double kNoDistance = 999999999999999.0;

}  // namespace cadtools::geometry

// Bounds for the host's one-turn-at-a-time angle loops.
//
// The host normalises angles by adding or subtracting one turn at a time,
// and its results depend on that exact sequence of roundings, so ordinary
// angles go through the same loops here. An angle farther than a million
// turns away would keep such a loop busy for seconds (or forever, once a
// turn is below the angle's precision); it is first brought near with an
// exact fmod.
#pragma once

#include <cmath>

namespace cadtools::geometry {

inline constexpr double kLiteralTurns = 1e6;

// v reduced by whole turns when it is more than a million turns from 0.
inline double BringNearZero(double v, double turn) noexcept {
  return std::fabs(v) > turn * kLiteralTurns ? std::fmod(v, turn) : v;
}

// v raised by whole turns to within one turn of target (not above it), when it lies
// more than a million turns below it; the loop that follows adds the rest.
inline double BringNearBelow(double v, double target, double turn) noexcept {
  return target - v > turn * kLiteralTurns ? target - std::fmod(target - v, turn) : v;
}

}  // namespace cadtools::geometry

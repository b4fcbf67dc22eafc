#ifndef KIVFISHEYE_DEGREES_H
#define KIVFISHEYE_DEGREES_H

#include <cmath>

constexpr float kDegreesToRadians = 0.0174532924F;

/// In radians.
constexpr float kQuarterTurn = 1.57079637F;
constexpr float kHalfTurn = 3.14159274F;
constexpr float kFullTurn = 6.28318548F;

/// An equidistant lens whose rim, a quarter turn off its axis, has the radius 0.5.
constexpr float kRadiusPerRadian = 0.31830987F;
/// The same lens, with a rim at 1.
constexpr float kQuarterTurnsPerRadian = 0.63661975F;

/// The same direction from 0 up to 360. A tiny negative angle rounds to 360 itself; NaN and
/// infinity give NaN.
inline float WrapDegrees(float angle) {
    const float wrapped = std::fmod(angle, 360.0F);
    return wrapped < 0.0F ? wrapped + 360.0F : wrapped;
}

#endif

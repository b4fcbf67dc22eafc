#ifndef KIVFISHEYE_WALL_DIRECTION_H
#define KIVFISHEYE_WALL_DIRECTION_H

#include <cmath>

namespace wall {

/// Where a longitude theta and a latitude phi lie in the image plane, whose normal is the lens
/// axis: `x` and `y`, `r` from the axis, and `alpha` radians off it.
struct Direction {
    Direction(float cosTheta, float sinTheta, float cosPhi, float sinPhi)
        : x(cosPhi * sinTheta), y(sinPhi), r(std::sqrt(y * y + x * x)) {
        const float z = cosPhi * cosTheta;
        alpha = static_cast<float>(std::atan2(static_cast<double>(r), static_cast<double>(z)));
    }

    float x;
    float y;
    float r;
    float alpha;
};

}  // namespace wall

#endif

#ifndef KIVFISHEYE_FISHEYE_ALGO_COMMON_H
#define KIVFISHEYE_FISHEYE_ALGO_COMMON_H

#include <cstdint>

/// Which way up a list of points runs: a point at the angle t lies, for windows, its radius times
/// sin(t) above the centre where y grows downward, and for textures as much below it. x is the same
/// for both. A list is x and y of the first point, of the second, and so on; counts are points.
enum CoordinateOrientationType : std::uint32_t {
    CoordinateOrientationWindows = 0,
    CoordinateOrientationTexture = 1
};

/// The y of a point that lies `up` from the centre.
template <CoordinateOrientationType orientation, class T>
T TowardsTop(T center, T up) {
    return orientation == CoordinateOrientationWindows ? center - up : center + up;
}

/// Fills `points` with `count` points on an ellipse, evenly spaced by angle from its right. The last
/// one is a step short of the first. `points` has room for `count` rounded up to a multiple of 4. A
/// count below 1, or another orientation, writes nothing.
void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count, CoordinateOrientationType orientation);

#endif

#ifndef KIVFISHEYE_FISHEYE_ALGO_COMMON_H
#define KIVFISHEYE_FISHEYE_ALGO_COMMON_H

#include <cstddef>
#include <cstdint>

/// Which way up a list of points runs: the y of a point at the angle t is the centre's minus, for
/// windows, or plus, for textures, its radius times sin(t). x is the same for both. A list is x and
/// y of the first point, of the second, and so on; counts are points.
enum CoordinateOrientationType : std::uint32_t {
    CoordinateOrientationWindows = 0,
    CoordinateOrientationTexture = 1
};

/// Either coordinate of the centre of a list in fractions of a frame or of a texture.
constexpr float CenterOf(bool centerAtOrigin) {
    return centerAtOrigin ? 0.0F : 0.5F;
}

/// Where one of a list's four sides of `n` points each begins.
inline float* SideOf(float* points, std::ptrdiff_t n, int side) {
    return points + 2 * n * side;
}

/// The y of a point that lies `up` from the centre.
template <CoordinateOrientationType orientation, class T>
T TowardsTop(T center, T up) {
    return orientation == CoordinateOrientationWindows ? center - up : center + up;
}

/// Fills `points` with `count` points on an ellipse, evenly spaced by angle from its right. The
/// last one is a step short of the first. `points` has room for `count` rounded up to a multiple of
/// 4. A count below 1, or another orientation, writes nothing.
void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count, CoordinateOrientationType orientation);

#endif

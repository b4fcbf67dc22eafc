#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_C_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_C_H

#include <cstddef>

#include "FisheyeAlgoCommon.h"
#include "RunningAngle.h"
#include "ring/HalfRing.h"

/// Half rings in scalar arithmetic: one point of each arc at a time, both at the same angle.
namespace DownwardFisheyeAlgoNS::C {

template <CoordinateOrientationType orientation>
void calculate_outer_inner_ellipse_coordinate(float center, float outerRadiusX, float outerRadiusY,
                                              float innerRadiusX, float innerRadiusY, int count,
                                              float* coordinates, float startAngle) {
    const int half = count / 2;
    const auto step = AngleOf(ring::ArcStep(half));
    auto angle = AngleOf(startAngle);
    for (std::ptrdiff_t k = 0; k < half; ++k) {
        float* const outer = coordinates + 2 * k;
        float* const inner = coordinates + 2 * (count - 1 - k);
        outer[0] = angle.cosine * outerRadiusX + center;
        outer[1] = TowardsTop<orientation>(center, angle.sine * outerRadiusY);
        inner[0] = angle.cosine * innerRadiusX + center;
        inner[1] = TowardsTop<orientation>(center, angle.sine * innerRadiusY);
        angle.Advance(step);
    }
}

inline constexpr auto& CalculateDualPanoramaROICoordinate =
    ring::FillBothHalves<calculate_outer_inner_ellipse_coordinate<CoordinateOrientationWindows>,
                         calculate_outer_inner_ellipse_coordinate<CoordinateOrientationTexture>>;

}  // namespace DownwardFisheyeAlgoNS::C

#endif

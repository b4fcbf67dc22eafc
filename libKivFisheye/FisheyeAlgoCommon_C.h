#ifndef KIVFISHEYE_FISHEYE_ALGO_COMMON_C_H
#define KIVFISHEYE_FISHEYE_ALGO_COMMON_C_H

#include <cstddef>

#include "Degrees.h"
#include "FisheyeAlgoCommon.h"
#include "RunningAngle.h"

/// Outlines in scalar arithmetic: one point at a time.
namespace C {

template <CoordinateOrientationType orientation>
void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count) {
    const auto step = AngleOf(kFullTurn / static_cast<float>(count));
    RunningAngle<float> angle{1.0F, 0.0F};
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        points[2 * i] = angle.cosine * radiusX + centerX;
        points[2 * i + 1] = TowardsTop<orientation>(centerY, angle.sine * radiusY);
        angle.Advance(step);
    }
}

}  // namespace C

#endif

#ifndef KIVFISHEYE_FISHEYE_ALGO_COMMON_SSE2_H
#define KIVFISHEYE_FISHEYE_ALGO_COMMON_SSE2_H

#include <emmintrin.h>

#include <cstddef>

#include "Degrees.h"
#include "FisheyeAlgoCommon.h"
#include "RunningAngle.h"
#include "sse/sse4Floats.h"

/// Outlines in four lanes: lane k starts k steps from the right and all go on by four steps at once.
/// The list has room for whole groups of four points. Bits differ from the scalar form's from the
/// fifth point on, as roundings add up along other ways.
namespace SSE2 {

/// Four points, x and y by turns.
inline void StorePoints(sse::sse4Floats x, sse::sse4Floats y, float* points) {
    _mm_storeu_ps(points, _mm_unpacklo_ps(x.Lanes(), y.Lanes()));
    _mm_storeu_ps(points + 4, _mm_unpackhi_ps(x.Lanes(), y.Lanes()));
}

/// The angles of the first four points.
inline RunningAngle<sse::sse4Floats> FirstAngles(const RunningAngle<float>& step) {
    float cosines[4];
    float sines[4];
    RunningAngle<float> angle{1.0F, 0.0F};
    for (int lane = 0; lane < 4; ++lane) {
        cosines[lane] = angle.cosine;
        sines[lane] = angle.sine;
        angle.Advance(step);
    }
    return {sse::sse4Floats::Load(cosines), sse::sse4Floats::Load(sines)};
}

template <CoordinateOrientationType orientation>
void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count) {
    using sse::sse4Floats;
    const float step = kFullTurn / static_cast<float>(count);
    const auto fourSteps = AngleOf(step * 4.0F);
    const RunningAngle<sse4Floats> lanesStep{sse4Floats(fourSteps.cosine),
                                             sse4Floats(fourSteps.sine)};
    auto angle = FirstAngles(AngleOf(step));
    for (std::ptrdiff_t i = 0; i < count; i += sse4Floats::kLanes) {
        const sse4Floats up = sse4Floats(radiusY) * angle.sine;
        const sse4Floats y = orientation == CoordinateOrientationWindows ? sse4Floats(centerY) - up
                                                                         : sse4Floats(centerY) + up;
        StorePoints(sse4Floats(centerX) + sse4Floats(radiusX) * angle.cosine, y, points + 2 * i);
        angle.Advance(lanesStep);
    }
}

}  // namespace SSE2

#endif

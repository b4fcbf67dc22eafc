#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_SSE2_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_SSE2_H

#include <cstddef>

#include "FisheyeAlgoCommon.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "ring/HalfRing.h"
#include "sse/sseUtil.h"

/// Half rings in four lanes. The inner arc is walked from its far end, so that both arcs are
/// written forwards. Arcs are whole groups of four points: a count is a multiple of 8, or up to 3
/// points are written past the end of each arc.
namespace DownwardFisheyeAlgoNS::SSE2 {

template <CoordinateOrientationType orientation>
void StoreArcPoints(float center, float radiusX, float radiusY,
                    const RunningAngle<sse::sse4Floats>& angles, float* points) {
    using sse::sse4Floats;
    sse::StoreInterleaved(
        angles.cosine * sse4Floats(radiusX) + sse4Floats(center),
        TowardsTop<orientation>(sse4Floats(center), angles.sine * sse4Floats(radiusY)), points);
}

template <CoordinateOrientationType orientation>
void calculate_outer_inner_ellipse_coordinate(float center, float outerRadiusX, float outerRadiusY,
                                              float innerRadiusX, float innerRadiusY, int count,
                                              float* coordinates, float startAngle) {
    const std::ptrdiff_t half = count / 2;
    const float step = ring::ArcStep(count / 2);
    ::SSE2::RotatedAngles outer(startAngle, step);
    ::SSE2::RotatedAngles inner(startAngle + kHalfTurn, -step);
    for (std::ptrdiff_t k = 0; k < half; k += sse::sse4Floats::kLanes) {
        StoreArcPoints<orientation>(center, outerRadiusX, outerRadiusY, outer.angles,
                                    coordinates + 2 * k);
        StoreArcPoints<orientation>(center, innerRadiusX, innerRadiusY, inner.angles,
                                    coordinates + 2 * (half + k));
        outer.Advance();
        inner.Advance();
    }
}

inline constexpr auto& CalculateDualPanoramaROICoordinate =
    ring::FillBothHalves<calculate_outer_inner_ellipse_coordinate<CoordinateOrientationWindows>,
                         calculate_outer_inner_ellipse_coordinate<CoordinateOrientationTexture>>;

}  // namespace DownwardFisheyeAlgoNS::SSE2

#endif

#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_SSE2_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_SSE2_H

#include <cstddef>

#include "ColumnAngles.h"
#include "Degrees.h"
#include "FisheyeAlgoCommon.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "RunningAngle.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/sseMath.h"
#include "sse/sseUtil.h"

/// Grids and outlines of a wall panorama in four lanes, with the lanes' own sine and arctangent.
namespace FrontwardFisheyeAlgoNS::SSE2 {

using sse::sse4Floats;

/// Rows are rounded up to whole groups of four columns, whose last ones repeat the grid's last one.
inline void FillTextureCoordinates(int width, int height, float wallViewAngle, bool centerAtOrigin,
                                   float* coordinates) {
    const sse4Floats scale(kRadiusPerRadian);
    const ColumnAngleLanes<sse4Floats::kLanes> longitudes({-kQuarterTurn, kQuarterTurn}, width);
    const float* const sines = longitudes.Sines();
    const float* const cosines = longitudes.Cosines();
    const sse4Floats center(CenterOf(centerAtOrigin));
    const float halfAngle = wallViewAngle * kDegreesToRadians;
    auto latitude = AngleOf(-halfAngle);
    const auto step = AngleOf(StepOf({-halfAngle, halfAngle}, height));
    for (int row = 0; row < height; ++row) {
        const sse4Floats y(latitude.sine);
        for (unsigned long long i = 0; i < longitudes.Count(); i += sse4Floats::kLanes) {
            const sse4Floats x = sse4Floats(latitude.cosine) * sse4Floats::Load(sines + i);
            const sse4Floats z = sse4Floats(latitude.cosine) * sse4Floats::Load(cosines + i);
            const sse4Floats r = Sqrt(y * y + x * x);
            const sse4Floats k = sseAtan2(r, z) / r;
            sse::StoreInterleaved(center + (x * k) * scale, center + (y * k) * scale, coordinates);
            coordinates += std::ptrdiff_t{2} * sse4Floats::kLanes;
        }
        latitude.Advance(step);
    }
}

/// Opposite sides of the outline are each other's images through the centre, and are written
/// together.
template <CoordinateOrientationType orientation>
struct OppositePoints {
    /// The points of the directions (x, y, z) at `first`, and of (-x, -y, z) at `second`.
    void Store(sse4Floats x, sse4Floats y, sse4Floats z, float* first, float* second) const {
        const sse4Floats r = Sqrt(x * x + y * y);
        const sse4Floats k = sseAtan2(r, z) / r;
        const sse4Floats right = scaleX * (x * k);
        const sse4Floats up = scaleY * (y * k);
        sse::StoreInterleaved(centerX + right, TowardsTop<orientation>(centerY, up), first);
        sse::StoreInterleaved(centerX - right,
                              TowardsTop<orientation>(centerY, sse4Floats(0.0F) - up), second);
    }

    sse4Floats centerX;
    sse4Floats centerY;
    sse4Floats scaleX;
    sse4Floats scaleY;
};

/// Each side is whole groups of four points: `count` is a multiple of 16.
template <CoordinateOrientationType orientation>
void CalculatePanoramaBoundaryCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                         float wallViewAngle, float* points, int count) {
    /// The cosine of the float nearest a quarter turn.
    constexpr float kCosQuarterTurn = -4.3711388e-08F;
    const std::ptrdiff_t n = count / 4;
    if (n <= 0) {
        return;
    }
    const OppositePoints<orientation> opposite{sse4Floats(centerX), sse4Floats(centerY),
                                               sse4Floats(radiusX * kQuarterTurnsPerRadian),
                                               sse4Floats(radiusY * kQuarterTurnsPerRadian)};
    float* const left = SideOf(points, n, 0);
    float* const second = SideOf(points, n, 1);
    float* const right = SideOf(points, n, 2);
    float* const fourth = SideOf(points, n, 3);
    const float halfAngle = wallViewAngle * kDegreesToRadians;

    ::SSE2::SteppedAngles phi(-halfAngle, (halfAngle + halfAngle) / static_cast<float>(n));
    for (std::ptrdiff_t i = 0; i < n; i += sse4Floats::kLanes) {
        const sse4Floats cosPhi = sseCos(phi.angles);
        opposite.Store(sse4Floats(0.0F) - cosPhi, sseSin(phi.angles),
                       cosPhi * sse4Floats(kCosQuarterTurn), left + 2 * i, right + 2 * i);
        phi.Advance();
    }

    ::SSE2::SteppedAngles theta(-kQuarterTurn, kHalfTurn / static_cast<float>(n));
    const auto latitude = AngleOf(halfAngle);
    for (std::ptrdiff_t i = 0; i < n; i += sse4Floats::kLanes) {
        opposite.Store(
            sse4Floats(latitude.cosine) * sseSin(theta.angles), sse4Floats(latitude.sine),
            sse4Floats(latitude.cosine) * sseCos(theta.angles), second + 2 * i, fourth + 2 * i);
        theta.Advance();
    }
}

}  // namespace FrontwardFisheyeAlgoNS::SSE2

#endif

#ifndef KIVFISHEYE_HALF_RING_H
#define KIVFISHEYE_HALF_RING_H

#include "Degrees.h"
#include "FisheyeAlgoCommon.h"

namespace ring {

/// Fills a list with half a ring around (`center`, `center`): `count` / 2 points along its outer
/// arc from `startAngle`, in radians, through half a turn, and as many along its inner arc back.
using HalfRingFunction = void(float center, float outerRadiusX, float outerRadiusY,
                              float innerRadiusX, float innerRadiusY, int count, float* coordinates,
                              float startAngle);

/// From one of the `half` points of an arc to the next. Infinite, and not used, for a single one.
inline float ArcStep(int half) {
    return kHalfTurn / static_cast<float>(half - 1);
}

/// Fills both lists by a form's ways to fill one, or neither for another orientation.
template <HalfRingFunction& fillWindows, HalfRingFunction& fillTexture>
void FillBothHalves(float radiusX, float radiusY, float innerRadiusRatio, bool centerAtOrigin,
                    float panDegrees, float* firstCoordinates, int firstCount,
                    float* secondCoordinates, int secondCount,
                    CoordinateOrientationType orientation) {
    HalfRingFunction* const fill = orientation == CoordinateOrientationWindows   ? fillWindows
                                   : orientation == CoordinateOrientationTexture ? fillTexture
                                                                                 : nullptr;
    if (fill == nullptr) {
        return;
    }
    const float angle = panDegrees * kDegreesToRadians;
    const float center = CenterOf(centerAtOrigin);
    const float innerRadiusX = radiusX * innerRadiusRatio;
    const float innerRadiusY = radiusY * innerRadiusRatio;
    fill(center, radiusX, radiusY, innerRadiusX, innerRadiusY, firstCount, firstCoordinates, angle);
    fill(center, radiusX, radiusY, innerRadiusX, innerRadiusY, secondCount, secondCoordinates,
         angle + kHalfTurn);
}

}  // namespace ring

#endif

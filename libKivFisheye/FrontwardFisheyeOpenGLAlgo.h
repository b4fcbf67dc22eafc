#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_H

#include "KivFisheyeExport.h"

/// The panorama of a wall camera that the client's graphics processor draws: where each vertex of a
/// grid lies on the lens image. Coordinates, memory and threads are as `UpwardFisheyeOpenGLAlgo.h`
/// has them.
namespace FrontwardFisheyeAlgoNS {

/// Fills a grid of `width` columns and `height` rows. Columns are longitudes from 90 degrees to the
/// left of the lens axis to 90 degrees to the right of it, rows latitudes from `wallViewAngle`
/// degrees above the horizon to as much below, both evenly. A vertex exactly on the lens axis,
/// which a grid of odd sides may have, is NaN.
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                                       bool centerAtOrigin, float* coordinates);

/// The scalar form of the function above, which chooses by the processor: its rows are never
/// padded, and its list may lie anywhere.
namespace C {
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                                       bool centerAtOrigin, float* coordinates);
}  // namespace C

#if defined(__x86_64__)
/// The form of the function above in four lanes. Its arctangent is good to 0.0029 radians, so it
/// differs from the scalar form by up to 0.002.
namespace SSE2 {
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                                       bool centerAtOrigin, float* coordinates);
}  // namespace SSE2
#endif

}  // namespace FrontwardFisheyeAlgoNS

#endif

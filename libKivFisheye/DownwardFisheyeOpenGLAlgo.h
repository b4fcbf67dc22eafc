#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_OPENGL_ALGO_H

#include "KivFisheyeExport.h"

/// Panoramas of a ceiling camera that the client's graphics processor draws: where each vertex of a
/// grid lies on the lens image.
///
/// Grids, coordinates, memory and threads are as `UpwardFisheyeOpenGLAlgo.h` has them, but for the
/// order of the vertices: rows run from the rim to the inner edge of the ring, and columns from the
/// right of the lens by way of its bottom back to the right, those of a dual panorama from its left
/// by way of its top to its right.
namespace DownwardFisheyeAlgoNS {

/// Fills the grid of a full panorama.
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int columns, int rows,
                                                       float innerRadiusRatio, bool centerAtOrigin,
                                                       float* coordinates);

/// Fills the two grids of a dual panorama, one behind the other: half a turn each, and the second
/// one is what lies opposite. Both have all the radii, each in its own number of rows.
KIVFISHEYE_API void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst,
                                                           int rowsSecond, float innerRadiusRatio,
                                                           bool centerAtOrigin, float* coordinates);

/// The scalar form of the functions above, which choose by the processor: its rows are never
/// padded, and its list may lie anywhere.
namespace C {
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int columns, int rows,
                                                       float innerRadiusRatio, bool centerAtOrigin,
                                                       float* coordinates);
KIVFISHEYE_API void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst,
                                                           int rowsSecond, float innerRadiusRatio,
                                                           bool centerAtOrigin, float* coordinates);
}  // namespace C

#if defined(__x86_64__)
/// The form of the functions above in four lanes.
namespace SSE2 {
KIVFISHEYE_API void CalculatePanoramaTextureCoordinate(int columns, int rows,
                                                       float innerRadiusRatio, bool centerAtOrigin,
                                                       float* coordinates);
KIVFISHEYE_API void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst,
                                                           int rowsSecond, float innerRadiusRatio,
                                                           bool centerAtOrigin, float* coordinates);
}  // namespace SSE2
#endif

}  // namespace DownwardFisheyeAlgoNS

#endif

#ifndef KIVFISHEYE_UPWARD_FISHEYE_OPENGL_ALGO_H
#define KIVFISHEYE_UPWARD_FISHEYE_OPENGL_ALGO_H

#include "KivFisheyeExport.h"

/// Panoramas of a table camera that the client's graphics processor draws: where each vertex of a
/// grid lies on the lens image.
///
/// A grid is drawn as a flat rectangle with the fisheye picture as its texture. Coordinates are u
/// and v by turns, row by row, for a lens circle that fills the frame: u runs from 0 at the left
/// to 1 at the right and v from 0 at the top to 1 at the bottom, or both from -0.5 to 0.5 with
/// `centerAtOrigin`. A lens that fills another part of the frame is the client's to fit: with the
/// centre at the origin a vertex lies at 0.5 + 2 * `radiusX` * u and 0.5 + 2 * `radiusY` * v of the
/// frame.
///
/// As in outlines, 0 and 1 are the middles of the frame's first and last pixel; a texture has them
/// at its edges. On a side of n pixels the place f of the frame is (f * (n - 1) + 0.5) / n of the
/// texture: there it holds what `Process` shows. Taken for the texture's own, f is up to half a
/// pixel off, most at the edges.
///
/// `innerRadiusRatio` is that of `DewarpParams`. Rows are evenly spaced in radius, from the inner
/// edge of the ring to the rim, and columns in angle, from the right of the lens by way of its top
/// back to the right. The first and the last column are the same place, so that the seam is closed.
///
/// `coordinates` is the caller's, lies at a multiple of 16 bytes, and has room for two floats for
/// each vertex, rows counted as if their columns were rounded up to a multiple of 4. Pass such a
/// multiple: with others the vector form pads each row to it, and the scalar one does not. Sizes
/// below 1 write nothing. All functions may run on any thread at any time, and throw
/// `std::bad_alloc` when memory runs out.
namespace UpwardFisheyeAlgoNS {

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

}  // namespace UpwardFisheyeAlgoNS

#endif

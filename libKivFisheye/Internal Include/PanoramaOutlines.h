#ifndef KIVFISHEYE_PANORAMA_OUTLINES_H
#define KIVFISHEYE_PANORAMA_OUTLINES_H

#include "FisheyeAlgoCommon.h"

// Where panoramas lie on the fisheye frame. Points are in fractions of the frame, around (0.5, 0.5)
// or, with `centerAtOrigin`, around (0, 0); `radiusX` and `radiusY` are the lens ellipse. The
// caller owns all lists; another orientation leaves them alone. Any thread may call at any time.

/// The ring of a ceiling or a table camera.
namespace DownwardFisheyeAlgoNS {

/// Fills both lists with the ellipses that bound the ring, as `CalculateEllipseCoordinate` does.
void CalculatePanoramaBoundaryCoordinate(float radiusX, float radiusY, float innerRadiusRatio,
                                         bool centerAtOrigin, float* innerCoordinates,
                                         int innerCount, float* outerCoordinates, int outerCount,
                                         CoordinateOrientationType orientation);

using DualOutlineFunction = void(float radiusX, float radiusY, float innerRadiusRatio,
                                 bool centerAtOrigin, float panDegrees, float* firstCoordinates,
                                 int firstCount, float* secondCoordinates, int secondCount,
                                 CoordinateOrientationType orientation);

/// Fills both lists with the halves of the ring that the halves of a dual panorama show: first the
/// outer arc, half a turn from `panDegrees` on, then the inner arc back to it. Counts are multiples
/// of 8, and lists lie at multiples of 16 bytes.
DualOutlineFunction CalculateDualPanoramaROICoordinate;

}  // namespace DownwardFisheyeAlgoNS

/// The view of a wall camera.
namespace FrontwardFisheyeAlgoNS {

/// Fills `points` with the outline of what a panorama shows: a quarter of them along each of its
/// sides, from the left one on. `wallViewAngle` is in degrees. `count` is a multiple of 16, and
/// `points` lies at a multiple of 16 bytes. Both orientations give windows coordinates: clients
/// rely on it.
void CalculatePanoramaBoundaryCoordinate(float radiusX, float radiusY, float wallViewAngle,
                                         bool centerAtOrigin, float* points, int count,
                                         CoordinateOrientationType orientation);

}  // namespace FrontwardFisheyeAlgoNS

#endif

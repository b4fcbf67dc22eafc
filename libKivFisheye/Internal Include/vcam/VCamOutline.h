#ifndef KIVFISHEYE_VCAM_OUTLINE_H
#define KIVFISHEYE_VCAM_OUTLINE_H

#include "FisheyeAlgoCommon.h"
#include "vcam/VCamJob.h"

namespace vcam {

/// The signature of the kernels. The centre is that of the lens in the caller's coordinates; the
/// other arguments are those of `VCamJob`.
using OutlineFunction = void(float centerX, float centerY, float radiusX, float radiusY, float eyeZ,
                             float fieldOfView, float aspect, float nearPlane,
                             const float (&matrix)[16], float* coordinates, int count);

/// The edges of the rectangle, each in `n` steps.
struct ViewEdges : ViewRectangle {
    ViewEdges(const ViewRectangle& view, int n)
        : ViewRectangle(view),
          stepX((right + right) / static_cast<float>(n)),
          stepY((top + top) / static_cast<float>(n)) {}

    float stepX;
    float stepY;
};

/// From the angle between a ray and the lens axis to the distance from the lens's centre, along
/// each axis of the frame, and the rim where that ends.
struct OutlineScale {
    OutlineScale(float rimX, float rimY, float eyeZ) : radiusX(rimX), radiusY(rimY) {
        const float scale = (eyeZ + 1.0F) * kRadiusPerRadian;
        x = (radiusX + radiusX) * scale;
        y = (radiusY + radiusY) * scale;
    }

    float radiusX;
    float radiusY;
    float x;
    float y;
};

}  // namespace vcam

namespace FisheyeVCamAlgoNS {

/// Traces on the fisheye frame what a virtual camera shows. Points are in fractions of the frame
/// around (0.5, 0.5) or, with `centerAtOrigin`, around (0, 0). A quarter of
/// the points lies along each edge of the view: the left one from its top, then bottom, right and
/// top. What the view shows beyond the rim of the lens is drawn along the rim. A ray along the lens
/// axis gives NaN.
///
/// `count` is a multiple of 16, `coordinates` lies at a multiple of 16 bytes, and the other
/// arguments are those of `vcam::VCamJob`. A count below 4, or another orientation, writes nothing.
void CalculateVCamROICoordinate(float radiusX, float radiusY, float eyeZ, float fieldOfView,
                                float aspect, float nearPlane, const float (&matrix)[16],
                                bool centerAtOrigin, float* coordinates, int count,
                                CoordinateOrientationType orientation);

}  // namespace FisheyeVCamAlgoNS

#endif

#ifndef KIVFISHEYE_VCAM_JOB_H
#define KIVFISHEYE_VCAM_JOB_H

#include <cmath>

#include "Degrees.h"
#include "FrameLimits.h"

namespace vcam {

/// One frame of a virtual camera: the frames' sizes in pixels and strides in bytes, the lens
/// ellipse as fractions of the source frame, and the camera. The eye stands on the lens axis,
/// `eyeZ` from the centre of a unit sphere, and looks through a rectangle `nearPlane` in front of
/// it, which is `aspect` times as wide as high and spans `fieldOfView` degrees from its bottom to
/// its top. `matrix` turns the rays; it is 4 by 4, column by column.
///
/// The lens is equidistant: a ray phi off its axis meets it at phi / pi from the centre, with the
/// rim, a quarter turn off, at 0.5. From an eye `eyeZ` away from the centre of the sphere a ray
/// theta off the axis is taken to have phi = (1 + eyeZ) * theta. That is exact at 0 and at 1, and a
/// smooth way between the two.
struct VCamJob {
    int sourceWidth;
    int sourceHeight;
    int sourceStride;
    const unsigned char* source;
    float radiusX;
    float radiusY;
    float eyeZ;
    float fieldOfView;
    float aspect;
    float nearPlane;
    const float (&matrix)[16];
    int targetWidth;
    int targetHeight;
    int targetStride;
    unsigned char* target;

    bool HasSource(int bytesPerPixel) const {
        return !IsEmptyFrame(sourceWidth, sourceHeight) &&
               IsAddressableSource(sourceWidth, sourceHeight, sourceStride, bytesPerPixel);
    }
    /// How many pixels of row `y` may be written.
    int PixelsInsideTarget(int y, int bytesPerPixel) const {
        return PixelsInsideFrame(targetWidth, targetHeight, targetStride, y, bytesPerPixel);
    }
    /// The same for the row with most room. The record of another pixel size may have less of it
    /// than the width says.
    int PixelsInsideWidestRow(int bytesPerPixel) const {
        return PixelsInsideTarget(0, bytesPerPixel);
    }
    /// Whether any pixel can be drawn. A frame whose stride wrapped around to 0 has room for none,
    /// and may claim any number of rows.
    bool HasPixels(int bytesPerPixel) const {
        return HasSource(bytesPerPixel) && PixelsInsideWidestRow(bytesPerPixel) > 0;
    }
};

/// The signature of the kernels.
using ConvertFunction = void(int sourceWidth, int sourceHeight, int sourceStride,
                             const unsigned char* source, float radiusX, float radiusY, float eyeZ,
                             float fieldOfView, float aspect, float nearPlane,
                             const float (&matrix)[16], int targetWidth, int targetHeight,
                             int targetStride, unsigned char* target);

/// Half the sides of the rectangle that the eye looks through.
struct ViewRectangle {
    ViewRectangle(float fieldOfView, float aspect, float nearPlane) {
        const float halfAngle = fieldOfView * 0.5F * kDegreesToRadians;
        top = static_cast<float>(double{nearPlane} * std::tan(double{halfAngle}));
        right = top * aspect;
    }

    float top;
    float right;
};

/// The rectangle as the output's grid. The steps lead from one pixel to the next and from one row
/// to the next; a side of one pixel has none.
struct ViewGrid : ViewRectangle {
    explicit ViewGrid(const VCamJob& job)
        : ViewRectangle(job.fieldOfView, job.aspect, job.nearPlane),
          stepX((right + right) / static_cast<float>(job.targetWidth - 1)),
          stepY((-top - top) / static_cast<float>(job.targetHeight - 1)) {}

    float stepX;
    float stepY;
};

}  // namespace vcam

#endif

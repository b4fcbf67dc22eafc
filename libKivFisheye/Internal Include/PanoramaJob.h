#ifndef KIVFISHEYE_PANORAMA_JOB_H
#define KIVFISHEYE_PANORAMA_JOB_H

#include "FrameLimits.h"

/// The frames of one panorama: sizes in pixels and strides in bytes.
struct PanoramaSizes {
    int srcWidth = 0;
    int srcHeight = 0;
    int srcStride = 0;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    int bitsPerPixel = 0;

    bool HasSource() const { return !IsEmptyFrame(srcWidth, srcHeight); }

    /// Whether a conversion copies any pixel. One that does not only clears its rows.
    bool HasPixels(int bytesPerPixel) const {
        return dstWidth > 0 && dstHeight > 0 && HasSource() &&
               IsAddressableSource(srcWidth, srcHeight, srcStride, bytesPerPixel);
    }
};

/// One conversion into a panorama, with the lens ellipse as fractions of the source frame. A new
/// one has no frames, and a lens that touches the source's edges.
struct PanoramaJob : PanoramaSizes {
    float radiusX = 0.5F;
    float radiusY = 0.5F;
};

#endif

#ifndef KIVFISHEYE_RING_JOB_H
#define KIVFISHEYE_RING_JOB_H

namespace ring {

/// One unrolling of a ring: the frames' sizes in pixels, their strides in bytes, the lens ellipse
/// as fractions of the source frame, and the part of the radius that is left out around the centre.
struct RingJob {
    int srcWidth;
    int srcHeight;
    int srcStride;
    int dstWidth;
    int dstHeight;
    int dstStride;
    int bitsPerPixel;
    float radiusX;
    float radiusY;
    float innerRadiusRatio;
};

}  // namespace ring

#endif

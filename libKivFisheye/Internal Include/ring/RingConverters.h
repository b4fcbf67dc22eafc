#ifndef KIVFISHEYE_RING_CONVERTERS_H
#define KIVFISHEYE_RING_CONVERTERS_H

#include "BestFit.h"
#include "KernelPointer.h"
#include "MemoryUtils.h"
#include "PanoramaTable.h"
#include "ring/RingJob.h"

// What the converters of a ceiling and of a table camera are made of.

namespace ring {

/// The signature of the direct kernels.
using ConvertFunction = void(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                             int dstWidth, int dstHeight, int dstStride, unsigned char* dst,
                             float radiusX, float radiusY, float innerRadiusRatio, float pan);

/// The signature of the table builders. A table knows nothing of the output's stride, so
/// `dstStride` is not used.
using BuildFunction = void(int srcWidth, int srcHeight, int srcStride, int dstWidth, int dstHeight,
                           int dstStride, float radiusX, float radiusY, float innerRadiusRatio,
                           CAlignedBufferT<int, 32>& table);

/// What a direct converter stores: no frame, and a lens that touches the frame's edges.
struct DirectConverter {
    RingJob job{0, 0, 0, 0, 0, 0, 0, 0.5F, 0.5F, 0.0F};

    void Convert(const KernelPointer<ConvertFunction>& kernel, float pan, const unsigned char* src,
                 unsigned char* dst) const {
        kernel(job.srcWidth, job.srcHeight, job.srcStride, src, job.dstWidth, job.dstHeight,
               job.dstStride, dst, job.radiusX, job.radiusY, job.innerRadiusRatio, pan);
    }
};

/// The ring along the axis of the lens ellipse on which it is deeper, as fractions of the frame's
/// side there. Pixels do not enter the choice, and a tie goes to the width.
struct Extent {
    Extent(float radiusX, float radiusY, float innerRadiusRatio) {
        const float k = 1.0F - innerRadiusRatio;
        const float depthX = k * radiusX;
        const float depthY = k * radiusY;
        alongWidth = depthX >= depthY;
        radius = alongWidth ? radiusX : radiusY;
        depth = alongWidth ? depthX : depthY;
    }

    bool IsNothing() const { return kNegligibleExtent >= depth; }

    bool alongWidth;
    float radius;
    float depth;
};

}  // namespace ring

#endif

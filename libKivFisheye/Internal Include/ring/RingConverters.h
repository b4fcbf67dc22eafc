#ifndef KIVFISHEYE_RING_CONVERTERS_H
#define KIVFISHEYE_RING_CONVERTERS_H

#include "PanoramaConverters.h"
#include "ring/RingJob.h"

namespace ring {

/// The signature of the direct kernels.
using ConvertFunction = void(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                             int dstWidth, int dstHeight, int dstStride, unsigned char* dst,
                             float radiusX, float radiusY, float innerRadiusRatio, float pan);

using DirectConverter = ::DirectConverter<RingJob, &RingJob::innerRadiusRatio>;

}  // namespace ring

#endif

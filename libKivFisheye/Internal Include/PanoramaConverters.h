#ifndef KIVFISHEYE_PANORAMA_CONVERTERS_H
#define KIVFISHEYE_PANORAMA_CONVERTERS_H

#include "KernelPointer.h"
#include "MemoryUtils.h"
#include "PanoramaTable.h"

// What the exported converters are made of. Each converter's `Impl` derives from one of these and
// adds the pointers to its kernels.

/// The signature of the table builders. The last of the lens parameters is `innerRadiusRatio` for a
/// ring and `wallViewAngle` for a wall. A table knows nothing of the output's stride, so
/// `dstStride` is not used.
using BuildFunction = void(int srcWidth, int srcHeight, int srcStride, int dstWidth, int dstHeight,
                           int dstStride, float radiusX, float radiusY, float shape,
                           CAlignedBufferT<int, 32>& table);

/// A converter that evaluates the mapping for every frame: it stores the job, and `shape`, the lens
/// parameter that the mount adds to it.
template <class Job, float Job::*shape>
struct DirectConverter {
    Job job;

    void Init(const PanoramaJob& frames, float newShape) {
        static_cast<PanoramaJob&>(job) = frames;
        job.*shape = newShape;
    }

    /// `pan` for the mounts that turn, nothing for a wall.
    template <class Signature, class... Pan>
    void Convert(const KernelPointer<Signature>& kernel, const unsigned char* src,
                 unsigned char* dst, Pan... pan) const {
        kernel(job.srcWidth, job.srcHeight, job.srcStride, src, job.dstWidth, job.dstHeight,
               job.dstStride, dst, job.radiusX, job.radiusY, job.*shape, pan...);
    }
};

/// A converter by a table; `Impl` derives from it and holds the pointers to the builders.
template <class Impl>
struct TableConverter : PanoramaTable {
    void Init(const PanoramaJob& job, float shape) {
        const KernelPointer<BuildFunction>& build =
            job.bitsPerPixel == 24 ? Impl::_init_table_rgb24_impl : Impl::_init_table_rgb32_impl;
        Rebuild(job, [&](CAlignedBufferT<int, 32>& newTable) {
            build(job.srcWidth, job.srcHeight, job.srcStride, job.dstWidth, job.dstHeight,
                  job.dstStride, job.radiusX, job.radiusY, shape, newTable);
        });
    }
};

#endif

#ifndef KIVFISHEYE_TESTS_WALL_KERNEL_SET_H
#define KIVFISHEYE_TESTS_WALL_KERNEL_SET_H

#include "PanoramaConverters.h"
#include "support/KernelForm.h"

using WallConvertFunction = void(int srcWidth, int srcHeight, int srcStride,
                                 const unsigned char* src, int dstWidth, int dstHeight,
                                 int dstStride, unsigned char* dst, float radiusX, float radiusY,
                                 float wallViewAngle);

/// A wall's kernels of one form and pixel size. Eight lanes build tables and convert nothing.
struct WallKernelSet {
    WallConvertFunction* convert;
    BuildFunction* build;
};

WallKernelSet WallKernelsOf(KernelForm form, int bitsPerPixel);

#endif

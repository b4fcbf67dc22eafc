#ifndef KIVFISHEYE_TESTS_RING_KERNEL_SET_H
#define KIVFISHEYE_TESTS_RING_KERNEL_SET_H

#include "ring/RingConverters.h"
#include "support/KernelForm.h"
#include "support/RingModel.h"

/// A mount's kernels of one form and pixel size. Eight lanes build tables and convert nothing.
struct RingKernelSet {
    ring::ConvertFunction* convert;
    ring::ConvertFunction* convertDual;
    BuildFunction* build;
    BuildFunction* buildDual;
};

RingKernelSet RingKernelsOf(Mount mount, KernelForm form, int bitsPerPixel);

#endif

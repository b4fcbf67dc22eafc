#ifndef KIVFISHEYE_UPWARD_FISHEYE_ALGO_C_H
#define KIVFISHEYE_UPWARD_FISHEYE_ALGO_C_H

#include "ring/RingKernels_C.h"

/// The kernels of a table camera in scalar arithmetic.
namespace UpwardFisheyeAlgoNS::C {

using Mount = ring::TableMount;
namespace form = ring::C;

#include "ring/RingDirectKernels.inl"
#include "ring/RingTableKernels.inl"

}  // namespace UpwardFisheyeAlgoNS::C

#endif

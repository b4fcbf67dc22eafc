#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_C_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_C_H

#include "ring/RingKernels_C.h"

/// The kernels of a ceiling camera in scalar arithmetic.
namespace DownwardFisheyeAlgoNS::C {

using Mount = ring::CeilingMount;
namespace form = ring::C;

#include "ring/RingDirectKernels.inl"
#include "ring/RingTableKernels.inl"

}  // namespace DownwardFisheyeAlgoNS::C

#endif

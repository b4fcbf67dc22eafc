#ifndef KIVFISHEYE_UPWARD_FISHEYE_ALGO_SSE41_H
#define KIVFISHEYE_UPWARD_FISHEYE_ALGO_SSE41_H

#include "ring/RingKernels_SSE41.h"

/// The kernels of a table camera in four lanes.
namespace UpwardFisheyeAlgoNS::SSE41 {

using Mount = ring::TableMount;
namespace form = ring::SSE41;

#include "ring/RingDirectKernels.inl"
#include "ring/RingTableKernels.inl"

}  // namespace UpwardFisheyeAlgoNS::SSE41

#endif

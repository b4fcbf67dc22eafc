#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_SSE41_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_SSE41_H

#include "ring/RingKernels_SSE41.h"

/// The kernels of a ceiling camera in four lanes.
namespace DownwardFisheyeAlgoNS::SSE41 {

using Mount = ring::CeilingMount;
namespace form = ring::SSE41;

#include "ring/RingDirectKernels.inl"
#include "ring/RingTableKernels.inl"

}  // namespace DownwardFisheyeAlgoNS::SSE41

#endif

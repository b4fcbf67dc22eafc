#ifndef KIVFISHEYE_UPWARD_FISHEYE_ALGO_AVX_H
#define KIVFISHEYE_UPWARD_FISHEYE_ALGO_AVX_H

#include "ring/RingKernels_AVX.h"

/// The builders of tables of a table camera in eight lanes.
namespace UpwardFisheyeAlgoNS::AVX {

using Mount = ring::TableMount;
namespace form = ring::AVX;

#include "ring/RingTableKernels.inl"

}  // namespace UpwardFisheyeAlgoNS::AVX

#endif

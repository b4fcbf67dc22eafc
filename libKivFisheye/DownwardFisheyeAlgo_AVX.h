#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_AVX_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_AVX_H

#include "ring/RingKernels_AVX.h"

/// The builders of tables of a ceiling camera in eight lanes.
namespace DownwardFisheyeAlgoNS::AVX {

using Mount = ring::CeilingMount;
namespace form = ring::AVX;

#include "ring/RingTableKernels.inl"

}  // namespace DownwardFisheyeAlgoNS::AVX

#endif

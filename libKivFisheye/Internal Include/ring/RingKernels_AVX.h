#ifndef KIVFISHEYE_RING_KERNELS_AVX_H
#define KIVFISHEYE_RING_KERNELS_AVX_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "Degrees.h"
#include "MemoryUtils.h"
#include "OutputRows.h"
#include "PanoramaWalk.h"
#include "Pixel.h"
#include "SourceLanes.h"
#include "TargetRegion.h"
#include "ring/RingJob.h"
#include "ring/RingMount.h"
#include "ring/RowRadii.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/PixelRounding.h"
#include "sse/avxMath.h"

KIVFISHEYE_TARGET_BEGIN("avx")

/// The unrolling of the ring in eight lanes; offsets are formed in four. A position is rounded by
/// adding one half and truncating. Any width is served: what is left of the last group is computed
/// and not stored.
namespace ring::AVX {

using Floats = sse::AVX::avx8Floats;
using Mask = sse::AVX::avx8Mask;
using sse::AVX::LaneGroups;

#include "ring/RingLanes.inl"

}  // namespace ring::AVX

KIVFISHEYE_TARGET_END

#endif

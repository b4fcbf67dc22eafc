#ifndef KIVFISHEYE_RING_KERNELS_SSE41_H
#define KIVFISHEYE_RING_KERNELS_SSE41_H

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
#include "sse/sseMath.h"

KIVFISHEYE_TARGET_BEGIN("sse4.1")

/// The unrolling of the ring in four lanes. A position is rounded to the nearest pixel, ties to the
/// even one. Any width is served: what is left of the last group is computed and not stored.
namespace ring::SSE41 {

using Floats = sse::sse4Floats;
using Mask = sse::sseMask;
using sse::LaneGroups;

#include "ring/RingLanes.inl"

#include "PanoramaCopyLanes.inl"
#include "ring/RingConversions.inl"

}  // namespace ring::SSE41

KIVFISHEYE_TARGET_END

#endif

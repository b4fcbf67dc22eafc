#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_AVX_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_AVX_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "MemoryUtils.h"
#include "OutputRows.h"
#include "PanoramaWalk.h"
#include "Pixel.h"
#include "SourceLanes.h"
#include "TargetRegion.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/PixelRounding.h"
#include "sse/avxMath.h"
#include "wall/WallRows.h"

KIVFISHEYE_TARGET_BEGIN("avx")

/// The tables of a wall camera in eight lanes; offsets are formed in four. A position is rounded by
/// adding one half and truncating. Any width is served: what is left of the last group is computed
/// and not stored.
namespace FrontwardFisheyeAlgoNS::AVX {

using Floats = sse::AVX::avx8Floats;
using Mask = sse::AVX::avx8Mask;
using sse::AVX::LaneGroups;

#include "wall/WallLanes.inl"

}  // namespace FrontwardFisheyeAlgoNS::AVX

KIVFISHEYE_TARGET_END

#endif

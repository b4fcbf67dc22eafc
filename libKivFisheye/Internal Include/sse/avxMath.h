#ifndef KIVFISHEYE_AVX_MATH_H
#define KIVFISHEYE_AVX_MATH_H

#include "TargetRegion.h"
#include "sse/avx8Floats.h"

// The functions of sseMath.h for eight lanes.

KIVFISHEYE_TARGET_BEGIN("avx")
namespace sse::AVX {

#include "sse/LaneGroups.inl"
#include "sse/sseFormulas.inl"

}  // namespace sse::AVX
KIVFISHEYE_TARGET_END

#endif

#ifndef KIVFISHEYE_SSE_MATH_H
#define KIVFISHEYE_SSE_MATH_H

#include "sse/sse4Floats.h"
#include "sse/sse4Ints.h"
#include "sse/sseMask.h"

// Sine, cosine, arctangent and arccosine of four lanes.

namespace sse {

#include "sse/LaneGroups.inl"
#include "sse/sseFormulas.inl"

}  // namespace sse

#endif

#ifndef KIVFISHEYE_SSE_UTIL_H
#define KIVFISHEYE_SSE_UTIL_H

#include "sse/sse4Floats.h"

namespace sse {

/// (0, 1, 2, 3)
[[gnu::always_inline]] inline sse4Floats LaneIndices() {
    return sse4Floats(_mm_setr_ps(0.0F, 1.0F, 2.0F, 3.0F));
}

/// Stores four points as x0 y0 x1 y1 x2 y2 x3 y3.
[[gnu::always_inline]] inline void StoreInterleaved(sse4Floats x, sse4Floats y, float* points) {
    _mm_storeu_ps(points, _mm_unpacklo_ps(x.Lanes(), y.Lanes()));
    _mm_storeu_ps(points + 4, _mm_unpackhi_ps(x.Lanes(), y.Lanes()));
}

}  // namespace sse

#endif

#ifndef KIVFISHEYE_PIXEL_ROUNDING_H
#define KIVFISHEYE_PIXEL_ROUNDING_H

#include "TargetRegion.h"
#include "sse/avx8Floats.h"
#include "sse/sse4Floats.h"
#include "sse/sse4Ints.h"

// Which source pixel a position in pixels becomes, in each vector form. Scalar forms cut the
// fraction off.

namespace sse {

/// In four lanes the nearest one, and half way the even one.
[[gnu::always_inline]] inline sse4Ints ToPixels(sse4Floats position) {
    return RoundToInts(position);
}

}  // namespace sse

KIVFISHEYE_TARGET_BEGIN("avx")
namespace sse::AVX {

/// In eight lanes the nearest one, and half way the upper one.
[[gnu::always_inline]] inline avx8Ints ToPixels(avx8Floats position) {
    return TruncateToInts(position + avx8Floats::FromBits(kHalf));
}

}  // namespace sse::AVX
KIVFISHEYE_TARGET_END

#endif

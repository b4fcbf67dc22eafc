#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_SSE41_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_SSE41_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "FrontwardFisheyeAlgo_C.h"
#include "MemoryUtils.h"
#include "OutputRows.h"
#include "PanoramaWalk.h"
#include "Pixel.h"
#include "SourceLanes.h"
#include "TargetRegion.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/PixelRounding.h"
#include "sse/sseMath.h"
#include "wall/WallRows.h"

KIVFISHEYE_TARGET_BEGIN("sse4.1")

/// The kernels of a wall camera in four lanes. A position is rounded to the nearest pixel, ties to
/// the even one. Any width is served: what is left of the last group is computed and not stored.
namespace FrontwardFisheyeAlgoNS::SSE41 {

using Floats = sse::sse4Floats;
using Mask = sse::sseMask;
using sse::LaneGroups;

#include "wall/WallLanes.inl"

#include "PanoramaCopyLanes.inl"

/// A direct conversion takes the processor's estimate of 1 / r.
struct DirectProducts {
    [[gnu::always_inline]] static FloatGroups Scaled(const FloatGroups& x, const FloatGroups& r,
                                                     const FloatGroups& alpha,
                                                     const FloatGroups& k) {
        return k * ((x * Rcp(r)) * alpha);
    }
};

#include "wall/WallConversion.inl"

/// The scalar conversion: a table leads to scattered pixels, and without a gather instruction lanes
/// have nothing to add.
template <int outOfFrame>
void CvtPanoramaRGB32ByFisheyeAddrOffsetTable(const unsigned char* src, int dstWidth, int dstHeight,
                                              int dstStride, unsigned char* dst,
                                              const CAlignedBufferT<int, 32>& table) {
    C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<outOfFrame>(src, dstWidth, dstHeight, dstStride,
                                                            dst, table);
}

}  // namespace FrontwardFisheyeAlgoNS::SSE41

KIVFISHEYE_TARGET_END

#endif

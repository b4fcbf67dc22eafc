#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_SSE41_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_SSE41_H

#include "FrontwardFisheyeAlgo_C.h"

namespace FrontwardFisheyeAlgoNS::SSE41 {

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

#endif

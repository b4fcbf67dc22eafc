#ifndef KIVFISHEYE_UPWARD_FISHEYE_ALGO_C_H
#define KIVFISHEYE_UPWARD_FISHEYE_ALGO_C_H

#include "ring/RingKernels_C.h"

/// The kernels of a table camera in scalar arithmetic.
namespace UpwardFisheyeAlgoNS::C {

template <unsigned long bits>
void CvtPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                    int dstWidth, int dstHeight, int dstStride, unsigned char* dst, float radiusX,
                    float radiusY, float innerRadiusRatio, float pan) {
    ring::C::ConvertFull<ring::TableMount, bits>(
        {srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}, radiusX,
         radiusY, innerRadiusRatio},
        src, dst, pan);
}

template <int bits, int outOfFrame>
void InitPanoramaCoorToFisheyeAddrOffsetTableRGB(int srcWidth, int srcHeight, int srcStride,
                                                 int dstWidth, int dstHeight, int dstStride,
                                                 float radiusX, float radiusY,
                                                 float innerRadiusRatio,
                                                 CAlignedBufferT<int, 32>& table) {
    ring::C::BuildFullTable<ring::TableMount, bits, outOfFrame>(
        {srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}, radiusX,
         radiusY, innerRadiusRatio},
        table);
}

}  // namespace UpwardFisheyeAlgoNS::C

#endif

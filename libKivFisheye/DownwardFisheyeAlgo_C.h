#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_C_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_C_H

#include "ring/RingKernels_C.h"

/// The kernels of a ceiling camera in scalar arithmetic.
namespace DownwardFisheyeAlgoNS::C {

template <unsigned long bits>
void CvtPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                    int dstWidth, int dstHeight, int dstStride, unsigned char* dst, float radiusX,
                    float radiusY, float innerRadiusRatio, float pan) {
    ring::C::ConvertFull<ring::CeilingMount, bits>(
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
    ring::C::BuildFullTable<ring::CeilingMount, bits, outOfFrame>(
        {srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}, radiusX,
         radiusY, innerRadiusRatio},
        table);
}

}  // namespace DownwardFisheyeAlgoNS::C

#endif

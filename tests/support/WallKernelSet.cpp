#include "support/WallKernelSet.h"

#include "FrontwardFisheyeAlgo_C.h"
#include "support/PanoramaFrames.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeAlgo_AVX.h"
#include "FrontwardFisheyeAlgo_SSE41.h"
#endif

namespace {

namespace kernels = FrontwardFisheyeAlgoNS;

template <int bits>
WallKernelSet KernelsOf([[maybe_unused]] KernelForm form) {
#if defined(__x86_64__)
    if (form == KernelForm::SSE41) {
        return {kernels::SSE41::CvtPanoramaRGB<bits>,
                kernels::SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>};
    }
    if (form == KernelForm::AVX) {
        return {nullptr,
                kernels::AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>};
    }
#endif
    return {kernels::C::CvtPanoramaRGB<bits>,
            kernels::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>};
}

}  // namespace

WallKernelSet WallKernelsOf(KernelForm form, int bitsPerPixel) {
    return bitsPerPixel == 24 ? KernelsOf<24>(form) : KernelsOf<32>(form);
}

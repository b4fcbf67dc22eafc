#include "PanoramaForms.h"

#include "FrontwardFisheyeAlgo_C.h"
#include "KernelPointer.h"
#include "UpwardFisheyeAlgo_C.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeAlgo_AVX.h"
#include "FrontwardFisheyeAlgo_SSE41.h"
#include "UpwardFisheyeAlgo_AVX.h"
#include "UpwardFisheyeAlgo_SSE41.h"
#endif

namespace {

constexpr int kBytes = 4;
constexpr float kRadius = 0.5F;
constexpr float kInnerRadiusRatio = 0.0F;
constexpr float kWallViewAngle = 45.0F;

template <auto& kernel>
void BuildRing(const PanoramaSize& size, CAlignedBufferT<int, 32>& table) {
    kernel(size.side, size.side, size.side * kBytes, size.width, size.height, size.width * kBytes,
           kRadius, kRadius, kInnerRadiusRatio, table);
}

template <auto& kernel>
void ConvertRing(const PanoramaSize& size, const unsigned char* src, unsigned char* dst) {
    kernel(size.side, size.side, size.side * kBytes, src, size.width, size.height,
           size.width * kBytes, dst, kRadius, kRadius, kInnerRadiusRatio, 0.0F);
}

template <auto& kernel>
void BuildWall(const PanoramaSize& size, CAlignedBufferT<int, 32>& table) {
    kernel(size.side, size.side, size.side * kBytes, size.width, size.height, size.width * kBytes,
           kRadius, kRadius, kWallViewAngle, table);
}

template <auto& kernel>
void ConvertWall(const PanoramaSize& size, const unsigned char* src, unsigned char* dst) {
    kernel(size.side, size.side, size.side * kBytes, src, size.width, size.height,
           size.width * kBytes, dst, kRadius, kRadius, kWallViewAngle);
}

}  // namespace

std::vector<PanoramaForm> PanoramaFormsOfProcessor() {
    namespace Ring = UpwardFisheyeAlgoNS;
    namespace Wall = FrontwardFisheyeAlgoNS;
    std::vector<PanoramaForm> forms{
        {"full", "C", BuildRing<Ring::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
         ConvertRing<Ring::C::CvtPanoramaRGB<32>>},
        {"dual", "C", BuildRing<Ring::C::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
         ConvertRing<Ring::C::CvtDualPanoramaRGB<32>>},
        {"wall", "C", BuildWall<Wall::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
         ConvertWall<Wall::C::CvtPanoramaRGB<32>>}};
#if defined(__x86_64__)
    const Form best = AvxSse41OrC(GetCpuInstructionSet());
    if (best >= Form::SSE41) {
        forms.push_back(
            {"full", "SSE41",
             BuildRing<Ring::SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
             ConvertRing<Ring::SSE41::CvtPanoramaRGB<32>>});
        forms.push_back(
            {"dual", "SSE41",
             BuildRing<Ring::SSE41::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
             ConvertRing<Ring::SSE41::CvtDualPanoramaRGB<32>>});
        forms.push_back(
            {"wall", "SSE41",
             BuildWall<Wall::SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
             ConvertWall<Wall::SSE41::CvtPanoramaRGB<32>>});
    }
    if (best >= Form::AVX) {
        forms.push_back({"full", "AVX",
                         BuildRing<Ring::AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
                         nullptr});
        forms.push_back(
            {"dual", "AVX",
             BuildRing<Ring::AVX::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
             nullptr});
        forms.push_back({"wall", "AVX",
                         BuildWall<Wall::AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>>,
                         nullptr});
    }
#endif
    return forms;
}

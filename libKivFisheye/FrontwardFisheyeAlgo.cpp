#include "FrontwardFisheyeAlgo.h"

#include <array>
#include <cmath>

#include "BestFit.h"
#include "Degrees.h"
#include "FrontwardFisheyeAlgo_C.h"
#include "PanoramaConverters.h"
#include "TruncateToInt.h"
#include "vcam/Aiming.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeAlgo_AVX.h"
#include "FrontwardFisheyeAlgo_SSE41.h"
#else
namespace FrontwardFisheyeAlgoNS {
namespace SSE41 = C;
namespace AVX = C;
}  // namespace FrontwardFisheyeAlgoNS
#endif

namespace FrontwardFisheyeAlgoNS {

namespace {

using ConvertFunction = void(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                             int dstWidth, int dstHeight, int dstStride, unsigned char* dst,
                             float radiusX, float radiusY, float wallViewAngle);

using ConvertByTableFunction = void(const unsigned char* src, int dstWidth, int dstHeight,
                                    int dstStride, unsigned char* dst,
                                    const CAlignedBufferT<int, 32>& table);

float BestFitWidth(int srcWidth, float radiusX) {
    return static_cast<float>(srcWidth) * (radiusX + radiusX);
}

/// The height of the lens image between the latitudes that the panorama reaches.
float BestFitHeight(int srcHeight, float radiusY, float wallViewAngle) {
    const float angle = wallViewAngle * kDegreesToRadians;
    // The angle itself, but for what rounding makes of it on this way, which decides pixels.
    const float latitude = std::atan2(std::sin(angle), std::cos(angle));
    const float half = std::fabs(static_cast<float>(srcHeight) * radiusY * std::sin(latitude));
    return half + half;
}

}  // namespace

struct CPanoramaSimpleConverter::Impl
    : DirectConverter<wall::WallJob, &wall::WallJob::wallViewAngle> {
    static ConvertFunction& _cvt_rgb24_dispatch;
    static ConvertFunction& _cvt_rgb32_dispatch;
    static KernelPointer<ConvertFunction> _cvt_rgb24_impl;
    static KernelPointer<ConvertFunction> _cvt_rgb32_impl;
};

struct CPanoramaConverter::Impl : TableConverter<Impl> {
    void ConvertRGB32(const unsigned char* src, unsigned char* dst);

    static BuildFunction& _init_table_rgb24_dispatch;
    static BuildFunction& _init_table_rgb32_dispatch;
    static ConvertByTableFunction& _cvt_rgb32_dispatch;
    static KernelPointer<BuildFunction> _init_table_rgb24_impl;
    static KernelPointer<BuildFunction> _init_table_rgb32_impl;
    static KernelPointer<ConvertByTableFunction> _cvt_rgb32_impl;
};

// clang-format off
ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<24>>, KernelIn<Form::SSE41, SSE41::CvtPanoramaRGB<24>>>;
ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<32>>, KernelIn<Form::SSE41, SSE41::CvtPanoramaRGB<32>>>;
KernelPointer<ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

BuildFunction& CPanoramaConverter::Impl::_init_table_rgb24_dispatch = FirstCallOf<_init_table_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>>;
BuildFunction& CPanoramaConverter::Impl::_init_table_rgb32_dispatch = FirstCallOf<_init_table_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>>;
ConvertByTableFunction& CPanoramaConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<OutOfFrame>>, KernelIn<Form::SSE41, SSE41::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<OutOfFrame>>>;
KernelPointer<BuildFunction> CPanoramaConverter::Impl::_init_table_rgb24_impl(_init_table_rgb24_dispatch);
KernelPointer<BuildFunction> CPanoramaConverter::Impl::_init_table_rgb32_impl(_init_table_rgb32_dispatch);
KernelPointer<ConvertByTableFunction> CPanoramaConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);
// clang-format on

CPanoramaSimpleConverter::CPanoramaSimpleConverter() : m_impl(new Impl) {}

CPanoramaSimpleConverter::~CPanoramaSimpleConverter() {
    delete m_impl;
}

void CPanoramaSimpleConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                                    int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                                    float radiusY, float wallViewAngle) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 wallViewAngle);
}

void CPanoramaSimpleConverter::CvtRGB24(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb24_impl, src, dst);
}

void CPanoramaSimpleConverter::CvtRGB32(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb32_impl, src, dst);
}

CPanoramaConverter::CPanoramaConverter() : m_impl(new Impl) {}

CPanoramaConverter::~CPanoramaConverter() {
    delete m_impl;
}

void CPanoramaConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                              int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                              float radiusY, float wallViewAngle) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 wallViewAngle);
}

void CPanoramaConverter::CvtRGB24(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert<24>(src, dst);
}

void CPanoramaConverter::CvtRGB32(const unsigned char* src, unsigned char* dst) {
    m_impl->ConvertRGB32(src, dst);
}

/// The kernel is told of nothing but a table, so it gets the pieces of rows in the order that suits
/// the caches, each as a table and a frame of one row, after the memory was asked for their lines.
/// A piece that may only be read could not be lent as a table: it is taken from the table itself.
void CPanoramaConverter::Impl::ConvertRGB32(const unsigned char* src, unsigned char* dst) {
    constexpr int kBytes = 4;
    MakeRowsBy<kBytes>(src, dst, dstHeight, std::array{TableRun{0, 0, dstWidth}},
                       [&](const int* entries, int count, unsigned char* pixels) {
                           const auto piece = CAlignedBufferT<int, 32>::Borrow(
                               table.data() + (entries - table.data()),
                               static_cast<unsigned long long>(count));
                           _cvt_rgb32_impl(src, count, 1, count * kBytes, pixels, piece);
                       });
}

void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                            float wallViewAngle, int& width, int& height) {
    width = RoundUpToEight(TruncateToInt(BestFitWidth(srcWidth, radiusX)));
    height = TruncateToInt(BestFitHeight(srcHeight, radiusY, wallViewAngle));
}

float GetBestFitPanoramaRatio(int srcWidth, int srcHeight, float radiusX, float radiusY,
                              float wallViewAngle) {
    const float height = BestFitHeight(srcHeight, radiusY, wallViewAngle);
    return height <= kNegligibleExtent ? 1.0F : BestFitWidth(srcWidth, radiusX) / height;
}

void GetModelViewMatrix(float pan, float tilt, float (&matrix)[16]) {
    const vcam::Turn p(pan);
    const vcam::Turn t(tilt);
    vcam::SetRotation({{p.cosine, -p.sine * t.sine, -p.sine * t.cosine},
                       {0.0F, t.cosine, -t.sine},
                       {p.sine, p.cosine * t.sine, p.cosine * t.cosine}},
                      matrix);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    const vcam::LensPoint point(radiusX, radiusY, x, y);
    return {point.x * 180.0F + -90.0F, point.y * -180.0F + 90.0F};
}

}  // namespace FrontwardFisheyeAlgoNS

#include "FrontwardFisheyeAlgo.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "BestFit.h"
#include "Degrees.h"
#include "FrontwardFisheyeAlgo_C.h"
#include "FrontwardFisheyeAlgo_SSE41.h"
#include "PanoramaConverters.h"
#include "TruncateToInt.h"
#include "vcam/Aiming.h"

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
    /// A wall's rows run through few source rows at a time: whole ones keep what they share in the
    /// caches.
    static TableTiles TilesFor(int width, int) { return TableTiles::WholeRows(width); }

    void ConvertRGB32(const unsigned char* src, unsigned char* dst);

    static BuildFunction& _init_table_rgb24_dispatch;
    static BuildFunction& _init_table_rgb32_dispatch;
    static ConvertByTableFunction& _cvt_rgb32_dispatch;
    static KernelPointer<BuildFunction> _init_table_rgb24_impl;
    static KernelPointer<BuildFunction> _init_table_rgb32_impl;
    static KernelPointer<ConvertByTableFunction> _cvt_rgb32_impl;
};

// clang-format off
ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<24>>>;
ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<32>>>;
KernelPointer<ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

BuildFunction& CPanoramaConverter::Impl::_init_table_rgb24_dispatch = FirstCallOf<_init_table_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>>;
BuildFunction& CPanoramaConverter::Impl::_init_table_rgb32_dispatch = FirstCallOf<_init_table_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>>;
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

/// The kernel is told of the table alone, so it gets a few rows of it at a time, and the memory is
/// asked for their lines before. Rows that overlap go in one call, which knows where the frame
/// ends.
void CPanoramaConverter::Impl::ConvertRGB32(const unsigned char* src, unsigned char* dst) {
    constexpr int kBytes = 4;
    constexpr int kRows = 4;
    if (!Serves(kBytes)) {
        return;
    }
    if (View().HasOverlappingRows(kBytes)) {
        _cvt_rgb32_impl(src, dstWidth, dstHeight, dstStride, dst, table);
        return;
    }
    FirstTouchLines::Walk ahead(lines, src);
    for (int top = 0, rows = 0; top < dstHeight; top += rows) {
        rows = std::min(dstHeight - top, kRows);
        for (int y = 0; y < rows; ++y) {
            ahead.NextRow();
        }
        const auto part = CAlignedBufferT<int, 32>::Borrow(
            table.data() + std::ptrdiff_t{top} * dstWidth,
            static_cast<unsigned long long>(rows) * static_cast<unsigned long long>(dstWidth));
        _cvt_rgb32_impl(src, dstWidth, rows, dstStride, dst + std::ptrdiff_t{top} * dstStride,
                        part);
    }
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

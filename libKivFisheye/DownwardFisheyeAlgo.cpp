#include "DownwardFisheyeAlgo.h"

#include "DownwardFisheyeAlgo_C.h"
#include "ring/RingConverters.h"
#include "vcam/Aiming.h"

namespace DownwardFisheyeAlgoNS {

struct CPanoramaSimpleConverter::Impl : ring::DirectConverter {
    static ring::ConvertFunction& _cvt_rgb24_dispatch;
    static ring::ConvertFunction& _cvt_rgb32_dispatch;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb24_impl;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb32_impl;
};

struct CPanoramaConverter::Impl : PanoramaTable {
    static ring::BuildFunction& _init_table_rgb24_dispatch;
    static ring::BuildFunction& _init_table_rgb32_dispatch;
    static KernelPointer<ring::BuildFunction> _init_table_rgb24_impl;
    static KernelPointer<ring::BuildFunction> _init_table_rgb32_impl;
};

// clang-format off
ring::ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<24>>>;
ring::ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<32>>>;
KernelPointer<ring::ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<ring::ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

ring::BuildFunction& CPanoramaConverter::Impl::_init_table_rgb24_dispatch = FirstCallOf<_init_table_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>>;
ring::BuildFunction& CPanoramaConverter::Impl::_init_table_rgb32_dispatch = FirstCallOf<_init_table_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>>;
KernelPointer<ring::BuildFunction> CPanoramaConverter::Impl::_init_table_rgb24_impl(_init_table_rgb24_dispatch);
KernelPointer<ring::BuildFunction> CPanoramaConverter::Impl::_init_table_rgb32_impl(_init_table_rgb32_dispatch);
// clang-format on

CPanoramaSimpleConverter::CPanoramaSimpleConverter() : m_impl(new Impl) {}

CPanoramaSimpleConverter::~CPanoramaSimpleConverter() {
    delete m_impl;
}

void CPanoramaSimpleConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                                    int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                                    float radiusY, float innerRadiusRatio) {
    m_impl->job = {srcWidth,  srcHeight,    srcStride, dstWidth, dstHeight,
                   dstStride, bitsPerPixel, radiusX,   radiusY,  innerRadiusRatio};
}

void CPanoramaSimpleConverter::CvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb24_impl, pan, src, dst);
}

void CPanoramaSimpleConverter::CvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb32_impl, pan, src, dst);
}

CPanoramaConverter::CPanoramaConverter() : m_impl(new Impl) {}

CPanoramaConverter::~CPanoramaConverter() {
    delete m_impl;
}

void CPanoramaConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                              int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                              float radiusY, float innerRadiusRatio) {
    const auto& build =
        bitsPerPixel == 24 ? Impl::_init_table_rgb24_impl : Impl::_init_table_rgb32_impl;
    m_impl->Rebuild(srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel,
                    [&](CAlignedBufferT<int, 32>& table) {
                        build(srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride,
                              radiusX, radiusY, innerRadiusRatio, table);
                    });
}

void CPanoramaConverter::CvtRGB24(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert<24>(src, dst);
}

void CPanoramaConverter::CvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->ConvertTurned<24>(pan, src, dst);
}

void CPanoramaConverter::CvtRGB32(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert<32>(src, dst);
}

void CPanoramaConverter::CvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->ConvertTurned<32>(pan, src, dst);
}

void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                            float innerRadiusRatio, int& width, int& height) {
    const ring::Extent extent(radiusX, radiusY, innerRadiusRatio);
    const auto side = static_cast<float>(extent.alongWidth ? srcWidth : srcHeight);
    width = RoundUpToEight(TruncateToInt(side * (extent.radius * 4.0F)));
    height = TruncateToInt(side * extent.depth);
}

float GetBestFitPanoramaRatio(int, int, float radiusX, float radiusY, float innerRadiusRatio) {
    const ring::Extent extent(radiusX, radiusY, innerRadiusRatio);
    return extent.IsNothing() ? 1.0F : extent.radius * 4.0F / extent.depth;
}

void GetModelViewMatrix(float pan, float tilt, float (&matrix)[16]) {
    const vcam::Turn p(pan);
    const vcam::Turn t(tilt);
    vcam::SetRotation({{p.cosine, -p.sine * t.cosine, p.sine * t.sine},
                       {p.sine, p.cosine * t.cosine, -p.cosine * t.sine},
                       {0.0F, t.sine, t.cosine}},
                      matrix);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    return vcam::AimAroundAxis(vcam::LensPoint(radiusX, radiusY, x, y), -vcam::kDegreesPerRadian,
                               90.0F);
}

}  // namespace DownwardFisheyeAlgoNS

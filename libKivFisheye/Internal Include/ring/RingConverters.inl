// The converters of a mount that sees a ring, included once inside each mount's namespace: there
// `C` and its siblings hold the mount's kernels. No guard, for that reason.

struct CPanoramaSimpleConverter::Impl : ring::DirectConverter {
    static ring::ConvertFunction& _cvt_rgb24_dispatch;
    static ring::ConvertFunction& _cvt_rgb32_dispatch;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb24_impl;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb32_impl;
};

struct CDualPanoramaSimpleConverter::Impl : ring::DirectConverter {
    static ring::ConvertFunction& _cvt_rgb24_dispatch;
    static ring::ConvertFunction& _cvt_rgb32_dispatch;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb24_impl;
    static KernelPointer<ring::ConvertFunction> _cvt_rgb32_impl;
};

struct CPanoramaConverter::Impl : TableConverter<Impl> {
    static BuildFunction& _init_table_rgb24_dispatch;
    static BuildFunction& _init_table_rgb32_dispatch;
    static KernelPointer<BuildFunction> _init_table_rgb24_impl;
    static KernelPointer<BuildFunction> _init_table_rgb32_impl;
};

struct CDualPanoramaConverter::Impl : TableConverter<Impl> {
    static BuildFunction& _init_table_rgb24_dispatch;
    static BuildFunction& _init_table_rgb32_dispatch;
    static KernelPointer<BuildFunction> _init_table_rgb24_impl;
    static KernelPointer<BuildFunction> _init_table_rgb32_impl;
};

// clang-format off
ring::ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<24>>, KernelIn<Form::SSE41, SSE41::CvtPanoramaRGB<24>>>;
ring::ConvertFunction& CPanoramaSimpleConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtPanoramaRGB<32>>, KernelIn<Form::SSE41, SSE41::CvtPanoramaRGB<32>>>;
KernelPointer<ring::ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<ring::ConvertFunction> CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

ring::ConvertFunction& CDualPanoramaSimpleConverter::Impl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, Sse41OrC, KernelIn<Form::C, C::CvtDualPanoramaRGB<24>>, KernelIn<Form::SSE41, SSE41::CvtDualPanoramaRGB<24>>>;
ring::ConvertFunction& CDualPanoramaSimpleConverter::Impl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, Sse41OrC, KernelIn<Form::C, C::CvtDualPanoramaRGB<32>>, KernelIn<Form::SSE41, SSE41::CvtDualPanoramaRGB<32>>>;
KernelPointer<ring::ConvertFunction> CDualPanoramaSimpleConverter::Impl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<ring::ConvertFunction> CDualPanoramaSimpleConverter::Impl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

BuildFunction& CPanoramaConverter::Impl::_init_table_rgb24_dispatch = FirstCallOf<_init_table_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>>;
BuildFunction& CPanoramaConverter::Impl::_init_table_rgb32_dispatch = FirstCallOf<_init_table_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>>;
KernelPointer<BuildFunction> CPanoramaConverter::Impl::_init_table_rgb24_impl(_init_table_rgb24_dispatch);
KernelPointer<BuildFunction> CPanoramaConverter::Impl::_init_table_rgb32_impl(_init_table_rgb32_dispatch);

BuildFunction& CDualPanoramaConverter::Impl::_init_table_rgb24_dispatch = FirstCallOf<_init_table_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<24, OutOfFrame>>>;
BuildFunction& CDualPanoramaConverter::Impl::_init_table_rgb32_dispatch = FirstCallOf<_init_table_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::SSE41, SSE41::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>, KernelIn<Form::AVX, AVX::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, OutOfFrame>>>;
KernelPointer<BuildFunction> CDualPanoramaConverter::Impl::_init_table_rgb24_impl(_init_table_rgb24_dispatch);
KernelPointer<BuildFunction> CDualPanoramaConverter::Impl::_init_table_rgb32_impl(_init_table_rgb32_dispatch);
// clang-format on

CPanoramaSimpleConverter::CPanoramaSimpleConverter() : m_impl(new Impl) {}

CPanoramaSimpleConverter::~CPanoramaSimpleConverter() {
    delete m_impl;
}

void CPanoramaSimpleConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                                    int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                                    float radiusY, float innerRadiusRatio) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 innerRadiusRatio);
}

void CPanoramaSimpleConverter::CvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb24_impl, src, dst, pan);
}

void CPanoramaSimpleConverter::CvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb32_impl, src, dst, pan);
}

CDualPanoramaSimpleConverter::CDualPanoramaSimpleConverter() : m_impl(new Impl) {}

CDualPanoramaSimpleConverter::~CDualPanoramaSimpleConverter() {
    delete m_impl;
}

void CDualPanoramaSimpleConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                                        int dstHeight, int dstStride, int bitsPerPixel,
                                        float radiusX, float radiusY, float innerRadiusRatio) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 innerRadiusRatio);
}

void CDualPanoramaSimpleConverter::CvtRGB24(float pan, const unsigned char* src,
                                            unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb24_impl, src, dst, pan);
}

void CDualPanoramaSimpleConverter::CvtRGB32(float pan, const unsigned char* src,
                                            unsigned char* dst) {
    m_impl->Convert(Impl::_cvt_rgb32_impl, src, dst, pan);
}

CPanoramaConverter::CPanoramaConverter() : m_impl(new Impl) {}

CPanoramaConverter::~CPanoramaConverter() {
    delete m_impl;
}

void CPanoramaConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                              int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                              float radiusY, float innerRadiusRatio) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 innerRadiusRatio);
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

CDualPanoramaConverter::CDualPanoramaConverter() : m_impl(new Impl) {}

CDualPanoramaConverter::~CDualPanoramaConverter() {
    delete m_impl;
}

void CDualPanoramaConverter::Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                                  int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                                  float radiusY, float innerRadiusRatio) {
    m_impl->Init({{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel},
                  radiusX,
                  radiusY},
                 innerRadiusRatio);
}

void CDualPanoramaConverter::CvtRGB24(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert<24>(src, dst);
}

void CDualPanoramaConverter::CvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->ConvertDualTurned<24>(pan, src, dst);
}

void CDualPanoramaConverter::CvtRGB32(const unsigned char* src, unsigned char* dst) {
    m_impl->Convert<32>(src, dst);
}

void CDualPanoramaConverter::CvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
    m_impl->ConvertDualTurned<32>(pan, src, dst);
}

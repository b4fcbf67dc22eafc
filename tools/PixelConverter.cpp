#include "PixelConverter.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <string_view>

namespace KivFisheyeTools {

namespace {

const int* MatrixOf(const AVFrame& frame) {
    constexpr int kLinesOfHighDefinition = 720;
    const bool isTagged =
        frame.colorspace != AVCOL_SPC_UNSPECIFIED && frame.colorspace != AVCOL_SPC_RGB;
    if (isTagged) {
        return sws_getCoefficients(frame.colorspace);
    }
    return sws_getCoefficients(frame.height >= kLinesOfHighDefinition ? SWS_CS_ITU709
                                                                      : SWS_CS_ITU601);
}

/// Whether the values use all of their range, as some pixel formats say by their very names.
int IsFullRange(const AVFrame& frame) {
    const char* name = av_get_pix_fmt_name(static_cast<AVPixelFormat>(frame.format));
    const bool isByName = name != nullptr && std::string_view(name).substr(0, 4) == "yuvj";
    return isByName || frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
}

}  // namespace

const AVFrame& PixelConverter::Converted(const AVFrame& frame) {
    constexpr std::string_view kSentence = "the pixels cannot be converted";
    PrepareFor(frame);
    CheckAv(av_frame_make_writable(m_target.get()), kSentence);
    CheckAv(sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, m_target->data,
                      m_target->linesize),
            kSentence);
    return *m_target;
}

void PixelConverter::PrepareFor(const AVFrame& frame) {
    constexpr int kQuality =
        SWS_LANCZOS | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
    constexpr int kUnchanged = 1 << 16;
    const bool isSameKind = m_source.width == frame.width && m_source.height == frame.height &&
                            m_source.format == frame.format &&
                            m_source.matrix == frame.colorspace &&
                            m_source.range == frame.color_range;
    if (m_scaler != nullptr && isSameKind) {
        return;
    }
    m_scaler.reset(sws_getContext(frame.width, frame.height,
                                  static_cast<AVPixelFormat>(frame.format), m_target->width,
                                  m_target->height, static_cast<AVPixelFormat>(m_target->format),
                                  kQuality, nullptr, nullptr, nullptr));
    if (m_scaler == nullptr) {
        throw Failure("pixels of this kind cannot be converted");
    }
    // Between two kinds of RGB there is no matrix to set, and the answer says so.
    sws_setColorspaceDetails(m_scaler.get(), MatrixOf(frame), IsFullRange(frame),
                             MatrixOf(*m_target), IsFullRange(*m_target), 0, kUnchanged,
                             kUnchanged);
    m_source = {frame.width, frame.height, frame.format, frame.colorspace, frame.color_range};
}

}  // namespace KivFisheyeTools

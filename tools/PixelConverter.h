#ifndef KIVFISHEYE_TOOLS_PIXEL_CONVERTER_H
#define KIVFISHEYE_TOOLS_PIXEL_CONVERTER_H

#include "AvSupport.h"

namespace KivFisheyeTools {

/// Converts frames to one pixel format and size. The matrix and range of YUV pixels are those that
/// the frames are tagged with; without a tag they are BT.709 from 720 lines on and BT.601 below.
class PixelConverter {
public:
    /// Takes the frame that is written again and again; its tags count as those of any other.
    explicit PixelConverter(AvOwner<AVFrame> target) : m_target(std::move(target)) {}

    /// The converted frame, which stays until the next call.
    const AVFrame& Converted(const AVFrame& frame);

private:
    /// What the scaler was made for.
    struct Kind {
        int width;
        int height;
        int format;
        AVColorSpace matrix;
        AVColorRange range;
    };

    void PrepareFor(const AVFrame& frame);

    AvOwner<AVFrame> m_target;
    AvOwner<SwsContext> m_scaler;
    Kind m_source{};
};

}  // namespace KivFisheyeTools

#endif

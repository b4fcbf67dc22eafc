#ifndef KIVFISHEYE_TOOLS_VIDEO_TIME_H
#define KIVFISHEYE_TOOLS_VIDEO_TIME_H

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/rational.h>
}

#include <cstdint>

namespace KivFisheyeTools {

/// What a video's frames have in common beside their size.
struct VideoShape {
    /// The unit of its times, in seconds.
    AVRational timeBase;
    /// Frames in a second, as far as they are even.
    AVRational frameRate;
    AVColorPrimaries primaries = AVCOL_PRI_BT709;
    AVColorTransferCharacteristic transfer = AVCOL_TRC_BT709;
};

/// When a frame is shown and for how long, in units of the video's time base.
struct FrameTime {
    std::int64_t start;
    std::int64_t duration;
};

}  // namespace KivFisheyeTools

#endif

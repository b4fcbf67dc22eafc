#ifndef KIVFISHEYE_TESTS_VIDEO_PIXELS_H
#define KIVFISHEYE_TESTS_VIDEO_PIXELS_H

extern "C" {
#include <libavutil/frame.h>
}

#include "Picture.h"

/// Colours of video frames, converted by the formulas in double precision.
namespace VideoFile {

using KivFisheyeTools::Picture;

/// What the bytes of a YUV frame mean.
struct Meaning {
    AVColorSpace matrix;
    AVColorRange range;
};

void FillFrame(const Picture& picture, const Meaning& meaning, AVFrame* frame);
Picture PictureOf(const AVFrame& frame, const Meaning& meaning);

/// A smooth picture of waves, different for each number.
Picture Waves(std::uint32_t width, std::uint32_t height, int number);

/// The mean difference of the channels of two pictures; beyond all when their sizes differ.
double MeanDifference(const Picture& a, const Picture& b);

}  // namespace VideoFile

#endif

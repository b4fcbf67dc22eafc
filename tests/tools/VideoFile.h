#ifndef KIVFISHEYE_TESTS_VIDEO_FILE_H
#define KIVFISHEYE_TESTS_VIDEO_FILE_H

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/rational.h>
}

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "VideoPixels.h"

/// Videos written and read with FFmpeg's libraries alone, with nothing of the tool but the record
/// of a picture.
namespace VideoFile {

struct Frame {
    Picture picture;
    /// In units of the video's time base.
    std::int64_t time;
    /// Told to the file unless it is 0; only for encoders that give every frame back at once.
    std::int64_t duration = 0;
};

struct Format {
    std::string codec = "mpeg4";
    AVPixelFormat pixels = AV_PIX_FMT_YUV420P;
    AVRational timeBase{1, 25};
    AVColorSpace matrix = AVCOL_SPC_BT709;
    AVColorRange range = AVCOL_RANGE_MPEG;
    std::map<std::string, std::string> encoderOptions = {{"qscale", "2"}, {"flags", "+qscale"}};
    std::map<std::string, std::string> fileOptions = {};
};

/// Writes a file of the kind that its name says. A frame of another size begins a new encoder.
void Write(const std::string& path, const Format& format, const std::vector<Frame>& frames);

struct Video {
    std::string kind;
    std::string codec;
    AVPixelFormat pixels = AV_PIX_FMT_NONE;
    AVRational timeBase{};
    AVRational frameRate{};
    AVRational pixelShape{};
    AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    /// In units of the time base.
    std::int64_t duration = 0;
    int streams = 0;
    std::vector<Frame> frames;
};

/// Reads a whole video; throws when it is not sound.
Video Read(const std::string& path);

/// Where the packets of a video lie in its file, in the order of decoding.
struct Packet {
    std::int64_t position;
    int size;
    /// When its frame is shown.
    std::int64_t time;
};
std::vector<Packet> PacketsOf(const std::string& path);

/// Frames of waves at even times, from number 0 on.
std::vector<Frame> WaveFrames(std::uint32_t width, std::uint32_t height, int count);

}  // namespace VideoFile

#endif

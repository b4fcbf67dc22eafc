#ifndef KIVFISHEYE_TOOLS_VIDEO_WRITER_H
#define KIVFISHEYE_TOOLS_VIDEO_WRITER_H

#include <string>

#include "OutputFile.h"
#include "PixelConverter.h"
#include "VideoTime.h"

namespace KivFisheyeTools {

/// Whether the path has the ending of a video that `VideoWriter` writes.
bool IsVideoName(const std::string& path);

/// An H.264 video in an MP4 file, tagged as BT.709. The file appears when it is finished; without
/// that nothing is left behind. Everything throws `Failure` when the file cannot be made.
class VideoWriter {
public:
    /// For pictures of this size, whose height must be even, and with so many bytes a pixel.
    VideoWriter(const std::string& path, const Picture& pictures, const VideoShape& shape);

    /// Adds a picture; times must rise.
    void Write(const Picture& picture, const FrameTime& time);

    void Finish();

private:
    struct FormatDeleter {
        void operator()(AVFormatContext* format) const { avformat_free_context(format); }
    };

    void OpenEncoder(const VideoShape& shape);
    void OpenFormat();
    void SendFrame(const AVFrame* frame);

    /// What a failure begins with.
    std::string m_sentence;
    OutputFile m_file;
    AvOwner<AVFrame> m_rgb;
    PixelConverter m_converter;
    AvOwner<AVFrame> m_frame;
    AvOwner<AVPacket> m_packet;
    AvOwner<AVIOContext> m_io;
    AvOwner<AVCodecContext> m_encoder;
    std::unique_ptr<AVFormatContext, FormatDeleter> m_format;
    FrameTime m_last{};
};

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_VIDEO_READER_H
#define KIVFISHEYE_TOOLS_VIDEO_READER_H

#include <memory>
#include <string>

#include "FileSource.h"
#include "PixelConverter.h"
#include "VideoTime.h"

namespace KivFisheyeTools {

/// The pictures of a still picture's or a video's file, one after the other.
///
/// Everything here throws `Failure` when the file cannot be read, and the message tells the number
/// of the frame that could not. A picture is never made up: a file that is cut off or damaged fails
/// at the first frame that is not whole.
class VideoReader {
public:
    /// Decodes the first picture, which tells the size of all.
    explicit VideoReader(const std::string& path);

    /// Whether the file is of a kind that holds one picture.
    bool IsStill() const { return m_isStill; }

    std::uint32_t Width() const { return static_cast<std::uint32_t>(m_width); }
    std::uint32_t Height() const { return static_cast<std::uint32_t>(m_height); }
    VideoShape Shape() const;

    /// How many frames there are, about, or 0 when that is not known.
    std::uint64_t FrameCount() const;

    /// Gives the next frame as a picture of the video's size; false after the last one, and when
    /// reading was broken off by a `StopRequest`.
    bool Read(Picture* picture);

    /// When the frame that was read last is shown. The first one is shown at 0.
    const FrameTime& Time() const { return m_time; }

private:
    void OpenDecoder();
    bool Advance();
    void SendPacket();
    void CheckFrame();
    void CheckWhole();
    void TakeTime();
    bool IsCutOff() const;
    void Expect(int result);
    [[noreturn]] void Fail(const std::string& reason);
    /// Fails at the frame of a packet; those before it may still wait in the decoder.
    [[noreturn]] void FailAt(std::int64_t timestamp, const std::string& reason);

    std::string m_path;
    FileSource m_source;
    AvOwner<AVFormatContext> m_format;
    AvOwner<AVCodecContext> m_decoder;
    AvOwner<AVPacket> m_packet;
    AvOwner<AVFrame> m_frame;
    std::unique_ptr<PixelConverter> m_converter;
    AVStream* m_stream = nullptr;
    AVRational m_frameRate{};
    bool m_isStill = false;
    bool m_isFirstWaiting = true;
    int m_width = 0;
    int m_height = 0;
    /// The frames that came out of the decoder.
    std::uint64_t m_count = 0;
    std::int64_t m_firstTimestamp = 0;
    /// Where the packets end, in units of `AV_TIME_BASE`.
    std::int64_t m_end = 0;
    FrameTime m_time{};
};

}  // namespace KivFisheyeTools

#endif

#include "VideoReader.h"

#include <algorithm>
#include <string_view>

#include "JpegEnd.h"
#include "StopRequest.h"

namespace KivFisheyeTools {

namespace {

constexpr AVRational kMicroseconds{1, AV_TIME_BASE};
constexpr AVRational kUsualFrameRate{25, 1};

AvOwner<AVFormatContext> OpenFormat(const FileSource& source, const std::string& path) {
    const std::string sentence = "cannot read " + path;
    const AVInputFormat* kind = nullptr;
    const int probed = av_probe_input_buffer(source.Io(), &kind, nullptr, nullptr, 0, 0);
    if (probed == AVERROR_INVALIDDATA) {
        throw Failure(path + " is not a picture or video");
    }
    CheckAv(probed, sentence);
    AVFormatContext* format = OwnAllocated(avformat_alloc_context()).release();
    format->pb = source.Io();
    // On failure FFmpeg frees the format itself.
    CheckAv(avformat_open_input(&format, nullptr, kind, nullptr), sentence);
    return AvOwner<AVFormatContext>(format);
}

/// Whether the format is one of FFmpeg's for files of one picture.
bool IsStillFormat(const AVInputFormat& format) {
    constexpr std::string_view kMark = "_pipe";
    const std::string_view name = format.name;
    return name.size() > kMark.size() && name.substr(name.size() - kMark.size()) == kMark;
}

/// Whether the format hands over what is left of a JPEG picture that was cut off without a word.
bool IsBareJpeg(const AVInputFormat& format) {
    const std::string_view name = format.name;
    return name == "jpeg_pipe" || name == "mjpeg";
}

std::int64_t DurationOf(const AVFrame& frame) {
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(57, 30, 100)
    return frame.duration;
#else
    return frame.pkt_duration;
#endif
}

}  // namespace

VideoReader::VideoReader(const std::string& path)
    : m_path(path),
      m_source(path),
      m_packet(OwnAllocated(av_packet_alloc())),
      m_frame(OwnAllocated(av_frame_alloc())) {
    SilenceAv();
    const std::string sentence = "cannot read " + m_path;
    m_format = OpenFormat(m_source, m_path);
    m_isStill = IsStillFormat(*m_format->iformat);
    CheckAv(avformat_find_stream_info(m_format.get(), nullptr), sentence);
    OpenDecoder();
    if (!Advance()) {
        throw Failure(m_path + " holds no picture");
    }
    CheckPictureSize(Width(), Height());
}

void VideoReader::OpenDecoder() {
    const std::string sentence = "cannot read " + m_path;
    const AVCodec* codec = nullptr;
    const int index = av_find_best_stream(m_format.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0 || codec == nullptr) {
        throw Failure(m_path + " holds no picture");
    }
    m_stream = m_format->streams[index];
    const AVRational rate = av_guess_frame_rate(m_format.get(), m_stream, nullptr);
    m_frameRate = rate.num > 0 && rate.den > 0 ? rate : kUsualFrameRate;
    m_decoder = OwnAllocated(avcodec_alloc_context3(codec));
    CheckAv(avcodec_parameters_to_context(m_decoder.get(), m_stream->codecpar), sentence);
    m_decoder->pkt_timebase = m_stream->time_base;
    m_decoder->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK | AV_EF_BITSTREAM | AV_EF_BUFFER;
    // Threads over whole frames would tell of an error only some frames later.
    m_decoder->thread_count = 0;
    m_decoder->thread_type = FF_THREAD_SLICE;
    CheckAv(avcodec_open2(m_decoder.get(), codec, nullptr), sentence);
}

VideoShape VideoReader::Shape() const {
    return {m_stream->time_base, m_frameRate, m_frame->color_primaries, m_frame->color_trc};
}

std::uint64_t VideoReader::FrameCount() const {
    if (m_stream->nb_frames > 0) {
        return static_cast<std::uint64_t>(m_stream->nb_frames);
    }
    const bool isKnown = m_format->duration > 0 &&
                         m_format->duration_estimation_method != AVFMT_DURATION_FROM_BITRATE;
    return isKnown ? static_cast<std::uint64_t>(
                         av_rescale_q(m_format->duration, kMicroseconds, av_inv_q(m_frameRate)))
                   : 0;
}

bool VideoReader::Read(Picture* picture) {
    try {
        if (!m_isFirstWaiting && !Advance()) {
            return false;
        }
    } catch (const Failure&) {
        // A read that a signal broke off looks like the end of the file.
        if (StopRequest::Signal() != 0) {
            return false;
        }
        throw;
    }
    m_isFirstWaiting = false;
    if (m_converter == nullptr) {
        m_converter = std::make_unique<PixelConverter>(
            NewFrame(PixelFormatOf(picture->bytesPerPixel), Width(), Height()));
    }
    CopyPixels(m_converter->Converted(*m_frame), picture);
    return true;
}

bool VideoReader::Advance() {
    for (;;) {
        const int received = avcodec_receive_frame(m_decoder.get(), m_frame.get());
        if (received >= 0) {
            CheckFrame();
            ++m_count;
            TakeTime();
            return true;
        }
        if (received == AVERROR_EOF) {
            CheckWhole();
            return false;
        }
        if (received != AVERROR(EAGAIN)) {
            Expect(received);
        }
        SendPacket();
    }
}

void VideoReader::SendPacket() {
    av_packet_unref(m_packet.get());
    const int result = av_read_frame(m_format.get(), m_packet.get());
    if (result == AVERROR_EOF) {
        Expect(avcodec_send_packet(m_decoder.get(), nullptr));
        return;
    }
    Expect(result);
    const AVStream& stream = *m_format->streams[m_packet->stream_index];
    if (m_packet->pts != AV_NOPTS_VALUE) {
        m_end = std::max(m_end, av_rescale_q(m_packet->pts + m_packet->duration, stream.time_base,
                                             kMicroseconds));
    }
    // An empty packet says that the frame before it stays.
    if (m_packet->stream_index != m_stream->index || m_packet->size == 0) {
        return;
    }
    const bool isCut = (m_packet->flags & AV_PKT_FLAG_CORRUPT) != 0 ||
                       (IsBareJpeg(*m_format->iformat) &&
                        !HasJpegEnd(m_packet->data, static_cast<std::size_t>(m_packet->size)));
    if (isCut) {
        FailAt(m_packet->pts, "it is cut off");
    }
    Expect(avcodec_send_packet(m_decoder.get(), m_packet.get()));
}

void VideoReader::CheckFrame() {
    if ((m_frame->flags & AV_FRAME_FLAG_CORRUPT) != 0 || m_frame->decode_error_flags != 0) {
        Fail("it is damaged");
    }
    if (m_count == 0) {
        m_width = m_frame->width;
        m_height = m_frame->height;
    } else if (m_frame->width != m_width || m_frame->height != m_height) {
        Fail("its size is " + std::to_string(m_frame->width) + "x" +
             std::to_string(m_frame->height) + " after frames of " + std::to_string(m_width) + "x" +
             std::to_string(m_height));
    }
}

void VideoReader::CheckWhole() {
    if (m_count > 0 && IsCutOff()) {
        Fail("the file is cut off");
    }
}

void VideoReader::TakeTime() {
    const std::int64_t timestamp = m_frame->best_effort_timestamp;
    const bool isFirst = m_count == 1;
    const std::int64_t earliest = isFirst ? 0 : m_time.start + 1;
    std::int64_t start = isFirst ? 0 : m_time.start + m_time.duration;
    if (timestamp != AV_NOPTS_VALUE) {
        m_firstTimestamp = isFirst ? timestamp : m_firstTimestamp;
        start = timestamp - m_firstTimestamp;
    }
    const std::int64_t usual = av_rescale_q(1, av_inv_q(m_frameRate), m_stream->time_base);
    const std::int64_t duration = DurationOf(*m_frame);
    m_time = {std::max(start, earliest),
              std::max<std::int64_t>(duration > 0 ? duration : usual, 1)};
}

/// Whether the file ends before what its index or its header tell of.
bool VideoReader::IsCutOff() const {
    const std::int64_t size = m_source.Size();
    const int entries = avformat_index_get_entries_count(m_stream);
    for (int i = 0; size >= 0 && i < entries; ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(m_stream, i);
        if (entry->pos + entry->size > size) {
            return true;
        }
    }
    if (m_format->duration_estimation_method != AVFMT_DURATION_FROM_STREAM) {
        return false;
    }
    // The last frame's own duration is not always told, so some time may be missing.
    const std::int64_t frame = av_rescale_q(1, av_inv_q(m_frameRate), kMicroseconds);
    const std::int64_t slack =
        std::max(5 * frame / 2, std::min<std::int64_t>(m_format->duration / 10, AV_TIME_BASE / 2));
    return m_end + slack < m_format->duration;
}

void VideoReader::Expect(int result) {
    if (result < 0) {
        FailAt(m_packet->pts, ReasonOf(result));
    }
}

void VideoReader::FailAt(std::int64_t timestamp, const std::string& reason) {
    avcodec_send_packet(m_decoder.get(), nullptr);
    while (timestamp != AV_NOPTS_VALUE &&
           avcodec_receive_frame(m_decoder.get(), m_frame.get()) >= 0) {
        const std::int64_t shown = m_frame->best_effort_timestamp;
        m_count += shown != AV_NOPTS_VALUE && shown < timestamp ? 1U : 0U;
    }
    Fail(reason);
}

void VideoReader::Fail(const std::string& reason) {
    const std::string place = m_isStill ? "" : "frame " + std::to_string(m_count + 1) + " of ";
    throw Failure("cannot read " + place + m_path + ": " + reason);
}

}  // namespace KivFisheyeTools

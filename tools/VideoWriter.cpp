#include "VideoWriter.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <algorithm>
#include <cerrno>
#include <sstream>

#include "FileSource.h"

namespace KivFisheyeTools {

namespace {

int WriteToFile(void* opaque, std::uint8_t* bytes, int size) {
    auto* file = static_cast<std::FILE*>(opaque);
    const auto count = static_cast<std::size_t>(size);
    return std::fwrite(bytes, 1, count, file) == count ? size : AVERROR(errno);
}

AvOwner<AVFrame> NewVideoFrame(const Picture& pictures) {
    AvOwner<AVFrame> frame = NewFrame(AV_PIX_FMT_YUV420P, pictures.width, pictures.height);
    frame->colorspace = AVCOL_SPC_BT709;
    frame->color_range = AVCOL_RANGE_MPEG;
    return frame;
}

std::string WordsFor(AVRational number) {
    std::ostringstream words;
    words << av_q2d(number);
    return words.str();
}

}  // namespace

bool IsVideoName(const std::string& path) {
    return EndingOf(path) == ".mp4";
}

VideoWriter::VideoWriter(const std::string& path, const Picture& pictures, const VideoShape& shape)
    : m_sentence("cannot write " + path),
      m_file(path),
      m_rgb(NewFrame(PixelFormatOf(pictures.bytesPerPixel), pictures.width, pictures.height)),
      m_converter(NewVideoFrame(pictures)),
      m_frame(OwnAllocated(av_frame_alloc())),
      m_packet(OwnAllocated(av_packet_alloc())),
      m_io(OpenIo(m_file.File(), nullptr, WriteToFile, SeekInFile)) {
    SilenceAv();
    OpenEncoder(shape);
    OpenFormat();
}

void VideoWriter::OpenEncoder(const VideoShape& shape) {
    const AVCodec* codec = avcodec_find_encoder_by_name("libx264");
    if (codec == nullptr) {
        throw Failure(m_sentence +
                      ": FFmpeg's libraries are here without the H.264 encoder libx264");
    }
    m_encoder = OwnAllocated(avcodec_alloc_context3(codec));
    m_encoder->width = m_rgb->width;
    m_encoder->height = m_rgb->height;
    m_encoder->time_base = shape.timeBase;
    m_encoder->framerate = shape.frameRate;
    m_encoder->sample_aspect_ratio = {1, 1};
    m_encoder->pix_fmt = AV_PIX_FMT_YUV420P;
    m_encoder->colorspace = AVCOL_SPC_BT709;
    m_encoder->color_range = AVCOL_RANGE_MPEG;
    m_encoder->color_primaries = shape.primaries;
    m_encoder->color_trc = shape.transfer;
    m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    const std::string sentence =
        m_sentence + ": the H.264 encoder refuses frames of " + std::to_string(m_rgb->width) + "x" +
        std::to_string(m_rgb->height) + " at " + WordsFor(shape.frameRate) + " a second";
    CheckAv(av_opt_set(m_encoder->priv_data, "preset", "veryfast", 0), sentence);
    CheckAv(av_opt_set(m_encoder->priv_data, "crf", "18", 0), sentence);
    CheckAv(avcodec_open2(m_encoder.get(), codec, nullptr), sentence);
}

void VideoWriter::OpenFormat() {
    AVFormatContext* format = nullptr;
    CheckAv(avformat_alloc_output_context2(&format, nullptr, "mp4", nullptr), m_sentence);
    m_format.reset(format);
    format->pb = m_io.get();
    AVStream* stream = avformat_new_stream(format, nullptr);
    if (stream == nullptr) {
        throw std::bad_alloc();
    }
    CheckAv(avcodec_parameters_from_context(stream->codecpar, m_encoder.get()), m_sentence);
    stream->time_base = m_encoder->time_base;
    stream->avg_frame_rate = m_encoder->framerate;
    CheckAv(avformat_write_header(format, nullptr), m_sentence);
}

void VideoWriter::Write(const Picture& picture, const FrameTime& time) {
    CopyPixels(picture, m_rgb.get());
    CheckAv(av_frame_ref(m_frame.get(), &m_converter.Converted(*m_rgb)), m_sentence);
    m_frame->pts = time.start;
    m_last = time;
    SendFrame(m_frame.get());
    av_frame_unref(m_frame.get());
}

void VideoWriter::Finish() {
    SendFrame(nullptr);
    CheckAv(av_write_trailer(m_format.get()), m_sentence);
    m_file.MoveToTarget();
}

void VideoWriter::SendFrame(const AVFrame* frame) {
    CheckAv(avcodec_send_frame(m_encoder.get(), frame), m_sentence);
    for (;;) {
        const int received = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF) {
            return;
        }
        CheckAv(received, m_sentence);
        // Only the end of the last frame is not told by the start of another one.
        m_packet->duration =
            std::min(m_last.duration, m_last.start + m_last.duration - m_packet->pts);
        av_packet_rescale_ts(m_packet.get(), m_encoder->time_base, m_format->streams[0]->time_base);
        m_packet->stream_index = 0;
        CheckAv(av_write_frame(m_format.get(), m_packet.get()), m_sentence);
    }
}

}  // namespace KivFisheyeTools

#include "VideoFile.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
}

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "VideoPixels.h"

namespace VideoFile {

namespace {

template <class Object, void (*kFree)(Object**)>
struct Freer {
    void operator()(Object* object) const { kFree(&object); }
};

using FrameOwner = std::unique_ptr<AVFrame, Freer<AVFrame, av_frame_free>>;
using PacketOwner = std::unique_ptr<AVPacket, Freer<AVPacket, av_packet_free>>;
using CodecOwner = std::unique_ptr<AVCodecContext, Freer<AVCodecContext, avcodec_free_context>>;
using InputOwner = std::unique_ptr<AVFormatContext, Freer<AVFormatContext, avformat_close_input>>;

void Check(int result, const std::string& what) {
    if (result < 0) {
        throw std::runtime_error(what + " failed with " + std::to_string(result));
    }
}

class Writer {
public:
    Writer(const std::string& path, const Format& format, const Picture& first) : m_format(format) {
        AVFormatContext* file = nullptr;
        Check(avformat_alloc_output_context2(&file, nullptr, nullptr, path.c_str()), path);
        m_file.reset(file);
        OpenEncoder(first);
        AVStream* stream = avformat_new_stream(file, nullptr);
        Check(avcodec_parameters_from_context(stream->codecpar, m_encoder.get()), path);
        stream->time_base = format.timeBase;
        stream->avg_frame_rate = av_inv_q(format.timeBase);
        Check(avio_open(&file->pb, path.c_str(), AVIO_FLAG_WRITE), path);
        AVDictionary* options = nullptr;
        for (const auto& [name, value] : format.fileOptions) {
            av_dict_set(&options, name.c_str(), value.c_str(), 0);
        }
        const int result = avformat_write_header(file, &options);
        av_dict_free(&options);
        Check(result, path);
    }

    void Write(const Frame& frame) {
        if (m_encoder->width != static_cast<int>(frame.picture.width) ||
            m_encoder->height != static_cast<int>(frame.picture.height)) {
            Send(nullptr);
            OpenEncoder(frame.picture);
        }
        const FrameOwner filled(av_frame_alloc());
        filled->format = m_format.pixels;
        filled->width = m_encoder->width;
        filled->height = m_encoder->height;
        filled->pts = frame.time;
        filled->quality = m_encoder->global_quality;
        Check(av_frame_get_buffer(filled.get(), 0), "a frame");
        FillFrame(frame.picture, {m_format.matrix, m_format.range}, filled.get());
        m_duration = frame.duration;
        Send(filled.get());
    }

    void Finish() {
        Send(nullptr);
        Check(av_write_trailer(m_file.get()), "the end of the file");
    }

private:
    struct OutputFreer {
        void operator()(AVFormatContext* file) const {
            avio_closep(&file->pb);
            avformat_free_context(file);
        }
    };

    void OpenEncoder(const Picture& picture) {
        const AVCodec* codec = avcodec_find_encoder_by_name(m_format.codec.c_str());
        if (codec == nullptr) {
            throw std::runtime_error("there is no encoder " + m_format.codec);
        }
        m_encoder.reset(avcodec_alloc_context3(codec));
        m_encoder->width = static_cast<int>(picture.width);
        m_encoder->height = static_cast<int>(picture.height);
        m_encoder->pix_fmt = m_format.pixels;
        m_encoder->time_base = m_format.timeBase;
        m_encoder->colorspace = m_format.matrix;
        m_encoder->color_range = m_format.range;
        m_encoder->strict_std_compliance = FF_COMPLIANCE_UNOFFICIAL;
        for (const auto& [name, value] : m_format.encoderOptions) {
            const bool isQuality = name == "qscale";
            if (isQuality) {
                m_encoder->global_quality = std::atoi(value.c_str()) * FF_QP2LAMBDA;
                continue;
            }
            Check(av_opt_set(m_encoder.get(), name.c_str(), value.c_str(), AV_OPT_SEARCH_CHILDREN),
                  name);
        }
        if ((m_file->oformat->flags & AVFMT_GLOBALHEADER) != 0) {
            m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        }
        Check(avcodec_open2(m_encoder.get(), codec, nullptr), m_format.codec);
    }

    void Send(const AVFrame* frame) {
        const PacketOwner packet(av_packet_alloc());
        Check(avcodec_send_frame(m_encoder.get(), frame), "encoding");
        while (avcodec_receive_packet(m_encoder.get(), packet.get()) >= 0) {
            packet->duration = m_duration;
            av_packet_rescale_ts(packet.get(), m_encoder->time_base, m_file->streams[0]->time_base);
            packet->stream_index = 0;
            Check(av_interleaved_write_frame(m_file.get(), packet.get()), "writing");
        }
    }

    Format m_format;
    std::int64_t m_duration = 0;
    std::unique_ptr<AVFormatContext, OutputFreer> m_file;
    CodecOwner m_encoder;
};

class Reader {
public:
    explicit Reader(const std::string& path) {
        AVFormatContext* file = nullptr;
        Check(avformat_open_input(&file, path.c_str(), nullptr, nullptr), path);
        m_file.reset(file);
        Check(avformat_find_stream_info(file, nullptr), path);
        const AVCodec* codec = nullptr;
        const int index = av_find_best_stream(file, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
        Check(index, path);
        m_stream = file->streams[index];
        m_decoder.reset(avcodec_alloc_context3(codec));
        Check(avcodec_parameters_to_context(m_decoder.get(), m_stream->codecpar), path);
        m_decoder->err_recognition = AV_EF_EXPLODE;
        Check(avcodec_open2(m_decoder.get(), codec, nullptr), path);
    }

    std::vector<Packet> Packets() {
        std::vector<Packet> packets;
        const PacketOwner packet(av_packet_alloc());
        while (av_read_frame(m_file.get(), packet.get()) >= 0) {
            packets.push_back({packet->pos, packet->size, packet->pts});
            av_packet_unref(packet.get());
        }
        return packets;
    }

    Video All() {
        Video video;
        video.kind = m_file->iformat->name;
        video.codec = m_decoder->codec->name;
        video.timeBase = m_stream->time_base;
        video.frameRate = m_stream->avg_frame_rate;
        video.duration = m_stream->duration;
        video.streams = static_cast<int>(m_file->nb_streams);
        const PacketOwner packet(av_packet_alloc());
        int result = av_read_frame(m_file.get(), packet.get());
        for (; result >= 0; result = av_read_frame(m_file.get(), packet.get())) {
            if (packet->stream_index == m_stream->index) {
                Check(avcodec_send_packet(m_decoder.get(), packet.get()), "decoding");
                Receive(&video);
            }
            av_packet_unref(packet.get());
        }
        Check(result == AVERROR_EOF ? 0 : result, "reading");
        Check(avcodec_send_packet(m_decoder.get(), nullptr), "decoding");
        Receive(&video);
        return video;
    }

private:
    void Receive(Video* video) {
        const FrameOwner frame(av_frame_alloc());
        int result = avcodec_receive_frame(m_decoder.get(), frame.get());
        for (; result >= 0; result = avcodec_receive_frame(m_decoder.get(), frame.get())) {
            video->pixels = static_cast<AVPixelFormat>(frame->format);
            video->matrix = frame->colorspace;
            video->range =
                video->pixels == AV_PIX_FMT_YUVJ420P ? AVCOL_RANGE_JPEG : frame->color_range;
            video->pixelShape = frame->sample_aspect_ratio;
            video->frames.push_back({PictureOf(*frame, {video->matrix, video->range}),
                                     frame->best_effort_timestamp, 0});
        }
        const bool isEnd = result == AVERROR(EAGAIN) || result == AVERROR_EOF;
        Check(isEnd ? 0 : result, "decoding");
    }

    InputOwner m_file;
    AVStream* m_stream = nullptr;
    CodecOwner m_decoder;
};

}  // namespace

void Write(const std::string& path, const Format& format, const std::vector<Frame>& frames) {
    av_log_set_level(AV_LOG_QUIET);
    Writer writer(path, format, frames.at(0).picture);
    for (const Frame& frame : frames) {
        writer.Write(frame);
    }
    writer.Finish();
}

Video Read(const std::string& path) {
    av_log_set_level(AV_LOG_QUIET);
    return Reader(path).All();
}

std::vector<Packet> PacketsOf(const std::string& path) {
    return Reader(path).Packets();
}

std::vector<Frame> WaveFrames(std::uint32_t width, std::uint32_t height, int count) {
    std::vector<Frame> frames;
    for (int i = 0; i < count; ++i) {
        frames.push_back({Waves(width, height, i), i, 0});
    }
    return frames;
}

}  // namespace VideoFile

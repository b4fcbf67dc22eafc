#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "AvSupport.h"
#include "Picture.h"

namespace KivFisheyeTools {

namespace {

std::string SystemReason(int error) {
    return std::generic_category().message(error);
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A file that FFmpeg reads through callbacks. FFmpeg never sees the path, which it might take for
/// an address on the network or for the pattern of a series of pictures.
class FileSource {
public:
    explicit FileSource(const std::string& path) : m_file(Open(path)) {
        constexpr int kBufferSize = 1 << 16;
        auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferSize));
        if (buffer == nullptr) {
            throw std::bad_alloc();
        }
        m_io.reset(avio_alloc_context(buffer, kBufferSize, 0, m_file.get(), Read, nullptr, Seek));
        if (m_io == nullptr) {
            av_free(buffer);
            throw std::bad_alloc();
        }
    }

    AVIOContext* Io() const { return m_io.get(); }

private:
    static std::FILE* Open(const std::string& path) {
        std::FILE* file = std::fopen(path.c_str(), "rb");
        if (file == nullptr) {
            throw Failure("cannot open " + path + ": " + SystemReason(errno));
        }
        std::error_code ignored;
        if (std::filesystem::is_directory(path, ignored)) {
            std::fclose(file);
            throw Failure(path + " is a directory, not a picture");
        }
        return file;
    }

    static int Read(void* opaque, std::uint8_t* buffer, int size) {
        auto* file = static_cast<std::FILE*>(opaque);
        const std::size_t count = std::fread(buffer, 1, static_cast<std::size_t>(size), file);
        if (count > 0) {
            return static_cast<int>(count);
        }
        return std::ferror(file) != 0 ? AVERROR(EIO) : AVERROR_EOF;
    }

    static std::int64_t Seek(void* opaque, std::int64_t offset, int whence) {
        auto* file = static_cast<std::FILE*>(opaque);
        if (whence == AVSEEK_SIZE) {
            return AVERROR(ENOSYS);
        }
        if (fseeko(file, offset, whence & ~AVSEEK_FORCE) != 0) {
            return AVERROR(errno);
        }
        return ftello(file);
    }

    std::unique_ptr<std::FILE, FileCloser> m_file;
    AvOwner<AVIOContext> m_io;
};

AvOwner<AVFormatContext> OpenFormat(const FileSource& source, const std::string& sentence) {
    AVFormatContext* format = OwnAllocated(avformat_alloc_context()).release();
    format->pb = source.Io();
    // On failure FFmpeg frees the format itself.
    CheckAv(avformat_open_input(&format, nullptr, nullptr, nullptr), sentence);
    return AvOwner<AVFormatContext>(format);
}

AvOwner<AVCodecContext> OpenDecoder(const AVCodec& codec, const AVStream& stream,
                                    const std::string& sentence) {
    AvOwner<AVCodecContext> decoder = OwnAllocated(avcodec_alloc_context3(&codec));
    CheckAv(avcodec_parameters_to_context(decoder.get(), stream.codecpar), sentence);
    decoder->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK | AV_EF_BITSTREAM | AV_EF_BUFFER;
    CheckAv(avcodec_open2(decoder.get(), &codec, nullptr), sentence);
    return decoder;
}

/// Whether the bytes run as far as the marker that ends a JPEG picture. The decoder makes up what
/// is missing of a file that was cut off without a word.
bool IsJpegWhole(const AVPacket& packet) {
    constexpr std::uint8_t kScan = 0xDA;
    constexpr std::uint8_t kEnd = 0xD9;
    const std::uint8_t* bytes = packet.data;
    const auto size = static_cast<std::size_t>(packet.size);
    bool isInScan = false;
    for (std::size_t i = 2; i + 1 < size;) {
        const std::uint8_t marker = bytes[i + 1];
        const bool isData = marker == 0x00 || (marker >= 0xD0 && marker <= 0xD7);
        if (bytes[i] != 0xFF || marker == 0xFF || (isInScan && isData)) {
            ++i;
            continue;
        }
        if (marker == kEnd) {
            return true;
        }
        isInScan = marker == kScan;
        if (i + 3 >= size) {
            return false;
        }
        i += 2 + (std::size_t{bytes[i + 2]} << 8U) + bytes[i + 3];
    }
    return false;
}

AvOwner<AVFrame> FirstFrame(AVFormatContext* format, int streamIndex, AVCodecContext* decoder,
                            const std::string& sentence) {
    const AvOwner<AVPacket> packet = OwnAllocated(av_packet_alloc());
    AvOwner<AVFrame> frame = OwnAllocated(av_frame_alloc());
    const bool isJpegFile = std::strcmp(format->iformat->name, "jpeg_pipe") == 0;
    bool drains = false;
    for (;;) {
        const int received = avcodec_receive_frame(decoder, frame.get());
        if (received >= 0) {
            return frame;
        }
        if (received != AVERROR(EAGAIN) || drains) {
            CheckAv(received, sentence);
        }
        const int readResult = av_read_frame(format, packet.get());
        if (readResult >= 0 && packet->stream_index == streamIndex) {
            if (isJpegFile && !IsJpegWhole(*packet)) {
                throw Failure(sentence + ": the picture is cut off");
            }
            CheckAv(avcodec_send_packet(decoder, packet.get()), sentence);
        } else if (readResult == AVERROR_EOF) {
            drains = true;
            CheckAv(avcodec_send_packet(decoder, nullptr), sentence);
        } else {
            CheckAv(readResult, sentence);
        }
        av_packet_unref(packet.get());
    }
}

}  // namespace

Picture ReadPicture(const std::string& path, std::uint32_t bytesPerPixel) {
    SilenceAv();
    const std::string sentence = "cannot read " + path + " as a picture";
    const FileSource source(path);
    const AvOwner<AVFormatContext> format = OpenFormat(source, sentence);
    CheckAv(avformat_find_stream_info(format.get(), nullptr), sentence);
    const AVCodec* codec = nullptr;
    const int index = av_find_best_stream(format.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0 || codec == nullptr) {
        throw Failure(path + " holds no picture");
    }
    const AvOwner<AVCodecContext> decoder = OpenDecoder(*codec, *format->streams[index], sentence);
    const AvOwner<AVFrame> frame = FirstFrame(format.get(), index, decoder.get(), sentence);
    if ((frame->flags & AV_FRAME_FLAG_CORRUPT) != 0 || frame->decode_error_flags != 0) {
        throw Failure(sentence + ": the picture is damaged");
    }
    return PictureOfFrame(*frame, bytesPerPixel);
}

}  // namespace KivFisheyeTools

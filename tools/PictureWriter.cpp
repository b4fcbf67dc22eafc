#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "AvSupport.h"
#include "Picture.h"

namespace KivFisheyeTools {

namespace {

namespace fs = std::filesystem;

constexpr int kJpegQuantizer = 2;

bool EndsWith(const std::string& text, const std::string& ending) {
    return text.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), text.rbegin(), [](char a, char b) {
               return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b);
           });
}

AVCodecID CodecOfEnding(const std::string& path) {
    if (EndsWith(path, ".png")) {
        return AV_CODEC_ID_PNG;
    }
    const bool isJpeg = EndsWith(path, ".jpg") || EndsWith(path, ".jpeg");
    return isJpeg ? AV_CODEC_ID_MJPEG : AV_CODEC_ID_NONE;
}

AvOwner<AVCodecContext> OpenEncoder(AVCodecID codecId, const Picture& picture) {
    const AVCodec* codec = avcodec_find_encoder(codecId);
    if (codec == nullptr) {
        throw Failure("FFmpeg has no encoder for this kind of picture");
    }
    AvOwner<AVCodecContext> encoder = OwnAllocated(avcodec_alloc_context3(codec));
    encoder->width = static_cast<int>(picture.width);
    encoder->height = static_cast<int>(picture.height);
    encoder->time_base = {1, 1};
    encoder->sample_aspect_ratio = {1, 1};
    encoder->pix_fmt = AV_PIX_FMT_RGB24;
    if (codecId == AV_CODEC_ID_MJPEG) {
        encoder->pix_fmt = AV_PIX_FMT_YUVJ444P;
        encoder->flags |= AV_CODEC_FLAG_QSCALE;
        encoder->global_quality = kJpegQuantizer * FF_QP2LAMBDA;
    }
    CheckAv(avcodec_open2(encoder.get(), codec, nullptr), "the encoder refuses the picture");
    return encoder;
}

AvOwner<AVPacket> EncodedPicture(AVCodecID codecId, const Picture& picture) {
    const std::string sentence = "the picture cannot be encoded";
    const AvOwner<AVCodecContext> encoder = OpenEncoder(codecId, picture);
    const AvOwner<AVFrame> frame =
        ConvertedFrame(*FrameOfPicture(picture), encoder->pix_fmt, encoder->width, encoder->height);
    frame->quality = encoder->global_quality;
    AvOwner<AVPacket> packet = OwnAllocated(av_packet_alloc());
    CheckAv(avcodec_send_frame(encoder.get(), frame.get()), sentence);
    CheckAv(avcodec_send_frame(encoder.get(), nullptr), sentence);
    CheckAv(avcodec_receive_packet(encoder.get(), packet.get()), sentence);
    return packet;
}

/// A file under a passing name beside its target, which disappears unless it is moved there.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target) : m_target(target) {
        const fs::path directory = fs::path(target).parent_path();
        for (unsigned attempt = 0; m_file == nullptr; ++attempt) {
            m_path = directory /
                     (".kivfisheye-" + std::to_string(getpid()) + "-" + std::to_string(attempt));
            m_file = std::fopen(m_path.c_str(), "wbx");
            if (m_file == nullptr && errno != EEXIST) {
                Fail(errno);
            }
        }
    }

    ~TemporaryFile() {
        if (m_file != nullptr) {
            std::fclose(m_file);
        }
        std::error_code ignored;
        fs::remove(m_path, ignored);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Write(const std::uint8_t* bytes, std::size_t count) {
        if (std::fwrite(bytes, 1, count, m_file) != count) {
            Fail(errno);
        }
    }

    void MoveToTarget() {
        if (std::fclose(std::exchange(m_file, nullptr)) != 0) {
            Fail(errno);
        }
        std::error_code error;
        fs::rename(m_path, m_target, error);
        if (error) {
            Fail(error.value());
        }
    }

private:
    [[noreturn]] void Fail(int error) const {
        throw Failure("cannot write " + m_target + ": " + std::generic_category().message(error));
    }

    std::string m_target;
    fs::path m_path;
    std::FILE* m_file = nullptr;
};

}  // namespace

void CheckPictureEnding(const std::string& path) {
    if (CodecOfEnding(path) == AV_CODEC_ID_NONE) {
        throw UsageError("cannot write " + path + ": its name must end in .png, .jpg or .jpeg");
    }
}

void WritePicture(const std::string& path, const Picture& picture) {
    SilenceAv();
    CheckPictureEnding(path);
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_regular_file(path, ignored)) {
        throw Failure("cannot write " + path + ": it is not a regular file");
    }
    const AvOwner<AVPacket> packet = EncodedPicture(CodecOfEnding(path), picture);
    TemporaryFile file(path);
    file.Write(packet->data, static_cast<std::size_t>(packet->size));
    file.MoveToTarget();
}

}  // namespace KivFisheyeTools

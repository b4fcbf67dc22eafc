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

AVCodecID CodecOfEnding(const std::string& path) {
    std::string ending = fs::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    if (ending == ".png") {
        return AV_CODEC_ID_PNG;
    }
    return ending == ".jpg" || ending == ".jpeg" ? AV_CODEC_ID_MJPEG : AV_CODEC_ID_NONE;
}

[[noreturn]] void FailToWrite(const std::string& path, int error) {
    throw Failure("cannot write " + path + ": " + std::generic_category().message(error));
}

/// Where a write to the path goes: the end of its symbolic links, which need not exist.
std::string TargetOf(const std::string& path) {
    constexpr int kMostLinks = 40;
    fs::path target = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(target, error); ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error || links == kMostLinks) {
            FailToWrite(path, error ? error.value() : ELOOP);
        }
        target = target.parent_path() / next;
    }
    return target.string();
}

/// Refuses what a rename would replace although it cannot be written.
void CheckTarget(const std::string& target) {
    std::error_code ignored;
    if (!fs::exists(target, ignored)) {
        return;
    }
    if (!fs::is_regular_file(target, ignored)) {
        throw Failure("cannot write " + target + ": it is not a regular file");
    }
    if (access(target.c_str(), W_OK) != 0) {
        FailToWrite(target, errno);
    }
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
                FailToWrite(m_target, errno);
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
            FailToWrite(m_target, errno);
        }
    }

    void MoveToTarget() {
        if (std::fclose(std::exchange(m_file, nullptr)) != 0) {
            FailToWrite(m_target, errno);
        }
        std::error_code error;
        fs::rename(m_path, m_target, error);
        if (error) {
            FailToWrite(m_target, error.value());
        }
    }

private:
    std::string m_target;
    fs::path m_path;
    std::FILE* m_file = nullptr;
};

}  // namespace

void CheckPictureEnding(const std::string& path) {
    if (CodecOfEnding(path) == AV_CODEC_ID_NONE) {
        throw UsageError("cannot write " + path +
                         ": it needs a name with the ending .png, .jpg or .jpeg");
    }
}

void WritePicture(const std::string& path, const Picture& picture) {
    SilenceAv();
    CheckPictureEnding(path);
    const std::string target = TargetOf(path);
    CheckTarget(target);
    const AvOwner<AVPacket> packet = EncodedPicture(CodecOfEnding(path), picture);
    TemporaryFile file(target);
    file.Write(packet->data, static_cast<std::size_t>(packet->size));
    file.MoveToTarget();
}

}  // namespace KivFisheyeTools

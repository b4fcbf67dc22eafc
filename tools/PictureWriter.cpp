#include <cmath>

#include "OutputFile.h"
#include "Picture.h"
#include "PixelConverter.h"

namespace KivFisheyeTools {

namespace {

/// How coarsely the JPEG encoder rounds, from 2 to 31.
int JpegQuantizer(std::uint32_t quality) {
    constexpr double kFinest = 2.0;
    constexpr double kCoarsest = 31.0;
    const double loss = (1.0 * kBestQuality - quality) / (kBestQuality - 1.0);
    return static_cast<int>(std::lround(kFinest + loss * (kCoarsest - kFinest)));
}

AVCodecID CodecOfEnding(const std::string& path) {
    return EndingOf(path) == ".png" ? AV_CODEC_ID_PNG : AV_CODEC_ID_MJPEG;
}

AvOwner<AVCodecContext> OpenEncoder(const std::string& path, const Picture& picture,
                                    std::uint32_t quality) {
    const std::string sentence = "cannot write " + path + ": ";
    const AVCodecID codecId = CodecOfEnding(path);
    const AVCodec* codec = avcodec_find_encoder(codecId);
    if (codec == nullptr) {
        throw Failure(sentence + "FFmpeg has no encoder for this kind of picture");
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
        encoder->global_quality = JpegQuantizer(quality) * FF_QP2LAMBDA;
    }
    CheckAv(avcodec_open2(encoder.get(), codec, nullptr),
            sentence + "the encoder refuses a picture of " + std::to_string(picture.width) + "x" +
                std::to_string(picture.height));
    return encoder;
}

AvOwner<AVPacket> EncodedPicture(const std::string& path, const Picture& picture,
                                 std::uint32_t quality) {
    const std::string sentence = "cannot write " + path + ": the picture cannot be encoded";
    const AvOwner<AVCodecContext> encoder = OpenEncoder(path, picture, quality);
    const AvOwner<AVFrame> rgb =
        NewFrame(PixelFormatOf(picture.bytesPerPixel), picture.width, picture.height);
    CopyPixels(picture, rgb.get());
    AvOwner<AVFrame> target = NewFrame(encoder->pix_fmt, picture.width, picture.height);
    target->colorspace = AVCOL_SPC_BT470BG;
    target->quality = encoder->global_quality;
    PixelConverter converter(std::move(target));
    AvOwner<AVPacket> packet = OwnAllocated(av_packet_alloc());
    CheckAv(avcodec_send_frame(encoder.get(), &converter.Converted(*rgb)), sentence);
    CheckAv(avcodec_send_frame(encoder.get(), nullptr), sentence);
    CheckAv(avcodec_receive_packet(encoder.get(), packet.get()), sentence);
    return packet;
}

}  // namespace

const std::vector<std::string>& PictureEndings() {
    static const std::vector<std::string> endings = {".png", ".jpg", ".jpeg"};
    return endings;
}

void WritePicture(const std::string& path, const Picture& picture, std::uint32_t quality) {
    SilenceAv();
    CheckEnding(path, PictureEndings());
    OutputFile file(path);
    const AvOwner<AVPacket> packet = EncodedPicture(path, picture, quality);
    file.Write(packet->data, static_cast<std::size_t>(packet->size));
    file.MoveToTarget();
}

}  // namespace KivFisheyeTools

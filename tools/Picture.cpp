#include "Picture.h"

#include <algorithm>
#include <cstring>

#include "AvSupport.h"

namespace KivFisheyeTools {

namespace {

std::string SizeText(std::uint64_t width, std::uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::uint32_t StrideOf(std::uint32_t width, std::uint32_t height, std::uint32_t bytesPerPixel) {
    CheckPictureSize(width, height);
    return (width * bytesPerPixel + 3U) / 4U * 4U;
}

AVPixelFormat PixelFormatOf(std::uint32_t bytesPerPixel) {
    return bytesPerPixel == 4 ? AV_PIX_FMT_RGB0 : AV_PIX_FMT_RGB24;
}

AvOwner<AVFrame> NewFrame(AVPixelFormat format, int width, int height) {
    AvOwner<AVFrame> frame = OwnAllocated(av_frame_alloc());
    frame->format = format;
    frame->width = width;
    frame->height = height;
    CheckAv(av_frame_get_buffer(frame.get(), 0), "a frame cannot be made");
    return frame;
}

}  // namespace

void CheckPictureSize(std::uint64_t width, std::uint64_t height) {
    if (width == 0 || height == 0) {
        throw Failure("a picture of " + SizeText(width, height) + " has no pixels");
    }
    if (width > kMaximumSide || height > kMaximumSide || width * height > kMaximumPixels) {
        throw Failure("a picture of " + SizeText(width, height) + " is too large");
    }
}

Picture::Picture(std::uint32_t pictureWidth, std::uint32_t pictureHeight, std::uint32_t pixelBytes)
    : width(pictureWidth),
      height(pictureHeight),
      bytesPerPixel(pixelBytes),
      stride(StrideOf(pictureWidth, pictureHeight, pixelBytes)),
      pixels(std::size_t{stride} * height) {}

Picture Resized(const Picture& picture, std::uint32_t width, std::uint32_t height) {
    Picture empty(width, height, picture.bytesPerPixel);
    const AvOwner<AVFrame> frame = FrameOfPicture(picture);
    const AvOwner<AVFrame> resized =
        ConvertedFrame(*frame, PixelFormatOf(picture.bytesPerPixel), static_cast<int>(empty.width),
                       static_cast<int>(empty.height));
    return PictureOfFrame(*resized, picture.bytesPerPixel);
}

void SilenceAv() {
    av_log_set_level(AV_LOG_QUIET);
}

void CheckAv(int result, const std::string& sentence) {
    if (result >= 0) {
        return;
    }
    if (result == AVERROR(ENOMEM)) {
        throw std::bad_alloc();
    }
    char reason[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(result, reason, sizeof reason);
    throw Failure(sentence + ": " + reason);
}

AvOwner<AVFrame> ConvertedFrame(const AVFrame& frame, AVPixelFormat format, int width, int height) {
    constexpr int kQuality =
        SWS_LANCZOS | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP;
    const AvOwner<SwsContext> scaler(
        sws_getContext(frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), width,
                       height, format, kQuality, nullptr, nullptr, nullptr));
    if (scaler == nullptr) {
        throw Failure("pixels of this kind cannot be converted");
    }
    AvOwner<AVFrame> converted = NewFrame(format, width, height);
    CheckAv(sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, converted->data,
                      converted->linesize),
            "the pixels cannot be converted");
    return converted;
}

AvOwner<AVFrame> FrameOfPicture(const Picture& picture) {
    AvOwner<AVFrame> frame =
        NewFrame(PixelFormatOf(picture.bytesPerPixel), static_cast<int>(picture.width),
                 static_cast<int>(picture.height));
    for (std::uint32_t row = 0; row < picture.height; ++row) {
        std::memcpy(frame->data[0] + static_cast<std::ptrdiff_t>(row) * frame->linesize[0],
                    picture.Row(row), std::size_t{picture.width} * picture.bytesPerPixel);
    }
    return frame;
}

Picture PictureOfFrame(const AVFrame& frame, std::uint32_t bytesPerPixel) {
    Picture picture(static_cast<std::uint32_t>(std::max(frame.width, 0)),
                    static_cast<std::uint32_t>(std::max(frame.height, 0)), bytesPerPixel);
    const AvOwner<AVFrame> rgb =
        ConvertedFrame(frame, PixelFormatOf(bytesPerPixel), frame.width, frame.height);
    for (std::uint32_t row = 0; row < picture.height; ++row) {
        std::memcpy(picture.Row(row),
                    rgb->data[0] + static_cast<std::ptrdiff_t>(row) * rgb->linesize[0],
                    std::size_t{picture.width} * bytesPerPixel);
    }
    return picture;
}

}  // namespace KivFisheyeTools

#include "Picture.h"

extern "C" {
#include <libavutil/imgutils.h>
}

#include "PixelConverter.h"
#include "VideoReader.h"

namespace KivFisheyeTools {

namespace {

std::string SizeText(std::uint64_t width, std::uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::uint32_t StrideOf(std::uint32_t width, std::uint32_t height, std::uint32_t bytesPerPixel) {
    CheckPictureSize(width, height);
    return (width * bytesPerPixel + 3U) / 4U * 4U;
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
    Picture resized(width, height, picture.bytesPerPixel);
    const AVPixelFormat format = PixelFormatOf(picture.bytesPerPixel);
    const AvOwner<AVFrame> frame = NewFrame(format, picture.width, picture.height);
    CopyPixels(picture, frame.get());
    PixelConverter converter(NewFrame(format, width, height));
    CopyPixels(converter.Converted(*frame), &resized);
    return resized;
}

Picture ReadPicture(const std::string& path, std::uint32_t bytesPerPixel) {
    VideoReader reader(path);
    Picture picture(reader.Width(), reader.Height(), bytesPerPixel);
    reader.Read(&picture);
    return picture;
}

void SilenceAv() {
    av_log_set_level(AV_LOG_QUIET);
}

std::string ReasonOf(int result) {
    if (result == AVERROR(ENOMEM)) {
        throw std::bad_alloc();
    }
    char reason[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(result, reason, sizeof reason);
    return reason;
}

void CheckAv(int result, std::string_view sentence) {
    if (result < 0) {
        throw Failure(std::string(sentence) + ": " + ReasonOf(result));
    }
}

AvOwner<AVFrame> NewFrame(AVPixelFormat format, std::uint32_t width, std::uint32_t height) {
    AvOwner<AVFrame> frame = OwnAllocated(av_frame_alloc());
    frame->format = format;
    frame->width = static_cast<int>(width);
    frame->height = static_cast<int>(height);
    CheckAv(av_frame_get_buffer(frame.get(), 0), "a frame cannot be made");
    return frame;
}

AVPixelFormat PixelFormatOf(std::uint32_t bytesPerPixel) {
    return bytesPerPixel == 4 ? AV_PIX_FMT_RGB0 : AV_PIX_FMT_RGB24;
}

void CopyPixels(const Picture& picture, AVFrame* frame) {
    av_image_copy_plane(frame->data[0], frame->linesize[0], picture.pixels.data(),
                        static_cast<int>(picture.stride),
                        static_cast<int>(picture.width * picture.bytesPerPixel), frame->height);
}

void CopyPixels(const AVFrame& frame, Picture* picture) {
    av_image_copy_plane(picture->pixels.data(), static_cast<int>(picture->stride), frame.data[0],
                        frame.linesize[0],
                        static_cast<int>(picture->width * picture->bytesPerPixel), frame.height);
}

}  // namespace KivFisheyeTools

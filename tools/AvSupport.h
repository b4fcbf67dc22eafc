#ifndef KIVFISHEYE_TOOLS_AV_SUPPORT_H
#define KIVFISHEYE_TOOLS_AV_SUPPORT_H

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "Failure.h"
#include "Picture.h"

/// Owners of FFmpeg's objects, and the way between its frames and pictures.
namespace KivFisheyeTools {

struct AvDeleter {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
    void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
    void operator()(AVIOContext* io) const {
        av_freep(&io->buffer);
        avio_context_free(&io);
    }
};

template <typename Object>
using AvOwner = std::unique_ptr<Object, AvDeleter>;

/// Takes ownership of a new object, which FFmpeg gives as null when memory runs out.
template <typename Object>
AvOwner<Object> OwnAllocated(Object* object) {
    if (object == nullptr) {
        throw std::bad_alloc();
    }
    return AvOwner<Object>(object);
}

/// Keeps FFmpeg from writing its own messages.
void SilenceAv();

/// FFmpeg's words for a failure; running out of memory is thrown as `std::bad_alloc`.
std::string ReasonOf(int result);

/// Throws `Failure` with the sentence and FFmpeg's reason when `result` is a failure.
void CheckAv(int result, std::string_view sentence);

/// A frame with room for its pixels.
AvOwner<AVFrame> NewFrame(AVPixelFormat format, std::uint32_t width, std::uint32_t height);

/// The pixel format of pictures with so many bytes a pixel.
AVPixelFormat PixelFormatOf(std::uint32_t bytesPerPixel);

/// Copies between a picture and a frame of its size and pixel format.
void CopyPixels(const Picture& picture, AVFrame* frame);
void CopyPixels(const AVFrame& frame, Picture* picture);

}  // namespace KivFisheyeTools

#endif

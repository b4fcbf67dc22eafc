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

/// Throws `Failure` with the sentence and FFmpeg's reason when `result` is a failure; running out
/// of memory is `std::bad_alloc`.
void CheckAv(int result, const std::string& sentence);

/// The frame converted to another pixel format and size.
AvOwner<AVFrame> ConvertedFrame(const AVFrame& frame, AVPixelFormat format, int width, int height);

AvOwner<AVFrame> FrameOfPicture(const Picture& picture);
Picture PictureOfFrame(const AVFrame& frame, std::uint32_t bytesPerPixel);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TESTS_CLIENT_FRAME_H
#define KIVFISHEYE_TESTS_CLIENT_FRAME_H

#include <cstdint>
#include <vector>

#include "KivFisheyeLib.h"

/// A frame as a client makes it: the memory, and the record that describes it.
struct ClientFrame {
    ClientFrame(std::uint32_t width, std::uint32_t height, KivFisheyeLib::PixelFormat format,
                unsigned char fill = 0);
    ClientFrame(const ClientFrame&) = delete;
    ClientFrame& operator=(const ClientFrame&) = delete;
    ClientFrame(ClientFrame&&) = default;

    /// A frame whose every pixel tells its own place.
    static ClientFrame OfCoordinates(std::uint32_t width, std::uint32_t height,
                                     KivFisheyeLib::PixelFormat format);

    void Fill(unsigned char value);
    bool IsFilledWith(unsigned char value) const;
    int Width() const { return static_cast<int>(record.width); }
    int Height() const { return static_cast<int>(record.height); }
    int Stride() const { return static_cast<int>(record.stride); }

    std::vector<unsigned char> bytes;
    KivFisheyeLib::VideoFrameInfo record;
};

/// Bytes of one pixel: 3 for the two formats of 24 bits, 4 for the two of 32.
constexpr int BytesPerPixelOf(KivFisheyeLib::PixelFormat format) {
    return format == KivFisheyeLib::PixelFormatRGB24 ||
                   format == KivFisheyeLib::PixelFormatBottomUpRGB24
               ? 3
               : 4;
}

bool IsSameRecord(const KivFisheyeLib::VideoFrameInfo& a, const KivFisheyeLib::VideoFrameInfo& b);

/// The frame's pixels moved to the left by `columns`, those that leave coming back on the right.
/// Padding is as it was.
std::vector<unsigned char> TurnedLeft(const ClientFrame& frame, int bytesPerPixel, int columns);

#endif

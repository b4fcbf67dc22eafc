#ifndef KIVFISHEYE_FRAME_LIMITS_H
#define KIVFISHEYE_FRAME_LIMITS_H

#include <algorithm>
#include <cstdint>
#include <limits>

// What keeps reads inside the source frame and writes inside the output frame. Sizes arrive as ints
// that may have been unsigned numbers beyond the range of int, so a negative one stands for a huge
// one.

constexpr std::int64_t kLargestOffset = std::numeric_limits<std::int32_t>::max();

/// A frame of these sides has no pixel.
constexpr bool IsEmptyFrame(int width, int height) {
    return width == 0 || height == 0;
}

/// Whether every pixel of a source frame has a byte offset that a 32-bit int holds, and every row
/// fits in its stride. A stride that wrapped around in 32 bits is shorter than its row.
constexpr bool IsAddressableSource(int width, int height, int stride, int bytesPerPixel) {
    const std::int64_t rowBytes = std::int64_t{width} * bytesPerPixel;
    return width >= 0 && height >= 0 && rowBytes <= stride &&
           (std::int64_t{height} - 1) * stride + rowBytes <= kLargestOffset;
}

/// Whether a table can have one entry for every pixel of an output frame.
constexpr bool IsAddressableTable(int width, int height) {
    return width >= 0 && height >= 0 && std::int64_t{width} * height <= kLargestOffset;
}

/// How many of the `width` pixels of row `y` end inside the `stride` times `height` bytes of an
/// output frame. All of them, but for frames whose stride is shorter than their rows: those were
/// described for smaller pixels, or their stride wrapped around.
constexpr int PixelsInsideFrame(int width, int height, int stride, int y, int bytesPerPixel) {
    const std::int64_t bytesLeft = (std::int64_t{height} - y) * stride;
    const std::int64_t pixelsLeft = bytesLeft / bytesPerPixel;
    return static_cast<int>(std::clamp<std::int64_t>(pixelsLeft, 0, std::max(width, 0)));
}

#endif

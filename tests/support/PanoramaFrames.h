#ifndef KIVFISHEYE_TESTS_PANORAMA_FRAMES_H
#define KIVFISHEYE_TESTS_PANORAMA_FRAMES_H

#include <cstddef>
#include <iosfwd>
#include <vector>

// What the models of all panoramas share.

/// The frames of one panorama: sizes in pixels, strides in bytes, and the lens as fractions of the
/// source frame.
struct PanoramaFrames {
    int srcWidth = 0;
    int srcHeight = 0;
    int srcStride = 0;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    float radiusX = 0.5F;
    float radiusY = 0.5F;

    /// Bytes up to the end of the last row's last pixel, or of the last row's stride.
    std::size_t SourceBytes(int bytesPerPixel) const;
    std::size_t OutputBytes() const;
};

std::ostream& operator<<(std::ostream& out, const PanoramaFrames& frames);

/// Frames without row padding.
PanoramaFrames PackedFrames(int srcWidth, int srcHeight, int dstWidth, int dstHeight,
                            int bytesPerPixel);

/// The value that stands for an output pixel without a source pixel.
constexpr int kNoSource = -1;

/// What a conversion does to a row before it stores the row's pixels.
enum class RowStart { Cleared, Kept };

/// Stores the pixels at `offsets` of `src` into `dst`, byte by byte and in order. Pixels that would
/// end beyond the frame are left out, and rows beyond the offsets' are left as they are.
void Paint(const std::vector<int>& offsets, const PanoramaFrames& frames, int bytesPerPixel,
           RowStart rowStart, const std::vector<unsigned char>& src,
           std::vector<unsigned char>& dst);

#endif

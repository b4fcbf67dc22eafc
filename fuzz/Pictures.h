#ifndef KIVFISHEYE_FUZZ_PICTURES_H
#define KIVFISHEYE_FUZZ_PICTURES_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "FuzzInput.h"
#include "support/GuardedBuffer.h"

// Frames in memory that cannot be left: sources whose pixels tell their places, and outputs that
// are filled with bytes that no source has.

/// Tells no place inside a source, whatever the pixel size.
constexpr unsigned char kFill = 0xEE;

/// How frame memory is laid out.
struct FrameShape {
    std::uint64_t RowBytes() const {
        return std::uint64_t{width} * static_cast<std::uint64_t>(bytesPerPixel);
    }
    std::size_t Bytes() const { return std::size_t{stride} * height; }

    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t stride;
    int bytesPerPixel;
};

/// Ends or begins at memory that can be neither read nor written.
std::unique_ptr<GuardedBuffer> MakeGuarded(FuzzInput& choices, std::size_t bytes);

/// Makes memory of which only `shape.stride` times `shape.height` bytes may be read, or none at all
/// for a frame that is too large to be there. Nothing writes to it.
std::unique_ptr<GuardedBuffer> MakeSource(FuzzInput& choices, const FrameShape& shape);

/// A frame so large is claimed, and has no memory.
bool IsOnlyClaimed(const FrameShape& shape);

/// What becomes of the bytes of an output frame.
struct PictureRule {
    enum class Padding { Kept, Cleared };
    /// Rows from this one on stay as they are.
    std::uint32_t writtenRows;
    Padding padding;
    /// Their pixels become black instead.
    bool clearsOtherRows = false;
    /// No pixel of the source is copied.
    bool isBlack = false;
    /// No pixel is black.
    bool isFull = false;
    /// Some pixel is not black.
    bool showsSomething = false;
};

/// Looks at an output frame that was full of `kFill` before, or of `background`. Pixels of a row
/// that its stride has no room for are not looked at where the next row covers them.
void CheckPicture(const unsigned char* output, const FrameShape& shape, const FrameShape& source,
                  const PictureRule& rule, unsigned char background = kFill);

/// Whether all bytes are `value`.
bool IsFilledWith(const unsigned char* bytes, std::size_t count, unsigned char value);

#endif

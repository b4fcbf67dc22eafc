#ifndef KIVFISHEYE_TYPES_H
#define KIVFISHEYE_TYPES_H

#include <cstdint>

/// The values that go into a camera context and come out of it.
namespace KivFisheyeLib {

/// How the pixels of both frames are stored. Pixels are opaque bytes that are copied unchanged, so
/// "RGB" stands for any order of channels. The camera accepts the two formats whose rows run from
/// the top; the bottom-up ones are named for bitmap headers alone.
enum PixelFormat : std::uint32_t {
    PixelFormatBottomUpRGB24 = 0,  ///< 3 bytes, rows from the bottom; not accepted
    PixelFormatRGB24 = 1,          ///< 3 bytes, rows from the top
    PixelFormatBottomUpRGB32 = 2,  ///< 4 bytes, rows from the bottom; not accepted
    PixelFormatRGB32 = 3           ///< 4 bytes, rows from the top
};

/// Where the camera hangs, and so which way its lens looks: ahead, down, or up.
enum MountType : std::uint32_t {
    MountTypeWall = 0,     ///< looks ahead
    MountTypeCeiling = 1,  ///< looks down
    MountTypeTable = 2     ///< looks up
};

/// What the output shows: a flat view that pans, tilts and zooms, two half panoramas one above the
/// other, or the whole panorama. A wall camera has no dual panorama.
enum ViewType : std::uint32_t {
    ViewTypeVCam = 0,          ///< a virtual camera
    ViewTypeDualPanorama = 1,  ///< two halves of a ring
    ViewTypeFullPanorama = 2   ///< a whole ring, or what a wall camera sees
};

/// One frame in the client's memory.
///
/// `stride` must be exact: the 3 or 4 bytes of each pixel of a row, and after them as many bytes of
/// padding as lead to the next multiple of 4. `buffer` is the first pixel of the top row and leads
/// to `stride` times `height` bytes. The library keeps the address and never frees it: the memory
/// must stay until another record takes the record's place or the context is deleted. It is read or
/// written in `Process`, and when a change of mount or view converts a frame at once; `Snapshot`
/// reads the input.
struct VideoFrameInfo {
    std::uint32_t width;    ///< pixels in a row
    std::uint32_t height;   ///< rows
    std::uint32_t stride;   ///< bytes from one row to the next
    unsigned char* buffer;  ///< the first pixel; the client's own
};

/// The lens image inside the input frame. It is an ellipse around the frame's centre, whose
/// semi-axes are fractions of the frame's sides: a round lens that is as high as its frame has a
/// `radiusY` of 0.5 and a `radiusX` of 0.5 * height / width.
struct DewarpParams {
    /// Horizontal semi-axis as a fraction of the frame's width, 0 to 1.
    float radiusX;
    /// Vertical semi-axis as a fraction of the frame's height, 0 to 1.
    float radiusY;
    /// Reach of a wall panorama above and below the horizon, 10 to 90 degrees.
    float wallViewAngle;
    /// Part of the radius left out around the centre by ceiling and table panoramas, 0 to 0.8.
    float innerRadiusRatio;
};

/// What a snapshot's block of memory begins with: the fields of a bitmap's header, some of them
/// wider. The pixels follow it at once. Their rows are `width` pixels of 3 or 4 bytes, rounded up
/// to a multiple of 4 bytes.
struct SnapshotHeader {
    std::uint32_t size;                 ///< of this header: 64
    std::uint32_t reserved0;            ///< 0
    std::int64_t width;                 ///< pixels in a row
    std::int64_t height;                ///< rows, negative as they run from the top
    std::uint16_t planes;               ///< 1
    std::uint16_t bitsPerPixel;         ///< 24 or 32
    std::uint32_t compression;          ///< 0
    std::uint32_t imageSize;            ///< bytes of all rows
    std::uint32_t reserved1;            ///< 0
    std::int64_t horizontalResolution;  ///< 0
    std::int64_t verticalResolution;    ///< 0
    std::uint32_t colorsUsed;           ///< 0
    std::uint32_t colorsImportant;      ///< 0
};

}  // namespace KivFisheyeLib

/// The answer of every operation. Failures are positive numbers too, so compare with `kResultOk`
/// and never test for below zero.
using ResultCode = std::int64_t;

/// Done.
const ResultCode kResultOk = 0;
/// Nothing had to be done, which is no failure; and what `IsPixelFormatAccepted` says for no.
const ResultCode kResultNoChange = 1;
/// The context lacks something that the operation needs, such as a scene or a size.
const ResultCode kResultNotReady = 0x80000001LL;
/// An argument is out of its range, or a pointer to a result is null.
const ResultCode kResultInvalidArgument = 0x80000003LL;
/// A frame's buffer, or a pointer to a result of `GetPTZ` or `Snapshot`, is null.
const ResultCode kResultNullPointer = 0x80000004LL;
/// Memory could not be had.
const ResultCode kResultOutOfMemory = 0x80000005LL;

#endif

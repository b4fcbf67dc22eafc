#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_H

#include "KivFisheyeExport.h"

/// Panoramas of a camera that hangs on a wall and looks ahead.
///
/// A panorama shows the half of the world before the lens by longitude and latitude: its columns
/// run from 90 degrees to the left of the lens axis to 90 degrees to the right of it, its rows from
/// `wallViewAngle` degrees above the horizon to as much below, both evenly, so meridians stand
/// upright and latitudes lie level. The lens image is an ellipse around the source frame's centre.
/// A direction lies the farther from the centre the more it turns off the lens axis, and one 90
/// degrees off it `radiusX` of the frame's width or `radiusY` of its height. There is no pan.
///
/// Frames, pixels and threads are as `UpwardFisheyeAlgoNS` has them. A pixel exactly on the lens
/// axis, which a small panorama of odd sides may have, comes out as zero bytes.
namespace FrontwardFisheyeAlgoNS {

/// Evaluates the mapping afresh for every frame: the slow way, which needs no table. Now and then
/// it takes the source pixel beside the one that `CPanoramaConverter` takes, or at the frame's edge
/// none.
class CPanoramaSimpleConverter {
public:
    /// Throws `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API CPanoramaSimpleConverter();
    KIVFISHEYE_API ~CPanoramaSimpleConverter();
    CPanoramaSimpleConverter(const CPanoramaSimpleConverter&) = delete;
    CPanoramaSimpleConverter& operator=(const CPanoramaSimpleConverter&) = delete;

    /// Stores the sizes in pixels, strides in bytes and the lens, with `wallViewAngle` in degrees;
    /// nothing is computed or checked. `bitsPerPixel` is kept and not used: the conversion that is
    /// called says the pixel size.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float wallViewAngle);

    /// Converts one frame. Every row is cleared first, padding included; a source without pixels,
    /// or one whose rows do not fit in its stride, leaves it at that. Throws `std::bad_alloc` when
    /// memory runs out.
    KIVFISHEYE_API void CvtRGB24(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(const unsigned char* src, unsigned char* dst);

private:
    struct Impl;
    Impl* m_impl;
};

/// Converts frames by a table of source addresses that `Init` builds once.
class CPanoramaConverter {
public:
    /// Throws `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API CPanoramaConverter();
    KIVFISHEYE_API ~CPanoramaConverter();
    CPanoramaConverter(const CPanoramaConverter&) = delete;
    CPanoramaConverter& operator=(const CPanoramaConverter&) = delete;

    /// Builds the table for these sizes in pixels, strides in bytes, lens, and pixels of 24 bits,
    /// or of 32 for any other `bitsPerPixel`. It takes memory and fails as
    /// `UpwardFisheyeAlgoNS::CPanoramaConverter::Init` does.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float wallViewAngle);

    /// Converts one frame of the sizes and the pixel size that `Init` was told; 32-bit conversions
    /// write nothing with a table for 24 bits. Row padding is not touched.
    KIVFISHEYE_API void CvtRGB24(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(const unsigned char* src, unsigned char* dst);

private:
    struct Impl;
    Impl* m_impl;
};

/// The panorama size in pixels that suits a source frame: as wide as the lens image, rounded up to
/// a multiple of 8, and as high as its rim between the latitudes that are shown. Degrees are then
/// taller than wide, by 1.41 at 45; they are square at a height of width * `wallViewAngle` / 90.
KIVFISHEYE_API void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX,
                                           float radiusY, float wallViewAngle, int& width,
                                           int& height);

/// Width over height of that panorama before any rounding, or 1.0 for one without height. NaN gives
/// NaN.
KIVFISHEYE_API float GetBestFitPanoramaRatio(int srcWidth, int srcHeight, float radiusX,
                                             float radiusY, float wallViewAngle);

}  // namespace FrontwardFisheyeAlgoNS

#endif

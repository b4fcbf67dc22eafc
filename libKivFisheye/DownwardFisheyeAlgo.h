#ifndef KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_H
#define KIVFISHEYE_DOWNWARD_FISHEYE_ALGO_H

#include "KivFisheyeExport.h"

/// Panoramas of a camera that hangs from a ceiling and looks down.
///
/// The lens is as `UpwardFisheyeAlgoNS` has it. Row 0 of a panorama shows the ring's outer edge,
/// `radiusX` and `radiusY` from the centre, and the last row its inner edge, `innerRadiusRatio` of
/// that, so the horizon is at the top. Column 0 looks to the right of the lens. A quarter of the
/// width further on a picture made by an address table shows the bottom of the lens and a direct
/// one its top.
/// The last column shows the first one's direction again.
///
/// From left to right the upper half of a dual panorama shows the lens's left side, its top and its
/// right side; the lower one goes on with right, bottom and left. Both have the horizon at their
/// top.
///
/// Frames, pixels and threads are as for a table camera.
namespace DownwardFisheyeAlgoNS {

/// Evaluates the mapping afresh for every frame: the slow way, which needs no table and turns by
/// any fraction of a column. Its picture at `pan` is, to within a column, the mirror image of
/// what `CPanoramaConverter` makes at 360 minus `pan`.
class CPanoramaSimpleConverter {
public:
    /// Throws `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API CPanoramaSimpleConverter();
    KIVFISHEYE_API ~CPanoramaSimpleConverter();
    CPanoramaSimpleConverter(const CPanoramaSimpleConverter&) = delete;
    CPanoramaSimpleConverter& operator=(const CPanoramaSimpleConverter&) = delete;

    /// Stores the sizes in pixels, strides in bytes and the lens; nothing is computed or checked.
    /// `bitsPerPixel` is kept and not used: the conversion that is called says the pixel size.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float innerRadiusRatio);

    /// Converts one frame, turned by `pan` degrees. Every row is cleared first, padding included; a
    /// source without pixels, or one whose rows do not fit in its stride, leaves it at that. Throws
    /// `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API void CvtRGB24(float pan, const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(float pan, const unsigned char* src, unsigned char* dst);

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
    /// or of 32 for any other `bitsPerPixel`. It takes 4 bytes for each output pixel and a
    /// twentieth of that again; more, up to a quarter, when the output is much smaller than the
    /// source. Building takes up to a twelfth of the source's bytes as well. Throws
    /// `std::bad_alloc`, and conversions then write nothing, when memory runs out, when output
    /// pixels or source bytes exceed what a 32-bit int counts, or when the source's rows do not fit
    /// in its stride.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float innerRadiusRatio);

    /// Converts one frame of the sizes and the pixel size that `Init` was told; 32-bit conversions
    /// write nothing with a table for 24 bits. Row padding is not touched. The overloads with
    /// `pan`, in degrees, move the picture to the left by whole columns, so 360 divided by
    /// `dstWidth` is the smallest turn; they do not turn for a negative pan, and write nothing for
    /// NaN and plus infinity.
    KIVFISHEYE_API void CvtRGB24(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB24(float pan, const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(float pan, const unsigned char* src, unsigned char* dst);

private:
    struct Impl;
    Impl* m_impl;
};

/// Evaluates the mapping of a dual panorama afresh for every frame, turned by any fraction of a
/// column, forwards and backwards. A pan of 180 exchanges the halves here.
class CDualPanoramaSimpleConverter {
public:
    /// Throws `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API CDualPanoramaSimpleConverter();
    KIVFISHEYE_API ~CDualPanoramaSimpleConverter();
    CDualPanoramaSimpleConverter(const CDualPanoramaSimpleConverter&) = delete;
    CDualPanoramaSimpleConverter& operator=(const CDualPanoramaSimpleConverter&) = delete;

    /// Stores the arguments, whose units and meaning are those of `CPanoramaSimpleConverter`.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float innerRadiusRatio);

    /// Converts one frame, turned by `pan` degrees: the two halves are one ring, the picture moves
    /// to the right, and what leaves one half enters the other. Otherwise as the full panorama's.
    /// An odd last row is left as it is.
    KIVFISHEYE_API void CvtRGB24(float pan, const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(float pan, const unsigned char* src, unsigned char* dst);

private:
    struct Impl;
    Impl* m_impl;
};

/// Converts frames into dual panoramas by a table.
class CDualPanoramaConverter {
public:
    /// Throws `std::bad_alloc` when memory runs out.
    KIVFISHEYE_API CDualPanoramaConverter();
    KIVFISHEYE_API ~CDualPanoramaConverter();
    CDualPanoramaConverter(const CDualPanoramaConverter&) = delete;
    CDualPanoramaConverter& operator=(const CDualPanoramaConverter&) = delete;

    /// Builds the table. Arguments, memory and failures are those of `CPanoramaConverter`.
    KIVFISHEYE_API void Init(int srcWidth, int srcHeight, int srcStride, int dstWidth,
                             int dstHeight, int dstStride, int bitsPerPixel, float radiusX,
                             float radiusY, float innerRadiusRatio);

    /// Converts one frame as `CPanoramaConverter` does, but a growing `pan` moves the picture to
    /// the right, by 180 divided by `dstWidth` degrees at least, and what leaves one half enters
    /// the other. A context, which passes 360 minus its pan, turns the other way. A pan of exactly
    /// 180 is the picture of 0, while just beside it the halves have changed places. A turn
    /// leaves an odd last row as it is; without a `pan` above 0 it becomes zero bytes.
    KIVFISHEYE_API void CvtRGB24(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB24(float pan, const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(const unsigned char* src, unsigned char* dst);
    KIVFISHEYE_API void CvtRGB32(float pan, const unsigned char* src, unsigned char* dst);

private:
    struct Impl;
    Impl* m_impl;
};

/// The panorama size in pixels that suits a source frame: as high as the ring is wide and four
/// outer radii long, along whichever axis of the lens ellipse reaches further as a fraction of the
/// frame. The width is rounded up to a multiple of 8.
KIVFISHEYE_API void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX,
                                           float radiusY, float innerRadiusRatio, int& width,
                                           int& height);

/// Width over height of that panorama before any rounding, or 1.0 for a ring without extent. The
/// source's size does not enter.
KIVFISHEYE_API float GetBestFitPanoramaRatio(int srcWidth, int srcHeight, float radiusX,
                                             float radiusY, float innerRadiusRatio);

/// The size in pixels of a dual panorama that suits a source frame: the pixels of the full one,
/// folded in two. The width is rounded up to a multiple of 8, and the height may be odd.
KIVFISHEYE_API void GetBestFitDualPanoramaSize(int srcWidth, int srcHeight, float radiusX,
                                               float radiusY, float innerRadiusRatio, int& width,
                                               int& height);

/// Width over height of that panorama before any rounding, or 1.0 for a ring without extent. The
/// source's size does not enter.
KIVFISHEYE_API float GetBestFitDualPanoramaRatio(int srcWidth, int srcHeight, float radiusX,
                                                 float radiusY, float innerRadiusRatio);

}  // namespace DownwardFisheyeAlgoNS

#endif

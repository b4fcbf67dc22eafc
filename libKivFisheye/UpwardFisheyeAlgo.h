#ifndef KIVFISHEYE_UPWARD_FISHEYE_ALGO_H
#define KIVFISHEYE_UPWARD_FISHEYE_ALGO_H

#include "KivFisheyeExport.h"

/// Panoramas of a camera that lies on a table and looks up.
///
/// The lens image is an ellipse around the source frame's centre, `radiusX` of the frame's width
/// and `radiusY` of its height from centre to edge, and the radius grows with the angle off the
/// lens axis. Row 0 of a panorama shows the ring's inner edge, `innerRadiusRatio` of the radius,
/// and the last row its outer edge. Column 0 looks to the right of the lens, and a quarter of the
/// width further on the picture shows the top of the lens. The last column shows the first one's
/// direction again.
///
/// A dual panorama is two half panoramas, one above the other, each half the output's height. From
/// left to right the upper one shows the lens's right side, its top and its left side; the lower
/// one goes on with left, bottom and right.
///
/// Frames are pixels of 24 or 32 bits that are copied unchanged, in rows `stride` bytes apart;
/// strides are not negative. A processor with SSE4.1 takes the nearest source pixel, another one
/// the next towards the frame's top left. A panorama pixel that falls outside the source frame
/// comes out as zero bytes. Nothing is written beyond `dstStride` times `dstHeight` bytes, and
/// source and output must not overlap. A converter has no lock: conversions may run at once on
/// different outputs, `Init` may not run beside them. The functions may run on any thread at any
/// time.
namespace UpwardFisheyeAlgoNS {

/// Evaluates the mapping afresh for every frame: the slow way, which needs no table and turns by
/// any fraction of a column.
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

/// The same as `DownwardFisheyeAlgoNS::GetBestFitPanoramaSize`: both mounts see the same ring.
KIVFISHEYE_API void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX,
                                           float radiusY, float innerRadiusRatio, int& width,
                                           int& height);

/// The same as `DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio`.
KIVFISHEYE_API float GetBestFitPanoramaRatio(int srcWidth, int srcHeight, float radiusX,
                                             float radiusY, float innerRadiusRatio);

/// The same as `DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize`.
KIVFISHEYE_API void GetBestFitDualPanoramaSize(int srcWidth, int srcHeight, float radiusX,
                                               float radiusY, float innerRadiusRatio, int& width,
                                               int& height);

/// The same as `DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio`.
KIVFISHEYE_API float GetBestFitDualPanoramaRatio(int srcWidth, int srcHeight, float radiusX,
                                                 float radiusY, float innerRadiusRatio);

}  // namespace UpwardFisheyeAlgoNS

#endif

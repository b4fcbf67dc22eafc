#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_C_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_ALGO_C_H

#include <algorithm>
#include <array>
#include <cmath>

#include "ColumnAngles.h"
#include "Degrees.h"
#include "MemoryUtils.h"
#include "OutputRows.h"
#include "PanoramaWalk.h"
#include "Pixel.h"
#include "RunningAngle.h"
#include "TableConversion.h"
#include "wall/WallDirection.h"
#include "wall/WallJob.h"

/// The kernels of a wall camera in scalar arithmetic: the definition of the mapping.
///
/// Columns are longitudes from a quarter turn left of the lens axis to a quarter turn right of it,
/// rows latitudes from `wallViewAngle` above the horizon to as much below. The lens is equidistant:
/// a direction lies as far from the frame's centre as it turns away from the axis, and a quarter
/// turn away lies `radiusX` of the frame's width or `radiusY` of its height out. The nearest source
/// pixel towards the frame's top left is taken.
namespace FrontwardFisheyeAlgoNS::C {

/// A point of the source frame from its centre, in fractions of the frame, v downward.
struct LensPoint {
    float u;
    float v;
};

// From a direction to its point. Direct conversions and tables group the products each in its own
// way, and now and then land on neighbouring pixels. Clients compare with pictures of either, so
// both stay as they are.

struct DirectProducts {
    static LensPoint PointOf(const wall::Direction& d, float kx, float ky) {
        const float inverse = 1.0F / d.r;
        return {(d.x * inverse) * (kx * d.alpha), (d.y * inverse) * (ky * d.alpha)};
    }
};

struct TableProducts {
    static LensPoint PointOf(const wall::Direction& d, float kx, float ky) {
        const float k = d.alpha / d.r;
        return {d.x * (kx * k), d.y * (ky * k)};
    }
};

/// The points that a panorama shows, row by row.
template <class Products>
class WallWalk {
public:
    explicit WallWalk(const wall::WallJob& job)
        : m_longitudes({-kQuarterTurn, kQuarterTurn}, job.dstWidth),
          m_latitude(AngleOf(-HalfAngle(job))),
          m_latitudeStep(AngleOf(StepOf({-HalfAngle(job), HalfAngle(job)}, job.dstHeight))),
          m_kx(job.radiusX * kQuarterTurnsPerRadian),
          m_ky(job.radiusY * kQuarterTurnsPerRadian) {}

    /// Calls `visit(column, u, v)`, v upward, for each of the first `columns` columns whose point
    /// lies in the source frame, its edges included. The lens axis itself has no direction in the
    /// image plane: its point is NaN, and lies nowhere.
    template <class Visit>
    void VisitRow(int columns, Visit&& visit) const {
        const float* const sines = m_longitudes.Sines();
        const float* const cosines = m_longitudes.Cosines();
        for (int column = 0; column < columns; ++column) {
            const wall::Direction direction(cosines[column], sines[column], m_latitude.cosine,
                                            m_latitude.sine);
            const LensPoint point = Products::PointOf(direction, m_kx, m_ky);
            if (std::fabs(point.u) <= 0.5F && std::fabs(point.v) <= 0.5F) {
                visit(column, point.u, -point.v);
            }
        }
    }

    void NextRow() { m_latitude.Advance(m_latitudeStep); }

private:
    static float HalfAngle(const wall::WallJob& job) {
        return job.wallViewAngle * kDegreesToRadians;
    }

    ColumnAngles m_longitudes;
    RunningAngle<float> m_latitude;  // positive downward
    RunningAngle<float> m_latitudeStep;
    float m_kx;
    float m_ky;
};

/// Converts one frame, evaluating the mapping afresh.
template <unsigned long bits>
void CvtPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                    int dstWidth, int dstHeight, int dstStride, unsigned char* dst, float radiusX,
                    float radiusY, float wallViewAngle) {
    using Pixel = PixelT<bits>;
    const wall::WallJob job{
        {{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
         radiusX,
         radiusY},
        wallViewAngle};
    if (job.HasPixels(Pixel::kBytes)) {
        ConvertWalk<Pixel>(job, WallWalk<DirectProducts>(job), src, dst);
    } else {
        ClearRows(dst, dstHeight, dstStride);
    }
}

/// Fills `table`, which has an entry for every pixel of the panorama, with the byte offset of each
/// one's source pixel, or `outOfFrame`.
template <int bits, int outOfFrame>
void InitPanoramaCoorToFisheyeAddrOffsetTableRGB(int srcWidth, int srcHeight, int srcStride,
                                                 int dstWidth, int dstHeight, int dstStride,
                                                 float radiusX, float radiusY, float wallViewAngle,
                                                 CAlignedBufferT<int, 32>& table) {
    std::fill_n(table.data(), table.count(), outOfFrame);
    const wall::WallJob job{
        {{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bits}, radiusX, radiusY},
        wallViewAngle};
    if (table.count() != 0 && job.HasSource()) {
        FillTable<bits / 8>(job, WallWalk<TableProducts>(job), table.data());
    }
}

/// Converts one frame of 32-bit pixels by a table.
template <int outOfFrame>
void CvtPanoramaRGB32ByFisheyeAddrOffsetTable(const unsigned char* src, int dstWidth, int dstHeight,
                                              int dstStride, unsigned char* dst,
                                              const CAlignedBufferT<int, 32>& table) {
    if (table.count() == 0) {
        return;
    }
    TableConversion<PixelT<32>::kBytes>({table.data(), dstWidth, dstHeight, dstStride}, dst)
        .MakeRows(
            dstHeight, std::array{TableRun{0, 0, dstWidth}}, TableTiles::WholeRows(dstWidth), [] {},
            [src](const int* entries, int count, unsigned char* pixels) {
                TablePixels<PixelT<32>, outOfFrame>::Make(entries, count, src, pixels);
            });
}

}  // namespace FrontwardFisheyeAlgoNS::C

#endif

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
#include "wall/WallRows.h"

/// The kernels of a wall camera in scalar arithmetic: the definition of the mapping.
///
/// Columns are longitudes from a quarter turn left of the lens axis to a quarter turn right of it,
/// rows latitudes from `wallViewAngle` above the horizon to as much below. The lens is equidistant:
/// a direction lies as far from the frame's centre as it turns away from the axis, and a quarter
/// turn away lies `radiusX` of the frame's width or `radiusY` of its height out. The source
/// pixel that it meets is taken, or else the next one towards the frame's top left.
namespace FrontwardFisheyeAlgoNS::C {

using scalar::ConvertWalk;
using scalar::FillTable;

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
        : m_longitudes(wall::kLongitudes, job.dstWidth), m_rows(job) {}

    /// Calls `visit(column, u, v)`, v upward, for each of the first `columns` columns whose point
    /// lies in the source frame, its edges included. The lens axis itself has no direction in the
    /// image plane: its point is NaN, and lies nowhere.
    template <class Visit>
    void VisitRow(int columns, Visit&& visit) const {
        const float* const sines = m_longitudes.Sines();
        const float* const cosines = m_longitudes.Cosines();
        for (int column = 0; column < columns; ++column) {
            const wall::Direction direction(cosines[column], sines[column], m_rows.latitude.cosine,
                                            m_rows.latitude.sine);
            const LensPoint point = Products::PointOf(direction, m_rows.kx, m_rows.ky);
            if (std::fabs(point.u) <= 0.5F && std::fabs(point.v) <= 0.5F) {
                visit(column, point.u, -point.v);
            }
        }
    }

    void NextRow() { m_rows.Next(); }

private:
    ColumnAngles m_longitudes;
    wall::Rows m_rows;
};

#include "wall/WallConversion.inl"
#include "wall/WallTable.inl"

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

#ifndef KIVFISHEYE_RING_KERNELS_C_H
#define KIVFISHEYE_RING_KERNELS_C_H

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ColumnAngles.h"
#include "Degrees.h"
#include "MemoryUtils.h"
#include "OutputRows.h"
#include "PanoramaWalk.h"
#include "Pixel.h"
#include "SourcePixels.h"
#include "ring/RingJob.h"
#include "ring/RingMount.h"

// The unrolling of the ring, in scalar arithmetic: the definition of the mapping.
//
// A panorama's row stands for one ellipse around the frame's centre and its column for one angle, 0
// at the right of the lens and a quarter turn at its top. Rows are evenly spaced in radius, columns
// in angle. The point at (u, v) from the centre, in fractions of the frame with v upward, is
// sampled at the source pixel that holds it. Angles and radii grow by repeated addition in single
// precision, and what that rounds away is part of the result.
//
// A dual panorama is two half panoramas, one above the other. Its columns span half a turn, and the
// lower half shows at each place what lies opposite, through the lens's centre.

namespace ring::C {

/// The points of the ring, row by row of the panorama.
template <class Mount>
class RingWalk {
public:
    RingWalk(const RingJob& job, Span angles, int rows)
        : m_angles(angles, job.dstWidth),
          m_radiiX(Mount::Radii(job.radiusX * job.innerRadiusRatio, job.radiusX)),
          m_radiiY(Mount::Radii(job.radiusY * job.innerRadiusRatio, job.radiusY)),
          m_stepX(StepOf(m_radiiX, rows)),
          m_stepY(StepOf(m_radiiY, rows)),
          m_radiusX(m_radiiX.first),
          m_radiusY(m_radiiY.first) {}

    /// Calls `visit(x, u, v)` for each of the first `columns` columns whose point lies in the
    /// source frame, its edges included.
    template <class Visit>
    void VisitRow(int columns, Visit&& visit) const {
        const float* const sines = m_angles.Sines();
        const float* const cosines = m_angles.Cosines();
        for (int x = 0; x < columns; ++x) {
            const float u = m_radiusX * cosines[x];
            if (!(std::fabs(u) <= 0.5F)) {
                continue;
            }
            const float v = m_radiusY * sines[x];
            if (!(std::fabs(v) <= 0.5F)) {
                continue;
            }
            visit(x, u, v);
        }
    }

    void NextRow() {
        m_radiusX += m_stepX;
        m_radiusY += m_stepY;
    }

private:
    ColumnAngles m_angles;
    Span m_radiiX;
    Span m_radiiY;
    float m_stepX;
    float m_stepY;
    float m_radiusX;
    float m_radiusY;
};

/// Converts one frame into a full panorama turned by `pan` degrees, evaluating the mapping afresh.
template <class Mount, unsigned long bitsPerPixel>
void ConvertFull(const RingJob& job, const unsigned char* src, unsigned char* dst, float pan) {
    using Pixel = PixelT<bitsPerPixel>;
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(dst, job.dstHeight, job.dstStride);
        return;
    }
    // On both mounts the angle rises here, while a ceiling table's falls: clients of the direct
    // conversion rely on its ceiling picture being the mirror image of the table's.
    const float start = pan * kDegreesToRadians;
    const float end = start + kFullTurn;
    ConvertWalk<Pixel>(job, RingWalk<Mount>(job, {start, end}, job.dstHeight), src, dst);
}

/// Converts one frame into a dual panorama turned by `pan` degrees, the other way than a full one.
/// An odd last row belongs to neither half and is left as it is.
template <class Mount, unsigned long bitsPerPixel>
void ConvertDual(const RingJob& job, const unsigned char* src, unsigned char* dst, float pan) {
    using Pixel = PixelT<bitsPerPixel>;
    const int half = job.dstHeight / 2;
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(dst, 2 * half, job.dstStride);
        return;
    }
    RingWalk<Mount> walk(job, Mount::HalfTurnAt(pan * kDegreesToRadians), half);
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    for (int y = 0; y < half; ++y) {
        const ClearedRow<Pixel> upper(job, dst, y);
        const ClearedRow<Pixel> lower(job, dst, half + y);
        walk.VisitRow(upper.Columns(), [&](int x, float u, float v) {
            Pixel::Copy(src + source.OffsetAt(u, v), upper.At(x));
            if (x < lower.Columns()) {
                Pixel::Copy(src + source.OffsetAt(-u, -v), lower.At(x));
            }
        });
        walk.NextRow();
    }
}

/// Fills `table`, which has an entry for every pixel of the panorama, with the byte offset of each
/// one's source pixel, or `outOfFrame`.
template <class Mount, int bitsPerPixel, int outOfFrame>
void BuildFullTable(const RingJob& job, CAlignedBufferT<int, 32>& table) {
    std::fill_n(table.data(), table.count(), outOfFrame);
    if (table.count() != 0 && job.HasSource()) {
        FillTable<bitsPerPixel / 8>(
            job, RingWalk<Mount>(job, Mount::Angles(kFullTurn), job.dstHeight), table.data());
    }
}

/// The same for a dual panorama. An odd last row shows nothing.
template <class Mount, int bitsPerPixel, int outOfFrame>
void BuildDualTable(const RingJob& job, CAlignedBufferT<int, 32>& table) {
    std::fill_n(table.data(), table.count(), outOfFrame);
    if (table.count() == 0 || !job.HasSource()) {
        return;
    }
    const int half = job.dstHeight / 2;
    RingWalk<Mount> walk(job, Mount::Angles(kHalfTurn), half);
    const SourcePixels<bitsPerPixel / 8> source(job.srcWidth, job.srcHeight, job.srcStride);
    int* upper = table.data();
    int* lower = upper + std::ptrdiff_t{half} * job.dstWidth;
    for (int y = 0; y < half; ++y) {
        walk.VisitRow(job.dstWidth, [&](int x, float u, float v) {
            upper[x] = source.OffsetAt(u, v);
            lower[x] = source.OffsetAt(-u, -v);
        });
        walk.NextRow();
        upper += job.dstWidth;
        lower += job.dstWidth;
    }
}

}  // namespace ring::C

#endif

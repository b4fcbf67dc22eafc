#ifndef KIVFISHEYE_RING_KERNELS_C_H
#define KIVFISHEYE_RING_KERNELS_C_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

#include "Degrees.h"
#include "FrameLimits.h"
#include "MemoryUtils.h"
#include "OutputRows.h"
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

namespace ring::C {

/// The change from one of `count` rows or columns to the next. Meaningless, and not used, for a
/// count of 1.
inline float StepOf(Span span, int count) {
    return (span.last - span.first) / static_cast<float>(count - 1);
}

/// The sine and the cosine of every column's angle.
class ColumnAngles {
public:
    ColumnAngles(Span angles, int columns)
        : m_sines(new float[ArraySize(columns)]), m_cosines(new float[ArraySize(columns)]) {
        const float step = StepOf(angles, columns);
        float* const sines = m_sines.get();
        float* const cosines = m_cosines.get();
        float theta = angles.first;
        for (int x = 0; x < columns; ++x) {
            const double wideTheta = theta;
            sines[x] = static_cast<float>(std::sin(wideTheta));
            cosines[x] = static_cast<float>(std::cos(wideTheta));
            theta += step;
        }
    }

    const float* Sines() const { return m_sines.get(); }
    const float* Cosines() const { return m_cosines.get(); }

private:
    static std::size_t ArraySize(int count) { return static_cast<std::size_t>(std::max(count, 0)); }

    std::unique_ptr<float[]> m_sines;
    std::unique_ptr<float[]> m_cosines;
};

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
    if (job.dstHeight <= 0) {
        return;
    }
    if (IsEmptyFrame(job.srcWidth, job.srcHeight) || job.dstWidth <= 0 ||
        !IsAddressableSource(job.srcWidth, job.srcHeight, job.srcStride, Pixel::kBytes)) {
        ClearRows(dst, job.dstHeight, job.dstStride);
        return;
    }

    // On both mounts the angle rises here, while a ceiling table's falls: clients of the direct
    // conversion rely on its ceiling picture being the mirror image of the table's.
    const float start = pan * kDegreesToRadians;
    const float end = start + kFullTurn;
    RingWalk<Mount> walk(job, {start, end}, job.dstHeight);
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    for (int y = 0; y < job.dstHeight; ++y) {
        unsigned char* const row = dst + std::ptrdiff_t{y} * job.dstStride;
        ClearRow(row, job.dstStride);
        const int columns =
            PixelsInsideFrame(job.dstWidth, job.dstHeight, job.dstStride, y, Pixel::kBytes);
        walk.VisitRow(columns, [&](int x, float u, float v) {
            Pixel::Copy(src + source.OffsetAt(u, v), row + std::ptrdiff_t{x} * Pixel::kBytes);
        });
        walk.NextRow();
    }
}

/// Fills `table`, which has an entry for every pixel of the panorama, with the byte offset of each
/// one's source pixel, or `outOfFrame`.
template <class Mount, int bitsPerPixel, int outOfFrame>
void BuildFullTable(const RingJob& job, CAlignedBufferT<int, 32>& table) {
    std::fill_n(table.data(), table.count(), outOfFrame);
    if (table.count() == 0 || IsEmptyFrame(job.srcWidth, job.srcHeight)) {
        return;
    }
    RingWalk<Mount> walk(job, Mount::Angles(kFullTurn), job.dstHeight);
    const SourcePixels<bitsPerPixel / 8> source(job.srcWidth, job.srcHeight, job.srcStride);
    int* entries = table.data();
    for (int y = 0; y < job.dstHeight; ++y) {
        walk.VisitRow(job.dstWidth,
                      [&](int x, float u, float v) { entries[x] = source.OffsetAt(u, v); });
        walk.NextRow();
        entries += job.dstWidth;
    }
}

}  // namespace ring::C

#endif

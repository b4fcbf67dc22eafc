#ifndef KIVFISHEYE_PANORAMA_WALK_H
#define KIVFISHEYE_PANORAMA_WALK_H

#include <algorithm>
#include <cstddef>

#include "FrameLimits.h"
#include "OutputRows.h"
#include "PanoramaJob.h"
#include "SourcePixels.h"

// What scalar kernels make of a mapping. A walk goes through a panorama's rows: `VisitRow(columns,
// visit)` calls `visit(x, u, v)` for each of the row's first columns that shows a point of the
// source frame, in fractions of the frame from its centre with v upward, and `NextRow()` goes on.

/// A cleared row of the output, padding included, and how many of its pixels lie inside the frame.
template <class Pixel>
class ClearedRow {
public:
    ClearedRow(const PanoramaSizes& job, unsigned char* dst, int y)
        : m_pixels(dst + std::ptrdiff_t{y} * job.dstStride),
          m_columns(
              PixelsInsideFrame(job.dstWidth, job.dstHeight, job.dstStride, y, Pixel::kBytes)) {
        ClearRow(m_pixels, job.dstStride);
    }

    int Columns() const { return m_columns; }
    unsigned char* At(int x) const { return m_pixels + std::ptrdiff_t{x} * Pixel::kBytes; }

private:
    unsigned char* m_pixels;
    int m_columns;
};

namespace scalar {

/// Copies the pixels that a walk visits; the rest of the output is cleared.
template <class Pixel, class Walk>
void ConvertWalk(const PanoramaSizes& job, Walk& walk, const unsigned char* src,
                 unsigned char* dst) {
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    for (int y = 0; y < job.dstHeight; ++y) {
        const ClearedRow<Pixel> row(job, dst, y);
        walk.VisitRow(row.Columns(), [&](int x, float u, float v) {
            Pixel::Copy(src + source.OffsetAt(u, v), row.At(x));
        });
        walk.NextRow();
    }
}

/// Copies the pixels that a walk visits into the upper half of the output, and those that lie
/// opposite them through the source frame's centre into the lower half. An odd last row is left as
/// it is.
template <class Pixel, class Walk>
void ConvertDualWalk(const PanoramaSizes& job, Walk& walk, const unsigned char* src,
                     unsigned char* dst) {
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    const int half = job.dstHeight / 2;
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

/// Stores the byte offsets of the source pixels that a walk visits; other entries say `outOfFrame`.
template <class Pixel, int outOfFrame, class Walk>
void FillTable(const PanoramaSizes& job, Walk& walk, int* entries) {
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    for (int y = 0; y < job.dstHeight; ++y) {
        std::fill_n(entries, job.dstWidth, outOfFrame);
        walk.VisitRow(job.dstWidth,
                      [&](int x, float u, float v) { entries[x] = source.OffsetAt(u, v); });
        walk.NextRow();
        entries += job.dstWidth;
    }
}

/// The same for the two halves of a dual panorama. An odd last row is left as it is.
template <class Pixel, int outOfFrame, class Walk>
void FillDualTable(const PanoramaSizes& job, Walk& walk, int* entries) {
    const SourcePixels<Pixel::kBytes> source(job.srcWidth, job.srcHeight, job.srcStride);
    const int half = job.dstHeight / 2;
    int* upper = entries;
    int* lower = upper + std::ptrdiff_t{half} * job.dstWidth;
    for (int y = 0; y < half; ++y) {
        std::fill_n(upper, job.dstWidth, outOfFrame);
        std::fill_n(lower, job.dstWidth, outOfFrame);
        walk.VisitRow(job.dstWidth, [&](int x, float u, float v) {
            upper[x] = source.OffsetAt(u, v);
            lower[x] = source.OffsetAt(-u, -v);
        });
        walk.NextRow();
        upper += job.dstWidth;
        lower += job.dstWidth;
    }
}

}  // namespace scalar

#endif

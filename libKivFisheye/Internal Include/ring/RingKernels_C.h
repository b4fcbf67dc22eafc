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
#include "ring/RingJob.h"
#include "ring/RingMount.h"
#include "ring/RowRadii.h"

// The unrolling of the ring, in scalar arithmetic: the definition of the mapping.
//
// A panorama's row stands for one ellipse around the frame's centre and its column for one angle, 0
// at the right of the lens and a quarter turn at its top. Rows are evenly spaced in radius, columns
// in angle. The point at (u, v) from the centre, in fractions of the frame with v upward, is
// sampled at the source pixel that it meets, or else the next one towards the frame's top left.
// Angles and radii grow by repeated addition in single precision, and what that rounds away is part
// of the result.
//
// A dual panorama is two half panoramas, one above the other. Its columns span half a turn, and the
// lower half shows at each place what lies opposite, through the lens's centre.

namespace ring::C {

using scalar::ConvertDualWalk;
using scalar::ConvertWalk;
using scalar::FillDualTable;
using scalar::FillTable;

/// The points of the ring, row by row of the panorama.
template <class Mount>
class RingWalk {
public:
    RingWalk(const RingJob& job, Span angles, int rows)
        : m_angles(angles, job.dstWidth), m_radii(RowRadii::Of<Mount>(job, rows)) {}

    /// Calls `visit(x, u, v)` for each of the first `columns` columns whose point lies in the
    /// source frame, its edges included.
    template <class Visit>
    void VisitRow(int columns, Visit&& visit) const {
        const float* const sines = m_angles.Sines();
        const float* const cosines = m_angles.Cosines();
        for (int x = 0; x < columns; ++x) {
            const float u = m_radii.x * cosines[x];
            if (!(std::fabs(u) <= 0.5F)) {
                continue;
            }
            const float v = m_radii.y * sines[x];
            if (!(std::fabs(v) <= 0.5F)) {
                continue;
            }
            visit(x, u, v);
        }
    }

    void NextRow() { m_radii.NextRow(); }

private:
    ColumnAngles m_angles;
    RowRadii m_radii;
};

#include "ring/RingConversions.inl"
#include "ring/RingTables.inl"

}  // namespace ring::C

#endif

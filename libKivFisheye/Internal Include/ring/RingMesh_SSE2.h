#ifndef KIVFISHEYE_RING_MESH_SSE2_H
#define KIVFISHEYE_RING_MESH_SSE2_H

#include "ColumnAngles.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/sseUtil.h"

namespace ring::SSE2 {

/// The columns of a grid, four at a time. Rows are rounded up to whole groups, whose last columns
/// repeat the grid's last one.
class MeshColumns {
public:
    MeshColumns(Span angles, int columns) : m_angles(angles, columns) {}

    /// Writes the points `radius` from the centre and gives where the next row begins.
    float* WriteRow(float center, float radius, float* points) const {
        using sse::sse4Floats;
        const float* const sines = m_angles.Sines();
        const float* const cosines = m_angles.Cosines();
        for (unsigned long long j = 0; j < m_angles.Count(); j += sse4Floats::kLanes) {
            const sse4Floats right = sse4Floats(radius) * sse4Floats::Load(cosines + j);
            const sse4Floats up = sse4Floats(radius) * sse4Floats::Load(sines + j);
            sse::StoreInterleaved(sse4Floats(center) + right, sse4Floats(center) - up,
                                  points + 2 * j);
        }
        return points + 2 * m_angles.Count();
    }

private:
    ColumnAngleLanes m_angles;
};

}  // namespace ring::SSE2

#endif

#ifndef KIVFISHEYE_RING_MESH_SSE2_H
#define KIVFISHEYE_RING_MESH_SSE2_H

#include "ColumnAngles.h"
#include "MemoryUtils.h"
#include "sse/ColumnAngleLanes.h"
#include "sse/sseUtil.h"

namespace ring::SSE2 {

/// The columns of a grid, four at a time. Rows are rounded up to whole groups, whose last columns
/// repeat the grid's last one.
class MeshColumns {
public:
    MeshColumns(Span angles, int columns) {
        const ColumnAngleLanes<sse4Floats::kLanes> lanes(angles, columns);
        m_rim.Allocate(2 * lanes.Count());
        for (unsigned long long j = 0; j < lanes.Count(); j += sse4Floats::kLanes) {
            sse::StoreInterleaved(sse4Floats::Load(lanes.Cosines() + j),
                                  sse4Floats(0.0F) - sse4Floats::Load(lanes.Sines() + j),
                                  m_rim.data() + 2 * j);
        }
    }

    /// Writes the points `radius` from the centre and gives where the next row begins.
    float* WriteRow(float center, float radius, float* points) const {
        const float* const rim = m_rim.data();
        const unsigned long long count = m_rim.count();
        const auto writeTwoPoints = [&](unsigned long long j) {
            const sse4Floats offset = sse4Floats(radius) * sse4Floats::Load(rim + j);
            (sse4Floats(center) + offset).Store(points + j);
        };
        for (unsigned long long j = 0; j < count; j += 8) {
            writeTwoPoints(j);
            writeTwoPoints(j + 4);
        }
        return points + count;
    }

private:
    using sse4Floats = sse::sse4Floats;

    /// x and y by turns, y downward, of a circle with the radius 1.
    CAlignedBufferT<float, 16> m_rim;
};

}  // namespace ring::SSE2

#endif

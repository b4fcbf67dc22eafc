#ifndef KIVFISHEYE_RING_MESH_C_H
#define KIVFISHEYE_RING_MESH_C_H

#include "ColumnAngles.h"

namespace ring::C {

/// The columns of a grid, one at a time. Rows lie end to end.
class MeshColumns {
public:
    MeshColumns(Span angles, int columns) : m_angles(angles, columns), m_columns(columns) {}

    /// Writes the points `radius` from the centre and gives where the next row begins.
    float* WriteRow(float center, float radius, float* points) const {
        const float* const sines = m_angles.Sines();
        const float* const cosines = m_angles.Cosines();
        for (int j = 0; j < m_columns; ++j) {
            *points++ = center + radius * cosines[j];
            *points++ = center - radius * sines[j];
        }
        return points;
    }

private:
    ColumnAngles m_angles;
    int m_columns;
};

}  // namespace ring::C

#endif

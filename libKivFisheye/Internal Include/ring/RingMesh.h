#ifndef KIVFISHEYE_RING_MESH_H
#define KIVFISHEYE_RING_MESH_H

#include "ColumnAngles.h"
#include "Degrees.h"
#include "FisheyeAlgoCommon.h"

// Where the vertices of a grid, drawn as a panorama, lie on the lens image: texture coordinates of
// a lens circle with the radius 0.5, v downward. Rows are evenly spaced in radius, the ring's edges
// included, and columns in angle, both ends of the turn included. `Columns` has the angles of a
// form, and writes rows.

namespace ring {

/// The signatures of the kernels.
using MeshFunction = void(int columns, int rows, float innerRadiusRatio, bool centerAtOrigin,
                          float* coordinates);
using DualMeshFunction = void(int columns, int rowsFirst, int rowsSecond, float innerRadiusRatio,
                              bool centerAtOrigin, float* coordinates);

template <class Mount, class Columns>
class MeshWalk {
public:
    MeshWalk(int columns, float turn, float innerRadiusRatio, bool centerAtOrigin,
             float* coordinates)
        : m_columns(Mount::Angles(turn), columns),
          m_radii(Mount::Radii(innerRadiusRatio * kRim, kRim)),
          m_center(CenterOf(centerAtOrigin)),
          m_row(coordinates) {}

    /// Writes `rows` rows, the first at the radius of the panorama's first row. `side` is 1, or -1
    /// for what lies opposite through the centre.
    void WriteRows(int rows, float side) {
        const float step = StepOf(m_radii, rows);
        float radius = m_radii.first;
        for (int i = 0; i < rows; ++i) {
            m_row = m_columns.WriteRow(m_center, side * radius, m_row);
            radius += step;
        }
    }

private:
    static constexpr float kRim = 0.5F;

    Columns m_columns;
    Span m_radii;
    float m_center;
    float* m_row;
};

template <class Mount, class Columns>
void WriteFullMesh(int columns, int rows, float innerRadiusRatio, bool centerAtOrigin,
                   float* coordinates) {
    MeshWalk<Mount, Columns> walk(columns, kFullTurn, innerRadiusRatio, centerAtOrigin,
                                  coordinates);
    walk.WriteRows(rows, 1.0F);
}

template <class Mount, class Columns>
void WriteDualMesh(int columns, int rowsFirst, int rowsSecond, float innerRadiusRatio,
                   bool centerAtOrigin, float* coordinates) {
    MeshWalk<Mount, Columns> walk(columns, kHalfTurn, innerRadiusRatio, centerAtOrigin,
                                  coordinates);
    walk.WriteRows(rowsFirst, 1.0F);
    walk.WriteRows(rowsSecond, -1.0F);
}

}  // namespace ring

#endif

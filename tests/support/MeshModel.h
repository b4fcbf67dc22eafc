#ifndef KIVFISHEYE_TESTS_MESH_MODEL_H
#define KIVFISHEYE_TESTS_MESH_MODEL_H

#include <vector>

#include "support/KernelForm.h"
#include "support/OutlineModel.h"
#include "support/RingModel.h"

// Where the vertices of a panorama's grid lie on the lens image, as each form computes them. Rows
// end on whole groups, which repeat the last column.

/// The list form that has a kernel form's sines and cosines: eight lanes take those of four.
constexpr ListForm ListFormOf(KernelForm form) {
    return form == KernelForm::C ? ListForm::C : ListForm::SSE2;
}

namespace model {

/// Sines and cosines of at least `count` evenly spaced angles, both ends included.
struct AngleTable {
    std::vector<float> sines;
    std::vector<float> cosines;
};

AngleTable AnglesOf(ListForm form, float first, float last, int count);

/// How many radians a direction turns away from an axis: `r` aside of it and `z` along it.
float OffAxis(ListForm form, float r, float z);

struct RingMesh {
    Mount mount;
    int columns;
    float innerRadiusRatio;
    bool centerAtOrigin;
};

std::vector<float> FullRingMesh(ListForm form, const RingMesh& mesh, int rows);
std::vector<float> DualRingMesh(ListForm form, const RingMesh& mesh, int rowsFirst, int rowsSecond);

struct WallMesh {
    int width;
    int height;
    float wallViewAngle;
    bool centerAtOrigin;
};

std::vector<float> WallMeshVertices(ListForm form, const WallMesh& mesh);

/// The outline of what a wall camera's panorama shows. The angle is in degrees.
struct WallOutline {
    float centerX;
    float centerY;
    float radiusX;
    float radiusY;
    float wallViewAngle;
};

/// All sides' points, `count` a multiple of 16 for lanes.
std::vector<float> WallOutlinePoints(ListForm form, const WallOutline& outline, int count);

}  // namespace model

#endif

#include "support/MeshModel.h"

#include <cmath>
#include <cstddef>

#include "support/VectorMathModel.h"

namespace model {

namespace {

constexpr float kPi = 3.1415927F;
constexpr float kHalfPi = 1.5707964F;
constexpr float kDegree = 0.017453292F;
constexpr float kOneOverPi = 0.31830987F;
constexpr float kTwoOverPi = 0.63661975F;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

struct Radii {
    float first;
    float last;
};

Radii RadiiOf(const RingMesh& mesh) {
    const float inner = 0.5F * mesh.innerRadiusRatio;
    return mesh.mount == Mount::Ceiling ? Radii{0.5F, inner} : Radii{inner, 0.5F};
}

/// The columns of a table rise, those of a ceiling fall.
AngleTable ColumnsOf(ListForm form, const RingMesh& mesh, float turn) {
    return mesh.mount == Mount::Ceiling ? AnglesOf(form, turn, 0.0F, mesh.columns)
                                        : AnglesOf(form, 0.0F, turn, mesh.columns);
}

void AppendPanel(const AngleTable& columns, const RingMesh& mesh, int rows, bool isOpposite,
                 std::vector<float>& vertices) {
    const float offset = mesh.centerAtOrigin ? 0.0F : 0.5F;
    const Radii radii = RadiiOf(mesh);
    const float step = (radii.last - radii.first) / static_cast<float>(rows - 1);
    float radius = radii.first;
    for (int row = 0; row < rows; ++row) {
        for (std::size_t j = 0; j < columns.sines.size(); ++j) {
            const float right = radius * columns.cosines[j];
            const float up = radius * columns.sines[j];
            vertices.push_back(isOpposite ? offset - right : offset + right);
            vertices.push_back(isOpposite ? offset + up : offset - up);
        }
        radius += step;
    }
}

void AppendScalarSidePoint(const WallOutline& o, float theta, float phi,
                           std::vector<float>& points) {
    const Turned longitude = TurnedBy(theta);
    const Turned latitude = TurnedBy(phi);
    const float x = latitude.c * longitude.s;
    const float z = latitude.c * longitude.c;
    const float r = std::sqrt(x * x + latitude.s * latitude.s);
    const float k = OffAxis(ListForm::C, r, z) / r;
    points.push_back(x * (k * (o.radiusX * kTwoOverPi)) + o.centerX);
    points.push_back(o.centerY - latitude.s * (k * (o.radiusY * kTwoOverPi)));
}

std::vector<float> ScalarWallOutline(const WallOutline& o, int n) {
    const float half = o.wallViewAngle * kDegree;
    struct Side {
        float thetaStart, thetaEnd, phiStart, phiEnd;
    };
    const Side sides[] = {{-kHalfPi, -kHalfPi, -half, half},
                          {-kHalfPi, kHalfPi, half, half},
                          {kHalfPi, kHalfPi, half, -half},
                          {kHalfPi, -kHalfPi, -half, -half}};
    std::vector<float> points;
    for (const Side& side : sides) {
        const float thetaStep = (side.thetaEnd - side.thetaStart) / static_cast<float>(n);
        const float phiStep = (side.phiEnd - side.phiStart) / static_cast<float>(n);
        float theta = side.thetaStart;
        float phi = side.phiStart;
        for (int i = 0; i < n; ++i) {
            AppendScalarSidePoint(o, theta, phi, points);
            theta += thetaStep;
            phi += phiStep;
        }
    }
    return points;
}

void AppendLanePoint(const WallOutline& o, float x, float y, float z, std::vector<float>& points) {
    const float r = std::sqrt(x * x + y * y);
    const float k = OffAxis(ListForm::SSE2, r, z) / r;
    points.push_back(o.centerX + (o.radiusX * kTwoOverPi) * (x * k));
    points.push_back(o.centerY - (o.radiusY * kTwoOverPi) * (y * k));
}

std::vector<float> LaneWallOutline(const WallOutline& o, int n) {
    const float half = o.wallViewAngle * kDegree;
    const auto latitudes = AnglesOfLanes(-half, (half + half) / static_cast<float>(n), n);
    const auto longitudes = AnglesOfLanes(-kHalfPi, kPi / static_cast<float>(n), n);
    const Turned edge = TurnedBy(half);
    std::vector<float> points;
    for (const float phi : latitudes) {
        AppendLanePoint(o, -Cosine(phi), Sine(phi), Cosine(phi) * -4.3711388e-08F, points);
    }
    for (const float theta : longitudes) {
        AppendLanePoint(o, edge.c * Sine(theta), edge.s, edge.c * Cosine(theta), points);
    }
    for (const float phi : latitudes) {
        AppendLanePoint(o, Cosine(phi), -Sine(phi), Cosine(phi) * -4.3711388e-08F, points);
    }
    for (const float theta : longitudes) {
        AppendLanePoint(o, edge.c * -Sine(theta), -edge.s, edge.c * Cosine(theta), points);
    }
    return points;
}

}  // namespace

float OffAxis(ListForm form, float r, float z) {
    return form == ListForm::C ? static_cast<float>(std::atan2(double{r}, double{z}))
                               : ArctangentOf(r, z);
}

AngleTable AnglesOf(ListForm form, float first, float last, int count) {
    AngleTable table;
    if (count < 1) {
        return table;
    }
    if (form == ListForm::C) {
        for (const float angle : SteppedAngles(first, last, count)) {
            table.cosines.push_back(TurnedBy(angle).c);
            table.sines.push_back(TurnedBy(angle).s);
        }
        return table;
    }
    const float step = (last - first) / static_cast<float>(count - 1);
    for (const float angle : AnglesOfLanes(first, step, count)) {
        table.cosines.push_back(Cosine(angle));
        table.sines.push_back(Sine(angle));
    }
    table.cosines.resize(At(WholeGroups(form, count)), table.cosines.back());
    table.sines.resize(table.cosines.size(), table.sines.back());
    return table;
}

std::vector<float> FullRingMesh(ListForm form, const RingMesh& mesh, int rows) {
    std::vector<float> vertices;
    AppendPanel(ColumnsOf(form, mesh, 6.2831855F), mesh, rows, false, vertices);
    return vertices;
}

std::vector<float> DualRingMesh(ListForm form, const RingMesh& mesh, int rowsFirst,
                                int rowsSecond) {
    const AngleTable columns = ColumnsOf(form, mesh, kPi);
    std::vector<float> vertices;
    AppendPanel(columns, mesh, rowsFirst, false, vertices);
    AppendPanel(columns, mesh, rowsSecond, true, vertices);
    return vertices;
}

std::vector<float> WallMeshVertices(ListForm form, const WallMesh& mesh) {
    const AngleTable columns = AnglesOf(form, -kHalfPi, kHalfPi, mesh.width);
    const float center = mesh.centerAtOrigin ? 0.0F : 0.5F;
    const float half = mesh.wallViewAngle * kDegree;
    const Turned step = TurnedBy((half + half) / static_cast<float>(mesh.height - 1));
    Turned latitude = TurnedBy(-half);
    std::vector<float> vertices;
    for (int row = 0; row < mesh.height; ++row) {
        for (std::size_t i = 0; i < columns.sines.size(); ++i) {
            const float x = latitude.c * columns.sines[i];
            const float y = latitude.s;
            const float r = std::sqrt(y * y + x * x);
            const float share = OffAxis(form, r, latitude.c * columns.cosines[i]) / r;
            const float k = share * kOneOverPi;
            const bool isScalar = form == ListForm::C;
            vertices.push_back(center + (isScalar ? x * k : (x * share) * kOneOverPi));
            vertices.push_back(center + (isScalar ? y * k : (y * share) * kOneOverPi));
        }
        latitude = RotatedBy(latitude, step);
    }
    return vertices;
}

std::vector<float> WallOutlinePoints(ListForm form, const WallOutline& outline, int count) {
    return form == ListForm::C ? ScalarWallOutline(outline, count / 4)
                               : LaneWallOutline(outline, count / 4);
}

}  // namespace model

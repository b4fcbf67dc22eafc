#include <cmath>
#include <limits>
#include <ostream>
#include <vector>

#include "KernelsJobs.h"
#include "KernelsLists.h"
#include "support/ListKernels.h"
#include "support/MeshModel.h"
#include "support/RingMeshForms.h"

// The kernels of meshes.

namespace {

constexpr double kAnything = std::numeric_limits<double>::infinity();

struct RingMeshJob : model::RingMesh {
    bool isDual;
    int rowsFirst;
    int rowsSecond;
};

std::ostream& operator<<(std::ostream& out, const RingMeshJob& job) {
    return out << (job.isDual ? "a dual mesh" : "a full mesh") << " of a "
               << (job.mount == Mount::Table ? "table, " : "ceiling, ") << job.columns
               << " columns, " << job.rowsFirst << " and " << job.rowsSecond
               << " rows, inner ratio " << job.innerRadiusRatio
               << (job.centerAtOrigin ? ", around the origin" : "");
}

struct WallMeshJob : model::WallMesh {};

std::ostream& operator<<(std::ostream& out, const WallMeshJob& job) {
    return out << "a wall's mesh, " << job.width << "x" << job.height << ", view angle "
               << job.wallViewAngle << (job.centerAtOrigin ? ", around the origin" : "");
}

/// Columns that go to the end of rows in every form, and their number now and then 0.
int NextColumns(KernelsInput& input) {
    const int columns = input.OnceIn(16) ? input.Between(71, 600) : input.Side(70);
    return input.OnceIn(32) ? 0 : columns;
}

int NextRows(KernelsInput& input) {
    return input.OnceIn(8) ? input.Between(-1, 1) : input.Between(1, 40);
}

}  // namespace

void CheckRingMesh(KernelsInput& input) {
    RingMeshJob job;
    const bool isWild = input.OnceIn(4);
    input.SetWild(isWild);
    job.mount = input.Between(0, 1) == 0 ? Mount::Table : Mount::Ceiling;
    job.isDual = input.Between(0, 1) == 1;
    job.columns = NextColumns(input);
    job.rowsFirst = NextRows(input);
    job.rowsSecond = job.isDual ? NextRows(input) : 0;
    job.innerRadiusRatio = input.Value(0.0F, 0.8F);
    job.centerAtOrigin = input.Between(0, 1) == 1;
    // Angles are below 8 radians and the radius is 0.5 at most: each sum is off by 2^-23 of it, one
    // for each column and, in lanes, for each four.
    FormDistance distance(
        isWild || job.columns % 4 != 0 ? kAnything : 1e-6 + std::ldexp(1.25 * job.columns, -23));
    for (const ListForm form : kListForms) {
        for (const MeshForm& mesh : kMeshForms) {
            if (mesh.mount != job.mount || mesh.form != form) {
                continue;
            }
            const auto expected =
                job.isDual ? model::DualRingMesh(form, job, job.rowsFirst, job.rowsSecond)
                           : model::FullRingMesh(form, job, job.rowsFirst);
            CheckFullList(job, form, expected, [&](float* list) {
                if (job.isDual) {
                    mesh.dual(job.columns, job.rowsFirst, job.rowsSecond, job.innerRadiusRatio,
                              job.centerAtOrigin, list);
                } else {
                    mesh.full(job.columns, job.rowsFirst, job.innerRadiusRatio, job.centerAtOrigin,
                              list);
                }
            });
            distance.Add(job, expected);
        }
    }
}

void CheckWallMesh(KernelsInput& input) {
    const bool isWild = input.OnceIn(4);
    input.SetWild(isWild);
    WallMeshJob job;
    job.width = NextColumns(input);
    job.height = NextRows(input);
    job.wallViewAngle = input.Value(10.0F, 90.0F);
    job.centerAtOrigin = input.Between(0, 1) == 1;
    FormDistance distance(isWild || job.width % 4 != 0 ? kAnything : 2e-3);
    for (const ListForm form : kListForms) {
        const auto expected = model::WallMeshVertices(form, job);
        CheckFullList(job, form, expected, [&](float* list) {
            WallMeshOf(form)(job.width, job.height, job.wallViewAngle, job.centerAtOrigin, list);
        });
        distance.Add(job, expected);
    }
}

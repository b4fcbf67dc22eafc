#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "support/EachFailure.h"
#include "support/FailingAllocations.h"
#include "support/FloatList.h"
#include "support/RingMeshForms.h"

// Meshes of the mounts that see a ring: where single vertices lie, grids of unusual sizes, and
// memory.

namespace {

class RingMeshEdges : public RingMeshTest {};

KIVFISHEYE_TEST_RING_MESHES(RingMeshEdges);

void ExpectVertex(const std::vector<float>& mesh, int vertex, double u, double v) {
    ExpectPoint(mesh, vertex, u, v, 3e-7);
}

}  // namespace

TEST_P(RingMeshEdges, OfFiveColumnsGoRoundByQuarters) {
    const auto mesh = Full(5, 2, 0.5F);
    const int nextRow = WholeGroups(GetParam().form, 5);
    const bool isCeiling = IsCeiling();
    const double first = isCeiling ? 0.5 : 0.25;
    const double second = isCeiling ? 0.25 : 0.5;
    // From the right by the bottom on a ceiling, by the top on a table.
    const double towardsBottom = isCeiling ? 1.0 : -1.0;
    for (int row = 0; row < 2; ++row) {
        const double radius = row == 0 ? first : second;
        ExpectVertex(mesh, row * nextRow, 0.5 + radius, 0.5);
        ExpectVertex(mesh, row * nextRow + 1, 0.5, 0.5 + towardsBottom * radius);
        ExpectVertex(mesh, row * nextRow + 2, 0.5 - radius, 0.5);
        ExpectVertex(mesh, row * nextRow + 3, 0.5, 0.5 - towardsBottom * radius);
        ExpectVertex(mesh, row * nextRow + 4, 0.5 + radius, 0.5);
    }
}

TEST_P(RingMeshEdges, PaddingRepeatsTheLastColumn) {
    for (const int columns : {1, 2, 3, 5, 6, 7}) {
        ExpectRowsEndOnCopies(Full(columns, 3, 0.25F), columns,
                              WholeGroups(GetParam().form, columns));
    }
}

TEST_P(RingMeshEdges, WithoutAnInnerRadiusEndInTheCentre) {
    const auto mesh = Full(8, 2, 0.0F);
    const int centre = IsCeiling() ? 8 : 0;
    const int rim = 8 - centre;
    for (int column = 0; column < 8; ++column) {
        const auto at = static_cast<std::size_t>(2 * (centre + column));
        EXPECT_EQ(mesh[at], 0.5F);
        EXPECT_EQ(mesh[at + 1], 0.5F);
        const auto atRim = static_cast<std::size_t>(2 * (rim + column));
        EXPECT_NEAR(std::hypot(mesh[atRim] - 0.5F, mesh[atRim + 1] - 0.5F), 0.5, 1e-6);
    }
}

TEST_P(RingMeshEdges, CenterAtOriginShiftsByHalfAndNothingElse) {
    EXPECT_TRUE(
        AreNear(Full(GetParam(), 36, 7, 0.3F, true), Shifted(Full(36, 7, 0.3F), 0.5F), 6e-8));
    EXPECT_TRUE(
        AreNear(Dual(GetParam(), 36, 7, 4, 0.3F, true), Shifted(Dual(36, 7, 4, 0.3F), 0.5F), 6e-8));
}

TEST_P(RingMeshEdges, ClosesTheSeam) {
    const auto mesh = Full(64, 4, 0.2F);
    for (std::size_t row = 0; row < 4; ++row) {
        EXPECT_NEAR(mesh[128 * row], mesh[128 * row + 126], 5e-6);
        EXPECT_NEAR(mesh[128 * row + 1], mesh[128 * row + 127], 5e-6);
    }
}

TEST_P(RingMeshEdges, DualPanelsStartAtOppositeEndsOfADiameter) {
    const auto mesh = Dual(8, 1, 1, 0.0F);
    const double radius = IsCeiling() ? 0.5 : 0.0;
    // A ceiling's angles fall from half a turn, a table's rise from 0.
    ExpectVertex(mesh, 0, 0.5 - radius, 0.5);
    ExpectVertex(mesh, 8, 0.5 + radius, 0.5);
    const auto ring = Dual(9, 2, 2, 1.0F);
    const int pitch = WholeGroups(GetParam().form, 9);
    const double first = IsCeiling() ? 0.0 : 1.0;
    ExpectVertex(ring, 0, first, 0.5);
    ExpectVertex(ring, 4, 0.5, 0.0);
    ExpectVertex(ring, 8, 1.0 - first, 0.5);
    ExpectVertex(ring, 2 * pitch, 1.0 - first, 0.5);
    ExpectVertex(ring, 2 * pitch + 4, 0.5, 1.0);
    ExpectVertex(ring, 2 * pitch + 8, first, 0.5);
}

TEST_P(RingMeshEdges, DualPanelsMayBeMissing) {
    const auto both = Dual(12, 3, 2, 0.4F);
    const std::vector<float> first(both.begin(), both.begin() + 72);
    const std::vector<float> second(both.begin() + 72, both.end());
    EXPECT_TRUE(AreSameFloats(Dual(12, 3, 0, 0.4F), first));
    EXPECT_TRUE(AreSameFloats(Dual(12, 0, 2, 0.4F), second));
}

TEST_P(RingMeshEdges, OfASingleRowOrColumnHaveTheFirstRadiusAndAngle) {
    const double radius = IsCeiling() ? 0.5 : 0.125;
    const auto row = Full(5, 1, 0.25F);
    ExpectVertex(row, 0, 0.5 + radius, 0.5);
    ExpectVertex(row, 2, 0.5 - radius, 0.5);
    const auto column = Full(1, 2, 0.25F);
    ExpectVertex(column, 0, 0.5 + radius, 0.5);
    ExpectVertex(column, WholeGroups(GetParam().form, 1), 0.5 + (0.625 - radius), 0.5);
}

TEST_P(RingMeshEdges, WithoutRowsOrColumnsWriteNothing) {
    for (const int none : {0, -1, -4}) {
        GetParam().full(none, 3, 0.5F, false, nullptr);
        GetParam().full(8, none, 0.5F, false, nullptr);
        GetParam().full(none, none, 0.5F, false, nullptr);
        GetParam().dual(none, 3, 3, 0.5F, false, nullptr);
        GetParam().dual(8, none, none, 0.5F, false, nullptr);
    }
}

TEST_P(RingMeshEdges, ThrowWithoutMemoryAndKeepNone) {
    std::vector<float> vertices(2 * 8 * 4);
    EXPECT_GE(ExpectEachFailureThrows([&] { GetParam().full(8, 2, 0.5F, false, vertices.data()); }),
              2)
        << "sines and cosines";
    EXPECT_GE(
        ExpectEachFailureThrows([&] { GetParam().dual(8, 2, 2, 0.5F, false, vertices.data()); }),
        2);
}

TEST_P(RingMeshEdges, MakeTheirTablesOnceForAllRowsAndPanels) {
    std::vector<float> vertices(2 * 8 * 100);
    const auto requestsOf = [&](auto&& fill) {
        const AllocationWatch watch;
        fill();
        return watch.Requests();
    };
    const int full = requestsOf([&] { GetParam().full(8, 1, 0.5F, false, vertices.data()); });
    EXPECT_EQ(requestsOf([&] { GetParam().full(8, 100, 0.5F, false, vertices.data()); }), full);
    EXPECT_EQ(requestsOf([&] { GetParam().dual(8, 1, 0, 0.5F, false, vertices.data()); }), full);
    EXPECT_EQ(requestsOf([&] { GetParam().dual(8, 50, 50, 0.5F, false, vertices.data()); }), full);
}

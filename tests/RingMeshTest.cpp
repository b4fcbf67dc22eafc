#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <iterator>
#include <random>
#include <vector>

#include "support/FloatList.h"
#include "support/MeshModel.h"
#include "support/RingMeshForms.h"

// Meshes of the mounts that see a ring, against a plain model of each form and against geometry in
// double precision.

namespace {

const double kPi = std::acos(-1.0);

class RingMeshes : public RingMeshTest {};

KIVFISHEYE_TEST_RING_MESHES(RingMeshes);

/// One panel's vertices from geometry: evenly spaced in angle and radius.
void AppendExactPanel(Mount mount, int columns, int rows, double turn, double ratio, double side,
                      std::vector<double>& vertices) {
    for (int row = 0; row < rows; ++row) {
        const double down = rows == 1 ? 0.0 : static_cast<double>(row) / (rows - 1);
        const double inward = mount == Mount::Ceiling ? down : 1.0 - down;
        const double radius = 0.5 * (1.0 - inward * (1.0 - ratio));
        for (int column = 0; column < columns; ++column) {
            const double along = static_cast<double>(column) / (columns - 1);
            const double angle = turn * (mount == Mount::Ceiling ? 1.0 - along : along);
            vertices.push_back(0.5 + side * radius * std::cos(angle));
            vertices.push_back(0.5 - side * radius * std::sin(angle));
        }
    }
}

}  // namespace

TEST_P(RingMeshes, FullOnesFollowTheirFormToTheBit) {
    for (int columns = 1; columns <= 21; ++columns) {
        for (int rows = 1; rows <= 5; ++rows) {
            for (const float ratio : {0.0F, 0.1F, 0.4375F, 1.0F}) {
                for (const bool centerAtOrigin : {false, true}) {
                    EXPECT_TRUE(AreSameFloats(
                        Full(GetParam(), columns, rows, ratio, centerAtOrigin),
                        model::FullRingMesh(GetParam().form,
                                            {GetParam().mount, columns, ratio, centerAtOrigin},
                                            rows)))
                        << columns << " by " << rows << " from " << ratio;
                }
            }
        }
    }
}

TEST_P(RingMeshes, DualOnesFollowTheirFormToTheBit) {
    for (const int columns : {1, 2, 4, 7, 8, 13, 32}) {
        for (int rowsFirst = 0; rowsFirst <= 4; ++rowsFirst) {
            for (int rowsSecond = 0; rowsSecond <= 4; ++rowsSecond) {
                for (const bool centerAtOrigin : {false, true}) {
                    EXPECT_TRUE(AreSameFloats(
                        Dual(GetParam(), columns, rowsFirst, rowsSecond, 0.3F, centerAtOrigin),
                        model::DualRingMesh(GetParam().form,
                                            {GetParam().mount, columns, 0.3F, centerAtOrigin},
                                            rowsFirst, rowsSecond)))
                        << columns << " by " << rowsFirst << " and " << rowsSecond;
                }
            }
        }
    }
}

TEST_P(RingMeshes, FollowTheirFormInLargeAndRandomGrids) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> anySize(2, 300);
    std::uniform_real_distribution<float> anyRatio(-0.5F, 1.5F);
    for (int i = 0; i < 12; ++i) {
        const model::RingMesh mesh{GetParam().mount, i == 0 ? 4096 : anySize(random),
                                   anyRatio(random), i % 2 == 0};
        const int rows = anySize(random) / 8 + 1;
        EXPECT_TRUE(AreSameFloats(
            Full(GetParam(), mesh.columns, rows, mesh.innerRadiusRatio, mesh.centerAtOrigin),
            model::FullRingMesh(GetParam().form, mesh, rows)));
        EXPECT_TRUE(AreSameFloats(Dual(GetParam(), mesh.columns, rows, rows + 3,
                                       mesh.innerRadiusRatio, mesh.centerAtOrigin),
                                  model::DualRingMesh(GetParam().form, mesh, rows, rows + 3)));
    }
}

// Angles and radii grow by addition, so that each column and row adds a rounding.
TEST_P(RingMeshes, LieEvenlyOnTheRing) {
    for (const double ratio : {0.0, 0.25, 0.75}) {
        std::vector<double> full;
        std::vector<double> dual;
        AppendExactPanel(GetParam().mount, 128, 9, 2.0 * kPi, ratio, 1.0, full);
        AppendExactPanel(GetParam().mount, 128, 9, kPi, ratio, 1.0, dual);
        AppendExactPanel(GetParam().mount, 128, 5, kPi, ratio, -1.0, dual);
        const auto single = static_cast<float>(ratio);
        EXPECT_TRUE(AreNear(Full(128, 9, single), full, 1e-5));
        EXPECT_TRUE(AreNear(Dual(128, 9, 5, single), dual, 1e-5));
    }
}

// Both forms reach an angle by addition: lanes in a quarter as many steps, so that roundings part
// them further with every column.
TEST_P(RingMeshes, StayNextToTheScalarForm) {
    const MeshForm& scalar =
        IsCeiling() ? *(std::end(kMeshForms) - 2) : *(std::end(kMeshForms) - 1);
    ASSERT_EQ(scalar.mount, GetParam().mount);
    ASSERT_EQ(scalar.form, ListForm::C);
    struct Distance {
        int columns;
        double largest;
    };
    for (const auto& [columns, largest] :
         {Distance{4, 1e-6}, {8, 1e-6}, {16, 1e-6}, {64, 4e-6}, {256, 8e-6}, {1024, 6e-5}}) {
        EXPECT_TRUE(
            AreNear(Full(columns, 9, 0.25F), Full(scalar, columns, 9, 0.25F, false), largest))
            << columns;
        EXPECT_TRUE(
            AreNear(Dual(columns, 9, 5, 0.25F), Dual(scalar, columns, 9, 5, 0.25F, false), largest))
            << columns;
    }
}

TEST(ScalarRingMesh, TakesAnyBuffer) {
    for (const MeshForm& form : kMeshForms) {
        if (form.form != ListForm::C) {
            continue;
        }
        FloatList list(2 * 8 * 3 + 1);
        form.full(8, 3, 0.3F, false, list.data() + 1);
        auto expected = model::FullRingMesh(ListForm::C, {form.mount, 8, 0.3F, false}, 3);
        expected.insert(expected.begin(), kUntouched);
        EXPECT_TRUE(AreSameFloats(list.Values(), expected));
    }
}

TEST(RingMeshEntries, TakeTheFormOfThisProcessor) {
    const auto full = [](ring::MeshFunction* entry) {
        return FilledList(2 * 60 * 5, [&](float* vertices) { entry(60, 5, 0.3F, true, vertices); });
    };
    const auto dual = [](ring::DualMeshFunction* entry) {
        return FilledList(2 * 60 * 5,
                          [&](float* vertices) { entry(60, 3, 2, 0.3F, true, vertices); });
    };
    const auto expectForm = [&](const MeshForm& form, ring::MeshFunction* fullEntry,
                                ring::DualMeshFunction* dualEntry) {
        const bool isChosen = form.form == FormOfEntries();
        EXPECT_EQ(static_cast<bool>(AreSameFloats(full(fullEntry), full(form.full))), isChosen);
        EXPECT_EQ(static_cast<bool>(AreSameFloats(dual(dualEntry), dual(form.dual))), isChosen);
    };
    for (const MeshForm& form : kMeshForms) {
        if (form.mount == Mount::Ceiling) {
            expectForm(form, DownwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
                       DownwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate);
        } else {
            expectForm(form, UpwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
                       UpwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate);
        }
    }
}

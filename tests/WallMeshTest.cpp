#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "FrontwardFisheyeOpenGLAlgo.h"
#include "support/EachFailure.h"
#include "support/FloatList.h"
#include "support/ListKernels.h"
#include "support/MeshModel.h"
#include "support/WallModel.h"

// Meshes of a wall's panorama, against a plain model of each form and against geometry in double
// precision.

namespace {

namespace Mesh = FrontwardFisheyeAlgoNS;

std::vector<float> VerticesBy(WallMeshFunction& function, ListForm form,
                              const model::WallMesh& mesh) {
    const auto size = static_cast<std::size_t>(2 * WholeGroups(form, mesh.width) * mesh.height);
    return FilledList(size, [&](float* vertices) {
        function(mesh.width, mesh.height, mesh.wallViewAngle, mesh.centerAtOrigin, vertices);
    });
}

class WallMeshes : public testing::TestWithParam<ListForm> {
protected:
    static std::vector<float> Vertices(const model::WallMesh& mesh) {
        return VerticesBy(WallMeshOf(GetParam()), GetParam(), mesh);
    }
    static void ExpectModel(const model::WallMesh& mesh) {
        EXPECT_TRUE(AreSameFloats(Vertices(mesh), model::WallMeshVertices(GetParam(), mesh)))
            << mesh.width << " by " << mesh.height << " at " << mesh.wallViewAngle;
    }
    /// The lanes' arctangent is off by 0.0029 radians at most, and half the lens circle is a
    /// quarter turn.
    static double Tolerance() { return GetParam() == ListForm::C ? 1e-5 : 1e-3; }
};

KIVFISHEYE_TEST_LIST_FORMS(WallMeshes);

/// The vertices of a packed mesh, by geometry.
std::vector<double> ExactVertices(const model::WallMesh& mesh) {
    // A source frame whose circle of 90 degrees fills it.
    Wall wall = PackedWall(2, 2, mesh.width, mesh.height, 4);
    wall.radiusX = 0.5F;
    wall.radiusY = 0.5F;
    wall.wallViewAngle = mesh.wallViewAngle;
    const double center = mesh.centerAtOrigin ? 0.0 : 0.5;
    std::vector<double> vertices;
    for (int y = 0; y < mesh.height; ++y) {
        for (int x = 0; x < mesh.width; ++x) {
            const ExactLook look = LookOf(wall, x, y);
            vertices.push_back(center + look.u);
            vertices.push_back(center + look.v);
        }
    }
    return vertices;
}

}  // namespace

TEST_P(WallMeshes, FollowTheirFormToTheBit) {
    for (int width = 1; width <= 19; ++width) {
        for (int height = 1; height <= 6; ++height) {
            for (const float angle : {0.0F, 10.0F, 45.0F, 90.0F, 200.0F, -30.0F}) {
                ExpectModel({width, height, angle, width % 2 == 0});
                ExpectModel({width, height, angle, width % 2 != 0});
            }
        }
    }
}

TEST_P(WallMeshes, FollowTheirFormInLargeAndRandomGrids) {
    std::mt19937 random(17);
    std::uniform_int_distribution<int> anySize(2, 200);
    std::uniform_real_distribution<float> anyAngle(-10.0F, 200.0F);
    for (int i = 0; i < 10; ++i) {
        ExpectModel({anySize(random), anySize(random), anyAngle(random), i % 2 == 0});
    }
    ExpectModel({2048, 9, 71.0F, false});
}

TEST_P(WallMeshes, LieWhereDirectionsMeetTheLens) {
    for (const float angle : {10.0F, 45.0F, 89.0F}) {
        for (const bool centerAtOrigin : {false, true}) {
            const model::WallMesh mesh{64, 34, angle, centerAtOrigin};
            EXPECT_TRUE(AreNear(Vertices(mesh), ExactVertices(mesh), Tolerance())) << angle;
        }
    }
}

TEST_P(WallMeshes, StayNextToTheScalarForm) {
    for (const int width : {4, 64, 1024, 4096}) {
        for (const float angle : {10.0F, 45.0F, 90.0F, 200.0F}) {
            const model::WallMesh mesh{width, 16, angle, false};
            EXPECT_TRUE(AreNear(Vertices(mesh),
                                VerticesBy(WallMeshOf(ListForm::C), ListForm::C, mesh), 2e-3))
                << width << " columns at " << angle;
        }
    }
}

TEST_P(WallMeshes, GrowFromTheTopLeftToTheBottomRight) {
    const auto mesh = Vertices({8, 4, 30.0F, false});
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 1; column < 8; ++column) {
            EXPECT_LT(mesh[16 * row + 2 * column - 2], mesh[16 * row + 2 * column]);
        }
    }
    for (std::size_t i = 0; i < 16; i += 2) {
        EXPECT_LT(mesh[i + 1], mesh[16 + i + 1]);
        EXPECT_LT(mesh[16 + i + 1], mesh[32 + i + 1]);
        EXPECT_LT(mesh[32 + i + 1], mesh[48 + i + 1]);
    }
}

TEST_P(WallMeshes, HaveTheRimAtTheLeftAndRight) {
    const auto mesh = Vertices({4, 3, 45.0F, false});
    for (std::size_t row = 0; row < 3; ++row) {
        for (const std::size_t column : {0U, 3U}) {
            const auto at = 8 * row + 2 * column;
            EXPECT_NEAR(std::hypot(mesh[at] - 0.5F, mesh[at + 1] - 0.5F), 0.5, 2e-3);
        }
    }
    EXPECT_NEAR(mesh[8], 0.0F, 1e-6);
    EXPECT_NEAR(mesh[9], 0.5F, 1e-6);
    EXPECT_NEAR(mesh[14], 1.0F, 1e-6);
}

TEST_P(WallMeshes, OnTheAxisAreNaN) {
    const auto mesh = Vertices({3, 3, 45.0F, false});
    const auto pitch = static_cast<std::size_t>(2 * WholeGroups(GetParam(), 3));
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            const bool isCentre = row == 1 && column == 1;
            EXPECT_EQ(std::isnan(mesh[row * pitch + 2 * column]), isCentre);
            EXPECT_EQ(std::isnan(mesh[row * pitch + 2 * column + 1]), isCentre);
        }
    }
}

TEST_P(WallMeshes, PaddingRepeatsTheLastColumn) {
    for (const int width : {1, 2, 3, 5, 6, 7}) {
        ExpectRowsEndOnCopies(Vertices({width, 2, 40.0F, true}), width,
                              WholeGroups(GetParam(), width));
    }
}

TEST_P(WallMeshes, CenterAtOriginShiftsByHalfAndNothingElse) {
    EXPECT_TRUE(AreNear(Vertices({36, 8, 60.0F, true}),
                        Shifted(Vertices({36, 8, 60.0F, false}), 0.5F), 6e-8));
}

TEST_P(WallMeshes, OfASingleColumnLookToTheLeft) {
    const auto mesh = Vertices({1, 2, 45.0F, false});
    const auto pitch = static_cast<std::size_t>(2 * WholeGroups(GetParam(), 1));
    const double aside = 0.5 * std::sqrt(0.5);
    EXPECT_NEAR(mesh[0], 0.5 - aside, Tolerance());
    EXPECT_NEAR(mesh[1], 0.5 - aside, Tolerance());
    EXPECT_NEAR(mesh[pitch], 0.5 - aside, Tolerance());
    EXPECT_NEAR(mesh[pitch + 1], 0.5 + aside, Tolerance());
}

TEST_P(WallMeshes, OfASingleRowLookUp) {
    const model::WallMesh two{8, 2, 45.0F, false};
    const model::WallMesh one{8, 1, 45.0F, false};
    auto expected = Vertices(two);
    expected.resize(16);
    EXPECT_TRUE(AreSameFloats(Vertices(one), expected));
}

TEST_P(WallMeshes, WithoutRowsOrColumnsWriteNothing) {
    for (const int none : {0, -1, -4}) {
        WallMeshOf(GetParam())(none, 3, 45.0F, false, nullptr);
        WallMeshOf(GetParam())(8, none, 45.0F, false, nullptr);
        WallMeshOf(GetParam())(none, none, 45.0F, false, nullptr);
    }
}

TEST_P(WallMeshes, ThrowWithoutMemoryAndKeepNone) {
    std::vector<float> vertices(2 * 8 * 2);
    EXPECT_GE(ExpectEachFailureThrows(
                  [&] { WallMeshOf(GetParam())(8, 2, 45.0F, false, vertices.data()); }),
              2)
        << "sines and cosines";
}

TEST(ScalarWallMesh, TakesAnyBuffer) {
    FloatList list(2 * 8 * 3 + 1);
    WallMeshOf(ListForm::C)(8, 3, 30.0F, false, list.data() + 1);
    auto expected = model::WallMeshVertices(ListForm::C, {8, 3, 30.0F, false});
    expected.insert(expected.begin(), kUntouched);
    EXPECT_TRUE(AreSameFloats(list.Values(), expected));
}

TEST(WallMeshEntry, TakesTheFormOfThisProcessor) {
    const model::WallMesh mesh{64, 6, 50.0F, false};
    const auto vertices =
        VerticesBy(Mesh::CalculatePanoramaTextureCoordinate, FormOfEntries(), mesh);
    for (const ListForm form : kListForms) {
        EXPECT_EQ(vertices == VerticesBy(WallMeshOf(form), form, mesh), form == FormOfEntries())
            << NameOf(form);
    }
}

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "PanoramaOutlines.h"
#include "support/FloatList.h"
#include "support/ListKernels.h"
#include "support/MeshModel.h"

// The outline of what a wall's panorama shows, against a plain model of each form and against
// geometry in double precision.

namespace {

namespace View = FrontwardFisheyeAlgoNS;

const double kPi = std::acos(-1.0);
constexpr auto kNeither = static_cast<CoordinateOrientationType>(2);

std::vector<float> PointsBy(ListForm form, const model::WallOutline& o, int count) {
    return FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
        WallOutlineOf(form)(o.centerX, o.centerY, o.radiusX, o.radiusY, o.wallViewAngle, points,
                            count);
    });
}

/// The sides in their order by geometry, y downward from the outline's top.
std::vector<double> ExactPoints(const model::WallOutline& o, int count) {
    const int n = count / 4;
    const double half = static_cast<double>(o.wallViewAngle) * kPi / 180.0;
    std::vector<double> points;
    for (int i = 0; i < count; ++i) {
        const double along = 2.0 * (i % n) / n - 1.0;
        const double theta[] = {-kPi / 2.0, along * kPi / 2.0, kPi / 2.0, -along * kPi / 2.0};
        const double phi[] = {along * half, half, -along * half, -half};
        const int side = i / n;
        const double x = std::cos(phi[side]) * std::sin(theta[side]);
        const double y = std::sin(phi[side]);
        const double z = std::cos(phi[side]) * std::cos(theta[side]);
        const double reach = std::atan2(std::hypot(x, y), z) / (kPi / 2.0);
        const double heading = std::atan2(y, x);
        points.push_back(static_cast<double>(o.centerX) +
                         static_cast<double>(o.radiusX) * reach * std::cos(heading));
        points.push_back(static_cast<double>(o.centerY) -
                         static_cast<double>(o.radiusY) * reach * std::sin(heading));
    }
    return points;
}

class WallOutlines : public testing::TestWithParam<ListForm> {
protected:
    static std::vector<float> Points(const model::WallOutline& outline, int count) {
        return PointsBy(GetParam(), outline, count);
    }
    static void ExpectModel(const model::WallOutline& outline, int count) {
        EXPECT_TRUE(AreSameFloats(Points(outline, count),
                                  model::WallOutlinePoints(GetParam(), outline, count)))
            << count << " points at " << outline.wallViewAngle;
    }
    /// The lanes' arctangent is off by 0.0029 radians at most.
    static double Tolerance(const model::WallOutline& outline) {
        const auto radius = static_cast<double>(std::fmax(outline.radiusX, outline.radiusY));
        return 2e-5 + (GetParam() == ListForm::C ? 0.0 : 0.0029 * radius / (kPi / 2.0));
    }
};

KIVFISHEYE_TEST_LIST_FORMS(WallOutlines);

std::vector<float> PointsOfEntry(float wallViewAngle, bool centerAtOrigin, int count,
                                 CoordinateOrientationType orientation) {
    return FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
        View::CalculatePanoramaBoundaryCoordinate(0.5F, 0.4F, wallViewAngle, centerAtOrigin, points,
                                                  count, orientation);
    });
}

}  // namespace

TEST_P(WallOutlines, FollowTheirFormToTheBit) {
    for (int count = 16; count <= 256; count += 16) {
        for (const float angle : {0.0F, 10.0F, 45.0F, 71.5F, 90.0F, 200.0F, -20.0F}) {
            ExpectModel({0.5F, 0.5F, 0.5F, 0.5F, angle}, count);
        }
    }
}

TEST_P(WallOutlines, FollowTheirFormToTheBitInRandomAndLongLists) {
    std::mt19937 random(23);
    std::uniform_real_distribution<float> any(-1.0F, 1.0F);
    for (int i = 0; i < 200; ++i) {
        ExpectModel({any(random), any(random), any(random), any(random), 100.0F * any(random)},
                    16 * (1 + i % 40));
    }
    ExpectModel({0.5F, 0.5F, 0.5F, 0.25F, 60.0F}, 4096);
}

TEST_P(WallOutlines, GoRoundWhatThePanoramaShows) {
    for (const float angle : {10.0F, 45.0F, 80.0F}) {
        for (const int count : {16, 64, 256}) {
            const model::WallOutline outline{0.5F, 0.25F, 0.5F, 0.375F, angle};
            EXPECT_TRUE(
                AreNear(Points(outline, count), ExactPoints(outline, count), Tolerance(outline)))
                << count << " points at " << angle;
        }
    }
}

TEST_P(WallOutlines, StayNextToTheScalarForm) {
    for (const float angle : {10.0F, 45.0F, 71.5F, 90.0F}) {
        for (const int count : {16, 128, 1024, 4096}) {
            const model::WallOutline outline{0.5F, 0.5F, 0.5F, 0.5F, angle};
            EXPECT_TRUE(
                AreNear(Points(outline, count), PointsBy(ListForm::C, outline, count), 2e-3))
                << count << " points at " << angle;
        }
    }
}

TEST_P(WallOutlines, StartAtTheBottomOfTheLeftEdge) {
    const model::WallOutline outline{0.5F, 0.5F, 0.5F, 0.5F, 45.0F};
    const auto points = Points(outline, 16);
    const double aside = 0.5 * std::sqrt(0.5);
    // The corners, each at the start of its side.
    const double corners[4][2] = {{-1.0, 1.0}, {-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}};
    for (std::size_t side = 0; side < 4; ++side) {
        EXPECT_NEAR(points[8 * side], 0.5 + corners[side][0] * aside, Tolerance(outline)) << side;
        EXPECT_NEAR(points[8 * side + 1], 0.5 + corners[side][1] * aside, Tolerance(outline))
            << side;
    }
}

TEST_P(WallOutlines, AreNotClosed) {
    const auto points = Points({0.5F, 0.5F, 0.5F, 0.5F, 45.0F}, 64);
    // The last point is a step away from the first.
    EXPECT_GT(std::hypot(points[126] - points[0], points[127] - points[1]), 0.02F);
}

TEST_P(WallOutlines, At90DegreesCollapseTowardsThePoles) {
    const auto points = Points({0.5F, 0.5F, 0.5F, 0.5F, 90.0F}, 64);
    for (std::size_t i = 32; i < 64; i += 2) {
        EXPECT_NEAR(points[i], 0.5F, 1e-6) << "x of the second side";
        EXPECT_NEAR(points[i + 1], 0.0F, 2e-3);
        EXPECT_NEAR(points[64 + i], 0.5F, 1e-6) << "x of the fourth side";
        EXPECT_NEAR(points[64 + i + 1], 1.0F, 2e-3);
    }
}

TEST_P(WallOutlines, CountsBelowFourWriteNothing) {
    for (const int count : {3, 2, 1, 0, -1, -4, -16}) {
        WallOutlineOf(GetParam())(0.5F, 0.5F, 0.5F, 0.5F, 45.0F, nullptr, count);
    }
}

TEST(ScalarWallOutline, LeavesWhatIsOverAfterFourEqualSides) {
    const model::WallOutline outline{0.5F, 0.5F, 0.5F, 0.5F, 45.0F};
    for (int count = 4; count <= 40; ++count) {
        auto expected = model::WallOutlinePoints(ListForm::C, outline, count);
        EXPECT_EQ(expected.size(), 8 * static_cast<std::size_t>(count / 4));
        expected.resize(2 * static_cast<std::size_t>(count), kUntouched);
        EXPECT_TRUE(AreSameFloats(PointsBy(ListForm::C, outline, count), expected)) << count;
    }
}

TEST(ScalarWallOutline, TakesAnyBuffer) {
    FloatList list(2 * 20 + 1);
    WallOutlineOf(ListForm::C)(0.5F, 0.5F, 0.5F, 0.5F, 45.0F, list.data() + 1, 20);
    auto expected = model::WallOutlinePoints(ListForm::C, {0.5F, 0.5F, 0.5F, 0.5F, 45.0F}, 20);
    expected.insert(expected.begin(), kUntouched);
    EXPECT_TRUE(AreSameFloats(list.Values(), expected));
}

TEST(WallOutlineEntry, TakesTheFormOfThisProcessor) {
    const auto points = PointsOfEntry(45.0F, false, 64, CoordinateOrientationWindows);
    for (const ListForm form : kListForms) {
        EXPECT_EQ(points == PointsBy(form, {0.5F, 0.5F, 0.5F, 0.4F, 45.0F}, 64),
                  form == FormOfEntries())
            << NameOf(form);
    }
}

TEST(WallOutlineEntry, GivesWindowsCoordinatesInBothOrientations) {
    for (const bool centerAtOrigin : {false, true}) {
        EXPECT_TRUE(
            AreSameFloats(PointsOfEntry(30.0F, centerAtOrigin, 64, CoordinateOrientationTexture),
                          PointsOfEntry(30.0F, centerAtOrigin, 64, CoordinateOrientationWindows)));
    }
    const auto points = PointsOfEntry(30.0F, true, 64, CoordinateOrientationTexture);
    EXPECT_GT(points[1], 0.0F) << "the first side starts at the bottom";
}

TEST(WallOutlineEntry, CenterAtOriginShiftsByHalfAndNothingElse) {
    EXPECT_TRUE(AreNear(
        PointsOfEntry(45.0F, true, 64, CoordinateOrientationWindows),
        Shifted(PointsOfEntry(45.0F, false, 64, CoordinateOrientationWindows), 0.5F), 6e-8));
}

TEST(WallOutlineEntry, OtherOrientationsWriteNothing) {
    View::CalculatePanoramaBoundaryCoordinate(0.5F, 0.5F, 45.0F, false, nullptr, 64, kNeither);
}

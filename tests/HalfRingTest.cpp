#include "ring/HalfRing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "support/FloatList.h"
#include "support/OutlineModel.h"
#if defined(__x86_64__)
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#endif

// Half a ring, against a plain model of each form's own steps.

namespace {

namespace Outline = DownwardFisheyeAlgoNS;

template <CoordinateOrientationType orientation>
ring::HalfRingFunction& FillOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return Outline::SSE2::calculate_outer_inner_ellipse_coordinate<orientation>;
    }
#endif
    return Outline::C::calculate_outer_inner_ellipse_coordinate<orientation>;
}

class HalfRings : public testing::TestWithParam<ListForm> {
protected:
    /// As many floats as the form writes at most: groups of four may reach beyond an arc.
    static std::size_t SizeOf(int count) {
        const int half = std::max(count, 0) / 2;
        const int written = half == 0 ? 0 : half + WholeGroups(GetParam(), half);
        return 2 * static_cast<std::size_t>(std::max({count, written, 0}));
    }
    static std::vector<float> Points(const model::HalfRing& r, int count) {
        auto& fill = r.isWindows ? FillOf<CoordinateOrientationWindows>(GetParam())
                                 : FillOf<CoordinateOrientationTexture>(GetParam());
        return FilledList(SizeOf(count), [&](float* points) {
            fill(r.center, r.outerX, r.outerY, r.innerX, r.innerY, count, points, r.start);
        });
    }
    static void ExpectModel(const model::HalfRing& ring, int count) {
        const std::vector<float> before(SizeOf(count), kUntouched);
        EXPECT_TRUE(AreSameFloats(Points(ring, count),
                                  model::WithHalfRing(GetParam(), ring, count, before)))
            << count << " points from " << ring.start;
    }
};

KIVFISHEYE_TEST_LIST_FORMS(HalfRings);

}  // namespace

TEST_P(HalfRings, FollowTheirFormToTheBitWhateverTheCount) {
    for (int count = 0; count <= 70; ++count) {
        for (const bool isWindows : {true, false}) {
            ExpectModel({0.5F, 0.5F, 0.375F, 0.125F, 0.1F, 0.3F, isWindows}, count);
        }
    }
}

TEST_P(HalfRings, FollowTheirFormToTheBitInRandomAndLongLists) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> any(-1.0F, 1.0F);
    for (int i = 0; i < 300; ++i) {
        ExpectModel({any(random), any(random), any(random), any(random), any(random),
                     7.0F * any(random), i % 2 == 0},
                    8 * (1 + i));
    }
    ExpectModel({0.5F, 0.5F, 0.5F, 0.25F, 0.25F, 0.0F, true}, 4096);
}

TEST_P(HalfRings, OfTwoOrThreePointsStartAtTheStartAngle) {
    for (const int count : {2, 3}) {
        const auto points = Points({0.0F, 0.5F, 0.25F, 0.125F, 0.0625F, 0.0F, true}, count);
        EXPECT_EQ(points[0], 0.5F);
        EXPECT_EQ(points[1], 0.0F);
        // The lanes' inner arc is walked backwards, from the far end: here it has a single point.
        const std::size_t inner = GetParam() == ListForm::C ? 2U * (count == 2 ? 1U : 2U) : 2U;
        EXPECT_EQ(std::fabs(points[inner]), 0.125F);
        EXPECT_NEAR(points[inner + 1], 0.0F, 1e-7);
    }
}

TEST_P(HalfRings, CountsBelowTwoWriteNothing) {
    for (const int count : {1, 0, -1, -2, -8}) {
        for (const bool isWindows : {true, false}) {
            EXPECT_TRUE(
                AreSameFloats(Points({0.5F, 0.5F, 0.5F, 0.25F, 0.25F, 0.0F, isWindows}, count),
                              std::vector<float>(SizeOf(count), kUntouched)));
        }
    }
}

TEST(ScalarHalfRing, LeavesTheMiddleOfAnOddCount) {
    for (const int count : {3, 5, 9, 33}) {
        const auto list = FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
            FillOf<CoordinateOrientationWindows>(ListForm::C)(0.0F, 1.0F, 1.0F, 0.5F, 0.5F, count,
                                                              points, 0.0F);
        });
        for (int point = 0; point < count; ++point) {
            const auto at = static_cast<std::size_t>(2 * point);
            EXPECT_EQ(list[at] == kUntouched, point == count / 2) << point << " of " << count;
            EXPECT_EQ(list[at + 1] == kUntouched, point == count / 2) << point << " of " << count;
        }
    }
}

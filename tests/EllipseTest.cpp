#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "FisheyeAlgoCommon.h"
#include "support/FloatList.h"
#include "support/ListKernels.h"
#include "support/OutlineModel.h"

// Points on ellipses, against a plain model of each form's own steps and against the true ellipse.

namespace {

constexpr float kFullTurn = 6.2831855F;
constexpr auto kWindows = CoordinateOrientationWindows;
constexpr auto kTexture = CoordinateOrientationTexture;

struct Ellipse {
    float centerX;
    float centerY;
    float radiusX;
    float radiusY;
};

std::vector<float> PointsBy(ListForm form, const Ellipse& e, int count,
                            CoordinateOrientationType orientation) {
    return FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
        EllipseOf(form, orientation)(e.centerX, e.centerY, e.radiusX, e.radiusY, points, count);
    });
}

class EllipseForms : public testing::TestWithParam<ListForm> {
protected:
    static std::vector<float> Points(const Ellipse& e, int count,
                                     CoordinateOrientationType orientation = kWindows) {
        return PointsBy(GetParam(), e, count, orientation);
    }
    static void ExpectModel(const Ellipse& e, int count, CoordinateOrientationType orientation) {
        std::vector<float> expected;
        const float step = kFullTurn / static_cast<float>(count);
        for (const auto angle : model::RotatedAngles(GetParam(), 0.0F, step, count)) {
            const float up = angle.s * e.radiusY;
            expected.push_back(angle.c * e.radiusX + e.centerX);
            expected.push_back(orientation == kWindows ? e.centerY - up : up + e.centerY);
        }
        EXPECT_TRUE(AreSameFloats(Points(e, count, orientation), expected)) << count << " points";
    }
};

KIVFISHEYE_TEST_LIST_FORMS(EllipseForms);

}  // namespace

TEST_P(EllipseForms, FollowTheirOwnStepsToTheBit) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> any(-2.0F, 2.0F);
    for (int i = 0; i < 300; ++i) {
        const Ellipse e{any(random), any(random), any(random), any(random)};
        const int count = 4 * (1 + i * 7 % 256);
        ExpectModel(e, count, kWindows);
        ExpectModel(e, count, kTexture);
    }
}

TEST_P(EllipseForms, LieOnTheEllipseFromItsRightUpward) {
    const Ellipse e{0.5F, 0.25F, 0.4F, 0.3F};
    for (const int count : {4, 64, 1024}) {
        const auto points = Points(e, count);
        EXPECT_EQ(points[0], e.centerX + e.radiusX);
        EXPECT_EQ(points[1], e.centerY);
        for (int i = 0; i < count; ++i) {
            const double angle = 2.0 * std::acos(-1.0) * i / count;
            const auto at = static_cast<std::size_t>(2 * i);
            EXPECT_NEAR(points[at], 0.5 + 0.4 * std::cos(angle), 5e-5);
            EXPECT_NEAR(points[at + 1], 0.25 - 0.3 * std::sin(angle), 5e-5);
        }
    }
}

TEST_P(EllipseForms, TextureOrientationMirrorsAboutTheCentre) {
    const Ellipse e{0.5F, 0.0F, 0.4F, 0.3F};
    const auto windows = Points(e, 128);
    const auto texture = Points(e, 128, kTexture);
    for (std::size_t i = 0; i < windows.size(); i += 2) {
        EXPECT_EQ(windows[i], texture[i]);
        EXPECT_EQ(windows[i + 1], -texture[i + 1]);
    }
}

TEST_P(EllipseForms, WithoutRadiiAreCopiesOfTheCentre) {
    const auto points = Points({0.75F, 0.125F, 0.0F, 0.0F}, 8);
    for (std::size_t i = 0; i < points.size(); i += 2) {
        EXPECT_EQ(points[i], 0.75F);
        EXPECT_EQ(points[i + 1], 0.125F);
    }
}

TEST_P(EllipseForms, CountsBelowOneWriteNothing) {
    for (const int count : {0, -1, -4}) {
        EllipseOf(GetParam(), kWindows)(0, 0, 1, 1, nullptr, count);
        EllipseOf(GetParam(), kTexture)(0, 0, 1, 1, nullptr, count);
    }
}

// Roundings add up on both ways, so longer lists part further.
TEST_P(EllipseForms, StayNextToTheScalarForm) {
    const Ellipse e{0.5F, 0.5F, 0.5F, 0.5F};
    for (const int count : {4, 32, 100, 256, 360}) {
        const auto points = Points(e, count);
        const auto scalar = PointsBy(ListForm::C, e, count, kWindows);
        EXPECT_TRUE(AreNear(points, scalar, 3e-6)) << count << " points";
    }
}

TEST(Ellipse, FirstPointIsAtTheRightWhateverTheCount) {
    float points[8] = {};
    CalculateEllipseCoordinate(0.5F, 0.25F, 0.5F, 1.0F, points, 1, kWindows);
    EXPECT_EQ(points[0], 1.0F);
    EXPECT_EQ(points[1], 0.25F);
}

TEST(Ellipse, OtherOrientationsWriteNothing) {
    CalculateEllipseCoordinate(0, 0, 1, 1, nullptr, 4, static_cast<CoordinateOrientationType>(2));
}

TEST(Ellipse, LeadsToTheKernelOfItsOrientation) {
    float windows[8];
    float texture[8];
    CalculateEllipseCoordinate(0, 0, 1, 1, windows, 4, kWindows);
    CalculateEllipseCoordinate(0, 0, 1, 1, texture, 4, kTexture);
    EXPECT_EQ(windows[3], -1.0F);
    EXPECT_EQ(texture[3], 1.0F);
}

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "PanoramaOutlines.h"
#include "support/FloatList.h"
#include "support/ListKernels.h"
#include "support/OutlineModel.h"

// The outlines of what the halves of a dual panorama show, against a plain model of each form and
// against true ellipses.

namespace {

namespace Outline = DownwardFisheyeAlgoNS;

const double kPi = std::acos(-1.0);
constexpr auto kNeither = static_cast<CoordinateOrientationType>(2);

/// A lens, and the pan in degrees.
struct Halves {
    float radiusX = 0.5F;
    float radiusY = 0.5F;
    float innerRadiusRatio = 0.25F;
    bool centerAtOrigin = false;
    float pan = 0.0F;
};

struct Outlines {
    std::vector<float> first;
    std::vector<float> second;
};

Outlines OutlinesBy(Outline::DualOutlineFunction& function, const Halves& h, int firstCount,
                    int secondCount, CoordinateOrientationType orientation) {
    FloatList first(2 * static_cast<std::size_t>(firstCount));
    FloatList second(2 * static_cast<std::size_t>(secondCount));
    function(h.radiusX, h.radiusY, h.innerRadiusRatio, h.centerAtOrigin, h.pan, first.data(),
             firstCount, second.data(), secondCount, orientation);
    return {first.Values(), second.Values()};
}

/// A half ring in windows orientation around (0.5, 0.5), by geometry.
std::vector<double> ExactHalf(const Halves& h, double startDegrees, int count) {
    std::vector<double> points;
    for (int i = 0; i < count; ++i) {
        const int half = count / 2;
        const bool isOuter = i < half;
        const double share = static_cast<double>(isOuter ? i : count - 1 - i) / (half - 1);
        const double angle = startDegrees * kPi / 180.0 + kPi * share;
        const double size = isOuter ? 1.0 : static_cast<double>(h.innerRadiusRatio);
        points.push_back(0.5 + size * static_cast<double>(h.radiusX) * std::cos(angle));
        points.push_back(0.5 - size * static_cast<double>(h.radiusY) * std::sin(angle));
    }
    return points;
}

class DualOutlines : public testing::TestWithParam<ListForm> {
protected:
    static Outlines OutlinesOf(const Halves& halves, int count,
                               CoordinateOrientationType orientation) {
        return OutlinesBy(HalfRingsOf(GetParam()), halves, count, count, orientation);
    }
};

KIVFISHEYE_TEST_LIST_FORMS(DualOutlines);

}  // namespace

TEST_P(DualOutlines, FollowTheirFormToTheBit) {
    constexpr float kRadiansPerDegree = 0.017453292F;
    std::mt19937 random(6);
    std::uniform_real_distribution<float> any(0.0F, 1.0F);
    for (int i = 0; i < 100; ++i) {
        const Halves h{any(random), any(random), any(random), i % 2 == 0, 360.0F * any(random)};
        const bool isWindows = i % 3 == 0;
        const int firstCount = 8 * (1 + i % 7);
        const int secondCount = 8 * (1 + i % 5);
        const auto outlines =
            OutlinesBy(HalfRingsOf(GetParam()), h, firstCount, secondCount,
                       isWindows ? CoordinateOrientationWindows : CoordinateOrientationTexture);
        model::HalfRing half{h.centerAtOrigin ? 0.0F : 0.5F,
                             h.radiusX,
                             h.radiusY,
                             h.innerRadiusRatio * h.radiusX,
                             h.innerRadiusRatio * h.radiusY,
                             h.pan * kRadiansPerDegree,
                             isWindows};
        const std::vector<float> empty(2 * 64);
        auto expected = model::WithHalfRing(GetParam(), half, firstCount, empty);
        expected.resize(outlines.first.size());
        EXPECT_TRUE(AreSameFloats(outlines.first, expected));
        half.start += 3.1415927F;
        expected = model::WithHalfRing(GetParam(), half, secondCount, empty);
        expected.resize(outlines.second.size());
        EXPECT_TRUE(AreSameFloats(outlines.second, expected));
    }
}

TEST_P(DualOutlines, GoRoundTheTrueHalves) {
    const Halves halves{0.5F, 0.3F, 0.4F, false, 77.0F};
    for (const int count : {8, 64, 400}) {
        const auto outlines = OutlinesOf(halves, count, CoordinateOrientationWindows);
        EXPECT_TRUE(AreNear(outlines.first, ExactHalf(halves, 77.0, count), 1e-5)) << count;
        EXPECT_TRUE(AreNear(outlines.second, ExactHalf(halves, 257.0, count), 1e-5)) << count;
    }
}

// Roundings add up on both ways, so longer lists part further.
TEST_P(DualOutlines, StayNextToTheScalarForm) {
    struct Distance {
        int count;
        double largest;
    };
    for (const auto& [count, largest] : {Distance{8, 3e-6},
                                         {64, 3e-6},
                                         {128, 3e-6},
                                         {256, 3e-6},
                                         {360, 3e-6},
                                         {400, 5e-6},
                                         {1024, 5e-6},
                                         {4096, 5e-5}}) {
        for (const float pan : {0.0F, 30.0F, 123.0F, 359.0F}) {
            const Halves halves{0.5F, 0.5F, 0.5F, false, pan};
            const auto points = OutlinesOf(halves, count, CoordinateOrientationWindows);
            const auto scalar = OutlinesBy(HalfRingsOf(ListForm::C), halves, count, count,
                                           CoordinateOrientationWindows);
            EXPECT_TRUE(AreNear(points.first, scalar.first, largest)) << count << " at " << pan;
            EXPECT_TRUE(AreNear(points.second, scalar.second, largest)) << count << " at " << pan;
        }
    }
}

TEST_P(DualOutlines, InWindowsOrientationGoByTheTop) {
    // An arc of 36 points has none in its middle, between its points 17 and 18.
    const auto outlines = OutlinesOf({}, 72, CoordinateOrientationWindows);
    ExpectPoint(outlines.first, 0, 1.0, 0.5);
    ExpectPoint(outlines.first, 17, 0.5 + 0.5 * std::sin(kPi / 70.0),
                0.5 - 0.5 * std::cos(kPi / 70.0));
    ExpectPoint(outlines.first, 35, 0.0, 0.5);
    ExpectPoint(outlines.first, 36, 0.375, 0.5);
    ExpectPoint(outlines.first, 71, 0.625, 0.5);
    ExpectPoint(outlines.second, 0, 0.0, 0.5);
    ExpectPoint(outlines.second, 18, 0.5 + 0.5 * std::sin(kPi / 70.0),
                0.5 + 0.5 * std::cos(kPi / 70.0));
    ExpectPoint(outlines.second, 35, 1.0, 0.5);
}

TEST_P(DualOutlines, InTextureOrientationMirrorAboutTheCentre) {
    const Halves halves{0.5F, 0.375F, 0.25F, true, 41.0F};
    const auto windows = OutlinesOf(halves, 80, CoordinateOrientationWindows);
    const auto texture = OutlinesOf(halves, 80, CoordinateOrientationTexture);
    for (std::size_t i = 0; i < 160; i += 2) {
        EXPECT_EQ(texture.first[i], windows.first[i]);
        EXPECT_EQ(texture.first[i + 1], -windows.first[i + 1]);
        EXPECT_EQ(texture.second[i], windows.second[i]);
        EXPECT_EQ(texture.second[i + 1], -windows.second[i + 1]);
    }
    EXPECT_GT(texture.first[41], 0.0F) << "y grows with the angle";
}

TEST_P(DualOutlines, AreEachOthersHalfTurn) {
    const auto outlines =
        OutlinesOf({0.4F, 0.3F, 0.25F, true, 200.0F}, 64, CoordinateOrientationWindows);
    for (std::size_t i = 0; i < 128; ++i) {
        EXPECT_NEAR(outlines.first[i], -outlines.second[i], 3e-6);
    }
}

TEST_P(DualOutlines, WithoutAnInnerRadiusAreHalfDiscs) {
    const auto outlines =
        OutlinesOf({0.5F, 0.5F, 0.0F, false, 10.0F}, 32, CoordinateOrientationWindows);
    for (std::size_t i = 32; i < 64; ++i) {
        EXPECT_EQ(outlines.first[i], 0.5F);
        EXPECT_EQ(outlines.second[i], 0.5F);
    }
}

TEST_P(DualOutlines, CenterAtOriginShiftsByHalfAndNothingElse) {
    for (const auto orientation : {CoordinateOrientationWindows, CoordinateOrientationTexture}) {
        Halves halves{0.5F, 0.4F, 0.3F, false, 111.0F};
        const auto centred = OutlinesOf(halves, 48, orientation);
        halves.centerAtOrigin = true;
        const auto atOrigin = OutlinesOf(halves, 48, orientation);
        EXPECT_TRUE(AreNear(atOrigin.first, Shifted(centred.first, 0.5F), 6e-8));
        EXPECT_TRUE(AreNear(atOrigin.second, Shifted(centred.second, 0.5F), 6e-8));
    }
}

TEST_P(DualOutlines, OtherOrientationsWriteNothing) {
    HalfRingsOf(GetParam())(0.5F, 0.5F, 0.5F, false, 0.0F, nullptr, 64, nullptr, 64, kNeither);
}

TEST_P(DualOutlines, CountsBelowTwoWriteNothing) {
    for (const int count : {1, 0, -1, -2, -8}) {
        for (const auto orientation :
             {CoordinateOrientationWindows, CoordinateOrientationTexture}) {
            HalfRingsOf(GetParam())(0.5F, 0.5F, 0.5F, false, 0.0F, nullptr, count, nullptr, count,
                                    orientation);
        }
    }
}

TEST(DualOutlineEntry, TakesTheFormOfThisProcessor) {
    const Halves halves{0.5F, 0.4F, 0.3F, false, 77.0F};
    for (const auto orientation : {CoordinateOrientationWindows, CoordinateOrientationTexture}) {
        const auto points =
            OutlinesBy(Outline::CalculateDualPanoramaROICoordinate, halves, 400, 200, orientation);
        for (const ListForm form : kListForms) {
            const auto expected = OutlinesBy(HalfRingsOf(form), halves, 400, 200, orientation);
            const bool isChosen = form == FormOfEntries();
            EXPECT_EQ(points.first == expected.first, isChosen) << NameOf(form);
            EXPECT_EQ(points.second == expected.second, isChosen) << NameOf(form);
        }
    }
    Outline::CalculateDualPanoramaROICoordinate(0.5F, 0.5F, 0.5F, false, 0.0F, nullptr, 64, nullptr,
                                                64, kNeither);
}

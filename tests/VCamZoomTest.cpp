#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "FisheyeVCamAlgo.h"
#include "support/FloatBits.h"

namespace {

using FisheyeVCamAlgoNS::CvtFieldOfViewToZoom;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kPi = 3.14159274F;
constexpr float kHalfPi = 1.57079637F;

float ZoomOf(float fieldOfView) {
    return CvtFieldOfViewToZoom(0.5F, 0.5F, fieldOfView);
}

/// The narrow branch with another number of zooms for a radian.
float NarrowZoom(float fieldOfView, std::uint32_t zoomPerRadianBits) {
    return (fieldOfView - kHalfPi) * FloatOf(zoomPerRadianBits) + 2.0F;
}

TEST(ZoomOfAView, HalfATurnAndMoreIs1) {
    EXPECT_EQ(ZoomOf(kPi), 1.0F);
    EXPECT_EQ(ZoomOf(std::nextafter(kPi, 4.0F)), 1.0F);
    EXPECT_EQ(ZoomOf(4.0F), 1.0F);
    EXPECT_EQ(ZoomOf(kInfinity), 1.0F);
    EXPECT_EQ(ZoomOf(kNan), 1.0F) << "taken for half a turn";
}

TEST(ZoomOfAView, AQuarterTurnIs2) {
    EXPECT_EQ(ZoomOf(kHalfPi), 2.0F);
    // A float below pi/2 is 1.2e-7 less, which is 6.8e-7 of zoom, close to three floats above 2.
    EXPECT_EQ(ZoomOf(std::nextafter(kHalfPi, 0.0F)), FloatOf(BitsOf(2.0F) + 3));
    EXPECT_LT(ZoomOf(FloatOf(BitsOf(kHalfPi) + 4)), 2.0F);
}

TEST(ZoomOfAView, TenDegreesIs10AndLessIsNotMore) {
    EXPECT_NEAR(ZoomOf(0.17453292F), 10.0F, 1e-5F);
    EXPECT_NEAR(ZoomOf(0.2617994F), 9.5F, 1e-5F) << "15 degrees";
    for (const float angle : {0.1745F, 0.1F, 1e-30F, 0.0F, -0.0F, -3.0F, -kInfinity}) {
        EXPECT_EQ(ZoomOf(angle), 10.0F) << angle;
    }
}

TEST(ZoomOfAView, RunsEvenlyFrom1To2OverTheWiderHalf) {
    EXPECT_NEAR(ZoomOf(0.75F * kPi), 1.5F, 1e-6F);
    EXPECT_NEAR(ZoomOf(0.625F * kPi), 1.75F, 1e-6F);
    for (int step = 0; step <= 1000; ++step) {
        const float angle = kHalfPi + static_cast<float>(step) * 0.001570795F;
        ASSERT_EQ(BitsOf(ZoomOf(angle)), BitsOf((angle - kPi) / -kHalfPi + 1.0F)) << angle;
    }
}

TEST(ZoomOfAView, CountsZoomsPerRadianToTheLastBit) {
    constexpr std::uint32_t kBits = 0xC0B758B3;  // near -18 / pi
    int differFromNeighbours = 0;
    for (int step = 0; step < 2000; ++step) {
        const float angle = 0.18F + static_cast<float>(step) * 0.00069F;
        const float zoom = ZoomOf(angle);
        ASSERT_EQ(BitsOf(zoom), BitsOf(NarrowZoom(angle, kBits))) << angle;
        ASSERT_NEAR(zoom, 11.0 - angle * 18.0 / 3.14159265358979, 3e-6);
        differFromNeighbours +=
            zoom != NarrowZoom(angle, kBits - 1) && zoom != NarrowZoom(angle, kBits + 1) ? 1 : 0;
    }
    EXPECT_GT(differFromNeighbours, 20) << "the neighbouring floats would give other zooms";
}

TEST(ZoomOfAView, DoesNotDependOnTheLens) {
    for (const float radius : {0.0F, 0.25F, 1.0F, -5.0F, kNan, kInfinity}) {
        EXPECT_EQ(CvtFieldOfViewToZoom(radius, 0.5F, 1.0F), ZoomOf(1.0F));
        EXPECT_EQ(CvtFieldOfViewToZoom(0.5F, radius, 1.0F), ZoomOf(1.0F));
        EXPECT_EQ(CvtFieldOfViewToZoom(radius, radius, 3.0F), ZoomOf(3.0F));
    }
}

}  // namespace

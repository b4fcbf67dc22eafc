#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "FrontwardFisheyeAlgo.h"
#include "support/FloatBits.h"

// The sizes and ratios that suit a wall. Expectations are worked out by hand, or in the plainest
// single precision where bits matter.

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr int kSmallestInt = std::numeric_limits<int>::min();

using Size = std::pair<int, int>;

constexpr auto Ratio = FrontwardFisheyeAlgoNS::GetBestFitPanoramaRatio;

Size SizeOf(int srcWidth, int srcHeight, float radiusX, float radiusY, float wallViewAngle) {
    Size size(-1, -1);
    FrontwardFisheyeAlgoNS::GetBestFitPanoramaSize(srcWidth, srcHeight, radiusX, radiusY,
                                                   wallViewAngle, size.first, size.second);
    return size;
}

}  // namespace

// 1080 * sin 45 = 763.7, and 1080 * sqrt(3) / 2 = 935.3 at 60 degrees, 187.5 at 10.
TEST(WallBestFit, IsAsWideAsTheLensAndAsHighAsItsLatitudes) {
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, 45.0F), Size(1920, 763));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, 60.0F), Size(1920, 935));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, 10.0F), Size(1920, 187));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, 90.0F), Size(1920, 1080));
    EXPECT_EQ(SizeOf(1000, 600, 0.25F, 0.4F, 45.0F), Size(504, 339));
}

TEST(WallBestFit, AngleBeyondAQuarterTurnMirrorsInItAndANegativeOneCountsAsPositive) {
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, 135.0F), Size(1920, 763));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, -45.0F), Size(1920, 763));
}

TEST(WallBestFit, WidthRoundsUpToAMultipleOf8AndHeightIsCut) {
    EXPECT_EQ(SizeOf(1001, 101, 0.5F, 0.5F, 90.0F), Size(1008, 101));
    EXPECT_EQ(SizeOf(1008, 101, 0.5F, 0.25F, 90.0F), Size(1008, 50));
    // 501 * 0.998 = 499.998, and 9 * 0.898 = 8.08 is 8 before it is rounded up.
    EXPECT_EQ(SizeOf(501, 3, 0.499F, 0.499F, 90.0F), Size(504, 2));
    EXPECT_EQ(SizeOf(9, 1, 0.449F, 0.45F, 90.0F), Size(8, 0));
}

TEST(WallBestFit, RadiusOf0GivesNoWidthOrNoHeight) {
    EXPECT_EQ(SizeOf(1920, 1080, 0.0F, 0.5F, 45.0F), Size(0, 763));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.0F, 45.0F), Size(1920, 0));
    EXPECT_EQ(SizeOf(0, 0, 0.5F, 0.5F, 45.0F), Size(0, 0));
}

TEST(WallBestFit, SizeThatNoIntHoldsIsTheSmallestInt) {
    EXPECT_EQ(SizeOf(2000000000, 1080, 0.75F, 0.5F, 45.0F), Size(kSmallestInt, 763));
    EXPECT_EQ(SizeOf(1920, 2000000000, 0.5F, 0.75F, 90.0F), Size(1920, kSmallestInt));
    EXPECT_EQ(SizeOf(1920, 1080, kNan, kNan, 45.0F), Size(kSmallestInt, kSmallestInt));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, kNan), Size(1920, kSmallestInt));
    EXPECT_EQ(SizeOf(1920, 1080, 0.5F, 0.5F, kInfinity), Size(1920, kSmallestInt));
}

// The sign goes before the height is doubled.
TEST(WallBestFit, NegativeFrameHeightCountsAsPositive) {
    EXPECT_EQ(SizeOf(1920, -1080, 0.5F, 0.5F, 45.0F), Size(1920, 763));
}

TEST(WallBestFit, RatioIsThatOfTheUnroundedSize) {
    EXPECT_NEAR(Ratio(1920, 1080, 0.5F, 0.5F, 45.0F), 1920.0 / (1080.0 * std::sqrt(0.5)), 1e-6);
    EXPECT_NEAR(Ratio(1920, 1080, 0.5F, 0.5F, 60.0F), 1920.0 / (540.0 * std::sqrt(3.0)), 1e-6);
    EXPECT_NEAR(Ratio(1000, 600, 0.25F, 0.4F, 90.0F), 500.0 / 480.0, 1e-6);
    EXPECT_NE(Ratio(1920, 1080, 0.5F, 0.5F, 45.0F), 1920.0F / 763.0F);
}

TEST(WallBestFit, RatioWithoutHeightIs1) {
    EXPECT_EQ(Ratio(1920, 1080, 0.5F, 0.0F, 45.0F), 1.0F);
    EXPECT_EQ(Ratio(1920, 0, 0.5F, 0.5F, 45.0F), 1.0F);
    EXPECT_EQ(Ratio(1920, 1080, 0.5F, 0.5F, 0.0F), 1.0F);
    EXPECT_EQ(Ratio(0, 1080, 0.5F, 0.5F, 45.0F), 0.0F);
}

// At a quarter turn the height is two radii of a frame of one row.
TEST(WallBestFit, RatioTakesAHeightOf2ToThePowerOfMinus23ForNone) {
    const float half = std::ldexp(1.0F, -24);
    EXPECT_EQ(Ratio(1, 1, 0.5F, half, 90.0F), 1.0F);
    const float more = std::nextafter(half, 1.0F);
    EXPECT_EQ(Ratio(1, 1, 0.5F, more, 90.0F), 1.0F / (more + more));
}

TEST(WallBestFit, RatioOfWhatIsNoNumberIsNone) {
    EXPECT_TRUE(std::isnan(Ratio(1920, 1080, kNan, 0.5F, 45.0F)));
    EXPECT_TRUE(std::isnan(Ratio(1920, 1080, 0.5F, kNan, 45.0F)));
    EXPECT_TRUE(std::isnan(Ratio(1920, 1080, 0.5F, 0.5F, kNan)));
    EXPECT_EQ(Ratio(1920, 1080, kNan, 0.0F, 45.0F), 1.0F);
}

// The latitude is rounded by the way through its tangent: where that changes the last bit of its
// sine, the ratio has it too. All steps in single precision, the products from left to right.
TEST(WallBestFit, RatioHasTheBitsOfTheLatitudeThatTheTangentGives) {
    int otherBits = 0;
    for (int quarters = 40; quarters <= 360; ++quarters) {
        const float angle = static_cast<float>(quarters) / 4.0F;
        for (const float radius : {0.5F, 0.37F, 0.91F}) {
            const float radians = angle * 0.017453292F;
            const float latitude = atan2f(sinf(radians), cosf(radians));
            const auto ratioAt = [&](float sine) {
                const float half = fabsf(1081.0F * radius * sine);
                return 1920.0F * (0.45F + 0.45F) / (half + half);
            };
            const float ratio = Ratio(1920, 1081, 0.45F, radius, angle);
            ASSERT_EQ(BitsOf(ratio), BitsOf(ratioAt(sinf(latitude)))) << angle << ", " << radius;
            otherBits += BitsOf(ratio) != BitsOf(ratioAt(sinf(radians))) ? 1 : 0;
        }
    }
    EXPECT_GT(otherBits, 0) << "angles that tell the way through the tangent from the angle itself";
}

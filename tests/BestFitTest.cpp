#include "BestFit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "DownwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo.h"

// The sizes and ratios that suit a ring. Expectations are worked out by hand.

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kSmallestInt = std::numeric_limits<int>::min();
const float kNegligible = std::ldexp(1.0F, -23);

struct CeilingFit {
    static constexpr const char* kName = "Ceiling";

    static std::pair<int, int> Size(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                    float ratio) {
        std::pair<int, int> size(-1, -1);
        DownwardFisheyeAlgoNS::GetBestFitPanoramaSize(srcWidth, srcHeight, radiusX, radiusY, ratio,
                                                      size.first, size.second);
        return size;
    }
    static constexpr auto kRatio = DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio;
};

struct TableFit {
    static constexpr const char* kName = "Table";

    static std::pair<int, int> Size(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                    float ratio) {
        std::pair<int, int> size(-1, -1);
        UpwardFisheyeAlgoNS::GetBestFitPanoramaSize(srcWidth, srcHeight, radiusX, radiusY, ratio,
                                                    size.first, size.second);
        return size;
    }
    static constexpr auto kRatio = UpwardFisheyeAlgoNS::GetBestFitPanoramaRatio;
};

using Size = std::pair<int, int>;

struct FitNames {
    template <class Fit>
    static std::string GetName(int) {
        return Fit::kName;
    }
};

}  // namespace

template <class Fit>
class BestFitPanorama : public ::testing::Test {};

using Fits = ::testing::Types<CeilingFit, TableFit>;
TYPED_TEST_SUITE(BestFitPanorama, Fits, FitNames);

TYPED_TEST(BestFitPanorama, IsFourRadiiWideAndAsHighAsTheRingIsDeep) {
    EXPECT_EQ(TypeParam::Size(1920, 1080, 0.5F, 0.5F, 0.0F), Size(3840, 960));
    EXPECT_EQ(TypeParam::Size(1080, 1080, 0.5F, 0.5F, 0.0F), Size(2160, 540));
    EXPECT_EQ(TypeParam::Size(1024, 1024, 0.25F, 0.25F, 0.5F), Size(1024, 128));
    EXPECT_EQ(TypeParam::Size(2048, 1536, 0.375F, 0.5F, 0.25F), Size(3072, 576));
}

TYPED_TEST(BestFitPanorama, AxisIsChosenByFractionsAndNotByPixels) {
    // 0.5 of 100 pixels beats 0.4 of 4000.
    EXPECT_EQ(TypeParam::Size(4000, 100, 0.4F, 0.5F, 0.0F), Size(200, 50));
    EXPECT_EQ(TypeParam::Size(100, 4000, 0.5F, 0.4F, 0.0F), Size(200, 50));
}

TYPED_TEST(BestFitPanorama, TieGoesToTheWidth) {
    EXPECT_EQ(TypeParam::Size(100, 4000, 0.5F, 0.5F, 0.0F), Size(200, 50));
    EXPECT_EQ(TypeParam::Size(4000, 100, 0.5F, 0.5F, 0.0F), Size(8000, 2000));
    // Without depth both axes tie, whatever their radii.
    EXPECT_EQ(TypeParam::Size(400, 1000, 0.25F, 0.5F, 1.0F), Size(400, 0));
}

TYPED_TEST(BestFitPanorama, WidthRoundsUpToAMultipleOf8) {
    EXPECT_EQ(TypeParam::Size(500, 1, 0.5F, 0.1F, 0.0F).first, 1000);
    EXPECT_EQ(TypeParam::Size(501, 1, 0.5F, 0.1F, 0.0F).first, 1008);
    EXPECT_EQ(TypeParam::Size(503, 1, 0.5F, 0.1F, 0.0F).first, 1008);
    EXPECT_EQ(TypeParam::Size(504, 1, 0.5F, 0.1F, 0.0F).first, 1008);
    EXPECT_EQ(TypeParam::Size(1, 1, 0.25F, 0.1F, 0.0F).first, 8);
}

TYPED_TEST(BestFitPanorama, SidesAreCutToWholePixelsFirst) {
    // 334 * 1.2 = 400.8, a multiple of 8 once its fraction is cut; 334 * 0.3 = 100.2.
    EXPECT_EQ(TypeParam::Size(334, 1, 0.3F, 0.1F, 0.0F), Size(400, 100));
    // 333 * 0.5 = 166.5, and 1 * 0.9 is no pixel.
    EXPECT_EQ(TypeParam::Size(333, 1, 0.5F, 0.1F, 0.0F).second, 166);
    EXPECT_EQ(TypeParam::Size(1, 1, 0.9F, 0.1F, 0.0F), Size(8, 0));
    EXPECT_EQ(TypeParam::Size(1, 1, 0.2F, 0.1F, 0.0F), Size(0, 0));
}

TYPED_TEST(BestFitPanorama, HeightIsNotRounded) {
    EXPECT_EQ(TypeParam::Size(1002, 1, 0.5F, 0.1F, 0.0F), Size(2008, 501));
    EXPECT_EQ(TypeParam::Size(1, 1002, 0.1F, 0.5F, 0.0F), Size(2008, 501));
}

TYPED_TEST(BestFitPanorama, RadiiOf0OrNoFrameGiveNoSize) {
    EXPECT_EQ(TypeParam::Size(1920, 1080, 0.0F, 0.0F, 0.0F), Size(0, 0));
    EXPECT_EQ(TypeParam::Size(0, 0, 0.5F, 0.5F, 0.0F), Size(0, 0));
    EXPECT_EQ(TypeParam::Size(0, 500, 0.5F, 0.4F, 0.0F), Size(0, 0));
}

// No comparison with NaN holds, so the height is taken.
TYPED_TEST(BestFitPanorama, RadiusThatIsNoNumberChoosesTheHeight) {
    EXPECT_EQ(TypeParam::Size(1920, 1080, kNan, 0.5F, 0.0F), Size(2160, 540));
    EXPECT_EQ(TypeParam::Size(1920, 1080, 0.5F, kNan, 0.0F), Size(kSmallestInt, kSmallestInt));
    EXPECT_EQ(TypeParam::Size(1920, 1080, 0.5F, 0.5F, kNan), Size(2160, kSmallestInt));
}

TYPED_TEST(BestFitPanorama, SizeBeyondAnIntIsTheSmallestInt) {
    EXPECT_EQ(TypeParam::Size(2000000000, 1, 0.75F, 0.5F, 0.0F), Size(kSmallestInt, 1500000000));
}

TYPED_TEST(BestFitPanorama, RatioIsFourDividedByTheShareOfTheRadiusThatIsShown) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.0F), 4.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.25F, 0.5F, 0.0F), 4.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.25F, 0.0F), 4.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.5F), 8.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.375F, 0.5F, 0.75F), 16.0F);
    EXPECT_NEAR(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.8F), 20.0F, 1e-5F);
}

TYPED_TEST(BestFitPanorama, RatioDoesNotDependOnTheFrame) {
    for (const int side : {0, 1, -5, 4000}) {
        EXPECT_EQ(TypeParam::kRatio(side, 3, 0.5F, 0.4F, 0.5F), 8.0F);
        EXPECT_EQ(TypeParam::kRatio(3, side, 0.4F, 0.5F, 0.5F), 8.0F);
    }
}

TYPED_TEST(BestFitPanorama, RatioOfARingWithoutDepthIs1) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, 0.0F, 0.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 1.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, kNegligible, 0.0F, 0.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, kNegligible, 0.0F), 1.0F);
    const float more = std::nextafter(kNegligible, 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, more, 0.0F, 0.0F), 4.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, more, 0.0F), 4.0F);
}

TYPED_TEST(BestFitPanorama, RatioFollowsARadiusThatIsNoNumber) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, kNan, 0.5F, 0.0F), 4.0F);
    EXPECT_TRUE(std::isnan(TypeParam::kRatio(1920, 1080, 0.5F, kNan, 0.0F)));
}

TEST(BestFitPanoramas, BothMountsFitAlike) {
    for (const float radiusX : {0.0F, 0.1F, 0.37F, 0.5F, 0.9F}) {
        for (const float radiusY : {0.0F, 0.2F, 0.37F, 0.77F}) {
            for (const float ratio : {0.0F, 0.123F, 0.8F}) {
                EXPECT_EQ(TableFit::Size(1277, 953, radiusX, radiusY, ratio),
                          CeilingFit::Size(1277, 953, radiusX, radiusY, ratio));
                EXPECT_EQ(TableFit::kRatio(1277, 953, radiusX, radiusY, ratio),
                          CeilingFit::kRatio(1277, 953, radiusX, radiusY, ratio));
            }
        }
    }
}

TEST(BestFit, NegligibleExtentIs2ToThePowerOfMinus23) {
    EXPECT_EQ(kNegligibleExtent, kNegligible);
}

TEST(BestFit, RoundUpToEightKeepsMultiplesOf8) {
    const std::pair<int, int> values[] = {{0, 0},
                                          {1, 8},
                                          {7, 8},
                                          {8, 8},
                                          {9, 16},
                                          {15, 16},
                                          {16, 16},
                                          {-8, -8},
                                          {-7, 0},
                                          {-1, 0},
                                          {kSmallestInt, kSmallestInt},
                                          {2147483640, 2147483640}};
    for (const auto& [value, rounded] : values) {
        EXPECT_EQ(RoundUpToEight(value), rounded) << value;
    }
}

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "DownwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo.h"

// The sizes and ratios that suit a ring in two halves. Expectations are worked out by hand.

namespace {

using Size = std::pair<int, int>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kSmallestInt = std::numeric_limits<int>::min();
const float kNegligible = std::ldexp(1.0F, -23);

struct CeilingDualFit {
    static constexpr const char* kName = "Ceiling";
    static constexpr auto kSize = DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize;
    static constexpr auto kRatio = DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio;
};

struct TableDualFit {
    static constexpr const char* kName = "Table";
    static constexpr auto kSize = UpwardFisheyeAlgoNS::GetBestFitDualPanoramaSize;
    static constexpr auto kRatio = UpwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio;
};

struct DualFitNames {
    template <class Fit>
    static std::string GetName(int) {
        return Fit::kName;
    }
};

}  // namespace

template <class Fit>
class BestFitDualPanorama : public ::testing::Test {
protected:
    static Size SizeOf(int srcWidth, int srcHeight, float radiusX, float radiusY, float ratio) {
        Size size(-1, -1);
        Fit::kSize(srcWidth, srcHeight, radiusX, radiusY, ratio, size.first, size.second);
        return size;
    }
};

using DualFits = ::testing::Types<CeilingDualFit, TableDualFit>;
TYPED_TEST_SUITE(BestFitDualPanorama, DualFits, DualFitNames);

TYPED_TEST(BestFitDualPanorama, IsTwoRadiiWideAndTwiceAsHighAsTheRingIsDeep) {
    EXPECT_EQ(this->SizeOf(1920, 1080, 0.5F, 0.5F, 0.0F), Size(1920, 1920));
    EXPECT_EQ(this->SizeOf(1080, 1080, 0.5F, 0.5F, 0.0F), Size(1080, 1080));
    EXPECT_EQ(this->SizeOf(1024, 1024, 0.25F, 0.25F, 0.5F), Size(512, 256));
    EXPECT_EQ(this->SizeOf(2048, 1536, 0.375F, 0.5F, 0.25F), Size(1536, 1152));
}

TYPED_TEST(BestFitDualPanorama, HasTheAreaOfTheFullPanorama) {
    int width = 0;
    int height = 0;
    UpwardFisheyeAlgoNS::GetBestFitPanoramaSize(1600, 1200, 0.5F, 0.375F, 0.25F, width, height);
    const Size dual = this->SizeOf(1600, 1200, 0.5F, 0.375F, 0.25F);
    EXPECT_EQ(dual.first * dual.second, width * height);
    EXPECT_EQ(2 * dual.first, width);
}

TYPED_TEST(BestFitDualPanorama, AxisIsChosenByFractionsAndNotByPixels) {
    EXPECT_EQ(this->SizeOf(4000, 100, 0.4F, 0.5F, 0.0F), Size(104, 100));
    EXPECT_EQ(this->SizeOf(100, 4000, 0.5F, 0.4F, 0.0F), Size(104, 100));
}

TYPED_TEST(BestFitDualPanorama, TieGoesToTheWidth) {
    EXPECT_EQ(this->SizeOf(104, 4000, 0.5F, 0.5F, 0.0F), Size(104, 104));
    EXPECT_EQ(this->SizeOf(4000, 104, 0.5F, 0.5F, 0.0F), Size(4000, 4000));
    // Without depth both axes tie, whatever their radii.
    EXPECT_EQ(this->SizeOf(400, 1000, 0.25F, 0.5F, 1.0F), Size(200, 0));
}

TYPED_TEST(BestFitDualPanorama, WidthRoundsUpToAMultipleOf8AndHeightMayBeOdd) {
    EXPECT_EQ(this->SizeOf(1000, 1, 0.5F, 0.1F, 0.0F), Size(1000, 1000));
    EXPECT_EQ(this->SizeOf(1001, 1, 0.5F, 0.1F, 0.0F), Size(1008, 1001));
    EXPECT_EQ(this->SizeOf(1, 1007, 0.1F, 0.5F, 0.0F), Size(1008, 1007));
    EXPECT_EQ(this->SizeOf(1008, 1, 0.5F, 0.1F, 0.25F), Size(1008, 756));
    EXPECT_EQ(this->SizeOf(1, 1, 0.5F, 0.1F, 0.0F), Size(8, 1));
}

TYPED_TEST(BestFitDualPanorama, SidesAreCutToWholePixelsFirst) {
    // 668 * 0.6 = 400.8, a multiple of 8 once its fraction is cut; so is the height's without it.
    EXPECT_EQ(this->SizeOf(668, 1, 0.3F, 0.1F, 0.0F), Size(400, 400));
    // 333 * 1.0 * 0.75 = 249.75.
    EXPECT_EQ(this->SizeOf(333, 1, 0.5F, 0.1F, 0.25F), Size(336, 249));
    EXPECT_EQ(this->SizeOf(1, 1, 0.4F, 0.1F, 0.0F), Size(0, 0));
}

TYPED_TEST(BestFitDualPanorama, RadiiOf0OrNoFrameGiveNoSize) {
    EXPECT_EQ(this->SizeOf(1920, 1080, 0.0F, 0.0F, 0.0F), Size(0, 0));
    EXPECT_EQ(this->SizeOf(0, 0, 0.5F, 0.5F, 0.0F), Size(0, 0));
    EXPECT_EQ(this->SizeOf(0, 500, 0.5F, 0.4F, 0.0F), Size(0, 0));
}

// No comparison with NaN holds, so the height is taken.
TYPED_TEST(BestFitDualPanorama, RadiusThatIsNoNumberChoosesTheHeight) {
    EXPECT_EQ(this->SizeOf(1920, 1080, kNan, 0.5F, 0.0F), Size(1080, 1080));
    EXPECT_EQ(this->SizeOf(1920, 1080, 0.5F, kNan, 0.0F), Size(kSmallestInt, kSmallestInt));
    EXPECT_EQ(this->SizeOf(1920, 1080, 0.5F, 0.5F, kNan), Size(1080, kSmallestInt));
}

TYPED_TEST(BestFitDualPanorama, SizeBeyondAnIntIsTheSmallestInt) {
    EXPECT_EQ(this->SizeOf(2000000000, 1, 0.75F, 0.5F, 0.5F), Size(kSmallestInt, 1500000000));
}

TYPED_TEST(BestFitDualPanorama, RatioIs1DividedByTheShareOfTheRadiusThatIsShown) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.25F, 0.5F, 0.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.5F), 2.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.375F, 0.5F, 0.75F), 4.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.375F, 0.75F), 4.0F);
    EXPECT_NEAR(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 0.8F), 5.0F, 2e-6F);
}

TYPED_TEST(BestFitDualPanorama, RatioDoesNotDependOnTheFrame) {
    for (const int side : {0, 1, -5, 4000}) {
        EXPECT_EQ(TypeParam::kRatio(side, 3, 0.5F, 0.4F, 0.5F), 2.0F);
        EXPECT_EQ(TypeParam::kRatio(3, side, 0.4F, 0.5F, 0.5F), 2.0F);
    }
}

TYPED_TEST(BestFitDualPanorama, RatioOfARingWithoutDepthIs1) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, 0.0F, 0.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.5F, 0.5F, 1.0F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 2.0F * kNegligible, 0.0F, 0.5F), 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, 2.0F * kNegligible, 0.5F), 1.0F);
    const float more = std::nextafter(2.0F * kNegligible, 1.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, more, 0.0F, 0.5F), 2.0F);
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, 0.0F, more, 0.5F), 2.0F);
}

TYPED_TEST(BestFitDualPanorama, RatioFollowsARadiusThatIsNoNumber) {
    EXPECT_EQ(TypeParam::kRatio(1920, 1080, kNan, 0.5F, 0.5F), 2.0F);
    EXPECT_TRUE(std::isnan(TypeParam::kRatio(1920, 1080, 0.5F, kNan, 0.0F)));
}

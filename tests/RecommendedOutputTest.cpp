#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "CameraRules.h"
#include "FrontwardFisheyeAlgo.h"
#include "KivFisheyeCamera.h"
#include "KivFisheyeCommon.h"

using namespace KivFisheyeLib;

namespace {

using Size = std::pair<unsigned int, unsigned int>;

constexpr auto kNoMount = static_cast<MountType>(7);
constexpr auto kNoView = static_cast<ViewType>(3);
constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable, kNoMount};
constexpr DewarpParams kTouchingLens{0.5F, 0.5F, 45.0F, 0.0F};
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Size SizeFor(unsigned int width, unsigned int height, MountType mount, ViewType view,
             const DewarpParams& lens) {
    Size size{12345, 12345};
    GetRecommendedOutputVideoSize(width, height, mount, view, lens, &size.first, &size.second);
    return size;
}

Size VirtualCameraSize(unsigned int width, unsigned int height, float radiusX, float radiusY) {
    return SizeFor(width, height, MountTypeWall, ViewTypeVCam, {radiusX, radiusY, 45.0F, 0.0F});
}

float VirtualCameraRatio(unsigned int width, unsigned int height, float radiusX, float radiusY) {
    return GetRecommendedOutputVideoRatio(width, height, MountTypeTable, ViewTypeVCam,
                                          {radiusX, radiusY, 45.0F, 0.0F});
}

TEST(VirtualCameraSize, IsTheLensRoundedUpTo8BothWays) {
    EXPECT_EQ(VirtualCameraSize(1920, 1080, 0.5F, 0.5F), Size(1920, 1080));
    EXPECT_EQ(VirtualCameraSize(1000, 1001, 0.5F, 0.5F), Size(1000, 1008));
    EXPECT_EQ(VirtualCameraSize(1, 9, 0.5F, 0.5F), Size(8, 16));
    EXPECT_EQ(VirtualCameraSize(800, 800, 0.25F, 0.375F), Size(400, 600));
    EXPECT_EQ(VirtualCameraSize(100, 100, 1.0F, 0.75F), Size(200, 152));
    EXPECT_EQ(VirtualCameraSize(1920, 1080, 0.0F, 0.0F), Size(0, 0));
    EXPECT_EQ(VirtualCameraSize(1920, 1080, 0.5F, 0.0F), Size(1920, 0));
}

TEST(VirtualCameraSize, DropsTheFractionBeforeItRoundsUp) {
    // 800.75 and 752.25, each but a fraction above a multiple of 8.
    EXPECT_EQ(VirtualCameraSize(3203, 1003, 0.125F, 0.375F), Size(800, 752));
}

TEST(VirtualCameraSize, IsTheSameOnEveryMountAndForAnyWallAngleAndRing) {
    for (const MountType mount : kMounts) {
        EXPECT_EQ(SizeFor(800, 640, mount, ViewTypeVCam, {0.25F, 0.5F, 90.0F, 0.75F}),
                  Size(400, 640));
    }
}

TEST(VirtualCameraSize, SidesBeyondTheRangeOfIntAreTakenAsNegative) {
    // 3000000000 - 2^32 = -1294967296, and half of that is a multiple of 8.
    EXPECT_EQ(VirtualCameraSize(3000000000U, 8, 0.25F, 0.5F), Size(4294967296 - 647483648, 8));
}

TEST(VirtualCameraSize, WhatNoIntHoldsIsTheSmallestInt) {
    EXPECT_EQ(VirtualCameraSize(8, 8, kNan, 0.5F), Size(0x80000000U, 8));
    EXPECT_EQ(VirtualCameraSize(0x7FFFFFFF, 8, 1.0F, 0.5F), Size(0x80000000U, 8));
}

TEST(RingSize, IsFourRadiiLongAndAsHighAsTheRingIsWide) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        const auto size = [mount](unsigned int width, unsigned int height, float radiusX,
                                  float radiusY, float inner) {
            return SizeFor(width, height, mount, ViewTypeFullPanorama,
                           {radiusX, radiusY, 45.0F, inner});
        };
        EXPECT_EQ(size(1000, 800, 0.5F, 0.5F, 0.0F), Size(2000, 500));
        EXPECT_EQ(size(1000, 800, 0.5F, 0.375F, 0.25F), Size(2000, 375));
        EXPECT_EQ(size(1000, 800, 0.25F, 0.5F, 0.25F), Size(1600, 300)) << "along the height";
        EXPECT_EQ(size(1001, 800, 0.5F, 0.5F, 0.75F), Size(2008, 125)) << "2002 and 125.125";
        EXPECT_EQ(size(1000, 800, 0.0F, 0.0F, 0.5F), Size(0, 0));
    }
}

TEST(DualRingSize, IsTwoRadiiLongAndTwiceAsHighAsTheRingIsWide) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        const auto size = [mount](unsigned int width, unsigned int height, float radiusX,
                                  float radiusY, float inner) {
            return SizeFor(width, height, mount, ViewTypeDualPanorama,
                           {radiusX, radiusY, 45.0F, inner});
        };
        EXPECT_EQ(size(1000, 800, 0.5F, 0.5F, 0.0F), Size(1000, 1000));
        EXPECT_EQ(size(1000, 800, 0.5F, 0.375F, 0.25F), Size(1000, 750));
        EXPECT_EQ(size(1000, 800, 0.25F, 0.5F, 0.25F), Size(800, 600)) << "along the height";
        EXPECT_EQ(size(1001, 800, 0.5F, 0.5F, 0.75F), Size(1008, 250)) << "1001 and 250.25";
        EXPECT_EQ(size(1000, 800, 0.0F, 0.0F, 0.5F), Size(0, 0));
    }
}

// What the wall's own functions answer is tested with them. Here it shows that they are asked, and
// with which of the lens's values.
TEST(WallSize, IsThatOfTheWallsFitForItsAngleAlone) {
    constexpr DewarpParams kLens{0.25F, 0.5F, 30.0F, 0.75F};
    int width = 0;
    int height = 0;
    FrontwardFisheyeAlgoNS::GetBestFitPanoramaSize(1000, 800, 0.25F, 0.5F, 30.0F, width, height);
    EXPECT_EQ(SizeFor(1000, 800, MountTypeWall, ViewTypeFullPanorama, kLens),
              Size(static_cast<unsigned int>(width), static_cast<unsigned int>(height)));
    EXPECT_EQ(GetRecommendedOutputVideoRatio(1000, 800, MountTypeWall, ViewTypeFullPanorama, kLens),
              FrontwardFisheyeAlgoNS::GetBestFitPanoramaRatio(1000, 800, 0.25F, 0.5F, 30.0F));
    EXPECT_NE(SizeFor(1000, 800, MountTypeWall, ViewTypeFullPanorama, {0.25F, 0.5F, 60.0F, 0.75F}),
              SizeFor(1000, 800, MountTypeWall, ViewTypeFullPanorama, kLens));
}

TEST(RecommendedSize, IsAMultipleOf8WideForEveryPairThatHasAScene) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        for (const ViewType view : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
            if (ValidateMountTypeAndViewType(mount, view)) {
                const Size size = SizeFor(1277, 953, mount, view, {0.47F, 0.41F, 37.0F, 0.3F});
                EXPECT_EQ(size.first % 8, 0U) << mount << ", " << view;
                EXPECT_NE(size, Size(1277, 953)) << mount << ", " << view;
            }
        }
    }
}

TEST(RecommendedSize, IsTheInputsWhereNothingIsKnown) {
    const Size input(1001, 7);
    EXPECT_EQ(SizeFor(1001, 7, MountTypeWall, ViewTypeDualPanorama, kTouchingLens), input);
    for (const MountType mount : kMounts) {
        EXPECT_EQ(SizeFor(1001, 7, mount, kNoView, kTouchingLens), input) << mount;
    }
    for (const ViewType view : {ViewTypeDualPanorama, ViewTypeFullPanorama}) {
        EXPECT_EQ(SizeFor(1001, 7, kNoMount, view, kTouchingLens), input) << view;
    }
}

TEST(VirtualCameraRatio, IsThatOfTheLensWithoutAnyRounding) {
    EXPECT_EQ(VirtualCameraRatio(1000, 1001, 0.5F, 0.5F), 1000.0F / 1001.0F);
    EXPECT_EQ(VirtualCameraRatio(1920, 1080, 0.25F, 0.5F), 960.0F / 1080.0F);
    EXPECT_EQ(VirtualCameraRatio(3, 1, 0.25F, 0.375F), 1.5F / 0.75F);
    EXPECT_EQ(VirtualCameraRatio(1920, 1080, 0.0F, 0.5F), 0.0F);
    EXPECT_EQ(GetRecommendedOutputVideoRatio(100, 50, kNoMount, ViewTypeVCam, kTouchingLens), 2.0F);
}

TEST(VirtualCameraRatio, Is1ForALensWithoutHeight) {
    EXPECT_EQ(VirtualCameraRatio(1920, 1080, 0.5F, 0.0F), 1.0F);
    const float limit = std::ldexp(1.0F, -24);
    EXPECT_EQ(VirtualCameraRatio(1, 1, 0.5F, limit), 1.0F) << "2^-23 of the height";
    EXPECT_GT(VirtualCameraRatio(1, 1, 0.5F, std::nextafter(limit, 1.0F)), 8000000.0F);
}

TEST(RingRatio, IsFourOverTheRingsPartOfTheRadius) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        const auto ratio = [mount](float radiusX, float radiusY, float inner) {
            return GetRecommendedOutputVideoRatio(1000, 800, mount, ViewTypeFullPanorama,
                                                  {radiusX, radiusY, 45.0F, inner});
        };
        EXPECT_EQ(ratio(0.5F, 0.5F, 0.0F), 4.0F);
        EXPECT_EQ(ratio(0.5F, 0.25F, 0.75F), 16.0F);
        EXPECT_EQ(ratio(0.25F, 0.5F, 0.5F), 8.0F);
        EXPECT_EQ(ratio(0.0F, 0.0F, 0.5F), 1.0F) << "a ring without extent";
    }
}

TEST(DualRingRatio, Is1OverTheRingsPartOfTheRadius) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        const auto ratio = [mount](float radiusX, float radiusY, float inner) {
            return GetRecommendedOutputVideoRatio(1000, 800, mount, ViewTypeDualPanorama,
                                                  {radiusX, radiusY, 45.0F, inner});
        };
        EXPECT_EQ(ratio(0.5F, 0.5F, 0.0F), 1.0F);
        EXPECT_EQ(ratio(0.5F, 0.25F, 0.75F), 4.0F);
        EXPECT_EQ(ratio(0.25F, 0.5F, 0.5F), 2.0F);
        EXPECT_EQ(ratio(0.0F, 0.0F, 0.5F), 1.0F) << "a ring without extent";
    }
}

TEST(RecommendedRatio, Is1WhereNothingIsKnown) {
    EXPECT_EQ(
        GetRecommendedOutputVideoRatio(90, 7, MountTypeWall, ViewTypeDualPanorama, kTouchingLens),
        1.0F);
    EXPECT_EQ(GetRecommendedOutputVideoRatio(90, 7, kNoMount, ViewTypeFullPanorama, kTouchingLens),
              1.0F);
    EXPECT_EQ(GetRecommendedOutputVideoRatio(90, 7, MountTypeTable, kNoView, kTouchingLens), 1.0F);
}

TEST(RecommendedRatio, Is1WithoutAnInput) {
    constexpr DewarpParams kHalfRing{0.5F, 0.5F, 45.0F, 0.5F};
    for (const MountType mount : kMounts) {
        for (const ViewType view : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
            EXPECT_EQ(GetRecommendedOutputVideoRatio(0, 8, mount, view, kHalfRing), 1.0F);
            EXPECT_EQ(GetRecommendedOutputVideoRatio(8, 0, mount, view, kHalfRing), 1.0F);
        }
    }
}

TEST(GetRatioRectSize, FitsTheLargestRectangleOfTheShape) {
    using Rect = std::pair<int, int>;
    EXPECT_EQ(GetRatioRectSize(4, 3, 100, 100), Rect(100, 75));
    EXPECT_EQ(GetRatioRectSize(3, 4, 100, 100), Rect(75, 100));
    EXPECT_EQ(GetRatioRectSize(4, 3, 8, 6), Rect(8, 6)) << "the bound's own shape";
    EXPECT_EQ(GetRatioRectSize(1, 1, 640, 480), Rect(480, 480));
    EXPECT_EQ(GetRatioRectSize(1, 1, 480, 640), Rect(480, 480));
    EXPECT_EQ(GetRatioRectSize(3, 2, 1000, 10), Rect(15, 10));
    EXPECT_EQ(GetRatioRectSize(2, 3, 10, 1000), Rect(10, 15));
    EXPECT_EQ(GetRatioRectSize(16, 9, 100, 100), Rect(100, 56)) << "56.25";
    EXPECT_EQ(GetRatioRectSize(7, 4, 100, 100), Rect(100, 57)) << "57.14";
    EXPECT_EQ(GetRatioRectSize(7, 8, 100, 100), Rect(87, 100)) << "87.5";
    EXPECT_EQ(GetRatioRectSize(8, 7, 100, 100), Rect(100, 87)) << "87.5";
}

// A seventh in single precision is a little more than that, so 1 over it is less than 7.
TEST(GetRatioRectSize, TheWidthStaysInABoundOfTheSameRatio) {
    using Rect = std::pair<int, int>;
    EXPECT_EQ(GetRatioRectSize(1, 7, 1, 7), Rect(1, 6));
    EXPECT_EQ(GetRatioRectSize(1, 7, 4, 28), Rect(4, 27));
}

TEST(GetRatioRectSize, AnySideOf0Gives0By0) {
    using Rect = std::pair<int, int>;
    EXPECT_EQ(GetRatioRectSize(0, 3, 100, 100), Rect(0, 0));
    EXPECT_EQ(GetRatioRectSize(4, 0, 100, 100), Rect(0, 0));
    EXPECT_EQ(GetRatioRectSize(4, 3, 0, 100), Rect(0, 0));
    EXPECT_EQ(GetRatioRectSize(-4, 3, 0, 100), Rect(0, 0)) << "nor are 100 rows kept";
    EXPECT_EQ(GetRatioRectSize(4, 3, 100, 0), Rect(0, 0));
}

}  // namespace

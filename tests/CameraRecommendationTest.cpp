#include <gtest/gtest.h>

#include <limits>

#include "KivFisheyeCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr DewarpParams kTouchingLens{0.5F, 0.5F, 45.0F, 0.0F};

unsigned char pixel[4];

/// A camera with an input of 1000 by 800 pixels.
struct CameraWithInput : CKivFisheyeCamera {
    CameraWithInput() {
        EXPECT_EQ(SetInputVideoParams({1000, 800, 4000, pixel}, PixelFormatRGB32), kResultOk);
    }
};

TEST(GetRecommendOutputVideoSize, FollowsInputMountViewAndLens) {
    CameraWithInput camera;
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 1000U);
    EXPECT_EQ(height, 800U);

    camera.SetDewarpParams({0.25F, 0.375F, 45.0F, 0.5F});
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 504U) << "500";
    EXPECT_EQ(height, 600U);

    camera.SetMountAndViewType(MountTypeCeiling, ViewTypeFullPanorama);
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 1200U) << "4 * 0.375 * 800";
    EXPECT_EQ(height, 150U) << "0.5 * 0.375 * 800";

    camera.SetViewType(ViewTypeDualPanorama);
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 600U) << "2 * 0.375 * 800";
    EXPECT_EQ(height, 300U) << "2 * 0.5 * 0.375 * 800";
    camera.SetViewType(ViewTypeFullPanorama);

    camera.SetInputVideoParams({400, 400, 1200, pixel}, PixelFormatRGB24);
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 600U);
    EXPECT_EQ(height, 75U);
}

TEST(GetRecommendOutputVideoSize, RefusesNullPointersAndWritesNothing) {
    CameraWithInput camera;
    unsigned int side = 77;
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(nullptr, &side), kResultInvalidArgument);
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&side, nullptr), kResultInvalidArgument);
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(nullptr, nullptr), kResultInvalidArgument);
    EXPECT_EQ(side, 77U);
    CKivFisheyeCamera withoutInput;
    EXPECT_EQ(withoutInput.GetRecommendOutputVideoSize(nullptr, &side), kResultInvalidArgument)
        << "the pointers are looked at first";
}

TEST(GetRecommendOutputVideoSize, IsNotReadyWithoutAnInput) {
    CKivFisheyeCamera camera;
    unsigned int width = 77;
    unsigned int height = 78;
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultNotReady);
    camera.SetOutputVideoParams({8, 2, 32, pixel});
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultNotReady);
    EXPECT_EQ(width, 77U);
    EXPECT_EQ(height, 78U);
}

TEST(GetRecommendOutputVideoSize, NeedsNoScene) {
    CameraWithInput camera;
    camera.SetMountType(static_cast<MountType>(7));
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(width, 1000U);
    EXPECT_EQ(height, 800U);
}

TEST(GetRecommendOutputVideoRatio, FollowsInputMountViewAndLens) {
    CameraWithInput camera;
    float ratio = 0.0F;
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
    EXPECT_EQ(ratio, 1.25F);
    camera.SetDewarpParams({0.25F, 0.5F, 45.0F, 0.75F});
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
    EXPECT_EQ(ratio, 0.625F);
    camera.SetMountAndViewType(MountTypeTable, ViewTypeFullPanorama);
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
    EXPECT_EQ(ratio, 16.0F);
    camera.SetViewType(ViewTypeDualPanorama);
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
    EXPECT_EQ(ratio, 4.0F);
}

TEST(GetRecommendOutputVideoRatio, Is1WithoutAnInput) {
    for (const ViewType view : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
        CKivFisheyeCamera camera;
        camera.SetMountAndViewType(MountTypeTable, view);
        float ratio = 0.0F;
        EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
        EXPECT_EQ(ratio, 1.0F);
    }
}

TEST(GetRecommendOutputVideoRatio, RefusesANullPointer) {
    CameraWithInput camera;
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(nullptr), kResultInvalidArgument);
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(8, 8, MountTypeTable, ViewTypeVCam, kTouchingLens,
                                                  nullptr),
              kResultInvalidArgument);
}

TEST(GetRecommendOutputVideoRatio, OfOtherValuesHasNothingToDoWithTheCameras) {
    CameraWithInput camera;
    float ratio = 0.0F;
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(300, 200, MountTypeWall, ViewTypeVCam,
                                                  {0.5F, 0.25F, 10.0F, 0.8F}, &ratio),
              kResultOk);
    EXPECT_EQ(ratio, 3.0F);
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(300, 200, MountTypeCeiling, ViewTypeFullPanorama,
                                                  {0.5F, 0.25F, 10.0F, 0.5F}, &ratio),
              kResultOk);
    EXPECT_EQ(ratio, 8.0F);
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(300, 200, MountTypeTable, ViewTypeDualPanorama,
                                                  {0.5F, 0.25F, 10.0F, 0.5F}, &ratio),
              kResultOk);
    EXPECT_EQ(ratio, 2.0F);
    EXPECT_EQ(camera.m_mountType, MountTypeWall);
    EXPECT_EQ(camera.m_viewType, ViewTypeVCam);
    EXPECT_EQ(camera.m_dewarpParams.radiusY, 0.5F);
}

TEST(GetRecommendOutputVideoRatio, OfOtherValuesRefusesWhatTheSettersRefuse) {
    CameraWithInput camera;
    float ratio = 77.0F;
    const auto ask = [&](MountType mount, ViewType view, const DewarpParams& lens) {
        return camera.GetRecommendOutputVideoRatio(300, 200, mount, view, lens, &ratio);
    };
    EXPECT_EQ(ask(MountTypeWall, ViewTypeDualPanorama, kTouchingLens), kResultInvalidArgument);
    EXPECT_EQ(ask(MountTypeTable, ViewTypeVCam, {1.5F, 0.5F, 45.0F, 0.0F}), kResultInvalidArgument);
    EXPECT_EQ(ask(MountTypeTable, ViewTypeVCam, {0.5F, -0.5F, 45.0F, 0.0F}),
              kResultInvalidArgument);
    EXPECT_EQ(ask(MountTypeTable, ViewTypeVCam, {0.5F, 0.5F, 9.0F, 0.0F}), kResultInvalidArgument);
    EXPECT_EQ(ask(MountTypeTable, ViewTypeVCam, {0.5F, 0.5F, 45.0F, 0.81F}),
              kResultInvalidArgument);
    EXPECT_EQ(ratio, 77.0F);
    EXPECT_EQ(ask(static_cast<MountType>(7), static_cast<ViewType>(7), {0.5F, 0.5F, kNan, 0.0F}),
              kResultOk);
    EXPECT_EQ(ratio, 1.0F);
}

TEST(GetRecommendOutputVideoRatio, AsksTheOtherFormThroughTheInterface) {
    struct AskedCamera : CameraWithInput {
        using CKivFisheyeCamera::GetRecommendOutputVideoRatio;
        ResultCode GetRecommendOutputVideoRatio(unsigned int width, unsigned int height,
                                                MountType mount, ViewType view,
                                                const DewarpParams& params, float* ratio) override {
            EXPECT_EQ(width, 1000U);
            EXPECT_EQ(height, 800U);
            EXPECT_EQ(mount, MountTypeTable);
            EXPECT_EQ(view, ViewTypeDualPanorama);
            EXPECT_EQ(params.radiusX, 0.25F);
            EXPECT_EQ(params.radiusY, 0.375F);
            EXPECT_EQ(params.wallViewAngle, 30.0F);
            EXPECT_EQ(params.innerRadiusRatio, 0.5F);
            *ratio = 5.0F;
            return kResultNoChange;
        }
    } camera;
    camera.SetMountAndViewType(MountTypeTable, ViewTypeDualPanorama);
    camera.SetDewarpParams({0.25F, 0.375F, 30.0F, 0.5F});
    float ratio = 0.0F;
    EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultNoChange);
    EXPECT_EQ(ratio, 5.0F);
}

}  // namespace

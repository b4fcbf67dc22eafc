#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <type_traits>

#include "KivFisheyeCamera.h"
#include "support/RecordingScene.h"

using namespace KivFisheyeLib;

namespace {

constexpr auto kNoMount = static_cast<MountType>(7);
constexpr auto kNoView = static_cast<ViewType>(3);

TEST(ResultCodes, ArePositiveInSixtyFourBits) {
    EXPECT_EQ(sizeof(ResultCode), 8U);
    EXPECT_TRUE(std::is_signed_v<ResultCode>);
    EXPECT_EQ(kResultOk, 0);
    EXPECT_EQ(kResultNoChange, 1);
    EXPECT_EQ(kResultNotReady, 2147483649);
    EXPECT_EQ(kResultInvalidArgument, 2147483651);
    EXPECT_EQ(kResultNullPointer, 2147483652);
    EXPECT_EQ(kResultOutOfMemory, 2147483653);
}

TEST(Enumerations, TakeAnyNumberOf32Bits) {
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<PixelFormat>, std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<MountType>, std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<ViewType>, std::uint32_t>));
    EXPECT_TRUE((std::is_convertible_v<MountType, std::uint32_t>)) << "unscoped";
}

TEST(NewCamera, HasItsDefaults) {
    const CKivFisheyeCamera camera;
    EXPECT_EQ(camera.m_mountType, 0U);
    EXPECT_EQ(camera.m_viewType, 0U);
    for (const VideoFrameInfo& info : {camera.m_inputInfo, camera.m_outputInfo}) {
        EXPECT_EQ(info.width, 0U);
        EXPECT_EQ(info.height, 0U);
        EXPECT_EQ(info.stride, 0U);
        EXPECT_EQ(info.buffer, nullptr);
    }
    EXPECT_EQ(camera.m_pixelFormat, 3U);
    EXPECT_EQ(camera.m_pan, 0.0F);
    EXPECT_EQ(camera.m_tilt, 0.0F);
    EXPECT_EQ(camera.m_zoom, 1.0F);
    EXPECT_EQ(camera.m_dewarpParams.radiusX, 0.5F);
    EXPECT_EQ(camera.m_dewarpParams.radiusY, 0.5F);
    EXPECT_EQ(camera.m_dewarpParams.wallViewAngle, 45.0F);
    EXPECT_EQ(camera.m_dewarpParams.innerRadiusRatio, 0.0F);
    EXPECT_EQ(camera.m_vcamFieldOfView, 90.0F);
    EXPECT_EQ(camera.m_vcamEyeX, 0.0F);
    EXPECT_EQ(camera.m_vcamEyeY, 0.0F);
    EXPECT_EQ(camera.m_vcamEyeZ, 1.0F);
    EXPECT_EQ(camera.m_vcamNear, 1.0F);
    EXPECT_EQ(camera.m_vcamFar, 4.0F);
}

TEST(NewCamera, AnswersItsDefaults) {
    CKivFisheyeCamera camera;
    auto mount = kNoMount;
    auto view = kNoView;
    EXPECT_EQ(camera.GetMountType(&mount), kResultOk);
    EXPECT_EQ(mount, MountTypeWall);
    EXPECT_EQ(camera.GetViewType(&view), kResultOk);
    EXPECT_EQ(view, ViewTypeVCam);
    float pan = -1.0F;
    float tilt = -1.0F;
    float zoom = -1.0F;
    EXPECT_EQ(camera.GetPTZ(&pan, &tilt, &zoom), kResultOk);
    EXPECT_EQ(pan, 0.0F);
    EXPECT_EQ(tilt, 0.0F);
    EXPECT_EQ(zoom, 1.0F);
    DewarpParams params{};
    EXPECT_EQ(camera.GetDewarpParams(&params), kResultOk);
    EXPECT_EQ(params.radiusX, 0.5F);
    EXPECT_EQ(params.radiusY, 0.5F);
    EXPECT_EQ(params.wallViewAngle, 45.0F);
    EXPECT_EQ(params.innerRadiusRatio, 0.0F);
}

TEST(Getters, GiveEachValueToItsOwnPointer) {
    CKivFisheyeCamera camera;
    camera.SetMountAndViewType(MountTypeTable, ViewTypeDualPanorama);
    auto mount = kNoMount;
    auto view = kNoView;
    EXPECT_EQ(camera.GetMountAndViewType(&mount, &view), kResultOk);
    EXPECT_EQ(mount, MountTypeTable);
    EXPECT_EQ(view, ViewTypeDualPanorama);

    camera.m_pan = 10.0F;
    camera.m_tilt = 20.0F;
    camera.m_zoom = 3.0F;
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 0.0F;
    EXPECT_EQ(camera.GetPTZ(&pan, &tilt, &zoom), kResultOk);
    EXPECT_EQ(pan, 10.0F);
    EXPECT_EQ(tilt, 20.0F);
    EXPECT_EQ(zoom, 3.0F);
}

TEST(Getters, RefuseNullPointersAndWriteNothing) {
    CKivFisheyeCamera camera;
    EXPECT_EQ(camera.GetMountType(nullptr), kResultInvalidArgument);
    EXPECT_EQ(camera.GetViewType(nullptr), kResultInvalidArgument);
    EXPECT_EQ(camera.GetDewarpParams(nullptr), kResultInvalidArgument);

    auto mount = kNoMount;
    auto view = kNoView;
    EXPECT_EQ(camera.GetMountAndViewType(nullptr, &view), kResultInvalidArgument);
    EXPECT_EQ(camera.GetMountAndViewType(&mount, nullptr), kResultInvalidArgument);
    EXPECT_EQ(camera.GetMountAndViewType(nullptr, nullptr), kResultInvalidArgument);
    EXPECT_EQ(mount, kNoMount);
    EXPECT_EQ(view, kNoView);

    float pan = 77.0F;
    float tilt = 77.0F;
    float zoom = 77.0F;
    EXPECT_EQ(camera.GetPTZ(nullptr, &tilt, &zoom), kResultNullPointer);
    EXPECT_EQ(camera.GetPTZ(&pan, nullptr, &zoom), kResultNullPointer);
    EXPECT_EQ(camera.GetPTZ(&pan, &tilt, nullptr), kResultNullPointer);
    EXPECT_EQ(pan, 77.0F);
    EXPECT_EQ(tilt, 77.0F);
    EXPECT_EQ(zoom, 77.0F);
}

TEST(PixelFormats, TwoAreAccepted) {
    CKivFisheyeCamera camera;
    EXPECT_EQ(camera.IsPixelFormatAccepted(PixelFormatRGB24), kResultOk);
    EXPECT_EQ(camera.IsPixelFormatAccepted(PixelFormatRGB32), kResultOk);
    for (const std::uint32_t number : {0U, 2U, 4U, 5U, 257U, 0x80000001U, 0xFFFFFFFFU}) {
        EXPECT_EQ(camera.IsPixelFormatAccepted(static_cast<PixelFormat>(number)), kResultNoChange)
            << number;
    }
}

TEST(SetMountType, ThePresentMountChangesNothing) {
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.SetMountType(MountTypeWall), kResultNoChange);
    EXPECT_FALSE(recorded.calls.isDeleted) << "the scene stays";
    EXPECT_TRUE(recorded.calls.frameTags.empty());
}

TEST(SetViewType, ThePresentViewChangesNothing) {
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.SetViewType(ViewTypeVCam), kResultNoChange);
    EXPECT_FALSE(recorded.calls.isDeleted) << "the scene stays";
    EXPECT_TRUE(recorded.calls.frameTags.empty());
}

TEST(SetMountAndViewType, ThePresentMountAndViewGetANewScene) {
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.SetMountAndViewType(MountTypeWall, ViewTypeVCam), kResultOk);
    EXPECT_TRUE(recorded.calls.isDeleted);
}

TEST(SetMountType, AnotherMountIsStoredAndReplacesTheScene) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable, kNoMount}) {
        RecordedCamera recorded;
        EXPECT_EQ(recorded.camera.SetMountType(mount), kResultOk);
        EXPECT_TRUE(recorded.calls.isDeleted);
        auto stored = MountTypeWall;
        recorded.camera.GetMountType(&stored);
        EXPECT_EQ(stored, mount);
        EXPECT_EQ(recorded.camera.m_viewType, ViewTypeVCam);
        EXPECT_EQ(recorded.camera.SetMountType(mount), kResultNoChange);
    }
}

TEST(SetViewType, AnotherViewIsStoredAndReplacesTheScene) {
    for (const ViewType view : {ViewTypeFullPanorama, kNoView, static_cast<ViewType>(~0U)}) {
        RecordedCamera recorded;
        EXPECT_EQ(recorded.camera.SetViewType(view), kResultOk);
        EXPECT_TRUE(recorded.calls.isDeleted);
        auto stored = ViewTypeVCam;
        recorded.camera.GetViewType(&stored);
        EXPECT_EQ(stored, view);
        EXPECT_EQ(recorded.camera.m_mountType, MountTypeWall);
        EXPECT_EQ(recorded.camera.SetViewType(view), kResultNoChange);
    }
}

TEST(DualPanorama, IsRefusedOnAWallByEverySetter) {
    CKivFisheyeCamera wall;
    EXPECT_EQ(wall.SetViewType(ViewTypeDualPanorama), kResultInvalidArgument);
    EXPECT_EQ(wall.m_viewType, ViewTypeVCam);

    CKivFisheyeCamera dual;
    EXPECT_EQ(dual.SetMountType(MountTypeCeiling), kResultOk);
    EXPECT_EQ(dual.SetViewType(ViewTypeDualPanorama), kResultOk);
    EXPECT_EQ(dual.SetMountType(MountTypeWall), kResultInvalidArgument);
    EXPECT_EQ(dual.m_mountType, MountTypeCeiling);
    EXPECT_EQ(dual.SetMountAndViewType(MountTypeWall, ViewTypeDualPanorama),
              kResultInvalidArgument);
    EXPECT_EQ(dual.m_mountType, MountTypeCeiling);
    EXPECT_EQ(dual.m_viewType, ViewTypeDualPanorama);
}

TEST(DualPanorama, ARefusalKeepsTheScene) {
    RecordedCamera recorded;
    recorded.camera.SetViewType(ViewTypeDualPanorama);
    recorded.camera.SetMountAndViewType(MountTypeWall, ViewTypeDualPanorama);
    recorded.camera.m_mountType = MountTypeCeiling;
    recorded.camera.m_viewType = ViewTypeDualPanorama;
    recorded.camera.SetMountType(MountTypeWall);
    EXPECT_FALSE(recorded.calls.isDeleted);
    EXPECT_TRUE(recorded.calls.frameTags.empty());
}

TEST(SetMountAndViewType, ChangesBothWhereSingleSettersWouldBeRefused) {
    CKivFisheyeCamera camera;
    ASSERT_EQ(camera.SetMountAndViewType(MountTypeCeiling, ViewTypeDualPanorama), kResultOk);
    EXPECT_EQ(camera.SetMountAndViewType(MountTypeWall, ViewTypeFullPanorama), kResultOk);
    EXPECT_EQ(camera.m_mountType, MountTypeWall);
    EXPECT_EQ(camera.m_viewType, ViewTypeFullPanorama);
}

TEST(MountAndView, EveryPairButOneIsAccepted) {
    for (const std::uint32_t mount : {0U, 1U, 2U, 3U, 7U, 0xFFFFFFFFU}) {
        for (const std::uint32_t view : {0U, 1U, 2U, 3U, 0xFFFFFFFFU}) {
            CKivFisheyeCamera camera;
            const ResultCode result = camera.SetMountAndViewType(static_cast<MountType>(mount),
                                                                 static_cast<ViewType>(view));
            const bool isWallWithDual = mount == 0 && view == 1;
            EXPECT_EQ(result, isWallWithDual ? kResultInvalidArgument : kResultOk)
                << mount << ", " << view;
            EXPECT_EQ(camera.m_mountType, isWallWithDual ? 0 : mount);
            EXPECT_EQ(camera.m_viewType, isWallWithDual ? 0 : view);
        }
    }
}

TEST(Camera, AnglesAndLensSurviveAChangeOfMountAndView) {
    CKivFisheyeCamera camera;
    camera.m_pan = 400.0F;
    camera.m_tilt = -20.0F;
    camera.m_zoom = 30.0F;
    camera.m_vcamEyeZ = 2.0F;
    camera.m_vcamNear = 1.5F;
    camera.m_vcamFar = 8.0F;
    camera.m_vcamFieldOfView = 60.0F;
    camera.SetMountType(MountTypeTable);
    camera.SetViewType(ViewTypeFullPanorama);
    camera.SetMountAndViewType(MountTypeCeiling, ViewTypeFullPanorama);
    EXPECT_EQ(camera.m_pan, 400.0F) << "not brought into its range either";
    EXPECT_EQ(camera.m_tilt, -20.0F);
    EXPECT_EQ(camera.m_zoom, 30.0F);
    EXPECT_EQ(camera.m_vcamEyeZ, 2.0F);
    EXPECT_EQ(camera.m_vcamNear, 1.5F);
    EXPECT_EQ(camera.m_vcamFar, 8.0F);
    EXPECT_EQ(camera.m_vcamFieldOfView, 60.0F);
}

TEST(Camera, DeletesItsSceneWhenItEnds) {
    SceneCalls calls;
    {
        CKivFisheyeCamera camera;
        camera.m_scene = std::make_unique<RecordingScene>(&camera, &calls);
    }
    EXPECT_TRUE(calls.isDeleted);
}

TEST(CameraBases, TheCameraInterfaceComesFirst) {
    CKivFisheyeCamera camera;
    const void* const start = &camera;
    EXPECT_EQ(static_cast<IKivFisheyeCamera*>(&camera), start);
    EXPECT_LT(start, static_cast<void*>(static_cast<IKivFisheyeROI*>(&camera)));
    EXPECT_LT(static_cast<void*>(static_cast<IKivFisheyeROI*>(&camera)),
              static_cast<void*>(static_cast<IKivFisheyeDewarpBoundary*>(&camera)));
    EXPECT_FALSE(std::is_polymorphic_v<CObjectRootT<CMultiThreadModel>>);
}

}  // namespace

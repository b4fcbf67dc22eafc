#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "KivFisheyeCamera.h"
#include "support/LockProbe.h"
#include "support/RecordingScene.h"

using namespace KivFisheyeLib;

namespace {

unsigned char pixels[64];
const VideoFrameInfo kFrame{8, 2, 32, pixels};
const VideoFrameInfo kNoFrame{8, 2, 32, nullptr};
const DewarpParams kLens{0.25F, 0.25F, 30.0F, 0.5F};
const DewarpParams kNoLens{2.0F, 0.25F, 30.0F, 0.5F};

struct Operation {
    const char* name;
    std::function<void(CKivFisheyeCamera&)> call;
};

/// Operations that run under the camera's lock, at least in part.
const Operation kLocked[] = {
    {"SetInputVideoParams", [](auto& c) { c.SetInputVideoParams(kFrame, PixelFormatRGB32); }},
    {"SetOutputVideoParams", [](auto& c) { c.SetOutputVideoParams(kFrame); }},
    {"SetOutputVideoParams, refused", [](auto& c) { c.SetOutputVideoParams(kNoFrame); }},
    {"SetMountType", [](auto& c) { c.SetMountType(MountTypeTable); }},
    {"SetMountType, no change", [](auto& c) { c.SetMountType(MountTypeWall); }},
    {"SetViewType", [](auto& c) { c.SetViewType(ViewTypeFullPanorama); }},
    {"SetViewType, no change", [](auto& c) { c.SetViewType(ViewTypeVCam); }},
    {"SetViewType, refused", [](auto& c) { c.SetViewType(ViewTypeDualPanorama); }},
    {"SetMountAndViewType", [](auto& c) { c.SetMountAndViewType(MountTypeWall, ViewTypeVCam); }},
    {"SetAbsolutePTZ", [](auto& c) { c.SetAbsolutePTZ(1.0F, 2.0F, 3.0F); }},
    {"SetRelativePTZ", [](auto& c) { c.SetRelativePTZ(1.0F, 2.0F, 3.0F); }},
    {"SetRelativePTZ, no change", [](auto& c) { c.SetRelativePTZ(0.0F, 0.0F, 0.0F); }},
    {"SetDewarpParams", [](auto& c) { c.SetDewarpParams(kLens); }},
    {"Process", [](auto& c) { c.Process(0); }},
    {"GetMountType",
     [](auto& c) {
         auto mount = MountTypeWall;
         c.GetMountType(&mount);
     }},
    {"GetViewType",
     [](auto& c) {
         auto view = ViewTypeVCam;
         c.GetViewType(&view);
     }},
    {"GetMountAndViewType",
     [](auto& c) {
         auto mount = MountTypeWall;
         auto view = ViewTypeVCam;
         c.GetMountAndViewType(&mount, &view);
     }},
    {"GetPTZ",
     [](auto& c) {
         float ptz[3];
         c.GetPTZ(&ptz[0], &ptz[1], &ptz[2]);
     }},
    {"GetDewarpParams",
     [](auto& c) {
         DewarpParams params{};
         c.GetDewarpParams(&params);
     }},
    {"GetRecommendOutputVideoSize",
     [](auto& c) {
         unsigned int size[2];
         c.GetRecommendOutputVideoSize(&size[0], &size[1]);
     }},
};

/// Operations that take no lock, or answer before they would.
const Operation kUnlocked[] = {
    {"IsPixelFormatAccepted", [](auto& c) { c.IsPixelFormatAccepted(PixelFormatRGB32); }},
    {"GetRecommendOutputVideoRatio",
     [](auto& c) {
         float ratio = 0.0F;
         c.GetRecommendOutputVideoRatio(&ratio);
     }},
    {"GetRecommendOutputVideoRatio of other values",
     [](auto& c) {
         float ratio = 0.0F;
         c.GetRecommendOutputVideoRatio(8, 8, MountTypeTable, ViewTypeVCam, kLens, &ratio);
         c.GetRecommendOutputVideoRatio(8, 8, MountTypeTable, ViewTypeDualPanorama, kLens, &ratio);
         c.GetRecommendOutputVideoRatio(8, 8, MountTypeWall, ViewTypeFullPanorama, kLens, &ratio);
     }},
    {"CvtXYToVCamPanTilt",
     [](auto& c) {
         float aim[2];
         c.CvtXYToVCamPanTilt(0.25F, 0.5F, aim[0], aim[1]);
     }},
    {"CvtXYToVCamPanTiltZoom",
     [](auto& c) {
         float aim[3];
         c.CvtXYToVCamPanTiltZoom(0.25F, 0.5F, 1.0F, aim[0], aim[1], aim[2]);
     }},
    {"SetInputVideoParams, refused",
     [](auto& c) { c.SetInputVideoParams(kNoFrame, PixelFormatRGB32); }},
    {"SetMountAndViewType, refused",
     [](auto& c) { c.SetMountAndViewType(MountTypeWall, ViewTypeDualPanorama); }},
    {"SetDewarpParams, refused", [](auto& c) { c.SetDewarpParams(kNoLens); }},
    {"GetMountType, null", [](auto& c) { c.GetMountType(nullptr); }},
    {"GetViewType, null", [](auto& c) { c.GetViewType(nullptr); }},
    {"GetMountAndViewType, null", [](auto& c) { c.GetMountAndViewType(nullptr, nullptr); }},
    {"GetPTZ, null", [](auto& c) { c.GetPTZ(nullptr, nullptr, nullptr); }},
    {"GetDewarpParams, null", [](auto& c) { c.GetDewarpParams(nullptr); }},
    {"GetRecommendOutputVideoSize, null",
     [](auto& c) { c.GetRecommendOutputVideoSize(nullptr, nullptr); }},
};

TEST(CameraLock, SettersGettersAndProcessWaitForIt) {
    for (const Operation& operation : kLocked) {
        RecordedCamera recorded;
        EXPECT_TRUE(WaitsForLock(recorded.camera, [&] { operation.call(recorded.camera); }))
            << operation.name;
        EXPECT_FALSE(IsLocked(recorded.camera)) << operation.name << " leaves it locked";
    }
}

TEST(CameraLock, RefusalsBeforehandAndQuestionsThatMayMixValuesDoNotWait) {
    for (const Operation& operation : kUnlocked) {
        RecordedCamera recorded;
        EXPECT_FALSE(WaitsForLock(recorded.camera, [&] { operation.call(recorded.camera); }))
            << operation.name;
        EXPECT_FALSE(IsLocked(recorded.camera)) << operation.name;
    }
}

TEST(CameraLock, CoversEveryCallOfTheScene) {
    RecordedCamera recorded;
    CKivFisheyeCamera& camera = recorded.camera;
    int callsInside = 0;
    recorded.calls.inside = [&] {
        ++callsInside;
        EXPECT_TRUE(IsLocked(camera));
    };
    camera.SetInputVideoParams(kFrame, PixelFormatRGB32);
    camera.SetOutputVideoParams(kFrame);
    camera.SetDewarpParams(kLens);
    camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F);
    camera.SetRelativePTZ(1.0F, 2.0F, 3.0F);
    camera.Process(0);
    EXPECT_EQ(callsInside, 6);
}

TEST(CameraLock, AThreadThatHoldsItMayCallAgain) {
    RecordedCamera recorded;
    CKivFisheyeCamera& camera = recorded.camera;
    recorded.calls.inside = [&] {
        auto mount = MountTypeCeiling;
        EXPECT_EQ(camera.GetMountType(&mount), kResultOk);
        EXPECT_EQ(mount, MountTypeWall);
        EXPECT_TRUE(IsLocked(camera)) << "still held after the inner call";
    };
    EXPECT_EQ(camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F), kResultOk);
    EXPECT_EQ(recorded.calls.ptz.size(), 1U);
    EXPECT_FALSE(IsLocked(camera));
}

TEST(CameraLock, IsReleasedWhenTheSceneThrows) {
    RecordedCamera recorded;
    CKivFisheyeCamera& camera = recorded.camera;
    camera.SetInputVideoParams(kFrame, PixelFormatRGB32);
    camera.SetOutputVideoParams(kFrame);
    recorded.calls.inside = [] { throw std::runtime_error("the scene"); };
    const std::function<void()> throwing[] = {
        [&] { camera.SetInputVideoParams(kFrame, PixelFormatRGB32); },
        [&] { camera.SetOutputVideoParams(kFrame); },
        [&] { camera.SetDewarpParams(kLens); },
        [&] { camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F); },
        [&] { camera.SetRelativePTZ(1.0F, 2.0F, 3.0F); },
        [&] { camera.Process(0); },
    };
    for (const auto& call : throwing) {
        EXPECT_THROW(call(), std::runtime_error);
        EXPECT_FALSE(IsLocked(camera));
    }
}

TEST(CameraLock, BelongsToOneCameraAlone) {
    CKivFisheyeCamera held;
    RecordedCamera other;
    const CObjectLockT<CMultiThreadModel> lock(&held);
    EXPECT_FALSE(IsLocked(other.camera));
    EXPECT_EQ(other.camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F), kResultOk);
}

TEST(ObjectLock, HoldsForItsScope) {
    CObjectRootT<CMultiThreadModel> object;
    EXPECT_FALSE(IsLocked(object));
    {
        const CObjectLockT<CMultiThreadModel> outer(&object);
        EXPECT_TRUE(IsLocked(object));
        {
            const CObjectLockT<CMultiThreadModel> inner(&object);
            EXPECT_TRUE(IsLocked(object));
        }
        EXPECT_TRUE(IsLocked(object)) << "locked once for each scope";
    }
    EXPECT_FALSE(IsLocked(object));
}

}  // namespace

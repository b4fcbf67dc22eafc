#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/AtOnce.h"
#include "support/PanoramaCamera.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kRounds = 200;

/// Runs all of these at once, each again and again.
void RepeatAtOnce(const std::vector<std::function<void(int round)>>& calls) {
    std::vector<std::function<void()>> actions;
    for (const auto& call : calls) {
        actions.emplace_back([&call] {
            for (int round = 0; round < kRounds; ++round) {
                call(round);
            }
        });
    }
    RunAtOnce(actions);
}

TEST(CameraThreads, RatiosAreAskedForWhileAnotherThreadSetsEverything) {
    CKivFisheyeCamera camera;
    unsigned char pixel[4] = {};
    RepeatAtOnce({
        [&](int) {
            float ratio = 0.0F;
            EXPECT_EQ(camera.GetRecommendOutputVideoRatio(&ratio), kResultOk);
            // Of either size, in either view, for either lens, or for any mix of them.
            EXPECT_TRUE(ratio == 1.0F || ratio == 0.5F || ratio == 0.25F || ratio == 0.125F ||
                        ratio == 4.0F || ratio == 8.0F)
                << ratio;
        },
        [&](int round) {
            const bool isEven = round % 2 == 0;
            camera.SetInputVideoParams(
                {isEven ? 16U : 8U, isEven ? 16U : 32U, isEven ? 64U : 32U, pixel},
                PixelFormatRGB32);
            camera.SetDewarpParams(isEven ? DewarpParams{0.5F, 0.5F, 45.0F, 0.0F}
                                          : DewarpParams{0.25F, 0.5F, 45.0F, 0.5F});
            camera.SetMountAndViewType(isEven ? MountTypeTable : MountTypeCeiling,
                                       isEven ? ViewTypeFullPanorama : ViewTypeVCam);
        },
    });
}

TEST(CameraThreads, EveryPictureIsWholeWhileOtherThreadsChangeTheCamera) {
    PanoramaCamera<TablePanorama<PixelFormatRGB32>> panorama;
    CKivFisheyeCamera& camera = panorama.camera;
    panorama.input.Fill(0x3C);
    RepeatAtOnce({
        [&](int) { EXPECT_EQ(camera.Process(0), kResultOk); },
        [&](int round) {
            EXPECT_EQ(camera.SetDewarpParams({0.5F, round % 2 == 0 ? 0.5F : 0.25F, 45.0F, 0.0F}),
                      kResultOk);
        },
        [&](int) { EXPECT_EQ(camera.SetOutputVideoParams(panorama.output.record), kResultOk); },
        [&](int round) {
            EXPECT_EQ(camera.SetAbsolutePTZ(static_cast<float>(round), 0.0F, 0.0F), kResultOk);
        },
        [&](int) {
            float ptz[3];
            EXPECT_EQ(camera.GetPTZ(&ptz[0], &ptz[1], &ptz[2]), kResultOk);
            EXPECT_EQ(ptz[2], 1.0F);
        },
        [&](int round) {
            EXPECT_EQ(camera.SetMountAndViewType(round % 2 == 0 ? MountTypeCeiling : MountTypeTable,
                                                 ViewTypeFullPanorama),
                      kResultOk);
        },
    });
    EXPECT_TRUE(panorama.output.IsFilledWith(0x3C));
}

TEST(CameraThreads, RelativeTurnsAreNeverLost) {
    CKivFisheyeCamera camera;
    ASSERT_EQ(camera.SetMountAndViewType(MountTypeTable, ViewTypeFullPanorama), kResultOk);
    const auto turn = [&](int) { camera.SetRelativePTZ(1.0F, 0.0F, 0.0F); };
    RepeatAtOnce({turn, turn, turn, turn});
    EXPECT_EQ(camera.m_pan, static_cast<float>(4 * kRounds % 360));
}

TEST(CameraThreads, APictureBelongsToOneAimAndNeverToHalfOfAnother) {
    VCamCamera<VCam<MountTypeCeiling, PixelFormatRGB32>> vcam;
    const auto first = vcam.Expected({0.01F, 70.0F, 0.01F, 200.0F, 50.0F});
    const auto second = vcam.Expected({0.505F, 90.0F, 0.505F, 20.0F, 0.0F});
    ASSERT_NE(first, second);
    vcam.camera.SetAbsolutePTZ(20.0F, 0.0F, 1.5F);
    RepeatAtOnce({
        [&](int) {
            EXPECT_EQ(vcam.camera.Process(0), kResultOk);
            EXPECT_TRUE(vcam.output.bytes == first || vcam.output.bytes == second);
        },
        [&](int round) {
            const bool isEven = round % 2 == 0;
            EXPECT_EQ(vcam.camera.SetAbsolutePTZ(isEven ? 200.0F : 20.0F, isEven ? 50.0F : 90.0F,
                                                 isEven ? 4.0F : 1.5F),
                      kResultOk);
        },
        [&](int) {
            float ptz[3];
            EXPECT_EQ(vcam.camera.GetPTZ(&ptz[0], &ptz[1], &ptz[2]), kResultOk);
            EXPECT_TRUE((ptz[0] == 200.0F && ptz[1] == 50.0F && ptz[2] == 4.0F) ||
                        (ptz[0] == 20.0F && ptz[1] == 0.0F && ptz[2] == 1.5F));
        },
    });
    EXPECT_TRUE(vcam.Shows(second)) << "the last one set";
}

TEST(CameraThreads, EverythingChangesWhileAVirtualCameraConverts) {
    VCamCamera<VCam<MountTypeWall, PixelFormatRGB24>> vcam;
    CKivFisheyeCamera& camera = vcam.camera;
    vcam.input.Fill(0x3C);
    RepeatAtOnce({
        [&](int) { EXPECT_EQ(camera.Process(0), kResultOk); },
        [&](int round) {
            const auto step = static_cast<float>(round % 7);
            EXPECT_EQ(camera.SetRelativePTZ(step + 1.0F, 2.0F - step, step - 3.0F), kResultOk);
        },
        [&](int round) {
            EXPECT_EQ(camera.SetDewarpParams({0.5F, round % 2 == 0 ? 0.5F : 0.25F, 45.0F, 0.0F}),
                      kResultOk);
        },
        [&](int round) {
            EXPECT_EQ(camera.SetMountAndViewType(static_cast<MountType>(round % 3), ViewTypeVCam),
                      kResultOk);
        },
        [&](int) { EXPECT_EQ(camera.SetOutputVideoParams(vcam.output.record), kResultOk); },
        [&](int) {
            float aim[3];
            EXPECT_EQ(camera.CvtXYToVCamPanTilt(0.5F, 0.5F, aim[0], aim[1]), kResultOk);
            EXPECT_TRUE(aim[0] == 0.0F || aim[0] == 90.0F) << "of any of the mounts";
            EXPECT_EQ(camera.CvtXYToVCamPanTiltZoom(0.5F, 0.5F, 4.0F, aim[0], aim[1], aim[2]),
                      kResultOk);
            EXPECT_EQ(aim[2], 1.0F);
        },
    });
    ASSERT_EQ(camera.SetAbsolutePTZ(0.0F, 0.0F, 10.0F), kResultOk);
    ASSERT_EQ(camera.Process(0), kResultOk);
    EXPECT_TRUE(vcam.output.IsFilledWith(0x3C)) << "all of it looks at the middle of the lens";
}

TEST(CameraThreads, CamerasOfTheirOwnDoNotMeet) {
    const auto convert = [](int) {
        PanoramaCamera<CeilingPanorama<PixelFormatRGB24>> panorama;
        EXPECT_TRUE(panorama.Shows(panorama.Expected().bytes));
    };
    RepeatAtOnce({convert, convert, convert});
}

}  // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "KivFisheyeCamera.h"
#include "support/RecordingScene.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

void ExpectPtz(const SceneCalls::Ptz& actual, float pan, float tilt, float zoom, bool zoomingOut) {
    EXPECT_EQ(actual.pan, pan);
    EXPECT_EQ(actual.tilt, tilt);
    EXPECT_EQ(actual.zoom, zoom);
    EXPECT_EQ(actual.zoomingOut, zoomingOut);
}

/// A camera at pan 10, tilt 20, zoom 3.
struct TurnedCamera : RecordedCamera {
    TurnedCamera() {
        camera.m_pan = 10.0F;
        camera.m_tilt = 20.0F;
        camera.m_zoom = 3.0F;
    }
};

TEST(SetAbsolutePTZ, GoesToTheSceneAsItIs) {
    TurnedCamera turned;
    EXPECT_EQ(turned.camera.SetAbsolutePTZ(-500.0F, 1000.0F, 40.0F), kResultOk);
    ASSERT_EQ(turned.calls.ptz.size(), 1U);
    ExpectPtz(turned.calls.ptz[0], -500.0F, 1000.0F, 40.0F, false);
    EXPECT_EQ(turned.camera.m_pan, 10.0F) << "the scene stores, not the camera";
    EXPECT_EQ(turned.camera.m_tilt, 20.0F);
    EXPECT_EQ(turned.camera.m_zoom, 3.0F);
}

TEST(SetAbsolutePTZ, AZoomBelow1KeepsTheZoom) {
    for (const float zoom :
         {0.0F, -1.0F, 0.5F, std::nextafter(1.0F, 0.0F), -std::numeric_limits<float>::infinity()}) {
        TurnedCamera turned;
        EXPECT_EQ(turned.camera.SetAbsolutePTZ(1.0F, 2.0F, zoom), kResultOk);
        ExpectPtz(turned.calls.ptz.at(0), 1.0F, 2.0F, 3.0F, false);
    }
}

TEST(SetAbsolutePTZ, AZoomOf1IsTaken) {
    TurnedCamera turned;
    turned.camera.SetAbsolutePTZ(1.0F, 2.0F, 1.0F);
    ExpectPtz(turned.calls.ptz.at(0), 1.0F, 2.0F, 1.0F, false);
}

TEST(SetAbsolutePTZ, AZoomOfNanIsTaken) {
    TurnedCamera turned;
    turned.camera.SetAbsolutePTZ(1.0F, 2.0F, kNan);
    EXPECT_TRUE(std::isnan(turned.calls.ptz.at(0).zoom));
}

TEST(SetRelativePTZ, AddsToThePresentAnglesAndZoom) {
    TurnedCamera turned;
    EXPECT_EQ(turned.camera.SetRelativePTZ(100.0F, -50.0F, 0.5F), kResultOk);
    ASSERT_EQ(turned.calls.ptz.size(), 1U);
    ExpectPtz(turned.calls.ptz[0], 110.0F, -30.0F, 3.5F, false);
}

TEST(SetRelativePTZ, ANegativeZoomDeltaZoomsOut) {
    TurnedCamera turned;
    turned.camera.SetRelativePTZ(0.0F, 0.0F, -2.5F);
    ExpectPtz(turned.calls.ptz.at(0), 10.0F, 20.0F, 0.5F, true);
}

TEST(SetRelativePTZ, NegativeAnglesDoNotZoomOut) {
    TurnedCamera turned;
    turned.camera.SetRelativePTZ(-1.0F, -2.0F, 0.0F);
    ExpectPtz(turned.calls.ptz.at(0), 9.0F, 18.0F, 3.0F, false);
    turned.camera.SetRelativePTZ(-1.0F, -2.0F, -0.0F);
    EXPECT_FALSE(turned.calls.ptz.at(1).zoomingOut);
}

TEST(SetRelativePTZ, ThreeZeroesAreNoChange) {
    TurnedCamera turned;
    EXPECT_EQ(turned.camera.SetRelativePTZ(0.0F, 0.0F, 0.0F), kResultNoChange);
    EXPECT_EQ(turned.camera.SetRelativePTZ(-0.0F, 0.0F, -0.0F), kResultNoChange);
    EXPECT_TRUE(turned.calls.ptz.empty());
}

TEST(SetRelativePTZ, OneDeltaThatIsNotZeroIsEnough) {
    constexpr float kTiny = std::numeric_limits<float>::denorm_min();
    const float deltas[][3] = {{kTiny, 0.0F, 0.0F}, {0.0F, kTiny, 0.0F}, {0.0F, 0.0F, kTiny}};
    TurnedCamera turned;
    for (const float* delta : deltas) {
        EXPECT_EQ(turned.camera.SetRelativePTZ(delta[0], delta[1], delta[2]), kResultOk);
    }
    EXPECT_EQ(turned.calls.ptz.size(), 3U);
}

TEST(SetRelativePTZ, NanIsAChange) {
    TurnedCamera turned;
    EXPECT_EQ(turned.camera.SetRelativePTZ(0.0F, 0.0F, kNan), kResultOk);
    ASSERT_EQ(turned.calls.ptz.size(), 1U);
    EXPECT_TRUE(std::isnan(turned.calls.ptz[0].zoom));
    EXPECT_FALSE(turned.calls.ptz[0].zoomingOut);
}

TEST(PtzSetters, GiveBackWhatTheSceneAnswers) {
    TurnedCamera turned;
    for (const ResultCode result : {kResultOk, kResultInvalidArgument, ResultCode{-5}}) {
        turned.calls.result = result;
        EXPECT_EQ(turned.camera.SetAbsolutePTZ(1.0F, 1.0F, 1.0F), result);
        EXPECT_EQ(turned.camera.SetRelativePTZ(1.0F, 1.0F, 1.0F), result);
    }
}

TEST(PtzSetters, ConvertNothing) {
    TurnedCamera turned;
    turned.camera.SetAbsolutePTZ(1.0F, 1.0F, 1.0F);
    turned.camera.SetRelativePTZ(1.0F, 1.0F, 1.0F);
    EXPECT_TRUE(turned.calls.frameTags.empty());
    EXPECT_EQ(turned.calls.videoChanges, 0);
}

TEST(PtzSetters, AreNotReadyWithoutAScene) {
    CKivFisheyeCamera camera;
    camera.m_scene.reset();
    EXPECT_EQ(camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F), kResultNotReady);
    EXPECT_EQ(camera.SetRelativePTZ(1.0F, 2.0F, 3.0F), kResultNotReady);
    EXPECT_EQ(camera.SetRelativePTZ(0.0F, 0.0F, 0.0F), kResultNotReady);
    EXPECT_EQ(camera.m_pan, 0.0F);
    EXPECT_EQ(camera.m_tilt, 0.0F);
    EXPECT_EQ(camera.m_zoom, 1.0F);
}

}  // namespace

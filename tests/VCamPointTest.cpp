#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "support/FloatBits.h"
#include "support/LockProbe.h"
#include "support/VCamSettings.h"

using namespace KivFisheyeLib;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kHalfPi = 1.57079637F;
constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};

/// The angles for a point of a frame whose edges the lens touches.
vcam::PanTilt Aim(MountType mount, float x, float y) {
    return CvtXYToVCamPanTilt(mount, 0.5F, 0.5F, x, y);
}

void ExpectAim(const vcam::PanTilt& actual, float pan, float tilt) {
    EXPECT_NEAR(actual.pan, pan, 1e-4F);
    EXPECT_NEAR(actual.tilt, tilt, 1e-4F);
}

TEST(PointAroundAnAxis, TheCentreHasPan90AndNoTilt) {
    for (const float radius : {0.5F, 0.25F, 0.125F, 1.0F}) {
        for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
            const vcam::PanTilt aim = CvtXYToVCamPanTilt(mount, radius, radius, 0.5F, 0.5F);
            EXPECT_EQ(aim.pan, 90.0F);
            EXPECT_EQ(BitsOf(aim.tilt), BitsOf(0.0F)) << "also where -90 makes it -0 first";
        }
    }
}

TEST(PointAroundAnAxis, OnACeilingThePanRunsClockwiseFromTheTop) {
    EXPECT_EQ(Aim(MountTypeCeiling, 0.5F, 0.0F).pan, 0.0F);
    EXPECT_EQ(Aim(MountTypeCeiling, 0.5F, 0.0F).tilt, 90.0F);
    EXPECT_EQ(Aim(MountTypeCeiling, 1.0F, 0.5F).pan, 90.0F);
    EXPECT_EQ(Aim(MountTypeCeiling, 1.0F, 0.5F).tilt, 90.0F);
    ExpectAim(Aim(MountTypeCeiling, 0.5F, 1.0F), 180.0F, 90.0F);
    ExpectAim(Aim(MountTypeCeiling, 0.0F, 0.5F), 270.0F, 90.0F);
    ExpectAim(Aim(MountTypeCeiling, 0.75F, 0.25F), 45.0F, 63.639610F);
    ExpectAim(Aim(MountTypeCeiling, 0.5F, 0.25F), 0.0F, 45.0F);
}

TEST(PointAroundAnAxis, OnATableThePanRunsAnticlockwiseFromTheBottom) {
    EXPECT_EQ(Aim(MountTypeTable, 0.5F, 0.0F).pan, 180.0F);
    EXPECT_EQ(Aim(MountTypeTable, 0.5F, 0.0F).tilt, -90.0F);
    EXPECT_EQ(Aim(MountTypeTable, 1.0F, 0.5F).pan, 90.0F);
    EXPECT_EQ(Aim(MountTypeTable, 1.0F, 0.5F).tilt, -90.0F);
    ExpectAim(Aim(MountTypeTable, 0.5F, 1.0F), 0.0F, -90.0F);
    ExpectAim(Aim(MountTypeTable, 0.0F, 0.5F), 270.0F, -90.0F);
    ExpectAim(Aim(MountTypeTable, 0.75F, 0.75F), 45.0F, -63.639610F);
    ExpectAim(Aim(MountTypeTable, 0.25F, 0.75F), 315.0F, -63.639610F);
}

TEST(PointOnAWall, PanAndTiltRunEvenlyAcrossTheLens) {
    const struct {
        float x;
        float y;
        float pan;
        float tilt;
    } cases[] = {{0.5F, 0.5F, 0.0F, 0.0F},       {0.0F, 0.0F, -90.0F, 90.0F},
                 {1.0F, 1.0F, 90.0F, -90.0F},    {1.0F, 0.0F, 90.0F, 90.0F},
                 {0.25F, 0.75F, -45.0F, -45.0F}, {0.625F, 0.375F, 22.5F, 22.5F}};
    for (const auto& point : cases) {
        const vcam::PanTilt aim = Aim(MountTypeWall, point.x, point.y);
        EXPECT_EQ(aim.pan, point.pan) << point.x;
        EXPECT_EQ(aim.tilt, point.tilt) << point.y;
    }
}

TEST(PointOfALens, IsTakenInTheLensesOwnBox) {
    // The box runs from 0.25 to 0.75 across and from 0.375 to 0.625 down.
    const auto aim = [](MountType mount, float x, float y) {
        return CvtXYToVCamPanTilt(mount, 0.25F, 0.125F, x, y);
    };
    EXPECT_EQ(aim(MountTypeWall, 0.25F, 0.375F).pan, -90.0F);
    EXPECT_EQ(aim(MountTypeWall, 0.25F, 0.375F).tilt, 90.0F);
    EXPECT_EQ(aim(MountTypeWall, 0.75F, 0.625F).pan, 90.0F);
    EXPECT_EQ(aim(MountTypeWall, 0.75F, 0.625F).tilt, -90.0F);
    ExpectAim(aim(MountTypeCeiling, 0.75F, 0.5F), 90.0F, 90.0F);
    ExpectAim(aim(MountTypeCeiling, 0.5F, 0.375F), 0.0F, 90.0F);
    ExpectAim(aim(MountTypeTable, 0.5F, 0.4375F), 180.0F, -45.0F);
    // 45 degrees in the lens, though not in the frame.
    ExpectAim(aim(MountTypeCeiling, 0.625F, 0.4375F), 45.0F, 63.639610F);
}

TEST(PointOutsideTheLens, IsTiltedBeyond90) {
    ExpectAim(Aim(MountTypeCeiling, 1.0F, 0.0F), 45.0F, 127.27922F);
    ExpectAim(Aim(MountTypeTable, 1.0F, 1.0F), 45.0F, -127.27922F);
    ExpectAim(Aim(MountTypeWall, 2.0F, -1.0F), 270.0F, 270.0F);
    ExpectAim(Aim(MountTypeWall, -0.5F, 1.5F), -180.0F, -180.0F);
    ExpectAim(Aim(MountTypeCeiling, -0.5F, 0.5F), 270.0F, 180.0F);
}

TEST(LensWithoutARadius, GivesInfinityOrNan) {
    const auto aim = [](MountType mount, float x, float y) {
        return CvtXYToVCamPanTilt(mount, 0.0F, 0.0F, x, y);
    };
    EXPECT_EQ(aim(MountTypeWall, 0.75F, 0.75F).pan, kInfinity);
    EXPECT_EQ(aim(MountTypeWall, 0.75F, 0.75F).tilt, -kInfinity);
    EXPECT_TRUE(std::isnan(aim(MountTypeWall, 0.5F, 0.75F).pan));
    EXPECT_EQ(aim(MountTypeCeiling, 0.75F, 0.25F).pan, 45.0F) << "two infinities are diagonal";
    EXPECT_EQ(aim(MountTypeCeiling, 0.75F, 0.25F).tilt, kInfinity);
    EXPECT_EQ(aim(MountTypeTable, 0.75F, 0.75F).tilt, -kInfinity);
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        EXPECT_TRUE(std::isnan(aim(mount, 0.5F, 0.25F).pan));
        EXPECT_TRUE(std::isnan(aim(mount, 0.5F, 0.5F).tilt));
    }
}

TEST(PointOfNan, GivesNan) {
    EXPECT_TRUE(std::isnan(Aim(MountTypeWall, kNan, 0.5F).pan));
    EXPECT_EQ(Aim(MountTypeWall, kNan, 0.5F).tilt, 0.0F);
    EXPECT_TRUE(std::isnan(Aim(MountTypeCeiling, 0.5F, kNan).pan));
    EXPECT_TRUE(std::isnan(Aim(MountTypeTable, kNan, 0.5F).tilt));
}

TEST(UnknownMount, AimsAtTheAxisWithZoom1) {
    for (const std::uint32_t number : {3U, 7U, 0xFFFFFFFFU}) {
        const auto mount = static_cast<MountType>(number);
        const vcam::PanTilt aim = CvtXYToVCamPanTilt(mount, 0.5F, 0.5F, 0.25F, 0.125F);
        EXPECT_EQ(BitsOf(aim.pan), BitsOf(0.0F));
        EXPECT_EQ(BitsOf(aim.tilt), BitsOf(0.0F));
        const vcam::PanTiltZoom zoomed =
            CvtXYToVCamPanTiltZoom(mount, 0.5F, 0.5F, 0.25F, 0.125F, 0.5F);
        EXPECT_EQ(BitsOf(zoomed.angles.pan), BitsOf(0.0F));
        EXPECT_EQ(BitsOf(zoomed.angles.tilt), BitsOf(0.0F));
        EXPECT_EQ(zoomed.zoom, 1.0F);
    }
}

TEST(PointWithAView, HasTheZoomBesideTheSameAngles) {
    for (const MountType mount : kMounts) {
        for (const float radius : {0.5F, 0.25F}) {
            const vcam::PanTilt aim = CvtXYToVCamPanTilt(mount, radius, 0.5F, 0.375F, 0.8F);
            const auto zoomed = [&](float fieldOfView) {
                return CvtXYToVCamPanTiltZoom(mount, radius, 0.5F, 0.375F, 0.8F, fieldOfView);
            };
            EXPECT_EQ(BitsOf(zoomed(1.0F).angles.pan), BitsOf(aim.pan));
            EXPECT_EQ(BitsOf(zoomed(1.0F).angles.tilt), BitsOf(aim.tilt));
            EXPECT_EQ(zoomed(kHalfPi).zoom, 2.0F);
            EXPECT_EQ(zoomed(4.0F).zoom, 1.0F);
            EXPECT_EQ(zoomed(0.01F).zoom, 10.0F);
            EXPECT_EQ(BitsOf(zoomed(1.0F).zoom),
                      BitsOf(FisheyeVCamAlgoNS::CvtFieldOfViewToZoom(0.0F, 0.0F, 1.0F)));
        }
    }
}

/// The three mounts' angles in single precision, step by step.
vcam::PanTilt Expected(MountType mount, float radiusX, float radiusY, float x, float y) {
    const float left = 0.5F - radiusX;
    const float top = 0.5F - radiusY;
    const float across = (x - left) / (2.0F * radiusX);
    const float down = (y - top) / (2.0F * radiusY);
    if (mount == MountTypeWall) {
        return {across * 180.0F - 90.0F, 90.0F - down * 180.0F};
    }
    const float right = across - 0.5F;
    const float up = 0.5F - down;
    float degrees = std::atan2(up, right) * FloatOf(0x42652EE1);
    degrees = mount == MountTypeCeiling ? -degrees : degrees;
    const float fromStart = degrees + 90.0F;
    const float distance = std::sqrt(right * right + up * up) * 2.0F;
    const float tilt = distance * (mount == MountTypeCeiling ? 90.0F : -90.0F);
    return {std::fmod(fromStart + 360.0F, 360.0F), tilt == 0.0F ? 0.0F : tilt};
}

TEST(PointOfALens, HasTheAnglesOfPlainSinglePrecisionArithmetic) {
    for (const MountType mount : kMounts) {
        for (int step = 0; step < 10000; ++step) {
            const float x = static_cast<float>(step % 101) * 0.0123F - 0.1F;
            const float y = static_cast<float>(step % 97) * 0.0131F - 0.1F;
            const float radiusX = 0.1F + static_cast<float>(step % 13) * 0.07F;
            const float radiusY = 0.1F + static_cast<float>(step % 11) * 0.08F;
            const vcam::PanTilt actual = CvtXYToVCamPanTilt(mount, radiusX, radiusY, x, y);
            const vcam::PanTilt expected = Expected(mount, radiusX, radiusY, x, y);
            ASSERT_EQ(BitsOf(actual.pan), BitsOf(expected.pan)) << x << ", " << y;
            ASSERT_EQ(BitsOf(actual.tilt), BitsOf(expected.tilt)) << x << ", " << y;
        }
    }
}

TEST(PointAtTheRim, CannotBeCentred) {
    const vcam::PanTilt aim = Aim(MountTypeCeiling, 1.0F, 0.5F);
    const VCamSettings settings = CeilingSettings(aim.pan, aim.tilt, 2.0F);
    EXPECT_EQ(settings.pan, 90.0F);
    EXPECT_EQ(settings.tilt, 45.0F);
    EXPECT_EQ(TableSettings(90.0F, Aim(MountTypeTable, 1.0F, 0.5F).tilt, 10.0F).tilt, -85.0F);
}

constexpr DewarpParams kLens{0.25F, 0.375F, 30.0F, 0.5F};

TEST(CameraPoint, FollowsTheMountAndTheLens) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable, MountTypeWall}) {
        CKivFisheyeCamera camera;
        camera.SetMountAndViewType(mount, ViewTypeFullPanorama);
        for (const DewarpParams& lens : {DewarpParams{0.5F, 0.5F, 45.0F, 0.0F}, kLens}) {
            ASSERT_EQ(camera.SetDewarpParams(lens), kResultOk);
            const vcam::PanTilt expected =
                Expected(mount, lens.radiusX, lens.radiusY, 0.4F, 0.625F);
            float pan = 77.0F;
            float tilt = 77.0F;
            float zoom = 77.0F;
            EXPECT_EQ(camera.CvtXYToVCamPanTilt(0.4F, 0.625F, pan, tilt), kResultOk);
            EXPECT_EQ(pan, expected.pan);
            EXPECT_EQ(tilt, expected.tilt);
            pan = tilt = 77.0F;
            EXPECT_EQ(camera.CvtXYToVCamPanTiltZoom(0.4F, 0.625F, kHalfPi, pan, tilt, zoom),
                      kResultOk);
            EXPECT_EQ(pan, expected.pan);
            EXPECT_EQ(tilt, expected.tilt);
            EXPECT_EQ(zoom, 2.0F);
        }
    }
}

TEST(CameraPoint, IsAnsweredWithoutASceneAndChangesNothing) {
    CKivFisheyeCamera camera;
    camera.m_pan = 10.0F;
    camera.m_tilt = 20.0F;
    camera.m_zoom = 3.0F;
    camera.SetMountType(static_cast<MountType>(7));
    float pan = 77.0F;
    float tilt = 77.0F;
    float zoom = 77.0F;
    EXPECT_EQ(camera.CvtXYToVCamPanTilt(0.25F, 0.25F, pan, tilt), kResultOk);
    EXPECT_EQ(camera.CvtXYToVCamPanTiltZoom(0.25F, 0.25F, 0.5F, pan, tilt, zoom), kResultOk);
    EXPECT_EQ(pan, 0.0F);
    EXPECT_EQ(tilt, 0.0F);
    EXPECT_EQ(zoom, 1.0F);
    EXPECT_EQ(camera.m_pan, 10.0F);
    EXPECT_EQ(camera.m_tilt, 20.0F);
    EXPECT_EQ(camera.m_zoom, 3.0F);
    EXPECT_EQ(camera.m_vcamFieldOfView, 90.0F);
}

}  // namespace

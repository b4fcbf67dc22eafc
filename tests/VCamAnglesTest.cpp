#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "KivFisheyeCamera.h"
#include "support/PanoramaCamera.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

struct Ptz {
    float pan;
    float tilt;
    float zoom;
};

/// A new camera on this mount, in the virtual camera's view and without frames.
struct AngledCamera {
    explicit AngledCamera(MountType mount) {
        EXPECT_EQ(camera.SetMountAndViewType(mount, ViewTypeVCam), kResultOk);
    }

    void Set(float pan, float tilt, float zoom) {
        EXPECT_EQ(camera.SetAbsolutePTZ(pan, tilt, zoom), kResultOk);
    }
    void Add(float pan, float tilt, float zoom) {
        EXPECT_EQ(camera.SetRelativePTZ(pan, tilt, zoom), kResultOk);
    }

    void ExpectAngles(const Ptz& expected) {
        Ptz actual{-1.0F, -1.0F, -1.0F};
        EXPECT_EQ(camera.GetPTZ(&actual.pan, &actual.tilt, &actual.zoom), kResultOk);
        EXPECT_EQ(actual.pan, expected.pan);
        EXPECT_EQ(actual.tilt, expected.tilt);
        EXPECT_EQ(actual.zoom, expected.zoom);
    }

    void ExpectView(float eyeZ, float nearPlane, float farPlane, float fieldOfView) {
        EXPECT_EQ(camera.m_vcamEyeZ, eyeZ);
        EXPECT_EQ(camera.m_vcamNear, nearPlane);
        EXPECT_EQ(camera.m_vcamFar, farPlane);
        EXPECT_EQ(camera.m_vcamFieldOfView, fieldOfView);
        EXPECT_EQ(camera.m_vcamEyeX, 0.0F);
        EXPECT_EQ(camera.m_vcamEyeY, 0.0F);
    }

    CKivFisheyeCamera camera;
};

TEST(VCamAngles, AreLimitedAsTheMountLimitsThem) {
    AngledCamera wall(MountTypeWall);
    wall.Set(-100.0F, 80.0F, 3.0F);
    wall.ExpectAngles({-50.0F, 50.0F, 3.0F});
    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(-100.0F, 80.0F, 3.0F);
    ceiling.ExpectAngles({260.0F, 50.0F, 3.0F});
    AngledCamera table(MountTypeTable);
    table.Set(-100.0F, 80.0F, 3.0F);
    table.ExpectAngles({260.0F, 0.0F, 3.0F});
    table.Set(-100.0F, -80.0F, 3.0F);
    table.ExpectAngles({260.0F, -50.0F, 3.0F});
}

TEST(VCamAngles, BringTheirViewWithThem) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        AngledCamera camera(mount);
        camera.ExpectView(1.0F, 1.0F, 4.0F, 90.0F);
        camera.Set(0.0F, 0.0F, 5.0F);
        camera.ExpectView(0.01F, 0.01F, 3.01F, 60.0F);
        camera.Add(0.0F, 0.0F, 12.0F);
        camera.ExpectView(0.01F, 0.01F, 3.01F, 10.0F);
        camera.Set(0.0F, 0.0F, 1.0F);
        camera.ExpectView(1.0F, 1.0F, 4.0F, 90.0F);
        camera.Set(0.0F, 0.0F, 1.25F);
        const float eyeZ = 0.25F * -0.99F + 1.0F;
        camera.ExpectView(eyeZ, eyeZ, eyeZ + 3.0F, 90.0F);
    }
}

TEST(VCamAngles, AZoomBelow1KeepsTheZoomWhenItIsSet) {
    for (const float zoom : {0.0F, 0.99F, -3.0F}) {
        AngledCamera camera(MountTypeCeiling);
        camera.Set(10.0F, 20.0F, 4.0F);
        camera.Set(30.0F, 40.0F, zoom);
        camera.ExpectAngles({30.0F, 40.0F, 4.0F});
        camera.ExpectView(0.01F, 0.01F, 3.01F, 70.0F);
    }
}

TEST(VCamAngles, AZoomBelow1Becomes1WhenItIsReached) {
    AngledCamera camera(MountTypeCeiling);
    camera.Set(10.0F, 20.0F, 4.0F);
    camera.Add(0.0F, 0.0F, -3.5F);
    camera.ExpectAngles({10.0F, 0.0F, 1.0F});
    camera.ExpectView(1.0F, 1.0F, 4.0F, 90.0F);
}

TEST(VCamAngles, DifferencesAreAddedToWhatIsStored) {
    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(350.0F, 20.0F, 3.0F);
    ceiling.Add(20.0F, 5.0F, 1.5F);
    ceiling.ExpectAngles({10.0F, 25.0F, 4.5F});
    ceiling.Add(-30.0F, -50.0F, 0.0F);
    ceiling.ExpectAngles({340.0F, 0.0F, 4.5F});
    AngledCamera wall(MountTypeWall);
    wall.Set(40.0F, -40.0F, 3.0F);
    wall.Add(20.0F, -20.0F, 0.0F);
    wall.ExpectAngles({50.0F, -50.0F, 3.0F});
    wall.Add(-10.0F, 10.0F, 0.0F);
    wall.ExpectAngles({40.0F, -40.0F, 3.0F});
}

TEST(VCamAngles, GlideTowardsTheAxisOnlyWhileADifferenceZoomsOut) {
    AngledCamera wall(MountTypeWall);
    wall.Set(40.0F, -20.0F, 4.0F);
    wall.Add(0.0F, 0.0F, -1.0F);
    wall.ExpectAngles({36.0F, -18.0F, 3.0F});
    wall.Set(40.0F, -20.0F, 4.0F);
    wall.Set(40.0F, -20.0F, 3.0F);
    wall.ExpectAngles({40.0F, -20.0F, 3.0F});
    wall.Add(0.0F, 0.0F, 1.0F);
    wall.ExpectAngles({40.0F, -20.0F, 4.0F});
    wall.Add(-10.0F, 10.0F, -0.0F);
    wall.ExpectAngles({30.0F, -10.0F, 4.0F});

    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(40.0F, 20.0F, 4.0F);
    ceiling.Add(0.0F, 0.0F, -1.0F);
    ceiling.ExpectAngles({40.0F, 18.0F, 3.0F});
    AngledCamera table(MountTypeTable);
    table.Set(40.0F, -20.0F, 4.0F);
    table.Add(0.0F, 0.0F, -1.0F);
    table.ExpectAngles({40.0F, -18.0F, 3.0F});
}

TEST(VCamAngles, ThreeZeroDifferencesChangeNothing) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        AngledCamera camera(mount);
        camera.camera.m_pan = 400.0F;
        camera.camera.m_tilt = -200.0F;
        camera.camera.m_zoom = 30.0F;
        EXPECT_EQ(camera.camera.SetRelativePTZ(0.0F, -0.0F, 0.0F), kResultNoChange);
        camera.ExpectAngles({400.0F, -200.0F, 30.0F});
        camera.ExpectView(1.0F, 1.0F, 4.0F, 90.0F);
    }
}

TEST(VCamAngles, ANanIsTakenByItselfAlone) {
    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(10.0F, 20.0F, 4.0F);
    ceiling.Set(10.0F, 20.0F, std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(std::isnan(ceiling.camera.m_zoom)) << "it is not below 1";
    EXPECT_EQ(ceiling.camera.m_tilt, 20.0F);
    EXPECT_EQ(ceiling.camera.m_vcamEyeZ, 0.01F);
    ceiling.Set(30.0F, 5.0F, 0.5F);
    EXPECT_TRUE(std::isnan(ceiling.camera.m_zoom)) << "kept";
    ceiling.Set(30.0F, 5.0F, 2.0F);
    ceiling.ExpectAngles({30.0F, 5.0F, 2.0F});
}

TEST(VCamAngles, SurviveAnotherMountUntilTheNextCall) {
    VCamCamera<VCam<MountTypeWall, PixelFormatRGB32>> wall;
    ASSERT_EQ(wall.camera.SetAbsolutePTZ(-50.0F, -30.0F, 4.0F), kResultOk);
    ASSERT_EQ(wall.camera.SetMountType(MountTypeCeiling), kResultOk);
    EXPECT_EQ(wall.camera.m_pan, -50.0F) << "outside a ceiling's range";
    EXPECT_EQ(wall.camera.m_tilt, -30.0F);
    EXPECT_EQ(wall.camera.m_zoom, 4.0F);
    EXPECT_EQ(wall.camera.m_vcamFieldOfView, 70.0F);
    using Ceiling = VCam<MountTypeCeiling, PixelFormatRGB32>;
    EXPECT_EQ(wall.output.bytes, Ceiling::Picture(wall.input, 40, 22, kTouchingLens,
                                                  {0.01F, 70.0F, 0.01F, 410.0F, -30.0F})
                                     .bytes);
    ASSERT_EQ(wall.camera.SetRelativePTZ(0.0F, 0.0F, 1.0F), kResultOk);
    EXPECT_EQ(wall.camera.m_pan, 310.0F);
    EXPECT_EQ(wall.camera.m_tilt, 0.0F);
    EXPECT_EQ(wall.camera.m_zoom, 5.0F);
}

TEST(VCamAngles, SurviveAPanoramaWhichChangesThePanAlone) {
    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(45.0F, 30.0F, 4.0F);
    ASSERT_EQ(ceiling.camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    ceiling.ExpectAngles({45.0F, 30.0F, 4.0F});
    ceiling.Set(100.0F, 5.0F, 9.0F);
    ceiling.ExpectAngles({100.0F, 30.0F, 4.0F});
    ASSERT_EQ(ceiling.camera.SetViewType(ViewTypeVCam), kResultOk);
    ceiling.ExpectAngles({100.0F, 30.0F, 4.0F});
    ceiling.ExpectView(0.01F, 0.01F, 3.01F, 70.0F);
}

TEST(VCamAngles, SurviveAViewWithoutAScene) {
    AngledCamera ceiling(MountTypeCeiling);
    ceiling.Set(45.0F, 30.0F, 4.0F);
    ASSERT_EQ(ceiling.camera.SetViewType(static_cast<ViewType>(3)), kResultOk);
    EXPECT_EQ(ceiling.camera.m_scene, nullptr);
    EXPECT_EQ(ceiling.camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F), kResultNotReady);
    EXPECT_EQ(ceiling.camera.SetRelativePTZ(1.0F, 2.0F, 3.0F), kResultNotReady);
    ASSERT_EQ(ceiling.camera.SetMountAndViewType(MountTypeCeiling, ViewTypeVCam), kResultOk);
    ceiling.ExpectAngles({45.0F, 30.0F, 4.0F});
}

template <class Panorama>
class PanoramaAfterAVCam : public testing::Test, public PanoramaCamera<Panorama> {};

TYPED_TEST_SUITE(PanoramaAfterAVCam, FullPanoramas);

TYPED_TEST(PanoramaAfterAVCam, IsTurnedByItsPanAtOnce) {
    const ClientFrame unturned = this->Expected();
    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    ASSERT_EQ(this->camera.SetAbsolutePTZ(45.0F, 0.0F, 3.0F), kResultOk);
    this->output.Fill(this->kUntouched);
    ASSERT_EQ(this->camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    EXPECT_EQ(this->output.bytes, TurnedLeft(unturned, this->kBytesPerPixel, 8));
    EXPECT_EQ(this->camera.m_pan, 45.0F);
}

}  // namespace

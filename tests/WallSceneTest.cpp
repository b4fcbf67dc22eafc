#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/FailingAllocations.h"
#include "support/SetterScenario.h"
#include "support/WallModel.h"

// A wall's full panorama through the camera.

using namespace KivFisheyeLib;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class Panorama>
class WallScene : public testing::Test, public PanoramaCamera<Panorama> {
protected:
    /// The picture by the plain loop, with the row padding as it was.
    std::vector<unsigned char> LoopPicture(const DewarpParams& lens) const {
        Wall wall = PackedWall(61, 47, 64, 9, this->kBytesPerPixel);
        wall.srcStride = this->input.Stride();
        wall.dstStride = this->output.Stride();
        wall.radiusX = lens.radiusX;
        wall.radiusY = lens.radiusY;
        wall.wallViewAngle = lens.wallViewAngle;
        std::vector<unsigned char> frame(wall.OutputBytes(), this->kUntouched);
        Paint(TableOffsets(wall, this->kBytesPerPixel), wall, this->kBytesPerPixel, RowStart::Kept,
              this->input.bytes, frame);
        return frame;
    }

    bool ShowsTheWall() { return this->Shows(LoopPicture(kUnevenLens)); }
};

TYPED_TEST_SUITE(WallScene, WallPanoramas);

TYPED_TEST(WallScene, ShowsThePictureOfTheTable) {
    EXPECT_TRUE(this->ShowsTheWall());
    EXPECT_EQ(this->LoopPicture(kUnevenLens), this->Expected().bytes);
}

TYPED_TEST(WallScene, IsMadeForWallAndFullPanoramaAlone) {
    EXPECT_NE(dynamic_cast<typename TypeParam::Scene*>(this->camera.m_scene.get()), nullptr);
    this->camera.m_viewType = ViewTypeDualPanorama;
    EXPECT_EQ(SceneNS::CreateScene(&this->camera, nullptr), nullptr);
}

TYPED_TEST(WallScene, ADualPanoramaIsRefusedAndThePanoramaStays) {
    EXPECT_EQ(this->camera.SetViewType(ViewTypeDualPanorama), kResultInvalidArgument);
    EXPECT_EQ(this->camera.SetMountAndViewType(MountTypeWall, ViewTypeDualPanorama),
              kResultInvalidArgument);
    EXPECT_EQ(this->camera.m_viewType, ViewTypeFullPanorama);
    EXPECT_TRUE(this->ShowsTheWall());
}

TYPED_TEST(WallScene, AnyAbsoluteAnglesStorePan0) {
    this->camera.m_tilt = 20.0F;
    this->camera.m_zoom = 3.0F;
    for (const float pan : {0.0F, 45.0F, -90.0F, 360.0F, 1e9F, kNan, kInfinity}) {
        this->camera.m_pan = 123.0F;
        EXPECT_EQ(this->camera.SetAbsolutePTZ(pan, 70.0F, 9.0F), kResultOk);
        EXPECT_EQ(this->camera.m_pan, 0.0F) << pan;
        EXPECT_FALSE(std::signbit(this->camera.m_pan));
        EXPECT_EQ(this->camera.m_tilt, 20.0F) << "kept";
        EXPECT_EQ(this->camera.m_zoom, 3.0F) << "kept";
        EXPECT_TRUE(this->ShowsTheWall()) << pan;
    }
}

TYPED_TEST(WallScene, ThreeZeroDeltasChangeNothingAndOthersStorePan0) {
    this->camera.m_pan = 123.0F;
    EXPECT_EQ(this->camera.SetRelativePTZ(0.0F, 0.0F, 0.0F), kResultNoChange);
    EXPECT_EQ(this->camera.m_pan, 123.0F);
    for (int delta = 0; delta < 3; ++delta) {
        this->camera.m_pan = 123.0F;
        EXPECT_EQ(this->camera.SetRelativePTZ(delta == 0 ? 1.0F : 0.0F, delta == 1 ? 1.0F : 0.0F,
                                              delta == 2 ? -1.0F : 0.0F),
                  kResultOk);
        EXPECT_EQ(this->camera.m_pan, 0.0F);
    }
    this->camera.m_pan = 123.0F;
    EXPECT_EQ(this->camera.SetRelativePTZ(kNan, 0.0F, 0.0F), kResultOk) << "NaN is not 0";
    EXPECT_EQ(this->camera.m_pan, 0.0F);
    EXPECT_TRUE(this->ShowsTheWall());
}

TYPED_TEST(WallScene, DoesNotTurnByThePanThatTheCameraHas) {
    for (const float pan : {45.0F, -90.0F, 359.0F, kNan}) {
        this->camera.m_pan = pan;
        EXPECT_TRUE(this->ShowsTheWall()) << pan;
    }
}

TYPED_TEST(WallScene, APanFromAVirtualCameraIsKeptAndDoesNotTurnIt) {
    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    ASSERT_EQ(this->camera.SetAbsolutePTZ(15.0F, 0.0F, 8.0F), kResultOk);
    ASSERT_EQ(this->camera.m_pan, 15.0F);
    this->output.Fill(this->kUntouched);
    ASSERT_EQ(this->camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    EXPECT_EQ(this->output.bytes, this->LoopPicture(kUnevenLens)) << "at once";
    EXPECT_EQ(this->camera.m_pan, 15.0F);
}

TYPED_TEST(WallScene, EveryLensValueButTheRingsShowsWithTheNextFrame) {
    DewarpParams lens = kUnevenLens;
    std::vector<unsigned char> earlier = this->LoopPicture(lens);
    const std::pair<float DewarpParams::*, float> changes[] = {
        {&DewarpParams::wallViewAngle, 70.0F},
        {&DewarpParams::radiusX, 0.25F},
        {&DewarpParams::radiusY, 0.45F}};
    for (const auto& [field, value] : changes) {
        lens.*field = value;
        ASSERT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
        const auto picture = this->LoopPicture(lens);
        EXPECT_NE(picture, earlier);
        EXPECT_TRUE(this->Shows(picture)) << value;
        earlier = picture;
    }
    lens.innerRadiusRatio = 0.75F;
    ASSERT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
    EXPECT_TRUE(this->Shows(earlier));
}

TYPED_TEST(WallScene, FollowsFramesOfOtherSizes) {
    SetterScenario<TypeParam> wall;
    EXPECT_EQ(wall.Input().call(), kResultOk);
    EXPECT_TRUE(wall.ShowsTheRightPicture());
    EXPECT_EQ(wall.Output().call(), kResultOk);
    EXPECT_TRUE(wall.ShowsTheRightPicture());
}

TYPED_TEST(WallScene, ServesATargetOfItsOwn) {
    ClientFrame target(24, 6, TypeParam::kFormat, this->kUntouched);
    ASSERT_EQ(SceneNS::CreateScene(&this->camera, &target.record)->Process(7), kResultOk);
    EXPECT_EQ(target.bytes, ExpectedPicture<TypeParam>(this->input, target, kUnevenLens).bytes);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TYPED_TEST(WallScene, IsNotReadyWithoutBothBuffers) {
    CKivFisheyeCamera inputOnly;
    ASSERT_EQ(inputOnly.SetMountAndViewType(MountTypeWall, ViewTypeFullPanorama), kResultOk);
    EXPECT_EQ(inputOnly.m_scene->Process(0), kResultNotReady) << "both are missing";
    EXPECT_EQ(inputOnly.Process(0), kResultNullPointer) << "the camera looks first";
    ASSERT_EQ(inputOnly.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    EXPECT_EQ(inputOnly.m_scene->Process(0), kResultNotReady) << "the output is missing";

    CKivFisheyeCamera outputOnly;
    ASSERT_EQ(outputOnly.SetMountAndViewType(MountTypeWall, ViewTypeFullPanorama), kResultOk);
    ClientFrame frame(8, 4, PixelFormatRGB32, this->kUntouched);
    ASSERT_EQ(outputOnly.SetOutputVideoParams(frame.record), kResultOk);
    EXPECT_EQ(outputOnly.m_scene->Process(0), kResultNotReady) << "the input is missing";
    EXPECT_TRUE(frame.IsFilledWith(this->kUntouched));
}

// The output's record keeps the old pixels' stride until the client sets it anew.
TEST(WallSceneOfANewFormat, StaysInAnOutputThatWasDescribedForSmallerPixels) {
    PanoramaCamera<WallPanorama<PixelFormatRGB24>> wall;
    const ClientFrame wide = ClientFrame::OfCoordinates(61, 47, PixelFormatRGB32);
    ASSERT_EQ(wall.camera.SetInputVideoParams(wide.record, PixelFormatRGB32), kResultOk);
    Wall frames = PackedWall(61, 47, 64, 9, 4);
    frames.dstStride = wall.output.Stride();
    frames.radiusX = kUnevenLens.radiusX;
    frames.radiusY = kUnevenLens.radiusY;
    frames.wallViewAngle = kUnevenLens.wallViewAngle;
    std::vector<unsigned char> expected(frames.OutputBytes(), wall.kUntouched);
    Paint(TableOffsets(frames, 4), frames, 4, RowStart::Kept, wide.bytes, expected);
    EXPECT_TRUE(wall.Shows(expected));
}

TYPED_TEST(WallScene, BuildsItsTableWithEveryRecordAndEveryOtherLens) {
    const auto takesMemory = [](const auto& call) {
        const AllocationWatch watch;
        EXPECT_EQ(call(), kResultOk);
        return watch.Requests() != 0;
    };
    CKivFisheyeCamera& wall = this->camera;
    EXPECT_TRUE(takesMemory(
        [&] { return wall.SetInputVideoParams(this->input.record, TypeParam::kFormat); }));
    EXPECT_TRUE(takesMemory([&] { return wall.SetOutputVideoParams(this->output.record); }));
    EXPECT_TRUE(takesMemory([&] { return wall.SetDewarpParams({0.5F, 0.5F, 45.0F, 0.0F}); }));
    EXPECT_FALSE(takesMemory([&] { return wall.SetDewarpParams({0.5F, 0.5F, 45.0F, 0.0F}); }));
    EXPECT_FALSE(takesMemory([&] { return wall.SetAbsolutePTZ(45.0F, 0.0F, 0.0F); }));
    EXPECT_FALSE(takesMemory([&] { return wall.Process(0); }));
}

}  // namespace

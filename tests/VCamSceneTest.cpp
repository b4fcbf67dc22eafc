#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

template <class V>
class VCamScene : public testing::Test, public VCamCamera<V> {
protected:
    /// 70 degrees high, 30 and 20 degrees off.
    static constexpr View kAside{0.01F, 70.0F, 0.01F, 30.0F, V::kTiltSign * 20.0F};

    void LookAside() {
        EXPECT_EQ(this->camera.SetAbsolutePTZ(kAside.pan, kAside.tilt, 4.0F), kResultOk);
    }
};

TYPED_TEST_SUITE(VCamScene, VCams);

TYPED_TEST(VCamScene, ShowsWhatTheMountsConversionMakesOfTheView) {
    const float tilt = TypeParam::kTiltSign * 20.0F;
    const float widePan = TypeParam::kMountType == MountTypeWall ? 0.0F : 30.0F;
    const struct {
        float zoom;
        View view;
    } cases[] = {{1.0F, {1.0F, 90.0F, 1.0F, widePan, 0.0F}},
                 {1.5F, {0.505F, 90.0F, 0.505F, widePan, 0.0F}},
                 {2.0F, {0.01F, 90.0F, 0.01F, 30.0F, tilt}},
                 {4.0F, {0.01F, 70.0F, 0.01F, 30.0F, tilt}},
                 {10.0F, {0.01F, 10.0F, 0.01F, 30.0F, tilt}}};
    std::vector<unsigned char> previous;
    for (const auto& shown : cases) {
        ASSERT_EQ(this->camera.SetAbsolutePTZ(30.0F, tilt, shown.zoom), kResultOk);
        EXPECT_TRUE(this->Shows(this->Expected(shown.view))) << "zoom " << shown.zoom;
        EXPECT_NE(this->output.bytes, previous) << "zoom " << shown.zoom;
        previous = this->output.bytes;
    }
}

TYPED_TEST(VCamScene, ThePanReachesTheConversionReversedOnACeilingAlone) {
    this->LookAside();
    View other = this->kAside;
    other.pan = 360.0F - other.pan;
    const auto reversed = this->Expected(other);
    EXPECT_TRUE(this->Shows(this->Expected(this->kAside)));
    EXPECT_NE(this->output.bytes, reversed) << "the other direction would show";
}

TYPED_TEST(VCamScene, FollowsTheStoredValuesAndNotTheFarPlane) {
    std::vector<unsigned char> previous;
    // The near plane cancels out of the rays unless it is 0 or not finite.
    for (const View& view :
         {View{0.3F, 55.0F, 0.2F, 77.0F, -33.0F}, View{0.3F, 55.0F, 0.0F, 77.0F, -33.0F},
          View{0.9F, 20.0F, 0.9F, -17.0F, 13.0F}}) {
        this->camera.m_vcamEyeZ = view.eyeZ;
        this->camera.m_vcamFieldOfView = view.fieldOfView;
        this->camera.m_vcamNear = view.nearPlane;
        this->camera.m_pan = view.pan;
        this->camera.m_tilt = view.tilt;
        EXPECT_TRUE(this->Shows(this->Expected(view))) << "as they stand, in their range or not";
        EXPECT_NE(this->output.bytes, previous);
        previous = this->output.bytes;
    }
    for (float* const unused : {&this->camera.m_vcamFar, &this->camera.m_zoom,
                                &this->camera.m_vcamEyeX, &this->camera.m_vcamEyeY}) {
        *unused = std::numeric_limits<float>::quiet_NaN();
    }
    EXPECT_TRUE(this->Shows(previous));
}

TYPED_TEST(VCamScene, TheViewIsAsWideAsTheTargetAsks) {
    this->LookAside();
    for (const std::uint32_t width : {8U, 16U, 64U, 128U}) {
        for (const std::uint32_t height : {1U, 9U, 64U}) {
            ClientFrame frame(width, height, TypeParam::kFormat, this->kUntouched);
            ASSERT_EQ(this->camera.SetOutputVideoParams(frame.record), kResultOk);
            ASSERT_EQ(this->camera.Process(0), kResultOk);
            View view = this->kAside;
            view.pan = TypeParam::PanOf(view.pan);
            EXPECT_EQ(frame.bytes,
                      TypeParam::Picture(this->input, width, height, kTouchingLens, view).bytes)
                << width << " by " << height;
        }
    }
}

TYPED_TEST(VCamScene, AnotherLensShowsWithTheNextFrameAndTakesNoMemory) {
    this->LookAside();
    const auto before = this->Expected(this->kAside);
    EXPECT_TRUE(this->Shows(before));
    for (const DewarpParams& lens : {kSmallLens, DewarpParams{0.25F, 0.375F, 30.0F, 0.25F}}) {
        this->output.Fill(this->kUntouched);
        {
            const AllocationWatch watch;
            EXPECT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
            EXPECT_EQ(watch.Requests(), 0);
        }
        EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched)) << "nothing is converted";
        const auto expected = this->Expected(this->kAside);
        EXPECT_NE(expected, before);
        EXPECT_TRUE(this->Shows(expected));
    }
}

TYPED_TEST(VCamScene, TheWallsAngleAndTheInnerRadiusDoNotShow) {
    this->LookAside();
    const auto before = this->Expected(this->kAside);
    ASSERT_EQ(this->camera.SetDewarpParams({0.5F, 0.5F, 80.0F, 0.75F}), kResultOk);
    EXPECT_TRUE(this->Shows(before));
}

TYPED_TEST(VCamScene, AppearsAtOnceWhenMountOrViewChange) {
    const auto expected = this->Expected(kWholeLens);
    CKivFisheyeCamera& vcam = this->camera;
    ASSERT_EQ(vcam.SetMountAndViewType(TypeParam::kMountType, ViewTypeVCam), kResultOk);
    EXPECT_EQ(this->output.bytes, expected) << "set again";
    ASSERT_EQ(vcam.SetMountType(TypeParam::kOtherMountType), kResultOk);
    this->output.Fill(this->kUntouched);
    ASSERT_EQ(vcam.SetMountType(TypeParam::kMountType), kResultOk);
    EXPECT_EQ(this->output.bytes, expected) << "another mount";
    ASSERT_EQ(vcam.SetViewType(ViewTypeFullPanorama), kResultOk);
    this->output.Fill(this->kUntouched);
    ASSERT_EQ(vcam.SetViewType(ViewTypeVCam), kResultOk);
    EXPECT_EQ(this->output.bytes, expected) << "another view";
}

TYPED_TEST(VCamScene, WaitsForProcessAfterEveryOtherSetterAndTakesNoMemory) {
    CKivFisheyeCamera& vcam = this->camera;
    const AllocationWatch watch;
    EXPECT_EQ(vcam.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    EXPECT_EQ(vcam.SetOutputVideoParams(this->output.record), kResultOk);
    EXPECT_EQ(vcam.SetAbsolutePTZ(90.0F, 5.0F, 3.0F), kResultOk);
    EXPECT_EQ(vcam.SetRelativePTZ(90.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(vcam.SetMountType(TypeParam::kMountType), kResultNoChange);
    EXPECT_EQ(vcam.SetViewType(ViewTypeVCam), kResultNoChange);
    EXPECT_EQ(watch.Requests(), 0);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TYPED_TEST(VCamScene, ReadsTheInputAnewForEveryFrame) {
    this->LookAside();
    ASSERT_EQ(this->camera.Process(0), kResultOk);
    this->input.Fill(0x11);
    EXPECT_TRUE(this->Shows(this->Expected(this->kAside)));
    EXPECT_EQ(this->output.bytes[0], 0x11);
}

TYPED_TEST(VCamScene, FollowsAnInputOfAnotherSize) {
    this->LookAside();
    const ClientFrame tall = ClientFrame::OfCoordinates(30, 85, TypeParam::kFormat);
    ASSERT_EQ(this->camera.SetInputVideoParams(tall.record, TypeParam::kFormat), kResultOk);
    View view = this->kAside;
    view.pan = TypeParam::PanOf(view.pan);
    EXPECT_TRUE(this->Shows(TypeParam::Picture(tall, 40, 22, kTouchingLens, view).bytes));
}

TYPED_TEST(VCamScene, GoesToTheTargetThatTheSceneWasMadeFor) {
    ClientFrame frame(16, 5, TypeParam::kFormat, this->kUntouched);
    const auto scene = SceneNS::CreateScene(&this->camera, &frame.record);
    ASSERT_EQ(scene->Process(0), kResultOk);
    View view = kWholeLens;
    view.pan = TypeParam::PanOf(0.0F);
    EXPECT_EQ(frame.bytes, TypeParam::Picture(this->input, 16, 5, kTouchingLens, view).bytes);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TEST(CeilingVCam, WithoutAPanConvertsAt360) {
    // The sine of 360 degrees is some -1.7e-7, so far from the axis of a large frame a few of the
    // pixels are others than at 0.
    using Ceiling = VCam<MountTypeCeiling, PixelFormatRGB32>;
    const ClientFrame input = ClientFrame::OfCoordinates(2048, 2048, PixelFormatRGB32);
    ClientFrame output(256, 256, PixelFormatRGB32);
    CKivFisheyeCamera camera;
    camera.SetMountType(MountTypeCeiling);
    camera.SetInputVideoParams(input.record, PixelFormatRGB32);
    camera.SetOutputVideoParams(output.record);
    ASSERT_EQ(camera.Process(0), kResultOk);
    const auto picture = [&](float pan) {
        return Ceiling::Picture(input, 256, 256, kTouchingLens, {1.0F, 90.0F, 1.0F, pan, 0.0F});
    };
    EXPECT_EQ(output.bytes, picture(360.0F).bytes);
    EXPECT_NE(output.bytes, picture(0.0F).bytes);
    EXPECT_EQ(camera.m_pan, 0.0F) << "and the camera keeps its 0";
}

/// A camera whose output was set for one pixel format and whose input then brought another: each
/// row is cleared and drawn in its turn, and so takes back what the row before drew beyond its end.
template <class Old, class New>
void ExpectOldStrideIsKept() {
    const ClientFrame oldInput = ClientFrame::OfCoordinates(61, 47, Old::kFormat);
    const ClientFrame newInput = ClientFrame::OfCoordinates(61, 47, New::kFormat);
    VideoFrameInfo record = ClientFrame(40, 22, Old::kFormat).record;
    GuardedBuffer buffer(std::size_t{record.stride} * record.height,
                         GuardedBuffer::Side::EndsAtGuard, 0xCD);
    record.buffer = buffer.data();
    CKivFisheyeCamera camera;
    ASSERT_EQ(camera.SetMountAndViewType(New::kMountType, ViewTypeVCam), kResultOk);
    ASSERT_EQ(camera.SetInputVideoParams(oldInput.record, Old::kFormat), kResultOk);
    ASSERT_EQ(camera.SetOutputVideoParams(record), kResultOk);
    ASSERT_EQ(camera.SetInputVideoParams(newInput.record, New::kFormat), kResultOk);
    ASSERT_EQ(camera.SetAbsolutePTZ(0.0F, 0.0F, 4.0F), kResultOk);
    ASSERT_EQ(camera.Process(0), kResultOk);

    const ClientFrame picture = New::Picture(newInput, 40, 22, kTouchingLens,
                                             {0.01F, 70.0F, 0.01F, New::PanOf(0.0F), 0.0F});
    for (std::size_t y = 0; y < record.height; ++y) {
        for (std::size_t x = 0; x < record.stride; ++x) {
            const std::size_t from = y * picture.record.stride + x;
            ASSERT_EQ(buffer.data()[y * record.stride + x],
                      x < picture.record.stride ? picture.bytes[from] : 0)
                << y << ", " << x;
        }
    }
    EXPECT_TRUE(buffer.IsSurroundingUntouched());
}

TEST(VCamInAnOldStride, LargerPixelsStayInsideTheFrame) {
    ExpectOldStrideIsKept<VCam<MountTypeWall, PixelFormatRGB24>,
                          VCam<MountTypeWall, PixelFormatRGB32>>();
    ExpectOldStrideIsKept<VCam<MountTypeCeiling, PixelFormatRGB24>,
                          VCam<MountTypeCeiling, PixelFormatRGB32>>();
}

TEST(VCamInAnOldStride, SmallerPixelsLeaveTheRestOfARowBlack) {
    ExpectOldStrideIsKept<VCam<MountTypeWall, PixelFormatRGB32>,
                          VCam<MountTypeWall, PixelFormatRGB24>>();
    ExpectOldStrideIsKept<VCam<MountTypeTable, PixelFormatRGB32>,
                          VCam<MountTypeTable, PixelFormatRGB24>>();
}

}  // namespace

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/GuardedBuffer.h"
#include "support/PanoramaCamera.h"
#include "support/RingModel.h"
#include "support/RingPictures.h"

using namespace KivFisheyeLib;

namespace {

constexpr unsigned char kUntouched = 0xCD;

/// The dual panorama of an uneven lens through the camera, beside the models.
template <class Panorama>
class DualScene : public testing::Test, public PanoramaCamera<Panorama> {
protected:
    static constexpr int kBytes = PanoramaCamera<Panorama>::kBytesPerPixel;

    static Ring RingOf(const ClientFrame& input, const ClientFrame& output,
                       const DewarpParams& lens) {
        Ring ring =
            PackedRing(input.Width(), input.Height(), output.Width(), output.Height(), kBytes);
        ring.srcStride = input.Stride();
        ring.dstStride = output.Stride();
        ring.radiusX = lens.radiusX;
        ring.radiusY = lens.radiusY;
        ring.innerRadiusRatio = lens.innerRadiusRatio;
        return ring;
    }

    /// What the models make of a converter's pan in the camera's output.
    std::vector<unsigned char> PictureAt(float pan) const {
        const Ring ring = RingOf(this->input, this->output, kUnevenLens);
        std::vector<unsigned char> frame(ring.OutputBytes(), kUntouched);
        const auto entries = DualTableOffsets(Panorama::kMount, ring, kBytes);
        Paint(DualTurnedOffsets(entries, ring, DualTurnOf(ring.dstWidth, pan)), ring, kBytes,
              RowStart::Kept, this->input.bytes, frame);
        return frame;
    }

    bool ShowsAt(float cameraPan, float converterPan) {
        EXPECT_EQ(this->camera.SetAbsolutePTZ(cameraPan, 0.0F, 0.0F), kResultOk);
        return this->Shows(PictureAt(converterPan));
    }
};

TYPED_TEST_SUITE(DualScene, DualPanoramas);

TYPED_TEST(DualScene, PassesOneTurnLessThePanOnBothMounts) {
    for (const float pan : {1.0F, 30.0F, 90.0F, 135.0F, 179.0F, 181.0F, 270.0F, 359.0F}) {
        EXPECT_TRUE(this->ShowsAt(pan, 360.0F - pan)) << "pan " << pan;
        EXPECT_NE(this->output.bytes, this->PictureAt(pan)) << "pan " << pan;
    }
    EXPECT_TRUE(this->ShowsAt(-90.0F, 90.0F)) << "stored as 270";
    EXPECT_TRUE(this->ShowsAt(450.0F, 270.0F)) << "stored as 90";
}

// A full panorama of the same camera passes the pan as it is.
TYPED_TEST(DualScene, PassesTheOtherAngleThanAFullPanorama) {
    constexpr bool kIsTable = TypeParam::kMount == Mount::Table;
    using Full = std::conditional_t<kIsTable, TablePanorama<TypeParam::kFormat>,
                                    CeilingPanorama<TypeParam::kFormat>>;
    ASSERT_EQ(this->camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    ASSERT_EQ(this->camera.SetAbsolutePTZ(90.0F, 0.0F, 0.0F), kResultOk);
    const ClientFrame unturned = ExpectedPicture<Full>(this->input, this->output, kUnevenLens);
    EXPECT_TRUE(this->Shows(TurnedLeft(unturned, this->kBytes, 16)));
    ASSERT_EQ(this->camera.SetViewType(ViewTypeDualPanorama), kResultOk);
    EXPECT_TRUE(this->Shows(this->PictureAt(270.0F)));
}

TYPED_TEST(DualScene, PanOf0ShowsThePictureOfPan360AndLeavesAnOddLastRow) {
    EXPECT_TRUE(this->ShowsAt(0.0F, 360.0F));
    EXPECT_EQ(this->PictureAt(360.0F), this->PictureAt(0.0F));
    const auto lastRow = this->output.bytes.end() - this->output.Stride();
    EXPECT_EQ(std::count(lastRow, this->output.bytes.end(), kUntouched), this->output.Stride());
}

TYPED_TEST(DualScene, PanOf180IsNotTurnedWhileItsNeighboursAre) {
    EXPECT_TRUE(this->ShowsAt(180.0F, 0.0F));
    EXPECT_TRUE(this->ShowsAt(std::nextafter(180.0F, 0.0F), std::nextafter(180.0F, 360.0F)));
    EXPECT_NE(this->output.bytes, this->PictureAt(0.0F));
}

// It is stored as 360, so the angle is 0, which is no turn at all: an odd last row becomes black.
TYPED_TEST(DualScene, TinyNegativePanShowsTheUnturnedTableToItsLastRow) {
    ASSERT_EQ(this->camera.SetAbsolutePTZ(-1e-30F, 0.0F, 0.0F), kResultOk);
    ASSERT_EQ(this->camera.m_pan, 360.0F);
    std::vector<unsigned char> expected = this->PictureAt(0.0F);
    std::fill(expected.end() - this->output.Stride(), expected.end(),
              static_cast<unsigned char>(0));
    EXPECT_TRUE(this->Shows(expected));
}

TYPED_TEST(DualScene, PanBeyondItsRangeIsTakenAsItStandsUntilTheNextCall) {
    this->camera.m_pan = -90.0F;
    EXPECT_TRUE(this->Shows(this->PictureAt(450.0F)));
    this->camera.m_pan = 300.0F;
    EXPECT_TRUE(this->Shows(this->PictureAt(60.0F)));
    this->camera.m_pan = 400.0F;
    std::vector<unsigned char> unturned = this->PictureAt(0.0F);
    std::fill(unturned.end() - this->output.Stride(), unturned.end(),
              static_cast<unsigned char>(0));
    EXPECT_TRUE(this->Shows(unturned)) << "a negative angle does not turn";
}

TYPED_TEST(DualScene, PanThatTheCameraHasIsTakenOver) {
    ASSERT_EQ(this->camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    ASSERT_EQ(this->camera.SetAbsolutePTZ(45.0F, 0.0F, 0.0F), kResultOk);
    this->output.Fill(kUntouched);
    ASSERT_EQ(this->camera.SetViewType(ViewTypeDualPanorama), kResultOk);
    EXPECT_EQ(this->output.bytes, this->PictureAt(315.0F));
    EXPECT_EQ(this->camera.m_pan, 45.0F);
}

TYPED_TEST(DualScene, EveryPixelShowsItsPointOfTheLensAfterEachLensChange) {
    const DewarpParams lenses[] = {{0.25F, 0.375F, 30.0F, 0.25F},
                                   {0.25F, 0.5F, 30.0F, 0.25F},
                                   {0.25F, 0.5F, 30.0F, 0.75F},
                                   {1.0F, 0.75F, 30.0F, 0.0F}};
    ClientFrame even(64, 10, TypeParam::kFormat);
    ASSERT_EQ(this->camera.SetOutputVideoParams(even.record), kResultOk);
    for (const DewarpParams& lens : lenses) {
        ASSERT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
        ASSERT_EQ(this->camera.Process(0), kResultOk);
        const Ring ring = this->RingOf(this->input, even, lens);
        ExpectRingShows(even.bytes, ring, this->kBytes,
                        ExactRing::DualTable(TypeParam::kMount, ring));
    }
}

TYPED_TEST(DualScene, OutputOfOneRowIsServedAndLeftAlone) {
    ClientFrame row(64, 1, TypeParam::kFormat, kUntouched);
    ASSERT_EQ(this->camera.SetOutputVideoParams(row.record), kResultOk);
    for (const float pan : {0.0F, 90.0F, 180.0F}) {
        ASSERT_EQ(this->camera.SetAbsolutePTZ(pan, 0.0F, 0.0F), kResultOk);
        EXPECT_EQ(this->camera.Process(0), kResultOk);
        EXPECT_TRUE(row.IsFilledWith(kUntouched)) << "pan " << pan;
    }
}

/// A dual panorama whose output was set for one pixel format and whose input then brought another.
/// Its rows overlap in their order, and nothing is stored beyond the output's bytes.
template <class Panorama>
void ExpectOldStrideIsKept(PixelFormat oldFormat) {
    constexpr int kBytes = BytesPerPixelOf(Panorama::kFormat);
    const ClientFrame oldInput = ClientFrame::OfCoordinates(61, 47, oldFormat);
    const ClientFrame input = ClientFrame::OfCoordinates(61, 47, Panorama::kFormat);
    VideoFrameInfo record = ClientFrame(64, 9, oldFormat).record;
    GuardedBuffer buffer(std::size_t{record.stride} * record.height,
                         GuardedBuffer::Side::EndsAtGuard, kUntouched);
    record.buffer = buffer.data();
    CKivFisheyeCamera camera;
    camera.SetMountAndViewType(Panorama::kMountType, Panorama::kView);
    ASSERT_EQ(camera.SetInputVideoParams(oldInput.record, oldFormat), kResultOk);
    ASSERT_EQ(camera.SetOutputVideoParams(record), kResultOk);
    ASSERT_EQ(camera.SetInputVideoParams(input.record, Panorama::kFormat), kResultOk);
    Ring ring = PackedRing(61, 47, 64, 9, kBytes);
    ring.srcStride = input.Stride();
    ring.dstStride = static_cast<int>(record.stride);
    const auto entries = DualTableOffsets(Panorama::kMount, ring, kBytes);
    for (const float pan : {0.0F, 45.0F, 179.0F, 180.0F, 200.0F, 355.0F}) {
        ASSERT_EQ(camera.SetAbsolutePTZ(pan, 0.0F, 0.0F), kResultOk);
        std::fill_n(buffer.data(), buffer.size(), kUntouched);
        ASSERT_EQ(camera.Process(0), kResultOk);
        std::vector<unsigned char> expected(buffer.size(), kUntouched);
        Paint(DualTurnedOffsets(entries, ring, DualTurnOf(64, 360.0F - pan)), ring, kBytes,
              RowStart::Kept, input.bytes, expected);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), buffer.data())) << "pan " << pan;
        EXPECT_TRUE(buffer.IsSurroundingUntouched());
    }
}

TEST(DualSceneOfAnOldOutputStride, LargerPixelsOverlapAndStayInsideTheFrame) {
    ExpectOldStrideIsKept<TableDualPanorama<PixelFormatRGB32>>(PixelFormatRGB24);
    ExpectOldStrideIsKept<CeilingDualPanorama<PixelFormatRGB32>>(PixelFormatRGB24);
}

TEST(DualSceneOfAnOldOutputStride, SmallerPixelsLeaveTheRestOfARowAlone) {
    ExpectOldStrideIsKept<TableDualPanorama<PixelFormatRGB24>>(PixelFormatRGB32);
    ExpectOldStrideIsKept<CeilingDualPanorama<PixelFormatRGB24>>(PixelFormatRGB32);
}

}  // namespace

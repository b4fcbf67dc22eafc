#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"
#include "support/LockProbe.h"
#include "support/PanoramaCamera.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr unsigned char kUntouched = 0xCD;

TEST(WrappedStride, PassesTheValidator) {
    unsigned char pixel[4];
    // 4 * 0x40000008 is 2^32 + 32, 3 * 0x55555558 is 2^32 + 8, and 3 * 0x55555555 + 3 is 2^32 + 2.
    EXPECT_TRUE(ValidateVideoFrameInfo({0x40000008, 1, 32, pixel}, PixelFormatRGB32));
    EXPECT_TRUE(ValidateVideoFrameInfo({0x55555558, 1, 8, pixel}, PixelFormatRGB24));
    EXPECT_TRUE(ValidateVideoFrameInfo({0x55555555, 1, 0, pixel}, PixelFormatRGB24));
    EXPECT_FALSE(ValidateVideoFrameInfo({0x40000008, 1, 36, pixel}, PixelFormatRGB32));
}

/// Frames that no client has. Their few bytes stand before a page that can not be read or written.
template <class Panorama>
class OversizeFrames : public testing::Test, public PanoramaCamera<Panorama> {
protected:
    static constexpr std::uint32_t kBytes =
        static_cast<std::uint32_t>(PanoramaCamera<Panorama>::kBytesPerPixel);

    /// The record of such a frame, its stride as it comes out in 32 bits.
    VideoFrameInfo Huge(std::uint32_t width, std::uint32_t height) {
        return {width, height, (width * kBytes + 3U) & ~3U, m_fewBytes.data()};
    }

    std::vector<VideoFrameInfo> HugeInputs() {
        const std::uint32_t wrapped = 0xFFFFFFFF / kBytes + 9;
        return {Huge(wrapped, 1),     Huge(wrapped, 1000),  Huge(1U << 28, 4),
                Huge(8, 1U << 28),    Huge(8, 0x80000000U), Huge(8, 0xFFFFFFFFU),
                Huge(0x80000000U, 1), Huge(0xFFFFFFF8U, 1), Huge(0xFFFFFFFFU, 0xFFFFFFFFU)};
    }

    std::vector<VideoFrameInfo> HugeOutputs() {
        return {Huge(1U << 16, 1U << 15),      Huge(8, 1U << 28),    Huge(8, 0x80000000U),
                Huge(8, 0xFFFFFFFFU),          Huge(0x80000000U, 1), Huge(0xFFFFFFF8U, 1),
                Huge(0xFFFFFFF8U, 0xFFFFFFFFU)};
    }

    /// The call fails without asking for a table, and the context is as usable as before.
    template <class Call>
    void FailsWithoutATable(Call call) {
        {
            const AllocationWatch watch;
            EXPECT_TRUE(ThrowsBadAlloc(call));
            EXPECT_EQ(watch.LastAlignment(), 0UL) << "a table was asked for";
        }
        EXPECT_FALSE(IsLocked(this->camera));
        EXPECT_EQ(this->camera.Process(0), kResultOk);
        EXPECT_TRUE(this->output.IsFilledWith(kUntouched));
        EXPECT_TRUE(m_fewBytes.IsSurroundingUntouched());
    }

    void ShowsGoodFramesAgain() {
        EXPECT_TRUE(this->Shows(this->Expected().bytes));
        this->output.Fill(kUntouched);
    }

    void ExpectFewBytesUntouched() const {
        EXPECT_EQ(std::count(m_fewBytes.data(), m_fewBytes.data() + m_fewBytes.size(), 0),
                  static_cast<std::ptrdiff_t>(m_fewBytes.size()));
        EXPECT_TRUE(m_fewBytes.IsSurroundingUntouched());
    }

private:
    GuardedBuffer m_fewBytes{32};
};

TYPED_TEST_SUITE(OversizeFrames, Panoramas);

TYPED_TEST(OversizeFrames, AnInputIsAFailedAllocation) {
    for (const VideoFrameInfo& record : this->HugeInputs()) {
        SCOPED_TRACE(testing::Message() << record.width << " by " << record.height);
        this->FailsWithoutATable(
            [&] { this->camera.SetInputVideoParams(record, TypeParam::kFormat); });
        EXPECT_TRUE(IsSameRecord(this->camera.m_inputInfo, record)) << "stored all the same";
        EXPECT_EQ(this->camera.SetInputVideoParams(this->input.record, TypeParam::kFormat),
                  kResultOk);
        this->ShowsGoodFramesAgain();
    }
}

TYPED_TEST(OversizeFrames, AnOutputIsAFailedAllocation) {
    for (const VideoFrameInfo& record : this->HugeOutputs()) {
        SCOPED_TRACE(testing::Message() << record.width << " by " << record.height);
        this->FailsWithoutATable([&] { this->camera.SetOutputVideoParams(record); });
        EXPECT_TRUE(IsSameRecord(this->camera.m_outputInfo, record)) << "stored all the same";
        EXPECT_EQ(this->camera.SetOutputVideoParams(this->output.record), kResultOk);
        this->ShowsGoodFramesAgain();
    }
}

TYPED_TEST(OversizeFrames, AnotherLensFailsAsWellWhileTheyStand) {
    const VideoFrameInfo record = this->Huge(8, 1U << 28);
    EXPECT_TRUE(
        ThrowsBadAlloc([&] { this->camera.SetInputVideoParams(record, TypeParam::kFormat); }));
    this->FailsWithoutATable([&] { this->camera.SetDewarpParams({0.25F, 0.25F, 45.0F, 0.0F}); });
    EXPECT_EQ(this->camera.m_dewarpParams.radiusX, 0.25F);
    EXPECT_EQ(this->camera.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    EXPECT_EQ(this->camera.SetDewarpParams(kUnevenLens), kResultOk);
    this->ShowsGoodFramesAgain();
}

TYPED_TEST(OversizeFrames, ViewsWithoutATableTakeThemAndPanoramasHaveNoScene) {
    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    const VideoFrameInfo record = this->Huge(8, 1U << 28);
    EXPECT_EQ(this->camera.SetInputVideoParams(record, TypeParam::kFormat), kResultOk);
    this->output.Fill(kUntouched);
    EXPECT_TRUE(ThrowsBadAlloc([&] { this->camera.SetViewType(TypeParam::kView); }));
    EXPECT_EQ(this->camera.m_viewType, TypeParam::kView);
    EXPECT_EQ(this->camera.Process(0), kResultNotReady);
    EXPECT_FALSE(IsLocked(this->camera));
    EXPECT_TRUE(this->output.IsFilledWith(kUntouched));

    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    ASSERT_EQ(this->camera.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    this->output.Fill(kUntouched);
    ASSERT_EQ(this->camera.SetViewType(TypeParam::kView), kResultOk);
    EXPECT_EQ(this->output.bytes, this->Expected().bytes);
}

TYPED_TEST(OversizeFrames, AnInputShowsNothingInAVirtualCamera) {
    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    for (const VideoFrameInfo& record : this->HugeInputs()) {
        SCOPED_TRACE(testing::Message() << record.width << " by " << record.height);
        ASSERT_EQ(this->camera.SetInputVideoParams(record, TypeParam::kFormat), kResultOk);
        this->output.Fill(kUntouched);
        EXPECT_EQ(this->camera.Process(0), kResultOk);
        EXPECT_TRUE(this->output.IsFilledWith(0));
    }
}

TYPED_TEST(OversizeFrames, AnOutputOfMoreColumnsThanAnIntCountsGetsNothingFromAVirtualCamera) {
    ASSERT_EQ(this->camera.SetViewType(ViewTypeVCam), kResultOk);
    this->output.Fill(kUntouched);
    for (const VideoFrameInfo& record : this->HugeOutputs()) {
        if (record.width < 0x80000000U) {
            continue;
        }
        SCOPED_TRACE(testing::Message() << record.width << " by " << record.height);
        ASSERT_EQ(this->camera.SetOutputVideoParams(record), kResultOk);
        EXPECT_EQ(this->camera.Process(0), kResultOk);
        this->ExpectFewBytesUntouched();
    }
    EXPECT_TRUE(this->output.IsFilledWith(kUntouched));
}

TYPED_TEST(OversizeFrames, AnInputIsNoFailureBeforeThereIsAnOutput) {
    CKivFisheyeCamera inputOnly;
    ASSERT_EQ(inputOnly.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView), kResultOk);
    const VideoFrameInfo record = this->Huge(8, 1U << 28);
    EXPECT_EQ(inputOnly.SetInputVideoParams(record, TypeParam::kFormat), kResultOk);
    EXPECT_TRUE(ThrowsBadAlloc([&] { inputOnly.SetOutputVideoParams(this->output.record); }));
    EXPECT_EQ(inputOnly.Process(0), kResultOk);
    EXPECT_TRUE(this->output.IsFilledWith(kUntouched));
}

TYPED_TEST(OversizeFrames, AnOutputIsNoFailureForWantOfAnInputAlone) {
    // Nothing is known of the source, so every pixel is black; there is no buffer to read either.
    CKivFisheyeCamera outputOnly;
    ASSERT_EQ(outputOnly.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView), kResultOk);
    outputOnly.m_pixelFormat = TypeParam::kFormat;
    EXPECT_EQ(outputOnly.SetOutputVideoParams(this->output.record), kResultOk);
    EXPECT_EQ(outputOnly.Process(0), kResultNullPointer);
    EXPECT_TRUE(this->output.IsFilledWith(kUntouched));
}

TEST(WrappedStride, AnOutputWithOneGetsNoByteTooManyFromAVirtualCamera) {
    VCamCamera<VCam<MountTypeWall, PixelFormatRGB32>> vcam;
    vcam.input.Fill(0x3C);
    GuardedBuffer fewBytes(32, GuardedBuffer::Side::EndsAtGuard, kUntouched);
    ASSERT_EQ(vcam.camera.SetOutputVideoParams({0x40000008, 1, 32, fewBytes.data()}), kResultOk);
    // Memory for a thousand million columns is refused to tests, where it is asked for at all.
    if (!ThrowsBadAlloc([&] { EXPECT_EQ(vcam.camera.Process(0), kResultOk); })) {
        EXPECT_EQ(std::count(fewBytes.data(), fewBytes.data() + 32, kUntouched), 0);
    }
    EXPECT_TRUE(fewBytes.IsSurroundingUntouched());
    EXPECT_FALSE(IsLocked(vcam.camera));
    ASSERT_EQ(vcam.camera.SetOutputVideoParams(vcam.output.record), kResultOk);
    EXPECT_TRUE(vcam.Shows(vcam.Expected(kWholeLens)));
}

TEST(LargestInput, HasItsLastByteAt2To31) {
    PanoramaCamera<TablePanorama<PixelFormatRGB24>> panorama;
    unsigned char pixel[4];
    // Rows of 3 * 357913941 = 2^30 - 1 bytes in strides of 2^30 end at 2^31 - 1.
    const VideoFrameInfo largest{357913941, 2, 1U << 30, pixel};
    EXPECT_EQ(panorama.camera.SetInputVideoParams(largest, PixelFormatRGB24), kResultOk);
    const VideoFrameInfo tooLarge{1U << 28, 2, 1U << 30, pixel};
    EXPECT_TRUE(
        ThrowsBadAlloc([&] { panorama.camera.SetInputVideoParams(tooLarge, PixelFormatRGB32); }));
}

TEST(LargestOutput, HasATableOfFewerThan2To31Entries) {
    PanoramaCamera<TablePanorama<PixelFormatRGB32>> panorama;
    unsigned char pixel[4];
    const auto isTableAskedFor = [&](std::uint32_t width, std::uint32_t height) {
        const AllocationWatch watch;
        EXPECT_TRUE(ThrowsBadAlloc([&] {
            panorama.camera.SetOutputVideoParams({width, height, 4 * width, pixel});
        })) << "memory of that size is refused to tests";
        return watch.LastAlignment() == 32;
    };
    EXPECT_TRUE(isTableAskedFor(65528, 32768));
    EXPECT_FALSE(isTableAskedFor(65536, 32768));
    EXPECT_TRUE(isTableAskedFor(8, 268435455));
    EXPECT_FALSE(isTableAskedFor(8, 268435456));
}

/// What rows of the new pixel size leave in a frame with the old stride: they overlap in the order
/// of rows, and a pixel that would end beyond the frame is left out.
std::vector<unsigned char> AtStride(const ClientFrame& picture, int bytesPerPixel,
                                    std::size_t stride) {
    const auto height = static_cast<std::size_t>(picture.Height());
    const auto pixelBytes = static_cast<std::size_t>(bytesPerPixel);
    std::vector<unsigned char> frame(stride * height, kUntouched);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < picture.record.width; ++x) {
            const std::size_t at = y * stride + x * pixelBytes;
            if (at + pixelBytes <= frame.size()) {
                std::memcpy(&frame[at], &picture.bytes[y * picture.record.stride + x * pixelBytes],
                            pixelBytes);
            }
        }
    }
    return frame;
}

/// A camera whose output was set for one pixel format and whose input then brought another.
template <class OldPanorama, class NewPanorama>
void ExpectOldStrideIsKept() {
    constexpr int kNewBytes = BytesPerPixelOf(NewPanorama::kFormat);
    const ClientFrame oldInput = ClientFrame::OfCoordinates(61, 47, OldPanorama::kFormat);
    const ClientFrame newInput = ClientFrame::OfCoordinates(61, 47, NewPanorama::kFormat);
    const ClientFrame newOutput(64, 9, NewPanorama::kFormat);
    const ClientFrame unturned = ExpectedPicture<NewPanorama>(newInput, newOutput, kUnevenLens);

    VideoFrameInfo record = ClientFrame(64, 9, OldPanorama::kFormat).record;
    GuardedBuffer buffer(std::size_t{record.stride} * record.height,
                         GuardedBuffer::Side::EndsAtGuard, kUntouched);
    record.buffer = buffer.data();
    CKivFisheyeCamera camera;
    camera.SetMountAndViewType(NewPanorama::kMountType, NewPanorama::kView);
    camera.SetDewarpParams(kUnevenLens);
    ASSERT_EQ(camera.SetInputVideoParams(oldInput.record, OldPanorama::kFormat), kResultOk);
    ASSERT_EQ(camera.SetOutputVideoParams(record), kResultOk);
    ASSERT_EQ(camera.SetInputVideoParams(newInput.record, NewPanorama::kFormat), kResultOk);
    for (const int columns : {0, 1, 16, 40, 63}) {
        ASSERT_EQ(camera.SetAbsolutePTZ(5.625F * static_cast<float>(columns), 0.0F, 0.0F),
                  kResultOk);
        std::fill_n(buffer.data(), buffer.size(), kUntouched);
        ASSERT_EQ(camera.Process(0), kResultOk);
        ClientFrame turned(64, 9, NewPanorama::kFormat);
        turned.bytes = TurnedLeft(unturned, kNewBytes, columns);
        const std::vector<unsigned char> expected = AtStride(turned, kNewBytes, record.stride);
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), buffer.data())) << columns;
        EXPECT_TRUE(buffer.IsSurroundingUntouched());
    }
}

TEST(OldOutputStride, LargerPixelsOverlapAndStayInsideTheFrame) {
    ExpectOldStrideIsKept<TablePanorama<PixelFormatRGB24>, TablePanorama<PixelFormatRGB32>>();
    ExpectOldStrideIsKept<CeilingPanorama<PixelFormatRGB24>, CeilingPanorama<PixelFormatRGB32>>();
}

TEST(OldOutputStride, SmallerPixelsLeaveTheRestOfARowAlone) {
    ExpectOldStrideIsKept<TablePanorama<PixelFormatRGB32>, TablePanorama<PixelFormatRGB24>>();
    ExpectOldStrideIsKept<CeilingPanorama<PixelFormatRGB32>, CeilingPanorama<PixelFormatRGB24>>();
}

}  // namespace

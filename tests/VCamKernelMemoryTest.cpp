#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// Nothing outside the frames is read or written, whatever the kernels are told.

using namespace KivFisheyeLib;

namespace {

using Side = GuardedBuffer::Side;

constexpr unsigned char kFill = 0xCD;

class VCamKernelMemory : public VCamKernelTest {
protected:
    /// Converts from a guarded frame that may only be read to a guarded one, and compares with the
    /// model.
    static void ExpectStaysInside(const VCamFrame& frame, Side srcSide, Side dstSide) {
        const auto bytes =
            CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride, Bytes());
        GuardedBuffer src(bytes.size(), srcSide);
        std::copy(bytes.begin(), bytes.end(), src.data());
        src.MakeReadOnly();
        const auto expected = GetParam().ModelPicture(frame, bytes, kFill);
        GuardedBuffer dst(expected.size(), dstSide, kFill);
        GetParam()(frame, src.data(), dst.data());
        ASSERT_EQ(BytesOf(dst), expected) << frame;
        ASSERT_TRUE(dst.IsSurroundingUntouched()) << frame;
    }

    static void ExpectStaysInside(const VCamFrame& frame) {
        for (const Side srcSide : {Side::EndsAtGuard, Side::StartsAtGuard}) {
            for (const Side dstSide : {Side::EndsAtGuard, Side::StartsAtGuard}) {
                ASSERT_NO_FATAL_FAILURE(ExpectStaysInside(frame, srcSide, dstSide));
            }
        }
    }

    /// A source that ends the process when any byte of it is read shows nothing, in cleared rows.
    static void ExpectUnreadAndBlack(int srcWidth, int srcHeight, int srcStride) {
        const GuardedBuffer unreadable(0);
        for (const int dstWidth : {8, 21, 64}) {
            VCamFrame frame = PackedVCam(8, 8, dstWidth, 5, Bytes());
            frame.srcWidth = srcWidth;
            frame.srcHeight = srcHeight;
            frame.srcStride = srcStride;
            frame.dstStride += 3;
            GuardedBuffer dst(frame.OutputBytes(), Side::EndsAtGuard, kFill);
            GetParam()(frame, unreadable.data(), dst.data());
            EXPECT_EQ(BytesOf(dst), std::vector<unsigned char>(frame.OutputBytes(), 0))
                << srcWidth << "x" << srcHeight << ", stride " << srcStride;
            EXPECT_TRUE(dst.IsSurroundingUntouched());
        }
    }
};

TEST_P(VCamKernelMemory, GuardedFramesOfAllSizesAreNotLeft) {
    for (const int srcWidth : {1, 2, 3, 5, 40}) {
        for (const int srcHeight : {1, 2, 3, 31}) {
            for (const int dstWidth : {8, 13, 16, 136}) {
                VCamFrame frame = PackedVCam(srcWidth, srcHeight, dstWidth, 9, Bytes());
                ASSERT_NO_FATAL_FAILURE(ExpectStaysInside(frame));
                frame.srcStride += 2;
                frame.dstStride += 1;
                frame.radiusX = 0.9F;
                frame.radiusY = 0.8F;
                ASSERT_NO_FATAL_FAILURE(ExpectStaysInside(frame));
            }
        }
    }
}

// A narrow view around the frame's last pixel: whole groups show it, in any lane, and no byte
// follows it.
TEST_P(VCamKernelMemory, TheLastPixelOfTheFrameIsCopiedWithoutTheByteAfterIt) {
    for (const int side : {1, 2, 3, 9}) {
        VCamFrame frame = PackedVCam(side, side, 64, 32, Bytes());
        frame.radiusX = 0.75F;
        frame.radiusY = 0.75F;
        frame.eyeZ = 0.01F;
        frame.nearPlane = 0.01F;
        frame.fieldOfView = 40.0F;
        frame.aspect = 1.0F;
        frame.matrix = VCamMatrix(MountTypeCeiling, 135.0F, 82.0F);
        const SourcePlaces places = ModelPlaces(Form(), frame, Bytes());
        const PixelPlace last{side - 1, side - 1};
        if (Form() != VCamForm::C || side == 1) {
            EXPECT_GT(std::count(places.begin(), places.end(), last), 30) << "side " << side;
        }
        ASSERT_NO_FATAL_FAILURE(ExpectStaysInside(frame));
    }
}

// A stride that was described for smaller pixels: rows overlap in their order, and what would end
// beyond stride times height is left out.
TEST_P(VCamKernelMemory, RowsOfAShortStrideOverlapAndStayInTheFrame) {
    for (const int width : {8, 16, 40}) {
        for (const int height : {1, 2, 5}) {
            for (int stride = 0; stride <= width * Bytes(); ++stride) {
                VCamFrame frame = PackedVCam(31, 27, width, height, Bytes());
                frame.dstStride = stride;
                frame.eyeZ = 0.01F;
                ASSERT_NO_FATAL_FAILURE(
                    ExpectStaysInside(frame, Side::EndsAtGuard, Side::EndsAtGuard));
            }
        }
    }
}

TEST_P(VCamKernelMemory, WideRowsOfAShortStrideAreCutAnywhere) {
    for (int stride = 0; stride <= 400 * Bytes(); stride += 11) {
        VCamFrame frame = PackedVCam(301, 207, 400, 3, Bytes());
        frame.dstStride = stride;
        frame.eyeZ = 0.01F;
        frame.matrix = VCamMatrix(MountTypeWall, 10.0F, 5.0F);
        ASSERT_NO_FATAL_FAILURE(ExpectStaysInside(frame, Side::EndsAtGuard, Side::EndsAtGuard));
    }
}

// Among so many columns the first ones all are the view's left edge.
TEST_P(VCamKernelMemory, ARowOfABillionPixelsIsDrawnAsFarAsItsWrappedStrideHasRoom) {
    constexpr std::size_t kStride = 32;
    VCamFrame narrow = PackedVCam(90, 70, 8, 2, Bytes());
    narrow.aspect = 0.5F;
    narrow.eyeZ = 0.01F;
    narrow.fieldOfView = 60.0F;
    narrow.matrix = VCamMatrix(MountTypeCeiling, 40.0F, 20.0F);
    const auto src = CoordinateFrame(90, 70, narrow.srcStride, Bytes());
    const auto edges = GetParam().ModelPicture(narrow, src);
    const auto pixel = static_cast<std::size_t>(Bytes());
    std::vector<unsigned char> expected(2 * kStride);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::size_t row = i / kStride;
        const bool isCut = row == 1 && i % kStride >= kStride / pixel * pixel;
        const auto shown = edges[row * 8 * pixel + i % kStride % pixel];
        expected[i] = isCut ? static_cast<unsigned char>(0) : shown;
    }
    VCamFrame wide = narrow;
    wide.dstWidth = 0x40000008;
    wide.dstStride = static_cast<int>(kStride);
    GuardedBuffer dst(expected.size(), Side::EndsAtGuard, kFill);
    GetParam()(wide, src.data(), dst.data());
    EXPECT_EQ(BytesOf(dst), expected);
    EXPECT_TRUE(dst.IsSurroundingUntouched());
}

TEST_P(VCamKernelMemory, ANegativeStrideWritesNothing) {
    const GuardedBuffer unreadable(0);
    GuardedBuffer noFrame(0);
    VCamFrame frame = PackedVCam(21, 17, 16, 3, Bytes());
    const auto src = CoordinateFrame(21, 17, frame.srcStride, Bytes());
    for (const int stride : {-1, -16 * Bytes(), -100000}) {
        frame.dstStride = stride;
        GetParam()(frame, src.data(), noFrame.data());
    }
    EXPECT_TRUE(noFrame.IsSurroundingUntouched());
}

TEST_P(VCamKernelMemory, ASourceWithoutPixelsIsBlack) {
    ExpectUnreadAndBlack(0, 8, 32);
    ExpectUnreadAndBlack(8, 0, 32);
    ExpectUnreadAndBlack(0, 0, 0);
    ExpectUnreadAndBlack(-8, 8, 32);
    ExpectUnreadAndBlack(8, -8, 32);
    ExpectUnreadAndBlack(-8, -8, -32);
}

TEST_P(VCamKernelMemory, ASourceWhoseRowsExceedItsStrideIsBlack) {
    ExpectUnreadAndBlack(8, 8, 8 * Bytes() - 1);
    ExpectUnreadAndBlack(8, 8, 0);
    ExpectUnreadAndBlack(8, 8, -8 * Bytes());
    ExpectUnreadAndBlack(0x40000008, 8, 32);
    ExpectUnreadAndBlack(0x7FFFFFFF, 1, 0x7FFFFFFF);
}

TEST_P(VCamKernelMemory, ASourceBeyondTheLargestOffsetIsBlack) {
    ExpectUnreadAndBlack(1024, 0x7FFFFFFF, 4096);
    ExpectUnreadAndBlack(16000, 65536, 65536);
    ExpectUnreadAndBlack(1, 0x7FFFFFFF, 4);
    // One row less would fit.
    ExpectUnreadAndBlack(8192, 65537, 32768);
}

// What a record says whose stride wrapped around to 0: rows are countless, and none has a byte.
TEST_P(VCamKernelMemory, AnOutputWithoutBytesIsDoneAtOnceHoweverManyRowsItHas) {
    const auto bytes = CoordinateFrame(8, 8, 8 * Bytes(), Bytes());
    VCamFrame frame = PackedVCam(8, 8, 8, 8, Bytes());
    frame.dstWidth = 0x40000000;
    frame.dstHeight = 0x7FFFFFFF;
    frame.dstStride = 0;
    GuardedBuffer dst(0);
    GetParam()(frame, bytes.data(), dst.data());
    EXPECT_TRUE(dst.IsSurroundingUntouched());
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelMemory);

}  // namespace

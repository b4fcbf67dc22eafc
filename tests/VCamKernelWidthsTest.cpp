#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// Output sizes that are no whole groups of lanes, and sides of 1, 0 and less.

using namespace KivFisheyeLib;

namespace {

constexpr unsigned char kFill = 0xCD;

class VCamKernelWidths : public VCamKernelTest {
protected:
    /// A view that is not symmetric and has no black pixel.
    static VCamFrame NarrowView(int dstWidth, int dstHeight) {
        VCamFrame frame = PackedVCam(90, 80, dstWidth, dstHeight, Bytes());
        frame.eyeZ = 0.01F;
        frame.nearPlane = 0.01F;
        frame.fieldOfView = 50.0F;
        frame.aspect = 1.2F;
        frame.matrix = VCamMatrix(MountTypeCeiling, 40.0F, 33.0F);
        return frame;
    }

    static std::vector<unsigned char> SourceOf(const VCamFrame& frame) {
        return CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride, Bytes());
    }

    /// Which pixels of a packed picture are black.
    static std::vector<bool> Blacks(const std::vector<unsigned char>& picture) {
        std::vector<bool> blacks;
        for (std::size_t at = 0; at + static_cast<std::size_t>(Bytes()) <= picture.size();
             at += static_cast<std::size_t>(Bytes())) {
            blacks.push_back(!PlaceIn(&picture[at], Bytes()).has_value());
        }
        return blacks;
    }
};

// Around 64, 128 and 256 a row is one or two whole blocks of groups.
TEST_P(VCamKernelWidths, EveryWidthGivesTheBitsOfThePlainLoopAndNoByteMore) {
    for (int width = 1; width <= 265; ++width) {
        for (const int padding : {0, 1, 5, 16}) {
            VCamFrame frame = NarrowView(width, 3);
            frame.dstStride += padding;
            const auto src = SourceOf(frame);
            const auto expected = GetParam().ModelPicture(frame, src, kFill);
            GuardedBuffer dst(expected.size(), GuardedBuffer::Side::EndsAtGuard, kFill);
            GetParam()(frame, src.data(), dst.data());
            ASSERT_EQ(BytesOf(dst), expected) << "width " << width << ", padding " << padding;
            ASSERT_TRUE(dst.IsSurroundingUntouched());
        }
    }
}

TEST_P(VCamKernelWidths, EveryHeightGivesTheBitsOfThePlainLoop) {
    for (int height = 1; height <= 12; ++height) {
        const VCamFrame frame = NarrowView(24, height);
        const auto src = SourceOf(frame);
        ASSERT_EQ(GetParam().Picture(frame, src), GetParam().ModelPicture(frame, src))
            << "height " << height;
    }
}

TEST_P(VCamKernelWidths, OnlyTheAvxFormLeavesTheRestOfARowBlack) {
    const VCamFrame frame = NarrowView(12, 4);
    const auto blacks = Blacks(GetParam().Picture(frame, SourceOf(frame)));
    for (std::size_t i = 0; i < blacks.size(); ++i) {
        EXPECT_EQ(blacks[i], Form() == VCamForm::AVX && i % 12 >= 8) << "pixel " << i;
    }
}

TEST_P(VCamKernelWidths, ARowBelowTheGroupIsBlackInTheAvxFormAlone) {
    const VCamFrame frame = NarrowView(7, 4);
    for (const bool isBlack : Blacks(GetParam().Picture(frame, SourceOf(frame)))) {
        EXPECT_EQ(isBlack, Form() == VCamForm::AVX);
    }
}

// Of 8 computed pixels the last two lie beyond the row: where the next row begins, which is drawn
// afterwards, and after the last row beyond the frame.
TEST_P(VCamKernelWidths, SixPixelsSpillTwoBeyondTheFrameInTheSse41FormAlone) {
    const VCamFrame frame = NarrowView(6, 4);
    const auto src = SourceOf(frame);
    const auto pixel = static_cast<std::size_t>(Bytes());
    std::vector<unsigned char> dst(frame.OutputBytes() + 10 * pixel, kFill);
    GetParam()(frame, src.data(), dst.data());

    const std::size_t spilled = Form() == VCamForm::SSE41 ? 2 * pixel : 0;
    const auto end = dst.begin() + static_cast<std::ptrdiff_t>(frame.OutputBytes());
    const auto foreign = std::find_if(end, dst.end(), [](unsigned char b) { return b != kFill; });
    EXPECT_EQ(foreign != dst.end(), spilled != 0);
    EXPECT_TRUE(std::all_of(end + static_cast<std::ptrdiff_t>(spilled), dst.end(),
                            [](unsigned char b) { return b == kFill; }));
    for (std::size_t i = 0; i < spilled; i += pixel) {
        const auto place = PlaceIn(&dst[frame.OutputBytes() + i], Bytes());
        ASSERT_TRUE(place.has_value());
        EXPECT_LT(place->column, 90) << "a pixel of the source";
        EXPECT_LT(place->row, 80);
    }
}

TEST_P(VCamKernelWidths, NoHeightTouchesNothing) {
    GuardedBuffer nothing(0);
    for (const int height : {0, -1, -1000000}) {
        VCamFrame frame = NarrowView(16, 1);
        frame.dstHeight = height;
        const auto src = SourceOf(frame);
        GetParam()(frame, src.data(), nothing.data());
        frame.dstWidth = 5;
        GetParam()(frame, src.data(), nothing.data());
        frame.dstWidth = 0;
        GetParam()(frame, src.data(), nothing.data());
        frame.dstWidth = 16;
        frame.srcWidth = 0;
        GetParam()(frame, src.data(), nothing.data());
    }
    EXPECT_TRUE(nothing.IsSurroundingUntouched());
}

TEST_P(VCamKernelWidths, NoWidthClearsTheRows) {
    for (const int width : {0, -1, -8, -1000000}) {
        VCamFrame frame = NarrowView(16, 3);
        const auto src = SourceOf(frame);
        frame.dstWidth = width;
        frame.dstStride = 19;
        GuardedBuffer dst(frame.OutputBytes(), GuardedBuffer::Side::EndsAtGuard, kFill);
        GetParam()(frame, src.data(), dst.data());
        EXPECT_EQ(BytesOf(dst), std::vector<unsigned char>(frame.OutputBytes(), 0)) << width;
        EXPECT_TRUE(dst.IsSurroundingUntouched());
    }
}

TEST_P(VCamKernelWidths, AHeightOfOneShowsTheUpperEdge) {
    const VCamFrame frame = NarrowView(24, 1);
    VCamFrame three = NarrowView(24, 3);
    const auto src = SourceOf(frame);
    auto picture = GetParam().Picture(three, src);
    picture.resize(frame.OutputBytes());
    EXPECT_EQ(GetParam().Picture(frame, src), picture);
    EXPECT_NE(picture, std::vector<unsigned char>(frame.OutputBytes(), 0));
}

// The step from the left edge to the right one is infinite, and a lane begins at 0 times a step.
TEST_P(VCamKernelWidths, AWidthOfOneIsTheLeftEdgeInTheScalarFormAndBlackInTheOthers) {
    const VCamFrame frame = NarrowView(1, 5);
    const VCamFrame two = NarrowView(2, 5);
    const auto src = SourceOf(frame);
    const auto picture = GetParam().Picture(frame, src);
    const auto pixel = static_cast<std::size_t>(Bytes());
    const auto wide = VCamKernel{VCamForm::C, Bytes()}.Picture(two, src);
    for (std::size_t row = 0; row < 5; ++row) {
        const auto shown = PlaceIn(&picture[row * pixel], Bytes());
        if (Form() == VCamForm::C) {
            EXPECT_EQ(shown, PlaceIn(&wide[2 * row * pixel], Bytes())) << "row " << row;
            EXPECT_TRUE(shown.has_value());
        } else {
            EXPECT_FALSE(shown.has_value()) << "row " << row;
        }
    }
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelWidths);

}  // namespace

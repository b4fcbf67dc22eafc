#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// What can be told of single pixels without a model: the lens's rim, its axis, the frame's border,
// and halves between two source pixels.

using namespace KivFisheyeLib;

namespace {

constexpr double kPi = 3.14159265358979323846;

class VCamKernelEdges : public VCamKernelTest {
protected:
    /// A view of 9 by 9 pixels whose rectangle reaches from -1 to 1 in steps of a quarter, all of
    /// them exact in single precision, and shows the whole lens.
    static VCamFrame ExactView(int srcWidth, int srcHeight) {
        VCamFrame frame = PackedVCam(srcWidth, srcHeight, 9, 9, Bytes());
        const auto half = static_cast<double>(45.0F * 0.017453292F);
        frame.nearPlane = static_cast<float>(1.0 / std::tan(half));
        EXPECT_EQ(static_cast<float>(static_cast<double>(frame.nearPlane) * std::tan(half)), 1.0F);
        return frame;
    }

    /// Pixels of a row that every form draws.
    static constexpr int kCommonColumns = 8;

    static std::optional<PixelPlace> At(const SourcePlaces& places, int column, int row) {
        return places[static_cast<std::size_t>(row) * 9 + static_cast<std::size_t>(column)];
    }

    /// The places of a picture 9 pixels wide.
    static SourcePlaces NineColumns(const VCamFrame& frame) {
        const auto src = CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride, Bytes());
        auto picture = GetParam().Picture(frame, src);
        picture.resize(frame.OutputBytes());
        SourcePlaces places;
        for (std::size_t at = 0; at < picture.size(); at += static_cast<std::size_t>(Bytes())) {
            places.push_back(PlaceIn(&picture[at], Bytes()));
        }
        return places;
    }
};

TEST_P(VCamKernelEdges, ThePixelOnTheAxisIsBlackAndItsNeighboursAreNot) {
    const SourcePlaces places = NineColumns(ExactView(50, 50));
    EXPECT_FALSE(At(places, 4, 4).has_value());
    for (const PixelPlace& near : {PixelPlace{3, 4}, PixelPlace{5, 4}, PixelPlace{4, 3},
                                   PixelPlace{4, 5}, PixelPlace{3, 3}}) {
        EXPECT_TRUE(At(places, near.column, near.row).has_value()) << near;
    }
}

// The middle of 22 source pixels is at 10.5 of 0 to 21: an even number below.
TEST_P(VCamKernelEdges, HalvesGoToTheEvenPixelUpOrDownAsTheFormRounds) {
    const int expected = Form() == VCamForm::AVX ? 11 : 10;
    const SourcePlaces places = NineColumns(ExactView(22, 22));
    for (const int i : {1, 2, 3, 5, 6, 7}) {
        ASSERT_TRUE(At(places, 4, i).has_value());
        EXPECT_EQ(At(places, 4, i)->column, expected) << "row " << i;
        ASSERT_TRUE(At(places, i, 4).has_value());
        EXPECT_EQ(At(places, i, 4)->row, expected) << "column " << i;
    }
}

// The middle of 24 source pixels is at 11.5 of 0 to 23: an odd number below.
TEST_P(VCamKernelEdges, HalvesAboveOddPixelsAreCutOffByTheScalarFormAlone) {
    const int expected = Form() == VCamForm::C ? 11 : 12;
    const SourcePlaces places = NineColumns(ExactView(24, 24));
    for (const int i : {1, 2, 3, 5, 6, 7}) {
        ASSERT_TRUE(At(places, 4, i).has_value());
        EXPECT_EQ(At(places, 4, i)->column, expected) << "row " << i;
        ASSERT_TRUE(At(places, i, 4).has_value());
        EXPECT_EQ(At(places, i, 4)->row, expected) << "column " << i;
    }
}

// Of two source columns the second begins at the frame's right end for the form that cuts off, and
// in the middle for those that round.
TEST_P(VCamKernelEdges, OfTwoSourcePixelsTheScalarFormShowsOnlyTheFirst) {
    const SourcePlaces places = NineColumns(ExactView(2, 2));
    for (int row = 1; row < 8; ++row) {
        for (int column = 1; column < kCommonColumns; ++column) {
            const auto place = At(places, column, row);
            if (place && column != 4) {
                EXPECT_EQ(place->column, Form() != VCamForm::C && column > 4 ? 1 : 0)
                    << column << ", " << row;
            }
            if (place && row != 4) {
                EXPECT_EQ(place->row, Form() != VCamForm::C && row > 4 ? 1 : 0)
                    << column << ", " << row;
            }
        }
    }
}

// From the lens's centre, a ray at right angles to the axis ends on the rim, which touches the
// frame's border here: half the frame from its middle, to the last bit.
TEST_P(VCamKernelEdges, RaysToTheFramesBorderShowItsOutermostPixels) {
    struct Border {
        std::size_t element;  // of the matrix that turns all rays, (x, y, -1), to one side
        float value;
        PixelPlace outermost;
    };
    for (const Border& border : {Border{8, -1.0F, {20, 6}}, Border{8, 1.0F, {0, 6}},
                                 Border{9, -1.0F, {10, 0}}, Border{9, 1.0F, {10, 12}}}) {
        VCamFrame frame = PackedVCam(21, 13, 8, 3, Bytes());
        frame.eyeZ = 0.0F;
        frame.matrix = {};
        frame.matrix[border.element] = border.value;
        for (const auto& place : GetParam().Places(frame)) {
            ASSERT_TRUE(place.has_value()) << border.outermost;
            EXPECT_EQ(*place, border.outermost);
        }
    }
}

// Rays have no fourth part, and yet the matrix's fourth column is multiplied.
TEST_P(VCamKernelEdges, AnEndlessOffsetInTheMatrixGivesBlack) {
    for (const std::size_t element : {12U, 13U, 14U}) {
        VCamFrame frame = PackedVCam(21, 13, 8, 3, Bytes());
        frame.matrix[element] = std::numeric_limits<float>::infinity();
        for (const auto& place : GetParam().Places(frame)) {
            EXPECT_FALSE(place.has_value()) << "element " << element;
        }
    }
}

/// A pixel's offset from the middle of a view, in halves of its height.
struct Offset {
    double x;
    double y;

    Offset(std::size_t index, const VCamFrame& frame) {
        const int column = static_cast<int>(index) % frame.dstWidth;
        const int row = static_cast<int>(index) / frame.dstWidth;
        x = (2.0 * column / (frame.dstWidth - 1) - 1.0) * frame.dstWidth / frame.dstHeight;
        y = 1.0 - 2.0 * row / (frame.dstHeight - 1);
    }

    double FromMiddle() const { return std::hypot(x, y); }
};

// A view 90 degrees high from the sphere's surface has the rim of the lens as its inscribed circle.
TEST_P(VCamKernelEdges, ZoomOneShowsTheWholeLensCircleAndBlackCorners) {
    const VCamFrame frame = PackedVCam(256, 256, 64, 64, Bytes());
    const SourcePlaces places = GetParam().Places(frame);
    int inside = 0;
    int outside = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double distance = Offset(i, frame).FromMiddle();
        if (distance < 0.985) {
            ++inside;
            EXPECT_TRUE(places[i].has_value()) << "pixel " << i << ", " << distance;
        } else if (distance > 1.015) {
            ++outside;
            EXPECT_FALSE(places[i].has_value()) << "pixel " << i << ", " << distance;
        }
    }
    EXPECT_GT(inside, 2900) << "of about 0.76 * 64 * 64";
    EXPECT_GT(outside, 700);
    EXPECT_FALSE(places.front().has_value());
    EXPECT_FALSE(places.back().has_value());
}

TEST_P(VCamKernelEdges, ALensBeyondTheFrameIsBlackWhereTheFrameEnds) {
    for (const bool isWide : {true, false}) {
        VCamFrame frame = PackedVCam(300, 300, 80, 80, Bytes());
        frame.radiusX = isWide ? 0.8F : 0.45F;
        frame.radiusY = isWide ? 0.45F : 0.8F;
        const double margin = 0.5 * (0.0058 * 2.0 / kPi * 2.0 * 0.8) + 0.001;
        const SourcePlaces places = GetParam().Places(frame);
        int cut = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            const Offset offset(i, frame);
            const double phi = 2.0 * std::atan(offset.FromMiddle());
            const double along = isWide ? offset.x : offset.y;
            const double position = 1.6 * phi / kPi * std::fabs(along) / offset.FromMiddle();
            if (phi > kPi / 2.0 - 0.03) {
                continue;
            }
            if (position > 0.5 + 2.0 * margin) {
                ++cut;
                EXPECT_FALSE(places[i].has_value()) << "pixel " << i << " at " << position;
            } else if (position < 0.5 - 2.0 * margin) {
                EXPECT_TRUE(places[i].has_value()) << "pixel " << i << " at " << position;
            }
        }
        EXPECT_GT(cut, 500);
    }
}

TEST_P(VCamKernelEdges, NothingOfTheOutputBeforeIsLeftAndPaddingIsCleared) {
    VCamFrame frame = PackedVCam(60, 60, 40, 20, Bytes());
    frame.dstStride += 13;
    frame.radiusX = 0.3F;
    const auto src = CoordinateFrame(60, 60, frame.srcStride, Bytes());
    const auto picture = GetParam().Picture(frame, src, 0x00);
    EXPECT_NE(picture, std::vector<unsigned char>(frame.OutputBytes(), 0));
    EXPECT_EQ(GetParam().Picture(frame, src, 0xFF), picture);
    EXPECT_EQ(GetParam().Picture(frame, src, 0x5A), picture);
    for (int row = 0; row < 20; ++row) {
        const auto begin = picture.begin() + std::ptrdiff_t{row} * frame.dstStride;
        EXPECT_TRUE(std::all_of(begin + std::ptrdiff_t{40} * Bytes(), begin + frame.dstStride,
                                [](unsigned char byte) { return byte == 0; }))
            << "row " << row;
    }
}

// A view from the sphere's surface sees what is twice as far off the axis as its ray, and one from
// the centre what is just as far.
TEST_P(VCamKernelEdges, TheEyeSetsHowFarOffTheAxisARayLeads) {
    for (const float eye : {1.0F, 0.5F, 0.01F}) {
        VCamFrame frame = PackedVCam(2000, 2000, 24, 9, Bytes());
        frame.eyeZ = eye;
        frame.nearPlane = eye;
        frame.fieldOfView = 10.0F;
        frame.aspect = 1.0F;
        frame.matrix = VCamMatrix(MountTypeWall, 30.0F, 0.0F);
        const SourcePlaces places = GetParam().Places(frame);
        const auto& left = places[4 * 24 + 11];
        const auto& right = places[4 * 24 + 12];
        ASSERT_TRUE(left && right);
        const double expected =
            1999.0 * (0.5 + (1.0 + static_cast<double>(eye)) * (kPi / 6.0) / kPi);
        const double tolerance = 2.0 + ArccosineError(Form(), frame, 0.5F, 2000);
        EXPECT_NEAR((left->column + right->column) / 2.0, expected, tolerance) << "eye " << eye;
        EXPECT_NEAR(left->row, 999.5, 1.0);
    }
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelEdges);

}  // namespace

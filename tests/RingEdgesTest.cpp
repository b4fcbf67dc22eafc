#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"

// The ends of the direct conversion's range of sizes and lenses, by hand.

template <class Family>
class RingEdges : public FormTest<Family> {
protected:
    static constexpr int kBytes = Family::kBytes;

    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, kBytes);
    }

    static std::vector<std::optional<PixelPlace>> Places(const Ring& ring, float pan) {
        const auto frame = KernelPicture<Family>(ring, pan, SourceOf(ring));
        std::vector<std::optional<PixelPlace>> places;
        for (int y = 0; y < ring.dstHeight; ++y) {
            for (int x = 0; x < ring.dstWidth; ++x) {
                places.push_back(PlaceIn(frame.data() + y * ring.dstStride + x * kBytes, kBytes));
            }
        }
        return places;
    }

    static void ExpectRow(const std::vector<std::optional<PixelPlace>>& places, const Ring& ring,
                          int y, PixelPlace expected) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const auto& place = places[static_cast<std::size_t>(y * ring.dstWidth + x)];
            ASSERT_TRUE(place.has_value()) << "pixel (" << x << ", " << y << ")";
            EXPECT_EQ(*place, expected) << "pixel (" << x << ", " << y << ")";
        }
    }

    /// Nothing black, and no side of any place farther than one pixel from its counterpart's.
    static void ExpectWithinOnePixel(const std::vector<std::optional<PixelPlace>>& left,
                                     const std::vector<std::optional<PixelPlace>>& right) {
        ASSERT_EQ(left.size(), right.size());
        for (std::size_t i = 0; i < left.size(); ++i) {
            ASSERT_TRUE(left[i].has_value() && right[i].has_value()) << "pixel " << i;
            EXPECT_LE(std::abs(left[i]->column - right[i]->column), 1) << "pixel " << i;
            EXPECT_LE(std::abs(left[i]->row - right[i]->row), 1) << "pixel " << i;
        }
    }
};

TYPED_TEST_SUITE(RingEdges, Forms<RingFamilies>::Direct, RingFormNames);

TYPED_TEST(RingEdges, WidthOf0OnlyClearsTheRows) {
    Ring ring = PackedRing(10, 10, 0, 3, TypeParam::kBytes);
    ring.dstStride = 7;
    const std::vector<unsigned char> src = this->SourceOf(ring);
    std::vector<unsigned char> frame(4 * 7, 0xCD);
    TypeParam::ConvertByKernel(ring, 0.0F, src.data(), frame.data());
    std::vector<unsigned char> expected(4 * 7, 0);
    std::fill(expected.begin() + 3 * 7, expected.end(), static_cast<unsigned char>(0xCD));
    EXPECT_EQ(frame, expected);
}

TYPED_TEST(RingEdges, WidthOf1ShowsTheStartAngle) {
    // Radii 0, 1/4 and 1/2 on a frame of 101 by 101, all exact: at pan 0 to the right of (50, 50).
    const Ring ring = PackedRing(101, 101, 1, 3, TypeParam::kBytes);
    const auto places = this->Places(ring, 0.0F);
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    this->ExpectRow(places, ring, 0, {isTableMount ? 50 : 100, 50});
    this->ExpectRow(places, ring, 1, {75, 50});
    this->ExpectRow(places, ring, 2, {isTableMount ? 100 : 50, 50});
}

TYPED_TEST(RingEdges, WidthOf1TurnsWithThePan) {
    // A tenth of a turn, radius 0.41: 100 * (0.5 + 0.41 * cos 36) = 83.17, 100 * (0.5 - 0.41 * sin
    // 36) = 25.90.
    Ring ring = PackedRing(101, 101, 1, 1, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.41F;
    ring.innerRadiusRatio = 1.0F;
    this->ExpectRow(this->Places(ring, 36.0F), ring, 0, {83, PixelShownAt(TypeParam::kForm, 25.9)});
}

TYPED_TEST(RingEdges, HeightOf1ShowsTheInnerRingOnATableAndTheRimOnACeiling) {
    // Column 0: 100 * (0.5 + 0.254 * 0.5) = 62.7 within, 100 * (0.5 + 0.254) = 75.4 at the rim.
    Ring ring = PackedRing(101, 101, 1, 1, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.254F;
    ring.innerRadiusRatio = 0.5F;
    const double column = TypeParam::kMount == Mount::Table ? 62.7 : 75.4;
    this->ExpectRow(this->Places(ring, 0.0F), ring, 0,
                    {PixelShownAt(TypeParam::kForm, column), 50});
}

TYPED_TEST(RingEdges, HeightOf0OrBelowLeavesTheOutputUntouched) {
    const Ring sizes = PackedRing(10, 10, 8, 1, TypeParam::kBytes);
    const auto src = this->SourceOf(sizes);
    for (const int height : {0, -1, -1000}) {
        Ring ring = sizes;
        ring.dstHeight = height;
        std::vector<unsigned char> frame(sizes.OutputBytes(), 0xCD);
        TypeParam::ConvertByKernel(ring, 0.0F, src.data(), frame.data());
        EXPECT_EQ(frame, std::vector<unsigned char>(sizes.OutputBytes(), 0xCD));
    }
}

TYPED_TEST(RingEdges, InnerRatioOf0ShowsTheCentrePixelInTheInnermostRow) {
    // Four steps of 1/8 reach 0 exactly on the ceiling.
    const Ring ring = PackedRing(101, 75, 16, 5, TypeParam::kBytes);
    const int row = TypeParam::kMount == Mount::Table ? 0 : 4;
    this->ExpectRow(this->Places(ring, 0.0F), ring, row, {50, 37});
    this->ExpectRow(this->Places(ring, 123.0F), ring, row, {50, 37});
}

TYPED_TEST(RingEdges, InnerRatioOfFourFifthsShowsTheOuterFifthOfTheRadius) {
    Ring ring = PackedRing(1001, 1001, 64, 12, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.8F;
    // Of a square that holds the position the middle is at most 0.71 of a pixel away, and so is the
    // nearest pixel.
    const double middle = TypeParam::kForm == KernelForm::C ? 0.5 : 0.0;
    double smallest = 1.0;
    double largest = 0.0;
    for (const auto& place : this->Places(ring, 5.0F)) {
        ASSERT_TRUE(place.has_value());
        const double radius =
            std::hypot(place->column + middle - 500.0, place->row + middle - 500.0);
        smallest = std::min(smallest, radius / 1000.0);
        largest = std::max(largest, radius / 1000.0);
    }
    EXPECT_NEAR(smallest, 0.4, 0.0008);
    EXPECT_NEAR(largest, 0.5, 0.0008);
}

TYPED_TEST(RingEdges, RadiusBeyondTheFrameLeavesArcsAroundItsAxisBlack) {
    for (const bool alongWidth : {true, false}) {
        Ring ring = PackedRing(200, 200, 72, 16, TypeParam::kBytes);
        ring.radiusX = alongWidth ? 0.9F : 0.45F;
        ring.radiusY = alongWidth ? 0.45F : 0.9F;
        const auto places = this->Places(ring, 0.0F);
        const ExactRing exact = ExactRing::Direct(TypeParam::kMount, ring, 0.0F);
        int blackPixels = 0;
        for (int y = 0; y < ring.dstHeight; ++y) {
            for (int x = 0; x < ring.dstWidth; ++x) {
                const ExactPoint point = exact.PointAt(x, y);
                // No point of this ring is so near an edge that rounding decides.
                ASSERT_EQ(point.IsInside(1e-4), point.IsInside(-1e-4));
                const auto& place = places[static_cast<std::size_t>(y * ring.dstWidth + x)];
                EXPECT_EQ(place.has_value(), point.IsInside(0.0)) << x << ", " << y;
                blackPixels += place.has_value() ? 0 : 1;
            }
        }
        // The outermost ring is black where |cos| or |sin| exceeds 0.5 / 0.9: 62.5% of its columns.
        const int rim = TypeParam::kMount == Mount::Table ? 15 * ring.dstWidth : 0;
        const auto rimBegin = places.begin() + rim;
        const auto rimBlack = std::count(rimBegin, rimBegin + ring.dstWidth, std::nullopt);
        EXPECT_NEAR(static_cast<double>(rimBlack), 72 * 0.625, 2.0);
        EXPECT_GT(blackPixels, rimBlack);
        // A quarter turn away from the axis nothing is black.
        const int openColumn = alongWidth ? ring.dstWidth / 4 : 0;
        EXPECT_TRUE(places[static_cast<std::size_t>(rim + openColumn)].has_value());
    }
}

TYPED_TEST(RingEdges, RadiiOf0ShowTheCentrePixelEverywhere) {
    Ring ring = PackedRing(101, 75, 16, 5, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.0F;
    ring.innerRadiusRatio = 0.3F;
    const auto places = this->Places(ring, 200.0F);
    for (int y = 0; y < ring.dstHeight; ++y) {
        this->ExpectRow(places, ring, y, {50, 37});
    }
}

TYPED_TEST(RingEdges, PanOf360ShowsThePictureOfPan0) {
    Ring ring = PackedRing(200, 150, 64, 12, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.49F;
    this->ExpectWithinOnePixel(this->Places(ring, 360.0F), this->Places(ring, 0.0F));
}

TYPED_TEST(RingEdges, NegativePanShowsThePictureOfItsPositiveTwin) {
    Ring ring = PackedRing(200, 150, 64, 12, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.49F;
    this->ExpectWithinOnePixel(this->Places(ring, -90.0F), this->Places(ring, 270.0F));
}

TYPED_TEST(RingEdges, SourceOfOneColumnIsReadInColumn0) {
    const Ring ring = PackedRing(1, 90, 40, 9, TypeParam::kBytes);
    int lowest = 90;
    int highest = 0;
    for (const auto& place : this->Places(ring, 0.0F)) {
        if (place.has_value()) {
            EXPECT_EQ(place->column, 0);
            lowest = std::min(lowest, place->row);
            highest = std::max(highest, place->row);
        }
    }
    EXPECT_LE(lowest, 1);
    EXPECT_GE(highest, 88);
}

TYPED_TEST(RingEdges, SourceOfOneRowIsReadInRow0) {
    const Ring ring = PackedRing(90, 1, 40, 9, TypeParam::kBytes);
    int lowest = 90;
    int highest = 0;
    for (const auto& place : this->Places(ring, 0.0F)) {
        if (place.has_value()) {
            EXPECT_EQ(place->row, 0);
            lowest = std::min(lowest, place->column);
            highest = std::max(highest, place->column);
        }
    }
    EXPECT_LE(lowest, 1);
    EXPECT_EQ(highest, 89);
}

TYPED_TEST(RingEdges, RowPaddingComesOutZero) {
    for (int padding = 1; padding <= 9; ++padding) {
        Ring ring = PackedRing(40, 40, 8, 4, TypeParam::kBytes);
        ring.dstStride += padding;
        const auto frame = KernelPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring));
        for (int y = 0; y < ring.dstHeight; ++y) {
            const auto* const end = frame.data() + (y + 1) * ring.dstStride;
            EXPECT_EQ(std::vector<unsigned char>(end - padding, end),
                      std::vector<unsigned char>(static_cast<std::size_t>(padding), 0))
                << "row " << y;
        }
    }
}

// Every byte of a black pixel is zero, the fourth one too.
TYPED_TEST(RingEdges, BlackPixelsAreZeroBytes) {
    Ring ring = PackedRing(40, 40, 8, 1, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 1.0F;
    ring.innerRadiusRatio = 1.0F;
    const auto frame = KernelPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring));
    EXPECT_EQ(frame, std::vector<unsigned char>(ring.OutputBytes(), 0));
}

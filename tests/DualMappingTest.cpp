#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"
#include "support/RingPictures.h"

// Every pixel of a dual panorama shows the source pixel in its direction, by the geometry in double
// precision.

namespace {

/// The rings of full panoramas with as many rows in each half.
std::vector<Ring> MappedDualRings(int bytesPerPixel) {
    std::vector<Ring> rings = MappedRings(bytesPerPixel);
    for (Ring& ring : rings) {
        ring.dstHeight *= 2;
    }
    return rings;
}

/// A table turns by whole columns, and each half shows one direction at its end that the other half
/// begins with. So a turned picture is off by less than one column's angle beyond the exact turn
/// for what stayed in its half, and by less than two for what entered it.
double ErrorOfATurn(const Ring& ring) {
    const double columnAngle = std::acos(-1.0) / (ring.dstWidth - 1);
    return 2.0 * columnAngle;
}

/// Expects each pixel to show its direct conversion's direction within the error of a turn. What
/// stands at the frame's edge for one may be beyond it for the other.
void ExpectTurnedPictureShows(const std::vector<unsigned char>& frame, const Ring& ring,
                              int bytesPerPixel, const ExactRing& exact) {
    // A pixel shows what lies within half a pixel of its middle, or of its number in lanes.
    const double middle = exact.Form() == KernelForm::C ? 0.5 : 0.0;
    const double angle = ErrorOfATurn(ring);
    const double moveOfU = static_cast<double>(ring.radiusX) * angle;
    const double moveOfV = static_cast<double>(ring.radiusY) * angle;
    const double margin = std::max(moveOfU, moveOfV) + exact.ErrorOfFraction();
    const double columnError = ring.srcWidth * moveOfU + exact.ErrorOfColumn();
    const double rowError = ring.srcHeight * moveOfV + exact.ErrorOfRow();
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const auto place =
                PlaceIn(frame.data() + y * ring.dstStride + x * bytesPerPixel, bytesPerPixel);
            const ExactPoint point = exact.PointAt(x, y);
            if (!place.has_value()) {
                ASSERT_FALSE(point.IsInside(-margin)) << x << ", " << y << "; " << ring;
                continue;
            }
            ASSERT_TRUE(point.IsInside(margin)) << x << ", " << y << "; " << ring;
            ASSERT_NEAR(place->column + middle, point.column, 0.5 + columnError)
                << x << ", " << y << "; " << ring;
            ASSERT_NEAR(place->row + middle, point.row, 0.5 + rowError)
                << x << ", " << y << "; " << ring;
        }
    }
}

}  // namespace

/// A form's direct conversions.
template <class Family>
class DualMapping : public FormTest<Family> {
protected:
    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(DualMapping, Forms<DualFamilies>::Direct, RingFormNames);

/// A form's tables.
template <class Family>
class DualTableMapping : public DualMapping<Family> {};

TYPED_TEST_SUITE(DualTableMapping, Forms<DualFamilies>::Builders, RingFormNames);

/// The conversions that turn a table, in the form that this processor gives it.
template <class Family>
class DualTurnMapping : public ::testing::Test {
protected:
    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(DualTurnMapping, DualFamilies, RingFamilyNames);

TYPED_TEST(DualMapping, EveryPixelShowsItsDirection) {
    for (const Ring& ring : MappedDualRings(TypeParam::kBytes)) {
        const auto src = this->SourceOf(ring);
        for (const float pan : {0.0F, 30.0F, 211.7F, 359.9F, -75.5F}) {
            ASSERT_NO_FATAL_FAILURE(ExpectRingShows(
                KernelPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes,
                ExactRing::DualDirect(TypeParam::kMount, ring, pan, TypeParam::kForm)))
                << "pan " << pan;
        }
    }
}

TYPED_TEST(DualTableMapping, EveryPixelShowsItsDirection) {
    for (const Ring& ring : MappedDualRings(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(ExpectRingShows(
            BuiltTablePicture<TypeParam>(ring, this->SourceOf(ring)), ring, TypeParam::kBytes,
            ExactRing::DualTable(TypeParam::kMount, ring, TypeParam::kForm)));
    }
}

TYPED_TEST(DualTurnMapping, TableTurnedByAWholeTurnShowsItsDirections) {
    for (const Ring& ring : MappedDualRings(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectRingShows(TablePicture<TypeParam>(ring, this->SourceOf(ring), 360.0F), ring,
                            TypeParam::kBytes, ExactRing::DualTable(TypeParam::kMount, ring)));
    }
}

TYPED_TEST(DualTurnMapping, TurnedTableLooksWhereTheDirectConversionOfThatPanLooks) {
    for (Ring ring : MappedDualRings(TypeParam::kBytes)) {
        ring.dstWidth = 4 * ring.dstWidth + 1;
        ring.dstStride = ring.dstWidth * TypeParam::kBytes;
        const auto src = this->SourceOf(ring);
        for (const float pan : {1.0F, 45.0F, 90.0F, 179.0F, 181.0F, 270.0F, 359.0F, 450.0F}) {
            ASSERT_NO_FATAL_FAILURE(ExpectTurnedPictureShows(
                TablePicture<TypeParam>(ring, src, pan), ring, TypeParam::kBytes,
                ExactRing::DualDirect(TypeParam::kMount, ring, pan, FormOfTables())))
                << "pan " << pan;
        }
    }
}

// The quarter positions by hand, at the rim of a round lens of 40.2 pixels around (50, 50): at pan
// 90 the middle of the upper half shows what was at its left end before.
TYPED_TEST(DualTurnMapping, QuarterTurnMovesTheLeftEndsToTheMiddlesOnBothPaths) {
    Ring ring = PackedRing(101, 101, 101, 2, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.402F;
    ring.innerRadiusRatio = 1.0F;
    const auto src = this->SourceOf(ring);
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    const auto expectMiddles = [&](const std::vector<unsigned char>& frame, KernelForm form) {
        const int left = PixelShownAt(form, 9.8);
        const int right = PixelShownAt(form, 90.2);
        const auto upper = PlaceIn(frame.data() + 50 * TypeParam::kBytes, TypeParam::kBytes);
        const auto lower = PlaceIn(frame.data() + 151 * TypeParam::kBytes, TypeParam::kBytes);
        ASSERT_TRUE(upper.has_value() && lower.has_value());
        EXPECT_EQ(upper->column, isTableMount ? right : left);
        EXPECT_EQ(lower->column, isTableMount ? left : right);
        EXPECT_NEAR(upper->row, 50.0, 1.3);
        EXPECT_NEAR(lower->row, 50.0, 1.3);
    };
    expectMiddles(DirectPicture<TypeParam>(ring, 90.0F, src), FormOfDirectConversions());
    expectMiddles(TablePicture<TypeParam>(ring, src, 90.0F), FormOfTables());
}

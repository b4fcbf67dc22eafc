#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"
#include "support/RingPictures.h"

// Full panoramas show what the geometry in double precision says.

template <class Family>
class RingMapping : public ::testing::Test {
protected:
    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(RingMapping, RingFamilies, RingFamilyNames);

TYPED_TEST(RingMapping, DirectConversionSamplesTheNearestPixelOrTheOneBefore) {
    for (const Ring& ring : MappedRings(TypeParam::kBytes)) {
        const auto src = this->SourceOf(ring);
        for (const float pan : {0.0F, 30.0F, 211.7F, 359.9F, -75.5F, 500.0F}) {
            ASSERT_NO_FATAL_FAILURE(
                ExpectRingShows(DirectPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes,
                                ExactRing::Direct(TypeParam::kMount, ring, pan)))
                << "pan " << pan;
        }
    }
}

TYPED_TEST(RingMapping, TableSamplesTheNearestPixelOrTheOneBefore) {
    for (const Ring& ring : MappedRings(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(ExpectRingShows(TablePicture<TypeParam>(ring, this->SourceOf(ring)),
                                                ring, TypeParam::kBytes,
                                                ExactRing::Table(TypeParam::kMount, ring)));
    }
}

// Over thousands of columns the angle's running sum drifts by more than the bound allows, and the
// drift is part of the result: here the geometry takes the angles as the sum has them.
TYPED_TEST(RingMapping, WideDirectPictureFollowsTheRunningAngle) {
    Ring ring = PackedRing(1900, 1500, 12000, 9, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.2F;
    const auto src = this->SourceOf(ring);
    const float pan = 77.0F;
    const float first = pan * 0.0174532924F;
    const ExactRing exact =
        ExactRing::Direct(TypeParam::kMount, ring, pan)
            .WithAngles(SteppedAngles(first, first + 6.28318548F, ring.dstWidth));
    ExpectRingShows(DirectPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes, exact);
}

TYPED_TEST(RingMapping, WideTableFollowsTheRunningAngle) {
    Ring ring = PackedRing(1900, 1500, 12000, 9, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.2F;
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    const float first = isTableMount ? 0.0F : 6.28318548F;
    const float last = isTableMount ? 6.28318548F : 0.0F;
    const ExactRing exact = ExactRing::Table(TypeParam::kMount, ring)
                                .WithAngles(SteppedAngles(first, last, ring.dstWidth));
    ExpectRingShows(TablePicture<TypeParam>(ring, this->SourceOf(ring)), ring, TypeParam::kBytes,
                    exact);
}

// By hand, on a frame whose centre is a pixel and for angles of a quarter turn: right, top, left,
// bottom, right again.
TYPED_TEST(RingMapping, ColumnsLookRightUpLeftAndDown) {
    Ring ring = PackedRing(101, 201, 5, 1, TypeParam::kBytes);
    ring.innerRadiusRatio = 1.0F;
    ring.radiusX = 0.305F;
    ring.radiusY = 0.2525F;
    const std::vector<PixelPlace> rising = {{80, 100}, {50, 49}, {19, 100}, {50, 150}, {80, 100}};
    const auto frame = DirectPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring));
    for (int x = 0; x < 5; ++x) {
        const auto place = PlaceIn(frame.data() + x * TypeParam::kBytes, TypeParam::kBytes);
        ASSERT_TRUE(place.has_value());
        // Cosines and sines of quarter turns miss 0 by a little, either way.
        EXPECT_LE(std::abs(place->column - rising[static_cast<std::size_t>(x)].column),
                  x % 2 == 0 ? 0 : 1);
        EXPECT_LE(std::abs(place->row - rising[static_cast<std::size_t>(x)].row),
                  x % 2 == 0 ? 1 : 0);
    }
}

TYPED_TEST(RingMapping, FirstRowIsTheInnerRingOnATableAndTheRimOnACeiling) {
    // Column 0 looks to the right: 100 * (0.5 + 0.1), and 100 * (0.5 + 0.4), with a little added so
    // that rounding decides nothing.
    Ring ring = PackedRing(101, 101, 8, 3, TypeParam::kBytes);
    ring.radiusX = 0.405F;
    ring.innerRadiusRatio = 0.25926F;
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    for (const auto& frame : {DirectPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring)),
                              TablePicture<TypeParam>(ring, this->SourceOf(ring))}) {
        const auto first = PlaceIn(frame.data(), TypeParam::kBytes);
        const auto last = PlaceIn(frame.data() + 2 * ring.dstStride, TypeParam::kBytes);
        ASSERT_TRUE(first.has_value() && last.has_value());
        EXPECT_EQ(first->column, isTableMount ? 60 : 90);
        EXPECT_EQ(last->column, isTableMount ? 90 : 60);
    }
}

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"
#include "support/RingPictures.h"

// Full panoramas show what the geometry in double precision says.

/// A form's direct conversions.
template <class Family>
class RingMapping : public FormTest<Family> {
protected:
    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(RingMapping, Forms<RingFamilies>::Direct, RingFormNames);

/// A form's tables.
template <class Family>
class RingTableMapping : public RingMapping<Family> {
protected:
    static std::vector<unsigned char> PictureOf(const Ring& ring) {
        return BuiltTablePicture<Family>(ring, RingMapping<Family>::SourceOf(ring));
    }
};

TYPED_TEST_SUITE(RingTableMapping, Forms<RingFamilies>::Builders, RingFormNames);

TYPED_TEST(RingMapping, EveryPixelShowsItsDirection) {
    for (const Ring& ring : MappedRings(TypeParam::kBytes)) {
        const auto src = this->SourceOf(ring);
        for (const float pan : {0.0F, 30.0F, 211.7F, 359.9F, -75.5F, 500.0F}) {
            ASSERT_NO_FATAL_FAILURE(
                ExpectRingShows(KernelPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes,
                                ExactRing::Direct(TypeParam::kMount, ring, pan, TypeParam::kForm)))
                << "pan " << pan;
        }
    }
}

TYPED_TEST(RingTableMapping, EveryPixelShowsItsDirection) {
    for (const Ring& ring : MappedRings(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectRingShows(this->PictureOf(ring), ring, TypeParam::kBytes,
                            ExactRing::Table(TypeParam::kMount, ring, TypeParam::kForm)));
    }
}

// Over thousands of columns the angle's running sum drifts by more than the bound allows, and the
// drift is part of the result: here the geometry takes the angles as the sum has them.
TYPED_TEST(RingMapping, WidePictureFollowsTheRunningAngle) {
    Ring ring = PackedRing(1900, 1500, 12000, 9, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.2F;
    const auto src = this->SourceOf(ring);
    const float pan = 77.0F;
    const float first = pan * 0.0174532924F;
    const ExactRing exact =
        ExactRing::Direct(TypeParam::kMount, ring, pan, TypeParam::kForm)
            .WithAngles(AnglesOfForm(TypeParam::kForm, first, first + 6.28318548F, ring.dstWidth));
    ExpectRingShows(KernelPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes, exact);
}

TYPED_TEST(RingTableMapping, WideTableFollowsTheRunningAngle) {
    Ring ring = PackedRing(1900, 1500, 12000, 9, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.2F;
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    const float first = isTableMount ? 0.0F : 6.28318548F;
    const float last = isTableMount ? 6.28318548F : 0.0F;
    const ExactRing exact =
        ExactRing::Table(TypeParam::kMount, ring, TypeParam::kForm)
            .WithAngles(AnglesOfForm(TypeParam::kForm, first, last, ring.dstWidth));
    ExpectRingShows(this->PictureOf(ring), ring, TypeParam::kBytes, exact);
}

// By hand, on a frame whose centre is a pixel and for angles of a quarter turn: right, top, left,
// bottom, right again. 50 +- 30.3 and 100 +- 50.6.
TYPED_TEST(RingMapping, ColumnsLookRightUpLeftAndDown) {
    Ring ring = PackedRing(101, 201, 5, 1, TypeParam::kBytes);
    ring.innerRadiusRatio = 1.0F;
    ring.radiusX = 0.303F;
    ring.radiusY = 0.253F;
    const auto shown = [](double position) { return PixelShownAt(TypeParam::kForm, position); };
    const std::vector<PixelPlace> rising = {{shown(80.3), 100},
                                            {50, shown(49.4)},
                                            {shown(19.7), 100},
                                            {50, shown(150.6)},
                                            {shown(80.3), 100}};
    const auto frame = KernelPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring));
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

// Column 0 looks to the right: 100 * (0.5 + 0.108) at the inner ring, and 100 * (0.5 + 0.4) with a
// little added at the rim, so that rounding decides nothing.
template <class Family>
void ExpectInnerRingAndRim(const std::vector<unsigned char>& frame, const Ring& ring) {
    const bool isTableMount = Family::kMount == Mount::Table;
    const auto first = PlaceIn(frame.data(), Family::kBytes);
    const auto last = PlaceIn(frame.data() + 2 * ring.dstStride, Family::kBytes);
    ASSERT_TRUE(first.has_value() && last.has_value());
    const int inner = PixelShownAt(Family::kForm, 60.8);
    const int rim = PixelShownAt(Family::kForm, 90.2);
    EXPECT_EQ(first->column, isTableMount ? inner : rim);
    EXPECT_EQ(last->column, isTableMount ? rim : inner);
}

Ring RingOfThreeRows(int bytesPerPixel) {
    Ring ring = PackedRing(101, 101, 8, 3, bytesPerPixel);
    ring.radiusX = 0.402F;
    ring.innerRadiusRatio = 0.108F / 0.402F;
    return ring;
}

TYPED_TEST(RingMapping, FirstRowIsTheInnerRingOnATableAndTheRimOnACeiling) {
    const Ring ring = RingOfThreeRows(TypeParam::kBytes);
    ExpectInnerRingAndRim<TypeParam>(KernelPicture<TypeParam>(ring, 0.0F, this->SourceOf(ring)),
                                     ring);
}

TYPED_TEST(RingTableMapping, FirstRowIsTheInnerRingOnATableAndTheRimOnACeiling) {
    const Ring ring = RingOfThreeRows(TypeParam::kBytes);
    ExpectInnerRingAndRim<TypeParam>(this->PictureOf(ring), ring);
}

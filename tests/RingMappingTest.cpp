#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"

// The pictures against the geometry in double precision. Sampling truncates, so a pixel shows the
// source pixel nearest to the exact point or the one before it, as long as single precision stays
// within half a pixel of that point; `ExactRing` bounds by how much it is off, and every case
// checks that bound first. Where the exact point is farther than the bound from a pixel's edge, the
// sampled pixel is known exactly.

namespace {

/// Compares pixels with their exact points and counts how many are known exactly.
class PlaceCheck {
public:
    explicit PlaceCheck(const ExactRing& exact)
        : m_fractionError(exact.ErrorOfFraction()),
          m_columnError(exact.ErrorOfColumn()),
          m_rowError(exact.ErrorOfRow()) {}

    /// False when the pixel cannot show the point.
    bool Accepts(const std::optional<PixelPlace>& place, const ExactPoint& point) {
        ++m_pixels;
        const bool mayBeBlack = !point.IsInside(-m_fractionError);
        const bool mayBeSampled = point.IsInside(m_fractionError);
        if (!place.has_value()) {
            m_decided += mayBeSampled ? 0 : 1;
            return mayBeBlack;
        }
        const bool columnIsKnown = IsKnown(point.column, m_columnError);
        const bool rowIsKnown = IsKnown(point.row, m_rowError);
        m_decided += !mayBeBlack && columnIsKnown && rowIsKnown ? 1 : 0;
        return mayBeSampled && IsNearestOrOneBefore(place->column, point.column) &&
               IsNearestOrOneBefore(place->row, point.row) &&
               (!columnIsKnown || place->column == std::floor(point.column)) &&
               (!rowIsKnown || place->row == std::floor(point.row));
    }

    bool IsSharp() const { return m_columnError < 0.5 && m_rowError < 0.5; }
    double ShareDecided() const { return static_cast<double>(m_decided) / m_pixels; }

private:
    static bool IsKnown(double position, double error) {
        return std::fabs(position - std::round(position)) > error;
    }

    static bool IsNearestOrOneBefore(int index, double position) {
        const double nearest = std::round(position);
        return index == nearest || index == nearest - 1.0;
    }

    double m_fractionError;
    double m_columnError;
    double m_rowError;
    int m_pixels = 0;
    int m_decided = 0;
};

void ExpectPictureShows(const std::vector<unsigned char>& frame, const Ring& ring,
                        int bytesPerPixel, const ExactRing& exact) {
    PlaceCheck check(exact);
    ASSERT_TRUE(check.IsSharp()) << ring;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const auto place =
                PlaceIn(frame.data() + y * ring.dstStride + x * bytesPerPixel, bytesPerPixel);
            const ExactPoint point = exact.PointAt(x, y);
            ASSERT_TRUE(check.Accepts(place, point))
                << "pixel (" << x << ", " << y << ") shows "
                << (place ? ::testing::PrintToString(*place) : "black") << " where ("
                << point.column << ", " << point.row << ") was looked at; " << ring;
        }
    }
    EXPECT_GT(check.ShareDecided(), 0.5) << ring;
}

/// Lenses within the frame, beyond it, narrow, flat, with holes of all sizes, on frames of all
/// shapes. Sides are coprime to the columns so that few points fall on pixel edges.
std::vector<Ring> MappedRings(int bytesPerPixel) {
    struct Size {
        int srcWidth;
        int srcHeight;
        int dstWidth;
        int dstHeight;
    };
    struct Lens {
        float radiusX;
        float radiusY;
        float ratio;
    };
    std::vector<Ring> rings;
    for (const Size& size : {Size{101, 83, 96, 31}, Size{640, 480, 368, 53}, Size{37, 211, 41, 64},
                             Size{300, 22, 128, 17}, Size{720, 719, 200, 40}}) {
        for (const Lens& lens :
             {Lens{0.5F, 0.5F, 0.0F}, Lens{0.47F, 0.39F, 0.3F}, Lens{0.31F, 0.5F, 0.8F},
              Lens{1.0F, 0.9F, 0.1F}, Lens{0.5F, 0.75F, 0.55F}, Lens{0.05F, 0.6F, 0.0F}}) {
            Ring ring = PackedRing(size.srcWidth, size.srcHeight, size.dstWidth, size.dstHeight,
                                   bytesPerPixel);
            ring.srcStride += 3;
            ring.dstStride += 1;
            ring.radiusX = lens.radiusX;
            ring.radiusY = lens.radiusY;
            ring.innerRadiusRatio = lens.ratio;
            rings.push_back(ring);
        }
    }
    return rings;
}

}  // namespace

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
            ASSERT_NO_FATAL_FAILURE(ExpectPictureShows(
                DirectPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes,
                ExactRing::Direct(TypeParam::kMount, ring, pan)))
                << "pan " << pan;
        }
    }
}

TYPED_TEST(RingMapping, TableSamplesTheNearestPixelOrTheOneBefore) {
    for (const Ring& ring : MappedRings(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectPictureShows(TablePicture<TypeParam>(ring, this->SourceOf(ring)), ring,
                               TypeParam::kBytes, ExactRing::Table(TypeParam::kMount, ring)));
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
    ExpectPictureShows(DirectPicture<TypeParam>(ring, pan, src), ring, TypeParam::kBytes, exact);
}

TYPED_TEST(RingMapping, WideTableFollowsTheRunningAngle) {
    Ring ring = PackedRing(1900, 1500, 12000, 9, TypeParam::kBytes);
    ring.innerRadiusRatio = 0.2F;
    const bool isTableMount = TypeParam::kMount == Mount::Table;
    const float first = isTableMount ? 0.0F : 6.28318548F;
    const float last = isTableMount ? 6.28318548F : 0.0F;
    const ExactRing exact = ExactRing::Table(TypeParam::kMount, ring)
                                .WithAngles(SteppedAngles(first, last, ring.dstWidth));
    ExpectPictureShows(TablePicture<TypeParam>(ring, this->SourceOf(ring)), ring, TypeParam::kBytes,
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

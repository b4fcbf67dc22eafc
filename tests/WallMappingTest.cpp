#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingPictures.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// A wall's pictures against the geometry in double precision, every pixel of them. A pixel shows
// the source pixel that its exact point lies in, or in lanes the nearest one, unless the point is
// so near to the next one's that the form's error decides.

namespace {

/// A picture's pixels beside their exact directions.
struct WallCheck {
    const Wall& wall;
    KernelForm form;
    Path path;

    bool MayShow(const std::optional<PixelPlace>& place, const ExactLook& look) const {
        const double errorX = ErrorOfFraction(form, path, wall.radiusX);
        const double errorY = ErrorOfFraction(form, path, wall.radiusY);
        const double margin = std::max(errorX, errorY);
        if (!place.has_value()) {
            return !look.IsInside(-margin);
        }
        return look.IsInside(margin) &&
               MayBe(place->column, look.column, kRounding + wall.srcWidth * errorX) &&
               MayBe(place->row, look.row, kRounding + wall.srcHeight * errorY);
    }

    bool MayBe(int index, double position, double error) const {
        return index >= PixelShownAt(form, position - error) &&
               index <= PixelShownAt(form, position + error);
    }

    /// Of positions, in source pixels.
    static constexpr double kRounding = 0.001;
};

void ExpectPictureShows(const std::vector<unsigned char>& frame, const WallCheck& check,
                        int bytesPerPixel) {
    const Wall& wall = check.wall;
    int shown = 0;
    for (int y = 0; y < wall.dstHeight; ++y) {
        for (int x = 0; x < wall.dstWidth; ++x) {
            const auto place =
                PlaceIn(frame.data() + y * wall.dstStride + x * bytesPerPixel, bytesPerPixel);
            const ExactLook look = LookOf(wall, x, y);
            ASSERT_TRUE(check.MayShow(place, look))
                << "pixel (" << x << ", " << y << ") shows "
                << (place ? ::testing::PrintToString(*place) : "black") << " where (" << look.column
                << ", " << look.row << ") was looked at; " << wall;
            shown += place.has_value() ? 1 : 0;
        }
    }
    EXPECT_GT(shown, 0) << wall;
}

/// Walls between frames of all shapes, with radii within the frame and beyond it. A hole of the
/// ring that stands in for a wall says the view angle, from 10 to 90.
std::vector<Wall> MappedWalls(int bytesPerPixel) {
    std::vector<Wall> walls;
    for (const Ring& ring : MappedRings(bytesPerPixel)) {
        walls.push_back({ring, 10.0F + 100.0F * ring.innerRadiusRatio});
    }
    return walls;
}

}  // namespace

/// A form's direct conversions.
template <class Family>
class WallMapping : public FormTest<Family> {};

TYPED_TEST_SUITE(WallMapping, Forms<WallFamilies>::Direct, WallFormNames);

/// A form's tables.
template <class Family>
class WallTableMapping : public FormTest<Family> {
protected:
    static void ExpectShows(const Wall& wall) {
        ExpectPictureShows(BuiltTablePicture<Family>(wall, SourceOf<Family>(wall)),
                           {wall, Family::kForm, Path::Table}, Family::kBytes);
    }
};

TYPED_TEST_SUITE(WallTableMapping, Forms<WallFamilies>::Builders, WallFormNames);

TYPED_TEST(WallMapping, EveryPixelShowsItsDirection) {
    for (const Wall& wall : MappedWalls(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectPictureShows(KernelPicture<TypeParam>(wall, SourceOf<TypeParam>(wall)),
                               {wall, TypeParam::kForm, Path::Direct}, TypeParam::kBytes));
    }
}

TYPED_TEST(WallTableMapping, EveryPixelShowsItsDirection) {
    for (const Wall& wall : MappedWalls(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(this->ExpectShows(wall));
    }
}

TYPED_TEST(WallTableMapping, EveryPixelOfTheRecommendedSizeShowsItsDirection) {
    this->ExpectShows(PackedWall(1920, 1080, 1920, 763, TypeParam::kBytes));
}

/// By hand, on a frame whose middle is a pixel, in the two columns at 30 degrees to either side.
/// The left of the picture shows the left of the source, the top its top.
Wall WallAtThirtyDegrees(int bytesPerPixel) {
    Wall wall = PackedWall(101, 61, 4, 2, bytesPerPixel);
    wall.radiusX = wall.radiusY = 0.46F;
    wall.wallViewAngle = 30.0F;
    return wall;
}

template <class Family>
void ExpectUprightAndNotMirrored(const std::vector<unsigned char>& frame, const Wall& wall) {
    // At 30 degrees to the side and 30 up: x = cos 30 * sin 30 = 0.4330, y = 0.5, r = 0.6614, which
    // is 41.41 degrees off the axis, 0.4601 of the radius and so 0.2116 of the frame. Of that,
    // 0.4330 / 0.6614 are across and 0.5 / 0.6614 up.
    const double across = 13.86;  // 0.1386 * 100
    const double up = 9.6;        // 0.16 * 60
    const auto shown = [](double position) { return PixelShownAt(Family::kForm, position); };
    const auto at = [&](int x, int y) {
        return PlaceIn(frame.data() + y * wall.dstStride + x * Family::kBytes, Family::kBytes);
    };
    EXPECT_EQ(at(1, 0), (PixelPlace{shown(50 - across), shown(30 - up)}));
    EXPECT_EQ(at(2, 0), (PixelPlace{shown(50 + across), shown(30 - up)}));
    EXPECT_EQ(at(1, 1), (PixelPlace{shown(50 - across), shown(30 + up)}));
    EXPECT_EQ(at(2, 1), (PixelPlace{shown(50 + across), shown(30 + up)}));
}

TYPED_TEST(WallMapping, PictureIsUprightAndNotMirrored) {
    const Wall wall = WallAtThirtyDegrees(TypeParam::kBytes);
    ExpectUprightAndNotMirrored<TypeParam>(
        KernelPicture<TypeParam>(wall, SourceOf<TypeParam>(wall)), wall);
}

TYPED_TEST(WallTableMapping, PictureIsUprightAndNotMirrored) {
    const Wall wall = WallAtThirtyDegrees(TypeParam::kBytes);
    ExpectUprightAndNotMirrored<TypeParam>(
        BuiltTablePicture<TypeParam>(wall, SourceOf<TypeParam>(wall)), wall);
}

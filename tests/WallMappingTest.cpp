#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingPictures.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// A wall's pictures against the geometry in double precision, every pixel of them. Sampling
// truncates: a pixel shows the source pixel that its exact point lies in, unless the point is so
// near to that pixel's edge that single precision decides.

namespace {

/// In source pixels. Angles sum up to some thousand roundings of 6e-8 each. Together these could
/// reach 0.3 of a pixel in the largest picture here, but most cancel out, and what is left stays
/// below 0.003.
constexpr double kTolerance = 0.01;

bool IsIn(int index, double position) {
    const double fraction = position - index;
    return fraction >= -kTolerance && fraction <= 1.0 + kTolerance;
}

bool MayShow(const std::optional<PixelPlace>& place, const ExactLook& look, const Wall& wall) {
    const double margin = kTolerance / std::max(wall.srcWidth, wall.srcHeight);
    if (!place.has_value()) {
        return !look.IsInside(-margin);
    }
    return look.IsInside(margin) && IsIn(place->column, look.column) && IsIn(place->row, look.row);
}

void ExpectPictureShows(const std::vector<unsigned char>& frame, const Wall& wall,
                        int bytesPerPixel) {
    int shown = 0;
    for (int y = 0; y < wall.dstHeight; ++y) {
        for (int x = 0; x < wall.dstWidth; ++x) {
            const auto place =
                PlaceIn(frame.data() + y * wall.dstStride + x * bytesPerPixel, bytesPerPixel);
            const ExactLook look = LookOf(wall, x, y);
            ASSERT_TRUE(MayShow(place, look, wall))
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

template <class Family>
class WallMapping : public ::testing::Test {};

TYPED_TEST_SUITE(WallMapping, WallFamilies, WallFamilyNames);

TYPED_TEST(WallMapping, EveryPixelOfADirectPictureShowsItsDirection) {
    for (const Wall& wall : MappedWalls(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(ExpectPictureShows(
            DirectPicture<TypeParam>(wall, SourceOf<TypeParam>(wall)), wall, TypeParam::kBytes));
    }
}

TYPED_TEST(WallMapping, EveryPixelOfATablePictureShowsItsDirection) {
    for (const Wall& wall : MappedWalls(TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(ExpectPictureShows(
            TablePicture<TypeParam>(wall, SourceOf<TypeParam>(wall)), wall, TypeParam::kBytes));
    }
}

TYPED_TEST(WallMapping, EveryPixelOfTheRecommendedSizeShowsItsDirection) {
    Wall wall = PackedWall(1920, 1080, 1920, 763, TypeParam::kBytes);
    ASSERT_NO_FATAL_FAILURE(ExpectPictureShows(
        TablePicture<TypeParam>(wall, SourceOf<TypeParam>(wall)), wall, TypeParam::kBytes));
}

// By hand, on a frame whose middle is a pixel, in the two columns at 30 degrees to either side. The
// left of the picture shows the left of the source, the top its top.
TYPED_TEST(WallMapping, PictureIsUprightAndNotMirrored) {
    Wall wall = PackedWall(1001, 501, 4, 2, TypeParam::kBytes);
    wall.radiusX = wall.radiusY = 0.4501F;
    wall.wallViewAngle = 30.0F;
    // At 30 degrees to the side and 30 up: x = cos 30 * sin 30 = 0.4330, y = 0.5, r = 0.6614, which
    // is 41.41 degrees off the axis, 0.4601 of the radius and so 0.2071 of the frame. Of that,
    // 0.4330 / 0.6614 are across and 0.5 / 0.6614 up.
    const int across = 135;  // 0.1356 * 1000
    const int up = 78;       // 0.1566 * 500
    for (const auto& frame : {DirectPicture<TypeParam>(wall, SourceOf<TypeParam>(wall)),
                              TablePicture<TypeParam>(wall, SourceOf<TypeParam>(wall))}) {
        const auto at = [&](int x, int y) {
            return PlaceIn(frame.data() + y * wall.dstStride + x * TypeParam::kBytes,
                           TypeParam::kBytes);
        };
        EXPECT_EQ(at(1, 0), (PixelPlace{499 - across, 249 - up}));
        EXPECT_EQ(at(2, 0), (PixelPlace{500 + across, 249 - up}));
        EXPECT_EQ(at(1, 1), (PixelPlace{499 - across, 250 + up}));
        EXPECT_EQ(at(2, 1), (PixelPlace{500 + across, 250 + up}));
    }
}

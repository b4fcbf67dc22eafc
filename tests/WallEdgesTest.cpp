#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "support/WallFamilies.h"
#include "support/WallModel.h"

// The ends of a wall's range of sizes and lenses, by hand.

namespace {

/// The places that a picture shows, row by row.
using Places = std::vector<std::optional<PixelPlace>>;

}  // namespace

template <class Family>
class WallEdges : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    /// Those of the direct conversion and of the table's.
    static std::vector<Places> PlacesOfBoth(const Wall& wall) {
        std::vector<Places> both;
        const auto src = SourceOf<Family>(wall);
        for (const auto& frame :
             {DirectPicture<Family>(wall, src), TablePicture<Family>(wall, src)}) {
            Places places;
            for (int y = 0; y < wall.dstHeight; ++y) {
                for (int x = 0; x < wall.dstWidth; ++x) {
                    places.push_back(
                        PlaceIn(frame.data() + y * wall.dstStride + x * kBytes, kBytes));
                }
            }
            both.push_back(places);
        }
        return both;
    }

    static void ExpectPlaces(const Wall& wall, const Places& expected) {
        for (const Places& places : PlacesOfBoth(wall)) {
            EXPECT_EQ(places, expected) << wall;
        }
    }

    /// A lens of 101 by 101 pixels that reaches 40.5 of them to each side.
    static Wall RoundWall(int dstWidth, int dstHeight) {
        Wall wall = PackedWall(101, 101, dstWidth, dstHeight, kBytes);
        wall.radiusX = wall.radiusY = 0.405F;
        return wall;
    }
};

TYPED_TEST_SUITE(WallEdges, WallFamilies, WallFamilyNames);

// A quarter turn to the left is 40.5 pixels from the middle; at 45 degrees up or down that is
// 40.5 * sqrt(1/2) = 28.64 each way.
TYPED_TEST(WallEdges, WidthOf1LooksAQuarterTurnToTheLeft) {
    this->ExpectPlaces(this->RoundWall(1, 3),
                       {PixelPlace{21, 21}, PixelPlace{9, 50}, PixelPlace{21, 78}});
}

// In the middle 45 degrees up are half of the radius: 50 - 20.25 = 29.75.
TYPED_TEST(WallEdges, HeightOf1LooksUpByTheViewAngle) {
    this->ExpectPlaces(this->RoundWall(3, 1),
                       {PixelPlace{21, 21}, PixelPlace{50, 29}, PixelPlace{78, 21}});
    Wall wall = this->RoundWall(3, 1);
    // 50 - 40.5 * 20 / 90 = 41 in the middle; at the sides 40.5 * cos 20 = 38.06 across and
    // 40.5 * sin 20 = 13.85 up.
    wall.wallViewAngle = 20.01F;
    this->ExpectPlaces(wall, {PixelPlace{11, 36}, PixelPlace{50, 40}, PixelPlace{88, 36}});
}

TYPED_TEST(WallEdges, SizeOf1By1LooksUpAndToTheLeft) {
    this->ExpectPlaces(this->RoundWall(1, 1), {PixelPlace{21, 21}});
}

TYPED_TEST(WallEdges, WidthOf0OnlyClearsTheRows) {
    Wall wall = this->RoundWall(0, 3);
    wall.dstStride = 7;
    const auto src = SourceOf<TypeParam>(wall);
    std::vector<unsigned char> frame(4 * 7, 0xCD);
    TypeParam::ConvertByKernel(wall, src.data(), frame.data());
    std::vector<unsigned char> expected(4 * 7, 0);
    std::fill(expected.begin() + 3 * 7, expected.end(), static_cast<unsigned char>(0xCD));
    EXPECT_EQ(frame, expected);
}

TYPED_TEST(WallEdges, HeightOf0OrBelowLeavesTheOutputUntouched) {
    for (const int width : {0, 8}) {
        for (const int height : {0, -1, -1000}) {
            Wall wall = this->RoundWall(width, height);
            wall.dstStride = 40;
            const auto src = SourceOf<TypeParam>(wall);
            std::vector<unsigned char> frame(40, 0xCD);
            TypeParam::ConvertByKernel(wall, src.data(), frame.data());
            EXPECT_EQ(frame, std::vector<unsigned char>(40, 0xCD));
        }
    }
}

// Angles sum to 0 exactly in the middle of three: the axis has no direction in the image plane. Its
// neighbours are half a radius up and down, and a radius to either side.
TYPED_TEST(WallEdges, TheAxisOfA3By3PictureIsBlack) {
    this->ExpectPlaces(this->RoundWall(3, 3),
                       {PixelPlace{21, 21}, PixelPlace{50, 29}, PixelPlace{78, 21},  //
                        PixelPlace{9, 50}, std::nullopt, PixelPlace{90, 50},         //
                        PixelPlace{21, 78}, PixelPlace{50, 70}, PixelPlace{78, 78}});
    for (const float angle : {10.0F, 33.3F, 90.0F}) {
        Wall wall = this->RoundWall(3, 3);
        wall.wallViewAngle = angle;
        for (const Places& places : this->PlacesOfBoth(wall)) {
            EXPECT_FALSE(places[4].has_value()) << wall;
            EXPECT_EQ(std::count(places.begin(), places.end(), std::nullopt), 1) << wall;
        }
    }
}

// The source is white everywhere: the black is not its own.
TYPED_TEST(WallEdges, TheAxisIsZeroBytesUpToTheLast) {
    const Wall wall = this->RoundWall(3, 3);
    const std::vector<unsigned char> src(wall.SourceBytes(TypeParam::kBytes), 0xFF);
    std::vector<unsigned char> expected(wall.OutputBytes(), 0xFF);
    std::fill_n(expected.begin() + std::ptrdiff_t{4} * TypeParam::kBytes, TypeParam::kBytes,
                static_cast<unsigned char>(0));
    EXPECT_EQ(DirectPicture<TypeParam>(wall, src), expected);
    EXPECT_EQ(TablePicture<TypeParam>(wall, src), expected);
}

// The horizon's first column is a quarter turn off the axis, 0.5 of the width to the left, and the
// last one as much to the right. The millionth more is several times what rounding may take.
TYPED_TEST(WallEdges, RadiusOfOneHalfReachesTheFramesEdgesAndNoMoreDoesNot) {
    Wall wall = PackedWall(101, 101, 2, 3, TypeParam::kBytes);
    wall.radiusY = 0.405F;
    for (const bool isHalf : {true, false}) {
        wall.radiusX = isHalf ? 0.5F : 0.500001F;
        for (const Places& places : this->PlacesOfBoth(wall)) {
            const auto shown = [isHalf](int column) {
                return isHalf ? std::optional<PixelPlace>({column, 50}) : std::nullopt;
            };
            EXPECT_EQ(places[2], shown(0)) << wall;
            EXPECT_EQ(places[3], shown(100)) << wall;
        }
    }
}

// Straight up, by a view angle of 90, is 0.5 of the height above the middle.
TYPED_TEST(WallEdges, RadiusOfOneHalfReachesTheFramesTopAndNoMoreDoesNot) {
    Wall wall = PackedWall(101, 101, 8, 1, TypeParam::kBytes);
    wall.wallViewAngle = 90.0F;
    for (const bool isHalf : {true, false}) {
        wall.radiusY = isHalf ? 0.5F : 0.500001F;
        for (const Places& places : this->PlacesOfBoth(wall)) {
            for (int x = 0; x < 8; ++x) {
                const auto& place = places[static_cast<std::size_t>(x)];
                // By the middle columns the zenith is a rounding short of a quarter turn away.
                if (x == 0 || x == 7 || isHalf) {
                    EXPECT_EQ(place.has_value(), isHalf) << wall << ", column " << x;
                }
                EXPECT_TRUE(!place.has_value() || place->row == 0) << wall << ", column " << x;
            }
        }
    }
}

TYPED_TEST(WallEdges, ViewAngleOf90ShowsThePolesInTheFirstAndLastRow) {
    Wall wall = this->RoundWall(64, 20);
    wall.wallViewAngle = 90.0F;
    for (const Places& places : this->PlacesOfBoth(wall)) {
        for (std::size_t x = 0; x < 64; ++x) {
            ASSERT_TRUE(places[x].has_value() && places[19 * 64 + x].has_value()) << x;
            // The middle is 50.0, which may come out a rounding short.
            EXPECT_TRUE(places[x]->column == 49 || places[x]->column == 50) << x;
            EXPECT_EQ(places[x]->row, 9) << x;
            EXPECT_TRUE(places[19 * 64 + x]->column == 49 || places[19 * 64 + x]->column == 50)
                << x;
            EXPECT_EQ(places[19 * 64 + x]->row, 90) << x;
        }
    }
}

TYPED_TEST(WallEdges, RadiusBeyondTheFrameLeavesTheOuterPartsBlack) {
    for (const bool alongWidth : {true, false}) {
        Wall wall = PackedWall(200, 200, 72, 40, TypeParam::kBytes);
        wall.wallViewAngle = 80.0F;
        wall.radiusX = alongWidth ? 0.9F : 0.45F;
        wall.radiusY = alongWidth ? 0.45F : 0.9F;
        for (const Places& places : this->PlacesOfBoth(wall)) {
            std::size_t next = 0;
            for (int y = 0; y < wall.dstHeight; ++y) {
                for (int x = 0; x < wall.dstWidth; ++x) {
                    const ExactLook look = LookOf(wall, x, y);
                    // No pixel of this wall looks so near an edge that rounding decides.
                    ASSERT_EQ(look.IsInside(1e-5), look.IsInside(-1e-5)) << x << ", " << y;
                    ASSERT_EQ(places[next++].has_value(), look.IsInside(0.0)) << x << ", " << y;
                }
            }
            // 0.5 of 0.9 is 50 degrees, of 90 to the left and right on the horizon, and of 80 up
            // and down in the middle.
            const auto horizon = places.begin() + std::ptrdiff_t{20} * 72;
            EXPECT_NEAR(static_cast<double>(std::count(horizon, horizon + 72, std::nullopt)),
                        alongWidth ? 72 * 4.0 / 9.0 : 0.0, 2.0);
            int blackInTheMiddle = 0;
            for (std::size_t y = 0; y < 40; ++y) {
                blackInTheMiddle += places[y * 72 + 36].has_value() ? 0 : 1;
            }
            EXPECT_NEAR(blackInTheMiddle, alongWidth ? 0.0 : 40 * 3.0 / 8.0, 2.0);
        }
    }
}

TYPED_TEST(WallEdges, RadiusXOf0RepeatsTheMiddleColumn) {
    Wall wall = this->RoundWall(24, 6);
    wall.radiusX = 0.0F;
    for (const Places& places : this->PlacesOfBoth(wall)) {
        for (const auto& place : places) {
            ASSERT_TRUE(place.has_value());
            EXPECT_EQ(place->column, 50);
        }
    }
}

TYPED_TEST(WallEdges, RadiiOf0ShowTheMiddlePixel) {
    Wall wall = PackedWall(101, 75, 24, 6, TypeParam::kBytes);
    wall.radiusX = wall.radiusY = 0.0F;
    this->ExpectPlaces(wall, Places(std::size_t{24 * 6}, PixelPlace{50, 37}));
}

TYPED_TEST(WallEdges, SourcesOfOneColumnOrRowAreReadInIt) {
    for (const bool isColumn : {true, false}) {
        Wall wall = PackedWall(isColumn ? 1 : 101, isColumn ? 101 : 1, 2, 2, TypeParam::kBytes);
        wall.radiusX = wall.radiusY = 0.405F;
        const auto place = [isColumn](int index) {
            return isColumn ? PixelPlace{0, index} : PixelPlace{index, 0};
        };
        this->ExpectPlaces(wall, {place(21), isColumn ? place(21) : place(78),
                                  isColumn ? place(78) : place(21), place(78)});
    }
}

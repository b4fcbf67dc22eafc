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
class WallEdges : public FormTest<Family> {
protected:
    static constexpr int kBytes = Family::kBytes;

    /// What a way to make the panorama shows.
    struct Shown {
        Path path;
        Places places;
    };

    /// That of the table, and of the direct conversion where the form has one.
    static std::vector<Shown> ShownBoth(const Wall& wall) {
        const auto src = SourceOf<Family>(wall);
        std::vector<Shown> both{
            {Path::Table, PlacesIn(BuiltTablePicture<Family>(wall, src), wall)}};
        if (Family::kForm != KernelForm::AVX) {
            both.push_back({Path::Direct, PlacesIn(KernelPicture<Family>(wall, src), wall)});
        }
        return both;
    }

    static Places PlacesIn(const std::vector<unsigned char>& frame, const Wall& wall) {
        Places places;
        for (int y = 0; y < wall.dstHeight; ++y) {
            for (int x = 0; x < wall.dstWidth; ++x) {
                places.push_back(PlaceIn(frame.data() + y * wall.dstStride + x * kBytes, kBytes));
            }
        }
        return places;
    }

    static PixelPlace PlaceAt(double column, double row) {
        return {PixelShownAt(Family::kForm, column), PixelShownAt(Family::kForm, row)};
    }

    static void ExpectPlaces(const Wall& wall, const Places& expected) {
        for (const Shown& shown : ShownBoth(wall)) {
            EXPECT_EQ(shown.places, expected) << wall;
        }
    }

    /// Radii that a form is sure to find within the frame a quarter turn off the axis, and beyond
    /// it. Half of the frame is both, but for rounding, which in scalars is known to stay within.
    /// The arctangent has no error there, while the estimate of 1 / r has.
    static float RadiusWithin(Path path) {
        return Family::kForm == KernelForm::C ? 0.5F : 0.5F - Uncertainty(path);
    }
    static float RadiusBeyond(Path path) { return 0.5F + Uncertainty(path); }
    static float Uncertainty(Path path) {
        return Family::kForm != KernelForm::C && path == Path::Direct ? 0.0002F : 0.000001F;
    }

    /// A lens of 101 by 101 pixels that reaches 40.7 of them to each side.
    static Wall RoundWall(int dstWidth, int dstHeight) {
        Wall wall = PackedWall(101, 101, dstWidth, dstHeight, kBytes);
        wall.radiusX = wall.radiusY = 0.407F;
        return wall;
    }
};

TYPED_TEST_SUITE(WallEdges, Forms<WallFamilies>::Builders, WallFormNames);

template <class Family>
class WallFrameEdges : public WallEdges<Family> {};

TYPED_TEST_SUITE(WallFrameEdges, Forms<WallFamilies>::Direct, WallFormNames);

// A quarter turn to the left is 40.7 pixels from the middle; at 45 degrees up or down that is
// 40.7 * sqrt(1/2) = 28.78 each way.
TYPED_TEST(WallEdges, WidthOf1LooksAQuarterTurnToTheLeft) {
    this->ExpectPlaces(this->RoundWall(1, 3), {this->PlaceAt(21.22, 21.22), this->PlaceAt(9.3, 50),
                                               this->PlaceAt(21.22, 78.78)});
}

// In the middle 45 degrees up are half of the radius: 50 - 20.35 = 29.65.
TYPED_TEST(WallEdges, HeightOf1LooksUpByTheViewAngle) {
    this->ExpectPlaces(
        this->RoundWall(3, 1),
        {this->PlaceAt(21.22, 21.22), this->PlaceAt(50, 29.65), this->PlaceAt(78.78, 21.22)});
    Wall wall = this->RoundWall(3, 1);
    // 50 - 40.7 * 20.5 / 90 = 40.73 in the middle; at the sides 40.7 * cos 20.5 = 38.12 across and
    // 40.7 * sin 20.5 = 14.25 up.
    wall.wallViewAngle = 20.5F;
    this->ExpectPlaces(
        wall, {this->PlaceAt(11.88, 35.75), this->PlaceAt(50, 40.73), this->PlaceAt(88.12, 35.75)});
}

TYPED_TEST(WallEdges, SizeOf1By1LooksUpAndToTheLeft) {
    this->ExpectPlaces(this->RoundWall(1, 1), {this->PlaceAt(21.22, 21.22)});
}

TYPED_TEST(WallFrameEdges, WidthOf0OnlyClearsTheRows) {
    Wall wall = this->RoundWall(0, 3);
    wall.dstStride = 7;
    const auto src = SourceOf<TypeParam>(wall);
    std::vector<unsigned char> frame(4 * 7, 0xCD);
    TypeParam::ConvertByKernel(wall, src.data(), frame.data());
    std::vector<unsigned char> expected(4 * 7, 0);
    std::fill(expected.begin() + 3 * 7, expected.end(), static_cast<unsigned char>(0xCD));
    EXPECT_EQ(frame, expected);
}

TYPED_TEST(WallFrameEdges, HeightOf0OrBelowLeavesTheOutputUntouched) {
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
    const auto at = [](double column, double row) { return TestFixture::PlaceAt(column, row); };
    this->ExpectPlaces(this->RoundWall(3, 3),
                       {at(21.22, 21.22), at(50, 29.65), at(78.78, 21.22),  //
                        at(9.3, 50), std::nullopt, at(90.7, 50),            //
                        at(21.22, 78.78), at(50, 70.35), at(78.78, 78.78)});
    for (const float angle : {10.0F, 33.3F, 90.0F}) {
        Wall wall = this->RoundWall(3, 3);
        wall.wallViewAngle = angle;
        for (const auto& [path, places] : this->ShownBoth(wall)) {
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
    EXPECT_EQ(BuiltTablePicture<TypeParam>(wall, src), expected);
    if (TypeParam::kForm != KernelForm::AVX) {
        EXPECT_EQ(KernelPicture<TypeParam>(wall, src), expected);
    }
}

// The horizon's first column is a quarter turn off the axis, `radiusX` of the width to the left,
// and the last one as much to the right.
TYPED_TEST(WallEdges, RadiusOfOneHalfReachesTheFramesEdgesAndNoMoreDoesNot) {
    Wall wall = PackedWall(101, 101, 2, 3, TypeParam::kBytes);
    wall.radiusY = 0.407F;
    for (const Path path : {Path::Table, Path::Direct}) {
        for (const bool isWithin : {true, false}) {
            wall.radiusX = isWithin ? this->RadiusWithin(path) : this->RadiusBeyond(path);
            for (const auto& shown : this->ShownBoth(wall)) {
                const auto expected = [isWithin](int column) {
                    return isWithin ? std::optional<PixelPlace>({column, 50}) : std::nullopt;
                };
                if (shown.path == path) {
                    EXPECT_EQ(shown.places[2], expected(0)) << wall;
                    EXPECT_EQ(shown.places[3], expected(100)) << wall;
                }
            }
        }
    }
}

// Straight up, by a view angle of 90, is `radiusY` of the height above the middle.
TYPED_TEST(WallEdges, RadiusOfOneHalfReachesTheFramesTopAndNoMoreDoesNot) {
    Wall wall = PackedWall(101, 101, 8, 1, TypeParam::kBytes);
    wall.wallViewAngle = 90.0F;
    for (const Path path : {Path::Table, Path::Direct}) {
        for (const bool isWithin : {true, false}) {
            wall.radiusY = isWithin ? this->RadiusWithin(path) : this->RadiusBeyond(path);
            for (const auto& shown : this->ShownBoth(wall)) {
                for (std::size_t x = 0; x < 8 && shown.path == path; ++x) {
                    const auto& place = shown.places[x];
                    EXPECT_EQ(place.has_value(), isWithin) << wall << ", column " << x;
                    EXPECT_TRUE(!place.has_value() || place->row == 0) << wall << ", column " << x;
                }
            }
        }
    }
}

TYPED_TEST(WallEdges, ViewAngleOf90ShowsThePolesInTheFirstAndLastRow) {
    Wall wall = this->RoundWall(64, 20);
    wall.wallViewAngle = 90.0F;
    for (const auto& [path, places] : this->ShownBoth(wall)) {
        for (std::size_t x = 0; x < 64; ++x) {
            ASSERT_TRUE(places[x].has_value() && places[19 * 64 + x].has_value()) << x;
            // The middle is 50.0, which may come out a rounding short.
            const int least = this->PlaceAt(49.99, 0.0).column;
            EXPECT_TRUE(places[x]->column >= least && places[x]->column <= 50) << x;
            EXPECT_EQ(places[x]->row, 9) << x;
            EXPECT_TRUE(places[19 * 64 + x]->column >= least && places[19 * 64 + x]->column <= 50)
                << x;
            EXPECT_EQ(places[19 * 64 + x]->row, this->PlaceAt(0.0, 90.7).row) << x;
        }
    }
}

TYPED_TEST(WallEdges, RadiusBeyondTheFrameLeavesTheOuterPartsBlack) {
    for (const bool alongWidth : {true, false}) {
        Wall wall = PackedWall(200, 200, 72, 40, TypeParam::kBytes);
        wall.wallViewAngle = 80.0F;
        wall.radiusX = alongWidth ? 0.9F : 0.45F;
        wall.radiusY = alongWidth ? 0.45F : 0.9F;
        for (const auto& [path, places] : this->ShownBoth(wall)) {
            const double margin = ErrorOfFraction(TypeParam::kForm, path, 0.9F);
            std::size_t next = 0;
            int decided = 0;
            for (int y = 0; y < wall.dstHeight; ++y) {
                for (int x = 0; x < wall.dstWidth; ++x) {
                    const ExactLook look = LookOf(wall, x, y);
                    const bool isShown = places[next++].has_value();
                    if (look.IsInside(margin) == look.IsInside(-margin)) {
                        ASSERT_EQ(isShown, look.IsInside(0.0)) << x << ", " << y;
                        ++decided;
                    }
                }
            }
            // No pixel of this wall looks so near an edge that rounding decides; the lanes'
            // arctangent decides for a few.
            const int pixels = wall.dstWidth * wall.dstHeight;
            EXPECT_GE(decided, TypeParam::kForm == KernelForm::C ? pixels : pixels * 98 / 100);
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
    for (const auto& [path, places] : this->ShownBoth(wall)) {
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
        wall.radiusX = wall.radiusY = 0.407F;
        const auto place = [isColumn](double position) {
            const int index = PixelShownAt(TypeParam::kForm, position);
            return isColumn ? PixelPlace{0, index} : PixelPlace{index, 0};
        };
        const PixelPlace near = place(21.22);
        const PixelPlace far = place(78.78);
        this->ExpectPlaces(wall, {near, isColumn ? near : far, isColumn ? far : near, far});
    }
}

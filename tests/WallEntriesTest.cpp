#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <vector>

#include "support/UnusualFrames.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// What a wall's builders write into a table.

/// What a form's builder writes into a table.
template <class Family>
class WallEntries : public FormTest<Family> {
protected:
    static PixelPlace PlaceOf(int offset, const Wall& wall) {
        return {offset % wall.srcStride / Family::kBytes, offset / wall.srcStride};
    }
};

TYPED_TEST_SUITE(WallEntries, Forms<WallFamilies>::Builders, WallFormNames);

/// The builders of forms that have a direct conversion.
template <class Family>
class WallEntriesBesideDirectConversions : public WallEntries<Family> {};

TYPED_TEST_SUITE(WallEntriesBesideDirectConversions, Forms<WallFamilies>::Direct, WallFormNames);

TYPED_TEST(WallEntries, AreThoseOfThePlainLoop) {
    ForRandomWalls<TypeParam>(31338, [](const Wall& wall, const auto&) {
        ASSERT_EQ(TypeParam::BuildTable(wall), TypeParam::ExpectedEntries(wall));
    });
}

TYPED_TEST(WallEntries, OfBigTablesAreThoseOfThePlainLoop) {
    for (const float radius : {0.5F, 0.46F, 0.83F}) {
        for (const float angle : {45.0F, 90.0F}) {
            Wall wall = PackedWall(1920, 1080, 1920, 101, TypeParam::kBytes);
            wall.radiusX = radius;
            wall.radiusY = radius * 0.9F;
            wall.wallViewAngle = angle;
            ASSERT_TRUE(TypeParam::BuildTable(wall) == TypeParam::ExpectedEntries(wall)) << wall;
        }
    }
}

TYPED_TEST(WallEntries, TheOutputsStrideIsNoPartOfATable) {
    Wall wall = PackedWall(41, 37, 24, 8, TypeParam::kBytes);
    const auto table = TypeParam::BuildTable(wall);
    for (const int stride : {0, -7, 1, 100000}) {
        wall.dstStride = stride;
        EXPECT_EQ(TypeParam::BuildTable(wall), table) << stride;
    }
}

// The two group their products differently, and in lanes divide differently, which rounding shows
// here and there, and nowhere by more than one pixel. The estimate of 1 / r is off by a share of
// 1.5 * 2^-12 at most, a fifth of a pixel at the ends of these sides: it moves less than a fifth of
// all positions to another column, and as few to another row.
TYPED_TEST(WallEntriesBesideDirectConversions, NowAndThenLeadBesideThePixelOfTheOther) {
    const bool isScalar = TypeParam::kForm == KernelForm::C;
    const double margin = isScalar ? 0.0 : ErrorOfFraction(TypeParam::kForm, Path::Direct, 0.9F);
    int differences = 0;
    for (const float radius : {0.5F, 0.45F, 0.3F, 0.9F}) {
        Wall wall = PackedWall(1024, 1024, 512, 128, TypeParam::kBytes);
        wall.radiusX = radius;
        wall.radiusY = radius * 0.95F;
        const auto table = TypeParam::BuildTable(wall);
        const auto direct = KernelPicture<TypeParam>(wall, SourceOf<TypeParam>(wall));
        for (int i = 0; i < wall.dstWidth * wall.dstHeight; ++i) {
            const int entry = table[static_cast<std::size_t>(i)];
            const auto place = PlaceIn(&direct[static_cast<std::size_t>(i * TypeParam::kBytes)],
                                       TypeParam::kBytes);
            if (place.has_value() != (entry != kNoSource)) {
                const ExactLook look = LookOf(wall, i % wall.dstWidth, i / wall.dstWidth);
                ASSERT_TRUE(!isScalar && look.IsInside(margin) && !look.IsInside(-margin)) << wall;
                continue;
            }
            if (place.has_value()) {
                const PixelPlace tablePlace = this->PlaceOf(entry, wall);
                ASSERT_LE(std::abs(tablePlace.column - place->column), 1) << wall;
                ASSERT_LE(std::abs(tablePlace.row - place->row), 1) << wall;
                differences += tablePlace == *place ? 0 : 1;
            }
        }
    }
    const int pixels = 4 * 512 * 128;
    EXPECT_GT(differences, 0);
    EXPECT_LT(differences, isScalar ? pixels / 100 : pixels * 2 / 5);
}

TYPED_TEST(WallEntries, TheSourcesFirstPixelIsASource) {
    const Wall wall = PackedWall(1, 1, 8, 2, TypeParam::kBytes);
    EXPECT_EQ(TypeParam::BuildTable(wall), std::vector<int>(std::size_t{8 * 2}, 0));
}

TYPED_TEST(WallEntries, LensThatIsNoNumberHasNoEntryInTheFrame) {
    for (float Wall::*const field :
         {static_cast<float Wall::*>(&Wall::radiusX), static_cast<float Wall::*>(&Wall::radiusY),
          &Wall::wallViewAngle}) {
        Wall wall = PackedWall(20, 20, 16, 6, TypeParam::kBytes);
        for (const float value :
             {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
            wall.*field = value;
            EXPECT_EQ(TypeParam::BuildTable(wall), std::vector<int>(std::size_t{16 * 6}, kNoSource))
                << wall;
        }
    }
}

TYPED_TEST(WallEntries, SourceWithoutPixelsHasNoEntryInTheFrame) {
    const Wall sizes = PackedWall(41, 37, 24, 8, TypeParam::kBytes);
    for (const PanoramaFrames& frames : WithEmptySources(sizes)) {
        EXPECT_EQ(TypeParam::BuildTable(Wall{frames}),
                  std::vector<int>(std::size_t{24 * 8}, kNoSource));
    }
}

#include <gtest/gtest.h>

#include <vector>

#include "support/WallFamilies.h"
#include "support/WallModel.h"

// Walls on sources with a side so long that a pixel's place tells the last bits of its position:
// whatever is rounded otherwise shows.

template <class Family>
class WallPrecision : public FormTest<Family> {
protected:
    /// A source of one row or of one column.
    static Wall LongWall(bool isRow, int length, int dstWidth, int dstHeight) {
        return PackedWall(isRow ? length : 1, isRow ? 1 : length, dstWidth, dstHeight,
                          Family::kBytes);
    }
};

TYPED_TEST_SUITE(WallPrecision, Forms<WallFamilies>::Direct, WallFormNames);

template <class Family>
class WallTablePrecision : public WallPrecision<Family> {};

TYPED_TEST_SUITE(WallTablePrecision, Forms<WallFamilies>::Builders, WallFormNames);

TYPED_TEST(WallPrecision, DirectConversionsOfLongSidesGiveTheBitsOfThePlainLoop) {
    WallGenerator generator(4);
    for (const bool isRow : {true, false}) {
        Wall wall = this->LongWall(isRow, 300007, 88, 41);
        const auto src = generator.NextBytes(wall.SourceBytes(TypeParam::kBytes));
        for (const float radius : {0.5F, 0.37F, 0.61F}) {
            for (const float angle : {10.0F, 45.0F, 71.3F, 90.0F}) {
                wall.radiusX = radius;
                wall.radiusY = radius * 0.9F;
                wall.wallViewAngle = angle;
                ASSERT_TRUE(KernelPicture<TypeParam>(wall, src) ==
                            ExpectedDirectPicture<TypeParam>(wall, src, TypeParam::kForm))
                    << wall;
            }
        }
    }
}

TYPED_TEST(WallTablePrecision, TablesOfLongSidesHaveTheEntriesOfThePlainLoop) {
    for (const bool isRow : {true, false}) {
        for (const float radius : {0.5F, 0.37F, 0.61F}) {
            for (const float angle : {10.0F, 45.0F, 71.3F, 90.0F}) {
                Wall wall = this->LongWall(isRow, 300007, 88, 41);
                wall.radiusX = radius;
                wall.radiusY = radius * 0.9F;
                wall.wallViewAngle = angle;
                ASSERT_EQ(TypeParam::BuildTable(wall), TypeParam::ExpectedEntries(wall)) << wall;
            }
        }
    }
}

// A scalar table's sines and cosines, rounded from double precision, differ from single precision's
// own for a few angles in a thousand only.
TYPED_TEST(WallTablePrecision, TablesOfEveryLatitudeStepHaveTheEntriesOfThePlainLoop) {
    for (int quarters = 40; quarters <= 360; ++quarters) {
        for (int rows = 1; rows <= 24; ++rows) {
            Wall wall = this->LongWall(true, 16777215, 3, rows);
            wall.wallViewAngle = static_cast<float>(quarters) / 4.0F;
            ASSERT_EQ(TypeParam::BuildTable(wall), TypeParam::ExpectedEntries(wall)) << wall;
        }
    }
}

TYPED_TEST(WallTablePrecision, TablesOfEveryLongitudeStepHaveTheEntriesOfThePlainLoop) {
    for (int columns = 1; columns <= 200; ++columns) {
        const Wall wall = this->LongWall(true, 16777215, columns, 2);
        ASSERT_EQ(TypeParam::BuildTable(wall), TypeParam::ExpectedEntries(wall)) << wall;
    }
}

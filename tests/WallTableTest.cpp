#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>
#include <vector>

#include "support/FailingAllocations.h"
#include "support/UnusualFrames.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// What the converters of a wall make of their tables.

template <class Family>
class WallTables : public ::testing::Test {
protected:
    static Wall SmallWall() {
        Wall wall = PackedWall(41, 37, 24, 8, Family::kBytes);
        wall.srcStride += 2;
        wall.dstStride += 5;
        return wall;
    }
};

TYPED_TEST_SUITE(WallTables, WallFamilies, WallFamilyNames);

TYPED_TEST(WallTables, ConversionsGiveTheBitsOfThePlainLoopAndKeepThePadding) {
    typename TypeParam::TableConverter converter;
    ForRandomWalls<TypeParam>(20240503, [&](const Wall& wall, const auto& src) {
        TypeParam::Init(converter, wall);
        ASSERT_EQ(PictureOf<TypeParam>(converter, wall, src),
                  ExpectedTablePicture<TypeParam>(wall, src));
    });
}

// Wide ones are gone through in several tiles.
TYPED_TEST(WallTables, WideConversionsGiveTheBitsOfThePlainLoop) {
    for (const int width : {2048, 2056, 4104, 5000}) {
        Wall wall = PackedWall(411, 307, width, 70, TypeParam::kBytes);
        wall.dstStride += 3;
        wall.radiusX = 0.55F;
        const auto src = SourceOf<TypeParam>(wall);
        ASSERT_TRUE(TablePicture<TypeParam>(wall, src) ==
                    ExpectedTablePicture<TypeParam>(wall, src))
            << wall;
    }
}

TYPED_TEST(WallTables, PixelsWithoutASourceComeOutAsZeroBytes) {
    Wall wall = this->SmallWall();
    wall.radiusX = 1.0F;
    const std::vector<unsigned char> src(wall.SourceBytes(TypeParam::kBytes), 0x55);
    const auto table = TableOf<TypeParam>(FormOfTables(), wall);
    const auto frame = TablePicture<TypeParam>(wall, src);
    EXPECT_GT(std::count(table.begin(), table.end(), kNoSource), 0);
    EXPECT_LT(std::count(table.begin(), table.end(), kNoSource), 24 * 8);
    for (int y = 0; y < wall.dstHeight; ++y) {
        for (int x = 0; x < wall.dstWidth * TypeParam::kBytes; ++x) {
            const int entry =
                table[static_cast<std::size_t>(y * wall.dstWidth + x / TypeParam::kBytes)];
            ASSERT_EQ(frame[static_cast<std::size_t>(y * wall.dstStride + x)],
                      entry == kNoSource ? 0 : 0x55)
                << x << ", " << y;
        }
    }
}

TYPED_TEST(WallTables, ShowTheSourcesFirstPixel) {
    const Wall wall = PackedWall(1, 1, 8, 2, TypeParam::kBytes);
    const std::vector<unsigned char> src(wall.SourceBytes(TypeParam::kBytes), 0x55);
    EXPECT_EQ(TablePicture<TypeParam>(wall, src),
              std::vector<unsigned char>(wall.OutputBytes(), 0x55));
}

TYPED_TEST(WallTables, OneTableServesEveryFrameOfItsSizes) {
    const Wall wall = this->SmallWall();
    typename TypeParam::TableConverter converter;
    TypeParam::Init(converter, wall);
    WallGenerator generator(5);
    for (int i = 0; i < 3; ++i) {
        const auto src = generator.NextBytes(wall.SourceBytes(TypeParam::kBytes));
        EXPECT_EQ(PictureOf<TypeParam>(converter, wall, src),
                  ExpectedTablePicture<TypeParam>(wall, src));
    }
}

TYPED_TEST(WallTables, ConvertersCanNotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<typename TypeParam::TableConverter>);
    EXPECT_FALSE(std::is_copy_assignable_v<typename TypeParam::TableConverter>);
    EXPECT_FALSE(std::is_copy_constructible_v<typename TypeParam::DirectConverter>);
    EXPECT_FALSE(std::is_copy_assignable_v<typename TypeParam::DirectConverter>);
}

TYPED_TEST(WallTables, ConversionBeforeInitTouchesNothing) {
    typename TypeParam::TableConverter converter;
    ExpectWritesNothing(converter);
}

TYPED_TEST(WallTables, LaterInitReplacesSizesLensAndTable) {
    Wall later = PackedWall(29, 53, 40, 6, TypeParam::kBytes);
    later.srcStride += 3;
    later.dstStride += 1;
    later.radiusX = 0.7F;
    later.radiusY = 0.4F;
    later.wallViewAngle = 70.0F;
    typename TypeParam::TableConverter converter;
    TypeParam::Init(converter, this->SmallWall());
    TypeParam::Init(converter, later);
    const auto src = SourceOf<TypeParam>(later);
    EXPECT_EQ(PictureOf<TypeParam>(converter, later, src),
              ExpectedTablePicture<TypeParam>(later, src));
}

TYPED_TEST(WallTables, SecondInitWithTheSameValuesBuildsTheSameTableAnew) {
    const Wall wall = this->SmallWall();
    const auto src = SourceOf<TypeParam>(wall);
    typename TypeParam::TableConverter converter;
    TypeParam::Init(converter, wall);
    const auto picture = PictureOf<TypeParam>(converter, wall, src);
    const AllocationWatch watch;
    TypeParam::Init(converter, wall);
    // The table, and the builder's sines and cosines at least.
    EXPECT_GE(watch.Requests(), 3);
    EXPECT_EQ(PictureOf<TypeParam>(converter, wall, src), picture);
}

TYPED_TEST(WallTables, OutputWithoutAreaTakesNoMemoryAndEndsTheEarlierTable) {
    for (const PanoramaFrames& frames : WithEmptyOutputs(this->SmallWall())) {
        const Wall empty{frames};
        typename TypeParam::TableConverter converter;
        const AllocationWatch watch;
        TypeParam::Init(converter, empty);
        EXPECT_EQ(watch.Requests(), 0) << empty;
        TypeParam::Init(converter, this->SmallWall());
        const int blocksOfTable = watch.BlocksTaken();
        TypeParam::Init(converter, empty);
        EXPECT_LT(watch.BlocksTaken(), blocksOfTable);
        ExpectWritesNothing(converter);
    }
}

TYPED_TEST(WallTables, SourceWithoutPixelsGivesABlackPicture) {
    const std::vector<unsigned char> nothing;
    for (const PanoramaFrames& frames : WithEmptySources(this->SmallWall())) {
        const Wall wall{frames};
        EXPECT_EQ(TablePicture<TypeParam>(wall, nothing),
                  ExpectedTablePicture<TypeParam>(wall, nothing))
            << wall;
        EXPECT_EQ(DirectPicture<TypeParam>(wall, nothing),
                  std::vector<unsigned char>(wall.OutputBytes(), 0))
            << wall;
    }
}

TEST(WallTablesOfOtherPixels, BitsOtherThan24BuildForPixelsOf4Bytes) {
    using Family = WallFamily<32>;
    const Wall wall = PackedWall(41, 37, 24, 8, 4);
    const auto src = SourceOf<Family>(wall);
    for (const int bits : {0, 32, 8, 25, -24}) {
        Family::TableConverter converter;
        Family::Init(converter, wall, bits);
        EXPECT_EQ(PictureOf<Family>(converter, wall, src), ExpectedTablePicture<Family>(wall, src))
            << "bits " << bits;
    }
}

TEST(WallTablesOfOtherPixels, InitWithOtherBitsBuildsForTheOtherPixelSize) {
    const Wall narrow = PackedWall(41, 37, 24, 8, 3);
    const Wall wide = PackedWall(41, 37, 24, 8, 4);
    FrontwardFisheyeAlgoNS::CPanoramaConverter converter;
    for (int round = 0; round < 2; ++round) {
        WallFamily<24>::Init(converter, narrow);
        EXPECT_EQ(PictureOf<WallFamily<24>>(converter, narrow, SourceOf<WallFamily<24>>(narrow)),
                  ExpectedTablePicture<WallFamily<24>>(narrow, SourceOf<WallFamily<24>>(narrow)));
        WallFamily<32>::Init(converter, wide);
        EXPECT_EQ(PictureOf<WallFamily<32>>(converter, wide, SourceOf<WallFamily<32>>(wide)),
                  ExpectedTablePicture<WallFamily<32>>(wide, SourceOf<WallFamily<32>>(wide)));
    }
}

TEST(WallTablesOfOtherPixels, A32BitConversionByA24BitTableWritesNothing) {
    FrontwardFisheyeAlgoNS::CPanoramaConverter converter;
    WallFamily<24>::Init(converter, PackedWall(41, 37, 24, 8, 3));
    // Any access through it ends the process.
    unsigned char* const nowhere = nullptr;
    converter.CvtRGB32(nowhere, nowhere);
}

// The first three bytes of each pixel of the source, packed as the output's stride has them.
TEST(WallTablesOfOtherPixels, A24BitConversionByA32BitTableTakesThePixelsFirstBytes) {
    const Wall wall = PackedWall(41, 37, 24, 8, 4);
    const auto src = SourceOf<WallFamily<32>>(wall);
    std::vector<unsigned char> expected(wall.OutputBytes(), 0xCD);
    Paint(TableOffsets(wall, 4), wall, 3, RowStart::Kept, src, expected);
    FrontwardFisheyeAlgoNS::CPanoramaConverter converter;
    WallFamily<32>::Init(converter, wall);
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    converter.CvtRGB24(src.data(), frame.data());
    EXPECT_EQ(frame, expected);
}

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"

// What sets a dual panorama's table apart from a full one's, and its conversion without a pan.

namespace {

constexpr unsigned char kFill = 0xCD;

}  // namespace

template <class Family>
class DualTables : public FormTest<Family> {
protected:
    static constexpr int kBytes = Family::kBytes;
    static constexpr bool kIsTableMount = Family::kMount == Mount::Table;

    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, kBytes);
    }

    static std::vector<int> RowsOf(const std::vector<int>& table, const Ring& ring, int first,
                                   int end) {
        return {table.begin() + first * ring.dstWidth, table.begin() + end * ring.dstWidth};
    }

    static PixelPlace PlaceOf(int offset, const Ring& ring) {
        return {offset % ring.srcStride / kBytes, offset / ring.srcStride};
    }

    static std::vector<int> Nothing(int entries) {
        return std::vector<int>(static_cast<std::size_t>(entries), kNoSource);
    }
};

TYPED_TEST_SUITE(DualTables, Forms<DualFamilies>::Builders, RingFormNames);

TYPED_TEST(DualTables, EveryHeightHasTheEntriesOfThePlainLoop) {
    for (int height = 1; height <= 41; ++height) {
        Ring ring = PackedRing(97, 83, 56, height, TypeParam::kBytes);
        ring.radiusX = 0.53F;
        ring.innerRadiusRatio = 0.15F;
        EXPECT_EQ(TypeParam::BuildTable(ring), TypeParam::ExpectedEntries(ring)) << ring;
    }
}

TYPED_TEST(DualTables, HeightOf1HasNothingButEntriesWithoutASource) {
    const Ring ring = PackedRing(20, 20, 16, 1, TypeParam::kBytes);
    EXPECT_EQ(TypeParam::BuildTable(ring), this->Nothing(16));
}

TYPED_TEST(DualTables, OddLastRowHasNoSourceAndTheOthersAreThoseOfTheEvenHeight) {
    for (const int height : {3, 7, 31}) {
        Ring ring = PackedRing(61, 47, 24, height, TypeParam::kBytes);
        const auto odd = TypeParam::BuildTable(ring);
        EXPECT_EQ(this->RowsOf(odd, ring, height - 1, height), this->Nothing(24));
        Ring even = ring;
        even.dstHeight = height - 1;
        EXPECT_EQ(this->RowsOf(odd, ring, 0, height - 1), TypeParam::BuildTable(even));
    }
}

// Of five columns and one row for each half, at the rim of a lens within a frame whose centre is a
// pixel: 50 + 30.3 and 100 - 50.6, each with room for the rounding of a quarter turn's cosine.
TYPED_TEST(DualTables, HalvesRunOverTheTopAndUnderTheLens) {
    Ring ring = PackedRing(101, 201, 5, 2, TypeParam::kBytes);
    ring.innerRadiusRatio = 1.0F;
    ring.radiusX = 0.303F;
    ring.radiusY = 0.253F;
    const auto shown = [](double position) { return PixelShownAt(TypeParam::kForm, position); };
    const PixelPlace right{shown(80.3), 100};
    const PixelPlace top{50, shown(49.4)};
    const PixelPlace left{shown(19.7), 100};
    const PixelPlace bottom{50, shown(150.6)};
    const bool isTable = this->kIsTableMount;
    const std::vector<std::pair<int, PixelPlace>> expected = {
        {0, isTable ? right : left}, {2, top},        {4, isTable ? left : right},
        {5, isTable ? left : right}, {5 + 2, bottom}, {5 + 4, isTable ? right : left}};
    const auto table = TypeParam::BuildTable(ring);
    for (const auto& [entry, place] : expected) {
        const PixelPlace actual = this->PlaceOf(table[static_cast<std::size_t>(entry)], ring);
        EXPECT_LE(std::abs(actual.column - place.column), place.column == 50 ? 1 : 0) << entry;
        EXPECT_LE(std::abs(actual.row - place.row), place.row == 100 ? 1 : 0) << entry;
    }
}

// Truncation goes to the upper left on both sides, so a pixel and its opposite add up to the last
// place or to one less. Two nearest pixels add up to it, but for positions that lie half way.
TYPED_TEST(DualTables, LowerHalfShowsThePointsOppositeThoseOfTheUpper) {
    Ring ring = PackedRing(203, 161, 96, 42, TypeParam::kBytes);
    ring.srcStride += 7;
    ring.radiusX = 0.49F;
    ring.radiusY = 0.37F;
    const auto table = TypeParam::BuildTable(ring);
    const std::size_t half = table.size() / 2;
    std::size_t exact = 0;
    for (std::size_t i = 0; i < half; ++i) {
        ASSERT_NE(table[i], kNoSource);
        ASSERT_NE(table[half + i], kNoSource);
        const PixelPlace upper = this->PlaceOf(table[i], ring);
        const PixelPlace lower = this->PlaceOf(table[half + i], ring);
        const int columns = upper.column + lower.column;
        const int rows = upper.row + lower.row;
        const int most = TypeParam::kForm == KernelForm::C ? 0 : 1;
        EXPECT_TRUE(columns >= 201 && columns <= 202 + most) << "entry " << i;
        EXPECT_TRUE(rows >= 159 && rows <= 160 + most) << "entry " << i;
        exact += columns == 202 && rows == 160 ? 1 : 0;
    }
    if (TypeParam::kForm != KernelForm::C) {
        EXPECT_GT(exact, half * 99 / 100);
    }
}

TYPED_TEST(DualTables, PointBeyondTheFrameTakesItsOppositeWithIt) {
    Ring ring = PackedRing(90, 70, 64, 20, TypeParam::kBytes);
    ring.radiusX = 0.8F;
    ring.radiusY = 0.7F;
    const auto table = TypeParam::BuildTable(ring);
    const std::size_t half = table.size() / 2;
    for (std::size_t i = 0; i < half; ++i) {
        EXPECT_EQ(table[i] == kNoSource, table[half + i] == kNoSource) << "entry " << i;
    }
    EXPECT_GT(std::count(table.begin(), table.end(), kNoSource), 100);
    EXPECT_LT(std::count(table.begin(), table.end(), kNoSource), 1000);
}

// The rows are as far apart as the panorama of half the height has them, and not as the whole one.
TYPED_TEST(DualTables, EachHalfGoesFromTheFirstRadiusToTheLast) {
    Ring ring = PackedRing(1001, 1001, 8, 10, TypeParam::kBytes);
    ring.radiusX = ring.radiusY = 0.4003F;
    ring.innerRadiusRatio = 0.25F;
    const auto table = TypeParam::BuildTable(ring);
    // Column 0 looks to one side: 500 +- 400.3 at the rim, 500 +- 100.075 at the inner ring.
    const int side = this->kIsTableMount ? 1 : -1;
    for (int y = 0; y < 10; ++y) {
        const double share = y % 5 / 4.0;
        const double inner = this->kIsTableMount ? 1.0 - share : share;
        const double radius = 400.3 - inner * 300.225;
        const double column = 500.0 + (y < 5 ? side : -side) * radius;
        const PixelPlace place = this->PlaceOf(table[static_cast<std::size_t>(y * 8)], ring);
        EXPECT_EQ(place.column, PixelShownAt(TypeParam::kForm, column)) << "row " << y;
    }
}

// The angles, radii and rounding of the direct conversion at pan 0.
template <class Family>
class DualTablesBesideDirectConversions : public DualTables<Family> {};

TYPED_TEST_SUITE(DualTablesBesideDirectConversions, Forms<DualFamilies>::Direct, RingFormNames);

TYPED_TEST(DualTablesBesideDirectConversions, ShowTheSamePictureOnBothMounts) {
    for (const float ratio : {0.0F, 0.3F, 0.8F}) {
        for (const int side : {223, 300}) {
            Ring ring = PackedRing(side + 78, side, 120, 34, TypeParam::kBytes);
            ring.innerRadiusRatio = ratio;
            ring.radiusX = 0.61F;
            const auto src = this->SourceOf(ring);
            EXPECT_EQ(BuiltTablePicture<TypeParam>(ring, src),
                      KernelPicture<TypeParam>(ring, 0.0F, src))
                << ring;
        }
    }
}

template <class Family>
class DualTableConversions : public ::testing::Test {
protected:
    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(DualTableConversions, DualFamilies, RingFamilyNames);

TYPED_TEST(DualTableConversions, WithoutAPanWritesAnOddLastRowAsZeroBytes) {
    for (const int height : {1, 3, 9}) {
        Ring ring = PackedRing(61, 47, 24, height, TypeParam::kBytes);
        ring.dstStride += 5;
        const auto frame = TablePicture<TypeParam>(ring, this->SourceOf(ring));
        const auto lastRow = frame.end() - ring.dstStride;
        EXPECT_EQ(std::count(lastRow, frame.end() - 5, 0), 24 * TypeParam::kBytes);
        EXPECT_EQ(std::count(frame.end() - 5, frame.end(), kFill), 5);
        EXPECT_EQ(TablePicture<TypeParam>(ring, this->SourceOf(ring), 0.0F), frame);
        EXPECT_EQ(TablePicture<TypeParam>(ring, this->SourceOf(ring), -20.0F), frame);
    }
}

TYPED_TEST(DualTableConversions, WithAPanLeavesAnOddLastRowAsItWas) {
    for (const int height : {1, 3, 9}) {
        Ring ring = PackedRing(61, 47, 24, height, TypeParam::kBytes);
        ring.dstStride += 5;
        for (const float pan : {1.1920929e-07F, 33.0F, 180.0F, 270.0F, 360.0F}) {
            const auto frame = TablePicture<TypeParam>(ring, this->SourceOf(ring), pan);
            EXPECT_EQ(std::count(frame.end() - ring.dstStride, frame.end(), kFill), ring.dstStride)
                << "height " << height << ", pan " << pan;
        }
    }
}

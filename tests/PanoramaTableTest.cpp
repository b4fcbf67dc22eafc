#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// What the builders write into a table.

template <class Family>
class PanoramaTables : public FormTest<Family> {
public:
    static constexpr bool kIsTableMount = Family::kMount == Mount::Table;

    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }

    static PixelPlace PlaceOf(int offset, const Ring& ring) {
        return {offset % ring.srcStride / Family::kBytes, offset / ring.srcStride};
    }

    /// A lens within the frame, away from its edges by more than single precision loses.
    static Ring InnerRing() {
        Ring ring = PackedRing(203, 161, 96, 21, Family::kBytes);
        ring.srcStride += 7;
        ring.radiusX = 0.49F;
        ring.radiusY = 0.37F;
        ring.innerRadiusRatio = 0.2F;
        return ring;
    }
};

TYPED_TEST_SUITE(PanoramaTables, Forms<RingFamilies>::Builders, RingFormNames);

// What holds for full and dual panoramas alike.
template <class Family>
class PanoramaEntries : public PanoramaTables<Family> {};

TYPED_TEST_SUITE(PanoramaEntries, Forms<PanoramaFamilies>::Builders, RingFormNames);

TYPED_TEST(PanoramaEntries, EntriesAreThoseOfThePlainLoop) {
    RingGenerator generator(31337);
    for (int i = 0; i < 400; ++i) {
        const Ring ring = generator.NextRing(TypeParam::kBytes);
        ASSERT_EQ(TypeParam::BuildTable(ring), TypeParam::ExpectedEntries(ring))
            << "case " << i << ": " << ring;
    }
}

TYPED_TEST(PanoramaEntries, BigTablesHaveTheEntriesOfThePlainLoop) {
    for (const float radius : {0.5F, 0.46F, 0.83F}) {
        Ring ring = PackedRing(1080, 1080, 2160, 135, TypeParam::kBytes);
        ring.radiusX = radius;
        ring.radiusY = radius * 0.9F;
        EXPECT_TRUE(TypeParam::BuildTable(ring) == TypeParam::ExpectedEntries(ring)) << ring;
    }
}

// Sides of millions of pixels tell a scalar table's sines and cosines of double precision, rounded,
// from those of single precision, which differ in a hundredth of the columns by the last bit, and
// the lanes' from both.
TYPED_TEST(PanoramaEntries, LongSidesTellTheSinesAndCosinesLastBits) {
    const Ring high = PackedRing(1, 4000001, 20000, 2, TypeParam::kBytes);
    EXPECT_TRUE(TypeParam::BuildTable(high) == TypeParam::ExpectedEntries(high));
    const Ring wide = PackedRing(4000001, 1, 20000, 2, TypeParam::kBytes);
    EXPECT_TRUE(TypeParam::BuildTable(wide) == TypeParam::ExpectedEntries(wide));
}

TYPED_TEST(PanoramaEntries, PixelSizeIsTheFactorOfTheColumn) {
    Ring ring = this->InnerRing();
    ring.srcStride = 4 * ring.srcWidth + 1;
    ring.dstHeight = 22;
    const auto table = TypeParam::BuildTable(ring);
    const auto plain = TypeParam::ExpectedEntries(ring, 1);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const int column = plain[i] % ring.srcStride;
        EXPECT_EQ(table[i], plain[i] + (TypeParam::kBytes - 1) * column) << "entry " << i;
    }
}

TYPED_TEST(PanoramaEntries, OutputStrideIsNoPartOfATable) {
    Ring ring = this->InnerRing();
    const auto table = TypeParam::BuildTable(ring);
    for (const int stride : {0, 1, -7, 100000}) {
        ring.dstStride = stride;
        EXPECT_EQ(TypeParam::BuildTable(ring), table) << "stride " << stride;
    }
}

TYPED_TEST(PanoramaEntries, Offset0IsASampledPixel) {
    const Ring ring = PackedRing(1, 1, 8, 4, TypeParam::kBytes);
    EXPECT_EQ(TypeParam::BuildTable(ring), std::vector<int>(8 * 4, 0));
    const std::vector<unsigned char> src(static_cast<std::size_t>(TypeParam::kBytes), 0x5A);
    EXPECT_EQ(TablePicture<TypeParam>(ring, src),
              std::vector<unsigned char>(ring.OutputBytes(), 0x5A));
}

TYPED_TEST(PanoramaEntries, LensThatIsNoNumberHasNoEntryInTheFrame) {
    for (float Ring::*const radius :
         {static_cast<float Ring::*>(&Ring::radiusX), static_cast<float Ring::*>(&Ring::radiusY)}) {
        Ring ring = PackedRing(20, 20, 16, 6, TypeParam::kBytes);
        ring.*radius = std::numeric_limits<float>::quiet_NaN();
        EXPECT_EQ(TypeParam::BuildTable(ring), std::vector<int>(16 * 6, kNoSource));
    }
}

TYPED_TEST(PanoramaEntries, SourceWithoutPixelsHasNoEntryInTheFrame) {
    for (const auto& [width, height] : {std::pair{0, 37}, {41, 0}, {0, 0}}) {
        const Ring ring = PackedRing(width, height, 24, 8, TypeParam::kBytes);
        EXPECT_EQ(TypeParam::BuildTable(ring), std::vector<int>(24 * 8, kNoSource)) << ring;
    }
}

TYPED_TEST(PanoramaTables, RadiiWithinTheFrameLeaveNoEntryOutside) {
    for (const float ratio : {0.0F, 0.33F, 0.8F}) {
        for (const float radius : {0.0F, 0.3F, 0.4999F}) {
            Ring ring = PackedRing(333, 257, 256, 77, TypeParam::kBytes);
            ring.radiusX = ring.radiusY = radius;
            ring.innerRadiusRatio = ratio;
            const auto table = TypeParam::BuildTable(ring);
            EXPECT_EQ(std::count(table.begin(), table.end(), kNoSource), 0) << ring;
        }
    }
}

// On a ceiling the rim is row 0, whose radius is exact. On a table it is the last row, which the
// radius reaches by steps and may pass by a rounding, where the axes meet the frame's edges.
TYPED_TEST(PanoramaTables, RadiusOfHalfTheFrameLeavesAtMostAxisPixelsOfATablesLastRowOutside) {
    int outsideAtSource1080 = 0;
    for (const int side : {360, 720, 1000, 1080, 1200}) {
        const Ring ring = PackedRing(side, side, 2 * side, side / 2, TypeParam::kBytes);
        const auto table = TypeParam::BuildTable(ring);
        for (int i = 0; i < static_cast<int>(table.size()); ++i) {
            if (table[static_cast<std::size_t>(i)] != kNoSource) {
                continue;
            }
            ASSERT_TRUE(this->kIsTableMount);
            ASSERT_EQ(i / ring.dstWidth, ring.dstHeight - 1);
            const double quarter = 4.0 * (i % ring.dstWidth) / (ring.dstWidth - 1);
            const double columnsFromAxis =
                std::fabs(quarter - std::round(quarter)) * (ring.dstWidth - 1) / 4.0;
            EXPECT_LE(columnsFromAxis, 2.0) << "column " << i % ring.dstWidth;
            outsideAtSource1080 += side == 1080 ? 1 : 0;
        }
    }
    // The lanes' sine comes as near to 1 in other columns.
    if (TypeParam::kForm == KernelForm::C) {
        EXPECT_EQ(outsideAtSource1080, this->kIsTableMount ? 10 : 0);
    }
}

TYPED_TEST(PanoramaTables, FirstAndLastColumnShowTheSameRay) {
    const Ring ring = this->InnerRing();
    const auto table = TypeParam::BuildTable(ring);
    const auto width = static_cast<std::size_t>(ring.dstWidth);
    for (std::size_t row = 0; row < table.size(); row += width) {
        const PixelPlace first = this->PlaceOf(table[row], ring);
        const PixelPlace last = this->PlaceOf(table[row + width - 1], ring);
        EXPECT_LE(std::abs(first.column - last.column), 1);
        EXPECT_LE(std::abs(first.row - last.row), 1);
    }
}

// A table mount's first column is a ceiling's last one, and its first row the last.
TYPED_TEST(PanoramaTables, ThoseOfACeilingAreATablesTurnedByHalfATurn) {
    const auto tableOf = [](Mount mount, const Ring& ring) {
        return TableOffsets(mount, ring, TypeParam::kBytes, TypeParam::kForm);
    };
    const Ring ring = this->InnerRing();
    const auto built = TypeParam::BuildTable(ring);
    const auto other = tableOf(this->kIsTableMount ? Mount::Ceiling : Mount::Table, ring);
    for (std::size_t i = 0; i < built.size(); ++i) {
        const PixelPlace left = this->PlaceOf(built[i], ring);
        const PixelPlace right = this->PlaceOf(other[built.size() - 1 - i], ring);
        ASSERT_LE(std::abs(left.column - right.column), 1) << "entry " << i;
        ASSERT_LE(std::abs(left.row - right.row), 1) << "entry " << i;
    }
}

template <class Family>
class PanoramaTableConverters : public ::testing::Test {};

TYPED_TEST_SUITE(PanoramaTableConverters, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(PanoramaTableConverters, ShowTheEntriesOfThePlainLoop) {
    RingGenerator generator(4242);
    for (int i = 0; i < 120; ++i) {
        const Ring ring = generator.NextRing(TypeParam::kBytes);
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        std::vector<unsigned char> expected(ring.OutputBytes(), 0xCD);
        Paint(TypeParam::ExpectedEntries(ring), ring, TypeParam::kBytes, RowStart::Kept, src,
              expected);
        ASSERT_EQ(TablePicture<TypeParam>(ring, src), expected) << "case " << i << ": " << ring;
    }
}

template <class Family>
class PanoramaTablesOfATable : public FormTest<Family> {};

using TableCameras = ::testing::Types<RingFamily<TableCamera, 24>, RingFamily<TableCamera, 32>>;
TYPED_TEST_SUITE(PanoramaTablesOfATable, Forms<TableCameras>::Direct, RingFormNames);

// The same angles, radii and rounding.
TYPED_TEST(PanoramaTablesOfATable, ShowTheDirectPictureOfPan0) {
    RingGenerator generator(999);
    for (int i = 0; i < 100; ++i) {
        Ring ring = generator.NextRing(TypeParam::kBytes);
        ring.dstStride = ring.dstWidth * TypeParam::kBytes;
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        ASSERT_EQ(BuiltTablePicture<TypeParam>(ring, src),
                  KernelPicture<TypeParam>(ring, 0.0F, src))
            << ring;
    }
}

// The angle of a ceiling table falls where that of its direct conversion rises.
TEST(PanoramaTablesOfBothPaths, CeilingTableShowsTheMirrorImageOfTheDirectPicture) {
    using Family = RingFamily<CeilingCamera, 32>;
    Ring ring = PackedRing(203, 161, 97, 21, Family::kBytes);
    ring.radiusX = 0.49F;
    ring.radiusY = 0.37F;
    const auto src = CoordinateFrame(203, 161, ring.srcStride, Family::kBytes);
    const auto fromTable = TablePicture<Family>(ring, src);
    const auto direct = DirectPicture<Family>(ring, 0.0F, src);
    int differing = 0;
    for (int y = 0; y < ring.dstHeight; ++y) {
        const auto placeAt = [&](const std::vector<unsigned char>& frame, int x) {
            const auto place =
                PlaceIn(frame.data() + y * ring.dstStride + x * Family::kBytes, Family::kBytes);
            return place.value_or(PixelPlace{-10, -10});
        };
        for (int x = 0; x < ring.dstWidth; ++x) {
            const PixelPlace left = placeAt(fromTable, x);
            const PixelPlace right = placeAt(direct, ring.dstWidth - 1 - x);
            ASSERT_LE(std::abs(left.column - right.column), 1) << x << ", " << y;
            ASSERT_LE(std::abs(left.row - right.row), 1) << x << ", " << y;
            differing += left == placeAt(direct, x) ? 0 : 1;
        }
    }
    // It is not the picture itself, but for the axis that it is mirrored at.
    EXPECT_GT(differing, ring.dstWidth * ring.dstHeight * 8 / 10);
}

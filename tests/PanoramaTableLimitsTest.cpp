#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"

// Frames at and beyond what a table's 32-bit entries can address.

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();

}  // namespace

template <class Family>
class PanoramaTableLimits : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    static Ring SmallRing() { return PackedRing(41, 37, 24, 8, kBytes); }

    static std::vector<Ring> RingsWithTooLargeOutputs() {
        std::vector<Ring> rings;
        for (const auto& [width, height] : {std::pair{65536, 32768},
                                            {32768, 65536},
                                            {46341, 46341},
                                            {kLargest, 2},
                                            {2, kLargest},
                                            {-8, 4},
                                            {8, -4},
                                            {-8, -4},
                                            {65536, 65536},
                                            {0x40000008, 8}}) {
            Ring ring = SmallRing();
            ring.dstWidth = width;
            ring.dstHeight = height;
            rings.push_back(ring);
        }
        return rings;
    }

    static std::vector<Ring> RingsWithUnusableSources() {
        std::vector<Ring> rings;
        const auto add = [&](int width, int height, int stride) {
            Ring ring = SmallRing();
            ring.srcWidth = width;
            ring.srcHeight = height;
            ring.srcStride = stride;
            rings.push_back(ring);
        };
        // One byte more than an int counts, in two rows and in many.
        add(1, 2, kLargest - kBytes + 1);
        add(1, 65537, 32768);
        // Rows longer than the stride, by a byte and because the stride wrapped around.
        add(10, 10, 10 * kBytes - 1);
        add(0x40000008, 1, 32);
        add(10, 10, 0);
        add(10, 10, -10 * kBytes);
        add(-10, 10, 40);
        add(10, -10, 40);
        return rings;
    }

    static void ExpectRefused(typename Family::TableConverter& converter, const Ring& ring) {
        const AllocationWatch watch;
        EXPECT_TRUE(ThrowsBadAlloc([&] { Family::Init(converter, ring); })) << ring;
        EXPECT_EQ(watch.Requests(), 0) << ring;
        // Any access through a null frame would end the process.
        unsigned char* const nowhere = nullptr;
        Family::Convert(converter, nowhere, nowhere);
        Family::Convert(converter, 90.0F, nowhere, nowhere);
    }

    static void ExpectWorksAgain(typename Family::TableConverter& converter) {
        const Ring ring = SmallRing();
        const auto src = CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, kBytes);
        std::vector<unsigned char> expected(ring.OutputBytes(), 0xCD);
        std::vector<unsigned char> frame = expected;
        Paint(Family::ExpectedEntries(ring), ring, kBytes, RowStart::Kept, src, expected);
        Family::Init(converter, ring);
        Family::Convert(converter, src.data(), frame.data());
        EXPECT_EQ(frame, expected);
    }
};

TYPED_TEST_SUITE(PanoramaTableLimits, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(PanoramaTableLimits, OutputOfTooManyPixelsIsRefusedBeforeMemoryIsAsked) {
    typename TypeParam::TableConverter converter;
    for (const Ring& ring : this->RingsWithTooLargeOutputs()) {
        this->ExpectRefused(converter, ring);
    }
    this->ExpectWorksAgain(converter);
}

TYPED_TEST(PanoramaTableLimits, UnusableSourceIsRefusedBeforeMemoryIsAsked) {
    typename TypeParam::TableConverter converter;
    for (const Ring& ring : this->RingsWithUnusableSources()) {
        this->ExpectRefused(converter, ring);
    }
    this->ExpectWorksAgain(converter);
}

// Bits that name no pixel size stand for 4 bytes here too.
TYPED_TEST(PanoramaTableLimits, BitsOtherThan24NeedRowsOf4BytesAPixel) {
    typename TypeParam::TableConverter converter;
    EXPECT_TRUE(ThrowsBadAlloc(
        [&] { converter.Init(41, 37, 41 * 4 - 1, 24, 7, 24 * 4, 0, 0.5F, 0.5F, 0.0F); }));
    EXPECT_FALSE(ThrowsBadAlloc(
        [&] { converter.Init(41, 37, 41 * 4, 24, 7, 24 * 4, 0, 0.5F, 0.5F, 0.0F); }));
    EXPECT_FALSE(ThrowsBadAlloc(
        [&] { converter.Init(41, 37, 41 * 3, 24, 7, 24 * 3, 24, 0.5F, 0.5F, 0.0F); }));
}

TYPED_TEST(PanoramaTableLimits, RefusalEndsTheEarlierTable) {
    typename TypeParam::TableConverter converter;
    this->ExpectWorksAgain(converter);
    this->ExpectRefused(converter, this->RingsWithUnusableSources().front());
    this->ExpectWorksAgain(converter);
    this->ExpectRefused(converter, this->RingsWithTooLargeOutputs().front());
}

TYPED_TEST(PanoramaTableLimits, DirectConversionClearsItsRowsAndReadsNothing) {
    typename TypeParam::DirectConverter converter;
    const GuardedBuffer noSource(0);
    for (const Ring& ring : this->RingsWithUnusableSources()) {
        TypeParam::Init(converter, ring);
        std::vector<unsigned char> frame(ring.OutputBytes() + 1, 0xCD);
        TypeParam::Convert(converter, 45.0F, noSource.data(), frame.data());
        std::vector<unsigned char> expected(frame.size(), 0);
        expected.back() = 0xCD;
        EXPECT_EQ(frame, expected) << ring;
    }
}

TYPED_TEST(PanoramaTableLimits, DirectConversionOfNegativeWidthOnlyClearsItsRows) {
    Ring ring = this->SmallRing();
    ring.dstWidth = -8;
    EXPECT_EQ(DirectPicture<TypeParam>(ring, 0.0F,
                                       CoordinateFrame(41, 37, ring.srcStride, TypeParam::kBytes)),
              std::vector<unsigned char>(ring.OutputBytes(), 0));
}

template <class Family>
class RingTableLimits : public FormTest<Family> {};

TYPED_TEST_SUITE(RingTableLimits, Forms<RingFamilies>::Builders, RingFormNames);

TYPED_TEST(RingTableLimits, LastByteThatAnIntCountsIsAddressed) {
    Ring ring = PackedRing(1, 2, 5, 2, TypeParam::kBytes);
    ring.srcStride = kLargest - TypeParam::kBytes;
    typename TypeParam::TableConverter converter;
    EXPECT_FALSE(ThrowsBadAlloc([&] { TypeParam::Init(converter, ring); }));
    // The second source row is reached where the rim looks down, in column 3 of a rising angle and
    // column 1 of a falling one.
    const auto table = TypeParam::BuildTable(ring);
    const std::size_t entry = TypeParam::kMount == Mount::Table ? 5 + 3 : 1;
    EXPECT_EQ(table[entry], kLargest - TypeParam::kBytes);
}

// The scale of 16777219 is not a single precision number; the nearest one is 1 larger. 8388609 is
// one, but with one half added it becomes the next number too.
constexpr int kLongSides[] = {8388610, 16777220};

TYPED_TEST(RingTableLimits, LongRowIsNotLeftAtItsEnd) {
    for (const int side : kLongSides) {
        const Ring ring = PackedRing(side, 1, 5, 2, TypeParam::kBytes);
        const auto table = TypeParam::BuildTable(ring);
        const std::size_t rim = TypeParam::kMount == Mount::Table ? 5 : 0;
        EXPECT_EQ(table[rim], (side - 1) * TypeParam::kBytes);
        for (const int entry : table) {
            EXPECT_TRUE(entry >= 0 && entry <= (side - 1) * TypeParam::kBytes) << entry;
        }
    }
}

TYPED_TEST(RingTableLimits, LongColumnIsNotLeftAtItsEnd) {
    for (const int side : kLongSides) {
        const Ring ring = PackedRing(1, side, 5, 2, TypeParam::kBytes);
        const auto table = TypeParam::BuildTable(ring);
        const std::size_t down = TypeParam::kMount == Mount::Table ? 5 + 3 : 1;
        EXPECT_EQ(table[down], (side - 1) * TypeParam::kBytes);
        for (const int entry : table) {
            EXPECT_TRUE(entry >= 0 && entry <= (side - 1) * TypeParam::kBytes) << entry;
        }
    }
}

template <class Family>
class DualTableLimits : public FormTest<Family> {
protected:
    /// A dual panorama of five columns and one row for each half, which shows the lens's rim.
    static Ring RimOf(int srcWidth, int srcHeight) {
        Ring ring = PackedRing(srcWidth, srcHeight, 5, 2, Family::kBytes);
        ring.innerRadiusRatio = 1.0F;
        return ring;
    }
};

TYPED_TEST_SUITE(DualTableLimits, Forms<DualFamilies>::Builders, RingFormNames);

TYPED_TEST(DualTableLimits, LastByteThatAnIntCountsIsAddressed) {
    Ring ring = this->RimOf(1, 2);
    ring.srcStride = kLargest - TypeParam::kBytes;
    typename TypeParam::TableConverter converter;
    EXPECT_FALSE(ThrowsBadAlloc([&] { TypeParam::Init(converter, ring); }));
    // The middle column looks up in the upper half and down in the lower.
    const auto table = TypeParam::BuildTable(ring);
    EXPECT_EQ(table[2], 0);
    EXPECT_EQ(table[5 + 2], kLargest - TypeParam::kBytes);
}

// As for the full panorama, on both sides of the lens.
TYPED_TEST(DualTableLimits, LongSideIsNotLeftAtItsEnds) {
    for (const int side : kLongSides) {
        const auto wide = TypeParam::BuildTable(this->RimOf(side, 1));
        const std::size_t right = TypeParam::kMount == Mount::Table ? 0 : 4;
        const std::size_t left = 4 - right;
        EXPECT_EQ(wide[right], (side - 1) * TypeParam::kBytes);
        EXPECT_EQ(wide[left], 0);
        EXPECT_EQ(wide[5 + right], 0);
        EXPECT_EQ(wide[5 + left], (side - 1) * TypeParam::kBytes);
        const auto high = TypeParam::BuildTable(this->RimOf(1, side));
        EXPECT_EQ(high[2], 0);
        EXPECT_EQ(high[5 + 2], (side - 1) * TypeParam::kBytes);
    }
}

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "PanoramaTable.h"
#include "support/CoordinateFrame.h"
#include "support/FailingAllocations.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"

// When a converter has a table and of what.

template <class Family>
class PanoramaInit : public ::testing::Test {
protected:
    static Ring SmallRing() {
        Ring ring = PackedRing(41, 37, 24, 8, Family::kBytes);
        ring.dstStride += 5;
        return ring;
    }

    static std::vector<unsigned char> SourceOf(const Ring& ring) {
        return CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes);
    }

    static std::vector<unsigned char> PictureOf(typename Family::TableConverter& converter,
                                                const Ring& ring) {
        std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
        Family::Convert(converter, SourceOf(ring).data(), frame.data());
        return frame;
    }

    static void ExpectWritesNothing(typename Family::TableConverter& converter) {
        for (const float pan : {0.0F, -5.0F, 90.0F, 359.0F}) {
            Family::Convert(converter, pan, Nowhere(), Nowhere());
        }
        Family::Convert(converter, Nowhere(), Nowhere());
    }

private:
    // Any access through it ends the process.
    static unsigned char* Nowhere() { return nullptr; }
};

TYPED_TEST_SUITE(PanoramaInit, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(PanoramaInit, ConvertersCanNotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<typename TypeParam::TableConverter>);
    EXPECT_FALSE(std::is_copy_assignable_v<typename TypeParam::TableConverter>);
    EXPECT_FALSE(std::is_copy_constructible_v<typename TypeParam::DirectConverter>);
    EXPECT_FALSE(std::is_copy_assignable_v<typename TypeParam::DirectConverter>);
}

TYPED_TEST(PanoramaInit, ConversionBeforeInitTouchesNothing) {
    typename TypeParam::TableConverter converter;
    this->ExpectWritesNothing(converter);
}

TYPED_TEST(PanoramaInit, OutputWithoutAreaTakesNoMemoryAndConvertsNothing) {
    for (const auto& [width, height] : {std::pair{0, 7}, {24, 0}, {0, 0}, {0, -3}, {-3, 0}}) {
        Ring ring = this->SmallRing();
        ring.dstWidth = width;
        ring.dstHeight = height;
        typename TypeParam::TableConverter converter;
        const AllocationWatch watch;
        TypeParam::Init(converter, ring);
        EXPECT_EQ(watch.Requests(), 0) << ring;
        this->ExpectWritesNothing(converter);
    }
}

TYPED_TEST(PanoramaInit, OutputWithoutAreaReleasesTheEarlierTable) {
    typename TypeParam::TableConverter converter;
    const AllocationWatch watch;
    TypeParam::Init(converter, this->SmallRing());
    const int blocksOfTable = watch.BlocksTaken();
    Ring empty = this->SmallRing();
    empty.dstHeight = 0;
    TypeParam::Init(converter, empty);
    this->ExpectWritesNothing(converter);
    EXPECT_LT(watch.BlocksTaken(), blocksOfTable);
}

TYPED_TEST(PanoramaInit, SourceWithoutPixelsGivesABlackPicture) {
    struct Source {
        int width;
        int height;
        int stride;
    };
    // Of a frame without pixels the stride says nothing.
    for (const Source& source : {Source{0, 37, 0},
                                 {0, 37, 400},
                                 {41, 0, 41 * 4},
                                 {41, 0, 0},
                                 {0, 0, 0},
                                 {0x40000008, 0, 32},
                                 {0, 0x40000008, 32}}) {
        Ring ring = this->SmallRing();
        ring.srcWidth = source.width;
        ring.srcHeight = source.height;
        ring.srcStride = source.stride;
        const std::vector<unsigned char> nothing;
        std::vector<unsigned char> expected(ring.OutputBytes(), 0xCD);
        Paint(std::vector<int>(24 * 8, kNoSource), ring, TypeParam::kBytes, RowStart::Kept, nothing,
              expected);
        EXPECT_EQ(TablePicture<TypeParam>(ring, nothing), expected) << ring;
        EXPECT_EQ(TablePicture<TypeParam>(ring, nothing, 100.0F), expected) << ring;
        EXPECT_EQ(DirectPicture<TypeParam>(ring, 100.0F, nothing),
                  std::vector<unsigned char>(ring.OutputBytes(), 0));
    }
}

TYPED_TEST(PanoramaInit, SecondInitWithTheSameValuesBuildsTheSameTableAnew) {
    const Ring ring = this->SmallRing();
    typename TypeParam::TableConverter converter;
    int firstRequests = 0;
    {
        const AllocationWatch watch;
        TypeParam::Init(converter, ring);
        firstRequests = watch.Requests();
    }
    const auto picture = this->PictureOf(converter, ring);
    const AllocationWatch watch;
    TypeParam::Init(converter, ring);
    // The table, and the builder's sines and cosines at least.
    EXPECT_GE(firstRequests, 3);
    EXPECT_GE(watch.Requests(), 3);
    EXPECT_EQ(this->PictureOf(converter, ring), picture);
}

TYPED_TEST(PanoramaInit, LaterInitReplacesSizesLensAndTable) {
    Ring later = PackedRing(29, 53, 40, 5, TypeParam::kBytes);
    later.srcStride += 3;
    later.dstStride += 1;
    later.radiusX = 0.7F;
    later.innerRadiusRatio = 0.5F;
    typename TypeParam::TableConverter converter;
    TypeParam::Init(converter, this->SmallRing());
    TypeParam::Init(converter, later);
    std::vector<unsigned char> expected(later.OutputBytes(), 0xCD);
    Paint(TypeParam::ExpectedEntries(later), later, TypeParam::kBytes, RowStart::Kept,
          this->SourceOf(later), expected);
    EXPECT_EQ(this->PictureOf(converter, later), expected);
}

TYPED_TEST(PanoramaInit, OneTableServesEveryFrameOfItsSizes) {
    const Ring ring = this->SmallRing();
    const auto offsets = TypeParam::ExpectedEntries(ring);
    typename TypeParam::TableConverter converter;
    TypeParam::Init(converter, ring);
    for (const unsigned char value : std::vector<unsigned char>{0x11, 0xFE, 0x00}) {
        std::vector<unsigned char> src = this->SourceOf(ring);
        src[src.size() / 2] = value;
        std::vector<unsigned char> frame(ring.OutputBytes(), value);
        std::vector<unsigned char> expected = frame;
        Paint(offsets, ring, TypeParam::kBytes, RowStart::Kept, src, expected);
        TypeParam::Convert(converter, src.data(), frame.data());
        EXPECT_EQ(frame, expected);
    }
}

TYPED_TEST(PanoramaInit, BitsOtherThan24BuildForPixelsOf4Bytes) {
    const Ring ring = PackedRing(41, 37, 24, 7, 4);
    std::vector<unsigned char> expected(ring.OutputBytes(), 0xCD);
    const auto src = CoordinateFrame(41, 37, ring.srcStride, 4);
    Paint(TypeParam::ExpectedEntries(ring, 4), ring, 4, RowStart::Kept, src, expected);
    for (const int bits : {0, 32, 8, 25, -24}) {
        typename TypeParam::TableConverter converter;
        converter.Init(ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
                       ring.dstStride, bits, ring.radiusX, ring.radiusY, ring.innerRadiusRatio);
        std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
        converter.CvtRGB32(src.data(), frame.data());
        EXPECT_EQ(frame, expected) << "bits " << bits;
    }
}

TEST(PanoramaTableRebuild, GivesTheBuilderAnAlignedEntryForEveryPixel) {
    PanoramaTable panorama;
    int calls = 0;
    panorama.Rebuild({5, 5, 20, 13, 3, 52, 32}, [&](CAlignedBufferT<int, 32>& table) {
        ++calls;
        EXPECT_EQ(table.count(), 39U);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(table.data()) % 32, 0U);
        std::fill_n(table.data(), table.count(), 0);
    });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(panorama.table.count(), 39U);
}

TEST(PanoramaTableRebuild, BuilderThatFailsLeavesNoTable) {
    PanoramaTable panorama;
    const auto fill = [](CAlignedBufferT<int, 32>& table) {
        std::fill_n(table.data(), table.count(), 0);
    };
    panorama.Rebuild({5, 5, 20, 8, 3, 32, 32}, fill);
    ASSERT_EQ(panorama.table.count(), 24U);
    EXPECT_TRUE(ThrowsBadAlloc([&] {
        panorama.Rebuild({5, 5, 20, 8, 3, 32, 32},
                         [](CAlignedBufferT<int, 32>&) { throw std::bad_alloc(); });
    }));
    EXPECT_EQ(panorama.table.count(), 0U);
    EXPECT_EQ(panorama.table.data(), nullptr);
    panorama.Convert<32>(nullptr, nullptr);
    panorama.ConvertTurned<32>(90.0F, nullptr, nullptr);
    panorama.Rebuild({5, 5, 20, 8, 3, 32, 32}, fill);
    EXPECT_EQ(panorama.table.count(), 24U);
}

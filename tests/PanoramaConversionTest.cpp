#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/HandMadeTable.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// The walk along a table, with tables made by hand: entries in any order and black ones among them.

namespace {

template <int bytes>
struct PixelOf {
    static constexpr int kBytes = bytes;
    static constexpr auto kBits = static_cast<unsigned long>(bytes * 8);
};

struct PixelSizeNames {
    template <class Pixel>
    static std::string GetName(int) {
        return std::to_string(Pixel::kBits) + "Bits";
    }
};

std::vector<int> AllWidths() {
    std::vector<int> widths;
    for (int width = 1; width <= 40; ++width) {
        widths.push_back(width);
    }
    widths.insert(widths.end(), {63, 64, 65, 71, 72, 73, 127, 128, 129, 191, 192, 200, 263});
    return widths;
}

}  // namespace

template <class Pixel>
class PanoramaConversion : public ::testing::Test {
protected:
    static constexpr int kBytes = Pixel::kBytes;

    static Ring RingOfWidth(RingGenerator& generator, int width) {
        Ring ring = PackedRing(generator.NextInt(1, 50), generator.NextInt(1, 50), width,
                               generator.NextInt(1, 5), kBytes);
        ring.srcStride += generator.NextInt(0, 7);
        ring.dstStride += generator.NextInt(0, 7);
        return ring;
    }
};

using PixelSizes = ::testing::Types<PixelOf<3>, PixelOf<4>>;
TYPED_TEST_SUITE(PanoramaConversion, PixelSizes, PixelSizeNames);

TYPED_TEST(PanoramaConversion, EveryWidthIsServedCompletely) {
    RingGenerator generator(5);
    for (const int width : AllWidths()) {
        const Ring ring = this->RingOfWidth(generator, width);
        const auto entries = generator.NextEntries(ring, TypeParam::kBytes);
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
        std::vector<unsigned char> expected = frame;
        Paint(entries, ring, TypeParam::kBytes, RowStart::Kept, src, expected);
        HandMadeTable(entries, ring, TypeParam::kBytes)
            .template Convert<TypeParam::kBits>(src.data(), frame.data());
        ASSERT_EQ(frame, expected) << ring;
    }
}

TYPED_TEST(PanoramaConversion, EveryWidthTurnsByEveryWholeColumn) {
    RingGenerator generator(6);
    for (const int width : AllWidths()) {
        const Ring ring = this->RingOfWidth(generator, width);
        const auto entries = generator.NextEntries(ring, TypeParam::kBytes);
        const HandMadeTable panorama(entries, ring, TypeParam::kBytes);
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        for (int shift = 0; shift < width; ++shift) {
            // The middle of the shift's range, where no rounding reaches the next one.
            const auto pan = static_cast<float>((shift + 0.5) * 360.0 / width);
            std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
            std::vector<unsigned char> expected = frame;
            Paint(TurnedOffsets(entries, ring, shift), ring, TypeParam::kBytes, RowStart::Kept, src,
                  expected);
            panorama.template ConvertTurned<TypeParam::kBits>(pan, src.data(), frame.data());
            ASSERT_EQ(frame, expected) << "shift " << shift << ": " << ring;
        }
    }
}

TYPED_TEST(PanoramaConversion, LargeTablesAreServedCompletely) {
    RingGenerator generator(9);
    for (const int width : {2047, 2049, 4100}) {
        for (const int height : {32, 33, 65}) {
            Ring ring = PackedRing(90, 70, width, height, TypeParam::kBytes);
            ring.dstStride += 5;
            const auto entries = generator.NextEntries(ring, TypeParam::kBytes);
            const HandMadeTable panorama(entries, ring, TypeParam::kBytes);
            const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
            for (const int shift : {0, 1, 1500, 2046, width - 3}) {
                const auto pan = static_cast<float>((shift + 0.5) * 360.0 / width);
                std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
                std::vector<unsigned char> expected = frame;
                Paint(TurnedOffsets(entries, ring, shift), ring, TypeParam::kBytes, RowStart::Kept,
                      src, expected);
                panorama.template ConvertTurned<TypeParam::kBits>(pan, src.data(), frame.data());
                ASSERT_TRUE(frame == expected) << "shift " << shift << ": " << ring;
            }
        }
    }
}

TYPED_TEST(PanoramaConversion, PaddingIsNotTouched) {
    RingGenerator generator(7);
    for (int padding = 1; padding <= 8; ++padding) {
        Ring ring = PackedRing(9, 9, 16, 3, TypeParam::kBytes);
        ring.dstStride += padding;
        const HandMadeTable panorama(generator.NextEntries(ring, TypeParam::kBytes), ring,
                                     TypeParam::kBytes);
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        for (const float pan : {0.0F, 100.0F}) {
            std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
            panorama.template ConvertTurned<TypeParam::kBits>(pan, src.data(), frame.data());
            for (int y = 0; y < ring.dstHeight; ++y) {
                const auto* const end = frame.data() + (y + 1) * ring.dstStride;
                EXPECT_EQ(std::count(end - padding, end, 0xCD), padding) << "row " << y;
            }
        }
    }
}

TYPED_TEST(PanoramaConversion, BlackEntriesBecomeZeroBytes) {
    const Ring ring = PackedRing(2, 1, 24, 2, TypeParam::kBytes);
    const std::vector<unsigned char> src(ring.SourceBytes(TypeParam::kBytes), 0xFF);
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    HandMadeTable(std::vector<int>(48, kNoSource), ring, TypeParam::kBytes)
        .template Convert<TypeParam::kBits>(src.data(), frame.data());
    EXPECT_EQ(frame, std::vector<unsigned char>(ring.OutputBytes(), 0));
}

TYPED_TEST(PanoramaConversion, PixelsAreCopiedInTheirByteOrder) {
    const Ring ring = PackedRing(2, 1, 2, 1, TypeParam::kBytes);
    const std::vector<unsigned char> src = {1, 2, 3, 4, 5, 6, 7, 8};
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    HandMadeTable({TypeParam::kBytes, 0}, ring, TypeParam::kBytes)
        .template Convert<TypeParam::kBits>(src.data(), frame.data());
    const auto expected = TypeParam::kBytes == 3
                              ? std::vector<unsigned char>{4, 5, 6, 1, 2, 3}
                              : std::vector<unsigned char>{5, 6, 7, 8, 1, 2, 3, 4};
    EXPECT_EQ(frame, expected);
}

// A row's stride and the table's row have lengths of their own.
TYPED_TEST(PanoramaConversion, RowsOfTheTableFollowEachOtherWithoutGaps) {
    Ring ring = PackedRing(6, 1, 3, 2, TypeParam::kBytes);
    ring.dstStride = 20;
    std::vector<unsigned char> src;
    std::vector<int> entries;
    for (int i = 0; i < 6; ++i) {
        entries.push_back(i * TypeParam::kBytes);
        src.insert(src.end(), static_cast<std::size_t>(TypeParam::kBytes),
                   static_cast<unsigned char>(i + 1));
    }
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    HandMadeTable(entries, ring, TypeParam::kBytes)
        .template Convert<TypeParam::kBits>(src.data(), frame.data());
    for (std::size_t x = 0; x < 3; ++x) {
        const std::size_t column = x * static_cast<std::size_t>(TypeParam::kBytes);
        EXPECT_EQ(frame[column], x + 1);
        EXPECT_EQ(frame[20 + column], x + 4);
    }
}

// The conversions of all converters.

template <class Family>
class ConverterConversions : public ::testing::Test {};

TYPED_TEST_SUITE(ConverterConversions, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(ConverterConversions, ShowTheTableWithoutPanAndTurnedWithOne) {
    RingGenerator generator(8);
    for (const int width : {1, 3, 8, 16, 30, 72, 130}) {
        Ring ring = generator.NextRing(TypeParam::kBytes);
        ring.dstWidth = width;
        ring.dstStride = width * TypeParam::kBytes + generator.NextInt(0, 5);
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        const auto entries = TypeParam::ExpectedEntries(ring);
        std::vector<unsigned char> unturned(ring.OutputBytes(), 0xCD);
        Paint(entries, ring, TypeParam::kBytes, RowStart::Kept, src, unturned);
        ASSERT_EQ(TablePicture<TypeParam>(ring, src), unturned) << ring;
        for (const int position : {0, 1, width / 2, width - 1, TypeParam::Positions(ring) - 1}) {
            if (position < TypeParam::Positions(ring)) {
                const float pan = PanAt<TypeParam>(position, ring);
                std::vector<unsigned char> turned(ring.OutputBytes(), 0xCD);
                TypeParam::PaintTurned(entries, ring, pan, src, turned);
                ASSERT_EQ(TablePicture<TypeParam>(ring, src, pan), turned)
                    << "position " << position << ": " << ring;
            }
        }
    }
}

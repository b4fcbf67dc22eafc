#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "support/GuardedBuffer.h"
#include "support/HandMadeTable.h"
#include "support/RingGenerator.h"

// A conversion of 24 bits may read the byte after a source pixel and write the one after an output
// pixel, but never one that lies outside the frames or that it does not write itself.

namespace {

constexpr int kBytes = 3;
constexpr unsigned char kFill = 0xCD;
constexpr int kSourceWidth = 4;
constexpr int kSourceHeight = 3;

/// The entry of the source's last pixel, in rows with so many bytes of padding.
constexpr int LastPixel(int srcPadding) {
    const int row = kSourceWidth * kBytes;
    return (kSourceHeight - 1) * (row + srcPadding) + row - kBytes;
}

class PixelSpill : public ::testing::TestWithParam<int> {
protected:
    /// Converts a source that ends at a guard page by a table of one entry, into frames that end at
    /// a guard page or at bytes of padding.
    static void ExpectConverts(int entry, int srcPadding, int dstPadding) {
        Ring ring = PackedRing(kSourceWidth, kSourceHeight, GetParam(), 2, kBytes);
        ring.srcStride += srcPadding;
        ring.dstStride += dstPadding;
        const std::vector<int> entries(
            static_cast<std::size_t>(ring.dstWidth) * static_cast<std::size_t>(ring.dstHeight),
            entry);
        const HandMadeTable panorama(entries, ring, kBytes);
        const auto pixels = RingGenerator(91).NextBytes(ring.SourceBytes(kBytes));
        GuardedBuffer src(pixels.size());
        std::memcpy(src.data(), pixels.data(), pixels.size());
        src.MakeReadOnly();
        GuardedBuffer dst(ring.OutputBytes(), GuardedBuffer::Side::EndsAtGuard, kFill);
        panorama.Convert<24>(src.data(), dst.data());

        std::vector<unsigned char> expected(ring.OutputBytes(), kFill);
        for (int y = 0; y < ring.dstHeight; ++y) {
            for (int x = 0; x < ring.dstWidth; ++x) {
                for (int i = 0; i < kBytes; ++i) {
                    expected[static_cast<std::size_t>(y * ring.dstStride + x * kBytes + i)] =
                        entry < 0 ? 0 : pixels[static_cast<std::size_t>(entry + i)];
                }
            }
        }
        EXPECT_EQ(std::vector<unsigned char>(dst.data(), dst.data() + dst.size()), expected);
    }
};

}  // namespace

TEST_P(PixelSpill, ReadsNoByteAfterTheFramesLastPixel) {
    ExpectConverts(LastPixel(0), 0, 0);
    ExpectConverts(LastPixel(4), 4, 0);
}

TEST_P(PixelSpill, WritesNoByteAfterARow) {
    ExpectConverts(LastPixel(0) - kBytes, 0, 0);
    ExpectConverts(0, 0, 5);
}

TEST_P(PixelSpill, PixelsWithoutASourceWriteNoByteAfterARow) {
    ExpectConverts(-1, 0, 0);
    ExpectConverts(-1, 0, 5);
}

// Widths on both sides of the groups that are converted together.
INSTANTIATE_TEST_SUITE_P(Widths, PixelSpill, ::testing::Values(1, 7, 8, 9, 15, 16, 17, 24, 25),
                         ::testing::PrintToStringParamName());

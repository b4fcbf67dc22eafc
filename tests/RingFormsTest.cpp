#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// The ring's kernels in lanes: any width is served and nothing beyond it, and they show what the
// scalar kernels show but for their rounding.

namespace {

constexpr unsigned char kFill = 0xCD;
constexpr GuardedBuffer::Side kSides[] = {GuardedBuffer::Side::EndsAtGuard,
                                          GuardedBuffer::Side::StartsAtGuard};

/// Calls `check(ring)` for every width up to five groups of eight, with few rows, a lens beyond the
/// frame and odd strides.
template <class Check>
void ForEveryWidth(int bytesPerPixel, Check&& check) {
    for (int width = 1; width <= 40; ++width) {
        for (const int height : {1, 2, 3, 5}) {
            Ring ring = PackedRing(37, 29, width, height, bytesPerPixel);
            ring.srcStride |= 1;
            ring.dstStride += 3;
            ring.radiusX = 0.6F;
            ring.innerRadiusRatio = width % 2 == 0 ? 0.8F : 0.0F;
            ASSERT_NO_FATAL_FAILURE(check(ring)) << ring;
        }
    }
}

}  // namespace

template <class Family>
class RingDirectForms : public FormTest<Family> {};

TYPED_TEST_SUITE(RingDirectForms, Forms<PanoramaFamilies>::Direct, RingFormNames);

template <class Family>
class RingTableForms : public FormTest<Family> {
protected:
    static PixelPlace PlaceOf(int offset, const Ring& ring) {
        return {offset % ring.srcStride / Family::kBytes, offset / ring.srcStride};
    }
};

TYPED_TEST_SUITE(RingTableForms, Forms<PanoramaFamilies>::Builders, RingFormNames);

TYPED_TEST(RingDirectForms, ServeEveryWidthAndStayInTheirFrames) {
    RingGenerator generator(41);
    ForEveryWidth(TypeParam::kBytes, [&](const Ring& ring) {
        const auto pixels = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        const auto expected = ModelPicture<TypeParam>(ring, 33.0F, pixels, TypeParam::kForm);
        for (const GuardedBuffer::Side side : kSides) {
            GuardedBuffer src(pixels.size(), side);
            std::memcpy(src.data(), pixels.data(), pixels.size());
            src.MakeReadOnly();
            GuardedBuffer dst(ring.OutputBytes(), side, kFill);
            TypeParam::ConvertByKernel(ring, 33.0F, src.data(), dst.data());
            ASSERT_EQ(std::vector<unsigned char>(dst.data(), dst.data() + dst.size()), expected);
            ASSERT_TRUE(dst.IsSurroundingUntouched());
        }
    });
}

// Every pixel of the panorama shows one of one or two source pixels, so that the frame's last one
// is among those that are copied together, in any place.
TYPED_TEST(RingDirectForms, ReadNoByteAfterTheSourcesLastPixel) {
    for (const auto& [columns, rows] : {std::pair{1, 1}, {2, 1}, {1, 2}}) {
        for (const int width : {1, 15, 16, 17, 40, 160}) {
            Ring ring = PackedRing(columns, rows, width, 4, TypeParam::kBytes);
            ring.radiusX = ring.radiusY = 0.4F;
            GuardedBuffer src(ring.SourceBytes(TypeParam::kBytes), GuardedBuffer::Side::EndsAtGuard,
                              0x5A);
            src.MakeReadOnly();
            std::vector<unsigned char> frame(ring.OutputBytes(), kFill);
            TypeParam::ConvertByKernel(ring, 20.0F, src.data(), frame.data());
            EXPECT_EQ(frame, std::vector<unsigned char>(ring.OutputBytes(), 0x5A)) << ring;
        }
    }
}

TYPED_TEST(RingDirectForms, KeepTheClearedPaddingOfEveryWidth) {
    ForEveryWidth(TypeParam::kBytes, [](Ring ring) {
        ring.radiusX = 0.4F;
        ring.dstStride = ring.dstWidth * TypeParam::kBytes + 40;
        const std::vector<unsigned char> white(ring.SourceBytes(TypeParam::kBytes), 0xFF);
        const auto frame = KernelPicture<TypeParam>(ring, 0.0F, white);
        for (int y = 0; y < TypeParam::DrawnRows(ring); ++y) {
            const auto end = frame.begin() + (y + 1) * ring.dstStride;
            ASSERT_EQ(std::count(end - 40, end, 0), 40) << "row " << y;
        }
    });
}

TYPED_TEST(RingTableForms, FillTheirTableForEveryWidthAndNothingBeyondIt) {
    ForEveryWidth(TypeParam::kBytes,
                  [](const Ring& ring) { ExpectTableAtGuards<TypeParam>(ring); });
}

// A lens without any extent shows the frame's centre, which lies half way between two pixels of an
// even side: 0.5 of 1, 1.5 of 3, 2.5 of 5. The opposite point is the same.
TYPED_TEST(RingTableForms, RoundTiesEachInTheirWay) {
    for (int side = 2; side <= 12; side += 2) {
        Ring ring = PackedRing(side, side + 2, 24, 4, TypeParam::kBytes);
        ring.radiusX = ring.radiusY = 0.0F;
        for (const int entry : TypeParam::BuildTable(ring)) {
            EXPECT_EQ(this->PlaceOf(entry, ring), (PixelPlace{TypeParam::TieAbove(side / 2 - 1),
                                                              TypeParam::TieAbove(side / 2)}))
                << ring;
        }
    }
}

TYPED_TEST(RingDirectForms, RoundTiesEachInTheirWay) {
    for (int side = 2; side <= 12; side += 2) {
        Ring ring = PackedRing(side, side + 2, 24, 4, TypeParam::kBytes);
        ring.radiusX = ring.radiusY = 0.0F;
        const auto frame = KernelPicture<TypeParam>(
            ring, 50.0F,
            CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, TypeParam::kBytes));
        for (std::size_t at = 0; at < frame.size(); at += std::size_t{TypeParam::kBytes}) {
            EXPECT_EQ(
                PlaceIn(&frame[at], TypeParam::kBytes),
                (PixelPlace{TypeParam::TieAbove(side / 2 - 1), TypeParam::TieAbove(side / 2)}))
                << ring;
        }
    }
}

template <class Family>
class RingLanes : public ::testing::Test {};

TYPED_TEST_SUITE(RingLanes, PanoramaFamilies, RingFamilyNames);

// The frame's middle is a tie of both sides: of 100.5 four lanes take 100 and eight 101. All other
// entries are the same.
TYPED_TEST(RingLanes, OfEightDifferFromThoseOfFourByTiesAlone) {
    if (!CanRun(KernelForm::AVX)) {
        GTEST_SKIP() << "this processor lacks the instructions of AVX";
    }
    const Ring ring = PackedRing(202, 202, 96, 42, TypeParam::kBytes);
    const auto four = TableOf<TypeParam>(KernelForm::SSE41, ring);
    const auto eight = TableOf<TypeParam>(KernelForm::AVX, ring);
    int ties = 0;
    for (std::size_t entry = 0; entry < four.size(); ++entry) {
        if (four[entry] == eight[entry]) {
            continue;
        }
        const int row = four[entry] / ring.srcStride;
        const int column = four[entry] % ring.srcStride / TypeParam::kBytes;
        const int further = eight[entry] - four[entry];
        const bool isInRow = further >= ring.srcStride;
        const bool isInColumn = further != ring.srcStride;
        ASSERT_EQ(further, (isInRow ? ring.srcStride : 0) + (isInColumn ? TypeParam::kBytes : 0));
        ASSERT_TRUE((!isInRow || row % 2 == 0) && (!isInColumn || column % 2 == 0)) << entry;
        ++ties;
    }
    EXPECT_GT(ties, 0);
    EXPECT_LT(ties, static_cast<int>(four.size()) / 10);
}

// The same point before rounding but for the lanes' sine, which is off by less than a millionth:
// the nearest pixel is the truncated one or the next. Outside differs at the edge alone.
TYPED_TEST(RingTableForms, LieWithinAPixelOfTheScalarTable) {
    RingGenerator generator(6061);
    constexpr int kMost = TypeParam::kForm == KernelForm::C ? 0 : 1;
    int differing = 0;
    for (int i = 0; i < 150; ++i) {
        const Ring ring = generator.NextRing(TypeParam::kBytes);
        const auto scalar = TypeParam::ExpectedEntries(ring, TypeParam::kBytes, KernelForm::C);
        const auto built = TypeParam::BuildTable(ring);
        Ring nearby = ring;
        nearby.radiusX = std::nextafter(ring.radiusX, 0.0F) * 0.99999F;
        nearby.radiusY = std::nextafter(ring.radiusY, 0.0F) * 0.99999F;
        const auto inner = TypeParam::ExpectedEntries(nearby, TypeParam::kBytes, KernelForm::C);
        nearby.radiusX = ring.radiusX * 1.00001F;
        nearby.radiusY = ring.radiusY * 1.00001F;
        const auto outer = TypeParam::ExpectedEntries(nearby, TypeParam::kBytes, KernelForm::C);
        for (std::size_t entry = 0; entry < built.size(); ++entry) {
            const bool isAtTheEdge = (inner[entry] == kNoSource) != (outer[entry] == kNoSource);
            if (built[entry] == kNoSource || scalar[entry] == kNoSource) {
                ASSERT_TRUE(built[entry] == scalar[entry] || isAtTheEdge) << ring;
                continue;
            }
            const PixelPlace left = this->PlaceOf(scalar[entry], ring);
            const PixelPlace right = this->PlaceOf(built[entry], ring);
            ASSERT_LE(std::abs(right.column - left.column), kMost) << ring;
            ASSERT_LE(std::abs(right.row - left.row), kMost) << ring;
            differing += left == right ? 0 : 1;
        }
    }
    EXPECT_EQ(differing > 0, TypeParam::kForm != KernelForm::C);
}

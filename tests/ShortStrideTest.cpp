#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "support/GuardedBuffer.h"
#include "support/HandMadeTable.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// Output frames whose stride is shorter than their rows, as they are left behind when the pixels
// become larger: rows overlap in their order, and nothing is stored beyond stride times height.

namespace {

constexpr unsigned char kFill = 0xCD;

std::vector<unsigned char> BytesOf(const GuardedBuffer& frame) {
    return std::vector<unsigned char>(frame.data(), frame.data() + frame.size());
}

}  // namespace

template <class Family>
class ShortStride : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    /// Calls `check` with rings of every stride up to a row's bytes.
    template <class Check>
    static void ForEveryStride(Check&& check) {
        RingGenerator generator(60);
        for (const int width : {1, 2, 8, 16}) {
            for (const int height : {1, 2, 5}) {
                for (int stride = 0; stride <= width * kBytes; ++stride) {
                    Ring ring = PackedRing(21, 17, width, height, kBytes);
                    ring.dstStride = stride;
                    ring.radiusX = 0.55F;
                    ASSERT_NO_FATAL_FAILURE(check(ring, generator)) << ring;
                }
            }
        }
    }

    /// Holds `convert(src, dst)`, on an output frame that ends at a guard, against what
    /// `paint(src, frame)` makes of the same bytes.
    template <class PaintFrame, class Convert>
    static void ExpectPaints(const Ring& ring, RingGenerator& generator, PaintFrame&& paint,
                             Convert&& convert) {
        const auto src = generator.NextBytes(ring.SourceBytes(kBytes));
        std::vector<unsigned char> expected(ring.OutputBytes(), kFill);
        paint(src, expected);
        GuardedBuffer frame(ring.OutputBytes(), GuardedBuffer::Side::EndsAtGuard, kFill);
        convert(src.data(), frame.data());
        ASSERT_EQ(BytesOf(frame), expected);
        ASSERT_TRUE(frame.IsSurroundingUntouched());
    }

    /// A table with any entries, at each of these positions of the ring and those half the
    /// positions further.
    static void ExpectTurnsOfAHandMadeTable(const Ring& ring, RingGenerator& generator,
                                            const std::vector<int>& positions) {
        const auto entries = generator.NextEntries(ring, kBytes);
        const HandMadeTable panorama(entries, ring, kBytes);
        for (int position : positions) {
            for (int i = 0; i < 2; ++i, position += Family::Positions(ring) / 2) {
                const float pan = PanAt<Family>(position % Family::Positions(ring), ring);
                ASSERT_NO_FATAL_FAILURE(ExpectPaints(
                    ring, generator,
                    [&](const auto& src, auto& frame) {
                        Family::PaintTurned(entries, ring, pan, src, frame);
                    },
                    [&](const unsigned char* src, unsigned char* dst) {
                        Family::ConvertTurned(panorama, pan, src, dst);
                    }))
                    << ring << ", position " << position;
            }
        }
    }
};

TYPED_TEST_SUITE(ShortStride, PanoramaFamilies, RingFamilyNames);

/// A form's direct conversions.
template <class Family>
class ShortStrideOfForms : public FormTest<Family, ShortStride<Family>> {};

TYPED_TEST_SUITE(ShortStrideOfForms, Forms<PanoramaFamilies>::Direct, RingFormNames);

TYPED_TEST(ShortStrideOfForms, DirectRowsOverlapAndStayInTheFrame) {
    this->ForEveryStride([this](const Ring& ring, RingGenerator& generator) {
        this->ExpectPaints(
            ring, generator,
            [&](const auto& src, auto& frame) {
                TypeParam::PaintDirect(ring, 33.0F, src, frame, TypeParam::kForm);
            },
            [&](const unsigned char* src, unsigned char* dst) {
                TypeParam::ConvertByKernel(ring, 33.0F, src, dst);
            });
    });
}

TYPED_TEST(ShortStride, TableRowsOverlapAndStayInTheFrame) {
    this->ForEveryStride([this](const Ring& ring, RingGenerator& generator) {
        typename TypeParam::TableConverter converter;
        TypeParam::Init(converter, ring);
        this->ExpectPaints(
            ring, generator,
            [&](const auto& src, auto& frame) {
                Paint(TypeParam::ExpectedEntries(ring), ring, TypeParam::kBytes, RowStart::Kept,
                      src, frame);
            },
            [&](const unsigned char* src, unsigned char* dst) {
                TypeParam::Convert(converter, src, dst);
            });
    });
}

TYPED_TEST(ShortStride, TurnedTableRowsOverlapAndStayInTheFrame) {
    this->ForEveryStride([this](const Ring& ring, RingGenerator& generator) {
        typename TypeParam::TableConverter converter;
        TypeParam::Init(converter, ring);
        const auto entries = TypeParam::ExpectedEntries(ring);
        for (int position = 0; position < TypeParam::Positions(ring); ++position) {
            const float pan = PanAt<TypeParam>(position, ring);
            ASSERT_NO_FATAL_FAILURE(this->ExpectPaints(
                ring, generator,
                [&](const auto& src, auto& frame) {
                    TypeParam::PaintTurned(entries, ring, pan, src, frame);
                },
                [&](const unsigned char* src, unsigned char* dst) {
                    TypeParam::Convert(converter, pan, src, dst);
                }))
                << "position " << position;
        }
    });
}

// Rows of 150 pixels take the walk through several of its steps before and after the cut.
TYPED_TEST(ShortStride, LongRowsOfATableAreCutAnywhere) {
    RingGenerator generator(61);
    for (int stride = 0; stride <= 150 * TypeParam::kBytes; stride += 7) {
        Ring ring = PackedRing(40, 30, 150, 4, TypeParam::kBytes);
        ring.dstStride = stride;
        this->ExpectTurnsOfAHandMadeTable(ring, generator, {0, 10, 75, 149});
    }
}

// Tables of this size are gone through in parts, which rows that overlap must not be.
TYPED_TEST(ShortStride, RowsOfALargeTableOverlapInTheirOrder) {
    RingGenerator generator(62);
    Ring ring = PackedRing(40, 30, 4500, 40, TypeParam::kBytes);
    for (const int stride : {1, 6000, 4500 * TypeParam::kBytes - 1}) {
        ring.dstStride = stride;
        this->ExpectTurnsOfAHandMadeTable(ring, generator, {0, 10, 3000, 4490});
    }
}

TYPED_TEST(ShortStride, NegativeStrideWritesNothing) {
    Ring ring = PackedRing(21, 17, 8, 3, TypeParam::kBytes);
    const std::vector<unsigned char> src(ring.SourceBytes(TypeParam::kBytes), 0x11);
    ring.dstStride = -8 * TypeParam::kBytes;
    GuardedBuffer noFrame(0);
    typename TypeParam::DirectConverter direct;
    TypeParam::Init(direct, ring);
    TypeParam::Convert(direct, 0.0F, src.data(), noFrame.data());
    typename TypeParam::TableConverter table;
    TypeParam::Init(table, ring);
    TypeParam::Convert(table, src.data(), noFrame.data());
    TypeParam::Convert(table, 90.0F, src.data(), noFrame.data());
    EXPECT_TRUE(noFrame.IsSurroundingUntouched());
}

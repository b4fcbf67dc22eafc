#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"
#include "support/UnusualFrames.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// A wall's conversions at the ends of their frames, and frames that no conversion can serve.

namespace {

using Bytes = std::vector<unsigned char>;

Bytes BytesOf(const GuardedBuffer& frame) {
    return Bytes(frame.data(), frame.data() + frame.size());
}

}  // namespace

template <class Family>
class WallMemory : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    static Wall SmallWall() { return PackedWall(41, 37, 24, 8, kBytes); }

    /// Runs a converter between frames that stand at guards, on either side, and holds the output's
    /// first bytes against `expected`.
    template <class Converter>
    static void ExpectPaints(const Wall& wall, const Bytes& pixels, const Bytes& expected) {
        Converter converter;
        Family::Init(converter, wall);
        for (const auto side :
             {GuardedBuffer::Side::EndsAtGuard, GuardedBuffer::Side::StartsAtGuard}) {
            GuardedBuffer src(pixels.size(), side);
            std::copy(pixels.begin(), pixels.end(), src.data());
            src.MakeReadOnly();
            GuardedBuffer dst(expected.size(), side, 0xCD);
            Family::Convert(converter, src.data(), dst.data());
            ASSERT_EQ(BytesOf(dst), expected) << wall;
            ASSERT_TRUE(dst.IsSurroundingUntouched()) << wall;
        }
    }

    /// Both converters. A table's conversion writes nothing beyond the last pixel of the last row,
    /// so the frame may end there.
    static void ExpectBothPaint(const Wall& wall) {
        const Bytes src = WallGenerator(71).NextBytes(wall.SourceBytes(kBytes));
        ASSERT_NO_FATAL_FAILURE(ExpectPaints<typename Family::DirectConverter>(
            wall, src, ExpectedDirectPicture<Family>(wall, src)));
        Bytes tablePicture = ExpectedTablePicture<Family>(wall, src);
        const int padding = wall.dstStride - wall.dstWidth * kBytes;
        if (padding > 0) {
            tablePicture.resize(tablePicture.size() - static_cast<std::size_t>(padding));
        }
        ASSERT_NO_FATAL_FAILURE(
            ExpectPaints<typename Family::TableConverter>(wall, src, tablePicture));
    }

    static void ExpectRefused(typename Family::TableConverter& converter, const Wall& wall) {
        ExpectServes(converter);
        {
            const AllocationWatch watch;
            EXPECT_TRUE(ThrowsBadAlloc([&] { Family::Init(converter, wall); })) << wall;
            EXPECT_EQ(watch.Requests(), 0) << wall;
        }
        ExpectWritesNothing(converter);
        ExpectServes(converter);
    }

    static void ExpectServes(typename Family::TableConverter& converter) {
        const Wall wall = SmallWall();
        const Bytes src = SourceOf<Family>(wall);
        Family::Init(converter, wall);
        EXPECT_EQ(PictureOf<Family>(converter, wall, src), ExpectedTablePicture<Family>(wall, src));
    }
};

TYPED_TEST_SUITE(WallMemory, WallFamilies, WallFamilyNames);

// Widths that are no multiple of 8 as well, with strides that end anywhere.
TYPED_TEST(WallMemory, ConversionsOfEverySizeAreCompleteAndStayInTheirFrames) {
    for (int size = 1; size <= 64; ++size) {
        Wall wall = PackedWall(size, 65 - size, 65 - size, size, TypeParam::kBytes);
        wall.srcStride |= 1;
        wall.dstStride |= 1;
        wall.radiusX = 0.55F;
        ASSERT_NO_FATAL_FAILURE(this->ExpectBothPaint(wall));
    }
}

// A pixel of the last row looks at the frame's lower right corner when both radii are such that the
// lens reaches 0.5 in its direction, and in lanes nearly so, by less than half a pixel. The model
// tells which of the numbers around these radii lead to the last pixel. One that stands at the
// output's end is copied by itself, others within a group.
TYPED_TEST(WallMemory, TheLastPixelOfTheFrameIsReadAtTheGuard) {
    for (const auto& [columns, column] : {std::pair{2, 1}, {64, 55}}) {
        for (const Path path : {Path::Direct, Path::Table}) {
            const KernelForm form =
                path == Path::Direct ? FormOfDirectConversions() : FormOfTables();
            const double reach = form == KernelForm::C ? 0.5 : 0.5 * 0.995;
            Wall wall = PackedWall(33, 21, columns, 2, TypeParam::kBytes);
            wall.srcStride += 5;
            wall.radiusX = wall.radiusY = 1.0F;
            const int lastPixel = 20 * wall.srcStride + 32 * TypeParam::kBytes;
            const auto pixel = static_cast<std::size_t>(columns + column);
            const auto leadsToIt = [&] {
                return (path == Path::Direct
                            ? DirectOffsets(wall, TypeParam::kBytes)
                            : TableOffsets(wall, TypeParam::kBytes))[pixel] == lastPixel;
            };
            const ExactLook look = LookOf(wall, column, 1);
            const auto radiusX = static_cast<float>(reach / look.u);
            const auto radiusY = static_cast<float>(reach / look.v);
            const float step = std::nextafter(radiusX, 2.0F) - radiusX;
            for (int i = 0; i < 17 * 17 && !leadsToIt(); ++i) {
                wall.radiusX = radiusX + static_cast<float>(i % 17 - 8) * step;
                wall.radiusY = radiusY + static_cast<float>(i / 17 - 8) * step;
            }
            ASSERT_TRUE(leadsToIt()) << wall;
            ASSERT_NO_FATAL_FAILURE(this->ExpectBothPaint(wall));
        }
    }
}

// As they are left behind when the pixels become larger: rows overlap in their order, and nothing
// is stored beyond stride times height.
TYPED_TEST(WallMemory, RowsThatAreLongerThanTheirStrideOverlapAndStayInTheFrame) {
    for (const int width : {1, 2, 8, 16}) {
        for (const int height : {1, 2, 5}) {
            for (int stride = 0; stride < width * TypeParam::kBytes; ++stride) {
                Wall wall = PackedWall(21, 17, width, height, TypeParam::kBytes);
                wall.dstStride = stride;
                wall.radiusX = 0.55F;
                ASSERT_NO_FATAL_FAILURE(this->ExpectBothPaint(wall));
            }
        }
    }
}

// Tables of this width are gone through in parts, which rows that overlap must not be.
TYPED_TEST(WallMemory, RowsOfAWideTableOverlapInTheirOrder) {
    for (const int stride : {1, 6000, 4500 * TypeParam::kBytes - 1}) {
        Wall wall = PackedWall(201, 137, 4500, 40, TypeParam::kBytes);
        wall.dstStride = stride;
        const Bytes src = WallGenerator(72).NextBytes(wall.SourceBytes(TypeParam::kBytes));
        ASSERT_NO_FATAL_FAILURE(this->template ExpectPaints<typename TypeParam::TableConverter>(
            wall, src, ExpectedTablePicture<TypeParam>(wall, src)));
    }
}

TYPED_TEST(WallMemory, NegativeStrideWritesNothing) {
    Wall wall = this->SmallWall();
    const Bytes src(wall.SourceBytes(TypeParam::kBytes), 0x11);
    wall.dstStride = -wall.dstStride;
    ASSERT_NO_FATAL_FAILURE(
        this->template ExpectPaints<typename TypeParam::DirectConverter>(wall, src, {}));
    ASSERT_NO_FATAL_FAILURE(
        this->template ExpectPaints<typename TypeParam::TableConverter>(wall, src, {}));
}

TYPED_TEST(WallMemory, FramesThatNoTableServesAreRefusedBeforeMemoryIsAsked) {
    typename TypeParam::TableConverter converter;
    for (const PanoramaFrames& frames : WithTooLargeOutputs(this->SmallWall())) {
        this->ExpectRefused(converter, Wall{frames});
    }
    for (const PanoramaFrames& frames : WithUnusableSources(this->SmallWall(), TypeParam::kBytes)) {
        this->ExpectRefused(converter, Wall{frames});
    }
}

TYPED_TEST(WallMemory, DirectConversionOfAnUnusableSourceClearsItsRowsAndReadsNothing) {
    for (const PanoramaFrames& frames : WithUnusableSources(this->SmallWall(), TypeParam::kBytes)) {
        ASSERT_NO_FATAL_FAILURE(this->template ExpectPaints<typename TypeParam::DirectConverter>(
            Wall{frames}, {}, Bytes(frames.OutputBytes(), 0)));
    }
}

TYPED_TEST(WallMemory, DirectConversionOfNegativeWidthOnlyClearsItsRows) {
    Wall wall = this->SmallWall();
    wall.dstWidth = -8;
    ASSERT_NO_FATAL_FAILURE(this->template ExpectPaints<typename TypeParam::DirectConverter>(
        wall, {}, Bytes(wall.OutputBytes(), 0)));
}

template <class Family>
class WallTableMemory : public FormTest<Family> {};

TYPED_TEST_SUITE(WallTableMemory, Forms<WallFamilies>::Builders, WallFormNames);

// The scale of 16777219 is not a single precision number; the nearest one is 1 larger.
TYPED_TEST(WallTableMemory, SidesOfMoreThan2To24PixelsAreNotLeftAtTheirEnd) {
    // Three columns and rows: the horizon's last pixel looks to the right, and the last one of the
    // middle column down, by a quarter turn each. In lanes that may be a rounding beyond the edge,
    // unless the radius is a few roundings less.
    const bool isScalar = TypeParam::kForm == KernelForm::C;
    constexpr int kLast = 16777219;
    for (const bool isWide : {true, false}) {
        Wall wall =
            PackedWall(isWide ? kLast + 1 : 1, isWide ? 1 : kLast + 1, 3, 3, TypeParam::kBytes);
        wall.wallViewAngle = 90.0F;
        if (!isScalar) {
            wall.radiusX = wall.radiusY = 0.4999998F;
        }
        const auto table = TypeParam::BuildTable(wall);
        const int place = table[isWide ? 5 : 7] / TypeParam::kBytes;
        EXPECT_LE(place, kLast);
        EXPECT_GE(place, isScalar ? kLast : kLast - 10);
        for (const int entry : table) {
            EXPECT_TRUE(entry >= kNoSource && entry <= kLast * TypeParam::kBytes) << entry;
        }
    }
}

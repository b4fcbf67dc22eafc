#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// Conversions between frames that stand at pages which nobody may touch.

namespace {

constexpr unsigned char kFill = 0xCD;
constexpr GuardedBuffer::Side kSides[] = {GuardedBuffer::Side::EndsAtGuard,
                                          GuardedBuffer::Side::StartsAtGuard};

int Odd(int bytes) {
    return bytes | 1;
}

/// A radius, in single precision, whose product with `factor` is one half or its negative.
std::optional<float> RadiusThatReachesTheEdge(float factor) {
    float radius = 0.5F / std::fabs(factor);
    for (int i = 0; i < 4; ++i) {
        radius = std::nextafter(radius, 0.0F);
    }
    for (int i = 0; i < 9; ++i, radius = std::nextafter(radius, 2.0F)) {
        if (std::fabs(radius * factor) == 0.5F) {
            return radius;
        }
    }
    return std::nullopt;
}

}  // namespace

template <class Family>
class GuardPages : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    /// Runs `convert(src, dst)` with both frames at a guard and holds the output against what
    /// `paint(src, frame)` makes of the same bytes.
    template <class PaintFrame, class Convert>
    static void ExpectPaints(const Ring& ring, GuardedBuffer::Side side, std::size_t outputBytes,
                             PaintFrame&& paint, Convert&& convert) {
        RingGenerator generator(70);
        const auto pixels = generator.NextBytes(ring.SourceBytes(kBytes));
        GuardedBuffer src(pixels.size(), side);
        std::memcpy(src.data(), pixels.data(), pixels.size());
        src.MakeReadOnly();
        GuardedBuffer dst(outputBytes, side, kFill);
        convert(src.data(), dst.data());
        std::vector<unsigned char> expected(ring.OutputBytes(), kFill);
        paint(pixels, expected);
        expected.resize(outputBytes);
        ASSERT_EQ(std::vector<unsigned char>(dst.data(), dst.data() + outputBytes), expected);
        ASSERT_TRUE(dst.IsSurroundingUntouched());
    }

    /// Calls `check(ring, side)` for rings of all sizes from 1 to 64, strides odd.
    template <class Check>
    static void ForEverySize(Check&& check) {
        for (int size = 1; size <= 64; ++size) {
            for (const GuardedBuffer::Side side : kSides) {
                Ring ring = PackedRing(size, 65 - size, 65 - size, size, kBytes);
                ring.srcStride = Odd(ring.srcStride);
                ring.dstStride = Odd(ring.dstStride);
                ASSERT_NO_FATAL_FAILURE(check(ring, side)) << ring;
            }
        }
    }
};

TYPED_TEST_SUITE(GuardPages, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(GuardPages, DirectConversionStaysInItsFrames) {
    this->ForEverySize([this](const Ring& ring, GuardedBuffer::Side side) {
        typename TypeParam::DirectConverter converter;
        TypeParam::Init(converter, ring);
        this->ExpectPaints(
            ring, side, ring.OutputBytes(),
            [&](const auto& src, auto& frame) { TypeParam::PaintDirect(ring, 33.0F, src, frame); },
            [&](const unsigned char* src, unsigned char* dst) {
                TypeParam::Convert(converter, 33.0F, src, dst);
            });
    });
}

// Nothing beyond the last row's last pixel is written, so the frame may end there.
TYPED_TEST(GuardPages, TableConversionStaysInItsFrames) {
    this->ForEverySize([this](const Ring& ring, GuardedBuffer::Side side) {
        const std::size_t outputBytes =
            ring.OutputBytes() -
            static_cast<std::size_t>(ring.dstStride - ring.dstWidth * TypeParam::kBytes);
        const auto entries = TypeParam::ExpectedEntries(ring);
        typename TypeParam::TableConverter converter;
        TypeParam::Init(converter, ring);
        this->ExpectPaints(
            ring, side, outputBytes,
            [&](const auto& src, auto& frame) {
                Paint(entries, ring, TypeParam::kBytes, RowStart::Kept, src, frame);
            },
            [&](const unsigned char* src, unsigned char* dst) {
                TypeParam::Convert(converter, src, dst);
            });
        for (const int part : {1, 2}) {
            const float pan = PanAt<TypeParam>(part * TypeParam::Positions(ring) / 3, ring);
            this->ExpectPaints(
                ring, side, outputBytes,
                [&](const auto& src, auto& frame) {
                    TypeParam::PaintTurned(entries, ring, pan, src, frame);
                },
                [&](const unsigned char* src, unsigned char* dst) {
                    TypeParam::Convert(converter, pan, src, dst);
                });
        }
    });
}

template <class Family>
struct LastPixel {
    static constexpr int kBytes = Family::kBytes;
    static constexpr bool kIsTableMount = Family::kMount == Mount::Table;

    /// The radius of one axis whose rim passes through the frame's edge at an angle whose cosine or
    /// sine this is. The nearest pixel is the frame's last one a little before.
    static std::optional<float> RadiusOf(KernelForm form, double factor) {
        return form == KernelForm::C ? RadiusThatReachesTheEdge(static_cast<float>(factor))
                                     : static_cast<float>(0.499 / std::fabs(factor));
    }

    /// A lens whose rim passes through the frame's lower right corner, seven eighths of a turn from
    /// the right: only a point on both edges leads to the frame's last pixel. Angles rise or fall.
    using Make = void (*)(const Ring& ring, const unsigned char* src, unsigned char* dst);
    static void ExpectRead(KernelForm form, bool rises, Make make) {
        constexpr float kTurn = 6.28318548F;
        const std::size_t column = rises ? 7 : 1;
        const double theta = static_cast<double>(
            SteppedAngles(rises ? 0.0F : kTurn, rises ? kTurn : 0.0F, 9)[column]);
        const auto radiusX = RadiusOf(form, std::cos(theta));
        const auto radiusY = RadiusOf(form, std::sin(theta));
        ASSERT_TRUE(radiusX.has_value() && radiusY.has_value());
        for (int size = 1; size <= 64; ++size) {
            Ring ring = PackedRing(size, 65 - size, 9, 2, kBytes);
            ring.srcStride = Odd(ring.srcStride);
            ring.radiusX = *radiusX;
            ring.radiusY = *radiusY;
            const auto pixels = CoordinateFrame(size, 65 - size, ring.srcStride, kBytes);
            GuardedBuffer src(pixels.size());
            std::memcpy(src.data(), pixels.data(), pixels.size());
            std::vector<unsigned char> frame(ring.OutputBytes());
            make(ring, src.data(), frame.data());
            const std::size_t rim = kIsTableMount ? ring.OutputBytes() / 2 : 0;
            const auto place =
                PlaceIn(frame.data() + rim + column * static_cast<std::size_t>(kBytes), kBytes);
            ASSERT_TRUE(place.has_value()) << ring;
            EXPECT_EQ(*place, (PixelPlace{size - 1, 64 - size})) << ring;
        }
    }
};

template <class Family>
class GuardPagesOfKernels : public FormTest<Family> {};

TYPED_TEST_SUITE(GuardPagesOfKernels, Forms<RingFamilies>::Direct, RingFormNames);

TYPED_TEST(GuardPagesOfKernels, LastPixelOfTheFrameIsReadAtTheGuard) {
    LastPixel<TypeParam>::ExpectRead(
        TypeParam::kForm, true, [](const Ring& ring, const unsigned char* src, unsigned char* dst) {
            TypeParam::ConvertByKernel(ring, 0.0F, src, dst);
        });
}

template <class Family>
class GuardPagesOfTables : public ::testing::Test {};

TYPED_TEST_SUITE(GuardPagesOfTables, RingFamilies, RingFamilyNames);

TYPED_TEST(GuardPagesOfTables, LastPixelOfTheFrameIsReadAtTheGuard) {
    using Check = LastPixel<TypeParam>;
    Check::ExpectRead(FormOfTables(), Check::kIsTableMount,
                      [](const Ring& ring, const unsigned char* src, unsigned char* dst) {
                          typename TypeParam::TableConverter converter;
                          TypeParam::Init(converter, ring);
                          TypeParam::Convert(converter, src, dst);
                      });
}

TEST(GuardedBuffers, StandAtTheGuardOfTheirSide) {
    GuardedBuffer ending(100, GuardedBuffer::Side::EndsAtGuard);
    GuardedBuffer starting(100, GuardedBuffer::Side::StartsAtGuard);
    const auto read = [](const unsigned char* byte) {
        return *static_cast<const volatile unsigned char*>(byte);
    };
    EXPECT_DEATH(read(ending.data() + 100), "");
    EXPECT_DEATH(read(starting.data() - 1), "");
    EXPECT_EQ(read(ending.data() + 99), 0);
    EXPECT_EQ(read(starting.data()), 0);
}

TEST(GuardedBuffers, ReadOnlyBlocksRefuseStores) {
    GuardedBuffer block(100);
    block.data()[5] = 7;
    block.MakeReadOnly();
    EXPECT_DEATH(*static_cast<volatile unsigned char*>(block.data() + 5) = 8, "");
    EXPECT_EQ(block.data()[5], 7);
}

TEST(GuardedBuffers, StoresOnTheOpenSideAreNoticed) {
    GuardedBuffer block(100, GuardedBuffer::Side::EndsAtGuard, kFill);
    block.data()[0] = 1;
    block.data()[99] = 1;
    EXPECT_TRUE(block.IsSurroundingUntouched());
    *static_cast<volatile unsigned char*>(block.data() - 1) = 1;
    EXPECT_FALSE(block.IsSurroundingUntouched());
}

TEST(GuardPagesOfOtherPixels, A32BitConversionByA24BitTableWritesNothing) {
    constexpr int kSide = 4;
    constexpr unsigned char kSource = 0x11;
    GuardedBuffer src(kSide * kSide * 3, GuardedBuffer::Side::EndsAtGuard, kSource);
    GuardedBuffer dst(8 * kSide * 4, GuardedBuffer::Side::EndsAtGuard, kFill);
    UpwardFisheyeAlgoNS::CPanoramaConverter converter;
    // The radius reaches the frame's last pixel: 32 bits from there are one byte too many.
    converter.Init(kSide, kSide, kSide * 3, 8, kSide, 8 * 4, 24, 0.75F, 0.75F, 0.0F);
    converter.CvtRGB32(src.data(), dst.data());
    converter.CvtRGB32(90.0F, src.data(), dst.data());
    for (std::size_t i = 0; i < dst.size(); ++i) {
        ASSERT_EQ(dst.data()[i], kFill) << i;
    }
}

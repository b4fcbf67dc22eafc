#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/HandMadeTable.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"
#include "support/Strip.h"

// How a pan turns a dual panorama: by whole columns, which leave one half and enter the other.

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kSmallestPan = 1.1920929e-07F;

}  // namespace

TEST(DualTurn, LargerPanMovesThePictureToTheRightAndThroughBothHalves) {
    const Strip strip = Strip::Dual(180);
    EXPECT_EQ(strip.MoveToTheRightAt(1.0F), 1);
    EXPECT_EQ(strip.MoveToTheRightAt(1.99F), 1);
    EXPECT_EQ(strip.MoveToTheRightAt(90.0F), 90);
    EXPECT_EQ(strip.MoveToTheRightAt(179.0F), 179);
    EXPECT_EQ(strip.MoveToTheRightAt(181.0F), 181);
    EXPECT_EQ(strip.MoveToTheRightAt(270.0F), 270);
    EXPECT_EQ(strip.MoveToTheRightAt(359.0F), 359);
}

TEST(DualTurn, EveryPanTurnsByTheWholeColumnsItCovers) {
    for (const int width : {1, 2, 8, 16, 40, 64, 200, 720}) {
        const Strip strip = Strip::Dual(width);
        for (int position = 0; position < 2 * width; ++position) {
            for (const double part : {0.05, 0.5, 0.95}) {
                const auto pan = static_cast<float>((position + part) * 180.0 / width);
                ASSERT_EQ(strip.MoveToTheRightAt(pan), position)
                    << "width " << width << ", pan " << pan;
            }
        }
    }
}

TEST(DualTurn, PanOf0OrLessOrNearly0DoesNotTurn) {
    const Strip strip = Strip::Dual(64);
    for (const float pan : {0.0F, -0.0F, 1e-30F, 1.1920928e-07F, kSmallestPan, -1e-30F, -30.0F,
                            -90.0F, -180.0F, -270.0F, -359.9F, -1e9F, -kInfinity}) {
        EXPECT_EQ(strip.MoveToTheRightAt(pan), 0) << "pan " << pan;
    }
}

TEST(DualTurn, PanIsTakenModulo360) {
    const Strip strip = Strip::Dual(36);
    EXPECT_EQ(strip.MoveToTheRightAt(360.0F), 0);
    EXPECT_EQ(strip.MoveToTheRightAt(720.0F), 0);
    EXPECT_EQ(strip.MoveToTheRightAt(365.0F), 1);
    EXPECT_EQ(strip.MoveToTheRightAt(450.0F), 18);
    EXPECT_EQ(strip.MoveToTheRightAt(630.0F), 54);
    EXPECT_EQ(strip.MoveToTheRightAt(1e9F), 56);  // 1e9 is 280 more than a multiple of 360
}

// Half a turn exactly is the one pan that does not turn although its neighbours do.
TEST(DualTurn, PanOf180ShowsThePictureOf0WhileItsNeighboursExchangeTheHalves) {
    for (const int width : {1, 8, 56, 120, 1080}) {
        const Strip strip = Strip::Dual(width);
        EXPECT_EQ(strip.MoveToTheRightAt(180.0F), 0) << width;
        EXPECT_EQ(strip.MoveToTheRightAt(540.0F), 0) << width;
        EXPECT_EQ(strip.MoveToTheRightAt(std::nextafter(180.0F, 360.0F)), width);
        EXPECT_EQ(strip.MoveToTheRightAt(std::nextafter(180.0F, 0.0F)), width - 1)
            << "less than half a turn";
        EXPECT_EQ(strip.MoveToTheRightAt(179.99F), width - 1) << width;
        EXPECT_EQ(strip.MoveToTheRightAt(std::nextafter(360.0F, 0.0F)), 2 * width - 1) << width;
    }
}

TEST(DualTurn, PanThatIsNoNumberWritesNothing) {
    const Strip strip = Strip::Dual(16);
    EXPECT_EQ(strip.MoveToTheRightAt(kNan), Strip::kNothingWritten);
    EXPECT_EQ(strip.MoveToTheRightAt(-kNan), Strip::kNothingWritten);
    EXPECT_EQ(strip.MoveToTheRightAt(kInfinity), Strip::kNothingWritten);
}

// 3.21428561 times 56 is 179.99999, whose nearest single precision number is 180.
TEST(DualTurn, ProductIsRoundedToSinglePrecision) {
    const Strip strip = Strip::Dual(56);
    EXPECT_EQ(strip.MoveToTheRightAt(3.21428561F), 1);
    EXPECT_LT(56.0 * static_cast<double>(3.21428561F), 180.0);
}

namespace {

/// By how many of the ring's positions a dual panorama of this width moves to the right. One pixel
/// of the ring stands out and tells.
int MoveOfMarkAt(int width, float pan) {
    std::vector<int> entries(static_cast<std::size_t>(2 * width), 0);
    entries.front() = 3;
    const HandMadeTable panorama(entries, PackedRing(2, 1, width, 2, 3), 3);
    const std::vector<unsigned char> src = {1, 1, 1, 2, 2, 2};
    std::vector<unsigned char> frame(static_cast<std::size_t>(2 * width * 3), 0);
    panorama.ConvertDualTurned<24>(pan, src.data(), frame.data());
    const auto mark = std::find(frame.begin(), frame.end(), static_cast<unsigned char>(2));
    return static_cast<int>(mark - frame.begin()) / 3;
}

int MoveByTheModel(int width, float pan) {
    const DualTurn turn = DualTurnOf(width, pan);
    return (turn.shift + (turn.isExchanged ? width : 0)) % (2 * width);
}

/// The largest pan below half a turn at which a quotient in single precision turns by a column
/// more, if the width has one.
std::optional<float> PanOfAnotherSingleQuotient(int width) {
    for (int column = width - 1; column > 0; --column) {
        const auto pan = static_cast<float>(column * 180.0 / width);
        const float product = static_cast<float>(width) * pan;
        if (static_cast<int>(product / 180.0F) != DualTurnOf(width, pan).shift) {
            return pan;
        }
    }
    return std::nullopt;
}

}  // namespace

// At whole columns and one rounding beside them, where the steps' order and precision decide.
TEST(DualTurn, PansAtWholeColumnsTurnAsThePlainStepsDo) {
    RingGenerator generator(401);
    for (int i = 0; i < 4000; ++i) {
        const int width = generator.NextInt(1, 3000);
        float pan = static_cast<float>(generator.NextInt(0, width) * 180.0 / width);
        const int neighbour = generator.NextInt(-1, 1);
        pan = neighbour == 0 ? pan : std::nextafter(pan, neighbour < 0 ? 0.0F : 360.0F);
        pan += 180.0F * static_cast<float>(generator.NextInt(0, 3));
        ASSERT_EQ(MoveOfMarkAt(width, pan), MoveByTheModel(width, pan))
            << "width " << width << ", pan " << pan;
    }
}

// Up to half a million columns single precision would do for the quotient as well.
TEST(DualTurn, QuotientIsTakenInDoublePrecision) {
    int told = 0;
    for (const int width : {600001, 700013, 811111, 1000003}) {
        const std::optional<float> pan = PanOfAnotherSingleQuotient(width);
        if (pan.has_value()) {
            ++told;
            EXPECT_EQ(MoveOfMarkAt(width, *pan), MoveByTheModel(width, *pan))
                << "width " << width << ", pan " << *pan;
        }
    }
    EXPECT_GE(told, 2) << "widths that tell the two apart";
}

// 16777223 as a single precision number is 16777224, and the product rounds up as well: it reaches
// 180 times the width just below half a turn. All columns come from the other half then.
TEST(DualTurn, TurnByTheWholeWidthShowsTheOtherHalf) {
    const float pan = std::nextafter(180.0F, 0.0F);
    const int width = 16777223;
    ASSERT_EQ(DualTurnOf(width, pan).shift, width);
    std::vector<int> entries(static_cast<std::size_t>(2 * width), 0);
    std::fill(entries.begin() + width, entries.end(), 3);
    const HandMadeTable panorama(entries, PackedRing(2, 1, width, 2, 3), 3);
    const std::vector<unsigned char> src = {1, 1, 1, 2, 2, 2};
    GuardedBuffer frame(static_cast<std::size_t>(width) * 6);
    panorama.ConvertDualTurned<24>(pan, src.data(), frame.data());
    const auto bytes = static_cast<std::ptrdiff_t>(width) * 3;
    EXPECT_EQ(std::count(frame.data(), frame.data() + bytes, 2), bytes);
    EXPECT_EQ(std::count(frame.data() + bytes, frame.data() + 2 * bytes, 1), bytes);
    EXPECT_TRUE(frame.IsSurroundingUntouched());
}

template <class Family>
class DualTurns : public ::testing::Test {
protected:
    static constexpr int kBytes = Family::kBytes;

    /// Holds a table with any entries against the model at each of these pans.
    static void ExpectTurns(const Ring& ring, RingGenerator& generator,
                            const std::vector<float>& pans) {
        const auto entries = generator.NextEntries(ring, kBytes);
        const HandMadeTable panorama(entries, ring, kBytes);
        const auto src = generator.NextBytes(ring.SourceBytes(kBytes));
        for (const float pan : pans) {
            std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
            std::vector<unsigned char> expected = frame;
            Family::PaintTurned(entries, ring, pan, src, expected);
            Family::ConvertTurned(panorama, pan, src.data(), frame.data());
            ASSERT_TRUE(frame == expected) << ring << ", pan " << pan;
        }
    }
};

// The mounts differ in nothing here, so one stands for both.
using DualPixels = ::testing::Types<DualFamily<TableCamera, 24>, DualFamily<TableCamera, 32>>;
TYPED_TEST_SUITE(DualTurns, DualPixels, RingFamilyNames);

TYPED_TEST(DualTurns, EveryWidthAndHeightTurnsByEveryWholeColumn) {
    RingGenerator generator(402);
    for (int width = 1; width <= 40; ++width) {
        Ring ring = PackedRing(30, 20, width, generator.NextInt(1, 7), TypeParam::kBytes);
        ring.srcStride += generator.NextInt(0, 7);
        ring.dstStride += generator.NextInt(0, 7);
        std::vector<float> pans = {180.0F, 360.0F, 450.0F};
        for (int position = 0; position < TypeParam::Positions(ring); ++position) {
            pans.push_back(PanAt<TypeParam>(position, ring));
        }
        ASSERT_NO_FATAL_FAILURE(this->ExpectTurns(ring, generator, pans));
    }
}

// Tables of these sizes are gone through in parts, some of which end between the halves.
TYPED_TEST(DualTurns, LargeTablesAreServedCompletely) {
    RingGenerator generator(403);
    for (const int width : {2047, 2049, 4104}) {
        for (const int height : {64, 67, 130}) {
            Ring ring = PackedRing(90, 70, width, height, TypeParam::kBytes);
            ring.dstStride += 5;
            ASSERT_NO_FATAL_FAILURE(
                this->ExpectTurns(ring, generator, {0.1F, 75.0F, 179.9F, 180.1F, 333.0F}));
        }
    }
}

// Beyond four million pixels the parts are narrow ones.
TYPED_TEST(DualTurns, HugeTablesAreServedCompletely) {
    RingGenerator generator(404);
    Ring ring = PackedRing(90, 70, 2056, 2050, TypeParam::kBytes);
    ring.dstStride += 5;
    ASSERT_NO_FATAL_FAILURE(this->ExpectTurns(ring, generator, {75.0F, 200.0F}));
}

template <class Family>
class DualConverterTurns : public ::testing::Test {
protected:
    static std::vector<unsigned char> At(float pan) {
        return TablePicture<Family>(RingOfEightRows(), Source(), pan);
    }

    /// The picture with its lower half above.
    static std::vector<unsigned char> Exchanged(std::vector<unsigned char> frame) {
        std::rotate(frame.begin(), frame.begin() + static_cast<std::ptrdiff_t>(frame.size()) / 2,
                    frame.end());
        return frame;
    }

private:
    static Ring RingOfEightRows() { return PackedRing(61, 47, 64, 8, Family::kBytes); }
    static std::vector<unsigned char> Source() {
        return CoordinateFrame(61, 47, RingOfEightRows().srcStride, Family::kBytes);
    }
};

TYPED_TEST_SUITE(DualConverterTurns, DualFamilies, RingFamilyNames);

TYPED_TEST(DualConverterTurns, Pan180ShowsTheUnturnedHalves) {
    EXPECT_EQ(this->At(180.0F), this->At(0.0F));
    EXPECT_EQ(this->At(540.0F), this->At(0.0F));
    EXPECT_EQ(this->At(-180.5F), this->At(0.0F));
}

TYPED_TEST(DualConverterTurns, PanJustAbove180ExchangesTheHalves) {
    EXPECT_EQ(this->At(std::nextafter(180.0F, 360.0F)), this->Exchanged(this->At(0.0F)));
}

TYPED_TEST(DualConverterTurns, PansHalfATurnApartShowExchangedHalves) {
    for (const float pan : {0.5F, 45.0F, 90.0F, 179.0F}) {
        EXPECT_EQ(this->At(pan + 180.0F), this->Exchanged(this->At(pan))) << "pan " << pan;
    }
}

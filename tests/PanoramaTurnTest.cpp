#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/GuardedBuffer.h"
#include "support/HandMadeTable.h"
#include "support/RingFamilies.h"
#include "support/RingModel.h"
#include "support/Strip.h"

// From a pan to a number of columns.

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

}  // namespace

TEST(PanoramaTurn, LargerPanMovesThePictureToTheLeft) {
    const Strip strip = Strip::Full(360);
    EXPECT_EQ(strip.MoveToTheLeftAt(1.0F), 1);
    EXPECT_EQ(strip.MoveToTheLeftAt(2.0F), 2);
    EXPECT_EQ(strip.MoveToTheLeftAt(359.0F), 359);
    EXPECT_EQ(strip.MoveToTheLeftAt(1.99F), 1);
}

TEST(PanoramaTurn, EveryPanTurnsByTheWholeColumnsItCovers) {
    for (const int width : {1, 2, 8, 16, 40, 64, 200, 720, 1000}) {
        const Strip strip = Strip::Full(width);
        for (int shift = 0; shift < width; ++shift) {
            for (const double part : {0.05, 0.5, 0.95}) {
                const auto pan = static_cast<float>((shift + part) * 360.0 / width);
                ASSERT_EQ(strip.MoveToTheLeftAt(pan), shift)
                    << "width " << width << ", pan " << pan;
            }
        }
    }
}

TEST(PanoramaTurn, PanOf0OrLessOrNearly0DoesNotTurn) {
    const Strip strip = Strip::Full(64);
    for (const float pan : {0.0F, -0.0F, 1e-30F, 1.1920928e-07F, 1.1920929e-07F, -1e-30F, -30.0F,
                            -180.0F, -359.9F, -1e9F, -kInfinity}) {
        EXPECT_EQ(strip.MoveToTheLeftAt(pan), 0) << "pan " << pan;
    }
    EXPECT_EQ(strip.MoveToTheLeftAt(330.0F), 58);  // 330 * 64 / 360 = 58.7
}

TEST(PanoramaTurn, PanIsTakenModulo360) {
    const Strip strip = Strip::Full(72);
    EXPECT_EQ(strip.MoveToTheLeftAt(5.0F), 1);
    EXPECT_EQ(strip.MoveToTheLeftAt(725.0F), 1);
    EXPECT_EQ(strip.MoveToTheLeftAt(360.0F), 0);
    EXPECT_EQ(strip.MoveToTheLeftAt(720.0F), 0);
    EXPECT_EQ(strip.MoveToTheLeftAt(3607.5F), 1);
    EXPECT_EQ(strip.MoveToTheLeftAt(1e9F), 56);  // 1e9 is 280 more than a multiple of 360
}

TEST(PanoramaTurn, PanOfLessThanAColumnDoesNotTurn) {
    const Strip strip = Strip::Full(40);
    EXPECT_EQ(strip.MoveToTheLeftAt(8.999F), 0);
    EXPECT_EQ(strip.MoveToTheLeftAt(9.0F), 1);
    EXPECT_EQ(strip.MoveToTheLeftAt(0.001F), 0);
}

TEST(PanoramaTurn, PanOf180SwapsTheHalvesOfEachRow) {
    for (const int width : {2, 8, 56, 120, 3840}) {
        EXPECT_EQ(Strip::Full(width).MoveToTheLeftAt(180.0F), width / 2);
    }
}

// 105 of 360 degrees are 245 of 840 columns exactly; 105 / 360 and 840 / 360 are no single
// precision numbers, and either quotient taken first leads to 244.
TEST(PanoramaTurn, ProductIsTakenBeforeTheQuotient) {
    const Strip strip = Strip::Full(840);
    EXPECT_EQ(strip.MoveToTheLeftAt(105.0F), 245);
    EXPECT_EQ(strip.MoveToTheLeftAt(210.0F), 490);
    EXPECT_EQ(strip.MoveToTheLeftAt(213.0F), 497);
}

// 6.42857122 times 56 is 359.99999, whose nearest single precision number is 360.
TEST(PanoramaTurn, ProductIsRoundedToSinglePrecision) {
    EXPECT_EQ(Strip::Full(56).MoveToTheLeftAt(6.42857122F), 1);
}

TEST(PanoramaTurn, PanThatIsNoNumberWritesNothing) {
    const Strip strip = Strip::Full(16);
    EXPECT_EQ(strip.MoveToTheLeftAt(kNan), Strip::kNothingWritten);
    EXPECT_EQ(strip.MoveToTheLeftAt(-kNan), Strip::kNothingWritten);
    EXPECT_EQ(strip.MoveToTheLeftAt(kInfinity), Strip::kNothingWritten);
}

TEST(PanoramaTurn, PanJustBelow360ShowsTheLastColumnFirst) {
    const float pan = std::nextafter(360.0F, 0.0F);
    for (const int width : {1, 8, 360, 3840}) {
        EXPECT_EQ(Strip::Full(width).MoveToTheLeftAt(pan), width - 1);
    }
}

namespace {

/// The picture of a panorama of one row of 3-byte pixels, odd columns of one color and even ones of
/// another, at the pan just below 360. The frame stands between guards.
void ExpectUnturnedPicture(int width) {
    std::vector<int> entries(static_cast<std::size_t>(width), 0);
    for (std::size_t x = 1; x < entries.size(); x += 2) {
        entries[x] = 3;
    }
    const HandMadeTable panorama(entries, PackedRing(2, 1, width, 1, 3), 3);
    const std::vector<unsigned char> src = {1, 1, 1, 2, 2, 2};
    GuardedBuffer frame(static_cast<std::size_t>(width) * 3, GuardedBuffer::Side::StartsAtGuard);
    panorama.ConvertTurned<24>(std::nextafter(360.0F, 0.0F), src.data(), frame.data());
    EXPECT_TRUE(frame.IsSurroundingUntouched());
    for (int x = 0; x < width; ++x) {
        ASSERT_EQ(frame.data()[x * 3 + 2], x % 2 + 1) << "column " << x;
    }
}

}  // namespace

// 359.999969 * 745657 lies just above the middle between two single precision numbers, and the
// upper one divided by 360 rounds to 745657.
TEST(PanoramaTurn, TurnByTheWholeWidthShowsTheUnturnedPicture) {
    ExpectUnturnedPicture(745657);
}

// 16777223 as a single precision number is 16777224, which is also where the turn leads.
TEST(PanoramaTurn, TurnBeyondTheWidthShowsTheUnturnedPicture) {
    ExpectUnturnedPicture(16777223);
}

template <class Family>
class ConverterTurns : public ::testing::Test {
protected:
    ConverterTurns() : m_ring(PackedRing(61, 47, 64, 8, Family::kBytes)) {
        m_ring.dstStride += 3;
        m_src = CoordinateFrame(61, 47, m_ring.srcStride, Family::kBytes);
    }

    std::vector<unsigned char> At(float pan) const {
        return TablePicture<Family>(m_ring, m_src, pan);
    }
    std::vector<unsigned char> WithoutPan() const { return TablePicture<Family>(m_ring, m_src); }

    Ring m_ring;

private:
    std::vector<unsigned char> m_src;
};

TYPED_TEST_SUITE(ConverterTurns, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(ConverterTurns, NegativePanIsNotTurnedUnlikeItsPositiveTwin) {
    EXPECT_EQ(this->At(-30.0F), this->WithoutPan());
    EXPECT_NE(this->At(330.0F), this->WithoutPan());
}

TYPED_TEST(ConverterTurns, PansAFullTurnApartShowTheSamePicture) {
    EXPECT_EQ(this->At(360.0F), this->WithoutPan());
    EXPECT_EQ(this->At(725.0F), this->At(5.0F));
    EXPECT_NE(this->At(725.0F), this->At(11.0F));
}

TYPED_TEST(ConverterTurns, PanOf0AndBelowAColumnShowTheUnturnedPicture) {
    // 64 columns of a full turn or of half a turn: single precision holds the column's angle.
    const float column = 360.0F / static_cast<float>(TypeParam::Positions(this->m_ring));
    EXPECT_EQ(this->At(0.0F), this->WithoutPan());
    EXPECT_EQ(this->At(1e-8F), this->WithoutPan());
    EXPECT_EQ(this->At(std::nextafter(column, 0.0F)), this->WithoutPan());
    EXPECT_NE(this->At(column), this->WithoutPan());
}

TYPED_TEST(ConverterTurns, PanThatIsNoNumberWritesNothing) {
    const std::vector<unsigned char> untouched(this->WithoutPan().size(), 0xCD);
    EXPECT_EQ(this->At(kNan), untouched);
    EXPECT_EQ(this->At(kInfinity), untouched);
}

#if defined(__x86_64__)

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstddef>
#include <limits>
#include <utility>

#include "support/VectorLanes.h"
#include "support/VectorMathModel.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class Lanes>
class VectorIntegers : public LanesTest<Lanes> {};

TYPED_TEST_SUITE(VectorIntegers, LaneWidths);

TYPED_TEST(VectorIntegers, HalvesRoundToTheEvenNeighbour) {
    const std::pair<float, int> cases[] = {{0.5F, 0},
                                           {1.5F, 2},
                                           {2.5F, 2},
                                           {3.5F, 4},
                                           {-0.5F, 0},
                                           {-1.5F, -2},
                                           {-2.5F, -2},
                                           {0.49999997F, 0},
                                           {0.50000006F, 1},
                                           {8388606.5F, 8388606},
                                           {8388607.5F, 8388608},
                                           {2147483520.0F, 2147483520},
                                           {2147483648.0F, INT_MIN},
                                           {-2147483648.0F, INT_MIN},
                                           {1e30F, INT_MIN},
                                           {-kInfinity, INT_MIN},
                                           {kInfinity, INT_MIN},
                                           {kNan, INT_MIN}};
    for (const auto& [value, expected] : cases) {
        for (std::size_t at = 0; at < TypeParam::kCount; ++at) {
            std::array<float, TypeParam::kCount> in;
            std::array<int, TypeParam::kCount> out{};
            in.fill(7.0F);
            in[at] = value;
            TypeParam::RoundThere(in.data(), out.data());
            for (std::size_t lane = 0; lane < in.size(); ++lane) {
                EXPECT_EQ(out[lane], lane == at ? expected : 7) << value;
            }
        }
        EXPECT_EQ(model::Round(value), expected) << value;
    }
}

TYPED_TEST(VectorIntegers, IntegersBecomeTheNearestFloats) {
    for (const float value : UnusualFloats()) {
        EXPECT_EQ(this->Of(TypeParam::RoundThereAndBack, value),
                  static_cast<float>(model::Round(value)));
    }
}

TYPED_TEST(VectorIntegers, IntegersAreShiftedInEveryLane) {
    std::array<float, TypeParam::kCount> in;
    for (std::size_t lane = 0; lane < in.size(); ++lane) {
        in[lane] = static_cast<float>(3 * static_cast<int>(lane)) - 10.0F;
    }
    std::array<int, TypeParam::kCount> by2{};
    std::array<int, TypeParam::kCount> by31{};
    TypeParam::template RoundAndShiftLeft<2>(in.data(), by2.data());
    TypeParam::template RoundAndShiftLeft<31>(in.data(), by31.data());
    for (std::size_t lane = 0; lane < in.size(); ++lane) {
        const int number = 3 * static_cast<int>(lane) - 10;
        EXPECT_EQ(by2[lane], 4 * number);
        EXPECT_EQ(by31[lane], number % 2 != 0 ? INT_MIN : 0);
    }
}

TYPED_TEST(VectorIntegers, SignsFlipWhereTheNumberIsOdd) {
    std::array<float, TypeParam::kCount> numbers;
    std::array<float, TypeParam::kCount> values;
    std::array<float, TypeParam::kCount> out{};
    for (std::size_t lane = 0; lane < numbers.size(); ++lane) {
        numbers[lane] = static_cast<float>(lane) - 2.0F;
        values[lane] = lane % 4 < 2 ? 0.0F : -1.5F;
    }
    TypeParam::FlipOdd(numbers.data(), values.data(), out.data());
    for (std::size_t lane = 0; lane < numbers.size(); ++lane) {
        EXPECT_EQ(BitsOf(out[lane]), BitsOf(lane % 2 != 0 ? -values[lane] : values[lane])) << lane;
    }
}

TEST(EightLanes, TruncateTowardsZero) {
    if (GetCpuInstructionSet() < 7) {
        GTEST_SKIP() << "this processor has no vectors of eight lanes";
    }
    const std::array<float, 8> in = {0.99F,      -0.99F,        2.5F, -2.5F,
                                     8388607.5F, 2147483648.0F, kNan, -3e9F};
    std::array<int, 8> out{};
    eightLanes::Truncate(in.data(), out.data());
    EXPECT_EQ(out, (std::array<int, 8>{0, 0, 2, -2, 8388607, INT_MIN, INT_MIN, INT_MIN}));
}

using FourInts = std::array<int, 4>;

sse::sse4Ints IntsOf(const FourInts& values) {
    return sse::sse4Ints::Load(values.data());
}

FourInts Stored(sse::sse4Ints values) {
    FourInts stored{};
    values.Store(stored.data());
    return stored;
}

TEST(FourInts, AddAndCompareAndMaskLaneByLane) {
    const FourInts a = {INT_MAX, -5, 0x0F0F, INT_MIN};
    const FourInts b = {1, -5, 0x00FF, -1};
    EXPECT_EQ(Stored(IntsOf(a) + IntsOf(b)), (FourInts{INT_MIN, -10, 0x100E, INT_MAX}));
    EXPECT_EQ(Stored(IntsOf(a) & IntsOf(b)), (FourInts{1, -5, 0x000F, INT_MIN}));
    EXPECT_EQ((IntsOf(a) == IntsOf(b)).Bits(), 0b0010);
    EXPECT_EQ(Stored(sse::sse4Ints(-7)), (FourInts{-7, -7, -7, -7}));
}

TEST(FourInts, ShiftRightFillsUpWithZeros) {
    const FourInts a = {-1, INT_MIN, 5, INT_MAX};
    EXPECT_EQ(Stored(IntsOf(a).ShiftedRight<31>()), (FourInts{1, 1, 0, 0}));
    EXPECT_EQ(Stored(IntsOf(a).ShiftedRight<1>()), (FourInts{INT_MAX, 1 << 30, 2, INT_MAX / 2}));
    EXPECT_EQ(Stored(IntsOf(a).ShiftedLeft<1>()), (FourInts{-2, 0, 10, -2}));
}

KIVFISHEYE_TARGET_BEGIN("sse4.1")
void MultiplyInto(const int* a, const int* b, int* result) {
    MultiplyLow(sse::sse4Ints::Load(a), sse::sse4Ints::Load(b)).Store(result);
}
void SmallerInto(const int* a, const int* b, int* result) {
    Min(sse::sse4Ints::Load(a), sse::sse4Ints::Load(b)).Store(result);
}
KIVFISHEYE_TARGET_END

TEST(FourInts, MultiplyLowWrapsAround) {
    if (GetCpuInstructionSet() < 5) {
        GTEST_SKIP() << "this processor has no SSE4.1";
    }
    const FourInts a = {3, -4, 0x10001, 1 << 30};
    const FourInts b = {5, 6, 0x10001, 6};
    FourInts out{};
    MultiplyInto(a.data(), b.data(), out.data());
    EXPECT_EQ(out, (FourInts{15, -24, 0x20001, INT_MIN}));
}

TEST(FourInts, TheSmallerIsTakenWithItsSign) {
    if (GetCpuInstructionSet() < 5) {
        GTEST_SKIP() << "this processor has no SSE4.1";
    }
    const FourInts a = {3, -4, INT_MIN, INT_MAX};
    const FourInts b = {5, 6, 1, -1};
    FourInts out{};
    SmallerInto(a.data(), b.data(), out.data());
    EXPECT_EQ(out, (FourInts{3, -4, INT_MIN, -1}));
}

}  // namespace

#endif

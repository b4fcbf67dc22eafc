#if defined(__x86_64__)

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "support/VectorLanes.h"
#include "support/VectorMathModel.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

template <class Lanes>
class VectorPrimitives : public LanesTest<Lanes> {
protected:
    using LanesTest<Lanes>::kCount;
    using typename LanesTest<Lanes>::Row;

    /// One bit for every lane in which the row's value is `value`.
    template <class Predicate>
    static int BitsWhere(Predicate predicate) {
        int bits = 0;
        for (std::size_t lane = 0; lane < kCount; ++lane) {
            bits |= predicate(lane) ? 1 << lane : 0;
        }
        return bits;
    }

    /// Holds an operation of two rows against one of two numbers, over every pair of these values
    /// and in every lane.
    template <class Exact>
    static void ExpectPairwise(void (*operation)(const float*, const float*, float*), Exact exact,
                               const std::vector<float>& values) {
        for (const float b : values) {
            const Row bs = LanesTest<Lanes>::RowOf(b);
            for (std::size_t first = 0; first + kCount <= values.size(); ++first) {
                Row out{};
                operation(&values[first], bs.data(), out.data());
                for (std::size_t lane = 0; lane < kCount; ++lane) {
                    ASSERT_TRUE(IsSameFloat(out[lane], exact(values[first + lane], b)))
                        << values[first + lane] << ", " << b << " in lane " << lane;
                }
            }
        }
    }

    template <class Exact>
    static void ExpectEach(void (*operation)(const float*, float*), Exact exact,
                           const std::vector<float>& values) {
        for (std::size_t first = 0; first + kCount <= values.size(); ++first) {
            Row out{};
            operation(&values[first], out.data());
            for (std::size_t lane = 0; lane < kCount; ++lane) {
                ASSERT_TRUE(IsSameFloat(out[lane], exact(values[first + lane])))
                    << values[first + lane] << " in lane " << lane;
            }
        }
    }
};

TYPED_TEST_SUITE(VectorPrimitives, LaneWidths);

TYPED_TEST(VectorPrimitives, ArithmeticIsThatOfEachLane) {
    const std::vector<float> values = UnusualFloats();
    this->ExpectPairwise(
        TypeParam::Add, [](float a, float b) { return a + b; }, values);
    this->ExpectPairwise(
        TypeParam::Subtract, [](float a, float b) { return a - b; }, values);
    this->ExpectPairwise(
        TypeParam::Multiply, [](float a, float b) { return a * b; }, values);
    this->ExpectPairwise(
        TypeParam::Divide, [](float a, float b) { return a / b; }, values);
    this->ExpectEach(
        TypeParam::Root, [](float a) { return std::sqrt(a); }, values);
    this->ExpectEach(TypeParam::Reciprocal, model::Reciprocal, values);
}

TYPED_TEST(VectorPrimitives, AbsoluteValueClearsTheSignAlone) {
    this->ExpectEach(
        TypeParam::AbsoluteValue, [](float a) { return FloatOf(BitsOf(a) & 0x7FFFFFFF); },
        UnusualFloats());
    std::array<float, TypeParam::kCount> nan;
    std::array<float, TypeParam::kCount> out{};
    nan.fill(FloatOf(0xFFC12345));
    TypeParam::AbsoluteValue(nan.data(), out.data());
    EXPECT_EQ(BitsOf(out[0]), 0x7FC12345U);
}

TYPED_TEST(VectorPrimitives, ASignGoesFromOneNumberToAnother) {
    this->ExpectPairwise(
        TypeParam::WithSignOf, [](float a, float b) { return std::copysign(a, b); },
        UnusualFloats());
}

TYPED_TEST(VectorPrimitives, TheReciprocalIsAnEstimateWithinItsBound) {
    for (const float a : Sweep(1.0, 4.0, 4099)) {
        std::array<float, TypeParam::kCount> in;
        std::array<float, TypeParam::kCount> out{};
        in.fill(a);
        TypeParam::Reciprocal(in.data(), out.data());
        ASSERT_LE(std::abs(double{out[0]} * double{a} - 1.0), 1.5 / 4096.0) << a;
    }
}

TYPED_TEST(VectorPrimitives, TheSmallerOfANanAndANumberIsTheSecond) {
    this->ExpectPairwise(
        TypeParam::Smaller, [](float a, float b) { return a < b ? a : b; }, UnusualFloats());
    std::array<float, TypeParam::kCount> a;
    std::array<float, TypeParam::kCount> b;
    std::array<float, TypeParam::kCount> out{};
    a.fill(kNan);
    b.fill(3.0F);
    TypeParam::Smaller(a.data(), b.data(), out.data());
    EXPECT_EQ(out[0], 3.0F);
    TypeParam::Smaller(b.data(), a.data(), out.data());
    EXPECT_TRUE(std::isnan(out[0]));
    a.fill(0.0F);
    b.fill(-0.0F);
    TypeParam::Smaller(a.data(), b.data(), out.data());
    EXPECT_TRUE(std::signbit(out[0])) << "equal zeros: the second";
}

TYPED_TEST(VectorPrimitives, TheLargerOfANanAndANumberIsTheSecond) {
    this->ExpectPairwise(
        TypeParam::Larger, [](float a, float b) { return a > b ? a : b; }, UnusualFloats());
}

TYPED_TEST(VectorPrimitives, ComparisonsAreFalseForNanAndEqualForBothZeros) {
    const std::vector<float> values = UnusualFloats();
    for (const float b : values) {
        std::array<float, TypeParam::kCount> bs;
        bs.fill(b);
        for (std::size_t first = 0; first + TypeParam::kCount <= values.size(); ++first) {
            const float* const a = &values[first];
            EXPECT_EQ(TypeParam::Less(a, bs.data()),
                      this->BitsWhere([&](std::size_t lane) { return a[lane] < b; }));
            EXPECT_EQ(TypeParam::LessOrEqual(a, bs.data()),
                      this->BitsWhere([&](std::size_t lane) { return a[lane] <= b; }));
        }
    }
}

TYPED_TEST(VectorPrimitives, AMaskIsStoredAsAllOnesOrAllZeros) {
    std::array<float, TypeParam::kCount> a;
    std::array<float, TypeParam::kCount> b;
    std::array<int, TypeParam::kCount> out;
    b.fill(2.5F);
    for (std::size_t lane = 0; lane < a.size(); ++lane) {
        a[lane] = static_cast<float>(lane);
    }
    TypeParam::StoreLess(a.data(), b.data(), out.data());
    for (std::size_t lane = 0; lane < a.size(); ++lane) {
        EXPECT_EQ(out[lane], lane <= 2 ? -1 : 0);
    }
}

TYPED_TEST(VectorPrimitives, AMaskIsLoadedFromWhereItWasStored) {
    constexpr std::size_t kLanes = TypeParam::kCount;
    for (int mask = 0; mask < 1 << kLanes; ++mask) {
        alignas(32) std::array<int, kLanes + 1> stored{};
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            stored[lane + 1] = (mask >> lane & 1) != 0 ? -1 : 0;
        }
        ASSERT_EQ(TypeParam::LoadedBits(&stored[1]), mask);
    }
}

TYPED_TEST(VectorPrimitives, MasksCombineLaneByLane) {
    const int all = (1 << TypeParam::kCount) - 1;
    for (int first = 0; first <= all; ++first) {
        for (int second = 0; second <= all; ++second) {
            std::array<float, TypeParam::kCount> a;
            std::array<float, TypeParam::kCount> b;
            for (std::size_t lane = 0; lane < a.size(); ++lane) {
                a[lane] = (first >> lane & 1) != 0 ? 0.0F : kNan;
                b[lane] = (second >> lane & 1) != 0 ? -kInfinity : 1.0F;
            }
            int bits[3];
            TypeParam::Combine(a.data(), b.data(), bits);
            ASSERT_EQ(bits[0], first & second);
            ASSERT_EQ(bits[1], first | second);
            ASSERT_EQ(bits[2], first & ~second);
        }
    }
}

TYPED_TEST(VectorPrimitives, SelectTakesEachLaneBitForBitFromOneSide) {
    std::array<float, TypeParam::kCount> chosen;
    std::array<float, TypeParam::kCount> other;
    for (std::size_t lane = 0; lane < chosen.size(); ++lane) {
        // Among them quiet NaN with a payload, infinities, zeros of both signs and denormals.
        constexpr std::uint32_t kBits[] = {0x7FC01234, 0x80000000, 0x00000001, 0xFF800000};
        chosen[lane] = FloatOf(kBits[lane % 4]);
        other[lane] = FloatOf(~kBits[lane % 4] | 0x00400000U);
    }
    for (int mask = 0; mask < 1 << TypeParam::kCount; ++mask) {
        std::array<float, TypeParam::kCount> a;
        std::array<float, TypeParam::kCount> b;
        std::array<float, TypeParam::kCount> out{};
        b.fill(0.0F);
        for (std::size_t lane = 0; lane < a.size(); ++lane) {
            a[lane] = (mask >> lane & 1) != 0 ? -1.0F : 1.0F;
        }
        TypeParam::SelectWhereLess(a.data(), b.data(), chosen.data(), other.data(), out.data());
        for (std::size_t lane = 0; lane < a.size(); ++lane) {
            ASSERT_EQ(BitsOf(out[lane]),
                      BitsOf((mask >> lane & 1) != 0 ? chosen[lane] : other[lane]))
                << "mask " << mask << ", lane " << lane;
        }
    }
}

TYPED_TEST(VectorPrimitives, MinusZeroAndNegativeNanHaveTheSignBit) {
    const std::vector<float> values = UnusualFloats();
    for (std::size_t first = 0; first + TypeParam::kCount <= values.size(); ++first) {
        const float* const a = &values[first];
        EXPECT_EQ(TypeParam::SignBits(a),
                  this->BitsWhere([&](std::size_t lane) { return std::signbit(a[lane]); }));
    }
    std::array<float, TypeParam::kCount> a;
    a.fill(-0.0F);
    EXPECT_EQ(TypeParam::SignBits(a.data()), (1 << TypeParam::kCount) - 1);
    a.fill(0.0F);
    a[1] = FloatOf(0xFFC00000);
    EXPECT_EQ(TypeParam::SignBits(a.data()), 2);
}

TYPED_TEST(VectorPrimitives, LoadAndStoreNeedNoAlignmentAndTouchNothingElse) {
    constexpr std::size_t kLanes = TypeParam::kCount;
    alignas(64) std::array<float, 3 * kLanes> in;
    for (std::size_t i = 0; i < in.size(); ++i) {
        in[i] = static_cast<float>(i + 1);
    }
    for (std::size_t from = 0; from < kLanes; ++from) {
        alignas(64) std::array<float, 3 * kLanes> out{};
        TypeParam::Copy(&in[from], &out[from + 1]);
        for (std::size_t i = 0; i < out.size(); ++i) {
            const bool isInside = i > from && i <= from + kLanes;
            ASSERT_EQ(out[i], isInside ? in[i - 1] : 0.0F) << from << ", " << i;
        }
    }
}

TYPED_TEST(VectorPrimitives, OneNumberFillsEveryLane) {
    std::array<float, TypeParam::kCount> out{};
    const auto isEverywhere = [&out](std::uint32_t bits) {
        for (const float value : out) {
            EXPECT_EQ(BitsOf(value), bits);
        }
    };
    TypeParam::Everywhere(-2.5F, out.data());
    isEverywhere(BitsOf(-2.5F));
    TypeParam::EverywhereOfBits(0xC0490FDB, out.data());
    isEverywhere(0xC0490FDB);
    TypeParam::Indices(out.data());
    for (std::size_t lane = 0; lane < out.size(); ++lane) {
        EXPECT_EQ(out[lane], static_cast<float>(lane));
    }
}

}  // namespace

#endif

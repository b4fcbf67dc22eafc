#if defined(__x86_64__)

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "support/VectorLanes.h"
#include "support/VectorMathModel.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kPi = 3.14159274F;
constexpr float kHalfPi = 1.57079637F;
constexpr double kExactPi = 3.14159265358979323846;

template <class Lanes>
class VectorMathEdges : public LanesTest<Lanes> {
protected:
    using typename LanesTest<Lanes>::Row;

    static float AngleOf(float y, float x) {
        const Row ys = LanesTest<Lanes>::RowOf(y);
        const Row xs = LanesTest<Lanes>::RowOf(x);
        Row out{};
        Lanes::ArctangentOf(ys.data(), xs.data(), out.data());
        return out[0];
    }
};

TYPED_TEST_SUITE(VectorMathEdges, LaneWidths);

TYPED_TEST(VectorMathEdges, SineOfZeroAndOfHalfATurnIsZero) {
    EXPECT_EQ(BitsOf(this->Of(TypeParam::Sine, 0.0F)), BitsOf(0.0F));
    EXPECT_EQ(this->Of(TypeParam::Sine, -0.0F), 0.0F);
    EXPECT_EQ(this->Of(TypeParam::Sine, kPi), 0.0F);
    EXPECT_EQ(this->Of(TypeParam::Sine, -kPi), 0.0F);
}

TYPED_TEST(VectorMathEdges, CosineOfAQuarterTurnIsZero) {
    EXPECT_EQ(this->Of(TypeParam::Cosine, kHalfPi), 0.0F);
    EXPECT_EQ(this->Of(TypeParam::Cosine, -kHalfPi), 0.0F);
}

TYPED_TEST(VectorMathEdges, ANanStaysInItsLane) {
    for (const RowFunction function :
         {TypeParam::Sine, TypeParam::Cosine, TypeParam::Arctangent, TypeParam::Arccosine}) {
        const float ordinary = this->Of(function, 0.3F);
        EXPECT_FALSE(std::isnan(ordinary));
        for (std::size_t nanLane = 0; nanLane < this->kCount; ++nanLane) {
            std::array<float, TypeParam::kCount> in;
            std::array<float, TypeParam::kCount> out{};
            in.fill(0.3F);
            in[nanLane] = kNan;
            function(in.data(), out.data());
            for (std::size_t lane = 0; lane < out.size(); ++lane) {
                EXPECT_TRUE(lane == nanLane ? std::isnan(out[lane])
                                            : BitsOf(out[lane]) == BitsOf(ordinary))
                    << lane;
            }
        }
    }
}

TYPED_TEST(VectorMathEdges, ArctangentOfZeroAndOfInfinity) {
    EXPECT_EQ(BitsOf(this->Of(TypeParam::Arctangent, 0.0F)), BitsOf(0.0F));
    EXPECT_EQ(this->Of(TypeParam::Arctangent, -0.0F), 0.0F);
    EXPECT_EQ(this->Of(TypeParam::Arctangent, kInfinity), kHalfPi);
    EXPECT_EQ(this->Of(TypeParam::Arctangent, -kInfinity), -kHalfPi);
    EXPECT_TRUE(std::isnan(this->Of(TypeParam::Arctangent, kNan)));
}

TYPED_TEST(VectorMathEdges, ArctangentJumpsUpwardJustBeyond1) {
    // The series falls short by about 0.0024 at 1 on either branch.
    for (const float sign : {1.0F, -1.0F}) {
        const float at1 = this->Of(TypeParam::Arctangent, sign);
        const float beyond = this->Of(TypeParam::Arctangent, sign * std::nextafter(1.0F, 2.0F));
        EXPECT_NEAR(sign * (beyond - at1), 0.005, 0.001);
    }
}

TYPED_TEST(VectorMathEdges, SmallAnglesAndNumbersAreTheirOwnSineAndArctangent) {
    const struct {
        RowFunction function;
        float bound;
    } cases[] = {{TypeParam::Sine, 0.000443632976F}, {TypeParam::Arctangent, 0.000352111732F}};
    for (const auto& small : cases) {
        const float below = std::nextafter(small.bound, 0.0F);
        for (const float x : {below, -below, 1e-6F, -1e-30F, 1e-42F}) {
            EXPECT_EQ(BitsOf(this->Of(small.function, x)), BitsOf(x)) << x;
        }
    }
    // The arctangent shows where its bound is: the estimate in the series is off by more.
    EXPECT_EQ(BitsOf(this->Of(TypeParam::Arctangent, 0.000352111732F)),
              BitsOf(model::Arctangent(0.000352111732F)));
}

TYPED_TEST(VectorMathEdges, TheOriginHasNoAngle) {
    for (const float y : {0.0F, -0.0F}) {
        for (const float x : {0.0F, -0.0F}) {
            EXPECT_TRUE(std::isnan(this->AngleOf(y, x)));
        }
    }
}

TYPED_TEST(VectorMathEdges, PointsOnTheVerticalAxisAreAQuarterTurnAway) {
    for (const float y : {1.0F, 0.001F, 1e6F}) {
        EXPECT_EQ(this->AngleOf(y, 0.0F), kHalfPi);
        EXPECT_EQ(this->AngleOf(-y, 0.0F), -kHalfPi);
        // Minus zero counts as negative: -pi/2 + pi and pi/2 - pi, rounded.
        EXPECT_EQ(this->AngleOf(y, -0.0F), -kHalfPi + kPi);
        EXPECT_EQ(this->AngleOf(-y, -0.0F), kHalfPi - kPi);
    }
    EXPECT_EQ(-kHalfPi + kPi, kHalfPi);
}

TYPED_TEST(VectorMathEdges, PointsOnTheHorizontalAxisFollowTheSignOfTheirZero) {
    EXPECT_EQ(this->AngleOf(0.0F, 2.0F), 0.0F);
    EXPECT_EQ(this->AngleOf(-0.0F, 2.0F), 0.0F);
    EXPECT_EQ(this->AngleOf(0.0F, -2.0F), kPi);
    EXPECT_EQ(this->AngleOf(-0.0F, -2.0F), -kPi);
}

TYPED_TEST(VectorMathEdges, ArccosineOf1IsSmallButNotZero) {
    EXPECT_NEAR(this->Of(TypeParam::Arccosine, 1.0F), 0.0, 0.0058);
    EXPECT_NEAR(this->Of(TypeParam::Arccosine, -1.0F), kExactPi, 0.0058);
    EXPECT_NE(this->Of(TypeParam::Arccosine, 1.0F), 0.0F);
    EXPECT_EQ(this->Of(TypeParam::Arccosine, 0.0F), kHalfPi);
}

TYPED_TEST(VectorMathEdges, ThereIsNoArccosineBeyond1) {
    for (const float c : {std::nextafter(1.0F, 2.0F), 1.5F, 1e30F, kInfinity, kNan}) {
        EXPECT_TRUE(std::isnan(this->Of(TypeParam::Arccosine, c))) << c;
        EXPECT_TRUE(std::isnan(this->Of(TypeParam::Arccosine, -c))) << c;
    }
}

TYPED_TEST(VectorMathEdges, AnglesTooLargeToReduceGiveNoMoreThanTheirOwnLane) {
    std::array<float, TypeParam::kCount> in;
    std::array<float, TypeParam::kCount> out{};
    in.fill(1.0F);
    in[1] = 1e30F;
    TypeParam::Sine(in.data(), out.data());
    for (std::size_t lane = 0; lane < out.size(); ++lane) {
        EXPECT_TRUE(IsSameFloat(out[lane], model::Sine(in[lane]))) << lane;
    }
}

}  // namespace

#endif

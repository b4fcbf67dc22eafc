#if defined(__x86_64__)

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "support/VectorLanes.h"
#include "support/VectorMathModel.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr double kExactPi = 3.14159265358979323846;

template <class Lanes>
class VectorMath : public LanesTest<Lanes> {
protected:
    using LanesTest<Lanes>::kCount;
    using typename LanesTest<Lanes>::Row;

    /// Calls `check(x, result)` for each of the values.
    template <class Check>
    static void ForEach(RowFunction function, const std::vector<float>& values, Check check) {
        for (std::size_t i = 0; i < values.size(); i += kCount) {
            const std::size_t first = std::min(i, values.size() - kCount);
            Row out{};
            function(&values[first], out.data());
            for (std::size_t lane = 0; lane < kCount; ++lane) {
                check(values[first + lane], out[lane]);
            }
        }
    }

    /// Holds the function against the model bit for bit, each value once in every lane, beside
    /// other values.
    template <class Model>
    static void ExpectModel(RowFunction function, Model model, const std::vector<float>& values) {
        ASSERT_GE(values.size(), kCount);
        for (std::size_t first = 0; first + kCount <= values.size(); ++first) {
            Row out{};
            function(&values[first], out.data());
            for (std::size_t lane = 0; lane < kCount; ++lane) {
                const float x = values[first + lane];
                ASSERT_TRUE(IsSameFloat(out[lane], model(x)))
                    << "of " << x << " in lane " << lane << ": " << out[lane] << " and not "
                    << model(x);
            }
        }
    }

    template <class Model>
    static void ExpectModelOfEverything(RowFunction function, Model model) {
        ExpectModel(function, model, UnusualFloats());
        ExpectModel(function, model, FloatsOfAllSizes(30011));
        ExpectModel(function, model, Sweep(-7.0, 7.0, 100003));
        ExpectModel(function, model, Sweep(-1.1, 1.1, 50021));
    }

    template <class Exact>
    static double LargestError(RowFunction function, Exact exact,
                               const std::vector<float>& values) {
        double largest = 0.0;
        ForEach(function, values, [&](float x, float result) {
            const double error = std::abs(double{result} - exact(double{x}));
            largest = error <= largest ? largest : error;
        });
        return largest;
    }
};

TYPED_TEST_SUITE(VectorMath, LaneWidths);

TYPED_TEST(VectorMath, SineAndCosineAreAsCloseAsPromisedWithinOneTurn) {
    const std::vector<float> angles = Sweep(-2.0 * kExactPi, 2.0 * kExactPi, 1000003);
    const auto sine = [](double x) { return std::sin(x); };
    const auto cosine = [](double x) { return std::cos(x); };
    EXPECT_LE(this->LargestError(TypeParam::Sine, sine, angles), 2.1e-7);
    EXPECT_LE(this->LargestError(TypeParam::Cosine, cosine, angles), 2.8e-7);
}

TYPED_TEST(VectorMath, ArctangentIsAsCloseAsPromisedForNumbersOfAnySize) {
    const auto exact = [](double t) { return std::atan(t); };
    EXPECT_LE(this->LargestError(TypeParam::Arctangent, exact, FloatsOfAllSizes(5003)), 0.0029);
    EXPECT_LE(this->LargestError(TypeParam::Arctangent, exact, Sweep(-3.0, 3.0, 300007)), 0.0029);
}

TYPED_TEST(VectorMath, ArccosineIsAsCloseAsPromisedUpTo1) {
    const auto exact = [](double c) { return std::acos(c); };
    EXPECT_LE(this->LargestError(TypeParam::Arccosine, exact, Sweep(-1.0, 1.0, 1000003)), 0.0058);
}

TYPED_TEST(VectorMath, TheAngleOfAPointIsAsCloseAsPromisedAllAround) {
    constexpr int kSteps = 40000;
    for (const double distance : {1e-6, 0.7, 1.0, 640.0, 1e6}) {
        for (int step = 0; step < kSteps; step += TypeParam::kCount) {
            std::array<float, TypeParam::kCount> x;
            std::array<float, TypeParam::kCount> y;
            std::array<float, TypeParam::kCount> angle{};
            for (std::size_t lane = 0; lane < x.size(); ++lane) {
                // Half a step away from the axes, so that no sign hangs on a rounding.
                const double exact =
                    2.0 * kExactPi * (step + static_cast<int>(lane) + 0.5) / kSteps;
                x[lane] = static_cast<float>(distance * std::cos(exact));
                y[lane] = static_cast<float>(distance * std::sin(exact));
            }
            TypeParam::ArctangentOf(y.data(), x.data(), angle.data());
            for (std::size_t lane = 0; lane < x.size(); ++lane) {
                ASSERT_LE(std::abs(angle[lane] - std::atan2(double{y[lane]}, double{x[lane]})),
                          0.0029)
                    << y[lane] << ", " << x[lane];
            }
        }
    }
}

TYPED_TEST(VectorMath, SineIsTheModelBitForBit) {
    this->ExpectModelOfEverything(TypeParam::Sine, model::Sine);
}

TYPED_TEST(VectorMath, CosineIsTheModelBitForBit) {
    this->ExpectModelOfEverything(TypeParam::Cosine, model::Cosine);
}

TYPED_TEST(VectorMath, ArctangentIsTheModelBitForBit) {
    this->ExpectModelOfEverything(TypeParam::Arctangent, model::Arctangent);
}

TYPED_TEST(VectorMath, ArccosineIsTheModelBitForBit) {
    this->ExpectModelOfEverything(TypeParam::Arccosine, model::Arccosine);
}

TYPED_TEST(VectorMath, TheAngleOfAPointIsTheModelBitForBit) {
    std::vector<float> ys = UnusualFloats();
    for (const float value : Sweep(-3.0, 3.0, 301)) {
        ys.push_back(value);
    }
    for (const float x : ys) {
        const auto model = [x](float y) { return model::ArctangentOf(y, x); };
        for (std::size_t first = 0; first + TypeParam::kCount <= ys.size(); ++first) {
            std::array<float, TypeParam::kCount> xs;
            std::array<float, TypeParam::kCount> out{};
            xs.fill(x);
            TypeParam::ArctangentOf(&ys[first], xs.data(), out.data());
            for (std::size_t lane = 0; lane < out.size(); ++lane) {
                ASSERT_TRUE(IsSameFloat(out[lane], model(ys[first + lane])))
                    << "y " << ys[first + lane] << ", x " << x << " in lane " << lane;
            }
            // The same pairs the other way round, so that x differs from lane to lane as well.
            TypeParam::ArctangentOf(xs.data(), &ys[first], out.data());
            for (std::size_t lane = 0; lane < out.size(); ++lane) {
                ASSERT_TRUE(IsSameFloat(out[lane], model::ArctangentOf(x, ys[first + lane])))
                    << "y " << x << ", x " << ys[first + lane] << " in lane " << lane;
            }
        }
    }
}

TYPED_TEST(VectorMath, HalfwayBetweenTwoZerosTheSineIsReducedByTheEvenOne) {
    int ties = 0;
    for (int zero = -4; zero <= 4; ++zero) {
        const int even = zero % 2 == 0 ? zero : zero + 1;
        float x = static_cast<float>((zero + 0.5) * kExactPi);
        for (int i = 0; i < 4; ++i) {
            x = std::nextafter(x, -kInfinity);
        }
        for (int i = 0; i < 9; ++i, x = std::nextafter(x, kInfinity)) {
            if (x * 0.318309873F == static_cast<float>(zero) + 0.5F) {
                ++ties;
                EXPECT_EQ(model::Round(x * 0.318309873F), even);
                EXPECT_EQ(BitsOf(this->Of(TypeParam::Sine, x)), BitsOf(model::Sine(x))) << x;
            }
        }
    }
    EXPECT_GE(ties, 9);
}

TYPED_TEST(VectorMath, GroupsSideBySideAreTheLanesOneByOne) {
    const std::vector<float> values = UnusualFloats();
    const std::size_t lanes = 3 * TypeParam::kCount;
    for (std::size_t first = 0; first + lanes <= values.size(); ++first) {
        std::vector<float> angles(lanes);
        std::vector<float> arccosines(lanes);
        std::vector<float> combined(lanes);
        const std::vector<float> others(values.rbegin(),
                                        values.rbegin() + int{3 * TypeParam::kCount});
        TypeParam::ArctangentOfGroups(&values[first], angles.data());
        TypeParam::ArccosineOfGroups(&values[first], arccosines.data());
        TypeParam::CombineGroups(&values[first], others.data(), combined.data());
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const float a = values[first + lane];
            const float b = others[lane];
            ASSERT_TRUE(IsSameFloat(angles[lane], model::Arctangent(a))) << a;
            ASSERT_TRUE(IsSameFloat(arccosines[lane], model::Arccosine(a))) << a;
            const float signedRoot = std::copysign(std::sqrt(std::fabs(a)), b);
            const bool isChosen = a <= b && std::fabs(a) < 1.0F;
            ASSERT_TRUE(IsSameFloat(combined[lane], isChosen ? a / b : signedRoot - b))
                << a << ", " << b;
        }
    }
}

class BothLaneWidths : public LanesTest<eightLanes::Lanes> {
protected:
    static void ExpectSame(RowFunction four, RowFunction eight, const std::vector<float>& values) {
        for (std::size_t first = 0; first + 8 <= values.size(); first += 8) {
            std::array<float, 8> ofFour{};
            std::array<float, 8> ofEight{};
            four(&values[first], ofFour.data());
            four(&values[first + 4], &ofFour[4]);
            eight(&values[first], ofEight.data());
            for (std::size_t lane = 0; lane < 8; ++lane) {
                ASSERT_TRUE(IsSameFloat(ofFour[lane], ofEight[lane])) << values[first + lane];
            }
        }
    }
};

TEST_F(BothLaneWidths, GiveTheSameBits) {
    using Four = fourLanes::Lanes;
    using Eight = eightLanes::Lanes;
    const struct {
        RowFunction four;
        RowFunction eight;
    } functions[] = {{Four::Sine, Eight::Sine},
                     {Four::Cosine, Eight::Cosine},
                     {Four::Arctangent, Eight::Arctangent},
                     {Four::Arccosine, Eight::Arccosine},
                     {Four::Reciprocal, Eight::Reciprocal},
                     {Four::Root, Eight::Root}};
    for (const auto& function : functions) {
        for (const auto& values : {FloatsOfAllSizes(4001), Sweep(-7.0, 7.0, 400009),
                                   Sweep(-1.0, 1.0, 400009), UnusualFloats()}) {
            ExpectSame(function.four, function.eight, values);
        }
    }
}

TEST_F(BothLaneWidths, GiveTheSameAngleOfAPoint) {
    const std::vector<float> values = UnusualFloats();
    for (const float y : values) {
        for (std::size_t first = 0; first + 8 <= values.size(); ++first) {
            std::array<float, 8> ys;
            std::array<float, 8> ofFour{};
            std::array<float, 8> ofEight{};
            ys.fill(y);
            fourLanes::Lanes::ArctangentOf(ys.data(), &values[first], ofFour.data());
            fourLanes::Lanes::ArctangentOf(ys.data(), &values[first + 4], &ofFour[4]);
            eightLanes::Lanes::ArctangentOf(ys.data(), &values[first], ofEight.data());
            for (std::size_t lane = 0; lane < 8; ++lane) {
                ASSERT_TRUE(IsSameFloat(ofFour[lane], ofEight[lane]))
                    << y << ", " << values[first + lane];
            }
        }
    }
}

}  // namespace

#endif

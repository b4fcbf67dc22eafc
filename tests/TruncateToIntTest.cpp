#include "TruncateToInt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace {

constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

struct RealNames {
    template <class Real>
    static std::string GetName(int) {
        return sizeof(Real) == sizeof(float) ? "Float" : "Double";
    }
};

}  // namespace

template <class Real>
class TruncatingToInt : public ::testing::Test {};

using Reals = ::testing::Types<float, double>;
TYPED_TEST_SUITE(TruncatingToInt, Reals, RealNames);

TYPED_TEST(TruncatingToInt, DropsTheFraction) {
    EXPECT_EQ(TruncateToInt(TypeParam(0)), 0);
    EXPECT_EQ(TruncateToInt(TypeParam(-0.0)), 0);
    EXPECT_EQ(TruncateToInt(TypeParam(0.999)), 0);
    EXPECT_EQ(TruncateToInt(TypeParam(1)), 1);
    EXPECT_EQ(TruncateToInt(TypeParam(2.5)), 2);
    EXPECT_EQ(TruncateToInt(TypeParam(3.5)), 3);
    EXPECT_EQ(TruncateToInt(TypeParam(123456.75)), 123456);
    EXPECT_EQ(TruncateToInt(std::nextafter(TypeParam(7), TypeParam(0))), 6);
    EXPECT_EQ(TruncateToInt(std::numeric_limits<TypeParam>::denorm_min()), 0);
}

TYPED_TEST(TruncatingToInt, MovesNegativeValuesTowards0) {
    EXPECT_EQ(TruncateToInt(TypeParam(-0.999)), 0);
    EXPECT_EQ(TruncateToInt(TypeParam(-1)), -1);
    EXPECT_EQ(TruncateToInt(TypeParam(-1.5)), -1);
    EXPECT_EQ(TruncateToInt(TypeParam(-123456.75)), -123456);
}

TYPED_TEST(TruncatingToInt, ValuesThatNoIntHoldsGiveTheSmallestInt) {
    constexpr TypeParam kInfinity = std::numeric_limits<TypeParam>::infinity();
    for (const TypeParam value :
         {TypeParam(2147483648.0), TypeParam(3e9), TypeParam(1e30), kInfinity, -kInfinity,
          TypeParam(-3e9), TypeParam(-1e30), std::numeric_limits<TypeParam>::quiet_NaN(),
          std::numeric_limits<TypeParam>::max(), std::numeric_limits<TypeParam>::lowest()}) {
        EXPECT_EQ(TruncateToInt(value), kSmallest) << value;
    }
}

TEST(TruncatingFloatToInt, ReachesBothEndsOfTheRange) {
    EXPECT_EQ(TruncateToInt(2147483520.0F), 2147483520);
    EXPECT_EQ(TruncateToInt(-2147483648.0F), kSmallest);
    EXPECT_EQ(TruncateToInt(-2147483520.0F), -2147483520);
    EXPECT_EQ(TruncateToInt(-2147483904.0F), kSmallest);
}

TEST(TruncatingDoubleToInt, ReachesBothEndsOfTheRange) {
    EXPECT_EQ(TruncateToInt(2147483647.0), kLargest);
    EXPECT_EQ(TruncateToInt(2147483647.999), kLargest);
    EXPECT_EQ(TruncateToInt(-2147483647.0), -2147483647);
    EXPECT_EQ(TruncateToInt(-2147483647.999), -2147483647);
    EXPECT_EQ(TruncateToInt(-2147483648.0), kSmallest);
    EXPECT_EQ(TruncateToInt(-2147483648.999), kSmallest);
    EXPECT_EQ(TruncateToInt(-2147483649.0), kSmallest);
}

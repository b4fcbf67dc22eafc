#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <random>

#include "math3d.h"

// The three-dimensional helpers to the last bit, against their steps one by one: in which order
// sums run, what is rounded in between, and where a quotient is a product.

namespace {

template <class T>
class Math3dBits : public ::testing::Test {
protected:
    template <std::size_t size>
    std::array<T, size> Random() {
        std::array<T, size> values;
        for (T& value : values) {
            value = std::uniform_real_distribution<T>(-2, 2)(m_random);
        }
        return values;
    }

    static constexpr int kRounds = 200;

private:
    std::mt19937 m_random{11};
};

using Scalars = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Math3dBits, Scalars);

/// Elements of a matrix of groups of four, without group `i` and element `j` of each.
template <class T>
T MinorOf(const std::array<T, 16>& m, std::size_t i, std::size_t j) {
    std::array<T, 9> k;
    std::size_t next = 0;
    for (std::size_t at = 0; at < 16; ++at) {
        if (at / 4 != i && at % 4 != j) {
            k[next++] = m[at];
        }
    }
    const T first = k[0] * (k[4] * k[8] - k[5] * k[7]);
    const T second = k[1] * (k[3] * k[8] - k[5] * k[6]);
    const T third = k[2] * (k[3] * k[7] - k[4] * k[6]);
    return (first - second) + third;
}

/// One row of a matrix of columns of four times a point.
float RowTimes(const std::array<float, 16>& m, std::size_t row, const std::array<float, 4>& v) {
    return ((m[row] * v[0] + m[row + 4] * v[1]) + m[row + 8] * v[2]) + m[row + 12] * v[3];
}

std::array<float, 4> Times(const std::array<float, 16>& m, const std::array<float, 4>& v) {
    return {RowTimes(m, 0, v), RowTimes(m, 1, v), RowTimes(m, 2, v), RowTimes(m, 3, v)};
}

}  // namespace

TYPED_TEST(Math3dBits, DistancesAreSummedFromTheLeft) {
    for (int round = 0; round < this->kRounds; ++round) {
        const auto a = this->template Random<3>();
        const auto b = this->template Random<3>();
        const TypeParam x = a[0] - b[0];
        const TypeParam y = a[1] - b[1];
        const TypeParam z = a[2] - b[2];
        ASSERT_EQ(m3dGetDistanceSquared3(a.data(), b.data()), (x * x + y * y) + z * z);
    }
}

TYPED_TEST(Math3dBits, ProductsAreSummedFromTheLeft) {
    for (int round = 0; round < this->kRounds; ++round) {
        const auto a = this->template Random<16>();
        const auto b = this->template Random<16>();
        std::array<TypeParam, 16> product;
        m3dMatrixMultiply44(product.data(), a.data(), b.data());
        for (std::size_t at = 0; at < 16; ++at) {
            const std::size_t row = at % 4;
            const std::size_t column = at / 4 * 4;
            const TypeParam sum =
                ((a[row] * b[column] + a[row + 4] * b[column + 1]) + a[row + 8] * b[column + 2]) +
                a[row + 12] * b[column + 3];
            ASSERT_EQ(product[at], sum) << at;
        }
    }
}

TYPED_TEST(Math3dBits, RotationsTakeSineAndCosineInDoublePrecision) {
    for (int round = 0; round < this->kRounds; ++round) {
        const TypeParam angle = this->template Random<1>()[0];
        TypeParam m[9];
        m3dRotationMatrix33(m, angle, TypeParam(0), TypeParam(0), TypeParam(1));
        ASSERT_EQ(m[1], static_cast<TypeParam>(std::sin(static_cast<double>(angle))));
        ASSERT_EQ(m[0], static_cast<TypeParam>(std::cos(static_cast<double>(angle))));
        ASSERT_EQ(m[3], -m[1]);
    }
}

TYPED_TEST(Math3dBits, InversesAreCofactorsTimesOneOverTheDeterminant) {
    for (int round = 0; round < this->kRounds; ++round) {
        const auto m = this->template Random<16>();
        TypeParam determinant = m[0] * MinorOf(m, 0, 0);
        determinant -= m[1] * MinorOf(m, 0, 1);
        determinant += m[2] * MinorOf(m, 0, 2);
        determinant -= m[3] * MinorOf(m, 0, 3);
        const TypeParam scale = 1 / determinant;
        std::array<TypeParam, 16> inverse;
        m3dInvertMatrix44(inverse.data(), m.data());
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                const TypeParam minor = MinorOf(m, j, i);
                ASSERT_EQ(inverse[i * 4 + j], scale * ((i + j) % 2 == 0 ? minor : -minor));
            }
        }
    }
}

TYPED_TEST(Math3dBits, NormalsPointAsTheEdgesTurn) {
    const TypeParam p1[] = {1, 0, 0};
    const TypeParam p2[] = {0, 0, 0};
    const TypeParam p3[] = {0, -3, 0};
    TypeParam normal[3];
    m3dFindNormal(normal, p1, p2, p3);  // x cross 3 y
    EXPECT_EQ(normal[0], 0);
    EXPECT_EQ(normal[1], 0);
    EXPECT_EQ(normal[2], 3);
}

TYPED_TEST(Math3dBits, SplinesGroupTheirTermsByPairs) {
    for (int round = 0; round < this->kRounds; ++round) {
        const auto p = this->template Random<12>();
        const TypeParam t = this->template Random<1>()[0];
        TypeParam out[3];
        m3dCatmullRom(out, p.data(), p.data() + 3, p.data() + 6, p.data() + 9, t);
        const TypeParam t2 = t * t;
        const TypeParam t3 = t2 * t;
        for (std::size_t i = 0; i < 3; ++i) {
            const TypeParam p0 = p[i];
            const TypeParam p1 = p[i + 3];
            const TypeParam p2 = p[i + 6];
            const TypeParam p3 = p[i + 9];
            const TypeParam cubic = t3 * (p3 + ((3 * p1 - p0) - 3 * p2));
            const TypeParam square = t2 * ((((p0 + p0) - 5 * p1) + 4 * p2) - p3);
            const TypeParam line = (p1 + p1) + (p2 - p0) * t;
            ASSERT_EQ(out[i], static_cast<TypeParam>(0.5) * (cubic + (line + square)));
        }
    }
}

// The ray passes at the radius exactly: the discriminant is 0, and that is what it answers.
TYPED_TEST(Math3dBits, ARayThatTouchesASphereMissesIt) {
    const TypeParam origin[] = {-3, 1, 0};
    const TypeParam direction[] = {1, 0, 0};
    const TypeParam center[] = {0, 0, 0};
    EXPECT_EQ(m3dRaySphereTest(origin, direction, center, TypeParam(1)), 0);
}

TEST(Math3dProjectionBits, SumsRunFromTheLeftAndTheDistanceDividesAsAProduct) {
    std::mt19937 random{12};
    std::uniform_real_distribution<float> any(-2.0F, 2.0F);
    const int viewport[] = {0, 0, 640, 480};
    for (int round = 0; round < 200; ++round) {
        std::array<float, 16> modelView;
        std::array<float, 16> projection;
        for (std::size_t i = 0; i < 16; ++i) {
            modelView[i] = any(random);
            projection[i] = any(random);
        }
        const float point[] = {any(random), any(random), any(random)};
        const auto clip = Times(projection, Times(modelView, {point[0], point[1], point[2], 1.0F}));
        const float inverse = 1.0F / clip[3];
        float out[3];
        m3dProjectXYZ(out, modelView.data(), projection.data(), viewport, point);
        ASSERT_EQ(out[0], (clip[0] * inverse + 1.0F) * 640.0F * 0.5F);
        ASSERT_EQ(out[1], (clip[1] * inverse + 1.0F) * 480.0F * 0.5F);
        ASSERT_EQ(out[2], clip[2] * inverse);
    }
}

TEST(Math3dProjectionBits, ADistanceThatIsNaNDividesToo) {
    std::array<float, 16> projection{};
    projection[0] = projection[5] = projection[10] = 1.0F;
    projection[15] = std::numeric_limits<float>::quiet_NaN();
    std::array<float, 16> identity;
    m3dLoadIdentity44(identity.data());
    const int viewport[] = {0, 0, 200, 100};
    const float point[] = {0.5F, -0.5F, 3.0F};
    float out[3];
    m3dProjectXYZ(out, identity.data(), projection.data(), viewport, point);
    EXPECT_TRUE(std::isnan(out[0]));
    EXPECT_TRUE(std::isnan(out[1]));
    EXPECT_TRUE(std::isnan(out[2]));
}

// Somewhere the two precisions of the tangent round apart, or this would show nothing.
TEST(Math3dProjectionBits, PerspectivesTakeTheTangentInSinglePrecision) {
    int apart = 0;
    for (int i = 1; i < 3000; ++i) {
        const float fov = static_cast<float>(i) * 0.001F;
        const float half = fov * 0.5F;
        const float top = std::tan(half) * 0.1F;
        float m[16];
        m3dMakePerspectiveMatrix(m, fov, 1.0F, 0.1F, 10.0F);
        ASSERT_EQ(m[5], (0.1F + 0.1F) / (top + top)) << fov;
        const auto wide = static_cast<float>(std::tan(static_cast<double>(half)));
        apart += wide != std::tan(half) ? 1 : 0;
    }
    EXPECT_GT(apart, 0);
}

// A texture that is laid on mirrored: its u still grows along x, while its v grows downward.
TEST(Math3dTangent, FollowsUOfAMirroredTextureToo) {
    const float triangle[3][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const float normal[] = {0, 0, 1};
    const float mirrored[3][2] = {{0, 0}, {1, 0}, {0, -1}};
    float tangent[3];
    m3dCalculateTangentBasis(tangent, triangle, mirrored, normal);
    EXPECT_EQ(tangent[0], 1.0F);
    EXPECT_EQ(tangent[1], 0.0F);
    EXPECT_EQ(tangent[2], 0.0F);
}

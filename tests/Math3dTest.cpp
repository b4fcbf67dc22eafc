#include "math3d.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

// The three-dimensional helpers against values worked out by hand or from their definition.

namespace {

template <class T>
class Math3d : public ::testing::Test {
protected:
    using Vector = std::array<T, 3>;
    using Matrix = std::array<T, 16>;

    static constexpr T kTolerance = sizeof(T) == 4 ? T(1e-5) : T(1e-12);

    static void ExpectNear(const T* values, const std::vector<double>& expected) {
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(static_cast<double>(values[i]), expected[i],
                        static_cast<double>(kTolerance))
                << "value " << i;
        }
    }

    T Random() { return std::uniform_real_distribution<T>(-2, 2)(m_random); }
    Matrix RandomMatrix() {
        Matrix m;
        for (T& value : m) {
            value = Random();
        }
        return m;
    }

private:
    std::mt19937 m_random{5};
};

using Scalars = ::testing::Types<float, double>;
TYPED_TEST_SUITE(Math3d, Scalars);

const std::vector<double> kIdentity44 = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
const std::vector<double> kIdentity33 = {1, 0, 0, 0, 1, 0, 0, 0, 1};

}  // namespace

TYPED_TEST(Math3d, IdentityIsWrittenWholly) {
    std::array<TypeParam, 16> m44;
    std::array<TypeParam, 9> m33;
    m44.fill(7);
    m33.fill(7);
    m3dLoadIdentity44(m44.data());
    m3dLoadIdentity33(m33.data());
    this->ExpectNear(m44.data(), kIdentity44);
    this->ExpectNear(m33.data(), kIdentity33);
}

TYPED_TEST(Math3d, DistanceIsSquared) {
    const TypeParam a[] = {1, 2, 3};
    const TypeParam b[] = {4, 0, 9};
    EXPECT_EQ(m3dGetDistanceSquared3(a, b), 9 + 4 + 36);
}

// Column after column: the first column of the product is `a` applied to the first of `b`.
TYPED_TEST(Math3d, ProductDoesTheSecondMatrixFirst) {
    const TypeParam turn33[] = {0, 1, 0, -1, 0, 0, 0, 0, 1};  // x to y
    const TypeParam stretch33[] = {2, 0, 0, 0, 3, 0, 0, 0, 5};
    TypeParam product[16];
    m3dMatrixMultiply33(product, turn33, stretch33);
    this->ExpectNear(product, {0, 2, 0, -3, 0, 0, 0, 0, 5});
    m3dMatrixMultiply33(product, stretch33, turn33);
    this->ExpectNear(product, {0, 3, 0, -2, 0, 0, 0, 0, 5});

    const TypeParam move[] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    const TypeParam stretch[] = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 5, 0, 0, 0, 0, 1};
    m3dMatrixMultiply44(product, stretch, move);
    this->ExpectNear(product, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 5, 0, 20, 60, 150, 1});
    m3dMatrixMultiply44(product, move, stretch);
    this->ExpectNear(product, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 5, 0, 10, 20, 30, 1});
}

TYPED_TEST(Math3d, RotationAboutZTurnsXTowardsY) {
    const auto quarter = static_cast<TypeParam>(std::acos(0.0));
    TypeParam m33[9];
    m3dRotationMatrix33(m33, quarter, TypeParam(0), TypeParam(0), TypeParam(2));
    this->ExpectNear(m33, {0, 1, 0, -1, 0, 0, 0, 0, 1});
    TypeParam m44[16];
    m3dRotationMatrix44(m44, quarter, TypeParam(0), TypeParam(0), TypeParam(2));
    this->ExpectNear(m44, {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

TYPED_TEST(Math3d, RotationAboutTheDiagonalGoesRoundTheAxes) {
    const auto third = static_cast<TypeParam>(2.0 * std::acos(-1.0) / 3.0);
    TypeParam m[9];
    m3dRotationMatrix33(m, third, TypeParam(1), TypeParam(1), TypeParam(1));
    this->ExpectNear(m, {0, 1, 0, 0, 0, 1, 1, 0, 0});
}

TYPED_TEST(Math3d, RotationAboutNothingIsTheIdentity) {
    TypeParam m33[9] = {5};
    TypeParam m44[16] = {5};
    m3dRotationMatrix33(m33, TypeParam(1), TypeParam(0), TypeParam(0), TypeParam(0));
    m3dRotationMatrix44(m44, TypeParam(1), TypeParam(0), TypeParam(0), TypeParam(0));
    this->ExpectNear(m33, kIdentity33);
    this->ExpectNear(m44, kIdentity44);
}

TYPED_TEST(Math3d, InverseTimesMatrixIsTheIdentity) {
    for (int i = 0; i < 50; ++i) {
        auto m = this->RandomMatrix();
        for (std::size_t k = 0; k < 16; k += 5) {
            m[k] += 8;  // far from singular
        }
        TypeParam inverse[16];
        TypeParam product[16];
        m3dInvertMatrix44(inverse, m.data());
        m3dMatrixMultiply44(product, inverse, m.data());
        this->ExpectNear(product, kIdentity44);
    }
}

TYPED_TEST(Math3d, InverseOfTheIdentityIsTheIdentityAndOfNothingIsNotFinite) {
    TypeParam identity[16];
    TypeParam inverse[16];
    m3dLoadIdentity44(identity);
    m3dInvertMatrix44(inverse, identity);
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(inverse[i], identity[i]);
    }
    const TypeParam nothing[16] = {};
    m3dInvertMatrix44(inverse, nothing);
    for (const TypeParam value : inverse) {
        EXPECT_FALSE(std::isfinite(value));
    }
}

TYPED_TEST(Math3d, NormalIsNotNormalised) {
    const TypeParam p1[] = {1, 0, 0};
    const TypeParam p2[] = {0, 0, 0};
    const TypeParam p3[] = {0, 3, 0};
    TypeParam normal[3];
    m3dFindNormal(normal, p1, p2, p3);  // (1, 0, 0) x (0, -3, 0)
    this->ExpectNear(normal, {0, 0, -3});
}

TYPED_TEST(Math3d, PlaneHasAUnitNormalAndHoldsItsPoints) {
    const TypeParam p1[] = {1, 1, 4};
    const TypeParam p2[] = {3, 1, 4};
    const TypeParam p3[] = {1, 6, 4};
    TypeParam plane[4];
    m3dGetPlaneEquation(plane, p1, p2, p3);  // (0, 5, 0) x (2, 0, 0)
    this->ExpectNear(plane, {0, 0, -1, 4});
}

TYPED_TEST(Math3d, SplineRunsThroughItsMiddlePointsAndKeepsALine) {
    const TypeParam p0[] = {0, 5, 1};
    const TypeParam p1[] = {1, -2, 2};
    const TypeParam p2[] = {4, 3, 3};
    const TypeParam p3[] = {9, 8, 4};
    TypeParam out[3];
    m3dCatmullRom(out, p0, p1, p2, p3, TypeParam(0));
    this->ExpectNear(out, {1, -2, 2});
    m3dCatmullRom(out, p0, p1, p2, p3, TypeParam(1));
    this->ExpectNear(out, {4, 3, 3});
    m3dCatmullRom(out, p0, p1, p2, p3, TypeParam(0.25));
    EXPECT_NEAR(static_cast<double>(out[2]), 2.25, 1e-5);
    // Halfway: 9/16 of the inner points less 1/16 of the outer ones.
    m3dCatmullRom(out, p0, p1, p2, p3, TypeParam(0.5));
    this->ExpectNear(out, {(9.0 * 5 - 9) / 16, (9.0 * 1 - 13) / 16, 2.5});
}

TYPED_TEST(Math3d, RayMeetsTheNearSideOfASphere) {
    const TypeParam origin[] = {1, 0, 0};
    const TypeParam direction[] = {1, 0, 0};
    const TypeParam center[] = {11, 0, 3};
    EXPECT_NEAR(static_cast<double>(m3dRaySphereTest(origin, direction, center, TypeParam(5))), 6.0,
                1e-5);
}

TYPED_TEST(Math3d, RayThatMissesASphereGivesTheDiscriminant) {
    const TypeParam origin[] = {0, 0, 0};
    const TypeParam direction[] = {1, 0, 0};
    const TypeParam center[] = {10, 0, 3};
    EXPECT_EQ(m3dRaySphereTest(origin, direction, center, TypeParam(2)), 4 - 109 + 100);
    EXPECT_EQ(m3dRaySphereTest(origin, direction, center, TypeParam(3)), 0);
}

TYPED_TEST(Math3d, SmoothStepIsLevelOutsideItsEdges) {
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(1)), 0);
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(2)), 0);
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(2.5)), TypeParam(0.15625));
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(3)), TypeParam(0.5));
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(4)), 1);
    EXPECT_EQ(m3dSmoothStep(TypeParam(2), TypeParam(4), TypeParam(9)), 1);
}

// A light at (1, 2, 10) throws what stands at (2, 4, 5) onto the floor z = 0 at (3, 6, 0).
TYPED_TEST(Math3d, ShadowLiesOnTheLineFromTheLight) {
    const TypeParam floor[] = {0, 0, 1, 0};
    const float light[] = {1, 2, 10};
    TypeParam m[16];
    m3dMakePlanarShadowMatrix(m, floor, light);
    const TypeParam point[] = {2, 4, 5, 1};
    TypeParam shadow[4];
    for (int row = 0; row < 4; ++row) {
        shadow[row] = 0;
        for (int column = 0; column < 4; ++column) {
            shadow[row] += m[column * 4 + row] * point[column];
        }
    }
    const TypeParam place[] = {shadow[0] / shadow[3], shadow[1] / shadow[3], shadow[2] / shadow[3]};
    this->ExpectNear(place, {3, 6, 0});
}

TYPED_TEST(Math3d, ClosestPointMayLieBehindTheRaysStart) {
    const TypeParam origin[] = {1, 1, 1};
    const TypeParam direction[] = {0, 1, 0};
    const TypeParam ahead[] = {4, 6, 5};
    const TypeParam behind[] = {1, -7, 3};
    TypeParam point[3];
    EXPECT_EQ(m3dClosestPointOnRay(point, origin, direction, ahead), 9 + 16);
    this->ExpectNear(point, {1, 6, 1});
    EXPECT_EQ(m3dClosestPointOnRay(point, origin, direction, behind), 4);
    this->ExpectNear(point, {1, -7, 1});
}

namespace {

std::array<float, 4> Apply(const float* m, std::array<float, 4> v) {
    std::array<float, 4> out{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            out[row] += m[column * 4 + row] * v[column];
        }
    }
    return out;
}

}  // namespace

TEST(Math3dProjection, PerspectiveMapsTheCornersOfItsViewToThoseOfTheCube) {
    constexpr float kQuarterTurn = 1.57079633F;
    float m[16];
    m3dMakePerspectiveMatrix(m, kQuarterTurn, 2.0F, 1.0F, 3.0F);
    EXPECT_EQ(m[8], 0.0F);
    EXPECT_EQ(m[9], 0.0F);
    EXPECT_EQ(m[15], 0.0F);
    const auto near = Apply(m, {2, 1, -1, 1});
    const auto far = Apply(m, {-6, -3, -3, 1});
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_NEAR(near[i] / near[3], 1.0F, 1e-5F);
        EXPECT_NEAR(far[i] / far[3], -1.0F, 1e-5F);
    }
    EXPECT_NEAR(near[2] / near[3], -1.0F, 1e-5F);
    EXPECT_NEAR(far[2] / far[3], 1.0F, 1e-5F);
}

TEST(Math3dProjection, OrthographicMapsItsBoxToTheCube) {
    float m[16];
    m3dMakeOrthographicMatrix(m, 1.0F, 5.0F, -2.0F, 6.0F, 1.0F, 11.0F);
    const auto low = Apply(m, {1, -2, -1, 1});
    const auto high = Apply(m, {5, 6, -11, 1});
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(low[i], -1.0F, 1e-6F);
        EXPECT_NEAR(high[i], 1.0F, 1e-6F);
    }
    EXPECT_EQ(low[3], 1.0F);
}

class Math3dWindow : public ::testing::Test {
protected:
    Math3dWindow() { m3dLoadIdentity44(m_identity); }

    float m_identity[16];
};

TEST_F(Math3dWindow, PlacesCountFromTheViewportsCorner) {
    const int viewport[] = {10, 20, 100, 100};
    const float middle[] = {0, 0, 0.25F};
    float out[3] = {-1, -1, -1};
    m3dProjectXY(out, m_identity, m_identity, viewport, middle);
    EXPECT_EQ(out[0], 50.0F);
    EXPECT_EQ(out[1], 50.0F);
    EXPECT_EQ(out[2], -1.0F) << "two values are written";
    m3dProjectXYZ(out, m_identity, m_identity, viewport, middle);
    EXPECT_EQ(out[0], 50.0F);
    EXPECT_EQ(out[2], 0.25F);
}

// The offset is added and taken off again, which loses what a float beside it can not hold.
TEST_F(Math3dWindow, FarCornersRoundThePlace) {
    const int viewport[] = {1 << 24, 0, 3, 3};
    const float middle[] = {0, 0, 0};
    float out[2];
    m3dProjectXY(out, m_identity, m_identity, viewport, middle);
    EXPECT_EQ(out[0], 2.0F);
    EXPECT_EQ(out[1], 1.5F);
}

TEST_F(Math3dWindow, PlacesAreDividedByTheDistance) {
    float projection[16] = {};
    projection[0] = projection[5] = projection[10] = 1;
    projection[15] = 4;
    const int viewport[] = {0, 0, 200, 100};
    const float point[] = {2, -2, 3};
    float out[3];
    m3dProjectXYZ(out, m_identity, projection, viewport, point);
    EXPECT_EQ(out[0], 150.0F);
    EXPECT_EQ(out[1], 25.0F);
    EXPECT_EQ(out[2], 0.75F);
}

TEST_F(Math3dWindow, PlacesNextToTheEyeAreNotDivided) {
    float projection[16] = {};
    projection[0] = projection[5] = projection[10] = 1;
    projection[15] = 1e-7F;
    const int viewport[] = {0, 0, 200, 100};
    const float point[] = {0.5F, -0.5F, 3};
    float out[3];
    m3dProjectXYZ(out, m_identity, projection, viewport, point);
    EXPECT_EQ(out[0], 150.0F);
    EXPECT_EQ(out[1], 25.0F);
    EXPECT_EQ(out[2], 3.0F);
}

TEST_F(Math3dWindow, ModelViewComesBeforeTheProjection) {
    float move[16];
    float stretch[16];
    m3dLoadIdentity44(move);
    m3dLoadIdentity44(stretch);
    move[12] = 0.25F;
    stretch[0] = 2.0F;
    const int viewport[] = {0, 0, 100, 100};
    const float origin[] = {0, 0, 0};
    float out[2];
    m3dProjectXY(out, move, stretch, viewport, origin);
    EXPECT_EQ(out[0], 75.0F);
}

// The texture's u grows along x + z, of which the part along the normal is taken off.
TEST(Math3dTangent, FollowsTheFirstTextureCoordinateAcrossTheNormal) {
    const float triangle[3][3] = {{0, 0, 0}, {1, 0, 1}, {0, 2, 0}};
    const float normal[] = {0, 0, 1};
    const float forward[3][2] = {{0, 0}, {1, 0}, {0, 1}};
    const float backward[3][2] = {{1, 0}, {0, 0}, {1, 1}};
    float tangent[3];
    m3dCalculateTangentBasis(tangent, triangle, forward, normal);
    EXPECT_NEAR(tangent[0], 1.0F, 1e-6F);
    EXPECT_NEAR(tangent[1], 0.0F, 1e-6F);
    EXPECT_NEAR(tangent[2], 0.0F, 1e-6F);
    m3dCalculateTangentBasis(tangent, triangle, backward, normal);
    EXPECT_NEAR(tangent[0], -1.0F, 1e-6F);
}

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "support/FloatBits.h"
#include "vcam/VCamMounts.h"

namespace {

using Matrix = std::array<float, 16>;
using Vector = std::array<double, 3>;

constexpr double kPi = 3.14159265358979323846;
// Single precision turns by up to 7e-7 more or less within two turns.
constexpr double kTolerance = 2e-6;

template <vcam::MatrixFunction& get>
Matrix MatrixBy(float pan, float tilt) {
    float elements[16];
    get(pan, tilt, elements);
    Matrix matrix;
    std::copy(elements, elements + 16, matrix.begin());
    return matrix;
}

constexpr auto& RoundMatrix = MatrixBy<DownwardFisheyeAlgoNS::GetModelViewMatrix>;
constexpr auto& WallMatrix = MatrixBy<FrontwardFisheyeAlgoNS::GetModelViewMatrix>;

/// What a matrix makes of a vector; an element's place is its column times 4 plus its row.
Vector Turned(const Matrix& m, const Vector& v) {
    Vector turned;
    for (std::size_t row = 0; row < 3; ++row) {
        turned[row] = m[row] * v[0] + m[4 + row] * v[1] + m[8 + row] * v[2];
    }
    return turned;
}

void ExpectNear(const Vector& actual, const Vector& expected) {
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(actual[i], expected[i], kTolerance) << i;
    }
}

double Sine(double degrees) {
    return std::sin(degrees * kPi / 180.0);
}
double Cosine(double degrees) {
    return std::cos(degrees * kPi / 180.0);
}

const std::vector<float> kPans = {-90.0F, -37.5F, 0.0F,   1.0F,   30.0F,  45.0F,
                                  90.0F,  123.0F, 180.0F, 271.0F, 359.0F, 360.0F};
const std::vector<float> kTilts = {-90.0F, -61.0F, -30.0F, -1.0F, 0.0F,
                                   0.5F,   22.5F,  45.0F,  77.0F, 90.0F};

template <class Check>
void ForEveryAim(Check check) {
    for (const float pan : kPans) {
        for (const float tilt : kTilts) {
            SCOPED_TRACE(testing::Message() << "pan " << pan << ", tilt " << tilt);
            check(pan, tilt);
        }
    }
}

constexpr Vector kAhead = {0.0, 0.0, -1.0};
constexpr Vector kRight = {1.0, 0.0, 0.0};
constexpr Vector kUp = {0.0, 1.0, 0.0};

TEST(VCamMatrix, WithoutPanAndTiltIsTheIdentity) {
    constexpr Matrix kIdentity = {1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F,
                                  0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F};
    EXPECT_EQ(RoundMatrix(0.0F, 0.0F), kIdentity);
    EXPECT_EQ(WallMatrix(0.0F, 0.0F), kIdentity);
    EXPECT_EQ(RoundMatrix(-0.0F, -0.0F), kIdentity);
    EXPECT_EQ(WallMatrix(-0.0F, -0.0F), kIdentity);
}

TEST(VCamMatrix, HasMinusZerosAtRest) {
    const auto minusZeros = [](const Matrix& matrix) {
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < 16; ++i) {
            if (matrix[i] == 0.0F && std::signbit(matrix[i])) {
                places.push_back(i);
            }
        }
        return places;
    };
    EXPECT_EQ(minusZeros(RoundMatrix(0.0F, 0.0F)), (std::vector<std::size_t>{4, 9}));
    EXPECT_EQ(minusZeros(WallMatrix(0.0F, 0.0F)), (std::vector<std::size_t>{4, 8, 9}));
}

TEST(VCamMatrix, TurnsAndDoesNothingElse) {
    ForEveryAim([](float pan, float tilt) {
        for (const Matrix& m : {RoundMatrix(pan, tilt), WallMatrix(pan, tilt)}) {
            for (const std::size_t i : {3U, 7U, 11U, 12U, 13U, 14U}) {
                EXPECT_EQ(BitsOf(m[i]), BitsOf(0.0F)) << i;
            }
            EXPECT_EQ(m[15], 1.0F);
            const Vector x = Turned(m, {1.0, 0.0, 0.0});
            const Vector y = Turned(m, {0.0, 1.0, 0.0});
            const Vector z = Turned(m, {0.0, 0.0, 1.0});
            const auto dot = [](const Vector& a, const Vector& b) {
                return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
            };
            EXPECT_NEAR(dot(x, x), 1.0, kTolerance);
            EXPECT_NEAR(dot(y, y), 1.0, kTolerance);
            EXPECT_NEAR(dot(x, y), 0.0, kTolerance);
            // Right-handed: the third axis is the cross product of the other two.
            ExpectNear(z, {x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2],
                           x[0] * y[1] - x[1] * y[0]});
        }
    });
}

TEST(VCamMatrix, OnAWallPositivePanLooksRightAndPositiveTiltUp) {
    ForEveryAim([](float pan, float tilt) {
        ExpectNear(Turned(WallMatrix(pan, tilt), kAhead),
                   {Sine(pan) * Cosine(tilt), Sine(tilt), -Cosine(pan) * Cosine(tilt)});
        // The horizon stays level.
        ExpectNear(Turned(WallMatrix(pan, tilt), kRight), {Cosine(pan), 0.0, Sine(pan)});
    });
}

TEST(VCamMatrix, OnACeilingThePanRunsClockwiseFromTheTopOfTheFrame) {
    ForEveryAim([](float pan, float tilt) {
        const Matrix m = RoundMatrix(360.0F - pan, tilt);
        ExpectNear(Turned(m, kAhead),
                   {Sine(pan) * Sine(tilt), Cosine(pan) * Sine(tilt), -Cosine(tilt)});
        // The view's right runs along a circle around the axis.
        ExpectNear(Turned(m, kRight), {Cosine(pan), -Sine(pan), 0.0});
    });
}

TEST(VCamMatrix, OnATableThePanRunsAnticlockwiseFromTheBottomOfTheFrame) {
    ForEveryAim([](float pan, float tilt) {
        if (tilt > 0.0F) {
            return;
        }
        const double away = std::abs(double{tilt});
        const Matrix m = RoundMatrix(pan, tilt);
        ExpectNear(Turned(m, kAhead),
                   {Sine(pan) * Sine(away), -Cosine(pan) * Sine(away), -Cosine(away)});
        ExpectNear(Turned(m, kUp),
                   {-Sine(pan) * Cosine(away), Cosine(pan) * Cosine(away), -Sine(away)});
    });
}

TEST(VCamMatrix, ElementsAreSinglePrecisionProducts) {
    for (int step = 0; step < 3000; ++step) {
        const float pan = static_cast<float>(step) * 0.1234F - 5.0F;
        const float tilt = static_cast<float>(step % 181) - 90.0F + 0.37F;
        const float panAngle = pan * 0.017453292F;
        const float tiltAngle = tilt * 0.017453292F;
        const float sP = std::sin(panAngle);
        const float cP = std::cos(panAngle);
        const float sT = std::sin(tiltAngle);
        const float cT = std::cos(tiltAngle);
        const Matrix round = {cP,      sP,         0.0F, 0.0F, -(sP * cT), cP * cT, sT,   0.0F,
                              sP * sT, -(cP * sT), cT,   0.0F, 0.0F,       0.0F,    0.0F, 1.0F};
        const Matrix wall = {cP,         0.0F, sP,      0.0F, -(sP * sT), cT,   cP * sT, 0.0F,
                             -(sP * cT), -sT,  cP * cT, 0.0F, 0.0F,       0.0F, 0.0F,    1.0F};
        const Matrix actualRound = RoundMatrix(pan, tilt);
        const Matrix actualWall = WallMatrix(pan, tilt);
        for (std::size_t i = 0; i < 16; ++i) {
            ASSERT_EQ(BitsOf(actualRound[i]), BitsOf(round[i])) << i << " at " << pan;
            ASSERT_EQ(BitsOf(actualWall[i]), BitsOf(wall[i])) << i << " at " << pan;
        }
    }
}

TEST(VCamMatrix, AWholeTurnIsNotQuiteNone) {
    // 360 degrees are a float that misses two pi, so its sine is not 0.
    EXPECT_NE(RoundMatrix(360.0F, 45.0F), RoundMatrix(0.0F, 45.0F));
    EXPECT_NEAR(RoundMatrix(360.0F, 45.0F)[1], 0.0F, 1e-6F);
    EXPECT_NE(RoundMatrix(360.0F, 45.0F)[1], 0.0F);
}

}  // namespace

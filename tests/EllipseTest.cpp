#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "FisheyeAlgoCommon.h"
#include "FisheyeAlgoCommon_C.h"
#ifdef __x86_64__
#include "FisheyeAlgoCommon_SSE2.h"
#endif
#include "support/FloatBits.h"
#include "support/GuardedBuffer.h"

// Points on ellipses, against a plain model of each form's own steps and against the true ellipse.

namespace {

constexpr float kFullTurn = 6.2831855F;

struct Ellipse {
    float centerX;
    float centerY;
    float radiusX;
    float radiusY;
};

struct ModelAngle {
    float c;
    float s;
};

ModelAngle Rotated(ModelAngle a, float sine, float cosine) {
    return {cosine * a.c - sine * a.s, sine * a.c + cosine * a.s};
}

/// `lanes` angles that start one step apart and go on by `lanes` steps at once.
std::vector<float> ModelPoints(const Ellipse& e, int count, bool isWindows, int lanes) {
    const float step = kFullTurn / static_cast<float>(count);
    const auto sine = static_cast<float>(std::sin(static_cast<double>(step)));
    const auto cosine = static_cast<float>(std::cos(static_cast<double>(step)));
    const float wide = step * static_cast<float>(lanes);
    const auto wideSine = static_cast<float>(std::sin(static_cast<double>(wide)));
    const auto wideCosine = static_cast<float>(std::cos(static_cast<double>(wide)));
    std::vector<ModelAngle> angles{{1.0F, 0.0F}};
    for (int lane = 1; lane < lanes; ++lane) {
        angles.push_back(Rotated(angles.back(), sine, cosine));
    }
    std::vector<float> points;
    for (int i = 0; i < count; ++i) {
        ModelAngle& angle = angles[static_cast<std::size_t>(i % lanes)];
        const float up = angle.s * e.radiusY;
        points.push_back(angle.c * e.radiusX + e.centerX);
        points.push_back(isWindows ? e.centerY - up : up + e.centerY);
        angle = Rotated(angle, wideSine, wideCosine);
    }
    return points;
}

std::vector<std::uint32_t> BitsOfAll(const std::vector<float>& values) {
    std::vector<std::uint32_t> bits;
    for (const float value : values) {
        bits.push_back(BitsOf(value));
    }
    return bits;
}

using Kernel = void (*)(float, float, float, float, float*, int);

struct EllipseForm {
    const char* name;
    Kernel windows;
    Kernel texture;
    int lanes;
};

void PrintTo(const EllipseForm& form, std::ostream* out) {
    *out << form.name;
}

std::vector<EllipseForm> AllForms() {
    return {
#ifdef __x86_64__
        {"SSE2", SSE2::CalculateEllipseCoordinate<CoordinateOrientationWindows>,
         SSE2::CalculateEllipseCoordinate<CoordinateOrientationTexture>, 4},
#endif
        {"C", C::CalculateEllipseCoordinate<CoordinateOrientationWindows>,
         C::CalculateEllipseCoordinate<CoordinateOrientationTexture>, 1}};
}

class EllipseForms : public ::testing::TestWithParam<EllipseForm> {
protected:
    /// A list that ends at a guard page.
    static std::vector<float> Points(Kernel kernel, const Ellipse& e, int count) {
        GuardedBuffer buffer(static_cast<std::size_t>(count) * 2 * sizeof(float));
        kernel(e.centerX, e.centerY, e.radiusX, e.radiusY, reinterpret_cast<float*>(buffer.data()),
               count);
        std::vector<float> points(static_cast<std::size_t>(count) * 2);
        std::memcpy(points.data(), buffer.data(), buffer.size());
        return points;
    }
};

}  // namespace

TEST_P(EllipseForms, FollowTheirOwnStepsToTheBit) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> any(-2.0F, 2.0F);
    for (int i = 0; i < 300; ++i) {
        const Ellipse e{any(random), any(random), any(random), any(random)};
        const int count = 4 * (1 + i * 7 % 256);
        EXPECT_EQ(BitsOfAll(Points(GetParam().windows, e, count)),
                  BitsOfAll(ModelPoints(e, count, true, GetParam().lanes)));
        EXPECT_EQ(BitsOfAll(Points(GetParam().texture, e, count)),
                  BitsOfAll(ModelPoints(e, count, false, GetParam().lanes)));
    }
}

TEST_P(EllipseForms, LieOnTheEllipseFromItsRightUpward) {
    const Ellipse e{0.5F, 0.25F, 0.4F, 0.3F};
    for (const int count : {4, 64, 1024}) {
        const auto points = Points(GetParam().windows, e, count);
        EXPECT_EQ(points[0], e.centerX + e.radiusX);
        EXPECT_EQ(points[1], e.centerY);
        for (int i = 0; i < count; ++i) {
            const double angle = 2.0 * std::acos(-1.0) * i / count;
            const auto at = static_cast<std::size_t>(2 * i);
            EXPECT_NEAR(points[at], 0.5 + 0.4 * std::cos(angle), 5e-5);
            EXPECT_NEAR(points[at + 1], 0.25 - 0.3 * std::sin(angle), 5e-5);
        }
    }
}

TEST_P(EllipseForms, TextureOrientationMirrorsAboutTheCentre) {
    const Ellipse e{0.5F, 0.0F, 0.4F, 0.3F};
    const auto windows = Points(GetParam().windows, e, 128);
    const auto texture = Points(GetParam().texture, e, 128);
    for (std::size_t i = 0; i < windows.size(); i += 2) {
        EXPECT_EQ(windows[i], texture[i]);
        EXPECT_EQ(windows[i + 1], -texture[i + 1]);
    }
}

TEST_P(EllipseForms, WithoutRadiiAreCopiesOfTheCentre) {
    const auto points = Points(GetParam().windows, {0.75F, 0.125F, 0.0F, 0.0F}, 8);
    for (std::size_t i = 0; i < points.size(); i += 2) {
        EXPECT_EQ(points[i], 0.75F);
        EXPECT_EQ(points[i + 1], 0.125F);
    }
}

TEST_P(EllipseForms, CountsBelowOneWriteNothing) {
    for (const int count : {0, -1, -4}) {
        GetParam().windows(0, 0, 1, 1, nullptr, count);
        GetParam().texture(0, 0, 1, 1, nullptr, count);
    }
}

INSTANTIATE_TEST_SUITE_P(, EllipseForms, ::testing::ValuesIn(AllForms()),
                         [](const auto& form) { return std::string(form.param.name); });

// Roundings add up on both ways, so longer lists part further.
TEST_P(EllipseForms, StayNextToTheScalarForm) {
    const Ellipse e{0.5F, 0.5F, 0.5F, 0.5F};
    for (const int count : {4, 32, 100, 256, 360}) {
        const auto points = Points(GetParam().windows, e, count);
        const auto scalar = Points(AllForms().back().windows, e, count);
        for (std::size_t i = 0; i < points.size(); ++i) {
            ASSERT_NEAR(points[i], scalar[i], 3e-6F) << "value " << i << " of " << count;
        }
    }
}

TEST(Ellipse, FirstPointIsAtTheRightWhateverTheCount) {
    float points[8] = {};
    CalculateEllipseCoordinate(0.5F, 0.25F, 0.5F, 1.0F, points, 1, CoordinateOrientationWindows);
    EXPECT_EQ(points[0], 1.0F);
    EXPECT_EQ(points[1], 0.25F);
}

TEST(Ellipse, OtherOrientationsWriteNothing) {
    CalculateEllipseCoordinate(0, 0, 1, 1, nullptr, 4, static_cast<CoordinateOrientationType>(2));
}

TEST(Ellipse, LeadsToTheKernelOfItsOrientation) {
    float windows[8];
    float texture[8];
    CalculateEllipseCoordinate(0, 0, 1, 1, windows, 4, CoordinateOrientationWindows);
    CalculateEllipseCoordinate(0, 0, 1, 1, texture, 4, CoordinateOrientationTexture);
    EXPECT_EQ(windows[3], -1.0F);
    EXPECT_EQ(texture[3], 1.0F);
}

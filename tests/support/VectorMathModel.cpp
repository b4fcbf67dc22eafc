#include "support/VectorMathModel.h"

#include <cmath>
#include <cstddef>
#include <limits>

#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace {

constexpr float kLargestInt = 2147483648.0F;
constexpr float kPi = 3.14159274F;
constexpr float kHalfPi = 1.57079637F;
constexpr float kInvPi = 0.318309873F;

/// Euler's series for r / (1 + r^2) = `w`.
float Series(float r, float w) {
    const float y = r * w;
    const float squared = y * y;
    const float cubed = y * squared;
    const float low = (y * (2.0F / 3.0F) + 1.0F) + squared * (8.0F / 15.0F);
    const float high = ((y * (128.0F / 315.0F) + 16.0F / 35.0F) + squared * (256.0F / 693.0F)) +
                       cubed * (1024.0F / 3003.0F);
    return w * (low + cubed * high);
}

}  // namespace

namespace model {

float Reciprocal(float a) {
#if defined(__x86_64__)
    return _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(a)));
#else
    // No form here takes an estimate.
    return 1.0F / a;
#endif
}

int Round(float a) {
    if (!(a >= -kLargestInt && a < kLargestInt)) {
        return std::numeric_limits<int>::min();
    }
    const double below = std::floor(double{a});
    const double part = double{a} - below;
    const bool isUp = part > 0.5 || (part == 0.5 && std::fmod(below, 2.0) != 0.0);
    return static_cast<int>(below) + (isUp ? 1 : 0);
}

float Sine(float x) {
    const int halfTurns = Round(x * kInvPi);
    float r = x - static_cast<float>(halfTurns) * kPi;
    if (halfTurns % 2 != 0) {
        r = -r;
    }
    if (std::fabs(r) < 0.000443632976F) {
        return r;
    }
    const float squared = r * r;
    const float cubed = r * squared;
    const float tail =
        (squared * -0.000198148962F + 0.00833318196F) + (squared * squared) * 2.61318132e-06F;
    return (r + cubed * -0.166666672F) + (squared * cubed) * tail;
}

float Cosine(float x) {
    return Sine(x + kHalfPi);
}

float Arctangent(float t) {
    const bool isNegative = t < 0.0F;
    const float a = isNegative ? -t : t;
    const bool isFolded = a > 1.0F;
    const float r = isFolded ? Reciprocal(a) : a;
    float angle = r;
    if (!(r < 0.000352111732F)) {
        angle = Series(r, Reciprocal(r * r + 1.0F) * r);
    }
    angle = isNegative ? -angle : angle;
    if (!isFolded) {
        return angle;
    }
    return isNegative ? -kHalfPi - angle : kHalfPi - angle;
}

float ArctangentOf(float y, float x) {
    const float angle = Arctangent(y * Reciprocal(x));
    if (!std::signbit(x)) {
        return angle;
    }
    return std::signbit(y) ? angle - kPi : angle + kPi;
}

float Arccosine(float c) {
    const float tangentOfHalf = c * Reciprocal(std::sqrt(1.0F - c * c) + 1.0F);
    const float half = Arctangent(tangentOfHalf);
    return kHalfPi - 2.0F * half;
}

}  // namespace model

std::vector<float> Sweep(double first, double last, int count) {
    std::vector<float> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(static_cast<float>(first + (last - first) * i / (count - 1)));
    }
    return values;
}

std::vector<float> FloatsOfAllSizes(std::uint32_t step) {
    constexpr std::uint32_t kInfinityBits = 0x7F800000;
    std::vector<float> values;
    for (std::uint32_t bits = 0; bits <= kInfinityBits; bits += step) {
        values.push_back(FloatOf(bits));
        values.push_back(FloatOf(bits | 0x80000000U));
    }
    return values;
}

std::vector<float> UnusualFloats() {
    using Limits = std::numeric_limits<float>;
    std::vector<float> values;
    for (const float centre : {1.0F, 0.000443632976F, 0.000352111732F, kPi, kHalfPi, 2.0F * kPi,
                               1.0F / 0.000352111732F}) {
        float value = centre;
        for (int i = 0; i < 4; ++i) {
            value = std::nextafter(value, 0.0F);
        }
        for (int i = 0; i < 9; ++i) {
            values.push_back(value);
            value = std::nextafter(value, Limits::infinity());
        }
    }
    for (const float value :
         {0.0F, Limits::denorm_min(), 1e-40F, Limits::min(), std::nextafter(Limits::min(), 0.0F),
          1e-20F, 0.5F, 2.0F, 1e4F, 6.7e9F, 6.8e9F, 1e20F, 8.5e37F, 1.7e38F, Limits::max(),
          Limits::infinity(), Limits::quiet_NaN()}) {
        values.push_back(value);
    }
    const std::size_t positive = values.size();
    for (std::size_t i = 0; i < positive; ++i) {
        values.push_back(-values[i]);
    }
    return values;
}

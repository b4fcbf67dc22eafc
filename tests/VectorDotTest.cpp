#if defined(__x86_64__)

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "support/VectorLanes.h"
#include "support/VectorMathModel.h"

namespace {

float DotOf(const std::array<float, 4>& a, const std::array<float, 4>& b) {
    return Dot(sse::sse4Floats::Load(a.data()), sse::sse4Floats::Load(b.data()));
}

TEST(Dot, AddsThePairsFirst) {
    constexpr float kBig = 1e8F;  // its neighbours are 8 away
    const std::array<float, 4> ones = {1.0F, 1.0F, 1.0F, 1.0F};
    EXPECT_EQ(DotOf({kBig, 1.0F, -kBig, 1.0F}, ones), 0.0F) << "1 from the left, 2 crosswise";
    EXPECT_EQ(DotOf({kBig, -kBig, 1.0F, 1.0F}, ones), 2.0F) << "0 from outside in";
    EXPECT_EQ(DotOf({1.0F, 1.0F, kBig, -kBig}, ones), 2.0F) << "0 from the left";
    EXPECT_EQ(DotOf({kBig, 1.0F, 1.0F, -kBig}, ones), 0.0F) << "2 from outside in";
    EXPECT_EQ(DotOf(ones, {kBig, 1.0F, 1.0F, -kBig}), 0.0F);
}

TEST(Dot, UsesAllFourProductsRounded) {
    EXPECT_EQ(DotOf({2.0F, 3.0F, 5.0F, 7.0F}, {1000.0F, 100.0F, 10.0F, 1.0F}), 2357.0F);
    // 1 + 2^-12 squared needs 25 bits: fused products would keep the last one.
    const float a = 1.0F + 0x1p-12F;
    EXPECT_EQ(DotOf({a, -1.0F, 0.0F, 0.0F}, {a, 1.0F + 0x1p-11F, 0.0F, 0.0F}), 0.0F);
}

TEST(Dot, IsThePairedSumOfAnything) {
    const std::vector<float> values = Sweep(-3.0, 2.0, 1013);
    int distinct = 0;
    for (std::size_t i = 0; i + 8 <= values.size(); ++i) {
        const float* const v = &values[i];
        const std::array<float, 4> a = {v[0], v[5] * 0.3F, v[3], v[1] * 7.0F};
        const std::array<float, 4> b = {v[7] * 0.1F, v[2], v[6] * 11.0F, v[4]};
        const float p[4] = {a[0] * b[0], a[1] * b[1], a[2] * b[2], a[3] * b[3]};
        EXPECT_EQ(BitsOf(DotOf(a, b)), BitsOf((p[0] + p[1]) + (p[2] + p[3])));
        distinct += (p[0] + p[1]) + (p[2] + p[3]) != ((p[0] + p[1]) + p[2]) + p[3] ? 1 : 0;
    }
    EXPECT_GT(distinct, 50) << "the order of summation shows";
}

TEST(StoreInterleaved, WritesPointsWithoutAlignment) {
    const std::array<float, 4> x = {1.0F, 2.0F, 3.0F, 4.0F};
    const std::array<float, 4> y = {-1.0F, -2.0F, -3.0F, -4.0F};
    alignas(16) std::array<float, 10> points{};
    StoreInterleaved(sse::sse4Floats::Load(x.data()), sse::sse4Floats::Load(y.data()),
                     points.data() + 1);
    EXPECT_EQ(points, (std::array<float, 10>{0.0F, 1.0F, -1.0F, 2.0F, -2.0F, 3.0F, -3.0F, 4.0F,
                                             -4.0F, 0.0F}));
}

TEST(VectorConstants, HaveTheirBits) {
    const struct {
        sse::FloatBits bits;
        std::uint32_t expected;
        float value;
    } constants[] = {{sse::kInvPi, 0x3EA2F983, 0.318309873F},
                     {sse::kPi, 0x40490FDB, 3.14159274F},
                     {sse::kNegPi, 0xC0490FDB, -3.14159274F},
                     {sse::kHalfPi, 0x3FC90FDB, 1.57079637F},
                     {sse::kSinC3, 0xBE2AAAAB, -0.166666672F},
                     {sse::kSinC5, 0x3C0887E6, 0.00833318196F},
                     {sse::kSinC7, 0xB94FC635, -0.000198148962F},
                     {sse::kSinC9, 0x362F5E1D, 2.61318132e-06F},
                     {sse::kSinSmall, 0x39E89769, 0.000443632976F},
                     {sse::kEuler1, 0x3F2AAAAB, 2.0F / 3.0F},
                     {sse::kEuler2, 0x3F088889, 8.0F / 15.0F},
                     {sse::kEuler3, 0x3EEA0EA1, 16.0F / 35.0F},
                     {sse::kEuler4, 0x3ED00D01, 128.0F / 315.0F},
                     {sse::kEuler5, 0x3EBD2318, 256.0F / 693.0F},
                     {sse::kEuler6, 0x3EAE968C, 1024.0F / 3003.0F},
                     {sse::kAtanSmall, 0x39B89BA3, 0.000352111732F},
                     {sse::kZero, 0x00000000, 0.0F},
                     {sse::kHalf, 0x3F000000, 0.5F},
                     {sse::kOne, 0x3F800000, 1.0F}};
    for (const auto& constant : constants) {
        EXPECT_EQ(constant.bits, constant.expected) << constant.value;
        EXPECT_EQ(FloatOf(constant.bits), constant.value);
    }
    EXPECT_EQ(sse::kAbsMask, 0x7FFFFFFFU);
}

}  // namespace

#endif

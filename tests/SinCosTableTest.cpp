#include <gtest/gtest.h>

#if defined(__x86_64__)

#include <cmath>
#include <cstddef>
#include <vector>

#include "FisheyeAlgoCommon_SSE2.h"
#include "support/FloatList.h"
#include "support/MeshModel.h"

// The lanes' table of sines and cosines, against a model of the lanes and against the true ones.

namespace {

constexpr float kPi = 3.1415927F;
constexpr float kTurn = 6.2831855F;

struct Angles {
    float start;
    float end;
};

constexpr Angles kSpans[] = {
    {0.0F, kTurn}, {kTurn, 0.0F},   {0.0F, kPi},    {kPi, 0.0F}, {-1.5707964F, 1.5707964F},
    {0.7F, 0.7F},  {-0.3F, 5.125F}, {1e-5F, -1e-5F}};

struct Tables {
    std::vector<float> sines;
    std::vector<float> cosines;
};

/// Both tables lie at multiples of 16 bytes, and have room for whole groups of four entries.
Tables TablesOf(std::size_t count, const Angles& angles, GuardedBuffer::Side side) {
    const std::size_t whole = (count + 3) / 4 * 4;
    FloatList sines(whole, side);
    FloatList cosines(whole, side);
    SSE2::CSinAndCosThetaTable::CalculateSinAndCosThetaTable(sines.data(), cosines.data(), count,
                                                             angles.start, angles.end);
    return {sines.Values(), cosines.Values()};
}

void ExpectModel(std::size_t count, const Angles& angles, GuardedBuffer::Side side) {
    auto expected =
        model::AnglesOf(ListForm::SSE2, angles.start, angles.end, static_cast<int>(count));
    for (std::size_t i = count; i < expected.sines.size(); ++i) {
        expected.sines[i] = kUntouched;
        expected.cosines[i] = kUntouched;
    }
    const auto tables = TablesOf(count, angles, side);
    EXPECT_TRUE(AreSameFloats(tables.sines, expected.sines)) << "sines of " << count;
    EXPECT_TRUE(AreSameFloats(tables.cosines, expected.cosines)) << "cosines of " << count;
}

}  // namespace

TEST(SinCosTable, HasTheLanesBitsAndWritesNothingBeyondTheCount) {
    for (const Angles& angles : kSpans) {
        for (std::size_t count = 0; count <= 40; ++count) {
            ExpectModel(count, angles, GuardedBuffer::Side::EndsAtGuard);
            ExpectModel(count, angles, GuardedBuffer::Side::StartsAtGuard);
        }
    }
}

TEST(SinCosTable, HasTheLanesBitsInLongTables) {
    for (const Angles& angles : kSpans) {
        for (const std::size_t count : {1023U, 1024U, 4097U, 65536U}) {
            ExpectModel(count, angles, GuardedBuffer::Side::EndsAtGuard);
        }
    }
    ExpectModel(1000003, kSpans[0], GuardedBuffer::Side::EndsAtGuard);
}

TEST(SinCosTable, OfNoEntriesTouchesNothing) {
    SSE2::CSinAndCosThetaTable::CalculateSinAndCosThetaTable(nullptr, nullptr, 0, 0.0F, kTurn);
}

TEST(SinCosTable, OfOneEntryHasTheFirstAngle) {
    const auto tables = TablesOf(1, {1.0F, 2.0F}, GuardedBuffer::Side::EndsAtGuard);
    EXPECT_NEAR(tables.sines[0], std::sin(1.0), 3e-7);
    EXPECT_NEAR(tables.cosines[0], std::cos(1.0), 3e-7);
    EXPECT_EQ(tables.sines[1], kUntouched);
    EXPECT_EQ(tables.cosines[1], kUntouched);
}

TEST(SinCosTable, OfSixEntriesWritesSix) {
    const auto tables = TablesOf(6, {0.0F, kPi}, GuardedBuffer::Side::EndsAtGuard);
    for (std::size_t i = 0; i < 6; ++i) {
        const double angle = std::acos(-1.0) * static_cast<double>(i) / 5.0;
        EXPECT_NEAR(tables.sines[i], std::sin(angle), 5e-7) << i;
        EXPECT_NEAR(tables.cosines[i], std::cos(angle), 5e-7) << i;
    }
    for (std::size_t i = 6; i < 8; ++i) {
        EXPECT_EQ(tables.sines[i], kUntouched);
        EXPECT_EQ(tables.cosines[i], kUntouched);
    }
}

// Angles grow by addition, so that each entry adds a rounding.
TEST(SinCosTable, IncludesBothEndsAndSpacesEvenly) {
    for (const std::size_t count : {2U, 9U, 64U, 361U}) {
        const auto tables = TablesOf(count, {0.0F, kTurn}, GuardedBuffer::Side::EndsAtGuard);
        for (std::size_t i = 0; i < count; ++i) {
            const double angle =
                2.0 * std::acos(-1.0) * static_cast<double>(i) / static_cast<double>(count - 1);
            const double rounding = 1e-6 + 6e-8 * static_cast<double>(count);
            EXPECT_NEAR(tables.sines[i], std::sin(angle), rounding) << i << " of " << count;
            EXPECT_NEAR(tables.cosines[i], std::cos(angle), rounding) << i << " of " << count;
        }
    }
}

#endif

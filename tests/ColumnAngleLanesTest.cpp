#include <gtest/gtest.h>

#if defined(__x86_64__)

#include <algorithm>
#include <vector>

#include "FisheyeAlgoCommon_SSE2.h"
#include "sse/ColumnAngleLanes.h"
#include "support/FailingAllocations.h"

// The tables of sines and cosines that kernels read in whole groups of lanes, several at once.

namespace {

constexpr Span kSpan{-0.3F, 5.125F};

/// What a table has to hold: the columns, and the last of them again up to the end of the groups
/// that can be read at once from the last group on.
std::vector<float> Padded(std::vector<float> columns, int lanes, int groupsAtOnce) {
    const int count = static_cast<int>(columns.size());
    const int groups = (count + lanes - 1) / lanes;
    const float last = columns.back();
    columns.resize(static_cast<std::size_t>((groups - 1 + groupsAtOnce) * lanes), last);
    return columns;
}

template <int lanes, int groupsAtOnce>
void ExpectPaddedTables() {
    for (int columns = 1; columns <= 5 * lanes; ++columns) {
        const auto count = static_cast<std::size_t>(columns);
        std::vector<float> sines(count);
        std::vector<float> cosines(count);
        SSE2::CSinAndCosThetaTable::CalculateSinAndCosThetaTable(sines.data(), cosines.data(),
                                                                 count, kSpan.first, kSpan.last);
        const auto expected = Padded(sines, lanes, groupsAtOnce);
        const ColumnAngleLanes<lanes, groupsAtOnce> angles(kSpan, columns);
        ASSERT_EQ(angles.Count(), expected.size()) << columns;
        EXPECT_TRUE(std::equal(expected.begin(), expected.end(), angles.Sines())) << columns;
        const auto others = Padded(cosines, lanes, groupsAtOnce);
        EXPECT_TRUE(std::equal(others.begin(), others.end(), angles.Cosines())) << columns;
    }
}

}  // namespace

TEST(ColumnAngleLanes, HoldEveryColumnAndRepeatTheLastUpToTheEndOfTheGroups) {
    ExpectPaddedTables<4, 1>();
    ExpectPaddedTables<4, 4>();
    ExpectPaddedTables<8, 1>();
    ExpectPaddedTables<8, 4>();
}

TEST(ColumnAngleLanes, OfNoColumnsTakeNoMemory) {
    for (const int columns : {0, -1, -8}) {
        const AllocationWatch watch;
        const ColumnAngleLanes<8, 4> angles(kSpan, columns);
        EXPECT_EQ(watch.Requests(), 0) << columns;
        EXPECT_EQ(angles.Count(), 0U) << columns;
    }
}

#endif

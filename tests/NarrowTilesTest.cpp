#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "FrameLimits.h"
#include "TableTiles.h"

// What a conversion asks the memory for in narrow tiles. A request changes nothing that a program
// can see, so the class is compiled here a second time, in a namespace of its own, with requests
// that are written down.

namespace observed_tiles {

std::vector<const void*> readRequests;
std::vector<const void*> writeRequests;

void WriteDown(const void* address, bool isForWriting, int) {
    (isForWriting ? writeRequests : readRequests).push_back(address);
}

#define __builtin_prefetch WriteDown
#include "TableConversion.h"
#undef __builtin_prefetch

}  // namespace observed_tiles

namespace {

using observed_tiles::TableConversion;
using observed_tiles::TableRun;
using observed_tiles::TableView;

constexpr int kBytes = 4;
constexpr int kWidth = 80;
constexpr int kHeight = 5;
constexpr int kStride = kWidth * kBytes;

class NarrowTiles : public ::testing::Test {
protected:
    void MakeRows(const TableTiles& tiles, int dstStride = kStride) {
        observed_tiles::readRequests.clear();
        observed_tiles::writeRequests.clear();
        const TableView view{m_entries.data(), kWidth, kHeight, dstStride};
        TableConversion<kBytes>(view, m_frame.data())
            .MakeRows(
                kHeight, std::array{TableRun{0, 0, kWidth}}, tiles, [] {},
                [](const int*, int, unsigned char*) {});
    }

    std::vector<int> m_entries = std::vector<int>(kWidth * kHeight);
    std::vector<unsigned char> m_frame = std::vector<unsigned char>(kStride * kHeight);
};

// Tiles of 32 columns and all rows: 32, 32 and 16 columns, of which 16 are a cache line.
TEST_F(NarrowTiles, AskForTheTableAndTheOutputTwoRowsFurtherDown) {
    MakeRows({32, 128});
    std::vector<const void*> reads;
    std::vector<const void*> writes;
    for (const std::vector<int>& lines : {std::vector{0, 16}, {32, 48}, {64}}) {
        for (int row = 2; row < kHeight; ++row) {
            for (const int column : lines) {
                reads.push_back(m_entries.data() + row * kWidth + column);
                writes.push_back(m_frame.data() + row * kStride + column * kBytes);
            }
        }
    }
    EXPECT_EQ(observed_tiles::readRequests, reads);
    EXPECT_EQ(observed_tiles::writeRequests, writes);
}

TEST_F(NarrowTiles, WideTilesLeaveThatToTheProcessor) {
    MakeRows({kWidth, 128});
    MakeRows({TableTiles::kNarrow + 1, 2});
    MakeRows(TableTiles::WholeRows(kWidth));
    EXPECT_TRUE(observed_tiles::readRequests.empty());
    EXPECT_TRUE(observed_tiles::writeRequests.empty());
}

TEST_F(NarrowTiles, OverlappingRowsAreTakenWhole) {
    MakeRows({32, 128}, kStride / 2);
    EXPECT_TRUE(observed_tiles::readRequests.empty());
}

}  // namespace

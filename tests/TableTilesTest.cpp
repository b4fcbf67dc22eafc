#include "TableTiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <ostream>
#include <vector>

namespace {

struct RowPart {
    int y;
    int left;
    int right;

    bool operator==(const RowPart& other) const {
        return y == other.y && left == other.left && right == other.right;
    }
};

std::ostream& operator<<(std::ostream& out, const RowPart& part) {
    return out << "row " << part.y << " from " << part.left << " to " << part.right;
}

std::vector<RowPart> Visits(const TableTiles& tiles, int width, int height) {
    std::vector<RowPart> visits;
    tiles.ForEachRow(width, height, [&](int y, int left, int right) {
        visits.push_back({y, left, right});
    });
    return visits;
}

constexpr int kLargest = std::numeric_limits<int>::max();

}  // namespace

TEST(TableTilesOrder, GoesTileByTileAndDownEachTile) {
    EXPECT_EQ(Visits({4, 2}, 9, 3), (std::vector<RowPart>{{0, 0, 4},
                                                          {1, 0, 4},
                                                          {0, 4, 8},
                                                          {1, 4, 8},
                                                          {0, 8, 9},
                                                          {1, 8, 9},
                                                          {2, 0, 4},
                                                          {2, 4, 8},
                                                          {2, 8, 9}}));
}

TEST(TableTilesOrder, WholeRowsGoFromFirstToLast) {
    EXPECT_EQ(Visits(TableTiles::WholeRows(5000), 5000, 3),
              (std::vector<RowPart>{{0, 0, 5000}, {1, 0, 5000}, {2, 0, 5000}}));
}

TEST(TableTilesOrder, CoversEveryEntryOnceAndEachColumnFromTheTop) {
    const std::vector<TableTiles> choices{TableTiles::ForCaches(64, 64),
                                          TableTiles::ForCaches(4096, 4096)};
    for (const int width : {1, 1023, 1024, 2047, 2048, 2049, 4097, 5120}) {
        for (const int height : {1, 31, 32, 33, 64, 70}) {
            for (const TableTiles& tiles : choices) {
                std::vector<int> nextRow(static_cast<std::size_t>(width), 0);
                for (const RowPart& part : Visits(tiles, width, height)) {
                    ASSERT_LT(part.left, part.right);
                    for (int x = part.left; x < part.right; ++x) {
                        ASSERT_EQ(nextRow.at(static_cast<std::size_t>(x))++, part.y)
                            << "column " << x << " of " << width << "x" << height;
                    }
                }
                EXPECT_EQ(nextRow, std::vector<int>(static_cast<std::size_t>(width), height));
            }
        }
    }
}

TEST(TableTilesOrder, CountsItsVisits) {
    for (const int width : {1, 3, 4, 5, 8, 9}) {
        for (const int height : {1, 2, 3}) {
            EXPECT_EQ((TableTiles{4, 2}).CountRows(width, height),
                      Visits({4, 2}, width, height).size())
                << width << "x" << height;
        }
    }
}

TEST(TableTilesForCaches, AreNarrowInPanoramasOfMoreThan4MiPixels) {
    EXPECT_EQ(TableTiles::ForCaches(4096, 1024).columns, 2048);
    EXPECT_EQ(TableTiles::ForCaches(4097, 1024).columns, 256);
    EXPECT_EQ(TableTiles::ForCaches(1 << 16, 1 << 16).columns, 256) << "2^32 pixels";
}

TEST(TableTilesOrder, NothingIsVisitedInATableWithoutEntries) {
    EXPECT_TRUE(Visits({4, 2}, 0, 3).empty());
    EXPECT_TRUE(Visits({4, 2}, 3, 0).empty());
    EXPECT_TRUE(Visits({4, 2}, -3, -3).empty());
}

TEST(TableTilesOrder, ReachesTheEndOfTheWidestTable) {
    EXPECT_EQ(Visits({1 << 30, 4}, kLargest, 1),
              (std::vector<RowPart>{{0, 0, 1 << 30}, {0, 1 << 30, kLargest}}));
}

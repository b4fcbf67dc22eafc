#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "TableTiles.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// Which source lines a conversion asks for ahead of time, and when. A request changes nothing that
// a program can see, so the class is compiled here a second time, in a namespace of its own, with
// requests that are written down.

namespace observed_lines {

std::vector<std::uintptr_t> requests;

void WriteDown(const void* address, int isForWriting, int) {
    EXPECT_EQ(isForWriting, 0);
    requests.push_back(reinterpret_cast<std::uintptr_t>(address));
}

#define __builtin_prefetch WriteDown
#include "FirstTouchLines.h"
#undef __builtin_prefetch

}  // namespace observed_lines

namespace {

using observed_lines::FirstTouchLines;

constexpr int kLine = 64;

/// A row is looked at in every fourth column, from the first, second, third or fourth on.
constexpr int kSparse = 4;

/// Entries that are all looked at, as each stands in four columns.
std::vector<int> InFourColumns(const std::vector<int>& entries) {
    std::vector<int> wide;
    for (const int entry : entries) {
        wide.insert(wide.end(), kSparse, entry);
    }
    return wide;
}

/// A list of lines beside a plain one.
class Lines : public ::testing::Test {
protected:
    void Build(const std::vector<int>& entries, int columns, int rows, std::int64_t sourceBytes) {
        observed_lines::requests.clear();
        const TableTiles tiles = TableTiles::ForCaches(columns, rows);
        m_lines.Build<kNoSource>(entries.data(), columns, rows, sourceBytes);
        ExpectTableRequests(entries, columns, rows);
        m_firstTouched.clear();
        std::set<int> seen;
        for (int top = 0; top < rows; top += tiles.rows) {
            for (int left = 0; left < columns; left += tiles.columns) {
                for (int y = top; y < std::min(top + tiles.rows, rows); ++y) {
                    m_firstTouched.emplace_back();
                    for (int x = left + y % kSparse; x < std::min(left + tiles.columns, columns);
                         x += kSparse) {
                        const int entry = entries[static_cast<std::size_t>(y * columns + x)];
                        if (entry != kNoSource && seen.insert(entry / kLine).second) {
                            m_firstTouched.back().push_back(entry / kLine);
                        }
                    }
                }
            }
        }
    }

    /// What building asks for is the table itself, four rows ahead in narrow tiles.
    static void ExpectTableRequests(const std::vector<int>& entries, int columns, int rows) {
        constexpr int kAhead = 4;
        constexpr int kEntriesInLine = 16;
        std::vector<std::uintptr_t> expected;
        const TableTiles tiles = TableTiles::ForCaches(columns, rows);
        tiles.ForEachRow(columns, rows, [&](int y, int left, int right) {
            if (tiles.columns == TableTiles::kNarrow && y + kAhead < rows) {
                for (int x = left; x < right; x += kEntriesInLine) {
                    expected.push_back(reinterpret_cast<std::uintptr_t>(
                        &entries[static_cast<std::size_t>((y + kAhead) * columns + x)]));
                }
            }
        });
        EXPECT_TRUE(observed_lines::requests == expected);
        observed_lines::requests.clear();
    }

    void BuildAny(RingGenerator& generator, int columns, int rows) {
        const Ring ring =
            PackedRing(generator.NextInt(1, 300), generator.NextInt(1, 60), columns, rows, 4);
        Build(generator.NextEntries(ring, 4), columns, rows,
              std::int64_t{ring.srcHeight} * ring.srcStride);
    }

    /// Walks all rows of all tiles and calls `beforeRow(row)` when what is asked for before the row
    /// has been.
    template <class BeforeRow>
    void WalkRows(BeforeRow&& beforeRow) {
        FirstTouchLines::Walk walk(m_lines, &m_source);
        for (int row = 0; row < static_cast<int>(m_firstTouched.size()); ++row) {
            walk.NextRow();
            beforeRow(row);
        }
    }

    void WalkAllRows() {
        WalkRows([](int) {});
    }

    /// The lines asked for so far. A request leads to its line's middle, and so into the line
    /// wherever the frame starts.
    std::vector<int> Requested() const {
        std::vector<int> lines;
        for (const std::uintptr_t address : observed_lines::requests) {
            const std::uintptr_t offset = address - reinterpret_cast<std::uintptr_t>(&m_source);
            EXPECT_EQ(offset % kLine, 32U);
            lines.push_back(static_cast<int>(offset / kLine));
        }
        return lines;
    }

    /// The lines that the first `rows` rows of tiles touch, in the order of the touches.
    std::vector<int> TouchedBy(int rows) const {
        std::vector<int> lines;
        for (int row = 0; row < std::min(rows, static_cast<int>(m_firstTouched.size())); ++row) {
            const auto& touched = m_firstTouched[static_cast<std::size_t>(row)];
            lines.insert(lines.end(), touched.begin(), touched.end());
        }
        return lines;
    }

    std::vector<int> AllTouched() const {
        return TouchedBy(static_cast<int>(m_firstTouched.size()));
    }

    FirstTouchLines m_lines;

private:
    std::vector<std::vector<int>> m_firstTouched;
    unsigned char m_source = 0;
};

}  // namespace

TEST_F(Lines, AreOf64BytesAndTakeAPixelsFirstByte) {
    // The pixel at 127 reaches into the third line, which is not listed for that.
    Build(InFourColumns({0, 63, 1, 64, 127, 3}), 24, 1, 200);
    WalkAllRows();
    EXPECT_EQ(Requested(), (std::vector<int>{0, 1}));
}

TEST_F(Lines, AreRequestedInTheOrderOfTheirFirstTouch) {
    Build(InFourColumns({300, kNoSource, 10, 300, 70, 301, 10, 400, kNoSource, 70, 20, 200}), 16, 3,
          500);
    WalkAllRows();
    EXPECT_EQ(Requested(), (std::vector<int>{4, 0, 1, 6, 3}));
}

TEST_F(Lines, AreLookedForInEveryFourthColumnFromAnotherOneInEachRow) {
    const auto line = [](int number) { return number * kLine; };
    Build({line(0),  line(1),  line(2),  line(3),  line(4),   //
           line(5),  line(6),  line(7),  line(8),  line(9),   //
           line(10), line(11), line(12), line(13), line(14),  //
           line(15), line(16), line(17), line(18), line(19),  //
           line(20), line(21), line(22), line(23), line(24)},
          5, 5, line(25));
    WalkAllRows();
    EXPECT_EQ(Requested(), (std::vector<int>{0, 4, 6, 12, 18, 20, 24}));
}

/// What is never asked for has to be waited for.
TEST_F(Lines, OfAPanoramaAreNearlyAllFound) {
    for (const int side : {256, 1024}) {
        const Ring ring = PackedRing(side, side, 2 * side, side / 2, 4);
        const std::vector<int> entries = TableOffsets(Mount::Table, ring, 4);
        Build(entries, ring.dstWidth, ring.dstHeight, std::int64_t{side} * ring.srcStride);
        WalkAllRows();
        std::set<int> all;
        for (const int entry : entries) {
            if (entry != kNoSource) {
                all.insert(entry / kLine);
            }
        }
        EXPECT_GE(static_cast<double>(Requested().size()), 0.9 * static_cast<double>(all.size()));
        RecordProperty("found_of_" + std::to_string(all.size()),
                       static_cast<int>(Requested().size()));
    }
}

TEST_F(Lines, AreEachRequestedOnce) {
    RingGenerator generator(80);
    for (int i = 0; i < 60; ++i) {
        const int columns = generator.NextInt(1, 200);
        const int rows = generator.NextInt(1, 80);
        BuildAny(generator, columns, rows);
        WalkAllRows();
        ASSERT_EQ(Requested(), AllTouched()) << columns << "x" << rows;
    }
}

TEST_F(Lines, FollowTheTilesOfATable) {
    RingGenerator generator(82);
    const TableTiles small = TableTiles::ForCaches(2051, 34);
    const TableTiles large = TableTiles::ForCaches(2051, 2051);
    ASSERT_NE(small.columns, large.columns);
    for (const int rows : {small.rows + 2, 2051}) {
        BuildAny(generator, 2051, rows);
        WalkAllRows();
        EXPECT_EQ(Requested(), AllTouched()) << rows;
    }
}

TEST_F(Lines, AreRequestedBeforeTheirRowButNotFarAhead) {
    constexpr int kFar = 64;
    RingGenerator generator(81);
    for (int i = 0; i < 20; ++i) {
        BuildAny(generator, generator.NextInt(1, 12), 200);
        WalkRows([&](int row) {
            EXPECT_GE(observed_lines::requests.size(), TouchedBy(row + 1).size()) << "row " << row;
            EXPECT_LE(observed_lines::requests.size(), TouchedBy(row + 1 + kFar).size())
                << "row " << row;
        });
    }
}

TEST_F(Lines, AreNoneForATableOfNothing) {
    Build({}, 0, 0, 0);
    WalkAllRows();
    Build(std::vector<int>(50, kNoSource), 10, 5, 0);
    WalkAllRows();
    EXPECT_TRUE(observed_lines::requests.empty());
}

TEST_F(Lines, AreReplacedByTheNextTable) {
    Build(InFourColumns({0, 64, 128, 192}), 8, 2, 256);
    Build(InFourColumns({640, 704}), 4, 2, 768);
    WalkAllRows();
    EXPECT_EQ(Requested(), (std::vector<int>{10, 11}));
}

TEST_F(Lines, AreForgottenWhenCleared) {
    Build(InFourColumns({0, 64, 128, 192}), 8, 2, 256);
    m_lines.Clear();
    WalkAllRows();
    EXPECT_TRUE(observed_lines::requests.empty());
}

TEST_F(Lines, ReachTheEndOfTheLargestFrame) {
    Build(InFourColumns({2147483644, 0, 2147483584, 2147483583}), 16, 1, 2147483647);
    WalkAllRows();
    EXPECT_EQ(Requested(), (std::vector<int>{33554431, 0, 33554430}));
}

// A conversion whose rows overlap goes through the table in another order and asks more or less
// often than the table has rows of tiles.
TEST_F(Lines, AreRequestedToTheEndAndNotBeyondHoweverOftenARowBegins) {
    Build(InFourColumns({0, 64, 128, 192, 256, 320}), 4, 6, 384);
    WalkAllRows();
    EXPECT_EQ(Requested(), AllTouched());
    observed_lines::requests.clear();
    const unsigned char source = 0;
    FirstTouchLines::Walk walk(m_lines, &source);
    for (int row = 0; row < 200; ++row) {
        walk.NextRow();
    }
    EXPECT_EQ(observed_lines::requests.size(), 6U);
}

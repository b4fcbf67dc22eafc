#ifndef KIVFISHEYE_FIRST_TOUCH_LINES_H
#define KIVFISHEYE_FIRST_TOUCH_LINES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Prefetch.h"
#include "TableTiles.h"

/// The cache lines of the source frame in the order in which a table first leads to them.
///
/// A conversion reads scattered source pixels, and waiting for lines that were never touched is
/// most of what it costs. Once fetched, a line serves many rows, so asking for each line once, some
/// rows before its first use, takes far fewer requests than asking for each pixel. The list takes
/// about a twentieth of the table's memory for an output of the recommended size, and up to a
/// quarter for one so small that hardly two of its pixels share a line.
class FirstTouchLines {
public:
    static constexpr int kLineBytes = 64;
    static constexpr int kSparse = 4;

    const TableTiles& Tiles() const { return m_tiles; }

    /// Leaves nothing behind: what a table takes must not depend on those before it.
    void Clear() {
        m_lines = std::vector<std::uint32_t>();
        m_rowEnds = std::vector<std::uint32_t>();
    }

    /// Lists the lines of a table whose offsets are all below `sourceBytes`.
    ///
    /// Each row is looked at in every `kSparse`th column only, another of them in each row, as a
    /// line spans several columns or several rows. The few that this finds late or not at all are
    /// waited for as if there was no list, and it takes a fraction of the time.
    template <int outOfFrame>
    void Build(const int* table, int width, int height, std::int64_t sourceBytes) {
        Clear();
        m_tiles = TableTiles::ForCaches(width, height);
        m_rowEnds.reserve(m_tiles.CountRows(width, height));
        // A byte for each line, and one more, touched already, for entries that show nothing: their
        // offset is the largest number of all.
        static_assert(outOfFrame == -1);
        const auto lineCount = static_cast<std::uint32_t>(sourceBytes / kLineBytes + 1);
        std::vector<unsigned char> touched(std::size_t{lineCount} + 1);
        touched[lineCount] = 1;
        // Every line at most once, and none without a look; and the place where the next may go.
        const auto longestRow = static_cast<std::size_t>(std::min(width, m_tiles.columns));
        const std::size_t looks =
            m_tiles.CountRows(width, height) * ((longestRow + kSparse - 1) / kSparse);
        m_lines.resize(std::min<std::size_t>(lineCount, looks) + 1);
        std::uint32_t* const lines = m_lines.data();
        unsigned char* const isTouched = touched.data();
        std::size_t count = 0;
        const auto listRow = [&](int y, int left, int right) {
            const int* const row = table + std::ptrdiff_t{y} * width;
            if (m_tiles.columns <= TableTiles::kNarrow && height - y > kTableRowsAhead) {
                // A narrow tile's rows end before the processor notices that they run on.
                PrefetchAll<kFirstLevelCache>(row + left + std::ptrdiff_t{kTableRowsAhead} * width,
                                              (right - left) * std::ptrdiff_t{sizeof(int)});
            }
            // Without a branch, which would be hard to foresee.
            std::size_t next = count;
            for (int x = left + y % kSparse; x < right; x += kSparse) {
                const std::uint32_t line =
                    std::min(static_cast<std::uint32_t>(row[x]) / kLineBytes, lineCount);
                lines[next] = line;
                next += 1U - isTouched[line];
                isTouched[line] = 1;
            }
            count = next;
            m_rowEnds.push_back(static_cast<std::uint32_t>(count));
        };
        m_tiles.ForEachRow(width, height, listRow);
        m_lines.resize(count);
        m_lines.shrink_to_fit();
    }

    /// Requests the lines ahead of a conversion that goes through the table in the same order.
    class Walk {
    public:
        Walk(const FirstTouchLines& lines, const unsigned char* src)
            : m_owner(lines),
              m_address(reinterpret_cast<std::uintptr_t>(src)),
              m_rowsAhead(static_cast<std::size_t>(
                  std::clamp(kEntriesAhead / lines.m_tiles.columns, kFewestRows, kMostRows))),
              m_next(lines.m_lines.data()) {}

        /// Before each row of each tile.
        void NextRow() {
            const std::uint32_t* const end = m_owner.EndOfRow(m_row + m_rowsAhead);
            for (; m_next < end; ++m_next) {
                // The line's middle: frames need not stand at a line's start.
                const std::size_t offset = std::size_t{*m_next} * kLineBytes + kLineBytes / 2;
                // NOLINTNEXTLINE(performance-no-int-to-ptr)
                Prefetch<kSecondLevelCache>(reinterpret_cast<const void*>(m_address + offset));
            }
            ++m_row;
        }

    private:
        // Far enough for memory to answer, and near enough for what was asked for to stay in a
        // second-level cache until then.
        static constexpr int kEntriesAhead = 8192;
        static constexpr int kFewestRows = 4;
        static constexpr int kMostRows = 16;

        const FirstTouchLines& m_owner;
        std::uintptr_t m_address;  // a line's middle may lie beyond the frame's end
        std::size_t m_rowsAhead;
        const std::uint32_t* m_next;
        std::size_t m_row = 0;
    };

private:
    static constexpr int kTableRowsAhead = 4;

    const std::uint32_t* EndOfRow(std::size_t row) const {
        const std::uint32_t* const lines = m_lines.data();
        return row < m_rowEnds.size() ? lines + m_rowEnds[row] : lines + m_lines.size();
    }

    TableTiles m_tiles{1, 1};
    std::vector<std::uint32_t> m_lines;
    std::vector<std::uint32_t> m_rowEnds;
};

#endif

#ifndef KIVFISHEYE_TABLE_TILES_H
#define KIVFISHEYE_TABLE_TILES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// The order in which a table's entries are gone through: tiles of a few rows and a limited width,
/// one beside the other, and the rows of each from the top. A ring crosses thousands of source
/// rows; within a tile it crosses few enough for their cache lines to stay near until the tile's
/// next row needs them again.
struct TableTiles {
    static constexpr int kNarrow = 256;

    int columns;
    int rows;

    /// What keeps an output frame's rows in their order from first to last. Only rows wider than
    /// any picture are taken in parts, whose bytes an int then counts.
    static TableTiles WholeRows(int width) { return {std::min(width, 1 << 20), 1}; }
    /// Small panoramas fare best with long rows. Of large ones a row crosses more cache lines and
    /// more memory pages than the processor keeps at hand until the next, so their tiles are
    /// narrow. Both are measured.
    static TableTiles ForCaches(int width, int height) {
        constexpr std::int64_t kLargeTable = 1 << 22;
        return std::int64_t{width} * height > kLargeTable ? TableTiles{kNarrow, 128}
                                                          : TableTiles{2048, 32};
    }

    /// How often `ForEachRow` visits.
    std::size_t CountRows(int tableWidth, int tableHeight) const {
        const int tilesBeside = (tableWidth - 1) / columns + 1;
        return static_cast<std::size_t>(tilesBeside) * static_cast<std::size_t>(tableHeight);
    }

    /// Calls `visit(y, left, right)` for each row of each tile of a table, with its columns from
    /// `left` up to but not including `right`.
    template <class Visit>
    void ForEachRow(int tableWidth, int tableHeight, Visit&& visit) const {
        for (int top = 0; top < tableHeight; top += rows) {
            const int bottom = std::min(tableHeight - top, rows) + top;
            for (int left = 0; left < tableWidth; left += columns) {
                const int right = std::min(tableWidth - left, columns) + left;
                for (int y = top; y < bottom; ++y) {
                    visit(y, left, right);
                }
                if (right == tableWidth) {
                    break;
                }
            }
            if (bottom == tableHeight) {
                break;
            }
        }
    }
};

#endif

#ifndef KIVFISHEYE_TABLE_CONVERSION_H
#define KIVFISHEYE_TABLE_CONVERSION_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "FrameLimits.h"
#include "Prefetch.h"
#include "TableTiles.h"

/// The entry of a panorama pixel that has no source pixel; it comes out as zero bytes.
constexpr int OutOfFrame = -1;

/// A table of source byte offsets, one for each pixel of an output frame, and that frame's sizes.
struct TableView {
    const int* entries;
    int width;
    int height;
    int dstStride;

    const int* Row(int y) const { return entries + std::ptrdiff_t{y} * width; }
};

/// Consecutive entries of a table row that become consecutive pixels of an output row: of the same
/// row, or of the one half the rows away.
struct TableRun {
    int tableColumn;
    int dstColumn;
    int length;
    bool otherHalf = false;
};

/// Goes through a table and has the rows of an output frame made of it.
template <int bytesPerPixel>
class TableConversion {
public:
    TableConversion(const TableView& table, unsigned char* dst) : m_table(table), m_dst(dst) {}

    /// Makes the first `rows` output rows, each of the same runs. Bytes between the last pixel of a
    /// row and its stride are left as they are. The table is gone through in `tiles`. Before each
    /// of their rows `beforeRow()` is called, which may ask the memory for what will be needed, and
    /// `makePixels(entries, count, dst)` makes consecutive pixels of consecutive entries.
    template <class Runs, class BeforeRow, class MakePixels>
    void MakeRows(int rows, const Runs& runs, const TableTiles& tiles, BeforeRow&& beforeRow,
                  MakePixels&& makePixels) const {
        // Rows that overlap must be written in their order. Others are written in the table's.
        const bool overlap = m_table.dstStride < std::int64_t{m_table.width} * bytesPerPixel;
        const TableTiles order = overlap ? TableTiles::WholeRows(m_table.width) : tiles;
        const bool isNarrow = order.columns <= TableTiles::kNarrow && order.columns < m_table.width;
        order.ForEachRow(m_table.width, rows, [&](int y, int left, int right) {
            beforeRow();
            for (const TableRun& run : runs) {
                const int partner = run.otherHalf ? RowInOtherHalf(y, rows / 2) : y;
                const Piece piece =
                    PieceOf(run, overlap ? partner : y, overlap ? y : partner, left, right);
                if (piece.count == 0) {
                    continue;
                }
                if (isNarrow) {
                    AskForNextRows(piece);
                }
                makePixels(piece.entries, piece.count, piece.dst);
            }
        });
    }

private:
    static int RowInOtherHalf(int y, int half) { return y < half ? y + half : y - half; }

    /// Entries of one row, and where their pixels go.
    struct Piece {
        const int* entries;
        int count;
        unsigned char* dst;
        int rowsBelow;  // in the table and in the output
    };

    /// The part of a run between the table's columns `left` and `right`, as far as the output has
    /// room.
    Piece PieceOf(const TableRun& run, int tableRow, int dstRow, int left, int right) const {
        const int first = std::max(run.tableColumn, left);
        const int end = std::min(run.tableColumn + run.length, right);
        if (first >= end) {
            return {};
        }
        const int dstColumn = run.dstColumn + (first - run.tableColumn);
        const int room = PixelsInsideFrame(m_table.width, m_table.height, m_table.dstStride, dstRow,
                                           bytesPerPixel);
        if (room <= dstColumn) {
            return {};
        }
        return {m_table.Row(tableRow) + first, std::min(end - first, room - dstColumn),
                m_dst + std::ptrdiff_t{dstRow} * m_table.dstStride +
                    std::ptrdiff_t{dstColumn} * bytesPerPixel,
                m_table.height - 1 - std::max(tableRow, dstRow)};
    }

    /// Asks the memory for what stands below a piece in the table and in the output. The rows of a
    /// narrow tile end before the processor notices by itself that both run on.
    void AskForNextRows(const Piece& piece) const {
        constexpr int kRowsAhead = 2;
        if (piece.rowsBelow < kRowsAhead) {
            return;
        }
        const std::ptrdiff_t count = piece.count;
        PrefetchAll<kFirstLevelCache>(piece.entries + std::ptrdiff_t{kRowsAhead} * m_table.width,
                                      count * std::ptrdiff_t{sizeof(int)});
        PrefetchAll<kSecondLevelCache, true>(
            piece.dst + std::ptrdiff_t{kRowsAhead} * m_table.dstStride, count * bytesPerPixel);
    }

    TableView m_table;
    unsigned char* m_dst;
};

/// Makes pixels of entries. `outOfFrame` is the entry that comes out as zero bytes. `GroupPixel`
/// says how the pixels of a whole group are written, and the last few of a row are `Pixel`.
template <class Pixel, int outOfFrame, class GroupPixel = Pixel>
class TablePixels {
public:
    static void Make(const int* entries, int count, const unsigned char* src, unsigned char* dst) {
        constexpr int kWritten = kGroup + (GroupPixel::kSpills ? 1 : 0);
        int x = 0;
        for (; count - x >= kWritten; x += kGroup) {
            MakeGroup(entries + x, src, dst + std::ptrdiff_t{x} * Pixel::kBytes,
                      std::make_integer_sequence<int, kGroup>());
        }
        for (; x < count; ++x) {
            MakeOne<Pixel>(entries[x], src, dst + std::ptrdiff_t{x} * Pixel::kBytes);
        }
    }

private:
    static constexpr int kGroup = 8;

    /// Unrolled by hand: the compiler keeps a loop here, which costs a sixth more with warm caches.
    template <int... lanes>
    static void MakeGroup(const int* entries, const unsigned char* src, unsigned char* dst,
                          std::integer_sequence<int, lanes...>) {
        (MakeOne<GroupPixel>(entries[lanes], src, dst + lanes * Pixel::kBytes), ...);
    }

    template <class AnyPixel>
    static void MakeOne(int entry, const unsigned char* src, unsigned char* dst) {
        if (entry == outOfFrame) {
            AnyPixel::Clear(dst);
        } else {
            AnyPixel::Copy(src + entry, dst);
        }
    }
};

#endif

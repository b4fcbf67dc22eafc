#ifndef KIVFISHEYE_PANORAMA_TABLE_H
#define KIVFISHEYE_PANORAMA_TABLE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "FirstTouchLines.h"
#include "FrameLimits.h"
#include "MemoryUtils.h"
#include "Pixel.h"
#include "TableTiles.h"
#include "TruncateToInt.h"

/// The entry of a panorama pixel that has no source pixel; it comes out as zero bytes.
constexpr int OutOfFrame = -1;

/// Consecutive entries of a table row that become consecutive pixels of an output row.
struct TableRun {
    int tableColumn;
    int dstColumn;
    int length;
};

/// The mapping of a panorama frozen into byte offsets, and the conversion of frames by it.
///
/// The table has `dstWidth` entries for each of `dstHeight` rows. It holds for every frame of the
/// sizes it was built for and for one pixel size. Angles are no part of it: a panorama turns by
/// whole columns.
struct PanoramaTable {
    int srcWidth = 0;
    int srcHeight = 0;
    int srcStride = 0;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    int bitsPerPixel = 0;
    CAlignedBufferT<int, 32> table;
    FirstTouchLines lines;

    /// Stores the sizes and has `build` fill a new table. When memory runs out, or the frames are
    /// larger than a table can address, the table is left empty and `std::bad_alloc` goes on.
    template <class Build>
    void Rebuild(int newSrcWidth, int newSrcHeight, int newSrcStride, int newDstWidth,
                 int newDstHeight, int newDstStride, int newBitsPerPixel, Build&& build) {
        srcWidth = newSrcWidth;
        srcHeight = newSrcHeight;
        srcStride = newSrcStride;
        dstWidth = newDstWidth;
        dstHeight = newDstHeight;
        dstStride = newDstStride;
        bitsPerPixel = newBitsPerPixel;
        table.Reset();
        lines.Clear();
        if (dstWidth == 0 || dstHeight == 0) {
            return;
        }
        try {
            const int bytesPerPixel = bitsPerPixel == 24 ? 3 : 4;
            const bool hasSource = !IsEmptyFrame(srcWidth, srcHeight);
            if (!IsAddressableTable(dstWidth, dstHeight) ||
                (hasSource &&
                 !IsAddressableSource(srcWidth, srcHeight, srcStride, bytesPerPixel))) {
                throw std::bad_alloc();
            }
            table.Allocate(static_cast<unsigned long long>(dstWidth) *
                           static_cast<unsigned long long>(dstHeight));
            build(table);
            lines.Build<OutOfFrame>(table.data(), dstWidth, dstHeight,
                                    hasSource ? std::int64_t{srcHeight} * srcStride : 0);
        } catch (...) {
            table.Reset();
            lines.Clear();
            throw;
        }
    }

    /// Converts one frame as the table has it.
    template <unsigned long bits>
    void Convert(const unsigned char* src, unsigned char* dst) const {
        ConvertRuns<PixelT<bits>>(src, dst, std::array{TableRun{0, 0, dstWidth}});
    }

    /// Converts one frame turned by `pan` degrees, which moves the picture to the left. A negative
    /// pan does not turn; NaN and infinity write nothing.
    template <unsigned long bits>
    void ConvertTurned(float pan, const unsigned char* src, unsigned char* dst) const {
        constexpr float kSmallestPan = 1.1920929e-07F;
        if (kSmallestPan > pan) {
            Convert<bits>(src, dst);
            return;
        }
        const float turn = std::fmod(pan, 360.0F);
        if (std::isnan(turn)) {
            return;
        }
        const int shift =
            std::min(TruncateToInt(turn * static_cast<float>(dstWidth) / 360.0F), dstWidth);
        ConvertRuns<PixelT<bits>>(
            src, dst,
            std::array{TableRun{shift, 0, dstWidth - shift}, TableRun{0, dstWidth - shift, shift}});
    }

private:
    /// Makes every output row of the same runs of its table row. Bytes between the last pixel of a
    /// row and its stride are left as they are.
    template <class Pixel, class Runs>
    void ConvertRuns(const unsigned char* src, unsigned char* dst, const Runs& runs) const {
        // The offsets of smaller pixels would lead past the end of the source.
        const bool isForSmallerPixels = bitsPerPixel == 24 && Pixel::kBytes > 3;
        if (table.count() == 0 || isForSmallerPixels) {
            return;
        }
        // Rows that overlap must be written in their order.
        const bool overlap = dstStride < std::int64_t{dstWidth} * Pixel::kBytes;
        const TableTiles tiles =
            overlap ? TableTiles::WholeRows(dstWidth) : TableTiles::ForCaches(dstWidth);
        FirstTouchLines::Walk ahead(lines, src);
        tiles.ForEachRow(dstWidth, dstHeight, [&](int y, int left, int right) {
            ahead.NextRow();
            const int* const entries = table.data() + std::ptrdiff_t{y} * dstWidth;
            unsigned char* const row = dst + std::ptrdiff_t{y} * dstStride;
            const int room = PixelsInsideFrame(dstWidth, dstHeight, dstStride, y, Pixel::kBytes);
            for (const TableRun& run : runs) {
                const int first = std::max(run.tableColumn, left);
                const int end = std::min(run.tableColumn + run.length, right);
                const int dstColumn = run.dstColumn + first - run.tableColumn;
                ConvertEntries<Pixel>(entries + first, std::min(end - first, room - dstColumn), src,
                                      row + std::ptrdiff_t{dstColumn} * Pixel::kBytes);
            }
        });
    }

    template <class Pixel>
    static void ConvertEntries(const int* entries, int count, const unsigned char* src,
                               unsigned char* dst) {
        constexpr int kGroup = 8;
        int x = 0;
        for (; x + kGroup <= count; x += kGroup) {
            ConvertGroup<Pixel>(entries + x, src, dst + std::ptrdiff_t{x} * Pixel::kBytes,
                                std::make_integer_sequence<int, kGroup>());
        }
        for (; x < count; ++x) {
            ConvertEntry<Pixel>(entries[x], src, dst + std::ptrdiff_t{x} * Pixel::kBytes);
        }
    }

    /// Unrolled by hand: the compiler keeps a loop here, which costs a sixth more with warm caches.
    template <class Pixel, int... lanes>
    static void ConvertGroup(const int* entries, const unsigned char* src, unsigned char* dst,
                             std::integer_sequence<int, lanes...>) {
        (ConvertEntry<Pixel>(entries[lanes], src, dst + lanes * Pixel::kBytes), ...);
    }

    template <class Pixel>
    static void ConvertEntry(int entry, const unsigned char* src, unsigned char* dst) {
        if (entry == OutOfFrame) {
            Pixel::Clear(dst);
        } else {
            Pixel::Copy(src + entry, dst);
        }
    }
};

#endif

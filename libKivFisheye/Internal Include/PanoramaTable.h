#ifndef KIVFISHEYE_PANORAMA_TABLE_H
#define KIVFISHEYE_PANORAMA_TABLE_H

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>

#include "FirstTouchLines.h"
#include "FrameLimits.h"
#include "MemoryUtils.h"
#include "PanoramaJob.h"
#include "Pixel.h"
#include "TableConversion.h"
#include "TruncateToInt.h"

/// The mapping of a panorama frozen into byte offsets, and the conversion of frames by it.
///
/// The table has `dstWidth` entries for each of `dstHeight` rows. It holds for every frame of the
/// sizes it was built for and for one pixel size. Angles are no part of it: a panorama turns by
/// whole columns.
struct PanoramaTable : PanoramaSizes {
    CAlignedBufferT<int, 32> table;
    FirstTouchLines lines;
    /// Whether four bytes may be read at every entry: no entry is that of the frame's last pixel,
    /// when pixels have three.
    bool hasWords = false;

    /// Stores the sizes and has `build` fill a new table. When memory runs out, or the frames are
    /// larger than a table can address, the table is left empty and `std::bad_alloc` goes on.
    template <class Build>
    void Rebuild(const PanoramaSizes& sizes, Build&& build) {
        static_cast<PanoramaSizes&>(*this) = sizes;
        table.Reset();
        lines.Clear();
        if (dstWidth == 0 || dstHeight == 0) {
            return;
        }
        try {
            const int bytesPerPixel = bitsPerPixel == 24 ? 3 : 4;
            if (!IsAddressableTable(dstWidth, dstHeight) ||
                (HasSource() &&
                 !IsAddressableSource(srcWidth, srcHeight, srcStride, bytesPerPixel))) {
                throw std::bad_alloc();
            }
            table.Allocate(static_cast<unsigned long long>(dstWidth) *
                           static_cast<unsigned long long>(dstHeight));
            PreferHugePages(table.data(), table.count() * sizeof(int));
            build(table);
            const std::int64_t srcBytes = HasSource() ? std::int64_t{srcHeight} * srcStride : 0;
            hasWords = bytesPerPixel == 4 || !HasEntry(OffsetOfLastPixel());
            lines.Build<OutOfFrame>(table.data(), dstWidth, dstHeight, srcBytes);
        } catch (...) {
            table.Reset();
            lines.Clear();
            throw;
        }
    }

    /// Whether the table's offsets stay inside the source for pixels of this size. Those of smaller
    /// pixels would lead past its end.
    bool Serves(int bytesPerPixel) const {
        return table.count() != 0 && !(bitsPerPixel == 24 && bytesPerPixel > 3);
    }

    /// Makes the first `rows` output rows of `runs`, unless the table does not serve pixels of this
    /// size. `makePixels` is that of `TableConversion`.
    template <int bytesPerPixel, class Runs, class MakePixels>
    void MakeRowsBy(const unsigned char* src, unsigned char* dst, int rows, const Runs& runs,
                    MakePixels&& makePixels) const {
        if (Serves(bytesPerPixel)) {
            FirstTouchLines::Walk ahead(lines, src);
            TableConversion<bytesPerPixel>({table.data(), dstWidth, dstHeight, dstStride}, dst)
                .MakeRows(
                    rows, runs, lines.Tiles(), [&ahead] { ahead.NextRow(); }, makePixels);
        }
    }

    /// Converts one frame as the table has it.
    template <unsigned long bits>
    void Convert(const unsigned char* src, unsigned char* dst) const {
        MakeRows<PixelT<bits>>(src, dst, dstHeight, std::array{TableRun{0, 0, dstWidth}});
    }

    /// Converts one frame into a full panorama turned by `pan` degrees, which moves the picture to
    /// the left. A negative pan does not turn; NaN and plus infinity write nothing.
    template <unsigned long bits>
    void ConvertTurned(float pan, const unsigned char* src, unsigned char* dst) const {
        ConvertAt<bits>(pan, src, dst, [&](float turn) {
            const int shift =
                std::min(TruncateToInt(turn * static_cast<float>(dstWidth) / 360.0F), dstWidth);
            const int rest = dstWidth - shift;
            MakeRows<PixelT<bits>>(src, dst, dstHeight,
                                   std::array{TableRun{shift, 0, rest}, TableRun{0, rest, shift}});
        });
    }

    /// Converts one frame into a dual panorama turned by `pan` degrees. The two halves are one ring
    /// laid out as two rows: it moves to the right, and what leaves one half enters the other. An
    /// odd last row belongs to neither and is not written. Other pans as for a full panorama.
    template <unsigned long bits>
    void ConvertDualTurned(float pan, const unsigned char* src, unsigned char* dst) const {
        ConvertAt<bits>(pan, src, dst, [&](float turn) {
            const float scaled = static_cast<float>(dstWidth) * std::fmod(turn, 180.0F);
            const int shift = std::min(TruncateToInt(double{scaled} / 180.0), dstWidth);
            const int rest = dstWidth - shift;
            // Half a turn exactly shifts by nothing and leaves the halves in place: no turn at all.
            // Clients rely on it.
            const bool exchanged = turn > 180.0F;
            MakeRows<PixelT<bits>>(src, dst, dstHeight / 2 * 2,
                                   std::array{TableRun{rest, 0, shift, !exchanged},
                                              TableRun{0, shift, rest, exchanged}});
        });
    }

private:
    std::int64_t OffsetOfLastPixel() const {
        return (std::int64_t{srcHeight} - 1) * srcStride + (std::int64_t{srcWidth} - 1) * 3;
    }

    bool HasEntry(std::int64_t offset) const {
        const int* const end = table.data() + table.count();
        return std::find(table.data(), end, static_cast<int>(offset)) != end;
    }

    /// Calls `convert` with the pan from 0 up to 360 when there is something to turn by.
    template <unsigned long bits, class ConvertTurnedBy>
    void ConvertAt(float pan, const unsigned char* src, unsigned char* dst,
                   ConvertTurnedBy&& convert) const {
        constexpr float kSmallestPan = 1.1920929e-07F;
        if (kSmallestPan > pan) {
            Convert<bits>(src, dst);
            return;
        }
        const float turn = std::fmod(pan, 360.0F);
        if (!std::isnan(turn)) {
            convert(turn);
        }
    }

    template <class Pixel, class Runs>
    void MakeRows(const unsigned char* src, unsigned char* dst, int rows, const Runs& runs) const {
        if constexpr (Pixel::kBytes == 3) {
            if (hasWords) {
                MakeRowsBy<3>(src, dst, rows, runs,
                              [src](const int* entries, int count, auto* pixels) {
                                  TablePixels<Pixel, OutOfFrame, SpillingPixel24>::Make(
                                      entries, count, src, pixels);
                              });
                return;
            }
        }
        MakeRowsBy<Pixel::kBytes>(
            src, dst, rows, runs, [src](const int* entries, int count, auto* pixels) {
                TablePixels<Pixel, OutOfFrame>::Make(entries, count, src, pixels);
            });
    }
};

#endif

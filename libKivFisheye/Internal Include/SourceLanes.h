#ifndef KIVFISHEYE_SOURCE_LANES_H
#define KIVFISHEYE_SOURCE_LANES_H

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "Prefetch.h"
#include "TargetRegion.h"
#include "sse/sse4Ints.h"

KIVFISHEYE_TARGET_BEGIN("sse4.1")

/// The byte offsets of source pixels that lie anywhere: integer work in four lanes. All offsets of
/// the frame fit in 32 bits.
template <class Pixel>
class SourceOffsets {
public:
    [[gnu::always_inline]] SourceOffsets(int width, int height, int stride)
        : m_stride(stride),
          m_lastColumn(width - 1),
          m_lastRow(height - 1),
          m_mayRoundPastEnd(std::max(width, height) >= kSmallestInexactSide) {}

    /// Replaces each live lane's column in `x` by the offset of its pixel in the frame, and all
    /// others by 0.
    template <int lanes>
    [[gnu::always_inline]] void FormOffsets(const int* live, int* x, const int* y) const {
        using sse::sse4Ints;
        for (int lane = 0; lane < lanes; lane += sse4Ints::kLanes) {
            const sse4Ints offsets = OffsetsOf(x + lane, y + lane);
            (offsets & sse4Ints::Load(live + lane)).Store(x + lane);
        }
    }

    /// Stores the offsets of the live lanes' pixels as entries of a table, and `outOfFrame` for the
    /// others.
    template <int outOfFrame, int lanes>
    [[gnu::always_inline]] void StoreEntries(const int* live, const int* x, const int* y,
                                             int* entries) const {
        using sse::sse4Ints;
        for (int lane = 0; lane < lanes; lane += sse4Ints::kLanes) {
            Select(sse4Ints::Load(live + lane), OffsetsOf(x + lane, y + lane), sse4Ints(outOfFrame))
                .Store(entries + lane);
        }
    }

private:
    // From here on adding one half to a position may round it up past the last pixel.
    static constexpr int kSmallestInexactSide = 1 << 23;

    [[gnu::always_inline]] sse::sse4Ints OffsetsOf(const int* x, const int* y) const {
        sse::sse4Ints columns = sse::sse4Ints::Load(x);
        sse::sse4Ints rows = sse::sse4Ints::Load(y);
        if (m_mayRoundPastEnd) {
            columns = Min(columns, m_lastColumn);
            rows = Min(rows, m_lastRow);
        }
        return MultiplyLow(rows, m_stride) + BytesOf(columns);
    }

    [[gnu::always_inline]] static sse::sse4Ints BytesOf(sse::sse4Ints columns) {
        if constexpr (Pixel::kBytes == 4) {
            return columns.template ShiftedLeft<2>();
        } else {
            return MultiplyLow(columns, sse::sse4Ints(Pixel::kBytes));
        }
    }

    sse::sse4Ints m_stride;
    sse::sse4Ints m_lastColumn;
    sse::sse4Ints m_lastRow;
    bool m_mayRoundPastEnd;
};

/// The way of such pixels to the output: one copy for each lane.
template <class Pixel>
class SourceLanes : public SourceOffsets<Pixel> {
public:
    [[gnu::always_inline]] SourceLanes(const unsigned char* source, int width, int height,
                                       int stride)
        : SourceOffsets<Pixel>(width, height, stride),
          m_source(source),
          m_lastPixel((height - 1) * stride + (width - 1) * Pixel::kBytes) {}

    /// Asks the memory for the pixels of every `step`th lane, which are used a while later: the
    /// second-level cache gets them, which holds those of many rows.
    template <int lanes, int step>
    [[gnu::always_inline]] void Prefetch(const int* offsets, int firstLane) const {
        for (int lane = 0; lane < lanes; lane += step) {
            __builtin_prefetch(m_source + offsets[firstLane + lane], 0, kSecondLevelCache);
        }
    }

    /// Copies the pixels of the lanes whose bit is set in `live`, among the first `count`.
    template <int lanes>
    [[gnu::always_inline]] void CopyLive(int live, const int* offsets, unsigned char* target,
                                         int count) const {
        for (int lane = 0; lane < lanes && lane < count; ++lane) {
            if ((live >> lane & 1) != 0) {
                CopyPixel(offsets[lane], target, lane);
            }
        }
    }

    /// Copies the pixels of all lanes. Pixels of three bytes go as words of four, whose last byte
    /// the next pixel replaces; but the frame's last pixel has no byte after it, and the last
    /// lane's word would be a byte too long.
    template <int lanes>
    [[gnu::always_inline]] void CopyAll(const int* offsets, unsigned char* target) const {
        if (Pixel::kBytes == 3 && !HasLastPixel<lanes>(offsets)) {
            for (int lane = 0; lane < lanes - 1; ++lane) {
                std::memcpy(target + std::ptrdiff_t{lane} * Pixel::kBytes, m_source + offsets[lane],
                            4);
            }
            CopyPixel(offsets[lanes - 1], target, lanes - 1);
            return;
        }
        for (int lane = 0; lane < lanes; ++lane) {
            CopyPixel(offsets[lane], target, lane);
        }
    }

private:
    template <int lanes>
    [[gnu::always_inline]] bool HasLastPixel(const int* offsets) const {
        int bits = 0;
        for (int lane = 0; lane < lanes; lane += sse::sse4Ints::kLanes) {
            bits |= (sse::sse4Ints::Load(offsets + lane) == m_lastPixel).Bits();
        }
        return bits != 0;
    }

    [[gnu::always_inline]] void CopyPixel(int offset, unsigned char* target, int lane) const {
        Pixel::Copy(m_source + offset, target + std::ptrdiff_t{lane} * Pixel::kBytes);
    }

    const unsigned char* m_source;
    sse::sse4Ints m_lastPixel;
};

KIVFISHEYE_TARGET_END

#endif

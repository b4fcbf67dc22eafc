#ifndef KIVFISHEYE_SOURCE_PIXELS_H
#define KIVFISHEYE_SOURCE_PIXELS_H

#include <algorithm>
#include <cstddef>
#include <memory>

#include "TruncateToInt.h"

/// From a point of the source frame to the byte offset of the pixel that it meets, or else the next
/// one towards the frame's top left, in scalar arithmetic. The row offsets are a table, which
/// throws `std::bad_alloc` when memory runs out.
template <int bytesPerPixel>
class SourcePixels {
public:
    SourcePixels(int width, int height, int stride)
        : m_lastColumn(width - 1),
          m_lastRow(height - 1),
          m_scaleX(static_cast<float>(m_lastColumn)),
          m_scaleY(static_cast<float>(m_lastRow)),
          m_rowOffsets(new int[static_cast<std::size_t>(height)]) {
        int* const rowOffsets = m_rowOffsets.get();
        for (int row = 0; row < height; ++row) {
            rowOffsets[row] = row * stride;
        }
    }

    /// For |u| and |v| of at most 0.5: fractions of the frame from its centre, v upward.
    int OffsetAt(float u, float v) const {
        // A side beyond 2^24 pixels may round up to a scale that leads past its last pixel.
        const int column = std::min(TruncateToInt(m_scaleX * (u + 0.5F)), m_lastColumn);
        const int row = std::min(TruncateToInt(m_scaleY * (0.5F - v)), m_lastRow);
        return m_rowOffsets.get()[row] + column * bytesPerPixel;
    }

private:
    int m_lastColumn;
    int m_lastRow;
    float m_scaleX;
    float m_scaleY;
    std::unique_ptr<int[]> m_rowOffsets;
};

#endif

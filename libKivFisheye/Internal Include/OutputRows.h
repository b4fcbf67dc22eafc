#ifndef KIVFISHEYE_OUTPUT_ROWS_H
#define KIVFISHEYE_OUTPUT_ROWS_H

#include <cstddef>
#include <cstring>

/// Clears a whole row of the output, padding included.
inline void ClearRow(unsigned char* row, int dstStride) {
    if (dstStride > 0) {
        std::memset(row, 0, static_cast<std::size_t>(dstStride));
    }
}

/// Clears the first `rows` rows.
inline void ClearRows(unsigned char* dst, int rows, int dstStride) {
    if (dstStride <= 0) {
        return;
    }
    for (int y = 0; y < rows; ++y) {
        ClearRow(dst + std::ptrdiff_t{y} * dstStride, dstStride);
    }
}

#endif

#ifndef KIVFISHEYE_TESTS_HAND_MADE_TABLE_H
#define KIVFISHEYE_TESTS_HAND_MADE_TABLE_H

#include <algorithm>
#include <vector>

#include "PanoramaTable.h"
#include "support/RingModel.h"

/// A panorama table between the ring's frames that holds the given entries.
struct HandMadeTable : PanoramaTable {
    HandMadeTable(const std::vector<int>& entries, const Ring& ring, int bytesPerPixel) {
        Rebuild({ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
                 ring.dstStride, bytesPerPixel * 8},
                [&](CAlignedBufferT<int, 32>& storage) {
                    std::copy(entries.begin(), entries.end(), storage.data());
                });
    }
};

#endif

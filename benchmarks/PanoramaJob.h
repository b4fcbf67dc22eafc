#ifndef KIVFISHEYE_PANORAMA_JOB_H
#define KIVFISHEYE_PANORAMA_JOB_H

#include <cstddef>
#include <vector>

#include "MemoryUtils.h"
#include "UpwardFisheyeAlgo.h"

/// One source frame, its full panorama, and the table between them.
struct PanoramaJob {
    PanoramaJob(int side, int bits);

    void InitConverter() {
        converter.Init(side, side, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel, 0.5F,
                       0.5F, 0.0F);
    }

    int side;
    int bitsPerPixel;
    int bytesPerPixel;
    int srcStride;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    std::vector<unsigned char> src;
    std::vector<unsigned char> dst;
    std::vector<unsigned char> expected;  // what every contestant must make
    CAlignedBufferT<int, 32> table;
    UpwardFisheyeAlgoNS::CPanoramaConverter converter;

    std::size_t Pixels() const {
        return static_cast<std::size_t>(dstWidth) * static_cast<std::size_t>(dstHeight);
    }
};

#endif

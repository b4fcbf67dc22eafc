#ifndef GPU_PANORAMA_PICTURE_H
#define GPU_PANORAMA_PICTURE_H

#include <vector>

/// Rows from the top, end to end; a pixel is its red, green and blue byte.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> pixels;
};

#endif

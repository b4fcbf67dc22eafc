#ifndef EXAMPLES_PICTURE_H
#define EXAMPLES_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// Rows from the top, end to end; a pixel is its red, green, blue and opacity byte.
struct Picture {
    static constexpr std::uint32_t kBytesPerPixel = 4;

    Picture() = default;
    Picture(std::uint32_t newWidth, std::uint32_t newHeight)
        : width(newWidth),
          height(newHeight),
          pixels(std::size_t{newWidth} * newHeight * kBytesPerPixel) {}

    unsigned char* At(std::uint32_t x, std::uint32_t y) {
        return pixels.data() + (std::size_t{y} * width + x) * kBytesPerPixel;
    }
    const unsigned char* At(std::uint32_t x, std::uint32_t y) const {
        return pixels.data() + (std::size_t{y} * width + x) * kBytesPerPixel;
    }

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<unsigned char> pixels;
};

#endif

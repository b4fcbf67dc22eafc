#include "support/CoordinateFrame.h"

#include <cstddef>
#include <cstdint>

namespace {

int BitsPerSide(int bytesPerPixel) {
    return bytesPerPixel * 4;
}

}  // namespace

std::vector<unsigned char> CoordinateFrame(int width, int height, int stride, int bytesPerPixel) {
    constexpr unsigned char kPadding = 0xFF;
    const std::size_t size =
        static_cast<std::size_t>(stride) * static_cast<std::size_t>(height - 1) +
        static_cast<std::size_t>(width * bytesPerPixel);
    std::vector<unsigned char> frame(size, kPadding);
    for (int row = 0; row < height; ++row) {
        std::size_t at = static_cast<std::size_t>(row) * static_cast<std::size_t>(stride);
        for (int column = 0; column < width; ++column) {
            std::uint32_t value = static_cast<std::uint32_t>(row + 1)
                                      << BitsPerSide(bytesPerPixel) |
                                  static_cast<std::uint32_t>(column + 1);
            for (int i = 0; i < bytesPerPixel; ++i, value >>= 8) {
                frame[at++] = static_cast<unsigned char>(value & 0xFF);
            }
        }
    }
    return frame;
}

std::optional<PixelPlace> PlaceIn(const unsigned char* pixel, int bytesPerPixel) {
    std::uint32_t value = 0;
    for (int i = bytesPerPixel; i > 0; --i) {
        value = value << 8 | pixel[i - 1];
    }
    if (value == 0) {
        return std::nullopt;
    }
    const std::uint32_t column = value & ((std::uint32_t{1} << BitsPerSide(bytesPerPixel)) - 1);
    const std::uint32_t row = value >> BitsPerSide(bytesPerPixel);
    return PixelPlace{static_cast<int>(column) - 1, static_cast<int>(row) - 1};
}

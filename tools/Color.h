#ifndef KIVFISHEYE_TOOLS_COLOR_H
#define KIVFISHEYE_TOOLS_COLOR_H

#include <cmath>
#include <cstdint>

namespace KivFisheyeTools {

/// A colour as pixels store it, with every channel from 0 to 1.
struct Color {
    double red;
    double green;
    double blue;
};

constexpr Color Scaled(const Color& color, double factor) {
    return {color.red * factor, color.green * factor, color.blue * factor};
}

/// `over` painted on `under`, with `opacity` from 0 to 1.
constexpr Color Blended(const Color& under, const Color& over, double opacity) {
    return {under.red + (over.red - under.red) * opacity,
            under.green + (over.green - under.green) * opacity,
            under.blue + (over.blue - under.blue) * opacity};
}

/// Read and write the red, green and blue byte of a pixel.
inline Color LoadColor(const std::uint8_t* pixel) {
    return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0};
}
inline void StoreColor(const Color& color, std::uint8_t* pixel) {
    pixel[0] = static_cast<std::uint8_t>(std::lround(color.red * 255.0));
    pixel[1] = static_cast<std::uint8_t>(std::lround(color.green * 255.0));
    pixel[2] = static_cast<std::uint8_t>(std::lround(color.blue * 255.0));
}

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_COLOR_H
#define KIVFISHEYE_TOOLS_COLOR_H

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

}  // namespace KivFisheyeTools

#endif

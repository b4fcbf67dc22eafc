#ifndef KIVFISHEYE_TOOLS_OUTLINE_DRAWING_H
#define KIVFISHEYE_TOOLS_OUTLINE_DRAWING_H

#include <cstdint>
#include <vector>

#include "Color.h"
#include "Picture.h"
#include "ViewOutlines.h"

namespace KivFisheyeTools {

/// A light line with a dark edge, which shows on any ground. Widths are pixels.
struct OutlineStyle {
    Color line;
    Color edge;
    double lineWidth;
    /// Of the line with its edges.
    double fullWidth;
};

/// The style of an outline in a frame of this size.
OutlineStyle StyleOf(OutlineRole role, std::uint32_t width, std::uint32_t height);

/// Where a point lies among the pixels; whole numbers are their centres.
struct PixelPlace {
    double column;
    double row;
};
PixelPlace PlaceOf(const Point& point, std::uint32_t width, std::uint32_t height);

/// Draws the outlines over the picture, the later ones on top, and all lines above all edges. What
/// lies beside the picture is left out.
void DrawOutlines(const std::vector<Outline>& outlines, Picture* picture);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_SOURCE_MAP_H
#define KIVFISHEYE_TOOLS_SOURCE_MAP_H

#include <optional>

#include "Numbers.h"
#include "Picture.h"

namespace KivFisheyeTools {

/// A place in a frame, in pixels from its top left corner. The first pixel's centre is at a half.
struct Place {
    double x;
    double y;
};

/// Gives every pixel its own number in place of a colour. A pixel has 4 bytes, and black is none.
void NumberPixels(Picture* picture);

/// Which pixel of the input every pixel of a view shows.
class SourceMap {
public:
    /// `view` was made of an input with numbered pixels, and must outlive the map.
    SourceMap(const Picture& view, const Size& input) : m_view(view), m_input(input) {}

    const Size& Input() const { return m_input; }
    Size Output() const { return {m_view.width, m_view.height}; }

    /// The number of the source pixel, counted by rows from 0, or nothing where the view is black.
    std::optional<std::uint32_t> NumberAt(std::uint32_t column, std::uint32_t row) const;

    /// The middle of the source pixel.
    std::optional<Place> PlaceAt(std::uint32_t column, std::uint32_t row) const;

private:
    const Picture& m_view;
    Size m_input;
};

}  // namespace KivFisheyeTools

#endif

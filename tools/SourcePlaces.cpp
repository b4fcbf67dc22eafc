#include "SourcePlaces.h"

namespace KivFisheyeTools {

namespace {

/// From one frame's side to another's. A lens spans the centres of the first and the last pixel.
double OnSide(double place, std::uint32_t from, std::uint32_t to) {
    return (place - 0.5) * (to - 1.0) / (from - 1.0) + 0.5;
}

}  // namespace

std::optional<Place> SourcePlaces::PlaceAt(std::uint32_t column, std::uint32_t row) const {
    const std::optional<Place> wide = m_wide.PlaceAt(column, row);
    const std::optional<Place> high = m_high.PlaceAt(column, row);
    if (!wide || !high) {
        return std::nullopt;
    }
    return Place{OnSide(wide->x, m_wide.Input().width, m_input.width),
                 OnSide(high->y, m_high.Input().height, m_input.height)};
}

}  // namespace KivFisheyeTools

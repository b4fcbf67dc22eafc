#include "SourceMap.h"

#include <cstring>

namespace KivFisheyeTools {

void NumberPixels(Picture* picture) {
    std::uint32_t number = 0;
    for (std::uint32_t row = 0; row < picture->height; ++row) {
        for (std::uint32_t column = 0; column < picture->width; ++column) {
            ++number;
            std::memcpy(picture->Row(row) + sizeof number * column, &number, sizeof number);
        }
    }
}

std::optional<std::uint32_t> SourceMap::NumberAt(std::uint32_t column, std::uint32_t row) const {
    std::uint32_t number = 0;
    std::memcpy(&number, m_view.Row(row) + sizeof number * column, sizeof number);
    return number == 0 ? std::nullopt : std::optional(number - 1);
}

std::optional<Place> SourceMap::PlaceAt(std::uint32_t column, std::uint32_t row) const {
    const std::optional<std::uint32_t> number = NumberAt(column, row);
    if (!number) {
        return std::nullopt;
    }
    const std::uint32_t sourceRow = *number / m_input.width;
    return Place{*number % m_input.width + 0.5, sourceRow + 0.5};
}

}  // namespace KivFisheyeTools

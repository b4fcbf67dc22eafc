#include "support/SampledPicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "support/CoordinateFrame.h"

namespace {

constexpr int kBytesPerPixel = 4;

std::optional<PixelPlace> PlaceAt(const ClientFrame& output, int column, int row) {
    return PlaceIn(output.bytes.data() + std::ptrdiff_t{row} * output.Stride() +
                       std::ptrdiff_t{column} * kBytesPerPixel,
                   kBytesPerPixel);
}

double DistanceBetween(const std::optional<PixelPlace>& a, const std::optional<PixelPlace>& b) {
    return a && b ? std::hypot(a->column - b->column, a->row - b->row) : 0.0;
}

}  // namespace

SampledPicture::SampledPicture(const ClientFrame& input, const ClientFrame& output, int firstRow,
                               int rows)
    : m_width(input.Width()),
      m_height(input.Height()),
      m_isShown(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height)) {
    for (int row = firstRow; row < firstRow + rows; ++row) {
        for (int column = 0; column < output.Width(); ++column) {
            const auto place = PlaceAt(output, column, row);
            if (!place) {
                continue;
            }
            const auto at = static_cast<std::size_t>(place->row * m_width + place->column);
            if (!m_isShown[at]) {
                m_isShown[at] = true;
                m_middles.push_back({place->column + 0.5, place->row + 0.5});
            }
            if (column > 0) {
                m_spacing =
                    std::max(m_spacing, DistanceBetween(place, PlaceAt(output, column - 1, row)));
            }
            if (row > firstRow) {
                m_spacing =
                    std::max(m_spacing, DistanceBetween(place, PlaceAt(output, column, row - 1)));
            }
        }
    }
}

double SampledPicture::Largest(const std::function<double(const Point&)>& measure) const {
    double largest = 0.0;
    for (const Point& middle : m_middles) {
        largest = std::max(largest, measure(middle));
    }
    return largest;
}

bool SampledPicture::HasWithin(double distance, const Point& point) const {
    const auto lowest = [distance](double at) {
        return static_cast<int>(std::floor(at - distance));
    };
    const auto highest = [distance](double at) {
        return static_cast<int>(std::ceil(at + distance));
    };
    for (int row = lowest(point.y); row <= highest(point.y); ++row) {
        for (int column = lowest(point.x); column <= highest(point.x); ++column) {
            if (Has(column, row) &&
                std::hypot(column + 0.5 - point.x, row + 0.5 - point.y) <= distance) {
                return true;
            }
        }
    }
    return false;
}

bool SampledPicture::Has(int column, int row) const {
    return column >= 0 && row >= 0 && column < m_width && row < m_height &&
           m_isShown[static_cast<std::size_t>(row * m_width + column)];
}

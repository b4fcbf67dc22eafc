#include "OutlineDrawing.h"

#include <algorithm>
#include <cmath>

namespace KivFisheyeTools {

namespace {

constexpr Color kWhite{1.0, 1.0, 1.0};
constexpr Color kYellow{1.0, 0.85, 0.1};
constexpr Color kCyan{0.3, 0.95, 1.0};
constexpr Color kNearBlack{0.06, 0.06, 0.08};

/// How much of every pixel a line covers, from 0 to 255.
class LineMask {
public:
    LineMask(const Picture& picture, double lineWidth)
        : m_width(picture.width),
          m_height(picture.height),
          m_reach(lineWidth / 2.0 + 0.5),
          m_coverage(std::size_t{m_width} * m_height) {}

    void AddClosedLine(const std::vector<Point>& points) {
        for (std::size_t i = 0; i < points.size(); ++i) {
            AddSegment(PlaceOf(points[i], m_width, m_height),
                       PlaceOf(points[(i + 1) % points.size()], m_width, m_height));
        }
    }

    void Paint(const Color& color, Picture* picture) const {
        for (std::uint32_t row = 0; row < m_height; ++row) {
            std::uint8_t* pixel = picture->Row(row);
            for (std::uint32_t column = 0; column < m_width; ++column) {
                const std::uint8_t coverage = m_coverage[IndexOf(column, row)];
                if (coverage != 0) {
                    StoreColor(Blended(LoadColor(pixel), color, coverage / 255.0), pixel);
                }
                pixel += picture->bytesPerPixel;
            }
        }
    }

private:
    struct Range {
        std::uint32_t first;
        std::uint32_t end;
    };

    std::size_t IndexOf(std::uint32_t column, std::uint32_t row) const {
        return std::size_t{m_width} * row + column;
    }

    /// The pixels along a side of the frame that a line between two places may touch.
    Range Touched(double from, double to, std::uint32_t size) const {
        const auto clamped = [size](double place) {
            return static_cast<std::uint32_t>(std::clamp(place, 0.0, 1.0 * size));
        };
        return {clamped(std::ceil(std::min(from, to) - m_reach)),
                clamped(std::floor(std::max(from, to) + m_reach) + 1.0)};
    }

    void AddSegment(const PixelPlace& from, const PixelPlace& to) {
        const Range rows = Touched(from.row, to.row, m_height);
        const Range columns = Touched(from.column, to.column, m_width);
        for (std::uint32_t row = rows.first; row < rows.end; ++row) {
            for (std::uint32_t column = columns.first; column < columns.end; ++column) {
                const double distance = DistanceTo(from, to, column, row);
                const double part = std::clamp(m_reach - distance, 0.0, 1.0);
                std::uint8_t& coverage = m_coverage[IndexOf(column, row)];
                coverage = std::max(coverage, static_cast<std::uint8_t>(std::lround(part * 255.0)));
            }
        }
    }

    static double DistanceTo(const PixelPlace& from, const PixelPlace& to, double column,
                             double row) {
        const double alongX = to.column - from.column;
        const double alongY = to.row - from.row;
        const double length = alongX * alongX + alongY * alongY;
        const double dot = (column - from.column) * alongX + (row - from.row) * alongY;
        const double part = length > 0.0 ? std::clamp(dot / length, 0.0, 1.0) : 0.0;
        return std::hypot(from.column + part * alongX - column, from.row + part * alongY - row);
    }

    std::uint32_t m_width;
    std::uint32_t m_height;
    double m_reach;
    std::vector<std::uint8_t> m_coverage;
};

void DrawLine(const Outline& outline, double lineWidth, const Color& color, Picture* picture) {
    LineMask mask(*picture, lineWidth);
    mask.AddClosedLine(outline.points);
    mask.Paint(color, picture);
}

Color LineColorOf(OutlineRole role) {
    switch (role) {
        case OutlineRole::View:
            return kYellow;
        case OutlineRole::LowerHalf:
            return kCyan;
        case OutlineRole::Lens:
            break;
    }
    return kWhite;
}

}  // namespace

OutlineStyle StyleOf(OutlineRole role, std::uint32_t width, std::uint32_t height) {
    const double lineWidth = std::max(1.5, std::min(width, height) / 200.0);
    return {LineColorOf(role), kNearBlack, lineWidth, 2.0 * lineWidth};
}

PixelPlace PlaceOf(const Point& point, std::uint32_t width, std::uint32_t height) {
    return {point.x * (width - 1.0), point.y * (height - 1.0)};
}

void DrawOutlines(const std::vector<Outline>& outlines, Picture* picture) {
    for (const Outline& outline : outlines) {
        const OutlineStyle style = StyleOf(outline.role, picture->width, picture->height);
        DrawLine(outline, style.fullWidth, style.edge, picture);
    }
    for (const Outline& outline : outlines) {
        const OutlineStyle style = StyleOf(outline.role, picture->width, picture->height);
        DrawLine(outline, style.lineWidth, style.line, picture);
    }
}

}  // namespace KivFisheyeTools

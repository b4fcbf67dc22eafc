#include "SourceUse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace KivFisheyeTools {

namespace {

/// Over how many output pixels a step is measured. A thirty-second of a view is so short that the
/// lens's circles are nearly straight and the density even: of 360 degrees it is 11, whose arc is
/// 1.0016 chords long. It is long enough to hide most of the arithmetic's roughness, but not all:
/// next to the lens's axis, where the arccosine in lanes errs most, spans of a virtual camera pass
/// over some source pixels, and come out denser than by geometry.
std::uint32_t SpanIn(std::uint32_t length) {
    return std::min(std::max(length / 32, 1U), length - 1);
}

class Steps {
public:
    void Add(double step) {
        m_least = std::min(m_least, step);
        m_most = std::max(m_most, step);
        m_sum += step;
        ++m_count;
    }

    std::optional<Range> All() const {
        return m_count == 0
                   ? std::nullopt
                   : std::optional(Range{m_least, m_sum / static_cast<double>(m_count), m_most});
    }

private:
    double m_least = std::numeric_limits<double>::infinity();
    double m_most = 0.0;
    double m_sum = 0.0;
    std::uint64_t m_count = 0;
};

/// Measures between pixels of one part that lie so many columns or rows apart, the other number
/// being 0. Without either there is nothing to measure.
std::optional<Range> StepsOf(const SourcePlaces& places, std::uint32_t parts, std::uint32_t across,
                             std::uint32_t down) {
    const Size output = places.Output();
    const std::uint32_t height = output.height / parts;
    Steps steps;
    const auto addRow = [&](std::uint32_t row) {
        for (std::uint32_t column = 0; column + across < output.width; ++column) {
            const auto from = places.PlaceAt(column, row);
            const auto to = places.PlaceAt(column + across, row + down);
            if (from && to) {
                steps.Add(std::hypot(to->x - from->x, to->y - from->y) / (across + down));
            }
        }
    };
    for (std::uint32_t part = 0; across + down > 0 && part < parts; ++part) {
        for (std::uint32_t row = 0; row + down < height; ++row) {
            addRow(part * height + row);
        }
    }
    return steps.All();
}

/// Counts what is shown, and marks it.
std::vector<bool> MarkShown(const SourceMap& map, SourceUse* use) {
    std::vector<bool> marks(std::size_t{map.Input().width} * map.Input().height);
    for (std::uint32_t row = 0; row < map.Output().height; ++row) {
        for (std::uint32_t column = 0; column < map.Output().width; ++column) {
            if (const auto number = map.NumberAt(column, row)) {
                ++use->shown;
                use->differentShown += marks[*number] ? 0U : 1U;
                marks[*number] = true;
            }
        }
    }
    return marks;
}

void CountLens(const Lens& lens, const std::vector<bool>& marks, SourceUse* use) {
    // Pixels of the rim may come out a little beside it.
    constexpr double kRim = (kPi / 2.0) * (1.0 + 1e-6);
    std::size_t number = 0;
    for (std::uint32_t row = 0; row < lens.height; ++row) {
        for (std::uint32_t column = 0; column < lens.width; ++column, ++number) {
            if (lens.PointAt(column, row).OffAxis() <= kRim) {
                ++use->lensPixels;
                use->lensShown += marks[number] ? 1U : 0U;
            }
        }
    }
}

}  // namespace

SourceUse MeasureUse(const SourceMap& map, const SourcePlaces& places, const Lens& lens,
                     std::uint32_t parts) {
    SourceUse use{};
    use.outputPixels = std::uint64_t{map.Output().width} * map.Output().height;
    CountLens(lens, MarkShown(map, &use), &use);
    use.across = StepsOf(places, parts, SpanIn(map.Output().width), 0);
    use.down = StepsOf(places, parts, 0, SpanIn(map.Output().height / parts));
    return use;
}

}  // namespace KivFisheyeTools

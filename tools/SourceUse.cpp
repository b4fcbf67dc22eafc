#include "SourceUse.h"

#include <algorithm>
#include <cmath>

namespace KivFisheyeTools {

namespace {

/// Over how many pixels a step is measured: places are whole pixels, and a part of a circle so
/// short is nearly straight.
std::uint32_t ReachIn(std::uint32_t length) {
    return std::min(std::max(length / 32, 4U), length - 1);
}

struct Line {
    double steps = 0.0;
    std::uint64_t pairs = 0;

    double Mean() const { return steps / static_cast<double>(pairs); }
};

template <class PlaceAt>
Line StepsAlong(std::uint32_t length, PlaceAt placeAt) {
    const std::uint32_t reach = ReachIn(length);
    Line line;
    for (std::uint32_t i = 0; reach > 0 && i + reach < length; ++i) {
        const std::optional<Place> from = placeAt(i);
        const std::optional<Place> to = placeAt(i + reach);
        if (from && to) {
            line.steps += std::hypot(to->x - from->x, to->y - from->y) / reach;
            ++line.pairs;
        }
    }
    return line;
}

/// Lines that are mostly black tell little of the view, and only count in the mean.
std::optional<Range> RangeOf(const std::vector<Line>& lines) {
    Line all;
    std::uint64_t most = 0;
    for (const Line& line : lines) {
        all.steps += line.steps;
        all.pairs += line.pairs;
        most = std::max(most, line.pairs);
    }
    if (all.pairs == 0) {
        return std::nullopt;
    }
    Range range{all.Mean(), all.Mean(), all.Mean()};
    for (const Line& line : lines) {
        if (line.pairs > 0 && 2 * line.pairs >= most) {
            range.least = std::min(range.least, line.Mean());
            range.most = std::max(range.most, line.Mean());
        }
    }
    return range;
}

std::optional<Range> StepsAcross(const SourceMap& map) {
    std::vector<Line> lines;
    for (std::uint32_t row = 0; row < map.Output().height; ++row) {
        lines.push_back(StepsAlong(map.Output().width,
                                   [&](std::uint32_t column) { return map.PlaceAt(column, row); }));
    }
    return RangeOf(lines);
}

std::optional<Range> StepsDown(const SourceMap& map, std::uint32_t parts) {
    const std::uint32_t height = map.Output().height / parts;
    std::vector<Line> lines;
    for (std::uint32_t part = 0; height > 0 && part < parts; ++part) {
        for (std::uint32_t column = 0; column < map.Output().width; ++column) {
            lines.push_back(StepsAlong(height, [&](std::uint32_t row) {
                return map.PlaceAt(column, part * height + row);
            }));
        }
    }
    return RangeOf(lines);
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

SourceUse MeasureUse(const SourceMap& map, const Lens& lens, std::uint32_t parts) {
    SourceUse use{};
    use.outputPixels = std::uint64_t{map.Output().width} * map.Output().height;
    CountLens(lens, MarkShown(map, &use), &use);
    use.across = StepsAcross(map);
    use.down = StepsDown(map, parts);
    return use;
}

}  // namespace KivFisheyeTools

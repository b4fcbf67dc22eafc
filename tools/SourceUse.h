#ifndef KIVFISHEYE_TOOLS_SOURCE_USE_H
#define KIVFISHEYE_TOOLS_SOURCE_USE_H

#include "Lens.h"
#include "SourceMap.h"

namespace KivFisheyeTools {

/// Averages over single rows or columns of a view: the least and the most of them, and that of all.
struct Range {
    double least;
    double mean;
    double most;
};

/// How a view uses its input.
struct SourceUse {
    std::uint64_t outputPixels;
    /// Output pixels that show a source pixel, and how many different ones they show.
    std::uint64_t shown;
    std::uint64_t differentShown;
    /// Pixels of the frame that lie in the lens image, and those of them that appear.
    std::uint64_t lensPixels;
    std::uint64_t lensShown;
    /// Source pixels between neighbours in a row and in a column; nothing where none are beside each
    /// other.
    std::optional<Range> across;
    std::optional<Range> down;
};

/// `parts` is the number of pictures, equally high, that stand one above the other in the view.
SourceUse MeasureUse(const SourceMap& map, const Lens& lens, std::uint32_t parts);

}  // namespace KivFisheyeTools

#endif

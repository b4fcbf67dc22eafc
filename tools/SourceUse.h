#ifndef KIVFISHEYE_TOOLS_SOURCE_USE_H
#define KIVFISHEYE_TOOLS_SOURCE_USE_H

#include "Lens.h"
#include "SourceMap.h"
#include "SourcePlaces.h"

namespace KivFisheyeTools {

/// What short spans of a view have: the least and the most of them, and the mean of all.
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
    /// Source pixels for each output pixel of spans along rows and along columns; nothing where no
    /// span has both its ends in the lens image.
    std::optional<Range> across;
    std::optional<Range> down;
};

/// `places` are those of the same view. `parts` is the number of pictures, equally high, that stand
/// one above the other in it.
SourceUse MeasureUse(const SourceMap& map, const SourcePlaces& places, const Lens& lens,
                     std::uint32_t parts);

}  // namespace KivFisheyeTools

#endif

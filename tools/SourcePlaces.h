#ifndef KIVFISHEYE_TOOLS_SOURCE_PLACES_H
#define KIVFISHEYE_TOOLS_SOURCE_PLACES_H

#include "SourceMap.h"

namespace KivFisheyeTools {

/// Where the pixels of a view lie on its input, more exactly than by whole pixels. Two maps of the
/// same view tell, each made of another frame for the same lens: a very wide one how far to the
/// right, a very high one how far down. The maps must outlive this.
class SourcePlaces {
public:
    SourcePlaces(const SourceMap& wide, const SourceMap& high, const Size& input)
        : m_wide(wide), m_high(high), m_input(input) {}

    Size Output() const { return m_wide.Output(); }

    /// Nothing where the view is black.
    std::optional<Place> PlaceAt(std::uint32_t column, std::uint32_t row) const;

private:
    const SourceMap& m_wide;
    const SourceMap& m_high;
    Size m_input;
};

}  // namespace KivFisheyeTools

#endif

#include "accuracy/SampledPlaces.h"

#include <cstddef>
#include <optional>

#include "support/CoordinateFrame.h"

CoordinateSource::CoordinateSource(int side)
    : m_side(side),
      m_pixels24(CoordinateFrame(side, side, 3 * side, 3)),
      m_pixels32(CoordinateFrame(side, side, 4 * side, 4)) {}

SourcePlaces PlacesOfPicture(const std::vector<unsigned char>& picture, int bytesPerPixel) {
    SourcePlaces places;
    for (std::size_t at = 0; at < picture.size(); at += static_cast<std::size_t>(bytesPerPixel)) {
        places.push_back(PlaceIn(&picture[at], bytesPerPixel));
    }
    return places;
}

SourcePlaces PlacesOfTable(BuildFunction& build, const PanoramaFrames& frames, float shape,
                           int bytesPerPixel) {
    CAlignedBufferT<int, 32> table;
    table.Allocate(static_cast<unsigned long long>(frames.dstWidth) *
                   static_cast<unsigned long long>(frames.dstHeight));
    build(frames.srcWidth, frames.srcHeight, frames.srcStride, frames.dstWidth, frames.dstHeight,
          frames.dstStride, frames.radiusX, frames.radiusY, shape, table);
    SourcePlaces places;
    for (const int* entry = table.data(); entry != table.data() + table.count(); ++entry) {
        places.push_back(*entry == kNoSource
                             ? std::nullopt
                             : std::optional<PixelPlace>({*entry % frames.srcStride / bytesPerPixel,
                                                          *entry / frames.srcStride}));
    }
    return places;
}

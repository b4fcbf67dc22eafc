#ifndef KIVFISHEYE_TESTS_SAMPLED_PLACES_H
#define KIVFISHEYE_TESTS_SAMPLED_PLACES_H

#include <vector>

#include "PanoramaConverters.h"
#include "support/PanoramaFrames.h"
#include "support/VCamModel.h"

/// A square source whose pixels tell their places, for both pixel sizes.
class CoordinateSource {
public:
    explicit CoordinateSource(int side);

    int Side() const { return m_side; }
    const std::vector<unsigned char>& Pixels(int bytesPerPixel) const {
        return bytesPerPixel == 3 ? m_pixels24 : m_pixels32;
    }

private:
    int m_side;
    std::vector<unsigned char> m_pixels24;
    std::vector<unsigned char> m_pixels32;
};

/// The places that the pixels of a packed picture of such a source tell.
SourcePlaces PlacesOfPicture(const std::vector<unsigned char>& picture, int bytesPerPixel);

/// The places that a builder's table leads to. `shape` is the ratio of a ring or the angle of a
/// wall.
SourcePlaces PlacesOfTable(BuildFunction& build, const PanoramaFrames& frames, float shape,
                           int bytesPerPixel);

#endif

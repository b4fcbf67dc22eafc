#ifndef KIVFISHEYE_TESTS_COORDINATE_FRAME_H
#define KIVFISHEYE_TESTS_COORDINATE_FRAME_H

#include <optional>
#include <ostream>
#include <vector>

/// A pixel's place in a frame.
struct PixelPlace {
    int column;
    int row;

    bool operator==(const PixelPlace& other) const {
        return column == other.column && row == other.row;
    }
};

inline std::ostream& operator<<(std::ostream& out, const PixelPlace& place) {
    return out << "(" << place.column << ", " << place.row << ")";
}

/// A frame whose every pixel tells its own place and none is all zero bytes. Sides reach 4095 for
/// pixels of 3 bytes and 65535 for pixels of 4. The frame ends with its last pixel, and row padding
/// holds bytes that tell no place in the frame.
std::vector<unsigned char> CoordinateFrame(int width, int height, int stride, int bytesPerPixel);

/// The place that a pixel of such a frame tells; none for zero bytes.
std::optional<PixelPlace> PlaceIn(const unsigned char* pixel, int bytesPerPixel);

#endif

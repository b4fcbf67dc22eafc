#ifndef KIVFISHEYE_TESTS_TWO_HALVES_H
#define KIVFISHEYE_TESTS_TWO_HALVES_H

#include <cstddef>
#include <vector>

/// A source whose left half is of one colour and whose right half is of another.
inline std::vector<unsigned char> TwoHalves(int width, int height, int bytesPerPixel) {
    std::vector<unsigned char> frame;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            frame.insert(frame.end(), static_cast<std::size_t>(bytesPerPixel),
                         x < width / 2 ? 0x10 : 0xF0);
        }
    }
    return frame;
}

/// The colours of a row of pixels.
inline std::vector<unsigned char> Colours(const unsigned char* row, int width, int bytesPerPixel) {
    std::vector<unsigned char> colours;
    for (int x = 0; x < width; ++x) {
        colours.push_back(row[static_cast<std::ptrdiff_t>(x) * bytesPerPixel]);
    }
    return colours;
}

#endif

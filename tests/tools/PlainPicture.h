#ifndef KIVFISHEYE_TESTS_PLAIN_PICTURE_H
#define KIVFISHEYE_TESTS_PLAIN_PICTURE_H

#include <cstdint>

#include "Picture.h"
#include "TemporaryFolder.h"

/// Writes a picture of one red.
void WritePlain(const TemporaryFolder& folder, const std::string& name, std::uint32_t width,
                std::uint32_t height, std::uint8_t red);

/// A picture of 256 by 256 pixels, whose red is the column and whose green is the row; its blue is
/// full.
KivFisheyeTools::Picture Slopes();

#endif

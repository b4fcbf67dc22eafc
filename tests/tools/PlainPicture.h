#ifndef KIVFISHEYE_TESTS_PLAIN_PICTURE_H
#define KIVFISHEYE_TESTS_PLAIN_PICTURE_H

#include <cstdint>

#include "TemporaryFolder.h"

/// Writes a picture of one red.
void WritePlain(const TemporaryFolder& folder, const std::string& name, std::uint32_t width,
                std::uint32_t height, std::uint8_t red);

#endif

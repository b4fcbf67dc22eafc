#ifndef KIVFISHEYE_TESTS_RANDOM_FRAME_H
#define KIVFISHEYE_TESTS_RANDOM_FRAME_H

#include <cstdint>
#include <random>

#include "support/Between.h"
#include "support/ClientFrame.h"

/// A coordinate picture whose sides lie between the two. They are drawn one after the other, since
/// compilers evaluate the arguments of a call in orders of their own.
inline ClientFrame RandomInput(std::mt19937& engine, int shortest, int longest,
                               KivFisheyeLib::PixelFormat format) {
    const auto width = static_cast<std::uint32_t>(Between(engine, shortest, longest));
    const auto height = static_cast<std::uint32_t>(Between(engine, shortest, longest));
    return ClientFrame::OfCoordinates(width, height, format);
}

#endif

#ifndef KIVFISHEYE_TESTS_TEST_PICTURE_H
#define KIVFISHEYE_TESTS_TEST_PICTURE_H

#include <Picture.h>

#include <array>
#include <cstdint>

#include "support/LibraryView.h"

using Color = std::array<int, 3>;

Color ColorAt(const Picture& picture, std::uint32_t x, std::uint32_t y);

/// An opaque picture, whose red is the column and whose green is the row, again from 0 after 255;
/// its blue is 100.
Picture Slopes(std::uint32_t width, std::uint32_t height);

/// The first place at which two pictures differ is a failure, and so are different sizes.
void ExpectSamePixels(const Picture& shown, const Picture& expected);

/// A lens that fills a square picture, as the examples set it up.
constexpr KivFisheyeLib::DewarpParams kSquareLens{0.5F, 0.5F, 45.0F, 0.2F};

/// A view through that lens.
LibraryView SquareView(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view,
                       float pan = 0.0F, float tilt = 0.0F, float zoom = 1.0F);

/// The picture as the library flattens it, in a size of its recommendation or another one.
Picture FlattenedByLibrary(Picture input, const LibraryView& view);
Picture FlattenedByLibrary(Picture input, const LibraryView& view, std::uint32_t width,
                           std::uint32_t height);

#endif

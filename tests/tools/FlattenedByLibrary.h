#ifndef KIVFISHEYE_TESTS_FLATTENED_BY_LIBRARY_H
#define KIVFISHEYE_TESTS_FLATTENED_BY_LIBRARY_H

#include "Picture.h"
#include "support/LibraryView.h"

/// The picture of 24-bit pixels as the library flattens it.
KivFisheyeTools::Picture FlattenedByLibrary(KivFisheyeTools::Picture input, const LibraryView& view,
                                            std::uint32_t width, std::uint32_t height);

#endif

#ifndef KIVFISHEYE_TESTS_LIBRARY_VIEW_H
#define KIVFISHEYE_TESTS_LIBRARY_VIEW_H

#include <KivFisheyeTypes.h>

#include "Picture.h"

/// What is asked of the library.
struct LibraryView {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 1.0F;
};

/// The picture as the library flattens it, called as any client calls it.
KivFisheyeTools::Picture FlattenedByLibrary(KivFisheyeTools::Picture input, const LibraryView& view,
                                            std::uint32_t width, std::uint32_t height);

#endif

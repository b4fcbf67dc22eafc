#ifndef KIVFISHEYE_TESTS_LIBRARY_VIEW_H
#define KIVFISHEYE_TESTS_LIBRARY_VIEW_H

#include <KivFisheyeTypes.h>

#include <memory>

/// What is asked of the library.
struct LibraryView {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 1.0F;
    KivFisheyeLib::DewarpParams lens{0.5F, 0.5F, 45.0F, 0.0F};
};

using LibraryContext = std::unique_ptr<void, void (*)(void*)>;

/// A context without buffers, asked as any client asks.
LibraryContext ContextOf(const LibraryView& view);

/// Makes one frame in such a context.
void FlattenByLibrary(const LibraryView& view, const KivFisheyeLib::VideoFrameInfo& input,
                      KivFisheyeLib::PixelFormat format,
                      const KivFisheyeLib::VideoFrameInfo& output);

#endif

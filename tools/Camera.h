#ifndef KIVFISHEYE_TOOLS_CAMERA_H
#define KIVFISHEYE_TOOLS_CAMERA_H

#include <KivFisheyeLib.h>

#include <memory>
#include <string>
#include <vector>

#include "Numbers.h"
#include "Picture.h"

namespace KivFisheyeTools {

/// A camera context of the library, deleted at the end of its life.
class Camera {
public:
    Camera() : m_context(CreateKivFisheyeCameraContext()) {}

    IKivFisheyeCamera* operator->() const { return GetCameraAPI(m_context.get()); }
    /// The size that the library recommends. Throws `Failure` when it recommends none.
    Size RecommendedSize() const;

    IKivFisheyeROI* Outlines() const { return GetROIAPI(m_context.get()); }
    IKivFisheyeDewarpBoundary* Boundaries() const { return GetDewarpBoundaryAPI(m_context.get()); }

private:
    struct ContextDeleter {
        void operator()(void* context) const { DeleteKivFisheyeCameraContext(context); }
    };

    std::unique_ptr<void, ContextDeleter> m_context;
};

/// The names of mounts and views on the command line.
const std::vector<std::string>& MountNames();
const std::vector<std::string>& ViewNames();
std::string NameOf(KivFisheyeLib::MountType mount);
std::string NameOf(KivFisheyeLib::ViewType view);
/// The name must be one of the list.
KivFisheyeLib::MountType MountOfName(const std::string& name);
KivFisheyeLib::ViewType ViewOfName(const std::string& name);

/// The library's record of a picture, and the pixel format that goes with it.
KivFisheyeLib::VideoFrameInfo FrameOf(Picture* picture);
KivFisheyeLib::PixelFormat PixelFormatOf(const Picture& picture);

/// Whether the library shows this view of a camera of this mount.
bool IsViewOfMount(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view);

}  // namespace KivFisheyeTools

#endif

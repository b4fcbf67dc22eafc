#include "Camera.h"

#include <algorithm>

#include "Failure.h"

namespace KivFisheyeTools {

namespace {

std::uint32_t IndexOf(const std::string& name, const std::vector<std::string>& names) {
    return static_cast<std::uint32_t>(std::find(names.begin(), names.end(), name) - names.begin());
}

}  // namespace

Size Camera::RecommendedSize() const {
    Size size{0, 0};
    if ((*this)->GetRecommendOutputVideoSize(&size.width, &size.height) != kResultOk) {
        throw Failure("the library recommends no output size for this picture");
    }
    return size;
}

const std::vector<std::string>& MountNames() {
    static const std::vector<std::string> names = {"wall", "ceiling", "table"};
    return names;
}

const std::vector<std::string>& ViewNames() {
    static const std::vector<std::string> names = {"vcam", "dual", "full"};
    return names;
}

std::string NameOf(KivFisheyeLib::MountType mount) {
    return MountNames().at(mount);
}

std::string NameOf(KivFisheyeLib::ViewType view) {
    return ViewNames().at(view);
}

KivFisheyeLib::MountType MountOfName(const std::string& name) {
    return static_cast<KivFisheyeLib::MountType>(IndexOf(name, MountNames()));
}

KivFisheyeLib::ViewType ViewOfName(const std::string& name) {
    return static_cast<KivFisheyeLib::ViewType>(IndexOf(name, ViewNames()));
}

KivFisheyeLib::VideoFrameInfo FrameOf(Picture* picture) {
    return {picture->width, picture->height, picture->stride, picture->pixels.data()};
}

KivFisheyeLib::PixelFormat PixelFormatOf(const Picture& picture) {
    return picture.bytesPerPixel == 4 ? KivFisheyeLib::PixelFormatRGB32
                                      : KivFisheyeLib::PixelFormatRGB24;
}

bool IsViewOfMount(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view) {
    return Camera()->SetMountAndViewType(mount, view) != kResultInvalidArgument;
}

}  // namespace KivFisheyeTools

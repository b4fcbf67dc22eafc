#include "Camera.h"

#include <algorithm>
#include <stdexcept>
#include <string>

using namespace KivFisheyeLib;

void Require(ResultCode result, const char* call) {
    if (result == kResultOk) {
        return;
    }
    const char* const reason = result == kResultInvalidArgument ? "an argument is out of its range"
                               : result == kResultNotReady      ? "something was not set before"
                               : result == kResultNullPointer   ? "a frame is missing"
                               : result == kResultOutOfMemory   ? "there is not enough memory"
                                                                : "there was nothing to do";
    throw std::runtime_error(std::string("the library refuses ") + call + ": " + reason);
}

VideoFrameInfo FrameOf(Picture& picture) {
    return {picture.width, picture.height, picture.width * Picture::kBytesPerPixel,
            picture.pixels.data()};
}

DewarpParams RoundLens(const Picture& picture) {
    const auto width = static_cast<float>(picture.width);
    const auto height = static_cast<float>(picture.height);
    const float radius = 0.5F * std::min(width, height);
    constexpr float kWallViewAngle = 45.0F;
    constexpr float kInnerRadiusRatio = 0.2F;
    return {radius / width, radius / height, kWallViewAngle, kInnerRadiusRatio};
}

void SetUp(IKivFisheyeCamera& camera, MountType mount, ViewType view, Picture& input) {
    Require(camera.SetMountAndViewType(mount, view), "SetMountAndViewType");
    Require(camera.SetDewarpParams(RoundLens(input)), "SetDewarpParams");
    Require(camera.SetInputVideoParams(FrameOf(input), PixelFormatRGB32), "SetInputVideoParams");
}

Picture RecommendedPicture(IKivFisheyeCamera& camera) {
    unsigned int width = 0;
    unsigned int height = 0;
    Require(camera.GetRecommendOutputVideoSize(&width, &height), "GetRecommendOutputVideoSize");
    return {width, (height + 1) / 2 * 2};
}

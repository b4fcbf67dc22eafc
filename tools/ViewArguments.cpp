#include "ViewArguments.h"

#include <algorithm>
#include <sstream>

#include "Camera.h"
#include "Failure.h"

namespace KivFisheyeTools {

namespace {

constexpr std::uint32_t kWidthStep = 8;

void CheckSize(const Size& size, OutputKind output) {
    if (size.width % kWidthStep != 0) {
        throw UsageError("--size: the width must be a multiple of " + std::to_string(kWidthStep));
    }
    if (output == OutputKind::Video && size.height % 2 != 0) {
        throw UsageError("--size: the height of a video must be even");
    }
}

/// Refuses options that the library would accept and make nothing of.
void CheckLens(const ViewArguments& arguments) {
    if (arguments.hasWallViewAngle && !DependsOnWallViewAngle(arguments)) {
        throw UsageError("--wall-view-angle goes with the panorama of a wall camera alone");
    }
    if (arguments.hasInnerRadius && !DependsOnInnerRadius(arguments)) {
        throw UsageError("--inner-radius goes with panoramas of ceiling and table cameras alone");
    }
}

}  // namespace

std::uint32_t BytesPerPixelOf(const ViewArguments& arguments) {
    return arguments.format == "rgb24" ? 3 : 4;
}

bool HasExtent(const KivFisheyeLib::DewarpParams& lens) {
    return lens.radiusX > 0.0F && lens.radiusY > 0.0F;
}

std::string WordsFor(KivFisheyeLib::ViewType view) {
    switch (view) {
        case KivFisheyeLib::ViewTypeDualPanorama:
            return "dual panorama";
        case KivFisheyeLib::ViewTypeFullPanorama:
            return "full panorama";
        case KivFisheyeLib::ViewTypeVCam:
            break;
    }
    return "virtual camera";
}

std::string WordsForRoundLens(const Size& picture) {
    const bool isWide = picture.width > picture.height;
    const double longer = std::max(picture.width, picture.height);
    const double shorter = std::min(picture.width, picture.height);
    std::ostringstream words;
    if (shorter < longer) {
        words << "A round lens as " << (isWide ? "high" : "wide") << " as this picture needs "
              << (isWide ? "--radius-x " : "--radius-y ") << 0.5 * shorter / longer;
    }
    return words.str();
}

bool IsVirtualCamera(const ViewArguments& arguments) {
    return ViewOfName(arguments.view) == KivFisheyeLib::ViewTypeVCam;
}

bool IsDualPanorama(const ViewArguments& arguments) {
    return ViewOfName(arguments.view) == KivFisheyeLib::ViewTypeDualPanorama;
}

bool IsWall(const ViewArguments& arguments) {
    return MountOfName(arguments.mount) == KivFisheyeLib::MountTypeWall;
}

bool DependsOnWallViewAngle(const ViewArguments& arguments) {
    return IsWall(arguments) && !IsVirtualCamera(arguments);
}

bool DependsOnInnerRadius(const ViewArguments& arguments) {
    return !IsWall(arguments) && !IsVirtualCamera(arguments);
}

void CheckView(const ViewArguments& arguments, OutputKind output) {
    const auto mount = MountOfName(arguments.mount);
    const auto view = ViewOfName(arguments.view);
    if (!IsViewOfMount(mount, view)) {
        throw UsageError("a " + NameOf(mount) + " camera has no " + WordsFor(view));
    }
    CheckLens(arguments);
    if (!arguments.size.empty()) {
        CheckSize(SizeOfText(arguments.size).value(), output);
    }
}

}  // namespace KivFisheyeTools

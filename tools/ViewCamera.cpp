#include "ViewCamera.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "Failure.h"
#include "Lens.h"

namespace KivFisheyeTools {

namespace {

bool IsTiltOfMount(KivFisheyeLib::MountType mount, float tilt) {
    return mount == KivFisheyeLib::MountTypeWall ||
           (mount == KivFisheyeLib::MountTypeCeiling ? tilt >= 0.0F : tilt <= 0.0F);
}

/// Why a virtual camera of this mount does not look where it was asked to, as far as that is known.
std::string ReasonForLimit(KivFisheyeLib::MountType mount, const Angles& asked,
                           const Angles& taken) {
    std::string reason;
    if (!IsTiltOfMount(mount, asked.tilt)) {
        reason += mount == KivFisheyeLib::MountTypeTable
                      ? "; the tilt of a table camera is negative, from -90 to 0"
                      : "; the tilt of a ceiling camera is positive, from 0 to 90";
    }
    if (taken.zoom < kWidestZoomThatTurns) {
        reason +=
            "; it looks away from the lens's axis only at a zoom of 2 or more, which shows at most "
            "90 degrees";
    }
    return reason;
}

}  // namespace

bool IsSameView(const Angles& asked, const Angles& taken) {
    constexpr double kTolerance = 1e-3;
    const auto isNear = [](double difference) { return std::abs(difference) < kTolerance; };
    // Whole turns go first: beside a huge pan the other one would vanish in the difference.
    const auto withinATurn = [](double pan) { return std::remainder(pan, 360.0); };
    return isNear(withinATurn(withinATurn(asked.pan) - withinATurn(taken.pan))) &&
           isNear(double{asked.tilt} - double{taken.tilt}) &&
           isNear(double{asked.zoom} - double{taken.zoom});
}

std::string WordsFor(const ViewArguments& arguments, const Angles& angles) {
    // A library that turns by whole turns may leave a zero with a sign.
    std::ostringstream words;
    words << "pan " << angles.pan + 0.0F;
    if (IsVirtualCamera(arguments)) {
        words << ", tilt " << angles.tilt + 0.0F << " and zoom " << angles.zoom;
    }
    return words.str();
}

std::string WordsForLimit(const ViewArguments& arguments, const Angles& asked,
                          const Angles& taken) {
    const std::string words =
        "is limited to " + WordsFor(arguments, taken) + " instead of " + WordsFor(arguments, asked);
    if (IsVirtualCamera(arguments)) {
        return words + ReasonForLimit(MountOfName(arguments.mount), asked, taken);
    }
    return words + (IsWall(arguments) ? "; the panorama of a wall camera does not turn" : "");
}

std::string WordsForRemedy(const ViewArguments& arguments, const Angles& asked) {
    constexpr double kNarrowest = 10.0;
    constexpr double kWidestThatTurns = 90.0;
    const KivFisheyeLib::MountType mount = MountOfName(arguments.mount);
    if (ViewOfName(arguments.view) != KivFisheyeLib::ViewTypeVCam ||
        !IsTiltOfMount(mount, asked.tilt)) {
        return "";
    }
    const double pan = mount == KivFisheyeLib::MountTypeWall ? std::abs(double{asked.pan}) : 0.0;
    const double offAxis = std::max(pan, std::abs(double{asked.tilt}));
    // Half of the view lies between its middle and the rim.
    const double widest = std::min(kWidestThatTurns, std::floor(2.0 * (90.0 - offAxis)));
    std::ostringstream words;
    if (widest >= kNarrowest) {
        words << "; --fov " << widest << " is the widest that looks there";
    }
    return words.str();
}

void Expect(ResultCode result, const std::string& sentence) {
    if (result != kResultOk) {
        throw Failure(sentence);
    }
}

ViewCamera::ViewCamera(const ViewArguments& arguments) {
    Expect((*this)->SetMountAndViewType(MountOfName(arguments.mount), ViewOfName(arguments.view)),
           "the library refuses the mount and view");
    Expect((*this)->SetDewarpParams(arguments.lens), "the library refuses the lens parameters");
}

void ViewCamera::SetInput(Picture* input) const {
    Expect((*this)->SetInputVideoParams(FrameOf(input), PixelFormatOf(*input)),
           "the library refuses the input picture");
}

Angles ViewCamera::Present() const {
    Angles angles{};
    Expect((*this)->GetPTZ(&angles.pan, &angles.tilt, &angles.zoom),
           "the library does not tell how the view is turned");
    return angles;
}

Angles ViewCamera::Turn(const Angles& angles) const {
    Expect((*this)->SetAbsolutePTZ(angles.pan, angles.tilt, angles.zoom),
           "the library refuses to turn the view");
    return Present();
}

Angles ViewCamera::AimedAt(float x, float y, float zoom) const {
    Angles angles{0.0F, 0.0F, zoom};
    Expect((*this)->CvtXYToVCamPanTilt(x, y, angles.pan, angles.tilt),
           "the library does not tell how to look at a point");
    if (!std::isfinite(angles.pan) || !std::isfinite(angles.tilt)) {
        throw Failure("the lens image is too small to look at a point of it");
    }
    return angles;
}

float ViewCamera::ZoomFor(float fieldOfView) const {
    Angles ignored{};
    float zoom = 1.0F;
    Expect((*this)->CvtXYToVCamPanTiltZoom(0.5F, 0.5F, static_cast<float>(Radians(fieldOfView)),
                                           ignored.pan, ignored.tilt, zoom),
           "the library does not tell the zoom of a field of view");
    return zoom;
}

}  // namespace KivFisheyeTools

#include "AngleArguments.h"

#include "Failure.h"
#include "Numbers.h"
#include "Progress.h"

namespace KivFisheyeTools {

namespace {

void CheckHasNoVirtualCameraOptions(const AngleArguments& arguments) {
    std::string given;
    const auto note = [&](bool isGiven, const char* option) {
        if (isGiven) {
            given += (given.empty() ? "" : " and ") + std::string(option);
        }
    };
    note(arguments.tilt.has_value(), "--tilt");
    note(arguments.zoom.has_value(), "--zoom");
    note(!arguments.aim.empty(), "--aim");
    note(arguments.fieldOfView.has_value(), "--fov");
    if (!given.empty()) {
        throw UsageError("only --view vcam takes " + given);
    }
}

bool IsAimedOutsideTheLens(const AngleArguments& arguments,
                           const KivFisheyeLib::DewarpParams& lens) {
    // Points and radii are written in decimals: those of the rim may come out beside it.
    constexpr double kRim = 1.0 + 1e-6;
    const std::optional<LensPoint> point = AimedPoint(arguments, lens);
    return point && point->Radius() > kRim;
}

}  // namespace

void CheckAngles(const AngleArguments& arguments, KivFisheyeLib::ViewType view,
                 const std::string& aimName) {
    if (view != KivFisheyeLib::ViewTypeVCam) {
        CheckHasNoVirtualCameraOptions(arguments);
    }
    for (const double part : NumbersOfText(arguments.aim)) {
        if (part < 0.0 || part > 1.0) {
            throw UsageError(aimName + ": both numbers must be from 0 to 1");
        }
    }
}

std::optional<LensPoint> AimedPoint(const AngleArguments& arguments,
                                    const KivFisheyeLib::DewarpParams& lens) {
    if (arguments.aim.empty()) {
        return std::nullopt;
    }
    const std::vector<double> point = NumbersOfText(arguments.aim);
    return LensPoint{(point.at(0) - 0.5) / lens.radiusX, (0.5 - point.at(1)) / lens.radiusY};
}

Angles AskedAngles(const AngleArguments& arguments, const ViewCamera& camera) {
    const Angles present = camera.Present();
    const bool isAimed = !arguments.aim.empty();
    const float usualZoom = isAimed ? kWidestZoomThatTurns : present.zoom;
    const float zoom = arguments.fieldOfView ? camera.ZoomFor(*arguments.fieldOfView)
                                             : arguments.zoom.value_or(usualZoom);
    if (!isAimed) {
        return {arguments.pan.value_or(present.pan), arguments.tilt.value_or(present.tilt), zoom};
    }
    const std::vector<double> point = NumbersOfText(arguments.aim);
    return camera.AimedAt(static_cast<float>(point.at(0)), static_cast<float>(point.at(1)), zoom);
}

std::vector<std::string> NotesOnAngles(const AngleArguments& arguments, const ViewArguments& view,
                                       const Angles& asked, const Angles& taken,
                                       const std::string& subject) {
    std::vector<std::string> notes;
    const bool isOutside = IsAimedOutsideTheLens(arguments, view.lens);
    if (isOutside) {
        notes.emplace_back("the point lies outside the lens image");
    }
    if (!IsSameView(asked, taken)) {
        notes.push_back(subject + " " + WordsForLimit(view, asked, taken) +
                        (isOutside ? "" : WordsForRemedy(view, asked)));
    }
    return notes;
}

Angles Turn(const AngleArguments& arguments, const ViewArguments& view, const ViewCamera& camera,
            Progress* progress) {
    const Angles asked = AskedAngles(arguments, camera);
    const Angles taken = camera.Turn(asked);
    for (const std::string& note : NotesOnAngles(arguments, view, asked, taken)) {
        progress->Say(note);
    }
    return taken;
}

}  // namespace KivFisheyeTools

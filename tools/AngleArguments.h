#ifndef KIVFISHEYE_TOOLS_ANGLE_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_ANGLE_ARGUMENTS_H

#include <optional>
#include <string>
#include <vector>

#include "Lens.h"
#include "ViewCamera.h"

namespace KivFisheyeTools {

class Progress;

/// The options that turn a view.
struct AngleArguments {
    std::optional<float> pan;
    std::optional<float> tilt;
    std::optional<float> zoom;
    /// Two numbers with a comma between them, or nothing.
    std::string aim;
    std::optional<float> fieldOfView;
};

/// Throws `UsageError` when the view does not take these options, or the point is not in the frame.
/// `aimName` is what the user calls the point.
void CheckAngles(const AngleArguments& arguments, KivFisheyeLib::ViewType view,
                 const std::string& aimName = "--aim");

/// The point of --aim in the lens image, where one is given.
std::optional<LensPoint> AimedPoint(const AngleArguments& arguments,
                                    const KivFisheyeLib::DewarpParams& lens);

/// What the options ask for. Throws `Failure` when the lens is too small to aim at a point of it.
Angles AskedAngles(const AngleArguments& arguments, const ViewCamera& camera);

/// Sentences about what the library did not take, and about a point outside the lens image.
/// `subject` is what they call the view.
std::vector<std::string> NotesOnAngles(const AngleArguments& arguments, const ViewArguments& view,
                                       const Angles& asked, const Angles& taken,
                                       const std::string& subject = "the view");

/// Turns the camera, says what the library did not take and when the point lies outside the lens
/// image, and gives the angles that the library took.
Angles Turn(const AngleArguments& arguments, const ViewArguments& view, const ViewCamera& camera,
            Progress* progress);

}  // namespace KivFisheyeTools

#endif

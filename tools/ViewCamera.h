#ifndef KIVFISHEYE_TOOLS_VIEW_CAMERA_H
#define KIVFISHEYE_TOOLS_VIEW_CAMERA_H

#include "Camera.h"
#include "ViewArguments.h"

namespace KivFisheyeTools {

/// Where a view looks: pan and tilt in degrees, zoom as a factor.
struct Angles {
    float pan;
    float tilt;
    float zoom;
};

/// With less zoom than this a view does not leave the lens's axis.
constexpr float kWidestZoomThatTurns = 2.0F;

/// Whether the library took the angles as they were asked for. Whole turns make no difference.
bool IsSameView(const Angles& asked, const Angles& taken);

/// Words such as "pan 10, tilt 50 and zoom 3". Of a panorama only the pan counts.
std::string WordsFor(const ViewArguments& arguments, const Angles& angles);

/// Words such as "is limited to pan 10, tilt 50 and zoom 3 instead of pan 10, tilt 80 and zoom 3",
/// and the reason where it is known.
std::string WordsForLimit(const ViewArguments& arguments, const Angles& asked, const Angles& taken);

/// Words such as "; --fov 36 is the widest that looks there", or nothing where no zoom does.
std::string WordsForRemedy(const ViewArguments& arguments, const Angles& asked);

/// Throws `Failure` with the sentence unless the library did what it was asked to.
void Expect(ResultCode result, const std::string& sentence);

/// A camera context with its mount, view and lens, which can be turned before it has any frames.
class ViewCamera : public Camera {
public:
    explicit ViewCamera(const ViewArguments& arguments);

    /// The picture must stay where it is.
    void SetInput(Picture* input) const;

    Angles Present() const;
    /// Turns the view and gives the angles that the library made of it.
    Angles Turn(const Angles& angles) const;

    /// The pan and tilt that look at a point, given as fractions of the frame from its top left.
    Angles AimedAt(float x, float y, float zoom) const;
    /// The zoom that shows so many degrees.
    float ZoomFor(float fieldOfView) const;
};

}  // namespace KivFisheyeTools

#endif

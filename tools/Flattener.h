#ifndef KIVFISHEYE_TOOLS_FLATTENER_H
#define KIVFISHEYE_TOOLS_FLATTENER_H

#include "Camera.h"
#include "Numbers.h"
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

/// Words such as "is limited to pan 10, tilt 50 and zoom 3 instead of pan 10, tilt 80 and zoom 3",
/// and the reason where it is known. Of a panorama only the pan counts.
std::string WordsForLimit(const ViewArguments& arguments, const Angles& asked, const Angles& taken);

/// A camera context with its two pictures, which stay where they are: they are set once, so that no
/// frame of a video costs more than its conversion.
class Flattener {
public:
    /// Throws `Failure` when there is no output for pictures of this size.
    Flattener(const ViewArguments& arguments, const Size& input, OutputKind output);

    /// What is to be flattened.
    Picture* Input() { return &m_input; }
    const Picture& Output() const { return m_output; }

    Angles Present() const;
    /// Turns the view and gives the angles that the library made of it.
    Angles Turn(const Angles& angles) const;

    /// The pan and tilt that look at a point, given as fractions of the frame from its top left.
    Angles AimedAt(float x, float y, float zoom) const;
    /// The zoom that shows so many degrees.
    float ZoomFor(float fieldOfView) const;

    /// Converts the input as it now is.
    void Flatten() const;

private:
    Picture m_input;
    Camera m_camera;
    Picture m_output;
};

}  // namespace KivFisheyeTools

#endif

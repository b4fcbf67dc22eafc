#ifndef KIVFISHEYE_TOOLS_FLATTENER_H
#define KIVFISHEYE_TOOLS_FLATTENER_H

#include "Numbers.h"
#include "ViewCamera.h"

namespace KivFisheyeTools {

/// A view camera with its two pictures, which stay where they are: they are set once, so that no
/// frame of a video costs more than its conversion.
class Flattener : public ViewCamera {
public:
    /// Throws `Failure` when there is no output for pictures of this size.
    Flattener(const ViewArguments& arguments, const Size& input, OutputKind output);

    /// What is to be flattened.
    Picture* Input() { return &m_input; }
    const Picture& Output() const { return m_output; }

    /// Converts the input as it now is.
    void Flatten() const;

private:
    Picture m_input;
    Picture m_output;
};

}  // namespace KivFisheyeTools

#endif

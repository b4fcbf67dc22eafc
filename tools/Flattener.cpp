#include "Flattener.h"

#include "Failure.h"

namespace KivFisheyeTools {

namespace {

Size OutputSize(const ViewCamera& camera, const ViewArguments& arguments, OutputKind output) {
    if (!arguments.size.empty()) {
        return SizeOfText(arguments.size).value();
    }
    Size size = camera.RecommendedSize();
    if (!HasExtent(arguments.lens) || size.width == 0 || size.height == 0) {
        throw Failure("the lens image is too small for any output size; give one with --size");
    }
    // The halves of a dual panorama are equally high: a last odd row would stay black.
    const bool needsEvenHeight = output == OutputKind::Video || IsDualPanorama(arguments);
    size.height += needsEvenHeight ? size.height % 2 : 0;
    return size;
}

/// Sets the input, on which the size of the output depends.
Picture PreparedOutput(const ViewCamera& camera, const ViewArguments& arguments, Picture* input,
                       OutputKind output) {
    camera.SetInput(input);
    const Size size = OutputSize(camera, arguments, output);
    return {size.width, size.height, input->bytesPerPixel};
}

}  // namespace

Flattener::Flattener(const ViewArguments& arguments, const Size& input, OutputKind output)
    : ViewCamera(arguments),
      m_input(input.width, input.height, BytesPerPixelOf(arguments)),
      m_output(PreparedOutput(*this, arguments, &m_input, output)) {
    Expect((*this)->SetOutputVideoParams(FrameOf(&m_output)),
           "the library refuses the output size");
}

void Flattener::Flatten() const {
    Expect((*this)->Process(0), "the library cannot convert the picture");
}

}  // namespace KivFisheyeTools

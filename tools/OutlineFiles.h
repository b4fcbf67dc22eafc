#ifndef KIVFISHEYE_TOOLS_OUTLINE_FILES_H
#define KIVFISHEYE_TOOLS_OUTLINE_FILES_H

#include <optional>
#include <string>
#include <vector>

#include "Numbers.h"
#include "ViewOutlines.h"

namespace KivFisheyeTools {

/// Writes the outlines as polygons over a picture of this size, which is not in the file. A pixel
/// is a square whose sides are 1.
void WriteOutlineSvg(const std::string& path, const std::vector<Outline>& outlines,
                     const Size& size);

/// What is outlined: where the view looks, and the output size that shapes a virtual camera's view.
struct OutlinedView {
    Angles angles;
    std::optional<Size> output;
    std::vector<Outline> outlines;
};

/// Writes the outlines as fractions of an input of this size, with what they are those of.
void WriteOutlineJson(const std::string& path, const ViewArguments& view, const OutlinedView& shown,
                      const Size& input);

}  // namespace KivFisheyeTools

#endif

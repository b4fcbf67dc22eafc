#ifndef KIVFISHEYE_TOOLS_OUTLINE_FILES_H
#define KIVFISHEYE_TOOLS_OUTLINE_FILES_H

#include <string>
#include <vector>

#include "Numbers.h"
#include "ViewOutlines.h"

namespace KivFisheyeTools {

/// Writes the outlines as polygons over a picture of this size, which is not in the file. A pixel
/// is a square whose sides are 1.
void WriteOutlineSvg(const std::string& path, const std::vector<Outline>& outlines,
                     const Size& size);

/// Writes the outlines as fractions of the frame, with what they are those of.
void WriteOutlineJson(const std::string& path, const std::vector<Outline>& outlines,
                      const ViewArguments& view, const Angles& angles, const Size& size);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_JSON_TEXT_H
#define KIVFISHEYE_TOOLS_JSON_TEXT_H

#include <vector>

#include "Point.h"
#include "TextFile.h"
#include "ViewArguments.h"

namespace KivFisheyeTools {

/// Writes the members "mount", "view" and "lens" of an object, and a comma.
void WriteView(const ViewArguments& view, TextFile* file);

/// Writes [[x, y], ...].
void WritePoints(const std::vector<Point>& points, TextFile* file);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_JSON_TEXT_H
#define KIVFISHEYE_TOOLS_JSON_TEXT_H

#include <string>
#include <vector>

#include "Numbers.h"
#include "Point.h"
#include "TextFile.h"
#include "ViewArguments.h"

namespace KivFisheyeTools {

/// Writes the members "mount", "view" and "lens" of an object, and a comma. Of the lens it writes
/// what the view depends on.
void WriteView(const ViewArguments& view, TextFile* file);

/// Writes a member with the sides of a picture, and a comma.
void WriteSize(const std::string& name, const Size& size, TextFile* file);

/// Writes [[x, y], ...].
void WritePoints(const std::vector<Point>& points, TextFile* file);

}  // namespace KivFisheyeTools

#endif

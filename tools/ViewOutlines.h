#ifndef KIVFISHEYE_TOOLS_VIEW_OUTLINES_H
#define KIVFISHEYE_TOOLS_VIEW_OUTLINES_H

#include <cstdint>
#include <string>
#include <vector>

#include "Point.h"
#include "ViewCamera.h"

namespace KivFisheyeTools {

/// What an outline surrounds: all that the lens sees, what a view shows, or the lower half of it.
enum class OutlineRole { Lens, View, LowerHalf };

/// A closed line in the frame. All its points are numbers.
struct Outline {
    std::string name;
    OutlineRole role;
    std::vector<Point> points;
};

/// Throws `UsageError` unless the library gives an outline of this view so many points.
void CheckPointCount(const ViewArguments& view, std::uint32_t count);

/// The outlines of what the camera now shows, each of `count` points and less those that have no
/// place; that of the lens comes first. A virtual camera needs its output set.
std::vector<Outline> OutlinesOf(const ViewCamera& camera, const ViewArguments& view,
                                std::uint32_t count);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_ROOM_SCENE_H
#define KIVFISHEYE_TOOLS_ROOM_SCENE_H

#include <functional>

#include "Lens.h"
#include "Picture.h"

namespace KivFisheyeTools {

/// How far off the axis the lens image reaches; beyond it the picture is black.
constexpr double kLensImageReach = Radians(92.0);

/// Hears now and then which part of the work is done, from 0 to 1.
using ProgressListener = std::function<void(double)>;

/// Renders the room as a fisheye camera of this mount sees it, as RGB with 3 bytes a pixel.
Picture RenderRoomScene(const Lens& lens, KivFisheyeLib::MountType mount,
                        const ProgressListener& listener = {});

}  // namespace KivFisheyeTools

#endif

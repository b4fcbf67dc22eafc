#ifndef KIVFISHEYE_TOOLS_ROOM_H
#define KIVFISHEYE_TOOLS_ROOM_H

#include "Color.h"
#include "Lens.h"

namespace KivFisheyeTools {

/// A furnished room, in metres around the middle of its floor: 6 from west to east, 5 from south to
/// north, 3 high.
constexpr double kRoomHalfWidth = 3.0;
constexpr double kRoomHalfDepth = 2.5;
constexpr double kRoomHeight = 3.0;

/// Where the camera of each mount is: under the middle of the ceiling, on the table in the middle
/// of the room, or on the middle of the south wall.
Vector CameraPositionInRoom(KivFisheyeLib::MountType mount);

/// The colour that an eye inside the room sees in a direction.
Color ColorInRoom(const Vector& eye, const Vector& direction);

}  // namespace KivFisheyeTools

#endif

#ifndef KIVFISHEYE_TOOLS_ROOM_SURFACES_H
#define KIVFISHEYE_TOOLS_ROOM_SURFACES_H

#include "Color.h"

/// The paint of the room's surfaces, in metres, without light and shadow.
namespace KivFisheyeTools {

enum class Wall { North, East, South, West };

/// `along` runs from the wall's middle to the right as seen from inside the room.
Color WallPaint(Wall wall, double along, double height);

/// `x` points east and `y` north, from the middle of the room.
Color FloorPaint(double x, double y);
Color CeilingPaint(double x, double y);

}  // namespace KivFisheyeTools

#endif

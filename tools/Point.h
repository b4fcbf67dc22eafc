#ifndef KIVFISHEYE_TOOLS_POINT_H
#define KIVFISHEYE_TOOLS_POINT_H

namespace KivFisheyeTools {

/// A place in a plane; in a frame, as fractions of its width and height from its top left.
struct Point {
    float x;
    float y;
};

}  // namespace KivFisheyeTools

#endif

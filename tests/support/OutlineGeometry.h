#ifndef KIVFISHEYE_TESTS_OUTLINE_GEOMETRY_H
#define KIVFISHEYE_TESTS_OUTLINE_GEOMETRY_H

#include <vector>

#include "KivFisheyeLib.h"
#include "support/PointList.h"

// Outlines by geometry in double precision. Points are fractions of the frame, y downward.

/// `count` points of the lens ellipse made smaller by a ratio, from its right by way of its top.
std::vector<Point> Ellipse(const KivFisheyeLib::DewarpParams& lens, double ratio, int count);

/// Half of the lens's ring from an angle on: the rim, and back along the inner edge.
std::vector<Point> HalfRing(const KivFisheyeLib::DewarpParams& lens, double startDegrees,
                            int count);

/// A wall panorama, from the lower end of its left side up, and along its bottom last.
std::vector<Point> WallOutline(const KivFisheyeLib::DewarpParams& lens, int count);

/// Degrees, and the zoom factor.
struct Aim {
    float pan;
    float tilt;
    float zoom;
};

/// Aims that a virtual camera on this mount keeps as they are, in both regimes of its zoom.
std::vector<Aim> AimsOf(KivFisheyeLib::MountType mount);

/// What a virtual camera of this mount shows in a picture of this width over height, from the upper
/// end of its left side down, and along its top last. What lies beyond the rim is on it.
std::vector<Point> ViewOutline(KivFisheyeLib::MountType mount,
                               const KivFisheyeLib::DewarpParams& lens, const Aim& aim,
                               double aspect, int count);

#endif

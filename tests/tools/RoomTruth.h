#ifndef KIVFISHEYE_TESTS_ROOM_TRUTH_H
#define KIVFISHEYE_TESTS_ROOM_TRUTH_H

#include <KivFisheyeTypes.h>

#include <functional>

#include "Picture.h"

/// Where things of the room are, worked out from its measures and the lens equation alone. Angles
/// are degrees; bearings run clockwise from north, elevations from the horizon up.
namespace RoomTruth {

using KivFisheyeTools::Picture;

struct Place {
    double column;
    double row;
};

struct Sphere {
    double bearing;
    double elevation;
};

/// The half axes of the lens image as parts of the frame.
struct LensRadii {
    double x = 0.5;
    double y = 0.5;
};

/// The direction from a ceiling or table camera in the middle of the room to a point of the room,
/// in metres east, north and up.
Sphere DirectionTo(KivFisheyeLib::MountType mount, double east, double north, double up);

/// Where a fisheye picture shows a direction.
Place InFisheye(const Picture& picture, KivFisheyeLib::MountType mount, const Sphere& direction,
                const LensRadii& radii = {});

/// Where a full panorama of a ceiling or table camera shows a direction.
Place InPanorama(const Picture& panorama, KivFisheyeLib::MountType mount, const Sphere& direction,
                 double pan, double innerRadius = 0.0);

/// Where a dual panorama of a ceiling or table camera shows a direction.
Place InDualPanorama(const Picture& panorama, KivFisheyeLib::MountType mount,
                     const Sphere& direction, double pan, double innerRadius = 0.0);

/// Where the panorama of a wall camera shows a direction in front of it.
Place InWallPanorama(const Picture& panorama, const Sphere& direction, double wallViewAngle);

/// A virtual camera: what its middle shows, and how many degrees its height spans.
struct VirtualView {
    double pan;
    double tilt;
    double fieldOfView;
};

/// Where a virtual camera with a field of view of at most 90 degrees shows a direction; NaN for
/// what lies behind it.
Place InVirtualView(const Picture& picture, KivFisheyeLib::MountType mount, const Sphere& direction,
                    const VirtualView& view);

/// Whether a direction keeps this far, in degrees, from the lines and labels of a ceiling or table
/// camera's graticule.
bool IsClearOfGraticule(const Sphere& direction, double margin);

double Brightness(const Picture& picture, std::uint32_t column, std::uint32_t row);
/// Between pixels.
double BrightnessAt(const Picture& picture, const Place& place);

/// The centre of what is darker than its surroundings in `brightness`, from -reach to reach. NaN
/// when nothing stands out by `contrast`.
double DarkCentre(const std::function<double(double)>& brightness, double reach, double contrast);

/// The wall that a pixel's colour belongs to: 'N' is blue, 'E' yellow, 'S' green, 'W' red, and '?'
/// anything else.
char WallOfColor(const Picture& picture, const Place& place);

/// Whether a pixel is dark and brown, as the door is.
bool IsBrown(const Picture& picture, const Place& place);

}  // namespace RoomTruth

#endif

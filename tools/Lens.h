#ifndef KIVFISHEYE_TOOLS_LENS_H
#define KIVFISHEYE_TOOLS_LENS_H

#include <KivFisheyeTypes.h>

#include <cstdint>

/// The geometry of a fisheye picture.
///
/// The lens is equidistant and centred on the frame: a point's distance from the centre, measured
/// in semi-axes of the ellipse `radiusX * width` by `radiusY * height`, is its angle off the
/// optical axis, with 1.0 at 90 degrees. Column i of a frame of width w lies at i / (w - 1) - 0.5
/// of the width, row j of a frame of height h at 0.5 - j / (h - 1) of the height, so that up is
/// positive.
///
/// In the world x points east, y north and z up. Bearings run clockwise from north seen from above,
/// elevations from the horizon up. All angles are radians.
namespace KivFisheyeTools {

constexpr double kPi = 3.14159265358979323846;

constexpr double Radians(double degrees) {
    return degrees * (kPi / 180.0);
}
constexpr double Degrees(double radians) {
    return radians * (180.0 / kPi);
}

struct Vector {
    double x;
    double y;
    double z;
};

Vector Cross(const Vector& a, const Vector& b);

/// A point of the lens image in semi-axes from its centre, right and up.
struct LensPoint {
    double right;
    double up;

    /// 1 at the rim.
    double Radius() const;
    /// The angle between what is seen there and the optical axis.
    double OffAxis() const;
};

struct Lens {
    std::uint32_t width;
    std::uint32_t height;
    double radiusX;
    double radiusY;

    /// The lens point at a place in the frame; whole numbers are the centres of pixels.
    LensPoint PointAt(double column, double row) const;
};

/// Where a camera is and how it is turned. The three axes are unit vectors.
struct CameraPose {
    Vector position;
    Vector forward;
    Vector up;
    Vector right;

    CameraPose(const Vector& cameraPosition, const Vector& cameraForward, const Vector& cameraUp);

    /// The unit vector from the camera to what it sees at a point.
    Vector DirectionOf(const LensPoint& point) const;
};

/// The way a mount turns the camera: a ceiling camera looks down and a table camera up, both with
/// north at the top of the picture; a wall camera looks north.
CameraPose PoseOfMount(KivFisheyeLib::MountType mount, const Vector& position);

}  // namespace KivFisheyeTools

#endif

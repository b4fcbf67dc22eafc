#include "RoomTruth.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace RoomTruth {

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

const std::uint8_t* PixelAt(const Picture& picture, std::uint32_t column, std::uint32_t row) {
    return picture.Row(row) + std::size_t{column} * picture.bytesPerPixel;
}

double DistanceToMultiple(double value, double step) {
    return std::abs(std::remainder(value, step));
}

/// A unit vector in the camera's frame: to the picture's right, to its top, and along the axis.
struct CameraVector {
    double right;
    double up;
    double along;
};

double Dot(const CameraVector& a, const CameraVector& b) {
    return a.right * b.right + a.up * b.up + a.along * b.along;
}

/// What the middle of a virtual camera shows.
CameraVector MiddleOf(KivFisheyeLib::MountType mount, double pan, double tilt) {
    const double p = pan * kDegree;
    const double t = tilt * kDegree;
    switch (mount) {
        case KivFisheyeLib::MountTypeCeiling:
            return {std::sin(p) * std::sin(t), std::cos(p) * std::sin(t), std::cos(t)};
        case KivFisheyeLib::MountTypeTable:
            return {-std::sin(p) * std::sin(t), std::cos(p) * std::sin(t), std::cos(t)};
        case KivFisheyeLib::MountTypeWall:
            break;
    }
    return {std::sin(p) * std::cos(t), std::sin(t), std::cos(p) * std::cos(t)};
}

CameraVector InCamera(KivFisheyeLib::MountType mount, const Sphere& direction) {
    const double east =
        std::sin(direction.bearing * kDegree) * std::cos(direction.elevation * kDegree);
    const double north =
        std::cos(direction.bearing * kDegree) * std::cos(direction.elevation * kDegree);
    const double up = std::sin(direction.elevation * kDegree);
    switch (mount) {
        case KivFisheyeLib::MountTypeTable:
            return {-east, north, up};
        case KivFisheyeLib::MountTypeCeiling:
            return {east, north, -up};
        case KivFisheyeLib::MountTypeWall:
            break;
    }
    return {east, up, north};
}

double PartOfTurn(double degrees) {
    return degrees / 360.0 - std::floor(degrees / 360.0);
}

/// How far down a panorama shows an elevation, 0 to 1.
double PartOfRing(KivFisheyeLib::MountType mount, double elevation, double innerRadius) {
    const bool isTable = mount == KivFisheyeLib::MountTypeTable;
    const double offAxis = isTable ? 90.0 - elevation : 90.0 + elevation;
    const double fromInner = (offAxis / 90.0 - innerRadius) / (1.0 - innerRadius);
    return isTable ? fromInner : 1.0 - fromInner;
}

}  // namespace

Sphere DirectionTo(KivFisheyeLib::MountType mount, double east, double north, double up) {
    const double eye = mount == KivFisheyeLib::MountTypeCeiling ? 2.7 : 0.75;
    return {std::atan2(east, north) / kDegree,
            std::atan2(up - eye, std::hypot(east, north)) / kDegree};
}

Place InFisheye(const Picture& picture, KivFisheyeLib::MountType mount, const Sphere& direction,
                const LensRadii& radii) {
    const CameraVector seen = InCamera(mount, direction);
    const double aside = std::hypot(seen.right, seen.up);
    const double radius = std::atan2(aside, seen.along) / kDegree / 90.0;
    const double right = aside > 0.0 ? radius * seen.right / aside : 0.0;
    const double up = aside > 0.0 ? radius * seen.up / aside : 0.0;
    return {(0.5 + right * radii.x) * (picture.width - 1.0),
            (0.5 - up * radii.y) * (picture.height - 1.0)};
}

Place InPanorama(const Picture& panorama, KivFisheyeLib::MountType mount, const Sphere& direction,
                 double pan, double innerRadius) {
    const bool isTable = mount == KivFisheyeLib::MountTypeTable;
    // The first and the last column both look where the picture begins; a pan moves the columns on.
    const double unturned =
        PartOfTurn(direction.bearing - (isTable ? 270.0 : 90.0)) * (panorama.width - 1.0);
    const double moved = unturned / panorama.width - pan / 360.0;
    return {(moved - std::floor(moved)) * panorama.width,
            PartOfRing(mount, direction.elevation, innerRadius) * (panorama.height - 1.0)};
}

Place InDualPanorama(const Picture& panorama, KivFisheyeLib::MountType mount,
                     const Sphere& direction, double pan, double innerRadius) {
    // The upper half looks from west over north to east on both mounts, its first and its last
    // column included, and the lower half on to west. A pan moves the columns on, through both
    // halves.
    const double halfTurns = 2.0 * PartOfTurn(direction.bearing - 270.0);
    const double column = (halfTurns - std::floor(halfTurns)) * (panorama.width - 1.0);
    const double moved = (std::floor(halfTurns) + column / panorama.width - pan / 180.0) / 2.0;
    const double turned = 2.0 * (moved - std::floor(moved));
    const double half = panorama.height / 2;
    return {(turned - std::floor(turned)) * panorama.width,
            std::floor(turned) * half +
                PartOfRing(mount, direction.elevation, innerRadius) * (half - 1.0)};
}

Place InWallPanorama(const Picture& panorama, const Sphere& direction, double wallViewAngle) {
    return {(0.5 + direction.bearing / 180.0) * (panorama.width - 1.0),
            (0.5 - direction.elevation / (2.0 * wallViewAngle)) * (panorama.height - 1.0)};
}

Place InVirtualView(const Picture& picture, KivFisheyeLib::MountType mount, const Sphere& direction,
                    const VirtualView& view) {
    // The eye stands a hundredth before the middle of the lens, which draws all angles together.
    constexpr double kNearness = 1.01;
    const CameraVector seen = InCamera(mount, direction);
    const double aside = std::hypot(seen.right, seen.up);
    const double angle = std::atan2(aside, seen.along) / kNearness;
    const CameraVector ray{std::sin(angle) * seen.right / aside, std::sin(angle) * seen.up / aside,
                           std::cos(angle)};
    const CameraVector middle = MiddleOf(mount, view.pan, view.tilt);
    // A quarter turn of the tilt more is what is up in the picture.
    const CameraVector up = MiddleOf(mount, view.pan, view.tilt + 90.0);
    const CameraVector right{middle.along * up.up - middle.up * up.along,
                             middle.right * up.along - middle.along * up.right,
                             middle.up * up.right - middle.right * up.up};
    if (Dot(ray, middle) <= 0.0) {
        const double nowhere = std::numeric_limits<double>::quiet_NaN();
        return {nowhere, nowhere};
    }
    const double half = std::tan(view.fieldOfView / 2.0 * kDegree);
    const double aspect = 1.0 * picture.width / picture.height;
    const double x = Dot(ray, right) / Dot(ray, middle) / half / aspect;
    const double y = Dot(ray, up) / Dot(ray, middle) / half;
    return {(1.0 + x) / 2.0 * (picture.width - 1.0), (1.0 - y) / 2.0 * (picture.height - 1.0)};
}

bool IsClearOfGraticule(const Sphere& direction, double margin) {
    constexpr double kLabelHalfWidth = 4.0;
    const double wide = margin / std::cos(direction.elevation * kDegree);
    const bool isClearOfLabels =
        std::min({DistanceToMultiple(direction.bearing - 52.5, 180.0),
                  DistanceToMultiple(direction.bearing + 52.5, 180.0)}) > kLabelHalfWidth + margin;
    return isClearOfLabels && DistanceToMultiple(direction.bearing, 15.0) > wide &&
           DistanceToMultiple(direction.elevation, 10.0) > margin;
}

double Brightness(const Picture& picture, std::uint32_t column, std::uint32_t row) {
    const std::uint8_t* pixel = PixelAt(picture, column, row);
    return (pixel[0] + pixel[1] + pixel[2]) / 3.0;
}

double BrightnessAt(const Picture& picture, const Place& place) {
    const double column = std::clamp(place.column, 0.0, picture.width - 1.001);
    const double row = std::clamp(place.row, 0.0, picture.height - 1.001);
    const auto left = static_cast<std::uint32_t>(column);
    const auto top = static_cast<std::uint32_t>(row);
    const double x = column - left;
    const double y = row - top;
    const double upper =
        (1.0 - x) * Brightness(picture, left, top) + x * Brightness(picture, left + 1, top);
    const double lower =
        (1.0 - x) * Brightness(picture, left, top + 1) + x * Brightness(picture, left + 1, top + 1);
    return (1.0 - y) * upper + y * lower;
}

double DarkCentre(const std::function<double(double)>& brightness, double reach, double contrast) {
    constexpr int kSteps = 60;
    const double first = brightness(-reach);
    const double last = brightness(reach);
    double weight = 0.0;
    double moment = 0.0;
    double deepest = 0.0;
    for (int i = -kSteps; i <= kSteps; ++i) {
        const double part = static_cast<double>(i) / kSteps;
        const double surroundings = first + (last - first) * (part + 1.0) / 2.0;
        const double darkness = std::max(0.0, surroundings - brightness(part * reach));
        deepest = std::max(deepest, darkness);
        weight += darkness;
        moment += darkness * part * reach;
    }
    return deepest < contrast ? std::numeric_limits<double>::quiet_NaN() : moment / weight;
}

bool IsBrown(const Picture& picture, const Place& place) {
    const std::uint8_t* pixel =
        PixelAt(picture, static_cast<std::uint32_t>(std::lround(place.column)) % picture.width,
                static_cast<std::uint32_t>(std::lround(place.row)));
    return pixel[0] > pixel[1] + 20 && pixel[1] > pixel[2] + 15 && pixel[0] < 180;
}

char WallOfColor(const Picture& picture, const Place& place) {
    const std::uint8_t* pixel =
        PixelAt(picture, static_cast<std::uint32_t>(std::lround(place.column)) % picture.width,
                static_cast<std::uint32_t>(std::lround(place.row)));
    const int red = pixel[0];
    const int green = pixel[1];
    const int blue = pixel[2];
    if (blue > red + 30 && blue > green + 10) {
        return 'N';
    }
    if (red > blue + 40 && green > blue + 30 && red > green) {
        return 'E';
    }
    if (green > red + 15 && green > blue + 15) {
        return 'S';
    }
    if (red > green + 25 && red > blue + 25) {
        return 'W';
    }
    return '?';
}

}  // namespace RoomTruth

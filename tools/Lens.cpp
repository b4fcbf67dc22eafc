#include "Lens.h"

#include <cmath>

namespace KivFisheyeTools {

namespace {

constexpr Vector kNorth{0.0, 1.0, 0.0};
constexpr Vector kUp{0.0, 0.0, 1.0};
constexpr Vector kDown{0.0, 0.0, -1.0};

/// A position along a side of the frame, from 0 at the first pixel's centre to 1 at the last's.
double Fraction(double position, std::uint32_t size) {
    return size > 1 ? position / (size - 1.0) : 0.5;
}

}  // namespace

Vector Cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double LensPoint::Radius() const {
    return std::sqrt(right * right + up * up);
}

double LensPoint::OffAxis() const {
    return Radius() * (kPi / 2.0);
}

LensPoint Lens::PointAt(double column, double row) const {
    return {(Fraction(column, width) - 0.5) / radiusX, (0.5 - Fraction(row, height)) / radiusY};
}

CameraPose::CameraPose(const Vector& cameraPosition, const Vector& cameraForward,
                       const Vector& cameraUp)
    : position(cameraPosition),
      forward(cameraForward),
      up(cameraUp),
      right(Cross(cameraForward, cameraUp)) {}

Vector CameraPose::DirectionOf(const LensPoint& point) const {
    const double offAxis = point.OffAxis();
    const double radius = point.Radius();
    const double along = std::cos(offAxis);
    const double aside = radius > 0.0 ? std::sin(offAxis) / radius : 0.0;
    const double across = aside * point.right;
    const double upward = aside * point.up;
    return {along * forward.x + across * right.x + upward * up.x,
            along * forward.y + across * right.y + upward * up.y,
            along * forward.z + across * right.z + upward * up.z};
}

CameraPose PoseOfMount(KivFisheyeLib::MountType mount, const Vector& position) {
    switch (mount) {
        case KivFisheyeLib::MountTypeCeiling:
            return {position, kDown, kNorth};
        case KivFisheyeLib::MountTypeTable:
            return {position, kUp, kNorth};
        case KivFisheyeLib::MountTypeWall:
            break;
    }
    return {position, kNorth, kUp};
}

}  // namespace KivFisheyeTools

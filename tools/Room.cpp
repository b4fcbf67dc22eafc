#include "Room.h"

#include <cmath>
#include <initializer_list>
#include <limits>

#include "RoomSurfaces.h"

namespace KivFisheyeTools {

namespace {

constexpr double kNever = std::numeric_limits<double>::infinity();

constexpr double kTableHeight = 0.70;
constexpr double kTableRadius = 0.60;
constexpr double kTableLegRadius = 0.07;
constexpr double kSideboardDepth = 0.45;
constexpr double kSideboardHalfWidth = 1.10;
constexpr double kSideboardHeight = 0.75;

/// Something seen: its distance in lengths of the direction, and its lit colour.
struct Sight {
    double distance;
    Color color;
};

Vector PointOnRay(const Vector& eye, const Vector& direction, double distance) {
    return {eye.x + distance * direction.x, eye.y + distance * direction.y,
            eye.z + distance * direction.z};
}

/// How bright a surface is near an edge where it meets another one.
double EdgeLight(double distance) {
    const double near = distance / 0.20;
    return 1.0 - 0.20 / (1.0 + near * near);
}

/// The distance to the plane, ahead of the eye, that bounds one axis of the room.
double DistanceToSide(double eye, double direction, double low, double high) {
    if (direction > 0.0) {
        return (high - eye) / direction;
    }
    return direction < 0.0 ? (low - eye) / direction : kNever;
}

Color LitWall(Wall wall, double along, double halfLength, double height) {
    constexpr double kWallLight = 0.97;
    const double light = kWallLight * EdgeLight(halfLength - std::abs(along)) * EdgeLight(height) *
                         EdgeLight(kRoomHeight - height);
    return Scaled(WallPaint(wall, along, height), light);
}

Color LitFloor(const Vector& point) {
    const double radius = (point.x * point.x + point.y * point.y) / (kTableRadius * kTableRadius);
    const double tableShadow = 1.0 - 0.30 / (1.0 + radius * radius);
    const double light = 0.96 * tableShadow * EdgeLight(kRoomHalfWidth - std::abs(point.x)) *
                         EdgeLight(kRoomHalfDepth - std::abs(point.y));
    return Scaled(FloorPaint(point.x, point.y), light);
}

Color LitCeiling(const Vector& point) {
    const double light = EdgeLight(kRoomHalfWidth - std::abs(point.x)) *
                         EdgeLight(kRoomHalfDepth - std::abs(point.y));
    return Scaled(CeilingPaint(point.x, point.y), light);
}

Sight SeeShell(const Vector& eye, const Vector& direction) {
    const double toX = DistanceToSide(eye.x, direction.x, -kRoomHalfWidth, kRoomHalfWidth);
    const double toY = DistanceToSide(eye.y, direction.y, -kRoomHalfDepth, kRoomHalfDepth);
    const double toZ = DistanceToSide(eye.z, direction.z, 0.0, kRoomHeight);
    const double distance = std::fmin(toX, std::fmin(toY, toZ));
    const Vector point = PointOnRay(eye, direction, distance);
    if (distance == toZ) {
        return {distance, direction.z > 0.0 ? LitCeiling(point) : LitFloor(point)};
    }
    if (distance == toX) {
        const bool isEast = direction.x > 0.0;
        return {distance, LitWall(isEast ? Wall::East : Wall::West, isEast ? -point.y : point.y,
                                  kRoomHalfDepth, point.z)};
    }
    const bool isNorth = direction.y > 0.0;
    return {distance, LitWall(isNorth ? Wall::North : Wall::South, isNorth ? point.x : -point.x,
                              kRoomHalfWidth, point.z)};
}

Sight SeeTableTop(const Vector& eye, const Vector& direction) {
    constexpr double kRim = 0.03;
    constexpr Color kTop{0.93, 0.89, 0.82};
    constexpr Color kEdge{0.66, 0.52, 0.38};
    const double distance = (kTableHeight - eye.z) / direction.z;
    if (!(distance > 0.0)) {
        return {kNever, kTop};
    }
    const Vector point = PointOnRay(eye, direction, distance);
    const double radius = std::hypot(point.x, point.y);
    if (radius > kTableRadius) {
        return {kNever, kTop};
    }
    return {distance, radius > kTableRadius - kRim ? kEdge : kTop};
}

Sight SeeTableLeg(const Vector& eye, const Vector& direction) {
    constexpr Color kMetal{0.50, 0.51, 0.53};
    const double a = direction.x * direction.x + direction.y * direction.y;
    const double b = eye.x * direction.x + eye.y * direction.y;
    const double c = eye.x * eye.x + eye.y * eye.y - kTableLegRadius * kTableLegRadius;
    const double discriminant = b * b - a * c;
    if (discriminant < 0.0 || a == 0.0) {
        return {kNever, kMetal};
    }
    const double distance = (-b - std::sqrt(discriminant)) / a;
    const double height = eye.z + distance * direction.z;
    if (distance <= 0.0 || height > kTableHeight) {
        return {kNever, kMetal};
    }
    return {distance, kMetal};
}

/// The sideboard stands at the east wall, so only its front, its top and its two ends are seen.
Sight SeeSideboard(const Vector& eye, const Vector& direction) {
    constexpr double kFrontX = kRoomHalfWidth - kSideboardDepth;
    constexpr Color kTop{0.80, 0.70, 0.58};
    constexpr Color kFront{0.70, 0.58, 0.45};
    constexpr Color kSeam{0.45, 0.36, 0.27};
    Sight seen{kNever, kFront};

    const double toFront = (kFrontX - eye.x) / direction.x;
    const Vector front = PointOnRay(eye, direction, toFront);
    if (toFront > 0.0 && std::abs(front.y) < kSideboardHalfWidth && front.z < kSideboardHeight) {
        const double door = kSideboardHalfWidth * 2.0 / 3.0;
        const double fromSeam =
            std::abs(front.y / door + 0.5 - std::round(front.y / door + 0.5)) * door;
        seen = {toFront, fromSeam < 0.008 || front.z < 0.08 ? kSeam : kFront};
    }
    const double toTop = (kSideboardHeight - eye.z) / direction.z;
    const Vector top = PointOnRay(eye, direction, toTop);
    if (toTop > 0.0 && toTop < seen.distance && top.x > kFrontX && top.x < kRoomHalfWidth &&
        std::abs(top.y) < kSideboardHalfWidth) {
        seen = {toTop, Scaled(kTop, EdgeLight(kRoomHalfWidth - top.x))};
    }
    const double endY = std::copysign(kSideboardHalfWidth, eye.y);
    const double toEnd = (endY - eye.y) / direction.y;
    const Vector end = PointOnRay(eye, direction, toEnd);
    if (std::abs(eye.y) > kSideboardHalfWidth && toEnd > 0.0 && toEnd < seen.distance &&
        end.x > kFrontX && end.x < kRoomHalfWidth && end.z < kSideboardHeight) {
        seen = {toEnd, Scaled(kFront, 0.85)};
    }
    return seen;
}

}  // namespace

Vector CameraPositionInRoom(KivFisheyeLib::MountType mount) {
    switch (mount) {
        case KivFisheyeLib::MountTypeCeiling:
            return {0.0, 0.0, 2.7};
        case KivFisheyeLib::MountTypeTable:
            return {0.0, 0.0, 0.75};
        case KivFisheyeLib::MountTypeWall:
            break;
    }
    return {0.0, -kRoomHalfDepth, 1.5};
}

Color ColorInRoom(const Vector& eye, const Vector& direction) {
    Sight nearest = SeeShell(eye, direction);
    if (direction.z < 0.0) {
        for (const Sight& sight : {SeeTableTop(eye, direction), SeeTableLeg(eye, direction),
                                   SeeSideboard(eye, direction)}) {
            if (sight.distance < nearest.distance) {
                nearest = sight;
            }
        }
    }
    return nearest.color;
}

}  // namespace KivFisheyeTools

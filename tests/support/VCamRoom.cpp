#include "support/VCamRoom.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

using namespace KivFisheyeLib;

namespace {

constexpr double kPi = 3.14159265358979323846;

/// From metres east, north and up of the camera to the camera's own axes. A ceiling camera looks
/// down and a table camera up, both with north at the top; a wall camera looks north.
Vector3 SeenFrom(MountType mount, const Vector3& world) {
    switch (mount) {
        case MountTypeCeiling:
            return {world.x, world.y, world.z};
        case MountTypeTable:
            return {-world.x, world.y, -world.z};
        case MountTypeWall:
            break;
    }
    return {world.x, world.z, -world.y};
}

Vector3 PositionOf(MountType mount) {
    switch (mount) {
        case MountTypeCeiling:
            return {0.3, -0.2, 2.8};
        case MountTypeTable:
            return {-0.4, 0.25, 0.8};
        case MountTypeWall:
            break;
    }
    return {0.2, -2.5, 1.6};
}

std::size_t IndexIn(const VCamFrame& frame, int column, int row) {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(frame.dstWidth) +
           static_cast<std::size_t>(column);
}

}  // namespace

double Vector3::Length() const {
    return std::sqrt(Dot(*this, *this));
}

Vector3 operator+(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Vector3 operator-(const Vector3& a, const Vector3& b) {
    return a + -1.0 * b;
}

Vector3 operator*(double factor, const Vector3& a) {
    return {factor * a.x, factor * a.y, factor * a.z};
}

double Dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 Cross(const Vector3& a, const Vector3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double RadiansOf(double degrees) {
    return degrees * kPi / 180.0;
}

double Distance(const PicturePoint& a, const PicturePoint& b) {
    return std::hypot(a.column - b.column, a.row - b.row);
}

ViewAxes AxesOf(MountType mount, double pan, double tilt) {
    const double p = RadiansOf(pan);
    const double t = RadiansOf(std::fabs(tilt));
    ViewAxes axes{};
    switch (mount) {
        case MountTypeCeiling:  // from the top of the frame clockwise
            axes.forward = {std::sin(p) * std::sin(t), std::cos(p) * std::sin(t), -std::cos(t)};
            axes.right = {std::cos(p), -std::sin(p), 0.0};
            break;
        case MountTypeTable:  // from the bottom of the frame anticlockwise
            axes.forward = {std::sin(p) * std::sin(t), -std::cos(p) * std::sin(t), -std::cos(t)};
            axes.right = {std::cos(p), std::sin(p), 0.0};
            break;
        case MountTypeWall: {  // to the right, and up
            const double up = RadiansOf(tilt);
            axes.forward = {std::sin(p) * std::cos(up), std::sin(up), -std::cos(p) * std::cos(up)};
            axes.right = {std::cos(p), 0.0, std::sin(p)};
            break;
        }
    }
    axes.up = Cross(axes.right, axes.forward);
    return axes;
}

ExactLens::ExactLens(const VCamFrame& frame) : m_frame(frame) {}

PicturePoint ExactLens::PointOf(const Vector3& direction) const {
    const double aside = std::hypot(direction.x, direction.y);
    const double radius = 2.0 * std::atan2(aside, -direction.z) / kPi;
    const double x = aside > 0.0 ? radius * direction.x / aside : 0.0;
    const double y = aside > 0.0 ? radius * direction.y / aside : 0.0;
    return {(m_frame.srcWidth - 1) * (0.5 + static_cast<double>(m_frame.radiusX) * x),
            (m_frame.srcHeight - 1) * (0.5 - static_cast<double>(m_frame.radiusY) * y)};
}

Vector3 ExactLens::DirectionOf(const PicturePoint& point) const {
    const double x =
        (point.column / (m_frame.srcWidth - 1) - 0.5) / static_cast<double>(m_frame.radiusX);
    const double y =
        (0.5 - point.row / (m_frame.srcHeight - 1)) / static_cast<double>(m_frame.radiusY);
    const double radius = std::hypot(x, y);
    const double angle = radius * kPi / 2.0;
    if (radius == 0.0) {
        return {0.0, 0.0, -1.0};
    }
    return {std::sin(angle) * x / radius, std::sin(angle) * y / radius, -std::cos(angle)};
}

double ExactLens::AngleOfPixel() const {
    return kPi / 2.0 /
           std::min(static_cast<double>(m_frame.radiusX) * (m_frame.srcWidth - 1),
                    static_cast<double>(m_frame.radiusY) * (m_frame.srcHeight - 1));
}

ExactVCam::ExactVCam(const VCamFrame& frame, const ViewAxes& axes)
    : m_frame(frame),
      m_axes(axes),
      m_lens(frame),
      m_halfHeight(std::tan(RadiansOf(static_cast<double>(frame.fieldOfView)) / 2.0)) {}

// In units of the distance between the eye and the rectangle.
Vector3 ExactVCam::RayOf(const PicturePoint& output) const {
    const double x = 2.0 * output.column / (m_frame.dstWidth - 1) - 1.0;
    const double y = 1.0 - 2.0 * output.row / (m_frame.dstHeight - 1);
    const double halfWidth = m_halfHeight * static_cast<double>(m_frame.aspect);
    return m_axes.forward + x * halfWidth * m_axes.right + y * m_halfHeight * m_axes.up;
}

double ExactVCam::OffAxis(const PicturePoint& output) const {
    const Vector3 ray = RayOf(output);
    return (1.0 + static_cast<double>(m_frame.eyeZ)) * std::atan2(std::hypot(ray.x, ray.y), -ray.z);
}

Vector3 ExactVCam::DirectionAt(const PicturePoint& output) const {
    const Vector3 ray = RayOf(output);
    const double aside = std::hypot(ray.x, ray.y);
    const double angle = OffAxis(output);
    if (aside == 0.0) {
        return {0.0, 0.0, -1.0};
    }
    return {std::sin(angle) * ray.x / aside, std::sin(angle) * ray.y / aside, -std::cos(angle)};
}

PicturePoint ExactVCam::SourceOf(const PicturePoint& output) const {
    return m_lens.PointOf(DirectionAt(output));
}

double ExactVCam::PixelsPerRadian(const PicturePoint& output) const {
    const double inMiddle = (m_frame.dstHeight - 1) / 2.0 / m_halfHeight;
    const PicturePoint middle{(m_frame.dstWidth - 1) / 2.0, (m_frame.dstHeight - 1) / 2.0};
    const double slope = Distance(output, middle) / inMiddle;
    return inMiddle * (1.0 + slope * slope);
}

std::vector<RoomEdge> EdgesOfRoom(MountType mount) {
    constexpr double kEast = 3.0;
    constexpr double kNorth = 2.5;
    constexpr double kHeight = 3.0;
    std::vector<RoomEdge> edges;
    const auto add = [&](const Vector3& from, const Vector3& to) {
        const Vector3 eye = PositionOf(mount);
        const bool isVertical = from.x == to.x && from.y == to.y;
        edges.push_back({SeenFrom(mount, from - eye), SeenFrom(mount, to - eye), isVertical});
    };
    for (const double east : {-kEast, kEast}) {
        for (const double north : {-kNorth, kNorth}) {
            add({east, north, 0.0}, {east, north, kHeight});
        }
    }
    for (const double height : {0.0, kHeight}) {
        for (const double side : {-1.0, 1.0}) {
            add({-kEast, side * kNorth, height}, {kEast, side * kNorth, height});
            add({side * kEast, -kNorth, height}, {side * kEast, kNorth, height});
        }
    }
    // The door's posts and lintel in the north wall.
    add({0.6, kNorth, 0.0}, {0.6, kNorth, 2.1});
    add({1.5, kNorth, 0.0}, {1.5, kNorth, 2.1});
    add({0.6, kNorth, 2.1}, {1.5, kNorth, 2.1});
    return edges;
}

PicturePoint MiddleOf(VCamForm form, const PixelPlace& place) {
    const double middle = form == VCamForm::C ? 0.5 : 0.0;
    return {place.column + middle, place.row + middle};
}

std::vector<Vector3> DirectionsOf(VCamForm form, const VCamFrame& frame,
                                  const SourcePlaces& places) {
    const ExactLens lens(frame);
    std::vector<Vector3> directions;
    for (const auto& place : places) {
        directions.push_back(place ? lens.DirectionOf(MiddleOf(form, *place))
                                   : Vector3{0.0, 0.0, 0.0});
    }
    return directions;
}

std::vector<PicturePoint> CrossingsOf(const RoomEdge& edge, const VCamFrame& frame,
                                      const std::vector<Vector3>& directions) {
    const Vector3 normal = Cross(edge.from, edge.to);
    // Towards the edge's inside from the planes through the camera and its ends.
    const Vector3 fromInward = Cross(normal, edge.from);
    const Vector3 toInward = Cross(edge.to, normal);
    std::vector<double> heights;
    std::vector<bool> isBetween;
    for (const Vector3& seen : directions) {
        heights.push_back(Dot(seen, normal));
        isBetween.push_back(Dot(seen, fromInward) > 0.0 && Dot(seen, toInward) > 0.0);
    }
    std::vector<PicturePoint> points;
    const auto addBetween = [&](int column, int row, int nextColumn, int nextRow) {
        const std::size_t at = IndexIn(frame, column, row);
        const std::size_t next = IndexIn(frame, nextColumn, nextRow);
        const bool isCrossed = (heights[at] < 0.0) != (heights[next] < 0.0);
        if (isCrossed && isBetween[at] && isBetween[next]) {
            const double part = heights[at] / (heights[at] - heights[next]);
            points.push_back({column + part * (nextColumn - column), row + part * (nextRow - row)});
        }
    };
    for (int row = 0; row + 1 < frame.dstHeight; ++row) {
        for (int column = 0; column + 1 < frame.dstWidth; ++column) {
            addBetween(column, row, column + 1, row);
            addBetween(column, row, column, row + 1);
        }
    }
    return points;
}

FittedLine LineThrough(const std::vector<PicturePoint>& points) {
    FittedLine line{{0.0, 0.0}, {0.0, 0.0}, 0.0};
    for (const PicturePoint& point : points) {
        line.middle.column += point.column / static_cast<double>(points.size());
        line.middle.row += point.row / static_cast<double>(points.size());
    }
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (const PicturePoint& point : points) {
        const double x = point.column - line.middle.column;
        const double y = point.row - line.middle.row;
        xx += x * x;
        xy += x * y;
        yy += y * y;
    }
    const double angle = std::atan2(2.0 * xy, xx - yy) / 2.0;
    const double sign = std::sin(angle) < 0.0 ? -1.0 : 1.0;
    line.along = {sign * std::cos(angle), sign * std::sin(angle)};
    for (const PicturePoint& point : points) {
        const double aside = (point.column - line.middle.column) * line.along.row -
                             (point.row - line.middle.row) * line.along.column;
        line.residual = std::max(line.residual, std::fabs(aside));
    }
    return line;
}

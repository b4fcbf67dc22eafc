#include "support/OutlineGeometry.h"

#include <cmath>

using namespace KivFisheyeLib;

namespace {

const double kPi = std::acos(-1.0);

double Radians(double degrees) {
    return degrees * kPi / 180.0;
}

struct Direction {
    double x;
    double y;
    double z;
};

Direction operator*(double factor, const Direction& d) {
    return {factor * d.x, factor * d.y, factor * d.z};
}

Direction operator+(const Direction& a, const Direction& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

/// What lies in this direction, seen by a lens that looks along -z: x is right and y is up. Beyond
/// the rim a point lies on it. `stretch` is what the eye's distance makes of angles.
Point OnLens(const DewarpParams& lens, const Direction& d, double stretch = 1.0) {
    const double fromAxis = std::hypot(d.x, d.y);
    const double angle = std::atan2(fromAxis, -d.z) * stretch;
    const double distance = std::fmin(angle / (kPi / 2), 1.0);
    return {0.5 + static_cast<double>(lens.radiusX) * distance * d.x / fromAxis,
            0.5 - static_cast<double>(lens.radiusY) * distance * d.y / fromAxis};
}

Point OnEllipse(const DewarpParams& lens, double ratio, double angle) {
    return {0.5 + static_cast<double>(lens.radiusX) * ratio * std::cos(angle),
            0.5 - static_cast<double>(lens.radiusY) * ratio * std::sin(angle)};
}

/// Which way a virtual camera looks, and where its picture's top is.
struct Axes {
    Axes(MountType mount, const Aim& aim) {
        const double pan = Radians(static_cast<double>(aim.pan));
        const double tilt = Radians(static_cast<double>(aim.tilt));
        if (mount == MountTypeWall) {
            ahead = {std::sin(pan) * std::cos(tilt), std::sin(tilt),
                     -std::cos(pan) * std::cos(tilt)};
            up = {-std::sin(pan) * std::sin(tilt), std::cos(tilt), std::cos(pan) * std::sin(tilt)};
        } else {
            // Clockwise from the top of the frame, or anticlockwise from its bottom.
            const double side = mount == MountTypeCeiling ? std::sin(pan) : -std::sin(pan);
            const double top = std::cos(pan);
            ahead = {side * std::sin(tilt), top * std::sin(tilt), -std::cos(tilt)};
            up = {side * std::cos(tilt), top * std::cos(tilt), std::sin(tilt)};
        }
        right = {ahead.y * up.z - ahead.z * up.y, ahead.z * up.x - ahead.x * up.z,
                 ahead.x * up.y - ahead.y * up.x};
    }

    Direction ahead{};
    Direction up{};
    Direction right{};
};

/// `count` points along the sides of a rectangle from corner to corner, of what `place(x, y)` makes
/// of them. A corner is the first point of its side.
template <class Place>
std::vector<Point> AlongSides(const double (&corners)[4][2], int count, Place place) {
    const int n = count / 4;
    std::vector<Point> points;
    for (int i = 0; i < count; ++i) {
        const double* const from = corners[i / n];
        const double* const to = corners[(i / n + 1) % 4];
        const double part = static_cast<double>(i % n) / n;
        points.push_back(
            place(from[0] + part * (to[0] - from[0]), from[1] + part * (to[1] - from[1])));
    }
    return points;
}

}  // namespace

std::vector<Point> Ellipse(const DewarpParams& lens, double ratio, int count) {
    std::vector<Point> points;
    for (int i = 0; i < count; ++i) {
        points.push_back(OnEllipse(lens, ratio, 2 * kPi * i / count));
    }
    return points;
}

std::vector<Point> HalfRing(const DewarpParams& lens, double startDegrees, int count) {
    const int half = count / 2;
    std::vector<Point> points;
    for (int i = 0; i < count; ++i) {
        const int step = i < half ? i : count - 1 - i;
        const double ratio = i < half ? 1.0 : static_cast<double>(lens.innerRadiusRatio);
        points.push_back(OnEllipse(lens, ratio, Radians(startDegrees) + kPi * step / (half - 1)));
    }
    return points;
}

std::vector<Point> WallOutline(const DewarpParams& lens, int count) {
    const double reach = static_cast<double>(lens.wallViewAngle);
    // Latitudes of a picture count downward, and grow upward on its outline.
    const double corners[4][2] = {{-90, -reach}, {-90, reach}, {90, reach}, {90, -reach}};
    return AlongSides(corners, count, [&](double longitudeDegrees, double latitudeDegrees) {
        const double longitude = Radians(longitudeDegrees);
        const double latitude = Radians(latitudeDegrees);
        return OnLens(lens, {std::cos(latitude) * std::sin(longitude), std::sin(latitude),
                             -std::cos(latitude) * std::cos(longitude)});
    });
}

std::vector<Point> ViewOutline(MountType mount, const DewarpParams& lens, const Aim& aim,
                               double aspect, int count) {
    const double zoom = static_cast<double>(aim.zoom);
    const double eye = zoom < 2.0 ? 1.0 - 0.99 * (zoom - 1.0) : 0.01;
    const double high = std::tan(Radians(zoom < 2.0 ? 90.0 : 90.0 - 10.0 * (zoom - 2.0)) / 2);
    const double corners[4][2] = {{-1, 1}, {-1, -1}, {1, -1}, {1, 1}};
    const Axes axes(mount, aim);
    return AlongSides(corners, count, [&](double x, double y) {
        const Direction ray = axes.ahead + x * high * aspect * axes.right + y * high * axes.up;
        return OnLens(lens, ray, 1.0 + eye);
    });
}

std::vector<Aim> AimsOf(MountType mount) {
    const float sign = mount == MountTypeTable ? -1.0F : 1.0F;
    const float pan = mount == MountTypeWall ? -30.0F : 250.0F;
    return {{0.0F, 0.0F, 1.0F},          {0.0F, 0.0F, 1.5F},         {0.0F, sign * 10.0F, 2.0F},
            {20.0F, sign * 25.0F, 3.0F}, {pan, sign * 33.0F, 4.25F}, {pan, sign * 70.0F, 8.0F}};
}

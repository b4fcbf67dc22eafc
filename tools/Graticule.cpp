#include "Graticule.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "Room.h"

namespace KivFisheyeTools {

namespace {

constexpr Color kInk{0.13, 0.17, 0.24};
constexpr Color kPaper{0.99, 0.99, 0.98};

// All in degrees.
constexpr double kMeridianStep = 15.0;
constexpr double kLabelledMeridianStep = 30.0;
constexpr double kLatitudeStep = 10.0;

constexpr double kMainLineWidth = 0.36;
constexpr double kLineWidth = 0.24;
constexpr double kMainLineOpacity = 0.75;
constexpr double kLineOpacity = 0.55;
constexpr double kLastLatitude = 80.0;
constexpr double kLastMinorLatitude = 70.0;

constexpr double kLabelUnit = 0.40;
constexpr double kLabelPen = 0.24;
constexpr double kLabelMargin = 0.7;

constexpr double kWindUnit = 0.95;
constexpr double kWindPen = 0.62;
constexpr double kWindRadius = 5.0;
constexpr double kWindRing = 0.35;

/// The multiple of `step` next to `value`.
double Nearest(double value, double step) {
    return step * std::round(value / step);
}

/// The shorter way around from one bearing to another.
double BearingBetween(double from, double to) {
    const double difference = to - from;
    return difference - Nearest(difference, 360.0);
}

double BearingOf(double east, double north) {
    return Degrees(std::atan2(east, north));
}

std::string Signed(int number) {
    return (number > 0 ? "+" : "") + std::to_string(number);
}

double LineOpacity(double distance, bool isMain) {
    const double width = isMain ? kMainLineWidth : kLineWidth;
    return distance < width / 2.0 ? (isMain ? kMainLineOpacity : kLineOpacity) : 0.0;
}

Color WithLines(const Color& seen, double bearing, double elevation) {
    const double latitude = Nearest(elevation, kLatitudeStep);
    const double meridian = Nearest(bearing, kMeridianStep);
    const double toMeridian = Degrees(
        std::asin(std::abs(std::sin(Radians(bearing - meridian))) * std::cos(Radians(elevation))));

    double opacity = 0.0;
    if (std::abs(latitude) <= kLastLatitude) {
        opacity = LineOpacity(std::abs(elevation - latitude), latitude == 0.0);
    }
    const bool isMain = std::abs(meridian - Nearest(meridian, kLabelledMeridianStep)) < 1.0;
    if (std::abs(elevation) < (isMain ? kLastLatitude : kLastMinorLatitude)) {
        opacity = std::max(opacity, LineOpacity(toMeridian, isMain));
    }
    return Blended(seen, kInk, opacity);
}

}  // namespace

Graticule::Graticule(KivFisheyeLib::MountType mount) : m_mount(mount) {
    switch (mount) {
        case KivFisheyeLib::MountTypeCeiling:
            AddWinds(-25.0);
            AddMeridianLabels(-5.0);
            AddLatitudeLabels({52.5, 127.5, 232.5, 307.5});
            break;
        case KivFisheyeLib::MountTypeTable:
            AddWinds(15.0);
            AddMeridianLabels(5.0);
            AddLatitudeLabels({52.5, 127.5, 232.5, 307.5});
            break;
        case KivFisheyeLib::MountTypeWall:
            AddWinds(0.0);
            AddMeridianLabels(15.0);
            AddMeridianLabels(-45.0);
            AddLatitudeLabels({-22.5, 22.5});
            break;
    }
}

Graticule::LabelRow Graticule::EmptyRow(double elevation) const {
    const bool isWall = m_mount == KivFisheyeLib::MountTypeWall;
    return {elevation, isWall ? std::cos(Radians(elevation)) : 1.0, {}};
}

void Graticule::AddWinds(double elevation) {
    const Vector eye = CameraPositionInRoom(m_mount);
    m_winds = EmptyRow(elevation);
    m_winds.labels = {{BearingOf(-eye.x, kRoomHalfDepth - eye.y), StrokeText("N")},
                      {BearingOf(kRoomHalfWidth - eye.x, -eye.y), StrokeText("E")},
                      {BearingOf(-kRoomHalfWidth - eye.x, -eye.y), StrokeText("W")}};
    if (m_mount != KivFisheyeLib::MountTypeWall) {
        m_winds.labels.push_back({BearingOf(-eye.x, -kRoomHalfDepth - eye.y), StrokeText("S")});
    }
}

void Graticule::AddMeridianLabels(double elevation) {
    constexpr int kStep = static_cast<int>(kLabelledMeridianStep);
    LabelRow row = EmptyRow(elevation);
    for (int bearing = 0; bearing < 360; bearing += kStep) {
        const bool isAtEdge = bearing % 180 == 90 && m_mount == KivFisheyeLib::MountTypeWall;
        if (!isAtEdge) {
            row.labels.push_back({1.0 * bearing, StrokeText(std::to_string(bearing))});
        }
    }
    m_labelRows.push_back(row);
}

void Graticule::AddLatitudeLabels(const std::vector<double>& bearings) {
    constexpr int kStep = static_cast<int>(kLatitudeStep);
    constexpr int kLast = static_cast<int>(kLastLatitude) - kStep;
    const int lowest = m_mount == KivFisheyeLib::MountTypeTable ? kStep : -kLast;
    const int highest = m_mount == KivFisheyeLib::MountTypeCeiling ? -kStep : kLast;
    for (int elevation = lowest; elevation <= highest; elevation += kStep) {
        if (elevation != 0) {
            LabelRow row = EmptyRow(elevation);
            for (const double bearing : bearings) {
                row.labels.push_back({bearing, StrokeText(Signed(elevation))});
            }
            m_labelRows.push_back(row);
        }
    }
}

Color Graticule::DrawnOver(const Color& seen, const Vector& direction) const {
    const double bearing = BearingOf(direction.x, direction.y);
    const double elevation = Degrees(std::asin(std::clamp(direction.z, -1.0, 1.0)));
    if (const std::optional<Color> wind = WindColor(bearing, elevation)) {
        return *wind;
    }
    if (const std::optional<Color> label = LabelColor(seen, bearing, elevation)) {
        return *label;
    }
    return WithLines(seen, bearing, elevation);
}

std::optional<Color> Graticule::WindColor(double bearing, double elevation) const {
    const double y = elevation - m_winds.elevation;
    if (std::abs(y) > kWindRadius) {
        return std::nullopt;
    }
    for (const Label& wind : m_winds.labels) {
        const double x = BearingBetween(wind.bearing, bearing) * m_winds.widthOfBearing;
        const double toRing = kWindRadius - std::sqrt(x * x + y * y);
        if (toRing < 0.0) {
            continue;
        }
        const bool isRing = toRing > kWindRing && toRing < 2.0 * kWindRing;
        const double toLetter =
            wind.text.DistanceTo(x / kWindUnit + wind.text.Width() / 2.0,
                                 y / kWindUnit + StrokeText::kCapitalHeight / 2.0);
        return isRing || toLetter * kWindUnit < kWindPen ? kPaper : kInk;
    }
    return std::nullopt;
}

std::optional<Color> Graticule::LabelColor(const Color& seen, double bearing,
                                           double elevation) const {
    constexpr double kHalfHeight = kLabelUnit * StrokeText::kCapitalHeight / 2.0;
    for (const LabelRow& row : m_labelRows) {
        const double y = elevation - row.elevation;
        if (std::abs(y) > kHalfHeight + kLabelMargin) {
            continue;
        }
        for (const Label& label : row.labels) {
            const double x = BearingBetween(label.bearing, bearing) * row.widthOfBearing;
            const double halfWidth = kLabelUnit * label.text.Width() / 2.0;
            if (std::abs(x) > halfWidth + kLabelMargin) {
                continue;
            }
            const double distance =
                label.text.DistanceTo((x + halfWidth) / kLabelUnit, (y + kHalfHeight) / kLabelUnit);
            return distance * kLabelUnit < kLabelPen ? kInk : Blended(seen, kPaper, 0.6);
        }
    }
    return std::nullopt;
}

}  // namespace KivFisheyeTools

#include "RoomSurfaces.h"

#include <array>
#include <cmath>

#include "Room.h"

namespace KivFisheyeTools {

namespace {

constexpr double kGridStep = 0.5;

constexpr Color kWhite{0.97, 0.97, 0.96};
constexpr Color kJoint{0.78, 0.79, 0.80};

enum class FixtureKind { Door, Window, Painting };

struct Fixture {
    Wall wall;
    FixtureKind kind;
    double left;
    double right;
    double bottom;
    double top;
};

constexpr std::array<Fixture, 7> kFixtures = {{
    {Wall::North, FixtureKind::Window, -2.3, -0.9, 0.9, 2.3},
    {Wall::North, FixtureKind::Window, 0.9, 2.3, 0.9, 2.3},
    {Wall::East, FixtureKind::Painting, -1.9, -0.9, 1.3, 2.1},
    {Wall::East, FixtureKind::Painting, 0.9, 1.9, 1.3, 2.1},
    {Wall::South, FixtureKind::Door, 0.9, 1.9, 0.0, 2.1},
    {Wall::South, FixtureKind::Painting, -2.2, -0.9, 1.2, 2.0},
    {Wall::West, FixtureKind::Window, 0.8, 2.0, 0.9, 2.3},
}};

/// The distance to the nearest line of a grid through 0.
double DistanceToGrid(double position, double step) {
    return std::abs(position - step * std::round(position / step));
}

bool IsInside(double x, double y, double left, double right, double bottom, double top) {
    return x >= left && x <= right && y >= bottom && y <= top;
}

Color DoorPaint(double x, double y, double width, double height) {
    constexpr double kFrame = 0.07;
    constexpr Color kWood{0.62, 0.45, 0.31};
    constexpr Color kPanel{0.55, 0.39, 0.26};
    constexpr Color kHandle{0.86, 0.84, 0.78};
    if (x < kFrame || x > width - kFrame || y > height - kFrame) {
        return kWhite;
    }
    if (IsInside(x, y, 0.14, 0.22, 0.97, 1.02)) {
        return kHandle;
    }
    const bool isPanel = IsInside(x, y, 0.27, width - 0.27, 0.25, 0.90) ||
                         IsInside(x, y, 0.27, width - 0.27, 1.10, height - 0.27);
    return isPanel ? kPanel : kWood;
}

Color WindowPaint(double x, double y, double width, double height) {
    constexpr double kFrame = 0.07;
    constexpr double kBar = 0.025;
    constexpr Color kHorizon{0.93, 0.96, 0.98};
    constexpr Color kSky{0.52, 0.73, 0.93};
    constexpr Color kMeadow{0.60, 0.74, 0.50};
    const bool isFrame = x < kFrame || x > width - kFrame || y < kFrame || y > height - kFrame ||
                         std::abs(x - width / 2.0) < kBar || std::abs(y - height * 0.64) < kBar;
    if (isFrame) {
        return kWhite;
    }
    const double rise = y / height - 0.30;
    return rise < 0.0 ? kMeadow : Blended(kHorizon, kSky, rise / 0.70);
}

Color PaintingPaint(double x, double y, double width, double height) {
    constexpr double kFrame = 0.04;
    constexpr double kMat = 0.12;
    constexpr Color kFrameColor{0.27, 0.25, 0.24};
    constexpr Color kGround{0.90, 0.86, 0.76};
    constexpr Color kSun{0.89, 0.51, 0.30};
    constexpr Color kHill{0.30, 0.47, 0.53};
    const double edge = std::fmin(std::fmin(x, width - x), std::fmin(y, height - y));
    if (edge < kFrame) {
        return kFrameColor;
    }
    if (edge < kMat) {
        return kWhite;
    }
    if (y < 0.30 * height + 0.25 * x) {
        return kHill;
    }
    return std::hypot(x - 0.36 * width, y - 0.66 * height) < 0.13 * height ? kSun : kGround;
}

Color FixturePaint(const Fixture& fixture, double along, double height) {
    const double x = along - fixture.left;
    const double y = height - fixture.bottom;
    const double fixtureWidth = fixture.right - fixture.left;
    const double fixtureHeight = fixture.top - fixture.bottom;
    switch (fixture.kind) {
        case FixtureKind::Door:
            return DoorPaint(x, y, fixtureWidth, fixtureHeight);
        case FixtureKind::Window:
            return WindowPaint(x, y, fixtureWidth, fixtureHeight);
        case FixtureKind::Painting:
            break;
    }
    return PaintingPaint(x, y, fixtureWidth, fixtureHeight);
}

Color PlainWallPaint(Wall wall) {
    switch (wall) {
        case Wall::North:
            return {0.66, 0.78, 0.89};
        case Wall::East:
            return {0.94, 0.85, 0.63};
        case Wall::South:
            return {0.72, 0.84, 0.69};
        case Wall::West:
            break;
    }
    return {0.92, 0.73, 0.67};
}

}  // namespace

Color WallPaint(Wall wall, double along, double height) {
    constexpr double kSkirting = 0.10;
    constexpr double kCornice = 0.06;
    for (const Fixture& fixture : kFixtures) {
        if (fixture.wall == wall &&
            IsInside(along, height, fixture.left, fixture.right, fixture.bottom, fixture.top)) {
            return FixturePaint(fixture, along, height);
        }
    }
    if (height < kSkirting || height > kRoomHeight - kCornice) {
        return kWhite;
    }
    return PlainWallPaint(wall);
}

Color FloorPaint(double x, double y) {
    constexpr double kHalfJoint = 0.012;
    constexpr double kRugHalfWidth = 1.75;
    constexpr double kRugHalfDepth = 1.25;
    constexpr double kRugBorder = 0.12;
    constexpr Color kLightTile{0.83, 0.79, 0.73};
    constexpr Color kDarkTile{0.75, 0.70, 0.64};
    constexpr Color kGrout{0.94, 0.92, 0.88};
    constexpr Color kRug{0.42, 0.50, 0.62};
    constexpr Color kRugEdge{0.86, 0.83, 0.76};

    const double rugEdge = std::fmin(kRugHalfWidth - std::abs(x), kRugHalfDepth - std::abs(y));
    if (rugEdge > 0.0) {
        const bool isStripe = rugEdge > kRugBorder && rugEdge < kRugBorder + 0.05;
        return isStripe ? kRugEdge : kRug;
    }
    if (DistanceToGrid(x, kGridStep) < kHalfJoint || DistanceToGrid(y, kGridStep) < kHalfJoint) {
        return kGrout;
    }
    const int tiles = static_cast<int>(std::floor(x / kGridStep) + std::floor(y / kGridStep));
    return tiles % 2 == 0 ? kLightTile : kDarkTile;
}

Color CeilingPaint(double x, double y) {
    constexpr double kHalfJoint = 0.010;
    constexpr double kLampX = 1.5;
    constexpr double kLampY = 1.25;
    constexpr double kLampHalfWidth = 0.60;
    constexpr double kLampHalfDepth = 0.15;
    constexpr double kLampFrame = 0.03;
    constexpr Color kPanel{0.90, 0.91, 0.91};
    constexpr Color kLamp{1.0, 1.0, 0.95};
    constexpr Color kLampFrameColor{0.55, 0.58, 0.61};

    const double lampEdge = std::fmin(kLampHalfWidth - std::abs(std::abs(x) - kLampX),
                                      kLampHalfDepth - std::abs(std::abs(y) - kLampY));
    if (lampEdge > 0.0) {
        return lampEdge < kLampFrame ? kLampFrameColor : kLamp;
    }
    if (DistanceToGrid(x, kGridStep) < kHalfJoint || DistanceToGrid(y, kGridStep) < kHalfJoint) {
        return kJoint;
    }
    return kPanel;
}

}  // namespace KivFisheyeTools

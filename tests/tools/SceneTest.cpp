#include <gtest/gtest.h>

#include <cmath>

#include "RoomScene.h"
#include "RoomTruth.h"

using namespace RoomTruth;
using KivFisheyeLib::MountType;
using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;
using KivFisheyeLib::MountTypeWall;

namespace {

constexpr std::uint32_t kSide = 512;
/// A quarter of a pixel, in degrees.
constexpr double kTolerance = 0.25 * 180.0 / kSide;

Picture Scene(MountType mount) {
    return KivFisheyeTools::RenderRoomScene({kSide, kSide, 0.5, 0.5}, mount);
}

/// What lies in a direction, between pixels.
double Seen(const Picture& scene, MountType mount, const Sphere& direction) {
    return BrightnessAt(scene, InFisheye(scene, mount, direction));
}

/// Places on the walls without furniture, marks and labels near them: on every wall one to the left
/// and one to the right of its middle.
std::vector<Sphere> PlainPlaces(MountType mount) {
    const double elevation = mount == MountTypeCeiling ? -14.0 : 14.0;
    std::vector<Sphere> places;
    for (const double wall : {0.0, 90.0, 180.0, 270.0}) {
        places.push_back({wall - 10.0, elevation});
        places.push_back({wall + 10.0, elevation});
    }
    return places;
}

}  // namespace

class RoomScene : public testing::TestWithParam<MountType> {};

INSTANTIATE_TEST_SUITE_P(Mounts, RoomScene, testing::Values(MountTypeCeiling, MountTypeTable));

TEST_P(RoomScene, WallsStandAtTheirBearings) {
    const Picture scene = Scene(GetParam());
    const std::string walls = "NNEESSWW";
    const std::vector<Sphere> places = PlainPlaces(GetParam());
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ(WallOfColor(scene, InFisheye(scene, GetParam(), places[i])), walls[i])
            << "bearing " << places[i].bearing;
    }
}

TEST_P(RoomScene, MeridiansLieAtTheirBearings) {
    const Picture scene = Scene(GetParam());
    const double sign = GetParam() == MountTypeCeiling ? -1.0 : 1.0;
    for (const double bearing : {345.0, 0.0, 15.0, 75.0, 90.0, 105.0, 165.0, 180.0, 195.0, 255.0}) {
        for (const double elevation : {8.0 * sign, 28.0 * sign, 31.0 * sign}) {
            const bool isOnWind =
                std::remainder(bearing, 90.0) == 0.0 && elevation < -20.0 && elevation > -30.5;
            if (isOnWind) {
                continue;
            }
            const auto across = [&](double offset) {
                return Seen(scene, GetParam(), {bearing + offset, elevation});
            };
            EXPECT_NEAR(DarkCentre(across, 1.5, 15.0), 0.0, kTolerance)
                << "bearing " << bearing << ", elevation " << elevation;
        }
    }
}

TEST_P(RoomScene, LatitudesLieAtTheirElevations) {
    const Picture scene = Scene(GetParam());
    const double sign = GetParam() == MountTypeCeiling ? -1.0 : 1.0;
    for (const double elevation : {10.0, 20.0, 30.0}) {
        for (const Sphere& place : PlainPlaces(GetParam())) {
            const auto across = [&](double offset) {
                return Seen(scene, GetParam(), {place.bearing, sign * elevation + offset});
            };
            EXPECT_NEAR(DarkCentre(across, 1.5, 15.0), 0.0, kTolerance)
                << "bearing " << place.bearing << ", elevation " << sign * elevation;
        }
    }
}

TEST_P(RoomScene, LensImageEndsTwoDegreesBeyondTheHorizon) {
    const MountType mount = GetParam();
    // A lens image that lies whole inside the frame.
    const Picture scene = KivFisheyeTools::RenderRoomScene({600, 500, 0.4, 0.45}, mount);
    const double sign = mount == MountTypeCeiling ? 1.0 : -1.0;
    for (int bearing = 3; bearing < 360; bearing += 10) {
        const Place inside = InFisheye(scene, mount, {1.0 * bearing, 1.4 * sign}, {0.4, 0.45});
        const Place outside = InFisheye(scene, mount, {1.0 * bearing, 2.9 * sign}, {0.4, 0.45});
        EXPECT_GT(BrightnessAt(scene, inside), 50.0) << bearing;
        EXPECT_EQ(BrightnessAt(scene, outside), 0.0) << bearing;
    }
}

TEST(RoomScene, WallsAreSeenThroughAnEllipticLens) {
    const Picture scene = KivFisheyeTools::RenderRoomScene({900, 500, 0.4, 0.45}, MountTypeTable);
    const std::string walls = "NNEESSWW";
    const std::vector<Sphere> places = PlainPlaces(MountTypeTable);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Place place = InFisheye(scene, MountTypeTable, places[i], {0.4, 0.45});
        EXPECT_EQ(WallOfColor(scene, place), walls[i]);
    }
}

TEST(RoomScene, WallCameraLooksNorth) {
    const Picture scene = Scene(MountTypeWall);
    // The north wall is 5 m ahead and 6 m wide, the others begin at its edges, 31 degrees aside.
    for (const double elevation : {-7.0, 7.0}) {
        const auto wallAt = [&](double bearing) {
            return WallOfColor(scene, InFisheye(scene, MountTypeWall, {bearing, elevation}));
        };
        EXPECT_EQ(wallAt(-8.0), 'N');
        EXPECT_EQ(wallAt(8.0), 'N');
        EXPECT_EQ(wallAt(-79.0), 'W');
        EXPECT_EQ(wallAt(-65.0), 'W');
    }
    EXPECT_EQ(WallOfColor(scene, InFisheye(scene, MountTypeWall, {50.0, 7.0})), 'E');
    EXPECT_EQ(WallOfColor(scene, InFisheye(scene, MountTypeWall, {79.0, 12.0})), 'E');
}

TEST(RoomScene, WallCameraShowsMeridiansAndLatitudes) {
    const Picture scene = Scene(MountTypeWall);
    for (const double bearing : {-75.0, -60.0, 75.0}) {
        const auto across = [&](double offset) {
            return Seen(scene, MountTypeWall, {bearing + offset, -7.0});
        };
        EXPECT_NEAR(DarkCentre(across, 1.5, 15.0), 0.0, kTolerance) << bearing;
    }
    for (const double elevation : {-10.0, 0.0, 10.0}) {
        const auto across = [&](double offset) {
            return Seen(scene, MountTypeWall, {-67.0, elevation + offset});
        };
        EXPECT_NEAR(DarkCentre(across, 1.5, 15.0), 0.0, kTolerance) << elevation;
    }
}

TEST(RoomScene, CeilingJointsAreStraightInTheWorld) {
    const Picture scene = Scene(MountTypeTable);
    int checked = 0;
    // The joints 1 m east and west of the middle, where no lamp hangs, and their like to the north.
    for (const double joint : {-1.0, 1.0}) {
        for (int step = -18; step <= 18; ++step) {
            const double along = 0.05 * step;
            const auto across = [&](double offset) {
                return Seen(scene, MountTypeTable,
                            DirectionTo(MountTypeTable, joint + offset, along, 3.0));
            };
            const bool isNearCrossing = std::abs(std::remainder(along, 0.5)) < 0.1;
            const Sphere direction = DirectionTo(MountTypeTable, joint, along, 3.0);
            if (isNearCrossing || !IsClearOfGraticule(direction, 1.6)) {
                continue;
            }
            EXPECT_NEAR(DarkCentre(across, 0.05, 5.0), 0.0, 0.008) << joint << ", " << along;
            ++checked;
        }
    }
    EXPECT_GE(checked, 10);
}

TEST(RoomScene, DoorStandsUprightInTheSouthWall) {
    // From 0.9 m to 1.9 m west of the middle and 2.1 m high, in a white frame 7 cm wide.
    const Picture scene = Scene(MountTypeCeiling);
    const auto placeOf = [&](double west, double height) {
        return InFisheye(scene, MountTypeCeiling,
                         DirectionTo(MountTypeCeiling, -west, -2.5, height));
    };
    int checked = 0;
    for (int step = 3; step < 20; ++step) {
        const double height = 0.1 * step;
        const Sphere edge = DirectionTo(MountTypeCeiling, -0.9, -2.5, height);
        if (std::abs(std::remainder(edge.elevation, 10.0)) < 1.2) {
            continue;
        }
        EXPECT_EQ(WallOfColor(scene, placeOf(0.85, height)), 'S') << height;
        EXPECT_GT(BrightnessAt(scene, placeOf(0.935, height)), 195.0) << height;
        EXPECT_LT(BrightnessAt(scene, placeOf(1.01, height)), 150.0) << height;
        ++checked;
    }
    EXPECT_GE(checked, 10);
    EXPECT_GT(BrightnessAt(scene, placeOf(1.2, 2.065)), 195.0);
    EXPECT_EQ(WallOfColor(scene, placeOf(1.2, 2.16)), 'S');
}

TEST(RoomScene, SmallestPicturesAreRendered) {
    for (const std::uint32_t width : {1U, 2U, 5U}) {
        const Picture scene =
            KivFisheyeTools::RenderRoomScene({width, 1, 0.5, 0.5}, MountTypeTable);
        EXPECT_EQ(scene.width, width);
        EXPECT_GT(Brightness(scene, width / 2, 0), 0.0);
    }
}

TEST(RoomScene, ListenerHearsTheWorkGrow) {
    double last = -1.0;
    KivFisheyeTools::RenderRoomScene({64, 64, 0.5, 0.5}, MountTypeTable, [&](double part) {
        EXPECT_GT(part, last);
        EXPECT_LE(part, 1.0);
        last = part;
    });
    EXPECT_GE(last, 0.0);
}

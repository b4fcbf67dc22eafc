#include <gtest/gtest.h>

#include "RoomPanorama.h"

using namespace RoomTruth;
using KivFisheyeLib::MountTypeWall;

namespace {

PlacedPanorama Placed(const Picture& picture, double wallViewAngle) {
    return {picture, [=](const Sphere& direction) {
                return InWallPanorama(picture, direction, wallViewAngle);
            }};
}

/// Meridians and latitudes with neither letters nor labels nor edges of the room near them.
void ExpectLinesAreStraight(const PlacedPanorama& panorama) {
    EXPECT_GE(CheckMeridians(panorama, {{-60.0, -15.0, 15.0, 60.0}, {-34.0, -25.0}}, 1.5), 8);
    EXPECT_GE(CheckMeridians(panorama, {{-75.0, -60.0}, {-17.0, -7.0, 7.0}}, 1.5), 6);
    EXPECT_GE(CheckMeridians(panorama, {{75.0}, {-14.0, -7.0, 19.0}}, 1.5), 3);
    EXPECT_GE(CheckLatitudes(panorama, {{-81.0, -67.0}, {-10.0, 0.0, 10.0}}, 1.2), 6);
    EXPECT_GE(CheckLatitudes(panorama, {{-8.0, 8.0, 80.0}, {-10.0, 10.0}}, 1.2), 6);
}

}  // namespace

TEST(WallPanorama, StraightensTheRoom) {
    const RoomPanoramas room(MountTypeWall, "full");
    ExpectLinesAreStraight(Placed(room.Made({"--size", "904x450"}), 45.0));
}

TEST(WallPanorama, IsUprightAndUnmirrored) {
    const PlacedPanorama panorama =
        Placed(RoomPanoramas(MountTypeWall, "full").Made({"--size", "904x450"}), 45.0);
    const auto wallAt = [&](const Sphere& direction) {
        return WallOfColor(panorama.picture, panorama.placeOf(direction));
    };
    EXPECT_EQ(wallAt({-79.0, 7.0}), 'W');
    EXPECT_EQ(wallAt({-65.0, -7.0}), 'W');
    EXPECT_EQ(wallAt({-8.0, 7.0}), 'N');
    EXPECT_EQ(wallAt({8.0, -7.0}), 'N');
    EXPECT_EQ(wallAt({50.0, 7.0}), 'E');
    EXPECT_EQ(wallAt({79.0, 12.0}), 'E');
    // The ceiling is white and the rug on the floor dark.
    EXPECT_GT(BrightnessAt(panorama.picture, panorama.placeOf({5.0, 35.0})), 180.0);
    EXPECT_LT(BrightnessAt(panorama.picture, panorama.placeOf({5.0, -35.0})), 130.0);
}

TEST(WallPanorama, ReachesAsFarAsTheWallViewAngle) {
    const RoomPanoramas room(MountTypeWall, "full");
    ExpectLinesAreStraight(
        Placed(room.Made({"--wall-view-angle", "90", "--size", "904x900"}), 90.0));
    const PlacedPanorama low =
        Placed(room.Made({"--wall-view-angle", "15", "--size", "904x150"}), 15.0);
    EXPECT_GE(CheckMeridians(low, {{-75.0, -60.0}, {-7.0, 7.0}}, 1.5), 4);
    EXPECT_GE(CheckLatitudes(low, {{-81.0, -67.0}, {-10.0, 10.0}}, 1.2), 4);
}

TEST(WallPanorama, FollowsAnEllipticLens) {
    const RoomPanoramas room(MountTypeWall, "full", {0.4, 0.45}, 750, 650);
    const std::vector<std::string> options = {"--radius-x", "0.4",    "--radius-y",
                                              "0.45",       "--size", "904x450"};
    ExpectLinesAreStraight(Placed(room.Made(options), 45.0));
}

TEST(WallPanorama, IsTheSameInBothPixelFormats) {
    ExpectSameInBothPixelFormats(RoomPanoramas(MountTypeWall, "full", {}, 301, 300));
}

TEST(WallPanorama, SaysThatItDoesNotTurn) {
    const RoomPanoramas room(MountTypeWall, "full", {}, 64, 64);
    const Picture plain = room.Made({});
    const ToolRun run = room.Run({"--pan", "30"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors,
              "kivfisheye: the view is limited to pan 0 instead of pan 30; the panorama of a wall "
              "camera does not turn\n");
    EXPECT_EQ(room.Last().pixels, plain.pixels);
    EXPECT_EQ(room.Made({"--pan", "0"}).pixels, plain.pixels);
}

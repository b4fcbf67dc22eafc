#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <utility>

#include "RoomScene.h"
#include "RoomTruth.h"
#include "ToolRun.h"

using namespace RoomTruth;
using KivFisheyeLib::MountType;
using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;

namespace {

std::string NameOf(MountType mount) {
    return mount == MountTypeTable ? "table" : "ceiling";
}

/// Elevations on all four walls between the lines and letters: for meridians of 30 degrees and, as
/// those have labels near the horizon, for the others.
std::vector<double> PlainElevations(MountType mount) {
    return mount == MountTypeTable ? std::vector<double>{8.0, 22.5, 31.5}
                                   : std::vector<double>{-8.5, -17.0, -31.2};
}

/// Bearings between the meridians and fixtures, to the left and right of the middles of the walls.
constexpr double kPlainBearings[] = {352.0, 8.0, 82.0, 98.0, 172.0, 188.0, 262.0, 278.0};

/// A folder with a picture of the room and its panorama.
class Panorama {
public:
    explicit Panorama(MountType mount, const LensRadii& radii = {}, std::uint32_t width = 600,
                      std::uint32_t height = 600)
        : m_mount(mount) {
        KivFisheyeTools::WritePicture(
            m_folder.File("scene.png"),
            KivFisheyeTools::RenderRoomScene({width, height, radii.x, radii.y}, mount));
    }

    Picture Made(const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {
            "dewarp", "scene.png", "panorama.png", "--mount", NameOf(m_mount), "--view", "full"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ToolRun run = RunTool(m_folder, arguments);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.output, "");
        return KivFisheyeTools::ReadPicture(m_folder.File("panorama.png"), 3);
    }

private:
    TemporaryFolder m_folder;
    MountType m_mount;
};

/// The mean of some pixels of a row or column.
double MeanBrightness(const Picture& picture, const Place& centre, int halfColumns, int halfRows) {
    double sum = 0.0;
    for (int i = -halfColumns; i <= halfColumns; ++i) {
        for (int j = -halfRows; j <= halfRows; ++j) {
            sum += BrightnessAt(picture, {centre.column + i, centre.row + j});
        }
    }
    return sum / ((2 * halfColumns + 1) * (2 * halfRows + 1));
}

bool IsNearSeam(const Picture& panorama, const Place& place) {
    return place.column < 12.0 || place.column > panorama.width - 12.0;
}

void ExpectMeridiansAreVertical(const Picture& panorama, MountType mount, double pan) {
    int checked = 0;
    for (const double bearing : {345.0, 0.0, 15.0, 75.0, 90.0, 105.0, 165.0, 180.0, 195.0, 255.0}) {
        for (const double elevation : PlainElevations(mount)) {
            const Place place = InPanorama(panorama, mount, {bearing, elevation}, pan);
            const bool isOnMain = std::remainder(bearing, 30.0) == 0.0;
            if (IsNearSeam(panorama, place) || (isOnMain && std::abs(elevation) < 9.0)) {
                continue;
            }
            const auto across = [&](double offset) {
                return MeanBrightness(panorama, {place.column + offset, place.row}, 0, 3);
            };
            EXPECT_NEAR(DarkCentre(across, panorama.width / 300.0, 12.0), 0.0, 1.0)
                << "pan " << pan << ", bearing " << bearing << ", elevation " << elevation;
            ++checked;
        }
    }
    EXPECT_GE(checked, 20);
}

void ExpectLatitudesAreHorizontal(const Picture& panorama, MountType mount, double pan,
                                  double innerRadius = 0.0) {
    const double sign = mount == MountTypeTable ? 1.0 : -1.0;
    int checked = 0;
    for (const double bearing : kPlainBearings) {
        for (const double elevation : {10.0, 20.0, 30.0}) {
            const Place place =
                InPanorama(panorama, mount, {bearing, sign * elevation}, pan, innerRadius);
            if (IsNearSeam(panorama, place)) {
                continue;
            }
            const auto across = [&](double offset) {
                return MeanBrightness(panorama, {place.column, place.row + offset}, 3, 0);
            };
            EXPECT_NEAR(DarkCentre(across, 6.0, 12.0), 0.0, 0.8)
                << "pan " << pan << ", bearing " << bearing << ", elevation " << elevation;
            ++checked;
        }
    }
    EXPECT_GE(checked, 20);
}

void ExpectWallsAreInOrder(const Picture& panorama, MountType mount, double pan,
                           double innerRadius = 0.0) {
    const std::string walls = "NNEESSWW";
    const double elevation = mount == MountTypeTable ? 13.0 : -13.0;
    for (std::size_t i = 0; i < walls.size(); ++i) {
        const Place place =
            InPanorama(panorama, mount, {kPlainBearings[i], elevation}, pan, innerRadius);
        EXPECT_EQ(WallOfColor(panorama, place), walls[i])
            << "pan " << pan << ", bearing " << kPlainBearings[i];
    }
    // The door is in the right half of its wall, and a painting in the left one.
    const double inDoor = mount == MountTypeTable ? 12.0 : -24.0;
    const Place door = InPanorama(panorama, mount, {204.0, inDoor}, pan, innerRadius);
    const Place mirrored = InPanorama(panorama, mount, {156.0, inDoor}, pan, innerRadius);
    EXPECT_TRUE(IsBrown(panorama, door)) << pan;
    EXPECT_FALSE(IsBrown(panorama, mirrored)) << pan;
}

}  // namespace

class FullPanorama : public testing::TestWithParam<MountType> {};

INSTANTIATE_TEST_SUITE_P(Mounts, FullPanorama, testing::Values(MountTypeCeiling, MountTypeTable));

// A panorama turns by whole columns, so these tests use pans that are whole columns of its width.

TEST_P(FullPanorama, StraightensTheRoom) {
    const Panorama panorama(GetParam());
    for (const int pan : {0, 33, -75}) {
        const Picture picture = panorama.Made({"--pan", std::to_string(pan), "--size", "1200x300"});
        EXPECT_EQ(picture.width, 1200U);
        ExpectMeridiansAreVertical(picture, GetParam(), pan);
        ExpectLatitudesAreHorizontal(picture, GetParam(), pan);
        ExpectWallsAreInOrder(picture, GetParam(), pan);
    }
}

TEST_P(FullPanorama, LeavesTheInnerRadiusOut) {
    const Panorama panorama(GetParam());
    const Picture picture =
        panorama.Made({"--inner-radius", "0.4", "--pan", "33", "--size", "1200x200"});
    EXPECT_EQ(picture.width, 1200U);
    EXPECT_EQ(picture.height, 200U);
    ExpectLatitudesAreHorizontal(picture, GetParam(), 33.0, 0.4);
    ExpectWallsAreInOrder(picture, GetParam(), 33.0, 0.4);
}

TEST_P(FullPanorama, FollowsAnEllipticLens) {
    const Panorama panorama(GetParam(), {0.4, 0.45}, 750, 650);
    const Picture picture =
        panorama.Made({"--radius-x", "0.4", "--radius-y", "0.45", "--pan", "45"});
    ExpectMeridiansAreVertical(picture, GetParam(), 45.0);
    ExpectLatitudesAreHorizontal(picture, GetParam(), 45.0);
    ExpectWallsAreInOrder(picture, GetParam(), 45.0);
}

TEST_P(FullPanorama, IsTheSameInBothPixelFormats) {
    const Panorama panorama(GetParam(), {}, 301, 300);
    const Picture rgb32 = panorama.Made({"--format", "rgb32"});
    const Picture rgb24 = panorama.Made({"--format", "rgb24"});
    ASSERT_EQ(rgb24.pixels.size(), rgb32.pixels.size());
    EXPECT_EQ(std::memcmp(rgb24.pixels.data(), rgb32.pixels.data(), rgb24.pixels.size()), 0);
}

TEST_P(FullPanorama, TurnsByANumberWithAPlus) {
    const Panorama panorama(GetParam(), {}, 64, 64);
    const Picture turned = panorama.Made({"--pan", "90"});
    EXPECT_EQ(panorama.Made({"--pan", "+90"}).pixels, turned.pixels);
    EXPECT_NE(panorama.Made({}).pixels, turned.pixels);
}

TEST_P(FullPanorama, TakesTheSizeOfTheOption) {
    const Panorama panorama(GetParam(), {}, 64, 64);
    const Picture picture = panorama.Made({"--size", "24x7"});
    EXPECT_EQ(picture.width, 24U);
    EXPECT_EQ(picture.height, 7U);
}

#include "RoomPanorama.h"

#include <gtest/gtest.h>

#include <cmath>

#include "RoomScene.h"

using namespace RoomTruth;
using KivFisheyeLib::MountType;
using KivFisheyeLib::MountTypeTable;

namespace {

/// Bearings between the meridians and fixtures, to the left and right of the middles of the walls.
const std::vector<double> kPlainBearings = {352.0, 8.0, 82.0, 98.0, 172.0, 188.0, 262.0, 278.0};

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

bool IsNearSide(const Picture& panorama, const Place& place) {
    return place.column < 12.0 || place.column > panorama.width - 12.0;
}

}  // namespace

RoomPanoramas::RoomPanoramas(MountType mount, const char* view, const LensRadii& radii,
                             std::uint32_t width, std::uint32_t height)
    : m_mount(mount), m_view(view) {
    KivFisheyeTools::WritePicture(
        m_folder.File("scene.png"),
        KivFisheyeTools::RenderRoomScene({width, height, radii.x, radii.y}, mount));
}

ToolRun RoomPanoramas::Run(const std::vector<std::string>& options) const {
    const std::vector<std::string> mounts = {"wall", "ceiling", "table"};
    std::vector<std::string> arguments = {
        "dewarp", "scene.png", "panorama.png", "--mount", mounts.at(m_mount), "--view", m_view};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(m_folder, arguments);
}

Picture RoomPanoramas::Made(const std::vector<std::string>& options) const {
    const ToolRun run = Run(options);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "");
    return Last();
}

Picture RoomPanoramas::Last() const {
    return KivFisheyeTools::ReadPicture(m_folder.File("panorama.png"), 3);
}

void ExpectSameInBothPixelFormats(const RoomPanoramas& room) {
    const Picture rgb32 = room.Made({"--format", "rgb32"});
    const Picture rgb24 = room.Made({"--format", "rgb24"});
    EXPECT_EQ(rgb24.width, rgb32.width);
    EXPECT_EQ(rgb24.pixels, rgb32.pixels);
}

int CheckMeridians(const PlacedPanorama& panorama, const LinesOfRoom& lines, double tolerance) {
    const Picture& picture = panorama.picture;
    int checked = 0;
    for (const double bearing : lines.bearings) {
        for (const double elevation : lines.elevations) {
            const Place place = panorama.placeOf({bearing, elevation});
            if (IsNearSide(picture, place)) {
                continue;
            }
            const auto across = [&](double offset) {
                return MeanBrightness(picture, {place.column + offset, place.row}, 0, 3);
            };
            // 1.2 degrees.
            const double reach =
                1.2 * std::abs(panorama.placeOf({bearing + 1.0, elevation}).column - place.column);
            EXPECT_NEAR(DarkCentre(across, reach, 12.0), 0.0, tolerance)
                << "bearing " << bearing << ", elevation " << elevation;
            ++checked;
        }
    }
    return checked;
}

int CheckLatitudes(const PlacedPanorama& panorama, const LinesOfRoom& lines, double tolerance) {
    int checked = 0;
    for (const double bearing : lines.bearings) {
        for (const double elevation : lines.elevations) {
            const Place place = panorama.placeOf({bearing, elevation});
            if (IsNearSide(panorama.picture, place)) {
                continue;
            }
            const auto across = [&](double offset) {
                return MeanBrightness(panorama.picture, {place.column, place.row + offset}, 3, 0);
            };
            EXPECT_NEAR(DarkCentre(across, 6.0, 12.0), 0.0, tolerance)
                << "bearing " << bearing << ", elevation " << elevation;
            ++checked;
        }
    }
    return checked;
}

void ExpectWallsAreInOrder(const PlacedPanorama& panorama, MountType mount) {
    const std::string walls = "NNEESSWW";
    const double elevation = mount == MountTypeTable ? 13.0 : -13.0;
    for (std::size_t i = 0; i < walls.size(); ++i) {
        EXPECT_EQ(WallOfColor(panorama.picture, panorama.placeOf({kPlainBearings[i], elevation})),
                  walls[i])
            << "bearing " << kPlainBearings[i];
    }
    // The door is in the right half of its wall, and a painting in the left one.
    const double inDoor = mount == MountTypeTable ? 12.0 : -24.0;
    EXPECT_TRUE(IsBrown(panorama.picture, panorama.placeOf({204.0, inDoor})));
    EXPECT_FALSE(IsBrown(panorama.picture, panorama.placeOf({156.0, inDoor})));
}

void ExpectLinesOfTurningPanorama(const PlacedPanorama& panorama, MountType mount) {
    const bool isTable = mount == MountTypeTable;
    const LinesOfRoom minor{
        {345.0, 15.0, 75.0, 105.0, 165.0, 195.0, 255.0},
        isTable ? std::vector<double>{8.0, 22.5, 31.5} : std::vector<double>{-8.5, -17.0, -31.2}};
    // These have labels near the horizon.
    const LinesOfRoom labelled{
        {0.0, 90.0, 180.0},
        isTable ? std::vector<double>{22.5, 31.5} : std::vector<double>{-17.0, -31.2}};
    EXPECT_GE(CheckMeridians(panorama, minor, 1.0) + CheckMeridians(panorama, labelled, 1.0), 20);
    ExpectLatitudesOfTurningPanorama(panorama, mount);
}

void ExpectLatitudesOfTurningPanorama(const PlacedPanorama& panorama, MountType mount) {
    const double sign = mount == MountTypeTable ? 1.0 : -1.0;
    const LinesOfRoom latitudes{kPlainBearings, {10.0 * sign, 20.0 * sign, 30.0 * sign}};
    EXPECT_GE(CheckLatitudes(panorama, latitudes, 0.8), 20);
}

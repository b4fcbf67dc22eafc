#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>

#include "RoomScene.h"
#include "RoomTruth.h"
#include "ToolRun.h"

using namespace RoomTruth;
using KivFisheyeLib::MountType;
using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;
using KivFisheyeLib::MountTypeWall;

namespace {

using Options = std::vector<std::string>;

/// A room before a camera of one mount.
class Room {
public:
    explicit Room(MountType mount, std::uint32_t side, const LensRadii& radii = {})
        : m_mount(mount) {
        KivFisheyeTools::WritePicture(
            m_folder.File("room.png"),
            KivFisheyeTools::RenderRoomScene({side, side, radii.x, radii.y}, mount));
    }

    ToolRun Run(const Options& options) const {
        const Options mounts = {"wall", "ceiling", "table"};
        Options arguments = {"dewarp", "room.png", "view.png",        "--view",
                             "vcam",   "--mount",  mounts.at(m_mount)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(m_folder, arguments);
    }

    Picture View(const Options& options) const {
        const ToolRun run = Run(options);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        return Made();
    }

    Picture Made() const { return KivFisheyeTools::ReadPicture(m_folder.File("view.png"), 3); }

private:
    TemporaryFolder m_folder;
    MountType m_mount;
};

bool IsWellInside(const Picture& view, const Place& place) {
    constexpr double kMargin = 15.0;
    return place.column > kMargin && place.column < view.width - kMargin && place.row > kMargin &&
           place.row < view.height - kMargin;
}

/// How far off, in degrees, a meridian may be: a pixel of the input is 0.28 degrees, and the
/// nearest one is taken.
constexpr double kTolerance = 0.3;
constexpr double kDegree = 3.14159265358979323846 / 180.0;

int CheckMeridians(const Picture& view, MountType mount, const VirtualView& angles,
                   const std::vector<double>& elevations) {
    int checked = 0;
    for (double bearing = 0.0; bearing < 360.0; bearing += 15.0) {
        // A wall camera sees only one side of the meridians east and west of it.
        const bool isAtRim = mount == MountTypeWall && std::cos(bearing * kDegree) < 0.1;
        for (const double elevation : elevations) {
            const auto across = [&](double offset) {
                return BrightnessAt(
                    view, InVirtualView(view, mount, {bearing + offset, elevation}, angles));
            };
            if (!IsWellInside(view, InVirtualView(view, mount, {bearing, elevation}, angles)) ||
                std::isnan(DarkCentre(across, 1.5, 15.0)) || isAtRim) {
                continue;
            }
            EXPECT_NEAR(DarkCentre(across, 1.5, 15.0), 0.0,
                        kTolerance / std::cos(elevation * kDegree))
                << "bearing " << bearing << ", elevation " << elevation;
            ++checked;
        }
    }
    return checked;
}

}  // namespace

struct ViewCase {
    const char* name;
    MountType mount;
    Options options;
    VirtualView angles;
    /// What the middle shows.
    char wall;
    Sphere middle;
};

void PrintTo(const ViewCase& view, std::ostream* stream) {
    *stream << view.name;
}

class VirtualCamera : public testing::TestWithParam<ViewCase> {};

INSTANTIATE_TEST_SUITE_P(
    Views, VirtualCamera,
    testing::Values(
        // A ceiling camera's picture has north at its top and east at its right.
        ViewCase{"CeilingNorth",
                 MountTypeCeiling,
                 {"--pan", "0", "--tilt", "55", "--zoom", "4"},
                 {0.0, 55.0, 70.0},
                 'N',
                 {352.0, -17.0}},
        ViewCase{"CeilingEast",
                 MountTypeCeiling,
                 {"--pan", "90", "--tilt", "55", "--zoom", "4"},
                 {90.0, 55.0, 70.0},
                 'E',
                 {98.0, -17.0}},
        ViewCase{"CeilingSouthWest",
                 MountTypeCeiling,
                 {"--pan", "-120", "--tilt", "60", "--zoom", "5"},
                 {-120.0, 60.0, 60.0},
                 'W',
                 {262.0, -17.0}},
        // A table camera's picture has north at its top too, but east at its left.
        ViewCase{"TableSouth",
                 MountTypeTable,
                 {"--pan", "0", "--tilt", "-60", "--zoom", "5"},
                 {0.0, -60.0, 60.0},
                 'S',
                 {172.0, 22.5}},
        ViewCase{"TableWest",
                 MountTypeTable,
                 {"--pan", "90", "--tilt", "-60", "--zoom", "5"},
                 {90.0, -60.0, 60.0},
                 'W',
                 {262.0, 22.5}},
        ViewCase{"TableEast",
                 MountTypeTable,
                 {"--pan", "270", "--tilt", "-60", "--zoom", "5"},
                 {270.0, -60.0, 60.0},
                 'E',
                 {82.0, 22.5}},
        ViewCase{"WallAhead",
                 MountTypeWall,
                 {"--pan", "0", "--tilt", "0", "--zoom", "3"},
                 {0.0, 0.0, 80.0},
                 'N',
                 {-8.0, 7.0}},
        ViewCase{"WallRightAndUp",
                 MountTypeWall,
                 {"--pan", "45", "--tilt", "10", "--zoom", "4"},
                 {45.0, 10.0, 70.0},
                 'E',
                 {50.0, 7.0}},
        ViewCase{"WallLeftAndDown",
                 MountTypeWall,
                 {"--pan", "-50", "--tilt", "-12", "--zoom", "4"},
                 {-50.0, -12.0, 70.0},
                 'W',
                 {-65.0, 7.0}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST_P(VirtualCamera, LooksWhereItsAnglesSay) {
    const ViewCase& param = GetParam();
    Options options = param.options;
    options.insert(options.end(), {"--size", "640x480"});
    const Picture view = Room(param.mount, 640).View(options);
    EXPECT_EQ(view.width, 640U);
    EXPECT_EQ(view.height, 480U);
    const Place middle = InVirtualView(view, param.mount, param.middle, param.angles);
    ASSERT_TRUE(IsWellInside(view, middle)) << middle.column << ' ' << middle.row;
    EXPECT_EQ(WallOfColor(view, middle), param.wall);
    const std::vector<double> elevations =
        param.mount == MountTypeCeiling ? std::vector<double>{-8.5, -17.0, -34.0, -44.0}
        : param.mount == MountTypeTable ? std::vector<double>{8.0, 31.5, 36.0, 44.0}
                                        : std::vector<double>{-17.0, -7.0, 7.0, 17.0};
    EXPECT_GE(CheckMeridians(view, param.mount, param.angles, elevations), 6);
}

TEST(VirtualCameraOptions, ShowTheWholeLensByDefault) {
    const Room room(MountTypeCeiling, 200);
    const Picture plain = room.View({});
    EXPECT_EQ(plain.pixels, room.View({"--pan", "0", "--tilt", "0", "--zoom", "1"}).pixels);
    EXPECT_EQ(plain.pixels, room.View({"--fov", "180"}).pixels);
    EXPECT_NE(plain.pixels, room.View({"--zoom", "2"}).pixels);
}

TEST(VirtualCameraOptions, AimLooksAtAPointOfTheInput) {
    struct Aim {
        MountType mount;
        const char* point;
        Options angles;
    };
    const std::vector<Aim> aims = {
        {MountTypeCeiling, "0.5,0.25", {"--pan", "0", "--tilt", "45"}},
        {MountTypeCeiling, "0.75,0.5", {"--pan", "90", "--tilt", "45"}},
        {MountTypeTable, "0.75,0.5", {"--pan", "90", "--tilt", "-45"}},
        {MountTypeTable, "0.5,0.625", {"--pan", "0", "--tilt", "-22.5"}},
        {MountTypeWall, "0.75,0.25", {"--pan", "45", "--tilt", "45"}},
        {MountTypeWall, "0.375,0.5", {"--pan", "-22.5", "--tilt", "0"}},
    };
    for (const Aim& aim : aims) {
        const Room room(aim.mount, 120);
        Options angles = aim.angles;
        angles.insert(angles.end(), {"--zoom", "2"});
        EXPECT_EQ(room.View({"--aim", aim.point}).pixels, room.View(angles).pixels) << aim.point;
        angles.back() = "5";
        EXPECT_EQ(room.View({"--aim", aim.point, "--zoom", "5"}).pixels, room.View(angles).pixels);
    }
}

TEST(VirtualCameraOptions, AimKnowsTheLens) {
    const Room room(MountTypeCeiling, 160, {0.25, 0.5});
    const Options lens = {"--radius-x", "0.25", "--radius-y", "0.5"};
    Options aim = {"--aim", "0.625,0.5"};
    Options angles = {"--pan", "90", "--tilt", "45", "--zoom", "2"};
    aim.insert(aim.end(), lens.begin(), lens.end());
    angles.insert(angles.end(), lens.begin(), lens.end());
    EXPECT_EQ(room.View(aim).pixels, room.View(angles).pixels);
}

TEST(VirtualCameraOptions, FieldOfViewIsAnotherWordForZoom) {
    const Room room(MountTypeWall, 160);
    EXPECT_EQ(room.View({"--fov", "90", "--pan", "20"}).pixels,
              room.View({"--zoom", "2", "--pan", "20"}).pixels);
    EXPECT_EQ(room.View({"--fov", "10"}).pixels, room.View({"--zoom", "10"}).pixels);
    // 135 degrees lie in the middle between 180 and 90.
    EXPECT_EQ(room.View({"--fov", "135"}).pixels, room.View({"--zoom", "1.5"}).pixels);
    EXPECT_EQ(room.View({"--fov", "90", "--aim", "0.5,0.25"}).pixels,
              room.View({"--zoom", "2", "--tilt", "45"}).pixels);
}

TEST(VirtualCameraOptions, BeyondTheLimitsAreSaidToBeLimited) {
    const Room room(MountTypeCeiling, 120);
    struct Limit {
        Options asked;
        Options taken;
        const char* words;
    };
    const std::vector<Limit> limits = {
        // At zoom 3 the view spans 80 degrees, so its middle stays 40 degrees off the rim.
        {{"--tilt", "80", "--zoom", "3"}, {"--tilt", "50", "--zoom", "3"}, "tilt 50"},
        {{"--tilt", "-5", "--zoom", "3"}, {"--tilt", "0", "--zoom", "3"}, "tilt 0"},
        {{"--tilt", "30"}, {"--tilt", "0"}, "tilt 0"},
        {{"--aim", "0.5,0"}, {"--tilt", "45", "--zoom", "2"}, "tilt 45"},
    };
    for (const Limit& limit : limits) {
        const ToolRun run = room.Run(limit.asked);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors.rfind("kivfisheye: the view is limited to ", 0), 0U) << run.errors;
        EXPECT_NE(run.errors.find(limit.words), std::string::npos) << run.errors;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
        const Picture made = room.Made();
        EXPECT_EQ(made.pixels, room.View(limit.taken).pixels) << limit.words;
    }
}

TEST(VirtualCameraOptions, AreLimitedWithACureWhereTheZoomIsTooSmall) {
    const std::string cure = "only at a zoom of 2 or more";
    const Room ceiling(MountTypeCeiling, 120);
    for (const Options& options :
         {Options{"--tilt", "30"}, {"--aim", "0.5,0.25", "--zoom", "1.9"}}) {
        const ToolRun run = ceiling.Run(options);
        EXPECT_NE(run.errors.find(cure), std::string::npos) << run.errors;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
    EXPECT_EQ(ceiling.Run({"--tilt", "46", "--zoom", "2"}).errors.find(cure), std::string::npos);
    EXPECT_EQ(ceiling.Run({"--pan", "30", "--zoom", "1.9"}).errors, "");
    const ToolRun wall = Room(MountTypeWall, 120).Run({"--pan", "30", "--zoom", "1.9"});
    EXPECT_NE(wall.errors.find(cure), std::string::npos) << wall.errors;
}

TEST(VirtualCameraOptions, WholeTurnsAreNoLimits) {
    const Room room(MountTypeTable, 120);
    const Picture turned = room.View({"--pan", "10", "--tilt", "-30", "--zoom", "4"});
    EXPECT_EQ(room.View({"--pan", "370", "--tilt", "-30", "--zoom", "4"}).pixels, turned.pixels);
    EXPECT_EQ(room.View({"--pan", "-350", "--tilt", "-30", "--zoom", "4"}).pixels, turned.pixels);
}

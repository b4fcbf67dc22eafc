#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "RoomPanorama.h"

using namespace RoomTruth;
using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;

struct TurningView {
    const char* name;
    KivFisheyeLib::MountType mount;
    const char* view;
    /// 1200 columns once around, and 300 rows from the horizon to the lens axis.
    const char* size;
    /// 200 rows from the horizon to the inner radius.
    const char* sizeOfRing;
};

void PrintTo(const TurningView& view, std::ostream* stream) {
    *stream << view.name;
}

class TurningPanorama : public testing::TestWithParam<TurningView> {
protected:
    static PlacedPanorama Placed(const Picture& picture, double pan, double innerRadius = 0.0) {
        const bool isDual = GetParam().view == std::string("dual");
        return {picture, [=, mount = GetParam().mount](const Sphere& direction) {
                    return isDual ? InDualPanorama(picture, mount, direction, pan, innerRadius)
                                  : InPanorama(picture, mount, direction, pan, innerRadius);
                }};
    }

    RoomPanoramas Room(const LensRadii& radii = {}, std::uint32_t width = 600,
                       std::uint32_t height = 600) const {
        return {GetParam().mount, GetParam().view, radii, width, height};
    }
};

INSTANTIATE_TEST_SUITE_P(
    Views, TurningPanorama,
    testing::Values(TurningView{"CeilingFull", MountTypeCeiling, "full", "1200x300", "1200x200"},
                    TurningView{"TableFull", MountTypeTable, "full", "1200x300", "1200x200"},
                    TurningView{"CeilingDual", MountTypeCeiling, "dual", "600x600", "600x400"},
                    TurningView{"TableDual", MountTypeTable, "dual", "600x600", "600x400"}),
    [](const auto& instance) { return std::string(instance.param.name); });

// A panorama turns by whole columns, so these tests use pans that are whole columns of its width.

TEST_P(TurningPanorama, StraightensTheRoom) {
    const RoomPanoramas room = Room();
    for (const int pan : {0, 33, -75, 225}) {
        SCOPED_TRACE(pan);
        const PlacedPanorama panorama =
            Placed(room.Made({"--pan", std::to_string(pan), "--size", GetParam().size}), pan);
        ExpectLinesOfTurningPanorama(panorama, GetParam().mount);
        ExpectWallsAreInOrder(panorama, GetParam().mount);
    }
}

TEST_P(TurningPanorama, LeavesTheInnerRadiusOut) {
    const PlacedPanorama panorama = Placed(
        Room().Made({"--inner-radius", "0.4", "--pan", "33", "--size", GetParam().sizeOfRing}),
        33.0, 0.4);
    ExpectLatitudesOfTurningPanorama(panorama, GetParam().mount);
    ExpectWallsAreInOrder(panorama, GetParam().mount);
}

TEST_P(TurningPanorama, FollowsAnEllipticLens) {
    // The lens image is 600 columns wide, so the recommended size has 1200 once around.
    const PlacedPanorama panorama =
        Placed(Room({0.4, 0.45}, 750, 650)
                   .Made({"--radius-x", "0.4", "--radius-y", "0.45", "--pan", "45"}),
               45.0);
    ExpectLinesOfTurningPanorama(panorama, GetParam().mount);
    ExpectWallsAreInOrder(panorama, GetParam().mount);
}

TEST_P(TurningPanorama, IsTheSameInBothPixelFormats) {
    ExpectSameInBothPixelFormats(Room({}, 301, 300));
}

TEST_P(TurningPanorama, TurnsByANumberWithAPlus) {
    const RoomPanoramas room = Room({}, 64, 64);
    const Picture turned = room.Made({"--pan", "90"});
    EXPECT_EQ(room.Made({"--pan", "+90"}).pixels, turned.pixels);
    EXPECT_NE(room.Made({}).pixels, turned.pixels);
}

TEST_P(TurningPanorama, TurnsByAPanOfManyTurns) {
    // The floats nearest to these pans are whole numbers; what they leave beside whole turns is:
    const RoomPanoramas room = Room({}, 64, 64);
    EXPECT_EQ(room.Made({"--pan", "1e17"}).pixels, room.Made({"--pan", "184"}).pixels);
    EXPECT_EQ(room.Made({"--pan", "1e30"}).pixels, room.Made({"--pan", "120"}).pixels);
    EXPECT_EQ(room.Made({"--pan", "-1e30"}).pixels, room.Made({"--pan", "240"}).pixels);
}

TEST_P(TurningPanorama, TakesTheSizeOfTheOption) {
    const RoomPanoramas room = Room({}, 64, 64);
    const Picture picture = room.Made({"--size", "24x7"});
    EXPECT_EQ(picture.width, 24U);
    EXPECT_EQ(picture.height, 7U);
}

#include <gtest/gtest.h>

#include "RoomPanorama.h"

using namespace RoomTruth;
using KivFisheyeLib::MountType;
using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;

namespace {

class DualPanorama : public testing::TestWithParam<MountType> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Mounts, DualPanorama, testing::Values(MountTypeCeiling, MountTypeTable));

TEST_P(DualPanorama, ShowsNorthAboveAndSouthBelowWithoutPan) {
    const Picture picture = RoomPanoramas(GetParam(), "dual").Made({});
    ASSERT_EQ(picture.width, 600U);
    ASSERT_EQ(picture.height, 600U);
    // 8 degrees to the right of the middle, and 13 degrees off the horizon of 90.
    const double column = 300.0 + 8.0 / 180.0 * 600.0;
    const double row = (GetParam() == MountTypeTable ? 77.0 : 13.0) / 90.0 * 300.0;
    EXPECT_EQ(WallOfColor(picture, {column, row}), 'N');
    EXPECT_EQ(WallOfColor(picture, {column, 300.0 + row}), 'S');
}

TEST_P(DualPanorama, LeavesTheLastRowOfAnOddHeightBlack) {
    const Picture picture = RoomPanoramas(GetParam(), "dual", {}, 64, 64).Made({"--size", "64x33"});
    ASSERT_EQ(picture.height, 33U);
    EXPECT_GT(Brightness(picture, 32, 31), 0.0);
    for (std::uint32_t column = 0; column < picture.width; ++column) {
        EXPECT_EQ(Brightness(picture, column, 32), 0.0) << column;
    }
}

TEST_P(DualPanorama, HasTwoEqualHalvesByDefault) {
    // The library recommends the lens's 63 rows.
    const RoomPanoramas room(GetParam(), "dual", {}, 63, 63);
    const Picture picture = room.Made({});
    EXPECT_EQ(picture.width, 64U);
    ASSERT_EQ(picture.height, 64U);
    EXPECT_GT(Brightness(picture, 32, 63), 0.0);
    EXPECT_EQ(room.Made({"--size", "64x64"}).pixels, picture.pixels);
}

TEST_P(DualPanorama, AtHalfATurnIsThatWithoutPan) {
    const RoomPanoramas room(GetParam(), "dual", {}, 64, 64);
    const Picture plain = room.Made({});
    EXPECT_EQ(room.Made({"--pan", "180"}).pixels, plain.pixels);
    EXPECT_NE(room.Made({"--pan", "179.9"}).pixels, plain.pixels);
    EXPECT_NE(room.Made({"--pan", "180.1"}).pixels, plain.pixels);
}

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/FloatBits.h"
#include "support/VCamSettings.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr bool kZoomingOut = true;

TEST(VCamSettings, GoToTheirOwnOutputs) {
    // Zoom 1.25 is exact but for the eye: 1 - 0.99 * 0.25.
    for (const auto mount : kEveryMount) {
        const VCamSettings wide = mount(400.0F, 5.0F, 1.25F, false);
        EXPECT_EQ(wide.eyeZ, 0.25F * -0.99F + 1.0F);
        EXPECT_EQ(wide.nearPlane, wide.eyeZ);
        EXPECT_EQ(wide.farPlane, wide.eyeZ + 3.0F);
        EXPECT_EQ(wide.fieldOfView, 90.0F);
        EXPECT_EQ(wide.tilt, 0.0F);
        EXPECT_EQ(wide.zoom, 1.25F);

        const VCamSettings narrow = mount(400.0F, 5.0F, 4.0F, false);
        EXPECT_EQ(narrow.eyeZ, 0.01F);
        EXPECT_EQ(narrow.nearPlane, 0.01F);
        EXPECT_EQ(narrow.farPlane, 3.01F);
        EXPECT_EQ(narrow.fieldOfView, 70.0F);
        EXPECT_EQ(narrow.zoom, 4.0F);
    }
    EXPECT_EQ(WallSettings(400.0F, 5.0F, 1.25F).pan, 0.0F);
    EXPECT_EQ(CeilingSettings(400.0F, 5.0F, 1.25F).pan, 40.0F);
    EXPECT_EQ(TableSettings(400.0F, 5.0F, 1.25F).pan, 40.0F);
    EXPECT_EQ(WallSettings(400.0F, 5.0F, 4.0F).pan, 55.0F);
    EXPECT_EQ(WallSettings(400.0F, 5.0F, 4.0F).tilt, 5.0F);
    EXPECT_EQ(CeilingSettings(400.0F, 5.0F, 4.0F).tilt, 5.0F);
    EXPECT_EQ(TableSettings(400.0F, 5.0F, 4.0F).tilt, 0.0F);
}

TEST(VCamSettings, Zoom1ShowsTheWholeLens) {
    for (const auto mount : kEveryMount) {
        for (const float zoom : {1.0F, 0.5F, 0.0F, -0.0F, -3.0F, -kInfinity}) {
            const VCamSettings settings = mount(0.0F, 0.0F, zoom, false);
            EXPECT_EQ(settings.zoom, 1.0F) << zoom;
            EXPECT_EQ(settings.eyeZ, 1.0F);
            EXPECT_EQ(settings.nearPlane, 1.0F);
            EXPECT_EQ(settings.farPlane, 4.0F);
            EXPECT_EQ(settings.fieldOfView, 90.0F);
        }
    }
}

TEST(VCamSettings, Zoom2IsTheFirstNarrowOne) {
    for (const auto mount : kEveryMount) {
        const VCamSettings narrow = mount(0.0F, 0.0F, 2.0F, false);
        EXPECT_EQ(narrow.zoom, 2.0F);
        EXPECT_EQ(narrow.eyeZ, 0.01F);
        EXPECT_EQ(narrow.nearPlane, 0.01F);
        EXPECT_EQ(narrow.farPlane, 3.01F);
        EXPECT_EQ(narrow.fieldOfView, 90.0F);

        const float below = std::nextafter(2.0F, 0.0F);
        const VCamSettings wide = mount(30.0F, 20.0F, below, false);
        EXPECT_EQ(wide.zoom, below);
        EXPECT_EQ(wide.fieldOfView, 90.0F);
        EXPECT_GT(wide.eyeZ, 0.01F);
        EXPECT_LT(wide.eyeZ, 0.010001F);
        EXPECT_EQ(wide.nearPlane, wide.eyeZ);
        EXPECT_EQ(wide.farPlane, wide.eyeZ + 3.0F);
        EXPECT_EQ(wide.tilt, 0.0F);
    }
    EXPECT_EQ(WallSettings(90.0F, 90.0F, 2.0F).pan, 45.0F) << "half the view inside the rim";
    EXPECT_EQ(WallSettings(90.0F, 90.0F, 2.0F).tilt, 45.0F);
    EXPECT_EQ(CeilingSettings(0.0F, 90.0F, 2.0F).tilt, 45.0F);
    EXPECT_EQ(TableSettings(0.0F, -90.0F, 2.0F).tilt, -45.0F);
}

TEST(VCamSettings, Zoom10IsTheLargest) {
    for (const auto mount : kEveryMount) {
        for (const float zoom : {10.0F, std::nextafter(10.0F, 11.0F), 12.0F, kInfinity}) {
            const VCamSettings settings = mount(0.0F, 0.0F, zoom, false);
            EXPECT_EQ(settings.zoom, 10.0F) << zoom;
            EXPECT_EQ(settings.fieldOfView, 10.0F);
            EXPECT_EQ(settings.eyeZ, 0.01F);
            EXPECT_EQ(settings.farPlane, 3.01F);
        }
    }
    EXPECT_EQ(WallSettings(-90.0F, 90.0F, 12.0F).pan, -85.0F);
    EXPECT_EQ(CeilingSettings(0.0F, 90.0F, 12.0F).tilt, 85.0F);
    EXPECT_EQ(TableSettings(0.0F, -90.0F, 12.0F).tilt, -85.0F);
}

TEST(VCamSettings, TheWideViewHasNoTiltAndOnAWallNoPan) {
    for (const float zoom : {0.0F, 1.0F, 1.5F, 1.99F}) {
        for (const bool zoomingOut : {false, true}) {
            const VCamSettings wall = WallSettings(30.0F, 20.0F, zoom, zoomingOut);
            EXPECT_EQ(BitsOf(wall.pan), BitsOf(0.0F));
            EXPECT_EQ(BitsOf(wall.tilt), BitsOf(0.0F));
            const VCamSettings ceiling = CeilingSettings(30.0F, 20.0F, zoom, zoomingOut);
            EXPECT_EQ(ceiling.pan, 30.0F);
            EXPECT_EQ(BitsOf(ceiling.tilt), BitsOf(0.0F));
            const VCamSettings table = TableSettings(30.0F, -20.0F, zoom, zoomingOut);
            EXPECT_EQ(table.pan, 30.0F);
            EXPECT_EQ(BitsOf(table.tilt), BitsOf(0.0F));
        }
    }
}

TEST(VCamSettings, OnAWallPanAndTiltStayInsideTheLimitOnEverySide) {
    // Zoom 3 is 80 degrees high, so the limit is 50; zoom 6 is 50 degrees high, so it is 65.
    const struct {
        float zoom;
        float limit;
    } cases[] = {{2.0F, 45.0F}, {3.0F, 50.0F}, {6.0F, 65.0F}, {10.0F, 85.0F}};
    for (const auto& narrow : cases) {
        const float limit = narrow.limit;
        for (const float angle : {limit, std::nextafter(limit, 90.0F), 90.0F, 100.0F, kInfinity}) {
            const VCamSettings upperRight = WallSettings(angle, angle, narrow.zoom);
            EXPECT_EQ(upperRight.pan, limit);
            EXPECT_EQ(upperRight.tilt, limit);
            const VCamSettings lowerLeft = WallSettings(-angle, -angle, narrow.zoom);
            EXPECT_EQ(lowerLeft.pan, -limit);
            EXPECT_EQ(lowerLeft.tilt, -limit);
        }
        const float inside = std::nextafter(limit, 0.0F);
        EXPECT_EQ(WallSettings(inside, -inside, narrow.zoom).pan, inside);
        EXPECT_EQ(WallSettings(inside, -inside, narrow.zoom).tilt, -inside);
        EXPECT_EQ(WallSettings(-inside, inside, narrow.zoom).pan, -inside);
        EXPECT_EQ(WallSettings(-inside, inside, narrow.zoom).tilt, inside);
    }
}

TEST(VCamSettings, OnACeilingTheTiltRunsFrom0ToTheLimit) {
    EXPECT_EQ(CeilingSettings(0.0F, 80.0F, 3.0F).tilt, 50.0F);
    EXPECT_EQ(CeilingSettings(0.0F, 50.0F, 3.0F).tilt, 50.0F);
    EXPECT_EQ(CeilingSettings(0.0F, 49.5F, 3.0F).tilt, 49.5F);
    EXPECT_EQ(CeilingSettings(0.0F, kInfinity, 3.0F).tilt, 50.0F);
    for (const float tilt : {-1e-30F, -10.0F, -90.0F, -kInfinity}) {
        EXPECT_EQ(BitsOf(CeilingSettings(0.0F, tilt, 3.0F).tilt), BitsOf(0.0F));
    }
}

TEST(VCamSettings, OnATableTheTiltRunsFromTheLimitUpTo0) {
    EXPECT_EQ(TableSettings(0.0F, -80.0F, 3.0F).tilt, -50.0F);
    EXPECT_EQ(TableSettings(0.0F, -50.0F, 3.0F).tilt, -50.0F);
    EXPECT_EQ(TableSettings(0.0F, -49.5F, 3.0F).tilt, -49.5F);
    EXPECT_EQ(TableSettings(0.0F, -kInfinity, 3.0F).tilt, -50.0F);
    for (const float tilt : {1e-30F, 10.0F, 90.0F, kInfinity}) {
        EXPECT_EQ(BitsOf(TableSettings(0.0F, tilt, 3.0F).tilt), BitsOf(0.0F));
    }
}

TEST(VCamSettings, AroundAnAxisThePanIsStoredAs0UpTo360InEitherView) {
    const struct {
        float pan;
        float stored;
    } cases[] = {{-10.0F, 350.0F}, {370.0F, 10.0F},  {0.0F, 0.0F},   {360.0F, 0.0F},
                 {359.5F, 359.5F}, {-360.0F, 0.0F},  {725.0F, 5.0F}, {-450.0F, 270.0F},
                 {180.0F, 180.0F}, {-1e-30F, 360.0F}};
    for (const float zoom : {1.0F, 1.5F, 2.0F, 7.0F}) {
        for (const auto& turn : cases) {
            EXPECT_EQ(CeilingSettings(turn.pan, 0.0F, zoom).pan, turn.stored) << turn.pan;
            EXPECT_EQ(TableSettings(turn.pan, 0.0F, zoom).pan, turn.stored) << turn.pan;
        }
    }
}

TEST(VCamSettings, MinusZeroIsKeptWhereItLiesInside) {
    const VCamSettings wall = WallSettings(-0.0F, -0.0F, 3.0F);
    EXPECT_TRUE(std::signbit(wall.pan) && wall.pan == 0.0F);
    EXPECT_TRUE(std::signbit(wall.tilt) && wall.tilt == 0.0F);
    for (const auto mount : {CeilingSettings, TableSettings}) {
        EXPECT_TRUE(std::signbit(mount(0.0F, -0.0F, 3.0F, false).tilt));
        EXPECT_TRUE(std::signbit(mount(-0.0F, 0.0F, 3.0F, false).pan));
        const float wholeTurns = mount(-720.0F, 0.0F, 3.0F, false).pan;
        EXPECT_TRUE(std::signbit(wholeTurns) && wholeTurns == 0.0F);
    }
}

TEST(VCamSettings, ANanOrEndlessAngleStaysNan) {
    for (const float zoom : {2.0F, 5.0F}) {
        EXPECT_TRUE(std::isnan(WallSettings(kNan, 10.0F, zoom).pan));
        EXPECT_EQ(WallSettings(kNan, 10.0F, zoom).tilt, 10.0F);
        for (const auto mount : kEveryMount) {
            EXPECT_TRUE(std::isnan(mount(0.0F, kNan, zoom, kZoomingOut).tilt));
            EXPECT_EQ(mount(0.0F, kNan, zoom, false).pan, 0.0F);
        }
    }
    for (const float zoom : {1.0F, 5.0F}) {
        for (const float pan : {kNan, kInfinity, -kInfinity}) {
            EXPECT_TRUE(std::isnan(CeilingSettings(pan, 0.0F, zoom).pan));
            EXPECT_TRUE(std::isnan(TableSettings(pan, 0.0F, zoom).pan));
        }
    }
    EXPECT_EQ(BitsOf(WallSettings(kNan, kNan, 1.5F).pan), BitsOf(0.0F)) << "forced all the same";
    EXPECT_EQ(BitsOf(WallSettings(kNan, kNan, 1.5F).tilt), BitsOf(0.0F));
}

TEST(VCamSettings, ANanZoomIsStoredAndNarrow) {
    for (const bool zoomingOut : {false, true}) {
        for (const auto mount : kEveryMount) {
            const VCamSettings settings = mount(30.0F, 0.0F, kNan, zoomingOut);
            EXPECT_TRUE(std::isnan(settings.zoom));
            EXPECT_TRUE(std::isnan(settings.fieldOfView));
            EXPECT_EQ(settings.eyeZ, 0.01F);
            EXPECT_EQ(settings.nearPlane, 0.01F);
            EXPECT_EQ(settings.farPlane, 3.01F);
            EXPECT_EQ(settings.pan, 30.0F);
        }
        // Nothing but the first bounds applies.
        EXPECT_EQ(WallSettings(-100.0F, 100.0F, kNan, zoomingOut).pan, -90.0F);
        EXPECT_EQ(WallSettings(-100.0F, 100.0F, kNan, zoomingOut).tilt, 90.0F);
        EXPECT_EQ(CeilingSettings(0.0F, 100.0F, kNan, zoomingOut).tilt, 90.0F);
        EXPECT_EQ(CeilingSettings(0.0F, -5.0F, kNan, zoomingOut).tilt, 0.0F);
        EXPECT_EQ(TableSettings(0.0F, -100.0F, kNan, zoomingOut).tilt, -90.0F);
        EXPECT_EQ(TableSettings(0.0F, 5.0F, kNan, zoomingOut).tilt, 0.0F);
    }
}

}  // namespace

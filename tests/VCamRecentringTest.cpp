#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "support/FloatBits.h"
#include "support/VCamSettings.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr bool kZoomingOut = true;

/// The float `steps` floats above `value`.
float StepsAbove(float value, int steps) {
    return FloatOf(BitsOf(value) + static_cast<std::uint32_t>(steps));
}

/// Whether a view away from the axis moves towards it at this zoom.
bool IsRecentredAt(float zoom) {
    return WallSettings(40.0F, 0.0F, zoom, kZoomingOut).pan != 40.0F;
}

TEST(VCamRecentring, TakesTheViewsDistanceFrom90DegreesAsItsDivisor) {
    // Zoom 3 is 80 degrees high: a tenth of the way.
    const VCamSettings wall = WallSettings(40.0F, -20.0F, 3.0F, kZoomingOut);
    EXPECT_EQ(wall.pan, 36.0F);
    EXPECT_EQ(wall.tilt, -18.0F);
    EXPECT_EQ(CeilingSettings(40.0F, 20.0F, 3.0F, kZoomingOut).tilt, 18.0F);
    EXPECT_EQ(TableSettings(40.0F, -20.0F, 3.0F, kZoomingOut).tilt, -18.0F);
    // Zoom 4 is 70 degrees high: a twentieth.
    EXPECT_EQ(WallSettings(40.0F, -20.0F, 4.0F, kZoomingOut).pan, 38.0F);
    EXPECT_EQ(WallSettings(40.0F, -20.0F, 4.0F, kZoomingOut).tilt, -19.0F);
}

TEST(VCamRecentring, LeavesThePanAroundAnAxisAlone) {
    for (const float zoom : {2.1F, 3.0F, 5.0F}) {
        EXPECT_EQ(CeilingSettings(40.0F, 20.0F, zoom, kZoomingOut).pan, 40.0F);
        EXPECT_EQ(TableSettings(40.0F, -20.0F, zoom, kZoomingOut).pan, 40.0F);
    }
}

TEST(VCamRecentring, HappensOnlyWhileZoomingOut) {
    for (const float zoom : {2.1F, 3.0F, 5.0F}) {
        EXPECT_EQ(WallSettings(40.0F, -20.0F, zoom, false).pan, 40.0F);
        EXPECT_EQ(WallSettings(40.0F, -20.0F, zoom, false).tilt, -20.0F);
        EXPECT_EQ(CeilingSettings(40.0F, 20.0F, zoom, false).tilt, 20.0F);
        EXPECT_EQ(TableSettings(40.0F, -20.0F, zoom, false).tilt, -20.0F);
    }
}

TEST(VCamRecentring, ComesAfterTheLimit) {
    // Limit 50 at zoom 3, then a tenth less.
    EXPECT_EQ(WallSettings(80.0F, -80.0F, 3.0F, kZoomingOut).pan, 45.0F);
    EXPECT_EQ(WallSettings(80.0F, -80.0F, 3.0F, kZoomingOut).tilt, -45.0F);
    EXPECT_EQ(CeilingSettings(0.0F, 80.0F, 3.0F, kZoomingOut).tilt, 45.0F);
    EXPECT_EQ(TableSettings(0.0F, -80.0F, 3.0F, kZoomingOut).tilt, -45.0F);
}

TEST(VCamRecentring, ReachesTheAxisAtOnceAtZoom2Point1) {
    // The view is 89 degrees high, and the divisor exactly 1.
    for (const auto mount : kEveryMount) {
        EXPECT_EQ(mount(40.0F, 0.0F, 2.1F, kZoomingOut).fieldOfView, 89.0F);
    }
    EXPECT_EQ(BitsOf(WallSettings(40.0F, -20.0F, 2.1F, kZoomingOut).pan), BitsOf(0.0F));
    EXPECT_EQ(BitsOf(WallSettings(40.0F, -20.0F, 2.1F, kZoomingOut).tilt), BitsOf(0.0F));
    EXPECT_EQ(CeilingSettings(40.0F, 20.0F, 2.1F, kZoomingOut).tilt, 0.0F);
    EXPECT_EQ(TableSettings(40.0F, -20.0F, 2.1F, kZoomingOut).tilt, 0.0F);
}

TEST(VCamRecentring, BeginsWhereTheViewIs89DegreesHighInFloats) {
    // One float of zoom near 2.1 is 2.4e-6 degrees, and floats near 89 are 7.6e-6 apart, so a float
    // more or less still rounds to 89 degrees. Two floats less do not.
    EXPECT_TRUE(IsRecentredAt(StepsAbove(2.1F, 1)));
    EXPECT_TRUE(IsRecentredAt(2.1F));
    EXPECT_TRUE(IsRecentredAt(StepsAbove(2.1F, -1)));
    EXPECT_FALSE(IsRecentredAt(StepsAbove(2.1F, -2)));
    EXPECT_FALSE(IsRecentredAt(2.05F)) << "89.5 degrees";
    EXPECT_FALSE(IsRecentredAt(2.0F)) << "a divisor of 0";
}

TEST(VCamRecentring, EndsAtZoom5) {
    // 60 degrees high, a divisor of exactly 30.
    EXPECT_EQ(WallSettings(45.0F, -15.0F, 5.0F, kZoomingOut).pan, 43.5F);
    EXPECT_EQ(WallSettings(45.0F, -15.0F, 5.0F, kZoomingOut).tilt, -14.5F);
    EXPECT_EQ(CeilingSettings(0.0F, 60.0F, 5.0F, kZoomingOut).tilt, 58.0F);
    EXPECT_EQ(TableSettings(0.0F, -60.0F, 5.0F, kZoomingOut).tilt, -58.0F);
    EXPECT_FALSE(IsRecentredAt(StepsAbove(5.0F, 1)));
    EXPECT_FALSE(IsRecentredAt(6.0F));
    EXPECT_FALSE(IsRecentredAt(12.0F));
    EXPECT_FALSE(IsRecentredAt(kNan));
}

TEST(VCamRecentring, TurnsMinusZeroIntoZero) {
    const VCamSettings wall = WallSettings(-0.0F, -0.0F, 3.0F, kZoomingOut);
    EXPECT_EQ(BitsOf(wall.pan), BitsOf(0.0F));
    EXPECT_EQ(BitsOf(wall.tilt), BitsOf(0.0F));
}

float Between(float value, float low, float high) {
    if (value < low) {
        return low;
    }
    return value > high ? high : value;
}

float Around(float pan) {
    float turned = std::fmod(pan, 360.0F);
    turned += turned < 0.0F ? 360.0F : 0.0F;
    return turned;
}

/// A mount's bounds: whether the pan has any, and the tilt's.
struct Bounds {
    bool isPanBound;
    float lowestTilt;
    float highestTilt;
};

constexpr Bounds kBounds[] = {{true, -90.0F, 90.0F}, {false, 0.0F, 90.0F}, {false, -90.0F, 0.0F}};

VCamSettings Expected(const Bounds& bounds, float pan, float tilt, float zoom, bool zoomingOut) {
    VCamSettings s{0.01F, 0.01F, 3.01F, 90.0F, 0.0F, 0.0F, Between(zoom, 1.0F, 10.0F)};
    s.pan = bounds.isPanBound ? Between(pan, -90.0F, 90.0F) : Around(pan);
    if (s.zoom < 2.0F) {
        s.eyeZ = (s.zoom - 1.0F) * -0.99F + 1.0F;
        s.nearPlane = s.eyeZ;
        s.farPlane = s.eyeZ + 3.0F;
        s.pan = bounds.isPanBound ? 0.0F : s.pan;
        return s;
    }
    s.fieldOfView = 90.0F - (s.zoom - 2.0F) * 10.0F;
    const float limit = 90.0F - s.fieldOfView * 0.5F;
    s.pan = bounds.isPanBound ? Between(s.pan, -limit, limit) : s.pan;
    s.tilt =
        Between(tilt, std::fmax(-limit, bounds.lowestTilt), std::fmin(limit, bounds.highestTilt));
    const float divisor = 90.0F - s.fieldOfView;
    if (zoomingOut && !(divisor < 1.0F) && !(divisor > 30.0F)) {
        s.tilt -= s.tilt / divisor;
        s.pan -= bounds.isPanBound ? s.pan / divisor : 0.0F;
    }
    return s;
}

TEST(VCamSettings, ArePlainArithmeticAtEveryZoom) {
    for (int mount = 0; mount < 3; ++mount) {
        for (int step = 0; step <= 20000; ++step) {
            const float zoom = 0.9F + static_cast<float>(step) * 0.00047F;
            const float pan = static_cast<float>(step % 733) - 366.5F;
            const float tilt = static_cast<float>(step % 199) * 1.01F - 100.0F;
            for (const bool zoomingOut : {false, true}) {
                const VCamSettings s = kEveryMount[mount](pan, tilt, zoom, zoomingOut);
                const VCamSettings e = Expected(kBounds[mount], pan, tilt, zoom, zoomingOut);
                ASSERT_EQ(BitsOf(s.eyeZ), BitsOf(e.eyeZ)) << zoom;
                ASSERT_EQ(BitsOf(s.nearPlane), BitsOf(e.nearPlane)) << zoom;
                ASSERT_EQ(BitsOf(s.farPlane), BitsOf(e.farPlane)) << zoom;
                ASSERT_EQ(BitsOf(s.fieldOfView), BitsOf(e.fieldOfView)) << zoom;
                ASSERT_EQ(s.pan, e.pan) << mount << ": " << pan << " at " << zoom;
                ASSERT_EQ(s.tilt, e.tilt) << mount << ": " << tilt << " at " << zoom;
                ASSERT_EQ(s.zoom, e.zoom);
            }
        }
    }
}

}  // namespace

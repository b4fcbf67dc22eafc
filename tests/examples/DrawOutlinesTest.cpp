#include <Png.h>
#include <gtest/gtest.h>

#include <cmath>

#include "ExampleFolder.h"
#include "TestPicture.h"
#include "support/Outline.h"
#include "support/OutlineGeometry.h"

using namespace KivFisheyeLib;

namespace {

constexpr Color kYellow{255, 255, 0};
constexpr Color kCyan{0, 255, 255};
constexpr int kCount = 512;
constexpr int kWidth = 301;
constexpr int kHeight = 220;
constexpr DewarpParams kLens{110.0F / 301.0F, 0.5F, 45.0F, 0.2F};
const std::vector<std::string> kMounts = {"wall", "ceiling", "table"};

Picture Drawn(const std::string& mount, const std::string& view, const Aim& aim) {
    const ExampleFolder folder(Slopes(kWidth, kHeight));
    folder.OutputOf("draw-outlines",
                    {mount, view, folder.Fisheye(), folder.File("drawn.png"),
                     std::to_string(aim.pan), std::to_string(aim.tilt), std::to_string(aim.zoom)});
    return ReadPng(folder.File("drawn.png"));
}

struct Drawing {
    std::vector<Point> points;
    Color color;
};

/// Whether a pixel may have the colour of an outline: the corners of its dots are three pixels or a
/// little more away, as dots lie at whole pixels and outlines may be off by one.
bool IsNear(const Drawing& drawing, double x, double y) {
    constexpr double kDot = 3.2;
    return Outline(drawing.points, kWidth, kHeight).DistanceTo({x, y}) <= kDot;
}

/// Every point has its colour, unless a later drawing may have covered it; pixels that are away
/// from all of them are as they were.
void ExpectDrawn(const Picture& drawn, const std::vector<Drawing>& drawings) {
    ASSERT_EQ(drawn.width, std::uint32_t{kWidth});
    ASSERT_EQ(drawn.height, std::uint32_t{kHeight});
    for (std::size_t i = 0; i < drawings.size(); ++i) {
        for (const Point& point : drawings[i].points) {
            const double x = point.x * (kWidth - 1);
            const double y = point.y * (kHeight - 1);
            if (i + 1 < drawings.size() && IsNear(drawings.back(), x, y)) {
                continue;
            }
            ASSERT_EQ(ColorAt(drawn, static_cast<std::uint32_t>(std::lround(x)),
                              static_cast<std::uint32_t>(std::lround(y))),
                      drawings[i].color)
                << "at " << x << ", " << y;
        }
    }
    const Picture before = Slopes(kWidth, kHeight);
    for (std::uint32_t y = 0; y < kHeight; ++y) {
        for (std::uint32_t x = 0; x < kWidth; ++x) {
            const Color color = ColorAt(drawn, x, y);
            bool isAllowed = color == ColorAt(before, x, y);
            for (const Drawing& drawing : drawings) {
                isAllowed = isAllowed || (color == drawing.color && IsNear(drawing, x, y));
            }
            ASSERT_TRUE(isAllowed) << "at " << x << ", " << y;
        }
    }
}

TEST(DrawOutlines, OfAVirtualCameraLieWhereItLooks) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        for (const Aim& aim : AimsOf(mount)) {
            SCOPED_TRACE(kMounts[mount] + " at pan " + std::to_string(aim.pan) + ", zoom " +
                         std::to_string(aim.zoom));
            const Picture view = FlattenedByLibrary(
                Slopes(kWidth, kHeight), {mount, ViewTypeVCam, aim.pan, aim.tilt, aim.zoom, kLens});
            const double aspect = static_cast<double>(view.width) / view.height;
            ExpectDrawn(Drawn(kMounts[mount], "vcam", aim),
                        {{ViewOutline(mount, kLens, aim, aspect, kCount), kYellow}});
        }
    }
}

TEST(DrawOutlines, OfFullPanoramasBoundTheRing) {
    for (const char* mount : {"ceiling", "table"}) {
        ExpectDrawn(
            Drawn(mount, "full", {30.0F, 0.0F, 1.0F}),
            {{Ellipse(kLens, 0.2, kCount), kYellow}, {Ellipse(kLens, 1.0, kCount), kYellow}});
    }
}

TEST(DrawOutlines, OfDualPanoramasAreTwoHalves) {
    for (const float pan : {0.0F, 70.0F, 250.0F}) {
        // A growing pan turns the halves of a table anticlockwise, those of a ceiling clockwise.
        ExpectDrawn(Drawn("table", "dual", {pan, 0.0F, 1.0F}),
                    {{HalfRing(kLens, static_cast<double>(pan) + 180.0, kCount), kCyan},
                     {HalfRing(kLens, static_cast<double>(pan), kCount), kYellow}});
        ExpectDrawn(Drawn("ceiling", "dual", {pan, 0.0F, 1.0F}),
                    {{HalfRing(kLens, 180.0 - static_cast<double>(pan), kCount), kCyan},
                     {HalfRing(kLens, -static_cast<double>(pan), kCount), kYellow}});
    }
}

TEST(DrawOutlines, OfADualPanoramaThatDoesNotTurnAtHalfATurn) {
    for (const float pan : {180.0F, -180.0F, 540.0F}) {
        ExpectDrawn(
            Drawn("table", "dual", {pan, 0.0F, 1.0F}),
            {{HalfRing(kLens, 180.0, kCount), kCyan}, {HalfRing(kLens, 0.0, kCount), kYellow}});
    }
}

TEST(DrawOutlines, OfAWallPanoramaAreItsFourSides) {
    ExpectDrawn(Drawn("wall", "full", {0.0F, 0.0F, 1.0F}), {{WallOutline(kLens, kCount), kYellow}});
}

}  // namespace

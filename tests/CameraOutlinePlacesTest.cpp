#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "PanoramaOutlines.h"
#include "support/OutlineGeometry.h"
#include "support/OutlineOperations.h"
#include "support/PointList.h"

using namespace KivFisheyeLib;

namespace {

// Where points lie by geometry in double precision. The library's forms are this far from it, in
// fractions of the frame.
constexpr double kRingError = 1e-5;
constexpr double kWallError = 2e-3;
constexpr double kVCamError = 3e-3;

void ExpectPoints(const PointList& list, const std::vector<Point>& expected, double error) {
    const std::vector<Point> points = list.Points();
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].x, expected[i].x, error) << "x of point " << i;
        EXPECT_NEAR(points[i].y, expected[i].y, error) << "y of point " << i;
    }
}

TEST(CameraOutlinePlaces, AVirtualCameraShowsWhatItLooksAt) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        OutlineCamera prepared(mount);
        for (const Aim& aim : AimsOf(mount)) {
            SCOPED_TRACE(testing::Message() << "mount " << mount << ", pan " << aim.pan << ", tilt "
                                            << aim.tilt << ", zoom " << aim.zoom);
            ASSERT_EQ(prepared.camera.SetAbsolutePTZ(aim.pan, aim.tilt, aim.zoom), kResultOk);
            PointList list(48);
            ASSERT_EQ(prepared.camera.GetVCamROI(list.Floats(), list.Count()), kResultOk);
            ExpectPoints(list, ViewOutline(mount, kOutlineLens, aim, 64.0 / 40.0, list.Count()),
                         kVCamError);
        }
    }
}

/// `direction` is the way in which a growing pan turns the halves: 1 is anticlockwise.
void ExpectHalvesToTurn(MountType mount, double direction) {
    OutlineCamera prepared(mount, ViewTypeDualPanorama);
    for (const float pan : {0.0F, 30.0F, 135.0F, 180.0F, 300.0F}) {
        SCOPED_TRACE(pan);
        ASSERT_EQ(prepared.camera.SetAbsolutePTZ(pan, 0.0F, 1.0F), kResultOk);
        PointList first(24);
        PointList second(40);
        ASSERT_EQ(prepared.camera.GetDualPanoramaROI(first.Floats(), first.Count(), second.Floats(),
                                                     second.Count()),
                  kResultOk);
        const double start = direction * static_cast<double>(pan);
        ExpectPoints(first, HalfRing(kOutlineLens, start, first.Count()), kRingError);
        ExpectPoints(second, HalfRing(kOutlineLens, start + 180.0, second.Count()), kRingError);
    }
}

TEST(CameraOutlinePlaces, HalvesOfATableRingBeginAtItsPan) {
    ExpectHalvesToTurn(MountTypeTable, 1.0);
}

TEST(CameraOutlinePlaces, HalvesOfACeilingRingTurnTheOtherWay) {
    ExpectHalvesToTurn(MountTypeCeiling, -1.0);
}

TEST(CameraOutlinePlaces, ARingIsItsInnerAndThenItsOuterEllipse) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        OutlineCamera ring(mount);
        PointList inner(12);
        PointList outer(20);
        ASSERT_EQ(ring.camera.GetCeilingTablePanoramaROI(inner.Floats(), inner.Count(),
                                                         outer.Floats(), outer.Count()),
                  kResultOk);
        ExpectPoints(inner, Ellipse(kOutlineLens, 0.25, inner.Count()), kRingError);
        ExpectPoints(outer, Ellipse(kOutlineLens, 1.0, outer.Count()), kRingError);
    }
}

TEST(CameraOutlinePlaces, AWallOutlineRunsUpItsLeftSideFirst) {
    OutlineCamera wall(MountTypeWall);
    PointList list(32);
    ASSERT_EQ(wall.camera.GetWallPanoramaROI(list.Floats(), list.Count()), kResultOk);
    ExpectPoints(list, WallOutline(kOutlineLens, list.Count()), kWallError);
    // 90 degrees to the left and 35 below the horizon is 90 degrees off the axis: on the rim.
    constexpr double kReach = 35.0 * 3.14159265358979 / 180.0;
    EXPECT_NEAR(list.Points()[0].x, 0.5 - 0.45 * std::cos(kReach), kWallError);
    EXPECT_NEAR(list.Points()[0].y, 0.5 + 0.3 * std::sin(kReach), kWallError);
}

TEST(CameraOutlinePlaces, BoundariesAreOfTheCamerasLensOnAnyMount) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        OutlineCamera prepared(mount);
        PointList wall(32);
        ASSERT_EQ(prepared.camera.CalculateWallPanoramaBoundary(nullptr, wall.Floats(), 32),
                  kResultOk);
        ExpectPoints(wall, WallOutline(kOutlineLens, 32), kWallError);
        PointList inner(8);
        PointList outer(4);
        ASSERT_EQ(prepared.camera.CalculateCeilingTablePanoramaBoundary(nullptr, inner.Floats(), 8,
                                                                        outer.Floats(), 4),
                  kResultOk);
        ExpectPoints(inner, Ellipse(kOutlineLens, 0.25, 8), kRingError);
        ExpectPoints(outer, Ellipse(kOutlineLens, 1.0, 4), kRingError);
    }
}

TEST(CameraOutlinePlaces, BoundariesOfAGivenLensDoNotLookAtTheCameras) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        OutlineCamera prepared(mount);
        const DewarpParams lens{0.25F, 0.4F, 60.0F, 0.5F};
        PointList wall(16);
        ASSERT_EQ(prepared.camera.CalculateWallPanoramaBoundary(&lens, wall.Floats(), 16),
                  kResultOk);
        ExpectPoints(wall, WallOutline(lens, 16), kWallError);
        PointList inner(8);
        PointList outer(8);
        ASSERT_EQ(prepared.camera.CalculateCeilingTablePanoramaBoundary(&lens, inner.Floats(), 8,
                                                                        outer.Floats(), 8),
                  kResultOk);
        ExpectPoints(inner, Ellipse(lens, 0.5, 8), kRingError);
        ExpectPoints(outer, Ellipse(lens, 1.0, 8), kRingError);
        DewarpParams own{};
        prepared.camera.GetDewarpParams(&own);
        EXPECT_EQ(own.radiusX, kOutlineLens.radiusX);
    }
}

TEST(CameraOutlinePlaces, ALensThatASetterRefusesHasBoundaries) {
    OutlineCamera prepared(MountTypeCeiling);
    ASSERT_EQ(prepared.camera.SetDewarpParams(kRefusedLens), kResultInvalidArgument);
    PointList wall(16);
    ASSERT_EQ(prepared.camera.CalculateWallPanoramaBoundary(&kRefusedLens, wall.Floats(), 16),
              kResultOk);
    PointList inner(8);
    PointList outer(8);
    ASSERT_EQ(prepared.camera.CalculateCeilingTablePanoramaBoundary(&kRefusedLens, inner.Floats(),
                                                                    8, outer.Floats(), 8),
              kResultOk);
    ExpectPoints(inner, Ellipse(kRefusedLens, 0.9, 8), kRingError);
    ExpectPoints(outer, Ellipse(kRefusedLens, 1.0, 8), 2 * kRingError);
    PointList expected(16);
    FrontwardFisheyeAlgoNS::CalculatePanoramaBoundaryCoordinate(
        1.5F, 0.375F, 200.0F, false, expected.Floats(), 16, CoordinateOrientationWindows);
    EXPECT_TRUE(wall == expected);
}

}  // namespace

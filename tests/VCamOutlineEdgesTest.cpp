#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "support/FloatList.h"
#include "support/VCamOutlineForms.h"
#include "support/VCamRoom.h"

// The outline of what a virtual camera shows: where single points lie, the rim, the axis, and what
// writes nothing.

using namespace KivFisheyeLib;

namespace {

using model::ViewOutline;

constexpr auto kNeither = static_cast<CoordinateOrientationType>(2);

class VCamOutlineEdges : public VCamOutlineTest {};

KIVFISHEYE_TEST_LIST_FORMS(VCamOutlineEdges);

double FromCentre(const std::vector<float>& points, std::size_t point) {
    return std::hypot(static_cast<double>(points[2 * point]) - 0.5,
                      static_cast<double>(points[2 * point + 1]) - 0.5);
}

}  // namespace

TEST_P(VCamOutlineEdges, AtZoom1AreTheRim) {
    for (const int count : {16, 64, 400}) {
        const auto points = Points(ViewOf({MountTypeCeiling, 0.0F, 0.0F, 1.0F}), count);
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            const double distance = GetParam() == ListForm::C ? 1e-6 : 3e-3;
            EXPECT_NEAR(FromCentre(points, i), 0.5, distance) << i << " of " << count;
            EXPECT_LE(FromCentre(points, i), 0.5 + 1e-6);
        }
        EXPECT_NEAR(FromCentre(points, 0), 0.5, 1e-6) << "corners are beyond the rim";
    }
}

TEST_P(VCamOutlineEdges, AtZoom2BulgeAtTheCorners) {
    const auto points = Points(ViewOf({MountTypeWall, 0.0F, 0.0F, 2.0F}), 32);
    for (std::size_t side = 0; side < 4; ++side) {
        // 45 degrees at the middle of an edge, and as the arccosine of 1 / sqrt(3) at a corner.
        const double scale = 1.01 * 0.5 / RadiansOf(90.0);
        EXPECT_NEAR(FromCentre(points, 8 * side + 4), scale * RadiansOf(45.0), 3e-3);
        EXPECT_NEAR(FromCentre(points, 8 * side), scale * std::acos(1.0 / std::sqrt(3.0)), 3e-3);
    }
}

TEST_P(VCamOutlineEdges, HoldEachAxisAtItsOwnRadius) {
    ViewOutline view = ViewOf({MountTypeWall, 0.0F, 0.0F, 1.0F});
    view.radiusX = 0.75F;
    view.radiusY = 0.25F;
    view.aspect = 2.0F;
    const auto points = Points(view, 64);
    for (std::size_t i = 0; i < 64; ++i) {
        const double x = (static_cast<double>(points[2 * i]) - 0.5) / 0.75;
        const double y = (static_cast<double>(points[2 * i + 1]) - 0.5) / 0.25;
        EXPECT_LE(std::hypot(x, y), 1.0 + 1e-6);
    }
    // Corners are beyond the rim, in the direction (2, 1).
    EXPECT_NEAR(points[0], 0.5 - 0.75 * 2.0 / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR(points[1], 0.5 - 0.25 / std::sqrt(5.0), 1e-6);
}

TEST_P(VCamOutlineEdges, GoDownTheLeftEdgeFirst) {
    const auto points = Points(ViewOf({MountTypeCeiling, 0.0F, 0.0F, 2.0F}), 16);
    const auto isAt = [&](std::size_t point, bool isLeft, bool isTop) {
        return (points[2 * point] < 0.5F) == isLeft && (points[2 * point + 1] < 0.5F) == isTop;
    };
    EXPECT_TRUE(isAt(0, true, true));
    EXPECT_TRUE(isAt(3, true, false)) << "left, one step from the bottom";
    EXPECT_TRUE(isAt(4, true, false));
    EXPECT_TRUE(isAt(7, false, false));
    EXPECT_TRUE(isAt(8, false, false));
    EXPECT_TRUE(isAt(11, false, true));
    EXPECT_TRUE(isAt(12, false, true));
    EXPECT_TRUE(isAt(15, true, true));
}

TEST_P(VCamOutlineEdges, OfTextureOrientationMirrorAboutTheCentre) {
    ViewOutline view = ViewOf({MountTypeTable, 70.0F, -30.0F, 4.0F});
    view.center = 0.0F;
    const auto windows = Points(view, 64);
    view.isWindows = false;
    const auto texture = Points(view, 64);
    for (std::size_t i = 0; i < 128; i += 2) {
        EXPECT_EQ(texture[i], windows[i]);
        EXPECT_EQ(texture[i + 1], -windows[i + 1]);
    }
}

TEST_P(VCamOutlineEdges, OfARisingTiltMoveTowardsTheRimInThePansDirection) {
    const auto middleOf = [](float tilt) {
        const auto points = Points(ViewOf({MountTypeCeiling, 90.0F, tilt, 5.0F}), 64);
        PicturePoint middle{0.0, 0.0};
        for (std::size_t i = 0; i < 64; ++i) {
            middle.column += static_cast<double>(points[2 * i]) / 64.0;
            middle.row += static_cast<double>(points[2 * i + 1]) / 64.0;
        }
        return middle;
    };
    double last = middleOf(0.0F).column;
    EXPECT_NEAR(last, 0.5, 3e-3);
    for (const float tilt : {15.0F, 30.0F, 45.0F}) {
        const PicturePoint middle = middleOf(tilt);
        EXPECT_GT(middle.column, last + 0.05) << "a ceiling's pan of 90 degrees is to the right";
        EXPECT_NEAR(middle.row, 0.5, 3e-3);
        last = middle.column;
    }
}

TEST_P(VCamOutlineEdges, OnTheAxisAreNaN) {
    // A view whose left edge goes through the axis half way down.
    ViewOutline view = ViewOf({MountTypeWall, 0.0F, 0.0F, 3.0F});
    view.fieldOfView = 90.0F;
    view.nearPlane = 1.0F;
    view.eyeZ = 0.0F;
    view.aspect = 0.0F;
    for (const int count : {16, 32}) {
        const auto points = Points(view, count);
        const auto middle = static_cast<std::size_t>(count / 8);
        for (std::size_t i = 0; i < static_cast<std::size_t>(count / 4); ++i) {
            EXPECT_EQ(std::isnan(points[2 * i]), i == middle) << i << " of " << count;
            EXPECT_EQ(std::isnan(points[2 * i + 1]), i == middle) << i << " of " << count;
        }
    }
}

TEST_P(VCamOutlineEdges, CountsBelowFourWriteNothing) {
    const ViewOutline view = ViewOf({MountTypeWall, 0.0F, 0.0F, 2.0F});
    const MatrixOf matrix(view);
    for (const int count : {3, 2, 1, 0, -1, -4, -16}) {
        VCamOutlineOf(GetParam(), CoordinateOrientationWindows)(
            0.5F, 0.5F, 0.5F, 0.5F, view.eyeZ, view.fieldOfView, 1.0F, view.nearPlane,
            matrix.elements, nullptr, count);
    }
}

TEST(VCamOutlineEntry, CenterAtOriginShiftsByHalfAndNothingElse) {
    ViewOutline view = ViewOf({MountTypeCeiling, 20.0F, 50.0F, 3.0F});
    for (const bool isWindows : {true, false}) {
        view.isWindows = isWindows;
        EXPECT_TRUE(AreNear(VCamOutlineOfEntry(view, true, 64),
                            Shifted(VCamOutlineOfEntry(view, false, 64), 0.5F), 6e-8));
    }
}

TEST(VCamOutlineEntry, OtherOrientationsWriteNothing) {
    const MatrixOf matrix(ViewOf({MountTypeWall, 0.0F, 0.0F, 2.0F}));
    FisheyeVCamAlgoNS::CalculateVCamROICoordinate(0.5F, 0.5F, 0.0F, 90.0F, 1.0F, 1.0F,
                                                  matrix.elements, false, nullptr, 64, kNeither);
}

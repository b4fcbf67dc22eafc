#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"
#include "support/VCamRoom.h"

// The straight edges of a room, as the virtual camera shows them.

using namespace KivFisheyeLib;

namespace {

constexpr int kSide = 2047;
constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};

/// Pan and tilt, in degrees, that look at a direction.
struct PanAndTilt {
    float pan;
    float tilt;
};

PanAndTilt LookAt(MountType mount, const Vector3& direction) {
    const double perRadian = 1.0 / RadiansOf(1.0);
    const double offAxis =
        std::atan2(std::hypot(direction.x, direction.y), -direction.z) * perRadian;
    switch (mount) {
        case MountTypeCeiling:
            return {static_cast<float>(std::atan2(direction.x, direction.y) * perRadian),
                    static_cast<float>(offAxis)};
        case MountTypeTable:
            return {static_cast<float>(std::atan2(direction.x, -direction.y) * perRadian),
                    static_cast<float>(-offAxis)};
        case MountTypeWall:
            break;
    }
    return {static_cast<float>(std::atan2(direction.x, -direction.z) * perRadian),
            static_cast<float>(std::asin(direction.y / direction.Length()) * perRadian)};
}

class VCamEdges : public VCamKernelTest {
protected:
    struct View {
        VCamFrame frame;
        std::vector<Vector3> directions;
    };

    View ViewOf(MountType mount, const PanAndTilt& aim, float zoom) const {
        const VCamFrame frame = WithSettings(PackedVCam(kSide, kSide, kWidth, kHeight, Bytes()),
                                             mount, SettingsOf(mount, aim.pan, aim.tilt, zoom));
        return {frame, DirectionsOf(Form(), frame, GetParam().Places(frame, m_coordinates))};
    }

    /// How far a point of an edge may be from its line, in output pixels: one of them or one of the
    /// source's, whichever is larger there, and what the form's arccosine is off by.
    static double Tolerance(const VCamFrame& frame, const std::vector<PicturePoint>& points) {
        const ExactLens lens(frame);
        const ExactVCam camera(frame, AxesOf(MountTypeWall, 0.0, 0.0));
        double pixelsPerRadian = 0.0;
        for (const PicturePoint& point : points) {
            pixelsPerRadian = std::max(pixelsPerRadian, camera.PixelsPerRadian(point));
        }
        const double arccosine =
            ArccosineError(Form(), frame, frame.radiusX, kSide) * lens.AngleOfPixel();
        return std::max(1.0, lens.AngleOfPixel() * pixelsPerRadian) + arccosine * pixelsPerRadian;
    }

    static double SpanOf(const std::vector<PicturePoint>& points) {
        double span = 0.0;
        for (const PicturePoint& point : points) {
            span = std::max(span, Distance(point, points.front()));
        }
        return span;
    }

    /// Whether the picture has the edge's upper end above its lower one.
    static bool IsUpright(const RoomEdge& edge, const View& view,
                          const std::vector<PicturePoint>& points) {
        const auto [top, bottom] = std::minmax_element(
            points.begin(), points.end(),
            [](const PicturePoint& a, const PicturePoint& b) { return a.row < b.row; });
        const auto shownAt = [&](const PicturePoint& point) {
            return view.directions[static_cast<std::size_t>(std::lround(point.row) * kWidth +
                                                            std::lround(point.column))];
        };
        const Vector3 upward = edge.to - edge.from;
        return Dot(shownAt(*top), upward) > Dot(shownAt(*bottom), upward);
    }

    /// An edge that the picture shows straight up and down in its middle column.
    static void ExpectUprightInTheMiddle(const RoomEdge& edge, const View& view) {
        const auto points = CrossingsOf(edge, view.frame, view.directions);
        ASSERT_GT(SpanOf(points), kHeight / 4.0);
        const double tolerance = Tolerance(view.frame, points);
        for (const PicturePoint& point : points) {
            ASSERT_NEAR(point.column, (kWidth - 1) / 2.0, tolerance) << "row " << point.row;
        }
        EXPECT_TRUE(IsUpright(edge, view, points));
    }

    static constexpr int kWidth = 240;
    static constexpr int kHeight = 181;

private:
    std::vector<unsigned char> m_coordinates =
        CoordinateFrame(kSide, kSide, kSide* Bytes(), Bytes());
};

TEST_P(VCamEdges, AreStraightLinesOnEveryMountAtEveryZoom) {
    for (const MountType mount : kMounts) {
        for (const float zoom : {2.0F, 3.0F, 6.0F, 10.0F}) {
            int lines = 0;
            for (const RoomEdge& edge : EdgesOfRoom(mount)) {
                const View view = ViewOf(mount, LookAt(mount, edge.from + edge.to), zoom);
                const auto points = CrossingsOf(edge, view.frame, view.directions);
                if (points.empty() || SpanOf(points) < kHeight / 5.0) {
                    continue;
                }
                ++lines;
                EXPECT_LE(LineThrough(points).residual, Tolerance(view.frame, points))
                    << "mount " << mount << ", zoom " << zoom << ", line " << lines;
            }
            EXPECT_GE(lines, 8) << "mount " << mount << ", zoom " << zoom;
        }
    }
}

TEST_P(VCamEdges, OfAWallCameraAreUprightWhereItLooksLevel) {
    for (const float zoom : {2.0F, 3.0F, 6.0F}) {
        int lines = 0;
        for (const float pan : {0.0F, 25.0F}) {
            const View view = ViewOf(MountTypeWall, {pan, 0.0F}, zoom);
            for (const RoomEdge& edge : EdgesOfRoom(MountTypeWall)) {
                const auto points = CrossingsOf(edge, view.frame, view.directions);
                if (!edge.isVertical || points.empty() || SpanOf(points) < kHeight / 6.0) {
                    continue;
                }
                ++lines;
                const auto [left, right] = std::minmax_element(
                    points.begin(), points.end(), [](const PicturePoint& a, const PicturePoint& b) {
                        return a.column < b.column;
                    });
                EXPECT_LE(right->column - left->column, 2.0 * Tolerance(view.frame, points))
                    << "zoom " << zoom;
                EXPECT_TRUE(IsUpright(edge, view, points));
            }
        }
        EXPECT_GE(lines, 4) << "zoom " << zoom;
    }
}

// Pan 0 looks to the top of a ceiling camera's picture and to the bottom of a table camera's.
TEST_P(VCamEdges, AreUprightInTheMiddleWherePanZeroFacesThem) {
    const RoomEdge ahead[] = {{{0.0, 2.0, -2.8}, {0.0, 2.0, -0.2}, true},
                              {{0.0, -2.0, -0.1}, {0.0, -2.0, -2.2}, true}};
    for (const float zoom : {2.0F, 3.0F, 6.0F, 10.0F}) {
        ASSERT_NO_FATAL_FAILURE(
            ExpectUprightInTheMiddle(ahead[0], ViewOf(MountTypeCeiling, {0.0F, 45.0F}, zoom)))
            << "ceiling, zoom " << zoom;
        ASSERT_NO_FATAL_FAILURE(
            ExpectUprightInTheMiddle(ahead[1], ViewOf(MountTypeTable, {0.0F, -55.0F}, zoom)))
            << "table, zoom " << zoom;
    }
}

TEST_P(VCamEdges, AreUprightInTheMiddleWhereThePanFacesThem) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        for (const float zoom : {2.0F, 4.0F, 8.0F}) {
            for (const RoomEdge& edge : EdgesOfRoom(mount)) {
                if (edge.isVertical) {
                    ASSERT_NO_FATAL_FAILURE(ExpectUprightInTheMiddle(
                        edge, ViewOf(mount, LookAt(mount, edge.from + edge.to), zoom)))
                        << "mount " << mount << ", zoom " << zoom;
                }
            }
        }
    }
}

// 24 bits go the same way, as their own tests show.
INSTANTIATE_TEST_SUITE_P(, VCamEdges,
                         testing::Values(VCamKernel{VCamForm::C, 4}, VCamKernel{VCamForm::SSE41, 4},
                                         VCamKernel{VCamForm::AVX, 4}),
                         NameOfKernel);

}  // namespace

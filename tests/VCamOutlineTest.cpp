#include "vcam/VCamOutline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include "support/FloatList.h"
#include "support/OutlineModel.h"
#include "support/VCamForms.h"
#include "support/VCamOutlineForms.h"
#include "support/VCamRoom.h"

// The outline of what a virtual camera shows, against a plain model of each form and against
// geometry in double precision.

using namespace KivFisheyeLib;

namespace {

using model::ViewOutline;

/// The pixels of an output of (n + 1) by (n + 1) along its edges, in the outline's order.
std::vector<PicturePoint> EdgesOf(int n) {
    std::vector<PicturePoint> edges;
    for (int i = 0; i < 4 * n; ++i) {
        const double k = i % n;
        const PicturePoint sides[] = {{0.0, k}, {k, 1.0 * n}, {1.0 * n, n - k}, {n - k, 0.0}};
        edges.push_back(sides[i / n]);
    }
    return edges;
}

/// In windows orientation around (0.5, 0.5), by geometry; what lies beyond the rim is drawn along
/// it.
std::vector<double> ExactPoints(const AimedView& aim, const ViewOutline& view, int count) {
    const int n = count / 4;
    VCamFrame frame = PackedVCam(2, 2, n + 1, n + 1, 4);
    frame.radiusX = view.radiusX;
    frame.radiusY = view.radiusY;
    frame.aspect = view.aspect;
    frame = WithSettings(frame, aim.mount, SettingsOf(aim.mount, aim.pan, aim.tilt, aim.zoom));
    const VCamSettings s = SettingsOf(aim.mount, aim.pan, aim.tilt, aim.zoom);
    const ExactVCam camera(
        frame, AxesOf(aim.mount, static_cast<double>(s.pan), static_cast<double>(s.tilt)));
    std::vector<double> points;
    for (const PicturePoint& pixel : EdgesOf(n)) {
        const PicturePoint place = camera.SourceOf(pixel);
        const double held = std::min(1.0, RadiansOf(90.0) / camera.OffAxis(pixel));
        points.push_back(0.5 + held * (place.column - 0.5));
        points.push_back(0.5 + held * (place.row - 0.5));
    }
    return points;
}

std::vector<AimedView> AllAims() {
    std::vector<AimedView> aims;
    for (const float zoom : {1.0F, 1.25F, 1.5F, 2.0F, 3.0F, 5.5F, 10.0F}) {
        for (const float tilt : {-41.0F, 0.0F, 17.0F}) {
            aims.push_back({MountTypeWall, 33.0F, tilt, zoom});
        }
        for (const float tilt : {0.0F, 30.0F, 80.0F}) {
            aims.push_back({MountTypeCeiling, 123.0F, tilt, zoom});
            aims.push_back({MountTypeTable, 277.0F, -tilt, zoom});
        }
    }
    return aims;
}

class VCamOutlines : public VCamOutlineTest {
protected:
    static void ExpectModel(const ViewOutline& view, int count) {
        EXPECT_TRUE(
            AreSameFloats(Points(view, count), model::ViewOutlinePoints(GetParam(), view, count)))
            << count << " points, eye " << view.eyeZ << ", field " << view.fieldOfView;
    }
};

KIVFISHEYE_TEST_LIST_FORMS(VCamOutlines);

/// Rays that a rounding puts on the axis are NaN in one form and the centre in another.
std::vector<float> WithAxisInTheCentre(std::vector<float> points) {
    for (float& value : points) {
        value = std::isnan(value) ? 0.5F : value;
    }
    return points;
}

}  // namespace

TEST_P(VCamOutlines, FollowTheirFormToTheBitInRandomViews) {
    std::mt19937 random(31);
    std::uniform_real_distribution<float> any(0.0F, 1.0F);
    constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};
    for (int i = 0; i < 400; ++i) {
        ViewOutline view = ViewOf({kMounts[i % 3], 360.0F * any(random) - 90.0F,
                                   180.0F * any(random) - 90.0F, 1.0F + 9.0F * any(random)});
        view.center = i % 4 == 0 ? 0.0F : any(random);
        view.radiusX = any(random);
        view.radiusY = any(random);
        view.aspect = 0.25F + 3.0F * any(random);
        view.isWindows = i % 2 == 0;
        ExpectModel(view, 16 * (1 + i % 40));
    }
}

TEST_P(VCamOutlines, FollowTheirFormToTheBitAtAllZoomsAndLengths) {
    for (const AimedView& aim : AllAims()) {
        ViewOutline view = ViewOf(aim);
        for (const int count : {16, 48, 400}) {
            view.isWindows = true;
            ExpectModel(view, count);
            view.isWindows = false;
            ExpectModel(view, count);
        }
    }
    ExpectModel(ViewOf({MountTypeCeiling, 40.0F, 40.0F, 3.0F}), 4096);
}

TEST_P(VCamOutlines, FollowTheirFormToTheBitWithMatricesOfNoMount) {
    std::mt19937 random(37);
    std::uniform_real_distribution<float> any(-1.0F, 1.0F);
    for (int i = 0; i < 50; ++i) {
        ViewOutline view = ViewOf({MountTypeWall, 0.0F, 0.0F, 2.0F});
        view.eyeZ = 0.5F + 0.5F * any(random);
        view.nearPlane = 1.0F + 0.9F * any(random);
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 3; ++column) {
                view.matrix[4 * column + row] = any(random);
            }
            view.matrix[12 + row] = any(random);
        }
        ExpectModel(view, 64);
    }
}

// Squares of so small numbers lose their bits, so that a cosine may be beyond 1: the scalar form
// then gives NaN, and the lanes the rim.
TEST_P(VCamOutlines, FollowTheirFormToTheBitThroughTinyRectangles) {
    for (const float nearPlane : {1e-19F, 1e-21F, 3e-22F, 1e-22F, 3e-23F, 1e-25F}) {
        ViewOutline view = ViewOf({MountTypeCeiling, 25.0F, 10.0F, 8.0F});
        view.nearPlane = nearPlane;
        view.eyeZ = 0.0F;
        ExpectModel(view, 256);
        view.isWindows = false;
        ExpectModel(view, 256);
    }
}

// The lanes' arccosine is off by 0.0058 radians at most. A cosine in single precision leaves 3.5e-4
// radians next to the axis.
TEST_P(VCamOutlines, GoRoundWhatTheViewShows) {
    for (const AimedView& aim : AllAims()) {
        ViewOutline view = ViewOf(aim);
        view.radiusY = 0.375F;
        view.aspect = 1.5F;
        const double error = GetParam() == ListForm::C ? 5e-4 : 0.0058;
        const double tolerance =
            error * (1.0 + static_cast<double>(view.eyeZ)) * 0.5 / RadiansOf(90.0);
        EXPECT_TRUE(AreNear(Points(view, 64), ExactPoints(aim, view, 64), tolerance))
            << "zoom " << aim.zoom << ", tilt " << aim.tilt;
    }
}

TEST_P(VCamOutlines, StayNextToTheScalarForm) {
    for (const AimedView& aim : AllAims()) {
        for (const int count : {16, 64, 400, 1024}) {
            const ViewOutline view = ViewOf(aim);
            EXPECT_TRUE(AreNear(WithAxisInTheCentre(Points(view, count)),
                                WithAxisInTheCentre(VCamOutlinePoints(ListForm::C, view, count)),
                                3e-3))
                << count << " points, zoom " << aim.zoom << ", tilt " << aim.tilt;
        }
    }
}

TEST(ScalarVCamOutline, TakesAnyCountAndBuffer) {
    const ViewOutline view = ViewOf({MountTypeCeiling, 20.0F, 50.0F, 3.0F});
    for (int count = 4; count <= 37; ++count) {
        auto expected = model::ViewOutlinePoints(ListForm::C, view, count);
        EXPECT_EQ(expected.size(), 8 * static_cast<std::size_t>(count / 4));
        expected.resize(2 * static_cast<std::size_t>(count), kUntouched);
        EXPECT_TRUE(AreSameFloats(VCamOutlinePoints(ListForm::C, view, count), expected)) << count;
        const MatrixOf matrix(view);
        FloatList list(2 * static_cast<std::size_t>(count) + 1);
        VCamOutlineOf(ListForm::C, CoordinateOrientationWindows)(
            view.center, view.center, view.radiusX, view.radiusY, view.eyeZ, view.fieldOfView,
            view.aspect, view.nearPlane, matrix.elements, list.data() + 1, count);
        expected.insert(expected.begin(), kUntouched);
        EXPECT_TRUE(AreSameFloats(list.Values(), expected)) << count;
    }
}

TEST(VCamOutlineEntry, TakesTheFormOfThisProcessor) {
    ViewOutline view = ViewOf({MountTypeCeiling, 20.0F, 50.0F, 3.0F});
    for (const bool isWindows : {true, false}) {
        view.isWindows = isWindows;
        const auto points = VCamOutlineOfEntry(view, false, 64);
        for (const ListForm form : kListForms) {
            EXPECT_EQ(points == VCamOutlinePoints(form, view, 64), form == FormOfEntries())
                << NameOf(form);
        }
    }
}

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"
#include "support/VCamRoom.h"

// What the virtual camera shows, against geometry in double precision: directions pixel by pixel.

using namespace KivFisheyeLib;

namespace {

constexpr double kPi = 3.14159265358979323846;

// Single precision moves a ray by far less, and near the axis its cosine leaves 3.5e-4 radians.
constexpr double kRoundingOfRay = 5e-4;

struct Aim {
    MountType mount;
    float pan;
    float tilt;
    float zoom;
};

std::vector<Aim> AllAims() {
    std::vector<Aim> aims;
    for (const float zoom : {1.0F, 1.5F, 2.0F, 3.0F, 10.0F}) {
        for (const float pan : {-38.0F, 0.0F, 21.0F}) {
            for (const float tilt : {-44.0F, 0.0F, 30.0F}) {
                aims.push_back({MountTypeWall, pan, tilt, zoom});
            }
        }
        for (const float pan : {0.0F, 45.0F, 100.0F, 215.0F, 359.0F}) {
            for (const float tilt : {0.0F, 12.0F, 44.0F, 85.0F}) {
                aims.push_back({MountTypeCeiling, pan, tilt, zoom});
                aims.push_back({MountTypeTable, pan, -tilt, zoom});
            }
        }
    }
    return aims;
}

class VCamDirections : public VCamKernelTest {
protected:
    /// Holds each pixel of a view against the exact one.
    static void ExpectExactDirections(const VCamFrame& frame, const ExactVCam& exact,
                                      const std::vector<unsigned char>& coordinates) {
        const SourcePlaces places = GetParam().Places(frame, coordinates);
        int shown = 0;
        std::size_t next = 0;
        for (int row = 0; row < frame.dstHeight; ++row) {
            for (int column = 0; column < frame.dstWidth; ++column) {
                const auto place = places[next++];
                const PicturePoint output{static_cast<double>(column), static_cast<double>(row)};
                shown += place ? 1 : 0;
                ASSERT_NO_FATAL_FAILURE(ExpectExact(frame, exact, output, place))
                    << "column " << column << ", row " << row;
            }
        }
        EXPECT_GT(shown, 500);
    }

private:
    static void ExpectExact(const VCamFrame& frame, const ExactVCam& exact,
                            const PicturePoint& output, const std::optional<PixelPlace>& place) {
        const PicturePoint expected = exact.SourceOf(output);
        const double toleranceX = Tolerance(frame, frame.radiusX, frame.srcWidth);
        const double toleranceY = Tolerance(frame, frame.radiusY, frame.srcHeight);
        if (place) {
            const PicturePoint middle = MiddleOf(Form(), *place);
            ASSERT_NEAR(middle.column, expected.column, 0.5 + toleranceX);
            ASSERT_NEAR(middle.row, expected.row, 0.5 + toleranceY);
        }
        const double angle = (Form() == VCamForm::C ? 0.0 : 0.0058) + kRoundingOfRay;
        const double rim = kPi / 2.0;
        const double inFrameX =
            std::min(expected.column, frame.srcWidth - 1 - expected.column) / toleranceX;
        const double inFrameY =
            std::min(expected.row, frame.srcHeight - 1 - expected.row) / toleranceY;
        const double offAxis = exact.OffAxis(output);
        const double reach = angle * (1.0 + static_cast<double>(frame.eyeZ));
        if (offAxis > rim + reach || inFrameX < -1.0 || inFrameY < -1.0) {
            ASSERT_FALSE(place.has_value()) << "beyond the lens";
        } else if (offAxis < rim - reach && inFrameX > 1.0 && inFrameY > 1.0 && offAxis > 1e-6) {
            ASSERT_TRUE(place.has_value()) << "within the lens";
        }
    }

    static double Tolerance(const VCamFrame& frame, float radius, int side) {
        const double pixelsPerRadian = (1.0 + static_cast<double>(frame.eyeZ)) / kPi * 2.0 *
                                       static_cast<double>(radius) * side;
        return ArccosineError(Form(), frame, radius, side) + kRoundingOfRay * pixelsPerRadian;
    }
};

TEST_P(VCamDirections, AreThoseOfTheGeometryOnEveryMountAtEveryZoom) {
    VCamFrame sizes = PackedVCam(1023, 768, 96, 51, Bytes());
    sizes.radiusX = 0.375F;
    const auto coordinates = CoordinateFrame(1023, 768, sizes.srcStride, Bytes());
    for (const Aim& aim : AllAims()) {
        const VCamSettings settings = SettingsOf(aim.mount, aim.pan, aim.tilt, aim.zoom);
        const VCamFrame frame = WithSettings(sizes, aim.mount, settings);
        const ViewAxes axes = AxesOf(aim.mount, static_cast<double>(settings.pan),
                                     static_cast<double>(settings.tilt));
        ASSERT_NO_FATAL_FAILURE(ExpectExactDirections(frame, ExactVCam(frame, axes), coordinates))
            << "mount " << aim.mount << ", pan " << aim.pan << ", tilt " << aim.tilt << ", zoom "
            << aim.zoom;
    }
}

TEST_P(VCamDirections, AreThoseOfTheGeometryForUnevenAndOverflowingLenses) {
    for (const float radiusX : {0.2F, 0.5F, 0.8F}) {
        for (const float radiusY : {0.3F, 0.7F}) {
            VCamFrame frame = PackedVCam(640, 480, 64, 48, Bytes());
            frame.radiusX = radiusX;
            frame.radiusY = radiusY;
            const auto coordinates = CoordinateFrame(640, 480, frame.srcStride, Bytes());
            for (const float zoom : {1.0F, 1.7F, 2.0F, 4.0F}) {
                const VCamSettings settings = SettingsOf(MountTypeCeiling, 60.0F, 35.0F, zoom);
                frame = WithSettings(frame, MountTypeCeiling, settings);
                const ViewAxes axes = AxesOf(MountTypeCeiling, 60.0, zoom < 2.0F ? 0.0 : 35.0);
                ASSERT_NO_FATAL_FAILURE(
                    ExpectExactDirections(frame, ExactVCam(frame, axes), coordinates))
                    << "radii " << radiusX << " and " << radiusY << ", zoom " << zoom;
            }
        }
    }
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamDirections);

}  // namespace

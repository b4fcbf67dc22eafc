#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "support/CoordinateFrame.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// How far the vector forms may be from the scalar one, which has exact arccosines.

using namespace KivFisheyeLib;

namespace {

/// The largest distance in source pixels along one side.
int Reach(VCamForm form, const VCamFrame& frame, float radius, int side) {
    return 1 + static_cast<int>(std::ceil(ArccosineError(form, frame, radius, side)));
}

/// How far from the middle of the lens a place is, 1 at its rim.
double LensRadius(const VCamFrame& frame, const PixelPlace& place) {
    const double x = place.column / (frame.srcWidth - 1.0) - 0.5;
    const double y = place.row / (frame.srcHeight - 1.0) - 0.5;
    return std::hypot(x / static_cast<double>(frame.radiusX),
                      y / static_cast<double>(frame.radiusY));
}

class VCamKernelDistances : public VCamKernelTest {
protected:
    static void ExpectNearScalarForm(const VCamFrame& frame) {
        const SourcePlaces scalar = VCamKernel{VCamForm::C, Bytes()}.Places(frame);
        const SourcePlaces vector = GetParam().Places(frame);
        const int reachX = Reach(Form(), frame, frame.radiusX, frame.srcWidth);
        const int reachY = Reach(Form(), frame, frame.radiusY, frame.srcHeight);
        std::size_t shown = 0;
        for (std::size_t i = 0; i < scalar.size(); ++i) {
            if (scalar[i] && vector[i]) {
                ++shown;
                ASSERT_LE(std::abs(scalar[i]->column - vector[i]->column), reachX) << i;
                ASSERT_LE(std::abs(scalar[i]->row - vector[i]->row), reachY) << i;
            } else if (scalar[i] || vector[i]) {
                ExpectNearBorder(frame, scalar[i] ? *scalar[i] : *vector[i], reachX, reachY);
            }
        }
        EXPECT_GT(shown, scalar.size() / 8);
    }

private:
    static void ExpectNearBorder(const VCamFrame& frame, const PixelPlace& place, int reachX,
                                 int reachY) {
        const double tolerance =
            1.5 * std::max(reachX / (static_cast<double>(frame.radiusX) * (frame.srcWidth - 1)),
                           reachY / (static_cast<double>(frame.radiusY) * (frame.srcHeight - 1)));
        const double radius = LensRadius(frame, place);
        const bool isAtRim = radius > 1.0 - tolerance;
        const bool isAtAxis = radius < tolerance;
        const bool isAtFrame = place.column <= reachX || place.row <= reachY ||
                               place.column >= frame.srcWidth - 1 - reachX ||
                               place.row >= frame.srcHeight - 1 - reachY;
        EXPECT_TRUE(isAtRim || isAtFrame || isAtAxis) << place << " of " << frame;
    }
};

TEST_P(VCamKernelDistances, AreWithinTheArccosinesErrorOfTheScalarForm) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        const float tilt = mount == MountTypeTable ? -35.0F : 35.0F;
        for (const float zoom : {1.0F, 1.5F, 2.0F, 5.0F, 10.0F}) {
            VCamFrame frame = PackedVCam(1024, 768, 200, 121, Bytes());
            frame.radiusY = 0.44F;
            ASSERT_NO_FATAL_FAILURE(ExpectNearScalarForm(
                WithSettings(frame, mount, SettingsOf(mount, 40.0F, tilt, zoom))))
                << "mount " << mount << ", zoom " << zoom;
        }
    }
}

TEST_P(VCamKernelDistances, HoldForLensesBeyondTheFrameAndSmallOnes) {
    for (const float radius : {0.1F, 0.7F, 1.0F}) {
        for (const float eye : {1.0F, 0.5F, 0.01F}) {
            VCamFrame frame = PackedVCam(640, 641, 160, 80, Bytes());
            frame.radiusX = radius;
            frame.radiusY = 0.5F;
            frame.eyeZ = eye;
            frame.nearPlane = eye;
            frame.aspect = 1.0F;
            ASSERT_NO_FATAL_FAILURE(ExpectNearScalarForm(frame)) << radius << ", eye " << eye;
        }
    }
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelDistances);

}  // namespace

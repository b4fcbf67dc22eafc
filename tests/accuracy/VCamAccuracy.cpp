#include <algorithm>
#include <cmath>
#include <vector>

#include "accuracy/GeometryCheck.h"
#include "accuracy/PictureAccuracy.h"
#include "support/VCamForms.h"
#include "support/VCamRoom.h"

using namespace KivFisheyeLib;

namespace {

const double kQuarterTurn = std::acos(0.0);

/// How many source pixels one radian at the eye is, along a side.
double PixelsPerRadian(const VCamFrame& frame, float radius) {
    return (1.0 + static_cast<double>(frame.eyeZ)) / kQuarterTurn * static_cast<double>(radius) *
           frame.srcWidth;
}

std::vector<ExactPlace> ExactPlacesOf(const VCamFrame& frame, const ViewAxes& axes) {
    const ExactVCam exact(frame, axes);
    const double pixelsToRim =
        static_cast<double>(std::max(frame.radiusX, frame.radiusY)) * frame.srcWidth;
    std::vector<ExactPlace> places;
    for (int y = 0; y < frame.dstHeight; ++y) {
        for (int x = 0; x < frame.dstWidth; ++x) {
            const PicturePoint output{static_cast<double>(x), static_cast<double>(y)};
            const PicturePoint place = exact.SourceOf(output);
            const double beyondRim = (exact.OffAxis(output) / kQuarterTurn - 1.0) * pixelsToRim;
            places.push_back(
                {place.column, place.row,
                 std::max(beyondRim, BeyondFrame(place.column, place.row, frame.srcWidth))});
        }
    }
    return places;
}

FormBounds BoundsOf(const VCamFrame& frame, KernelForm form) {
    // Single precision moves a ray by far less, and near the axis its cosine leaves 3.5e-4 radians.
    constexpr double kRoundingOfRay = 5e-4;
    const auto ofArccosine = [&](float radius) {
        return ArccosineError(form, frame, radius, frame.srcWidth);
    };
    const auto fromExact = [&](float radius) {
        return ofArccosine(radius) + kRoundingOfRay * PixelsPerRadian(frame, radius);
    };
    const auto fromScalar = [&](float radius) { return 1.0 + std::ceil(ofArccosine(radius)); };
    return {{fromExact(frame.radiusX), fromExact(frame.radiusY)},
            {fromScalar(frame.radiusX), fromScalar(frame.radiusY)}};
}

}  // namespace

void AddVCam(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures) {
    const int bytesPerPixel = random.NextBytesPerPixel();
    const int width = 8 * random.Whole(8, 64);
    const int height = random.Whole(width / 2, width);
    VCamFrame frame = PackedVCam(source.Side(), source.Side(), width, height, bytesPerPixel);
    random.SetLens(frame);
    frame.aspect = static_cast<float>(width) / static_cast<float>(height);

    constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};
    const MountType mount = kMounts[random.Whole(0, 2)];
    const float pan = random.Between(-180.0F, 180.0F);
    const float tilt = random.Between(-90.0F, 90.0F);
    const float zoom = random.Whole(0, 3) == 0 ? 1.0F : random.Between(1.0F, 10.0F);
    const VCamSettings settings = SettingsOf(mount, pan, tilt, zoom);
    frame = WithSettings(frame, mount, settings);
    const ViewAxes axes =
        AxesOf(mount, static_cast<double>(settings.pan), static_cast<double>(settings.tilt));

    GeometryCheck check(figures, Conversion::VCam, source.Side(), ExactPlacesOf(frame, axes));
    for (const KernelForm form : kKernelForms) {
        check.Add(form, VCamKernel{form, bytesPerPixel}.Places(frame, source.Pixels(bytesPerPixel)),
                  BoundsOf(frame, form));
    }
}

#include "KernelsVCam.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <ostream>
#include <vector>

#include "KernelsCheck.h"
#include "KernelsJobs.h"
#include "Outcomes.h"
#include "support/VCamForms.h"

// The kernels of the virtual camera.

namespace {

struct VCamJob : VCamFrame {
    int bytesPerPixel = 3;
    bool isUsual = false;
};

std::ostream& operator<<(std::ostream& out, const VCamJob& job) {
    return out << "a virtual camera, " << 8 * job.bytesPerPixel << " bits, "
               << static_cast<const VCamFrame&>(job);
}

VCamJob NextVCam(KernelsInput& input) {
    VCamJob job;
    job.bytesPerPixel = input.BytesPerPixel();
    const bool isWild = input.OnceIn(4);
    input.SetWild(isWild);
    PanoramaFrames frames = NextFrames(input, job.bytesPerPixel, Frames::Any);
    if (input.OnceIn(2)) {
        const int whole = (frames.dstWidth + 7) / 8 * 8;
        frames.dstStride += (whole - frames.dstWidth) * job.bytesPerPixel;
        frames.dstWidth = whole;
    }
    job.srcWidth = frames.srcWidth;
    job.srcHeight = frames.srcHeight;
    job.srcStride = frames.srcStride;
    job.radiusX = frames.radiusX;
    job.radiusY = frames.radiusY;
    job.dstWidth = frames.dstWidth;
    job.dstHeight = frames.dstHeight;
    job.dstStride = frames.dstStride;
    // Sides of one pixel have no step, and lanes then show nothing.
    job.isUsual = SetCamera(input, job) && !isWild && frames.dstWidth > 1 && frames.dstHeight > 1 &&
                  ShowsPixels(frames, job.bytesPerPixel);
    return job;
}

void CheckPlacesInside(const SourcePlaces& places, const VCamJob& job) {
    for (const auto& place : places) {
        Expect(!place || (place->column >= 0 && place->column < job.srcWidth && place->row >= 0 &&
                          place->row < job.srcHeight),
               job, ": shows what is no source pixel");
    }
}

/// The largest distance of a form's pixel from the scalar one along a side.
int ReachOf(const VCamJob& job, float radius, int side) {
    const double radians = kErrorOfArccosine + kErrorOfRounding;
    return 1 + static_cast<int>(std::ceil(ArccosineError(VCamForm::SSE41, job, radius, side) *
                                          radians / kErrorOfArccosine));
}

/// What only one form shows lies at the rim, at the frame's edge, or at the axis, which is nowhere.
bool IsAtBorder(const VCamJob& job, const PixelPlace& place, int reachX, int reachY) {
    const double lensX = static_cast<double>(job.radiusX) * (job.srcWidth - 1.0);
    const double lensY = static_cast<double>(job.radiusY) * (job.srcHeight - 1.0);
    const double tolerance = 1.5 * std::max(reachX / lensX, reachY / lensY);
    const double radius = std::hypot((place.column - 0.5 * (job.srcWidth - 1.0)) / lensX,
                                     (place.row - 0.5 * (job.srcHeight - 1.0)) / lensY);
    return !(radius <= 1.0 - tolerance && radius >= tolerance) || place.column <= reachX ||
           place.row <= reachY || place.column >= job.srcWidth - 1 - reachX ||
           place.row >= job.srcHeight - 1 - reachY;
}

/// Compares the pixels of a row that both forms draw.
void CheckDistances(const VCamJob& job, VCamForm form, const SourcePlaces& scalar,
                    const SourcePlaces& lanes) {
    const int reachX = ReachOf(job, job.radiusX, job.srcWidth);
    const int reachY = ReachOf(job, job.radiusY, job.srcHeight);
    const int drawn = DrawnColumns(form, job.dstWidth);
    const int common = std::min(drawn, job.dstWidth);
    for (int i = 0; i < common * job.dstHeight; ++i) {
        const int x = i % common;
        const int y = i / common;
        const auto& one = scalar[static_cast<std::size_t>(y * job.dstWidth + x)];
        const auto& other = lanes[static_cast<std::size_t>(y * drawn + x)];
        const bool isNear =
            one && other ? std::abs(one->column - other->column) <= reachX &&
                               std::abs(one->row - other->row) <= reachY
                         : one == other || IsAtBorder(job, one ? *one : *other, reachX, reachY);
        Expect(isNear, job, ": ", NameOf(form), " is too far from the C form in pixel ", x, ", ",
               y);
    }
}

/// Whole groups of four lanes reach beyond a row, and beyond the last one out of the frame. Where
/// the stride is shorter than a row, any row may end with the frame.
std::size_t BytesOfOutput(VCamForm form, const VCamJob& job) {
    const int surplus = std::max(0, DrawnColumns(form, job.dstWidth) - job.dstWidth);
    const bool isShort = job.dstStride < job.dstWidth * job.bytesPerPixel;
    return job.OutputBytes() + (isShort ? static_cast<std::size_t>(surplus * job.bytesPerPixel)
                                        : BytesBeyondFrame(form, job, job.bytesPerPixel));
}

std::array<float, 16> NextMatrix(KernelsInput& input, KivFisheyeLib::MountType mount,
                                 const VCamSettings& settings) {
    auto matrix = VCamMatrix(mount, settings.pan, settings.tilt);
    if (input.OnceIn(2)) {
        for (float& element : matrix) {
            const float any = input.Value(-2.0F, 2.0F);
            element = std::isfinite(any) ? any : 0.0F;
        }
    }
    return matrix;
}

}  // namespace

bool SetCamera(KernelsInput& input, VCamFrame& frame) {
    constexpr KivFisheyeLib::MountType kMounts[] = {KivFisheyeLib::MountTypeWall,
                                                    KivFisheyeLib::MountTypeCeiling,
                                                    KivFisheyeLib::MountTypeTable};
    constexpr const char* kNames[] = {"wall", "ceiling", "table"};
    const int index = input.Between(0, 2);
    CountOutcome(PresentOperation(), kNames[index]);
    const auto mount = kMounts[index];
    const VCamSettings settings = SettingsOf(mount, input.Value(0.0F, 360.0F),
                                             input.Value(-90.0F, 90.0F), input.Value(1.0F, 10.0F));
    frame = WithSettings(frame, mount, settings);
    frame.aspect = static_cast<float>(frame.dstWidth) / static_cast<float>(frame.dstHeight);
    if (!input.OnceIn(4)) {
        return true;
    }
    CountOutcome(PresentOperation(), "any camera");
    frame.matrix = NextMatrix(input, mount, settings);
    frame.eyeZ = input.Value(0.0F, 1.0F);
    frame.nearPlane = input.Value(0.01F, 1.0F);
    frame.fieldOfView = input.Value(0.0F, 180.0F);
    frame.aspect = input.Value(0.0F, 4.0F);
    return false;
}

void CheckVCam(KernelsInput& input) {
    const VCamJob job = NextVCam(input);
    const int bytes = job.bytesPerPixel;
    std::vector<unsigned char> source;
    if (ShowsPixels({job.srcWidth, job.srcHeight, job.srcStride, 1, 1, 1}, bytes)) {
        source = CoordinateFrame(job.srcWidth, job.srcHeight, job.srcStride, bytes);
    }
    SourcePlaces scalar;
    for (const VCamForm form : PictureFormsUpTo(VCamForm::AVX)) {
        const SourcePlaces places = ModelPlaces(form, job, bytes);
        CheckPlacesInside(places, job);
        CheckPicture(
            source, BytesOfOutput(form, job),
            [&](const unsigned char* src, unsigned char* dst) {
                VCamKernel{form, bytes}(job, src, dst);
            },
            [&](std::vector<unsigned char>& frame) { PaintModel(form, job, bytes, source, frame); },
            Attempt{job, NameOf(form)});
        if (form == VCamForm::C) {
            scalar = places;
        } else if (job.isUsual) {
            CheckDistances(job, form, scalar, places);
        }
    }
}
